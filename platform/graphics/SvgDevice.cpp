#include "platform/graphics/SvgDevice.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "platform/base/NumberText.h"
#include "platform/base/Windows1252.h"
#include "platform/files/CFileException.h"
#include "platform/files/WholeFile.h"
#include "platform/graphics/SymbolText.h"

namespace tessalink {

namespace {

constexpr double cMillimetresPerInch = 25.4;
constexpr int cPixelsPerInch = 96;
constexpr LONG cFirstBoldWeight = 600;
// Clips and hatches that are kept for use again; the oldest makes room.
constexpr std::size_t cKeptClips = 32;
constexpr std::size_t cKeptHatches = 32;
// What texts have room for at first.
constexpr std::size_t cRoomOfPicture = std::size_t{64} << 10;
constexpr std::size_t cRoomOfFont = 256;

// Where lines under and through a text lie above its base line, and their thickness, in parts of
// the em.
constexpr double cUnderlinePlace = -0.106;
constexpr double cStrikeOutPlace = 0.259;
constexpr double cTextLineThickness = 0.06;

constexpr std::string_view cArial = "Arial,Liberation Sans,Helvetica,sans-serif";
constexpr std::string_view cTimes = "Times New Roman,Liberation Serif,Times,serif";
// Under the name of Symbol many viewers would look for its codes.
constexpr std::string_view cSymbol = "Times New Roman,Liberation Serif,Times,DejaVu Sans,serif";

struct Family {
    std::string_view face;
    std::string_view names;
};
constexpr std::array<Family, 5> cFamilies = {{
    {"Arial", cArial},
    {"Helvetica", cArial},
    {"Times New Roman", cTimes},
    {"Times", cTimes},
    {"Courier New", "Courier New,Liberation Mono,Courier,monospace"},
}};

// By pen style, from PS_DASH on.
constexpr std::array<std::string_view, 4> cDashes = {"18 6", "3 3", "9 6 3 6", "9 3 3 3 3 3"};

// By hatch: lines in a square of eight units.
constexpr std::array<std::string_view, 6> cHatchPaths = {
    "M0 3.5h8",
    "M4.5 0v8",
    "M-1-1l10 10M7-1l2 2M-1 7l2 2",
    "M-1 9l10-10M-1 1l2-2M7 9l2-2",
    "M0 3.5h8M4.5 0v8",
    "M-1-1l10 10M-1 9l10-10",
};

struct Hatch {
    std::uintptr_t hatch;
    COLORREF color;
    bool opaque;
    COLORREF background;

    bool operator==(const Hatch&) const = default;
};

// Definitions that are in the text already, by what they define.
template <class Key, std::size_t KEPT>
class Definitions {
public:
    // The number of the definition, and whether it is new.
    std::pair<int, bool> NumberOf(const Key& key) {
        const auto known = std::find_if(m_known.begin(), m_known.end(),
                                        [&](const auto& entry) { return entry.first == key; });
        if (known != m_known.end()) return {known->second, false};
        const auto index = static_cast<std::size_t>(m_count) % KEPT;
        ++m_count;
        if (m_known.size() < KEPT) {
            m_known.emplace_back(key, m_count);
        } else {
            m_known[index] = {key, m_count};
        }
        return {m_count, true};
    }

private:
    std::vector<std::pair<Key, int>> m_known;
    int m_count = 0;
};

bool isVisible(const LOGPEN& pen) {
    return pen.lopnStyle != PS_NULL;
}

int widthOf(const LOGPEN& pen) {
    return std::max(pen.lopnWidth.x, 1);
}

bool isDashed(const LOGPEN& pen) {
    return pen.lopnStyle >= PS_DASH && pen.lopnStyle <= PS_DASHDOTDOT && widthOf(pen) == 1;
}

// Places in halves of a unit.
struct HalfPoint {
    std::int64_t x;
    std::int64_t y;
};

// A line of an odd width runs through the middle of units, others between them.
std::int64_t penOffset(const LOGPEN& pen) {
    return isVisible(pen) ? widthOf(pen) % 2 : 0;
}

HalfPoint place(const POINT& point, std::int64_t offset) {
    return {2 * std::int64_t{point.x} + offset, 2 * std::int64_t{point.y} + offset};
}

int sign(LONG from, LONG to) {
    return from < to ? 1 : from > to ? -1 : 0;
}

// What moves the ends of a thin line along an axis so that it covers its first unit and not its
// last.
HalfPoint endShift(const POINT& from, const POINT& to) {
    if (from.x != to.x && from.y != to.y) return {0, 0};
    return {-sign(from.x, to.x), -sign(from.y, to.y)};
}

HalfPoint operator+(const HalfPoint& a, const HalfPoint& b) {
    return {a.x + b.x, a.y + b.y};
}

bool isWithin(const RECT& inner, const RECT& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

std::string_view familyOf(const LOGFONT& font) {
    if (isSymbolFont(font)) return cSymbol;
    const std::string_view face = font.lfFaceName;
    const auto known = std::find_if(cFamilies.begin(), cFamilies.end(),
                                    [&](const Family& family) { return family.face == face; });
    if (known != cFamilies.end()) return known->names;
    return (font.lfPitchAndFamily & 0xF0) == FF_ROMAN ? cTimes : cArial;
}

bool isKnown(std::string_view face) {
    return std::any_of(cFamilies.begin(), cFamilies.end(),
                       [&](const Family& family) { return family.face == face; });
}

// The text of a picture while it is written.
class Text {
public:
    explicit Text(std::size_t firstRoom) : m_firstRoom(firstRoom) {}
    std::size_t Size() const { return m_size; }
    // The text, in no more than twice its memory.
    std::string Take() {
        if (m_size < m_text.size() / 2) return std::string(View());
        m_text.resize(m_size);
        return std::move(m_text);
    }
    std::string_view View() const { return {m_text.data(), m_size}; }
    void Clear() { m_size = 0; }

    Text& Put(std::string_view text) {
        m_size += text.copy(Room(text.size()), text.size());
        return *this;
    }
    Text& Put(std::int64_t number) {
        constexpr std::size_t longest = 20;
        char* const start = Room(longest);
        const bool isInt = number == static_cast<int>(number);
        return EndAt(isInt ? writeInt(start, static_cast<int>(number))
                           : std::to_chars(start, start + longest, number).ptr);
    }
    Text& Put(LONG number) { return Put(std::int64_t{number}); }
    Text& Halves(std::int64_t halves) {
        if (halves < 0) Put('-');
        const std::int64_t size = halves < 0 ? -halves : halves;
        Put(size / 2);
        if (size % 2 != 0) Put(".5");
        return *this;
    }
    // With two decimals at most.
    Text& Put(double number) {
        constexpr int decimals = 2;
        char* end = writeDouble(Room(cMaxDoubleHead + decimals), number, decimals);
        while (end[-1] == '0') --end;
        if (end[-1] == '.') --end;
        return EndAt(end);
    }
    Text& Color(COLORREF color) {
        constexpr std::string_view digits = "0123456789abcdef";
        constexpr unsigned twice = 0x11;
        constexpr std::size_t longest = 7;
        const std::array<unsigned, 3> parts = {GetRValue(color), GetGValue(color),
                                               GetBValue(color)};
        const bool isShort = std::all_of(parts.begin(), parts.end(),
                                         [](unsigned part) { return part % twice == 0; });
        char* end = Room(longest);
        *end++ = '#';
        for (const unsigned part : parts) {
            *end++ = digits[part / 16];
            if (!isShort) *end++ = digits[part % 16];
        }
        return EndAt(end);
    }
    Text& Attribute(std::string_view start, std::int64_t number) {
        return Put(start).Put(number).Put('"');
    }
    Text& HalvesAttribute(std::string_view start, std::int64_t halves) {
        return Put(start).Halves(halves).Put('"');
    }
    // Whether the character is one that XML allows and that has a picture.
    static bool IsWritten(char32_t character) {
        constexpr char32_t firstControl = 0x7F;
        constexpr char32_t lastControl = 0x9F;
        return character >= ' ' && (character < firstControl || character > lastControl);
    }
    Text& Character(char32_t character) {
        switch (character) {
            case '&':
                return Put("&amp;");
            case '<':
                return Put("&lt;");
            case '>':
                return Put("&gt;");
            case '"':
                return Put("&quot;");
            default:
                Utf8(character);
                return *this;
        }
    }
    Text& Escaped(std::string_view windows1252) {
        for (const char ch : windows1252) {
            const char32_t character = toUnicode(ch);
            Character(IsWritten(character) ? character : U' ');
        }
        return *this;
    }

private:
    Text& Put(char ch) {
        *Room(1) = ch;
        ++m_size;
        return *this;
    }
    // Up to three bytes: no character here is beyond the basic plane.
    void Utf8(char32_t character) {
        const auto more = [](char32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
        if (character < 0x80) {
            Put(static_cast<char>(character));
        } else if (character < 0x800) {
            Put(static_cast<char>(0xC0 | character >> 6)).Put(more(character));
        } else {
            Put(static_cast<char>(0xE0 | character >> 12)).Put(more(character >> 6));
            Put(more(character));
        }
    }
    // Where so many characters may be written behind the text.
    char* Room(std::size_t size) {
        if (size > m_text.size() - m_size) Grow(size);
        return m_text.data() + m_size;
    }
    Text& EndAt(const char* end) {
        m_size = static_cast<std::size_t>(end - m_text.data());
        return *this;
    }
    void Grow(std::size_t size) {
        m_text.resize(std::max(2 * m_text.size(), std::max(m_firstRoom, m_size + size)));
    }

    std::string m_text;      // with room for more than is written
    std::size_t m_size = 0;  // what is written
    std::size_t m_firstRoom;
};

// Rectangles as one path, as far as they lie on the sheet: viewers have no room for numbers without
// end.
void putRects(Text& text, const Region& region, const DeviceCaps& sheet) {
    text.Put("<path d=\"");
    const CRect whole(0, 0, sheet.width, sheet.height);
    for (const RECT& rect : region.Rects()) {
        CRect part;
        if (!part.IntersectRect(&rect, &whole)) continue;
        text.Put("M").Put(part.left).Put(" ").Put(part.top).Put("h").Put(part.Width());
        text.Put("v").Put(part.Height()).Put("h").Put(-part.Width()).Put("z");
    }
    text.Put("\"");
}

void putPoints(Text& text, std::string_view start, std::span<const POINT> points,
               std::int64_t offset, const HalfPoint& first, const HalfPoint& last) {
    text.Put(start);
    for (std::size_t i = 0; i < points.size(); ++i) {
        HalfPoint at = place(points[i], offset);
        if (i == 0) at = at + first;
        if (i + 1 == points.size()) at = at + last;
        text.Put(i == 0 ? "" : " ").Halves(at.x).Put(",").Halves(at.y);
    }
    text.Put("\"");
}

}  // namespace

class SvgDevice::Writer {
public:
    explicit Writer(const SvgSheet& sheet);

    const DeviceCaps& Caps() const { return m_caps; }
    std::string Finish();

    void Polyline(const Paint& paint, std::span<const POINT> points);
    void Polygon(const Paint& paint, std::span<const POINT> points);
    void Rectangle(const Paint& paint, const RECT& rect);
    void Ellipse(const Paint& paint, const RECT& rect);
    void Fill(const Paint& paint, const RECT& rect);
    void Fill(const Paint& paint, const Region& region);
    void Pixel(const Region* clip, const POINT& point, COLORREF color);
    void Run(const TextRun& run);

private:
    // What closed shapes are filled with: nothing, a colour, or a hatch by its number.
    struct FillStyle {
        bool isVisible = false;
        COLORREF color = cBlack;
        int hatch = 0;
    };

    // Prepares for a primitive inside the clip; false when it would not show.
    bool Begin(const Region* clip);
    void End() { m_text.Put("/>\n"); }
    FillStyle Prepare(const Paint& paint);
    void PutFill(const FillStyle& fill);
    void PutStroke(const LOGPEN& pen, COLORREF color, bool dashed);
    template <class Outline>
    void Shape(const Paint& paint, const FillStyle& fill, Outline outline);
    // A closed shape whose pen runs inside or along the edges of a box, which is given in halves.
    template <class Outline>
    void Box(const Paint& paint, const RECT& rect, Outline outline);
    void Solid(std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height,
               COLORREF color);
    void PutFont(const TextRun& run);
    void PutCharacters(const TextRun& run);
    void TextLine(const TextRun& run, double place);

    DeviceCaps m_caps;
    Text m_text{cRoomOfPicture};
    bool m_isOpen = true;
    std::optional<Region> m_clip;
    Definitions<Region, cKeptClips> m_clips;
    Definitions<Hatch, cKeptHatches> m_hatches;
    LOGFONT m_font;  // the one that m_fontText describes
    double m_fontEm = 0;
    Text m_fontText{cRoomOfFont};
};

SvgDevice::Writer::Writer(const SvgSheet& sheet) {
    const int width = std::max(sheet.width, 0);
    const int height = std::max(sheet.height, 0);
    const int dpi = std::max(sheet.dpi, 1);
    const auto millimetres = [dpi](int units) { return units * cMillimetresPerInch / dpi; };
    m_caps = {dpi,  dpi, width, height, toInt(millimetres(width)), toInt(millimetres(height)),
              false};
    m_text.Put(
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg "
        "xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\"");
    const auto size = [&](std::string_view start, int units) {
        m_text.Put(start);
        if (dpi == cPixelsPerInch) {
            m_text.Put(units);
        } else {
            m_text.Put(millimetres(units)).Put("mm");
        }
        m_text.Put("\"");
    };
    size(" width=\"", width);
    size(" height=\"", height);
    m_text.Put(" viewBox=\"0 0 ").Put(width).Put(" ").Put(height).Put("\"");
    m_text.Put(" xml:space=\"preserve\" shape-rendering=\"crispEdges\" stroke-linejoin=\"round\"");
    m_text.Put(" font-family=\"").Put(cArial).Put("\">\n");
    if (!sheet.title.empty()) {
        m_text.Put("<title>").Escaped(sheet.title).Put("</title>\n");
    }
    if (!sheet.description.empty()) {
        m_text.Put("<desc>").Escaped(sheet.description).Put("</desc>\n");
    }
}

std::string SvgDevice::Writer::Finish() {
    if (!std::exchange(m_isOpen, false)) return {};
    m_text.Put(m_clip ? "</g>\n</svg>\n" : "</svg>\n");
    return m_text.Size() <= cMaxSvg ? m_text.Take() : std::string();
}

bool SvgDevice::Writer::Begin(const Region* clip) {
    if (!m_isOpen || m_text.Size() > cMaxSvg || (clip != nullptr && clip->IsEmpty())) return false;
    if (clip == nullptr ? !m_clip : m_clip == *clip) return true;
    if (m_clip) m_text.Put("</g>\n");
    m_clip = clip != nullptr ? std::optional(*clip) : std::nullopt;
    if (!m_clip) return true;
    const auto [number, isNew] = m_clips.NumberOf(*m_clip);
    if (isNew) {
        m_text.Attribute("<clipPath id=\"c", number).Put(">");
        putRects(m_text, *m_clip, m_caps);
        m_text.Put("/></clipPath>\n");
    }
    m_text.Put("<g clip-path=\"url(#c").Put(number).Put(")\">\n");
    return true;
}

// Styles.

SvgDevice::Writer::FillStyle SvgDevice::Writer::Prepare(const Paint& paint) {
    if (paint.brush.lbStyle == BS_NULL) return {};
    if (paint.brush.lbStyle != BS_HATCHED) return {true, paint.brush.lbColor, 0};
    const Hatch hatch = {std::min<std::uintptr_t>(paint.brush.lbHatch, cHatchPaths.size() - 1),
                         paint.brush.lbColor, paint.opaque,
                         paint.opaque ? paint.background : cWhite};
    const auto [number, isNew] = m_hatches.NumberOf(hatch);
    if (isNew) {
        m_text.Attribute("<pattern id=\"h", number);
        m_text.Put(" width=\"8\" height=\"8\" patternUnits=\"userSpaceOnUse\">");
        if (hatch.opaque) {
            m_text.Put("<path d=\"M0 0h8v8h-8z\" fill=\"").Color(hatch.background).Put("\"/>");
        }
        m_text.Put("<path d=\"").Put(cHatchPaths[hatch.hatch]).Put("\" stroke=\"");
        m_text.Color(hatch.color).Put("\"/></pattern>\n");
    }
    return {true, cBlack, number};
}

void SvgDevice::Writer::PutFill(const FillStyle& fill) {
    if (!fill.isVisible) {
        m_text.Put(" fill=\"none\"");
    } else if (fill.hatch != 0) {
        m_text.Put(" fill=\"url(#h").Put(fill.hatch).Put(")\"");
    } else if (fill.color != cBlack) {
        m_text.Put(" fill=\"").Color(fill.color).Put("\"");
    }
}

void SvgDevice::Writer::PutStroke(const LOGPEN& pen, COLORREF color, bool dashed) {
    m_text.Put(" stroke=\"").Color(color).Put("\"");
    if (widthOf(pen) > 1) m_text.Attribute(" stroke-width=\"", widthOf(pen));
    if (dashed) {
        m_text.Put(" stroke-dasharray=\"").Put(cDashes[pen.lopnStyle - PS_DASH]).Put("\"");
    }
}

// Shapes.

template <class Outline>
void SvgDevice::Writer::Shape(const Paint& paint, const FillStyle& fill, Outline outline) {
    const bool dashed = isDashed(paint.pen);
    const bool hasGround = dashed && paint.opaque;
    if (hasGround) {
        outline();
        PutFill(fill);
        PutStroke(paint.pen, paint.background, false);
        End();
    }
    outline();
    PutFill(hasGround ? FillStyle() : fill);
    if (isVisible(paint.pen)) PutStroke(paint.pen, paint.pen.lopnColor, dashed);
    End();
}

void SvgDevice::Writer::Polyline(const Paint& paint, std::span<const POINT> points) {
    if (!isVisible(paint.pen) || points.size() < 2 || !Begin(paint.clip)) return;
    const bool thin = widthOf(paint.pen) == 1;
    const auto last = points.size() - 1;
    const HalfPoint none = {0, 0};
    const HalfPoint first = thin ? endShift(points[0], points[1]) : none;
    const HalfPoint end = thin ? endShift(points[last - 1], points[last]) : none;
    Shape(paint, FillStyle(), [&] {
        putPoints(m_text, "<polyline points=\"", points, penOffset(paint.pen), first, end);
        if (!thin) m_text.Put(" stroke-linecap=\"round\"");
    });
}

void SvgDevice::Writer::Polygon(const Paint& paint, std::span<const POINT> points) {
    const bool shows = isVisible(paint.pen) || paint.brush.lbStyle != BS_NULL;
    if (!shows || points.size() < 2 || !Begin(paint.clip)) return;
    const FillStyle fill = Prepare(paint);
    Shape(paint, fill, [&] {
        putPoints(m_text, "<polygon points=\"", points, penOffset(paint.pen), {0, 0}, {0, 0});
        if (fill.isVisible && paint.fillMode == 1) m_text.Put(" fill-rule=\"evenodd\"");
    });
}

template <class Outline>
void SvgDevice::Writer::Box(const Paint& paint, const RECT& rect, Outline outline) {
    const LOGPEN& pen = paint.pen;
    const bool hasPen = isVisible(pen);
    if ((!hasPen && paint.brush.lbStyle == BS_NULL) || !Begin(paint.clip)) return;
    const int width = hasPen ? widthOf(pen) : 0;
    const bool inside = pen.lopnStyle == PS_INSIDEFRAME && width > 1;
    const std::int64_t offset = inside ? width : penOffset(pen);
    const std::int64_t less = inside ? width : 1;
    const HalfPoint corner = place({rect.left, rect.top}, offset);
    const HalfPoint size = {std::int64_t{rect.right} - rect.left - less,
                            std::int64_t{rect.bottom} - rect.top - less};
    if (size.x > 0 && size.y > 0) {
        const FillStyle fill = Prepare(paint);
        return Shape(paint, fill, [&] { outline(corner, size); });
    }
    // So thin that there is only the pen.
    if (!hasPen) return;
    const int reach = inside ? 0 : width / 2;
    const int more = inside ? 0 : width - 1;
    Solid(std::int64_t{rect.left} - reach, std::int64_t{rect.top} - reach,
          std::int64_t{rect.right} - rect.left + more, std::int64_t{rect.bottom} - rect.top + more,
          pen.lopnColor);
}

void SvgDevice::Writer::Rectangle(const Paint& paint, const RECT& rect) {
    Box(paint, rect, [&](const HalfPoint& corner, const HalfPoint& size) {
        m_text.HalvesAttribute("<rect x=\"", corner.x).HalvesAttribute(" y=\"", corner.y);
        m_text.Attribute(" width=\"", size.x).Attribute(" height=\"", size.y);
    });
}

void SvgDevice::Writer::Ellipse(const Paint& paint, const RECT& rect) {
    Box(paint, rect, [&](const HalfPoint& corner, const HalfPoint& size) {
        m_text.HalvesAttribute("<ellipse cx=\"", corner.x + size.x);
        m_text.HalvesAttribute(" cy=\"", corner.y + size.y);
        m_text.HalvesAttribute(" rx=\"", size.x).HalvesAttribute(" ry=\"", size.y);
    });
}

void SvgDevice::Writer::Solid(std::int64_t left, std::int64_t top, std::int64_t width,
                              std::int64_t height, COLORREF color) {
    m_text.Attribute("<rect x=\"", left).Attribute(" y=\"", top);
    m_text.Attribute(" width=\"", width).Attribute(" height=\"", height);
    PutFill({true, color, 0});
    End();
}

void SvgDevice::Writer::Fill(const Paint& paint, const RECT& rect) {
    if (paint.brush.lbStyle == BS_NULL || !Begin(paint.clip)) return;
    const FillStyle fill = Prepare(paint);
    m_text.Attribute("<rect x=\"", rect.left).Attribute(" y=\"", rect.top);
    m_text.Attribute(" width=\"", std::int64_t{rect.right} - rect.left);
    m_text.Attribute(" height=\"", std::int64_t{rect.bottom} - rect.top);
    PutFill(fill);
    End();
}

void SvgDevice::Writer::Fill(const Paint& paint, const Region& region) {
    const bool shows = paint.brush.lbStyle != BS_NULL && !region.IsEmpty();
    if (!shows || !Begin(paint.clip)) return;
    const FillStyle fill = Prepare(paint);
    putRects(m_text, region, m_caps);
    PutFill(fill);
    End();
}

void SvgDevice::Writer::Pixel(const Region* clip, const POINT& point, COLORREF color) {
    if (Begin(clip)) Solid(point.x, point.y, 1, 1, color);
}

// Texts.

void SvgDevice::Writer::PutFont(const TextRun& run) {
    const LOGFONT& font = *run.font;
    const double em = run.sizedFont->Em();
    if (m_fontEm == em && m_font == font) {
        m_text.Put(m_fontText.View());
        return;
    }
    m_font = font;
    m_fontEm = em;
    m_fontText.Clear();
    m_fontText.Put(" font-size=\"").Put(em).Put("\"");
    const std::string_view face = font.lfFaceName;
    const std::string_view names = familyOf(font);
    const bool own = !face.empty() && !isKnown(face) && !isSymbolFont(font);
    if (own || names != cArial) {
        m_fontText.Put(" font-family=\"");
        if (own) {
            std::string plain(face);
            std::erase_if(plain, [](char ch) { return ch == '\'' || ch == '\\'; });
            m_fontText.Put("'").Escaped(plain).Put("',");
        }
        m_fontText.Put(names).Put("\"");
    }
    if (font.lfWeight >= cFirstBoldWeight) m_fontText.Put(" font-weight=\"bold\"");
    if (font.lfItalic != 0) m_fontText.Put(" font-style=\"italic\"");
    m_text.Put(m_fontText.View());
}

void SvgDevice::Writer::PutCharacters(const TextRun& run) {
    const bool codes = isSymbolFont(*run.font);
    const auto characterOf = [codes](char ch) {
        return codes ? symbolToUnicode(ch) : toUnicode(ch);
    };
    const auto isWritten = [&](char ch) { return Text::IsWritten(characterOf(ch)); };
    if (std::none_of(run.text.begin(), run.text.end(), isWritten)) return;
    std::string_view start = "<text x=\"";
    for (std::size_t i = 0; i < run.text.size(); ++i) {
        if (!isWritten(run.text[i])) continue;
        m_text.Put(std::exchange(start, " "));
        m_text.Put(std::int64_t{run.origin.x} + run.positions[i]);
    }
    m_text.Attribute("\" y=\"", run.origin.y);
    PutFont(run);
    PutFill({true, run.color, 0});
    m_text.Put(">");
    for (const char ch : run.text) {
        if (isWritten(ch)) m_text.Character(characterOf(ch));
    }
    m_text.Put("</text>\n");
}

void SvgDevice::Writer::TextLine(const TextRun& run, double place) {
    const double em = run.sizedFont->Em();
    const int thickness = std::max(1, toInt(em * cTextLineThickness + 0.5));
    const int above = toInt(em * place);
    Solid(run.origin.x, std::int64_t{run.origin.y} - above, std::max(0, run.positions.back()),
          thickness, run.color);
}

void SvgDevice::Writer::Run(const TextRun& run) {
    const RECT cell = {run.origin.x, run.origin.y - run.sizedFont->Ascent(),
                       run.origin.x + run.positions.back(),
                       run.origin.y + run.sizedFont->Descent()};
    const bool isCut = run.isClipped && !isWithin(cell, run.clipRect);
    const Region* clip = run.clip;
    Region cut;
    if (isCut) {
        cut = Region(run.clipRect);
        if (clip != nullptr) cut = clip->And(cut);
        clip = &cut;
    }
    if (!Begin(clip)) return;
    if (run.hasBackground && !CRect(run.background).IsRectEmpty()) {
        const RECT& ground = run.background;
        Solid(ground.left, ground.top, std::int64_t{ground.right} - ground.left,
              std::int64_t{ground.bottom} - ground.top, run.backgroundColor);
    }
    PutCharacters(run);
    if (run.font->lfUnderline != 0) TextLine(run, cUnderlinePlace);
    if (run.font->lfStrikeOut != 0) TextLine(run, cStrikeOutPlace);
}

// The device.

SvgDevice::SvgDevice(const SvgSheet& sheet) : m_writer(std::make_unique<Writer>(sheet)) {}

SvgDevice::~SvgDevice() = default;

std::string SvgDevice::Finish() {
    return m_writer->Finish();
}

const DeviceCaps& SvgDevice::Caps() const {
    return m_writer->Caps();
}

void SvgDevice::DrawLine(const Paint& paint, POINT from, POINT to) {
    const std::array<POINT, 2> ends = {from, to};
    const bool thin = paint.pen.lopnWidth.x <= 1;
    if (!thin || from != to) m_writer->Polyline(paint, ends);
}

void SvgDevice::DrawPolyline(const Paint& paint, std::span<const POINT> points) {
    m_writer->Polyline(paint, points);
}

void SvgDevice::DrawPolygon(const Paint& paint, std::span<const POINT> points) {
    m_writer->Polygon(paint, points);
}

void SvgDevice::DrawRectangle(const Paint& paint, const RECT& rect) {
    m_writer->Rectangle(paint, rect);
}

void SvgDevice::DrawEllipse(const Paint& paint, const RECT& rect) {
    m_writer->Ellipse(paint, rect);
}

void SvgDevice::FillRectangle(const Paint& paint, const RECT& rect) {
    m_writer->Fill(paint, rect);
}

void SvgDevice::FillRegion(const Paint& paint, const Region& region) {
    m_writer->Fill(paint, region);
}

void SvgDevice::SetPixel(const Paint& paint, POINT point, COLORREF color) {
    m_writer->Pixel(paint.clip, point, color);
}

void SvgDevice::DrawText(const TextRun& run) {
    m_writer->Run(run);
}

BOOL saveSvg(std::string_view svg, const char* fileName) {
    if (fileName == nullptr) return 0;
    try {
        WholeFile file(fileName);
        file.Write(svg.data(), svg.size());
        file.Commit();
    } catch (const CFileException&) {
        return 0;
    }
    return 1;
}

}  // namespace tessalink
