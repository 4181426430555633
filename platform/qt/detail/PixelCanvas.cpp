#include "platform/qt/detail/PixelCanvas.h"

#include <QImage>
#include <algorithm>
#include <cmath>

#include "platform/graphics/GdiObjects.h"
#include "platform/qt/detail/Hatches.h"
#include "platform/qt/detail/QtShapes.h"

namespace tessalink::detail {

namespace {

// Ellipses that are larger have solid outlines.
constexpr int cLargestDashedEllipse = 1 << 15;

QBrush toQBrush(const Paint& paint) {
    if (paint.brush.lbStyle == BS_NULL) return Qt::NoBrush;
    if (paint.brush.lbStyle != BS_HATCHED) return toQColor(paint.brush.lbColor);
    QImage tile(cHatchSize, cHatchSize, QImage::Format_ARGB32_Premultiplied);
    tile.fill(paint.opaque ? toQColor(paint.background) : QColor(Qt::transparent));
    const auto& rows = cHatches[std::min<std::size_t>(paint.brush.lbHatch, cHatches.size() - 1)];
    for (int y = 0; y < cHatchSize; ++y) {
        for (int x = 0; x < cHatchSize; ++x) {
            const bool isSet = (rows[static_cast<std::size_t>(y)] << x & 0x80) != 0;
            if (isSet) tile.setPixelColor(x, y, toQColor(paint.brush.lbColor));
        }
    }
    return QBrush(tile);
}

// Where the corners of polygons lie in their pixel: the classic rule has them at its center, so
// that filled polygons meet their outline.
constexpr double cCentre = 0.5;

std::vector<Place> placesOf(std::span<const POINT> points, double shift) {
    std::vector<Place> places;
    places.reserve(points.size());
    for (const POINT& point : points) places.push_back({point.x + shift, point.y + shift});
    return places;
}

void addSpan(std::vector<QRect>& spans, LONG y, LONG left, LONG right) {
    if (left < right) spans.emplace_back(left, y, right - left, 1);
}

}  // namespace

PixelCanvas::PixelCanvas(QPainter& painter, double aspect) : Canvas(painter, aspect) {
    const QPaintDevice& device = *painter.device();
    // An image tells its pixels, a widget its units.
    const bool isWidget = device.devType() == QInternal::Widget;
    const QTransform place = isWidget ? painter.worldTransform() : painter.combinedTransform();
    const QRectF whole(0, 0, device.width(), device.height());
    const QRect visible = place.inverted().mapRect(whole).toAlignedRect();
    m_visible = {visible.left(), visible.top(), visible.right() + 1, visible.bottom() + 1};
}

void PixelCanvas::fill(const QBrush& brush, const std::vector<QRect>& rects) {
    if (rects.empty() || brush.style() == Qt::NoBrush) return;
    painter().setPen(Qt::NoPen);
    painter().setBrush(brush);
    painter().drawRects(rects.data(), static_cast<int>(rects.size()));
}

void PixelCanvas::outline(const Paint& paint, const PixelLines& lines) {
    if (paint.opaque) fill(toQColor(paint.background), lines.Gaps());
    fill(toQColor(paint.pen.lopnColor), lines.Ink());
}

void PixelCanvas::stroke_wide(const LOGPEN& pen, std::span<const Place> points, bool isClosed) {
    fill(toQColor(pen.lopnColor), pixelsOfWideLine(points, isClosed, pen.lopnWidth.x, m_visible));
}

void PixelCanvas::StrokeLines(const Paint& paint, std::span<const POINT> points, bool isClosed) {
    if (paint.pen.lopnWidth.x > 1) {
        return stroke_wide(paint.pen, placesOf(points, penCentre(paint.pen)), isClosed);
    }
    PixelLines lines(m_visible, dashesOf(paint.pen));
    for (std::size_t i = 1; i < points.size(); ++i) lines.Add(points[i - 1], points[i]);
    if (isClosed) lines.Add(points.back(), points.front());
    outline(paint, lines);
}

void PixelCanvas::FillPolygon(const Paint& paint, std::span<const POINT> points) {
    fill(toQBrush(paint),
         pixelsOfPolygon(placesOf(points, cCentre), paint.fillMode == WINDING, m_visible));
}

void PixelCanvas::FillRectangles(const Paint& paint, std::span<const RECT> rects) {
    std::vector<QRect> seen;
    for (const RECT& rect : rects) {
        CRect part;
        if (part.IntersectRect(&rect, &m_visible)) seen.push_back(toQRect(part));
    }
    fill(toQBrush(paint), seen);
}

std::vector<PixelCanvas::Row> PixelCanvas::rows_of_ellipse(const RECT& rect) const {
    const Region ellipse = Region::OfEllipse(rect);
    std::vector<Row> rows;
    for (const RECT& band : ellipse.Rects()) {
        const LONG last = std::min(band.bottom, m_visible.bottom + 1);
        for (LONG y = std::max(band.top, m_visible.top - 1); y < last; ++y) {
            rows.push_back({y, band.left, band.right, band.right, band.right});
        }
    }
    for (std::size_t i = 1; i + 1 < rows.size(); ++i) {
        Row& row = rows[i];
        row.innerLeft = std::max({row.left + 1, rows[i - 1].left, rows[i + 1].left});
        row.innerRight = std::min({row.right - 1, rows[i - 1].right, rows[i + 1].right});
        if (row.innerLeft >= row.innerRight) row.innerLeft = row.innerRight = row.right;
    }
    return rows;
}

void PixelCanvas::DrawEllipse(const Paint& paint, const RECT& rect) {
    const bool hasPen = paint.pen.lopnStyle != PS_NULL;
    const bool isWide = hasPen && paint.pen.lopnWidth.x > 1;
    const bool isThin = hasPen && !isWide;
    const std::vector<Row> rows = rows_of_ellipse(isWide   ? penPath(paint.pen, rect)
                                                  : isThin ? rect
                                                           : withoutPen(rect));
    std::vector<QRect> spans;
    for (const Row& row : rows) {
        addSpan(spans, row.y, isThin ? row.innerLeft : row.left,
                isThin ? row.innerRight : row.right);
    }
    fill(toQBrush(paint), spans);
    if (isWide) {
        const QRectF frame = penFrame(paint.pen, rect);
        const Place middle = {frame.center().x(), frame.center().y()};
        stroke_wide(paint.pen, cornersOfEllipse(middle, frame.width() / 2, frame.height() / 2),
                    true);
    } else if (isThin) {
        const bool isDashed = !dashesOf(paint.pen).empty() &&
                              CRect(rect).Width() <= cLargestDashedEllipse &&
                              CRect(rect).Height() <= cLargestDashedEllipse;
        isDashed ? dash_ellipse(paint, rect, rows) : outline_ellipse(paint, rows);
    }
}

void PixelCanvas::outline_ellipse(const Paint& paint, const std::vector<Row>& rows) {
    std::vector<QRect> spans;
    for (const Row& row : rows) {
        addSpan(spans, row.y, row.left, row.innerLeft);
        addSpan(spans, row.y, row.innerRight, row.right);
    }
    fill(toQColor(paint.pen.lopnColor), spans);
}

// The dashes run clockwise from the right.
void PixelCanvas::dash_ellipse(const Paint& paint, const RECT& rect, const std::vector<Row>& rows) {
    const double centreX = (static_cast<double>(rect.left) + rect.right - 1) / 2;
    const double centreY = (static_cast<double>(rect.top) + rect.bottom - 1) / 2;
    struct Pixel {
        double angle;
        POINT place{};
    };
    std::vector<Pixel> pixels;
    const auto add = [&](LONG from, LONG to, LONG y) {
        for (LONG x = from; x < to; ++x) {
            pixels.push_back({std::atan2(y - centreY, x - centreX), {x, y}});
        }
    };
    for (const Row& row : rows) {
        add(row.left, row.innerLeft, row.y);
        add(row.innerRight, row.right, row.y);
    }
    std::stable_sort(pixels.begin(), pixels.end(),
                     [](const Pixel& a, const Pixel& b) { return a.angle < b.angle; });
    PixelLines lines(m_visible, dashesOf(paint.pen));
    for (const Pixel& pixel : pixels) lines.Add(pixel.place);
    outline(paint, lines);
}

}  // namespace tessalink::detail
