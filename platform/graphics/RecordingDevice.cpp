#include "platform/graphics/RecordingDevice.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

namespace tessalink {

namespace {

using Kind = Primitive::Kind;

constexpr std::array<std::string_view, 9> cKindNames = {
    "line", "polyline", "polygon", "rectangle", "ellipse", "fill", "fill region", "pixel", "text"};
constexpr std::array<std::string_view, 7> cPenNames = {
    "solid", "dash", "dot", "dashdot", "dashdotdot", "none", "insideframe"};
constexpr std::array<std::string_view, 6> cHatchNames = {"horizontal", "vertical", "fdiagonal",
                                                         "bdiagonal",  "cross",    "diagcross"};

bool hasPen(Kind kind) {
    return kind <= Kind::Ellipse;
}

bool hasBrush(Kind kind) {
    return kind >= Kind::Polygon && kind <= Kind::FillRegion;
}

bool isDashed(const LOGPEN& pen) {
    return pen.lopnStyle >= PS_DASH && pen.lopnStyle <= PS_DASHDOTDOT && pen.lopnWidth.x <= 1;
}

// Puts words, numbers and colours into one line.
class Line {
public:
    std::string Take() { return std::move(m_text); }

    Line& Word(std::string_view word) {
        if (!m_text.empty()) m_text += ' ';
        m_text += word;
        return *this;
    }
    Line& Number(LONG number) { return Word(std::to_string(number)); }
    Line& Color(COLORREF color) {
        Word("");
        for (const BYTE part : {GetRValue(color), GetGValue(color), GetBValue(color)}) Hex(part);
        return *this;
    }
    Line& Point(const POINT& point) {
        return Word(std::to_string(point.x) + ',' + std::to_string(point.y));
    }
    Line& Rect(const RECT& rect) {
        Point({rect.left, rect.top});
        m_text += ',' + std::to_string(rect.right) + ',' + std::to_string(rect.bottom);
        return *this;
    }
    Line& Rects(const Region& region) {
        for (const RECT& rect : region.Rects()) Rect(rect);
        return region.IsEmpty() ? Word("nothing") : *this;
    }
    Line& Quoted(std::string_view text) {
        Word("\"");
        for (const char ch : text) {
            if (ch >= ' ' && ch < '\x7F' && ch != '"' && ch != '\\') {
                m_text += ch;
            } else {
                m_text += "\\x";
                Hex(static_cast<BYTE>(ch));
            }
        }
        m_text += '"';
        return *this;
    }

private:
    void Hex(BYTE byte) {
        constexpr std::string_view digits = "0123456789abcdef";
        m_text += digits[byte >> 4U];
        m_text += digits[byte & 0xFU];
    }

    std::string m_text;
};

void putPen(Line& line, const LOGPEN& pen) {
    line.Word("pen");
    const bool gapless = pen.lopnStyle < PS_NULL && !isDashed(pen);
    line.Word(cPenNames[gapless ? PS_SOLID : pen.lopnStyle]);
    if (pen.lopnStyle == PS_NULL) return;
    line.Number(std::max<LONG>(pen.lopnWidth.x, 1)).Color(pen.lopnColor);
}

void putBrush(Line& line, const LOGBRUSH& brush) {
    line.Word("brush");
    if (brush.lbStyle == BS_NULL) {
        line.Word("none");
        return;
    }
    line.Word(brush.lbStyle == BS_HATCHED ? cHatchNames[brush.lbHatch] : "solid");
    line.Color(brush.lbColor);
}

void putFont(Line& line, const LOGFONTA& font) {
    line.Word("font").Number(font.lfHeight).Quoted(font.lfFaceName);
    if (font.lfWeight >= FW_SEMIBOLD) line.Word("bold");
    if (font.lfItalic != 0) line.Word("italic");
    if (font.lfUnderline != 0) line.Word("underline");
    if (font.lfStrikeOut != 0) line.Word("strikeout");
    if (isSymbolFont(font)) line.Word("symbol");
}

void putText(Line& line, const Primitive& run) {
    line.Quoted(run.text).Word("at");
    for (const int position : run.positions) line.Number(position);
    putFont(line, run.font);
    line.Word("color").Color(run.color);
    if (run.textBackground) {
        line.Word("over").Color(run.textBackgroundColor).Rect(*run.textBackground);
    }
    if (run.textClip) line.Word("within").Rect(*run.textClip);
}

void putPlace(Line& line, const Primitive& primitive) {
    for (const POINT& point : primitive.points) line.Point(point);
    switch (primitive.kind) {
        case Kind::Rectangle:
        case Kind::Ellipse:
        case Kind::FillRectangle:
            line.Rect(primitive.rect);
            break;
        case Kind::FillRegion:
            line.Rects(primitive.region);
            break;
        case Kind::Polygon:
            line.Word(primitive.fillMode == ALTERNATE ? "alternate" : "winding");
            break;
        case Kind::Pixel:
            line.Color(primitive.color);
            break;
        default:
            break;
    }
}

bool showsBackground(const Primitive& primitive) {
    const bool dashes = hasPen(primitive.kind) && isDashed(primitive.pen);
    const bool hatches = hasBrush(primitive.kind) && primitive.brush.lbStyle == BS_HATCHED;
    return primitive.opaque && (dashes || hatches);
}

}  // namespace

std::string toText(const Primitive& primitive) {
    Line line;
    line.Word(cKindNames[static_cast<std::size_t>(primitive.kind)]);
    putPlace(line, primitive);
    if (primitive.kind == Kind::Text) putText(line, primitive);
    if (hasPen(primitive.kind)) putPen(line, primitive.pen);
    if (hasBrush(primitive.kind)) putBrush(line, primitive.brush);
    if (showsBackground(primitive)) line.Word("over").Color(primitive.background);
    if (primitive.clip) line.Word("clip").Rects(*primitive.clip);
    return line.Take();
}

std::vector<std::string> RecordingDevice::Lines() const {
    std::vector<std::string> lines;
    lines.reserve(m_primitives.size());
    for (const Primitive& primitive : m_primitives) lines.push_back(toText(primitive));
    return lines;
}

Primitive& RecordingDevice::add(Kind kind, const Paint& paint) {
    Primitive& primitive = m_primitives.emplace_back();
    primitive.kind = kind;
    primitive.pen = paint.pen;
    primitive.brush = paint.brush;
    primitive.background = paint.background;
    primitive.opaque = paint.opaque;
    primitive.fillMode = paint.fillMode;
    if (paint.clip != nullptr) primitive.clip = *paint.clip;
    return primitive;
}

void RecordingDevice::DrawLine(const Paint& paint, POINT from, POINT to) {
    add(Kind::Line, paint).points = {from, to};
}

void RecordingDevice::DrawPolyline(const Paint& paint, std::span<const POINT> points) {
    add(Kind::Polyline, paint).points.assign(points.begin(), points.end());
}

void RecordingDevice::DrawPolygon(const Paint& paint, std::span<const POINT> points) {
    add(Kind::Polygon, paint).points.assign(points.begin(), points.end());
}

void RecordingDevice::DrawRectangle(const Paint& paint, const RECT& rect) {
    add(Kind::Rectangle, paint).rect = rect;
}

void RecordingDevice::DrawEllipse(const Paint& paint, const RECT& rect) {
    add(Kind::Ellipse, paint).rect = rect;
}

void RecordingDevice::FillRectangle(const Paint& paint, const RECT& rect) {
    add(Kind::FillRectangle, paint).rect = rect;
}

void RecordingDevice::FillRegion(const Paint& paint, const Region& region) {
    add(Kind::FillRegion, paint).region = region;
}

void RecordingDevice::SetPixel(const Paint& paint, POINT point, COLORREF color) {
    Primitive& pixel = add(Kind::Pixel, paint);
    pixel.points = {point};
    pixel.color = color;
}

void RecordingDevice::DrawText(const TextRun& run) {
    Paint plain;
    plain.clip = run.clip;
    Primitive& text = add(Kind::Text, plain);
    text.points = {run.origin};
    text.text = run.text;
    text.font = *run.font;
    text.positions.assign(run.positions.begin(), run.positions.end());
    text.color = run.color;
    if (run.hasBackground) text.textBackground = run.background;
    text.textBackgroundColor = run.backgroundColor;
    if (run.isClipped) text.textClip = run.clipRect;
}

}  // namespace tessalink
