#pragma once

#include "platform/qt/detail/Canvas.h"

namespace tessalink::detail {

// Draws on printers and into PDF, by lines and curves.
class VectorCanvas final : public Canvas {
public:
    using Canvas::Canvas;

    void StrokeLines(const Paint& paint, std::span<const POINT> points, bool isClosed) override;
    bool DrawOutlined(const Paint& paint, std::span<const POINT> points) override;
    void FillPolygon(const Paint& paint, std::span<const POINT> points) override;
    void FillRectangles(const Paint& paint, std::span<const RECT> rects) override;
    void DrawEllipse(const Paint& paint, const RECT& rect) override;

private:
    void use(const QPen& pen);
    void use(const QPen& pen, const QBrush& brush);
    void draw(const QPainterPath& path, const QPen& pen, const QBrush& brush);
    void fill(const Paint& paint, const QPainterPath& path);
    template <class Draw>
    void stroke(const Paint& paint, Draw&& draw);
    void hatch(const Paint& paint, const QRectF& area);
};

}  // namespace tessalink::detail
