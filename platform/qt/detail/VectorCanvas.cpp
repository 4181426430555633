#include "platform/qt/detail/VectorCanvas.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/graphics/GdiObjects.h"
#include "platform/qt/detail/Hatches.h"
#include "platform/qt/detail/PixelLines.h"

namespace tessalink::detail {

namespace {

// How far a pen of one unit reaches.
constexpr double cHalf = 0.5;
constexpr int cDesignDpi = 96;
// Coordinates end here, where numbers in a file still tell units apart.
constexpr double cFarthest = 1 << 26;

QPointF toQPointF(const POINT& point) {
    return {std::clamp<double>(point.x, -cFarthest, cFarthest),
            std::clamp<double>(point.y, -cFarthest, cFarthest)};
}

QRectF toQRectF(const RECT& rect) {
    return {toQPointF({rect.left, rect.top}), toQPointF({rect.right, rect.bottom})};
}

// The point that is half a unit before `to` on the way from `from`; `to` when there is none.
QPointF halfUnitBefore(const QPointF& from, const QPointF& to) {
    const QPointF way = to - from;
    const double longer = std::max(std::abs(way.x()), std::abs(way.y()));
    return longer == 0 ? to : to - way * (cHalf / longer);
}

// A pen of more than a unit ends its lines roundly.
QPen solidPen(const LOGPEN& pen, COLORREF color) {
    const bool isWide = pen.lopnWidth.x > 1;
    return {toQColor(color), static_cast<double>(isWide ? pen.lopnWidth.x : 1), Qt::SolidLine,
            isWide ? Qt::RoundCap : Qt::FlatCap, isWide ? Qt::RoundJoin : Qt::MiterJoin};
}

QPainterPath closedPath(std::span<const POINT> points, double shift) {
    const QPointF offset(shift, shift);
    QPainterPath path(toQPointF(points[0]) + offset);
    for (const POINT& point : points.subspan(1)) path.lineTo(toQPointF(point) + offset);
    path.closeSubpath();
    return path;
}

Qt::FillRule fillRuleOf(const Paint& paint) {
    return paint.fillMode == WINDING ? Qt::WindingFill : Qt::OddEvenFill;
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

// The painter keeps pen and brush from one shape to the next: files name them only where they
// change.
void VectorCanvas::use(const QPen& pen) {
    if (painter().pen() != pen) painter().setPen(pen);
}

void VectorCanvas::use(const QPen& pen, const QBrush& brush) {
    use(pen);
    if (painter().brush() != brush) painter().setBrush(brush);
}

void VectorCanvas::draw(const QPainterPath& path, const QPen& pen, const QBrush& brush) {
    use(pen, brush);
    painter().drawPath(path);
}

// Draws with each of the pens that the lines take.
template <class Draw>
void VectorCanvas::stroke(const Paint& paint, Draw&& draw) {
    const auto dashes = dashesOf(paint.pen);
    if (dashes.empty()) return draw(solidPen(paint.pen, paint.pen.lopnColor));
    if (paint.opaque) draw(solidPen(paint.pen, paint.background));
    QPen pen = solidPen(paint.pen, paint.pen.lopnColor);
    pen.setDashPattern(QList<qreal>(dashes.begin(), dashes.end()));
    draw(pen);
}

void VectorCanvas::StrokeLines(const Paint& paint, std::span<const POINT> points, bool isClosed) {
    const double shift = penCentre(paint.pen);
    if (isClosed) {
        const QPainterPath path = closedPath(points, shift);
        return stroke(paint, [&](const QPen& pen) { draw(path, pen, Qt::NoBrush); });
    }
    std::vector<QPointF> places;
    places.reserve(points.size());
    for (const POINT& point : points) places.push_back(toQPointF(point) + QPointF(shift, shift));
    if (paint.pen.lopnWidth.x <= 1 && places.size() > 1) {
        // The first unit is covered wholly, the last one not at all.
        const QPointF first = halfUnitBefore(places[1], places[0]);
        places[0] += places[0] - first;
        places.back() = halfUnitBefore(places[places.size() - 2], places.back());
    }
    stroke(paint, [&](const QPen& pen) {
        use(pen);
        painter().drawPolyline(places.data(), static_cast<int>(places.size()));
    });
}

bool VectorCanvas::DrawOutlined(const Paint& paint, std::span<const POINT> points) {
    if (paint.brush.lbStyle != BS_SOLID || !dashesOf(paint.pen).empty()) return false;
    QPainterPath path = closedPath(points, penCentre(paint.pen));
    path.setFillRule(fillRuleOf(paint));
    draw(path, solidPen(paint.pen, paint.pen.lopnColor), toQColor(paint.brush.lbColor));
    return true;
}

void VectorCanvas::fill(const Paint& paint, const QPainterPath& path) {
    if (paint.brush.lbStyle == BS_NULL) return;
    if (paint.brush.lbStyle != BS_HATCHED) {
        return draw(path, Qt::NoPen, toQColor(paint.brush.lbColor));
    }
    if (paint.opaque) draw(path, Qt::NoPen, toQColor(paint.background));
    const SavedPainter saved(painter());
    painter().setClipPath(path, Qt::IntersectClip);
    const QRectF page(0, 0, painter().device()->width(), painter().device()->height());
    const QRectF seen = painter().combinedTransform().inverted().mapRect(page);
    hatch(paint, path.boundingRect().intersected(seen));
}

// Lines as far apart as on a screen, through the same places wherever the area lies.
void VectorCanvas::hatch(const Paint& paint, const QRectF& area) {
    const auto kind = std::min<std::size_t>(paint.brush.lbHatch, std::size(cHatchLines) - 1);
    const HatchLines& lines = cHatchLines[kind];
    const double scale = std::max(1.0, painter().device()->logicalDpiY() / double{cDesignDpi});
    const double step = cHatchSize * scale;
    const double across = step / 2 - scale * cHalf;
    QPainterPath path;
    const auto addLines = [&](double from, double to, double offset, auto line) {
        const double first = std::floor((from - offset) / step) * step + offset;
        for (int i = 0; first + i * step <= to; ++i) {
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
    QPainterPath path = closedPath(points, 0);
    path.setFillRule(fillRuleOf(paint));
    fill(paint, path);
}

void VectorCanvas::FillRectangles(const Paint& paint, std::span<const RECT> rects) {
    if (paint.brush.lbStyle == BS_SOLID) {
        use(Qt::NoPen, toQColor(paint.brush.lbColor));
        for (const RECT& rect : rects) painter().drawRect(toQRectF(rect));
        return;
    }
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
    path.addEllipse(penFrame(paint.pen, rect));
    if (paint.brush.lbStyle == BS_SOLID && dashesOf(paint.pen).empty()) {
        return draw(path, solidPen(paint.pen, paint.pen.lopnColor), toQColor(paint.brush.lbColor));
    }
    fill(paint, path);
    stroke(paint, [&](const QPen& pen) { draw(path, pen, Qt::NoBrush); });
}

}  // namespace tessalink::detail
