#include "platform/qt/detail/FineCanvas.h"

#include <QPainterPath>

#include "platform/graphics/GdiObjects.h"

namespace tessalink::detail {

namespace {

bool isHatched(const Paint& paint) {
    return paint.brush.lbStyle == BS_HATCHED;
}

bool isDashed(const Paint& paint) {
    return !dashesOf(paint.pen).empty();
}

bool isLevelOrUpright(std::span<const POINT> points) {
    for (std::size_t i = 1; i < points.size(); ++i) {
        if (points[i].x != points[i - 1].x && points[i].y != points[i - 1].y) return false;
    }
    return true;
}

QPainterPath pathOf(std::span<const POINT> points, double shift, bool isClosed) {
    QPainterPath path(QPointF(points[0].x + shift, points[0].y + shift));
    for (const POINT& point : points.subspan(1)) path.lineTo(point.x + shift, point.y + shift);
    if (isClosed) path.closeSubpath();
    return path;
}

QPen penOf(const LOGPEN& pen) {
    if (pen.lopnStyle == PS_NULL) return Qt::NoPen;
    const bool isWide = pen.lopnWidth.x > 1;
    return {toQColor(pen.lopnColor), static_cast<double>(isWide ? pen.lopnWidth.x : 1),
            Qt::SolidLine, isWide ? Qt::RoundCap : Qt::FlatCap,
            isWide ? Qt::RoundJoin : Qt::MiterJoin};
}

QBrush brushOf(const Paint& paint) {
    return paint.brush.lbStyle == BS_NULL ? QBrush() : QBrush(toQColor(paint.brush.lbColor));
}

}  // namespace

void FineCanvas::draw(const QPainterPath& path, const QPen& pen, const QBrush& brush) {
    painter().setRenderHint(QPainter::Antialiasing);
    painter().setPen(pen);
    painter().setBrush(brush);
    painter().drawPath(path);
    painter().setRenderHint(QPainter::Antialiasing, false);
}

void FineCanvas::StrokeLines(const Paint& paint, std::span<const POINT> points, bool isClosed) {
    const bool isWide = paint.pen.lopnWidth.x > 1;
    const bool closesSlanted =
        isClosed && points.front().x != points.back().x && points.front().y != points.back().y;
    if (isDashed(paint) || (!isWide && !closesSlanted && isLevelOrUpright(points))) {
        return PixelCanvas::StrokeLines(paint, points, isClosed);
    }
    draw(pathOf(points, penCentre(paint.pen), isClosed), penOf(paint.pen), Qt::NoBrush);
}

void FineCanvas::FillPolygon(const Paint& paint, std::span<const POINT> points) {
    if (isHatched(paint)) return PixelCanvas::FillPolygon(paint, points);
    constexpr double cCentre = 0.5;
    QPainterPath path = pathOf(points, cCentre, true);
    path.setFillRule(paint.fillMode == WINDING ? Qt::WindingFill : Qt::OddEvenFill);
    draw(path, Qt::NoPen, brushOf(paint));
}

void FineCanvas::DrawEllipse(const Paint& paint, const RECT& rect) {
    if (isHatched(paint) || isDashed(paint)) return PixelCanvas::DrawEllipse(paint, rect);
    QPainterPath path;
    if (paint.pen.lopnStyle == PS_NULL) {
        const CRect inside(withoutPen(rect));
        path.addEllipse(inside.left, inside.top, inside.Width(), inside.Height());
    } else {
        path.addEllipse(penFrame(paint.pen, rect));
    }
    draw(path, penOf(paint.pen), brushOf(paint));
}

}  // namespace tessalink::detail
