#pragma once

#include <vector>

#include "platform/qt/detail/Canvas.h"
#include "platform/qt/detail/PixelLines.h"
#include "platform/qt/detail/PixelPolygon.h"

namespace tessalink::detail {

// Draws on screens and images, pixel by pixel as the rules say.
class PixelCanvas : public Canvas {
public:
    PixelCanvas(QPainter& painter, double aspect);

    void StrokeLines(const Paint& paint, std::span<const POINT> points, bool isClosed) override;
    void FillPolygon(const Paint& paint, std::span<const POINT> points) override;
    void FillRectangles(const Paint& paint, std::span<const RECT> rects) override;
    void DrawEllipse(const Paint& paint, const RECT& rect) override;

private:
    struct Row {
        LONG y;
        LONG left;
        LONG right;
        // Between these the pixels don't touch the outside.
        LONG innerLeft;
        LONG innerRight;
    };

    void fill(const QBrush& brush, const std::vector<QRect>& rects);
    void stroke_wide(const LOGPEN& pen, std::span<const Place> points, bool isClosed);
    void outline(const Paint& paint, const PixelLines& lines);
    std::vector<Row> rows_of_ellipse(const RECT& rect) const;
    void outline_ellipse(const Paint& paint, const std::vector<Row>& rows);
    void dash_ellipse(const Paint& paint, const RECT& rect, const std::vector<Row>& rows);

    RECT m_visible{};
};

}  // namespace tessalink::detail
