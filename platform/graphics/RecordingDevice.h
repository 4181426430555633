#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/graphics/NullDevice.h"

namespace tessalink {

/// One primitive as a value, in device units. What its kind has no use for has its default.
struct Primitive {
    /// What was drawn.
    enum class Kind {
        Line,           ///< two points
        Polyline,       ///< points
        Polygon,        ///< points
        Rectangle,      ///< rect
        Ellipse,        ///< rect
        FillRectangle,  ///< rect
        FillRegion,     ///< region
        Pixel,          ///< one point, color
        Text,           ///< one point: the origin; text, font, positions, color
    };

    Kind kind = Kind::Line;        ///< what was drawn
    LOGPEN pen{};                  ///< as in Paint
    LOGBRUSH brush{};              ///< as in Paint
    COLORREF background = cWhite;  ///< between dashes and hatches, when `opaque`
    bool opaque = true;            ///< whether gaps of dashes and hatches are filled
    int fillMode = ALTERNATE;      ///< ALTERNATE or WINDING
    std::optional<Region> clip;    ///< outside it nothing shows; nothing for no clipping

    std::vector<POINT> points;  ///< of a line, polyline, polygon or pixel; of a text its origin
    RECT rect{};                ///< of a rectangle, ellipse or filled rectangle
    Region region;              ///< of a filled region

    std::string text;                       ///< in the code page
    LOGFONTA font{};                        ///< of a text
    std::vector<int> positions;             ///< as in TextRun
    COLORREF color = cBlack;                ///< of a text or pixel
    std::optional<RECT> textBackground;     ///< filled before a text
    COLORREF textBackgroundColor = cWhite;  ///< the color of that
    std::optional<RECT> textClip;           ///< outside it a text does not show
};

/// The primitive as a line of text, without a line end, for instance
///   rectangle 10,10,100,60 pen solid 1 000000 brush solid ffffff clip 0,0,50,50
/// It says what can be seen and no more: a wide pen is solid, a pen has a width of at least 1, a
/// background is told where gaps show it, and colors are red, green and blue. Rectangles are left,
/// top, right, bottom; bytes of a text that are no printable ASCII are \xNN.
TESSALINK_API std::string toText(const Primitive& primitive);

/// Keeps what is drawn, for tests and for whoever looks into a picture.
class TESSALINK_API RecordingDevice : public NullDevice {
public:
    /// As NullDevice.
    using NullDevice::NullDevice;

    /// What was drawn so far, in order.
    const std::vector<Primitive>& Primitives() const { return m_primitives; }
    /// A line for each primitive, in order.
    std::vector<std::string> Lines() const;
    /// Forgets what was drawn.
    void Clear() { m_primitives.clear(); }

    void DrawLine(const Paint& paint, POINT from, POINT to) override;
    void DrawPolyline(const Paint& paint, std::span<const POINT> points) override;
    void DrawPolygon(const Paint& paint, std::span<const POINT> points) override;
    void DrawRectangle(const Paint& paint, const RECT& rect) override;
    void DrawEllipse(const Paint& paint, const RECT& rect) override;
    void FillRectangle(const Paint& paint, const RECT& rect) override;
    void FillRegion(const Paint& paint, const Region& region) override;
    void SetPixel(const Paint& paint, POINT point, COLORREF color) override;
    void DrawText(const TextRun& run) override;

private:
    Primitive& add(Primitive::Kind kind, const Paint& paint);

    std::vector<Primitive> m_primitives;
};

}  // namespace tessalink
