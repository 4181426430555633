#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/graphics/FaceMetrics.h"
#include "platform/graphics/GdiObjects.h"
#include "platform/graphics/RecordingDevice.h"

namespace tessalink::test {

/// Lines that tell what primitives show on a sheet: those that were recorded, or those that are
/// read back from a page.
class SeenPrimitives {
public:
    explicit SeenPrimitives(const CRect& sheet) : m_sheet(RECT(sheet)) {}

    const std::vector<std::string>& Lines() const { return m_lines; }

    void Shape(Primitive shape) {
        shape.clip = OnSheet(shape.clip);
        if (shape.clip && shape.clip->IsEmpty()) return;
        m_lines.push_back(toText(shape));
    }
    /// Rectangles together, as far as they show.
    void Area(Primitive area, const std::vector<RECT>& rects) {
        Region region;
        for (const RECT& rect : rects) region = region.Or(Region(rect));
        region = region.And(area.clip.value_or(m_sheet)).And(m_sheet);
        if (region.IsEmpty()) return;
        area.kind = Primitive::Kind::FillRegion;
        area.clip.reset();
        area.points.clear();
        area.region = region;
        m_lines.push_back(toText(area));
    }
    /// The text, where its characters stand, and nothing of its surroundings.
    void Text(const Primitive& text, const std::string& font) {
        const auto clip = OnSheet(text.clip);
        if (clip && clip->IsEmpty()) return;
        Primitive plain;
        plain.kind = Primitive::Kind::Text;
        plain.points = text.points;
        plain.text = text.text;
        plain.positions = text.positions;
        plain.color = text.color;
        plain.clip = clip;
        m_lines.push_back(font + " " + toText(plain));
    }

private:
    std::optional<Region> OnSheet(const std::optional<Region>& clip) const {
        return clip ? std::optional(clip->And(m_sheet)) : std::nullopt;
    }

    Region m_sheet;
    std::vector<std::string> m_lines;
};

/// Finds out what recorded primitives show.
class RecordedPage {
public:
    static std::vector<std::string> Lines(const std::vector<Primitive>& primitives,
                                          const CRect& sheet) {
        RecordedPage page(sheet);
        for (const Primitive& primitive : primitives) page.Add(primitive);
        return page.m_seen.Lines();
    }

private:
    using Kind = Primitive::Kind;

    explicit RecordedPage(const CRect& sheet) : m_seen(sheet) {}

    static bool HasPen(const Primitive& p) { return p.pen.lopnStyle != PS_NULL; }
    void Solid(const Primitive& p, const RECT& rect, COLORREF color) {
        Primitive solid = p;
        solid.brush = {BS_SOLID, color, 0};
        m_seen.Area(solid, {rect});
    }
    void Fill(const Primitive& p, const std::vector<RECT>& rects) {
        if (p.brush.lbStyle != BS_NULL) m_seen.Area(p, rects);
    }
    void Add(const Primitive& p) {
        switch (p.kind) {
            case Kind::Line:
            case Kind::Polyline:
                return Lined(p);
            case Kind::Polygon:
                return Polygon(p);
            case Kind::Rectangle:
            case Kind::Ellipse:
                return Box(p);
            case Kind::FillRectangle:
                return Fill(p, {p.rect});
            case Kind::FillRegion:
                return Fill(p, {p.region.Rects().begin(), p.region.Rects().end()});
            case Kind::Pixel:
                return Solid(p,
                             {p.points[0].x, p.points[0].y, p.points[0].x + 1, p.points[0].y + 1},
                             p.color);
            case Kind::Text:
                Text(p);
        }
    }
    void Lined(Primitive p) {
        const bool isNothing =
            p.kind == Kind::Line && p.pen.lopnWidth.x <= 1 && p.points[0] == p.points[1];
        p.kind = Kind::Polyline;
        if (p.pen.lopnStyle == PS_INSIDEFRAME) p.pen.lopnStyle = PS_SOLID;
        if (HasPen(p) && !isNothing && p.points.size() >= 2) m_seen.Shape(p);
    }
    void Polygon(Primitive p) {
        if (p.pen.lopnStyle == PS_INSIDEFRAME) p.pen.lopnStyle = PS_SOLID;
        if (p.brush.lbStyle == BS_NULL) p.fillMode = ALTERNATE;
        if (HasPen(p) || p.brush.lbStyle != BS_NULL) m_seen.Shape(p);
    }
    // A frame inside is a plain one of a smaller box.
    void Box(Primitive p) {
        const int width = HasPen(p) ? std::max<LONG>(p.pen.lopnWidth.x, 1) : 1;
        const bool inside = p.pen.lopnStyle == PS_INSIDEFRAME && width > 1;
        if (inside) {
            const int near = width / 2;
            const int far = width - near - 1;
            p.rect = {p.rect.left + near, p.rect.top + near, p.rect.right - far,
                      p.rect.bottom - far};
        }
        if (p.pen.lopnStyle == PS_INSIDEFRAME) p.pen.lopnStyle = PS_SOLID;
        const RECT& r = p.rect;
        const bool isThin = r.right - r.left <= 1 || r.bottom - r.top <= 1;
        if (!HasPen(p)) {
            if (isThin || p.brush.lbStyle == BS_NULL) return;
            if (p.kind == Kind::Ellipse) return m_seen.Shape(p);
            return m_seen.Area(p, {{r.left, r.top, r.right - 1, r.bottom - 1}});
        }
        if (!isThin) return m_seen.Shape(p);
        const int reach = width / 2;
        const int more = width - 1 - reach;
        Solid(p, {r.left - reach, r.top - reach, r.right + more, r.bottom + more}, p.pen.lopnColor);
    }
    // The base font and its em.
    static std::string FontOf(const LOGFONTA& font, double em) {
        const std::string_view face = font.lfFaceName;
        const bool serif = face == "Times New Roman" || face == "Times" ||
                           (face != "Arial" && (font.lfPitchAndFamily & cFamilyMask) == FF_ROMAN);
        const std::array<const char*, 4> styles =
            serif ? std::array{"-Roman", "-Bold", "-Italic", "-BoldItalic"}
                  : std::array{"", "-Bold", "-Oblique", "-BoldOblique"};
        const std::size_t style =
            (font.lfWeight >= FW_BOLD ? 1u : 0u) + (font.lfItalic != 0 ? 2u : 0u);
        const std::string name = isSymbolFont(font)
                                     ? "Symbol"
                                     : std::string(serif ? "Times" : "Helvetica") + styles[style];
        return name + " " + std::to_string(std::lround(em * 100));
    }
    void Text(const Primitive& p) {
        const SizedFont font(builtInMetrics(p.font), p.font);
        Primitive text = p;
        const LONG x = p.points[0].x;
        const LONG y = p.points[0].y;
        CRect cell(x, y - font.Ascent(), x + p.positions.back(), y + font.Descent());
        cell.NormalizeRect();
        if (p.textClip) {
            const RECT& room = *p.textClip;
            const bool fits = cell.left >= room.left && cell.right <= room.right &&
                              cell.top >= room.top && cell.bottom <= room.bottom;
            const Region cut(room);
            if (!fits) text.clip = p.clip ? p.clip->And(cut) : cut;
        }
        if (p.textBackground) Solid(text, *p.textBackground, p.textBackgroundColor);
        Characters(text, FontOf(p.font, font.Em()));
        // Lines under and through the text.
        const auto line = [&](double above) {
            const int top = y - static_cast<int>(font.Em() * above);
            const int height = std::max(1, static_cast<int>(std::lround(font.Em() * 0.06)));
            Solid(text, {x, top, x + std::max(0, p.positions.back()), top + height}, p.color);
        };
        if (p.font.lfUnderline != 0) line(-0.106);
        if (p.font.lfStrikeOut != 0) line(0.259);
    }
    // Control characters have no picture.
    void Characters(Primitive text, const std::string& font) {
        const bool isSymbol = isSymbolFont(text.font);
        std::string shown;
        std::vector<int> places;
        for (std::size_t i = 0; i < text.text.size(); ++i) {
            const auto byte = static_cast<unsigned char>(text.text[i]);
            const bool isControl = byte < ' ' || byte == 0x7F || byte == 0x81;
            if (isControl && !isSymbol) continue;
            shown += isSymbol && (byte < ' ' || (byte >= 0x7F && byte < 0xA0)) ? ' ' : text.text[i];
            places.push_back(text.positions[i]);
        }
        if (shown.empty()) return;
        const int first = places[0];
        for (int& place : places) place -= first;
        text.points[0].x += first;
        text.text = shown;
        text.positions = places;
        m_seen.Text(text, font);
    }

    SeenPrimitives m_seen;
};

/// Reads the page of a PDF that PdfDevice has written, uncompressed, back into primitives. What is
/// not as that device writes it raises std::runtime_error.
class PdfPage {
public:
    static std::vector<std::string> Lines(std::string_view pdf, const CRect& sheet) {
        PdfPage page(pdf, sheet);
        page.Read();
        return page.m_seen.Lines();
    }

private:
    struct State {
        int width = 1;
        int cap = 0;
        UINT dash = PS_SOLID;
        COLORREF stroke = cBlack;
        LOGBRUSH brush = {BS_SOLID, cBlack, 0};
        std::string font;
        std::string_view widths;  // from the number of the first character on
        double em = 0;
        std::optional<Region> clip;
    };
    struct Path {
        std::vector<RECT> rects;                  // left, top, right and bottom in halves
        std::vector<std::array<long, 2>> points;  // in halves
        bool isCurved = false;
        bool isClosed = false;

        bool operator==(const Path&) const = default;
    };

    PdfPage(std::string_view pdf, const CRect& sheet) : m_pdf(pdf), m_seen(sheet) {
        const std::size_t start = pdf.find("stream\n") + 7;
        m_rest = pdf.substr(start, pdf.find("\nendstream") - start);
    }

    [[noreturn]] static void Fail(const std::string& why) { throw std::runtime_error(why); }
    static void Check(bool sound, const std::string& why) {
        if (!sound) Fail(why);
    }

    // Words.

    std::string Word() {
        const std::size_t start = m_rest.find_first_not_of(" \n");
        if (start == std::string_view::npos) return m_rest = {}, "";
        m_rest.remove_prefix(start);
        const bool alone = m_rest[0] == '[' || m_rest[0] == ']' || m_rest[0] == '(';
        const std::size_t end = alone ? 1 : std::min(m_rest.find_first_of(" \n[]("), m_rest.size());
        std::string word(m_rest.substr(0, end));
        m_rest.remove_prefix(end);
        return word;
    }
    // What stands up to the parenthesis.
    std::string Text() {
        std::string text;
        while (m_rest.at(0) != ')') {
            if (m_rest[0] == '\\') m_rest.remove_prefix(1);
            text += m_rest.at(0);
            m_rest.remove_prefix(1);
        }
        m_rest.remove_prefix(1);
        return text;
    }
    double Number(std::size_t index) const {
        return std::strtod(m_words.at(index).c_str(), nullptr);
    }
    static long Halves(double number) {
        const double halves = number * 2;
        Check(halves == std::floor(halves), "neither a whole number nor a half");
        return static_cast<long>(halves);
    }
    COLORREF Color(std::size_t first, std::size_t count) const {
        std::array<int, 3> parts{};
        for (std::size_t i = 0; i < 3; ++i) {
            parts[i] = static_cast<int>(std::lround(255 * Number(first + (count == 3 ? i : 0))));
        }
        return RGB(parts[0], parts[1], parts[2]);
    }

    // Shapes.

    LOGPEN Pen() const { return {m_state.dash, {m_state.width, 0}, m_state.stroke}; }
    static int Whole(long halves, long offset) {
        Check((halves - offset) % 2 == 0, "off the middle of a unit");
        return static_cast<int>((halves - offset) / 2);
    }
    static long Sign(long from, long to) { return from < to ? 1 : from > to ? -1 : 0; }
    // The points before thin lines were moved to cover their first unit and not their last.
    std::vector<POINT> Points(bool isThinLine, long offset) const {
        std::vector<POINT> points;
        const auto& all = m_path.points;
        for (std::size_t i = 0; i < all.size(); ++i) {
            std::array<long, 2> at = all[i];
            const bool isEnd = i == 0 || i + 1 == all.size();
            const auto& from = i == 0 ? all[0] : all[i - 1];
            const auto& to = i == 0 ? all[1] : all[i];
            // A diagonal line is where it was.
            const bool isAxial = from[0] == to[0] || from[1] == to[1];
            if (isThinLine && isEnd && isAxial) {
                for (std::size_t axis = 0; axis < 2; ++axis) {
                    if ((at[axis] - offset) % 2 != 0) at[axis] += Sign(from[axis], to[axis]);
                }
            }
            points.push_back({Whole(at[0], offset), Whole(at[1], offset)});
        }
        return points;
    }
    static RECT BoxOf(const RECT& halves, long offset) {
        return {Whole(halves.left, offset), Whole(halves.top, offset),
                Whole(halves.right, offset) + 1, Whole(halves.bottom, offset) + 1};
    }
    RECT CurveBox() const {
        RECT box = {static_cast<LONG>(m_path.points[2][0]), static_cast<LONG>(m_path.points[3][1]),
                    static_cast<LONG>(m_path.points[0][0]), static_cast<LONG>(m_path.points[1][1])};
        return box;
    }

    void Paint(bool isFilled, bool isStroked, bool evenOdd) {
        Primitive shape;
        shape.clip = m_state.clip;
        shape.opaque = false;
        shape.brush = isFilled ? m_state.brush : LOGBRUSH{BS_NULL, 0, 0};
        shape.pen = isStroked ? Pen() : LOGPEN{PS_NULL, {1, 0}, 0};
        shape.fillMode = isFilled && !evenOdd ? WINDING : ALTERNATE;
        Join(shape);
        m_held = shape;
        m_heldPath = std::exchange(m_path, {});
        m_heldEnds = m_state.cap;
    }
    // A ground and what is drawn over it are one primitive.
    void Join(Primitive& shape) {
        if (!m_held) return;
        const bool same = m_heldPath == m_path && m_held->clip == shape.clip;
        const bool overFill = shape.brush.lbStyle == BS_HATCHED && !HasPen(*m_held) &&
                              m_held->brush.lbStyle == BS_SOLID;
        const bool overLine = HasPen(shape) && shape.pen.lopnStyle != PS_SOLID &&
                              shape.brush.lbStyle == BS_NULL && HasPen(*m_held) &&
                              m_held->pen.lopnStyle == PS_SOLID;
        if (same && (overFill || overLine)) {
            shape.opaque = true;
            shape.background = overFill ? m_held->brush.lbColor : m_held->pen.lopnColor;
            if (overLine) shape.brush = m_held->brush;
            if (overLine) shape.fillMode = m_held->fillMode;
            m_held.reset();
        }
        Flush();
    }
    static bool HasPen(const Primitive& shape) { return shape.pen.lopnStyle != PS_NULL; }
    // What was painted last is told once nothing more belongs to it.
    void Flush() {
        if (!m_held) return;
        Primitive shape = *std::exchange(m_held, std::nullopt);
        const Path next = std::exchange(m_path, m_heldPath);
        Tell(shape);
        m_path = next;
    }
    void Tell(Primitive& shape) {
        const bool hasPen = HasPen(shape);
        const long offset = hasPen ? shape.pen.lopnWidth.x % 2 : 0;
        if (!m_path.rects.empty() && !hasPen) {
            std::vector<RECT> rects;
            for (const RECT& r : m_path.rects) {
                rects.push_back(
                    {Whole(r.left, 0), Whole(r.top, 0), Whole(r.right, 0), Whole(r.bottom, 0)});
            }
            return m_seen.Area(shape, rects);
        }
        if (!m_path.rects.empty()) {
            shape.kind = Primitive::Kind::Rectangle;
            shape.rect = BoxOf(m_path.rects.at(0), offset);
        } else if (m_path.isCurved) {
            shape.kind = Primitive::Kind::Ellipse;
            shape.rect = BoxOf(CurveBox(), offset);
        } else {
            const bool isOpen = !m_path.isClosed;
            const bool isThin = shape.pen.lopnWidth.x == 1;
            shape.kind = isOpen ? Primitive::Kind::Polyline : Primitive::Kind::Polygon;
            shape.points = Points(isOpen && isThin, offset);
            Check(!isOpen || (m_heldEnds == 1) == !isThin, "wide lines have round ends");
        }
        m_seen.Shape(shape);
    }
    void PathRect() {
        const RECT rect = {static_cast<LONG>(Halves(Number(0))),
                           static_cast<LONG>(Halves(Number(1))),
                           static_cast<LONG>(Halves(Number(0) + Number(2))),
                           static_cast<LONG>(Halves(Number(1) + Number(3)))};
        m_path.rects.push_back(rect);
    }
    void PathPoint(std::size_t first) {
        m_path.points.push_back({Halves(Number(first)), Halves(Number(first + 1))});
    }
    // Control points lie on the sides of the box around the quarter.
    void PathCurve() {
        m_path.isCurved = true;
        PathPoint(4);
    }
    void Clip() {
        Region clip;
        for (const RECT& r : m_path.rects) {
            clip = clip.Or(Region(RECT{r.left / 2, r.top / 2, r.right / 2, r.bottom / 2}));
        }
        m_path = {};
        m_state.clip = clip;
    }
    void Dash() {
        const std::map<std::string, UINT> styles = {{"", PS_SOLID},
                                                    {"18 6 ", PS_DASH},
                                                    {"3 3 ", PS_DOT},
                                                    {"9 6 3 6 ", PS_DASHDOT},
                                                    {"9 3 3 3 3 3 ", PS_DASHDOTDOT}};
        std::string lengths;
        for (std::size_t i = 1; m_words.at(i) != "]"; ++i) lengths += m_words[i] + ' ';
        m_state.dash = styles.at(lengths);
    }

    // Texts.

    void SetFont() {
        // Resources name the object of the font, which names the font.
        const std::string name = m_words.at(0) + ' ';
        const std::size_t object = m_pdf.find(name, m_pdf.find("/Font<<")) + name.size();
        const std::string start =
            "\n" + std::string(m_pdf.substr(object, m_pdf.find(' ', object) - object)) + " 0 obj";
        const std::size_t base = m_pdf.find("/BaseFont/", m_pdf.find(start)) + 10;
        m_state.font = m_pdf.substr(base, m_pdf.find('/', base) - base);
        m_state.widths = m_pdf.substr(m_pdf.find("/FirstChar ", base) + 11);
        m_state.em = Number(1);
    }
    double WidthOf(char ch) const {
        char* end = nullptr;
        long code = std::strtol(m_state.widths.data(), &end, 10);
        const char* word = m_state.widths.data() + m_state.widths.find("/Widths[") + 8;
        long width = std::strtol(word, &end, 10);
        for (; code < static_cast<unsigned char>(ch); ++code) width = std::strtol(end, &end, 10);
        return static_cast<double>(width) / 1000;
    }
    void ShowText() {
        Flush();
        Primitive text;
        text.clip = m_state.clip;
        text.color = m_state.brush.lbColor;
        text.points = {m_place};
        double pen = 0;
        for (std::string word = Word(); word != "]"; word = Word()) {
            if (word != "(") {
                pen -= std::strtod(word.c_str(), nullptr) / 1000 * m_state.em;
                continue;
            }
            for (const char ch : Text()) {
                text.text += ch;
                text.positions.push_back(static_cast<int>(std::lround(pen)));
                pen += WidthOf(ch) * m_state.em;
            }
        }
        Check(Word() == "TJ", "a text");
        Check(m_state.brush.lbStyle == BS_SOLID, "texts are in one color");
        m_seen.Text(text, m_state.font + " " + std::to_string(std::lround(m_state.em * 100)));
    }

    void Do(const std::string& word) {
        using Step = std::function<void(PdfPage&)>;
        static const std::map<std::string, Step> steps = {
            {"cm", [](PdfPage&) {}},
            {"j", [](PdfPage& p) { Check(p.m_words.at(0) == "1", "round joins"); }},
            {"q", [](PdfPage& p) { p.Flush(), p.m_outside = p.m_state; }},
            {"Q", [](PdfPage& p) { p.Flush(), p.m_state = p.m_outside; }},
            {"W", [](PdfPage& p) { p.Clip(); }},
            {"n", [](PdfPage&) {}},
            {"re", [](PdfPage& p) { p.PathRect(); }},
            {"m", [](PdfPage& p) { p.PathPoint(0); }},
            {"l", [](PdfPage& p) { p.PathPoint(0); }},
            {"c", [](PdfPage& p) { p.PathCurve(); }},
            {"h", [](PdfPage& p) { p.m_path.isClosed = true; }},
            {"f", [](PdfPage& p) { p.Paint(true, false, false); }},
            {"f*", [](PdfPage& p) { p.Paint(true, false, true); }},
            {"S", [](PdfPage& p) { p.Paint(false, true, true); }},
            {"B", [](PdfPage& p) { p.Paint(true, true, false); }},
            {"B*", [](PdfPage& p) { p.Paint(true, true, true); }},
            {"w", [](PdfPage& p) { p.m_state.width = static_cast<int>(p.Number(0)); }},
            {"J", [](PdfPage& p) { p.m_state.cap = static_cast<int>(p.Number(0)); }},
            {"d", [](PdfPage& p) { p.Dash(); }},
            {"g",
             [](PdfPage& p) {
                 p.m_state.brush = {BS_SOLID, p.Color(0, 1), 0};
             }},
            {"rg",
             [](PdfPage& p) {
                 p.m_state.brush = {BS_SOLID, p.Color(0, 3), 0};
             }},
            {"G", [](PdfPage& p) { p.m_state.stroke = p.Color(0, 1); }},
            {"RG", [](PdfPage& p) { p.m_state.stroke = p.Color(0, 3); }},
            {"cs", [](PdfPage&) {}},
            {"scn",
             [](PdfPage& p) {
                 const auto hatch = static_cast<std::uintptr_t>(p.m_words.at(3).at(2) - '0');
                 p.m_state.brush = {BS_HATCHED, p.Color(0, 3), hatch};
             }},
            {"BT", [](PdfPage&) {}},
            {"ET", [](PdfPage&) {}},
            {"Tf", [](PdfPage& p) { p.SetFont(); }},
            {"Tm",
             [](PdfPage& p) {
                 p.m_place = {static_cast<int>(p.Number(4)), static_cast<int>(p.Number(5))};
             }},
        };
        const auto step = steps.find(word);
        if (step == steps.end()) {
            m_words.push_back(word);
            return;
        }
        step->second(*this);
        m_words.clear();
    }
    void Read() {
        for (std::string word = Word(); !word.empty(); word = Word()) {
            const bool isText = word == "[" && (m_rest.starts_with("("));
            isText ? ShowText() : Do(word);
        }
        Flush();
    }

    std::string_view m_pdf;
    std::string_view m_rest;
    std::vector<std::string> m_words;
    State m_state;
    State m_outside;
    Path m_path;
    POINT m_place{};
    std::optional<Primitive> m_held;
    Path m_heldPath;
    int m_heldEnds = 0;
    SeenPrimitives m_seen;
};

}  // namespace tessalink::test
