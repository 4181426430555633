#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/graphics/PictureDevice.h"
#include "platform/graphics/detail/PictureText.h"

namespace tessalink::detail {

inline constexpr double cMillimetersPerInch = 25.4;

/// A place in halves of a unit.
struct HalfPoint {
    std::int64_t x;
    std::int64_t y;

    HalfPoint operator+(const HalfPoint& other) const { return {x + other.x, y + other.y}; }
};

/// A path. Lines of an odd width run through the middle of units, others between them.
struct Outline {
    enum class Kind { Polyline, Polygon, Rectangle, Ellipse, Rects };

    Kind kind = Kind::Rectangle;
    std::span<const POINT> points = {};  ///< of a polyline or polygon
    std::int64_t offset = 0;             ///< what moves all of them, in halves
    HalfPoint first = {0, 0};            ///< and what moves the first
    HalfPoint last = {0, 0};             ///< and the last besides
    bool roundEnds = false;              ///< of a polyline
    bool evenOdd = false;                ///< a polygon that is filled so
    HalfPoint corner = {0, 0};           ///< of a rectangle or the box of an ellipse: left and top
    HalfPoint size = {0, 0};             ///< and its size, in units
    const Region* region = nullptr;      ///< of rects

    HalfPoint At(std::size_t index) const {
        const POINT& point = points[index];
        HalfPoint at = {2 * std::int64_t{point.x} + offset, 2 * std::int64_t{point.y} + offset};
        if (index == 0) at = at + first;
        if (index + 1 == points.size()) at = at + last;
        return at;
    }
};

/// What a path is filled and stroked with.
struct Look {
    bool isFilled = false;
    bool isHatched = false;
    bool isOpaque = false;  ///< `background` shows between the lines of the hatch
    int hatch = 0;          ///< HS_...
    COLORREF color = cBlack;
    COLORREF background = cWhite;
    bool isStroked = false;
    int width = 1;
    UINT dash = PS_SOLID;
    COLORREF stroke = cBlack;
};

/// The kinds of faces that a picture can name.
enum class FaceKind { Arial, Times, Courier, Symbol };
FaceKind faceKindOf(const LOGFONTA& font);
/// Whether a face that the font names is one of those.
bool isKnownFace(const LOGFONTA& font);

/// What the pen style's dashes and gaps measure, from PS_DASH on, for instance "18 6".
std::string_view dashesOf(UINT style);

/// Whether a character has a picture: all but control characters.
inline bool isWritten(char32_t character) {
    constexpr char32_t firstControl = 0x7F;
    constexpr char32_t lastControl = 0x9F;
    return character >= ' ' && (character < firstControl || character > lastControl);
}

/// Finds out what a primitive shows: outlines, styles, clips, lines under texts. The formats write
/// it.
class PictureWriter {
public:
    virtual ~PictureWriter() = default;

    std::string Finish();

    const DeviceCaps& Caps() const { return m_caps; }
    void Polyline(const Paint& paint, std::span<const POINT> points);
    void Polygon(const Paint& paint, std::span<const POINT> points);
    void Box(Outline::Kind kind, const Paint& paint, const RECT& rect);
    void Fill(const Paint& paint, const RECT& rect);
    void Fill(const Paint& paint, const Region& region);
    void Pixel(const Region* clip, const POINT& point, COLORREF color);
    void Run(const TextRun& run);

protected:
    explicit PictureWriter(const PictureSheet& sheet);

    /// Shows what follows inside the region only, until CloseClip.
    virtual void OpenClip(const Region& clip) = 0;
    virtual void CloseClip() = 0;
    virtual void Shape(const Outline& outline, const Look& look) = 0;
    virtual void Characters(const TextRun& run) = 0;
    /// Writes what stands behind the last primitive.
    virtual void End() = 0;

    PictureText& Text() { return m_text; }
    /// The rectangles of the region as far as they lie on the sheet: viewers have no room for
    /// numbers without end.
    template <class Put>
    void EachRect(const Region& region, Put put) const {
        const CRect whole(0, 0, m_caps.width, m_caps.height);
        for (const RECT& rect : region.Rects()) {
            CRect part;
            if (part.IntersectRect(&rect, &whole)) put(part);
        }
    }

private:
    // Prepares for a primitive inside the clip; false when it would not show.
    bool Begin(const Region* clip);
    void Draw(const Paint& paint, const Outline& outline, const Look& look);
    void Solid(std::int64_t left, std::int64_t top, std::int64_t width, std::int64_t height,
               COLORREF color);
    void TextLine(const TextRun& run, double place);

    DeviceCaps m_caps;
    PictureText m_text;
    bool m_isOpen = true;
    std::optional<Region> m_clip;
};

}  // namespace tessalink::detail
