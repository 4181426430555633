#include "platform/qt/detail/VectorCanvas.h"

#include <algorithm>
#include <cmath>

#include "platform/graphics/GdiObjects.h"
#include "platform/qt/detail/Hatches.h"
#include "platform/qt/detail/PixelLines.h"

namespace tessalink::detail {

namespace {

// Where a unit has its centre, and how far a pen of one unit reaches.
constexpr double cCentre = 0.5;
constexpr int cScreenDpi = 96;
// Lines of a hatch in one direction; an area that is larger has its hatch in its first part only.
constexpr int cMostHatchLines = 100'000;
// Coordinates end here, where numbers in a file still tell units apart.
constexpr double cFarthest = 1 << 26;

QPointF centreOf(const POINT& point) {
    return {std::clamp(point.x + cCentre, -cFarthest, cFarthest),
            std::clamp(point.y + cCentre, -cFarthest, cFarthest)};
}

QRectF toQRectF(const RECT& rect) {
    const QPointF topLeft = centreOf({rect.left, rect.top});
    const QPointF bottomRight = centreOf({rect.right, rect.bottom});
    return QRectF(topLeft, bottomRight).translated(-cCentre, -cCentre);
}

// The point that is half a unit before `to` on the way from `from`; `to` when there is none.
QPointF halfUnitBefore(const QPointF& from, const QPointF& to) {
    const QPointF way = to - from;
    const double longer = std::max(std::abs(way.x()), std::abs(way.y()));
    return longer == 0 ? to : to - way * (cCentre / longer);
}

struct HatchLines {
    bool horizontal;
    bool vertical;
    bool down;
    bool up;
};
constexpr HatchLines cHatchLines[] = {{true, false, false, false}, {false, true, false, false},
                                      {false, false, true, false}, {false, false, false, true},
                                      {true, true, false, false},  {false, false, true, true}};

}  // namespace

void VectorCanvas::stroke(const Paint& paint, const QPainterPath& path) {
    if (paint.pen.lopnWidth.x > 1) return stroke_wide(paint.pen, path);
    QPen pen(toQColor(paint.pen.lopnColor), 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    const auto dashes = dashesOf(paint.pen);
    if (!dashes.empty()) {
        if (paint.opaque) {
            painter().strokePath(path, QPen(toQColor(paint.background), 1, Qt::SolidLine,
                                            Qt::FlatCap, Qt::MiterJoin));
        }
        pen.setDashPattern(QList<qreal>(dashes.begin(), dashes.end()));
    }
    painter().strokePath(path, pen);
}

void VectorCanvas::StrokeLines(const Paint& paint, std::span<const POINT> points, bool isClosed) {
    const bool isThin = paint.pen.lopnWidth.x <= 1;
    // A thin line covers its first unit wholly and its last one not at all.
    QPainterPath path;
    const QPointF first = centreOf(points[0]);
    path.moveTo(isThin && !isClosed && points.size() > 1
                    ? first - (centreOf(points[1]) - halfUnitBefore(first, centreOf(points[1])))
                    : first);
    for (std::size_t i = 1; i < points.size(); ++i) {
        const bool endsShort = isThin && !isClosed && i + 1 == points.size();
        const QPointF to = centreOf(points[i]);
        path.lineTo(endsShort ? halfUnitBefore(centreOf(points[i - 1]), to) : to);
    }
    if (isClosed) path.closeSubpath();
    stroke(paint, path);
}

void VectorCanvas::fill(const Paint& paint, const QPainterPath& path) {
    if (paint.brush.lbStyle == BS_NULL) return;
    if (paint.brush.lbStyle != BS_HATCHED) {
        return painter().fillPath(path, toQColor(paint.brush.lbColor));
    }
    if (paint.opaque) painter().fillPath(path, toQColor(paint.background));
    const SavedPainter saved(painter());
    painter().setClipPath(path, Qt::IntersectClip);
    hatch(paint, path.boundingRect());
}

// Lines as far apart as on a screen, through the same places wherever the area lies.
void VectorCanvas::hatch(const Paint& paint, const QRectF& area) {
    const auto kind = std::min<std::size_t>(paint.brush.lbHatch, std::size(cHatchLines) - 1);
    const HatchLines& lines = cHatchLines[kind];
    const double scale = std::max(1.0, painter().device()->logicalDpiY() / double{cScreenDpi});
    const double step = cHatchSize * scale;
    const double across = cHatchSize / 2 * scale - scale * cCentre;
    QPainterPath path;
    const auto addLines = [&](double from, double to, double offset, auto line) {
        const double first = std::floor((from - offset) / step) * step + offset;
        for (int i = 0; i < cMostHatchLines && first + i * step <= to; ++i) {
            const auto [start, end] = line(first + i * step);
            path.moveTo(start);
            path.lineTo(end);
        }
    };
    const double height = area.height();
    if (lines.horizontal) {
        addLines(area.top(), area.bottom(), across, [&](double y) {
            return std::pair(QPointF(area.left(), y), QPointF(area.right(), y));
        });
    }
    if (lines.vertical) {
        addLines(area.left(), area.right(), across, [&](double x) {
            return std::pair(QPointF(x, area.top()), QPointF(x, area.bottom()));
        });
    }
    // Lines x - y = c, and x + y = c.
    if (lines.down) {
        addLines(area.left() - area.bottom(), area.right() - area.top(), 0, [&](double c) {
            const double x = c + area.top();
            return std::pair(QPointF(x, area.top()), QPointF(x + height, area.bottom()));
        });
    }
    if (lines.up) {
        addLines(area.left() + area.top(), area.right() + area.bottom(), 0, [&](double c) {
            const double x = c - area.top();
            return std::pair(QPointF(x, area.top()), QPointF(x - height, area.bottom()));
        });
    }
    painter().strokePath(path, QPen(toQColor(paint.brush.lbColor), scale));
}

void VectorCanvas::FillPolygon(const Paint& paint, std::span<const POINT> points) {
    QPainterPath path;
    path.setFillRule(paint.fillMode == WINDING ? Qt::WindingFill : Qt::OddEvenFill);
    const QPointF half(cCentre, cCentre);
    path.moveTo(centreOf(points[0]) - half);
    for (const POINT& point : points.subspan(1)) path.lineTo(centreOf(point) - half);
    path.closeSubpath();
    fill(paint, path);
}

void VectorCanvas::FillRectangles(const Paint& paint, std::span<const RECT> rects) {
    QPainterPath path;
    for (const RECT& rect : rects) path.addRect(toQRectF(rect));
    fill(paint, path);
}

void VectorCanvas::DrawEllipse(const Paint& paint, const RECT& rect) {
    QPainterPath path;
    if (paint.pen.lopnStyle == PS_NULL) {
        path.addEllipse(toQRectF(withoutPen(rect)));
        return fill(paint, path);
    }
    path.addEllipse(penFrame(paint.pen, rect).translated(cCentre, cCentre));
    fill(paint, path);
    stroke(paint, path);
}

}  // namespace tessalink::detail
