#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/graphics/NullDevice.h"

namespace tessalink {

/// One primitive as a value, in device units. What its kind has no use for has its default.
struct Primitive {
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

    Kind kind = Kind::Line;
    LOGPEN pen{};
    LOGBRUSH brush{};
    COLORREF background = cWhite;  ///< between dashes and hatches, when `opaque`
    bool opaque = true;
    int fillMode = ALTERNATE;
    std::optional<Region> clip;

    std::vector<POINT> points;
    RECT rect{};
    Region region;

    std::string text;
    LOGFONTA font{};
    std::vector<int> positions;
    COLORREF color = cBlack;
    std::optional<RECT> textBackground;
    COLORREF textBackgroundColor = cWhite;
    std::optional<RECT> textClip;
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
    using NullDevice::NullDevice;

    const std::vector<Primitive>& Primitives() const { return m_primitives; }
    /// A line for each primitive, in order.
    std::vector<std::string> Lines() const;
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
