#pragma once

#include "platform/qt/detail/PixelCanvas.h"

namespace tessalink::detail {

// Draws on screens of more than 100 percent: level and upright edges as PixelCanvas does, round and
// slanted ones as fine as the screen allows.
class FineCanvas final : public PixelCanvas {
public:
    using PixelCanvas::PixelCanvas;

    void StrokeLines(const Paint& paint, std::span<const POINT> points, bool isClosed) override;
    void FillPolygon(const Paint& paint, std::span<const POINT> points) override;
    void DrawEllipse(const Paint& paint, const RECT& rect) override;

private:
    void draw(const QPainterPath& path, const QPen& pen, const QBrush& brush);
};

}  // namespace tessalink::detail
