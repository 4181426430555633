#include "platform/qt/detail/PixelPolygon.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace tessalink::detail {

namespace {

// Where an edge crosses a row, and whether it goes down or up there.
struct Crossing {
    double x;
    int winding;

    bool operator<(const Crossing& other) const { return x < other.x; }
};

// The first pixel whose center is not left of (above) the place, within bounds.
int firstPixel(double place, LONG least, LONG most) {
    return static_cast<int>(std::clamp<double>(std::ceil(place - 0.5), least, most));
}

bool crosses(const Place& a, const Place& b, double y) {
    return (a.y <= y) != (b.y <= y);
}

double crossingOf(const Place& a, const Place& b, double y) {
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    return (a.x * dy + (y - a.y) * dx) / dy;
}

void findCrossings(std::span<const Place> corners, double y, std::vector<Crossing>& crossings) {
    crossings.clear();
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Place& a = corners[i];
        const Place& b = corners[i + 1 < corners.size() ? i + 1 : 0];
        if (!crosses(a, b, y)) continue;
        crossings.push_back({crossingOf(a, b, y), a.y <= y ? 1 : -1});
    }
    std::sort(crossings.begin(), crossings.end());
}

void addSpan(std::vector<QRect>& spans, LONG row, double from, double to, const RECT& visible) {
    const int left = firstPixel(from, visible.left, visible.right);
    const int right = firstPixel(to, visible.left, visible.right);
    if (left < right) spans.emplace_back(left, row, right - left, 1);
}

// The visible rows, from the first to before the last, whose centers lie within the polygon's
// height.
std::pair<LONG, LONG> rowsOf(std::span<const Place> corners, const RECT& visible) {
    const auto [highest, lowest] = std::minmax_element(
        corners.begin(), corners.end(), [](const Place& a, const Place& b) { return a.y < b.y; });
    return {firstPixel(highest->y, visible.top, visible.bottom),
            firstPixel(lowest->y, visible.top, visible.bottom)};
}

void addPolygon(std::vector<QRect>& spans, std::span<const Place> corners, bool isWinding,
                const RECT& visible) {
    std::vector<Crossing> crossings;
    const auto [first, last] = rowsOf(corners, visible);
    for (LONG row = first; row < last; ++row) {
        findCrossings(corners, row + 0.5, crossings);
        int inside = 0;
        for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
            inside += isWinding ? crossings[i].winding : 1;
            if (isWinding ? inside == 0 : inside % 2 == 0) continue;
            addSpan(spans, row, crossings[i].x, crossings[i + 1].x, visible);
        }
    }
}

// A row crosses the outline of a convex polygon twice or not at all.
void addConvex(std::vector<QRect>& spans, std::span<const Place> corners, const RECT& visible) {
    const auto [first, last] = rowsOf(corners, visible);
    for (LONG row = first; row < last; ++row) {
        const double y = row + 0.5;
        double left = std::numeric_limits<double>::infinity();
        double right = -left;
        const Place* before = &corners.back();
        for (const Place& corner : corners) {
            if (crosses(*before, corner, y)) {
                const double x = crossingOf(*before, corner, y);
                left = std::min(left, x);
                right = std::max(right, x);
            }
            before = &corner;
        }
        if (left <= right) addSpan(spans, row, left, right, visible);
    }
}

void addDisc(std::vector<QRect>& spans, const Place& center, double radius, const RECT& visible) {
    const LONG last = firstPixel(center.y + radius, visible.top, visible.bottom);
    for (LONG row = firstPixel(center.y - radius, visible.top, visible.bottom); row < last; ++row) {
        const double y = row + 0.5 - center.y;
        const double reach = std::sqrt(std::max(0.0, radius * radius - y * y));
        addSpan(spans, row, center.x - reach, center.x + reach, visible);
    }
}

void addBar(std::vector<QRect>& spans, const Place& from, const Place& to, double radius,
            const RECT& visible) {
    const double dx = to.x - from.x;
    const double dy = to.y - from.y;
    const double length = std::hypot(dx, dy);
    if (length == 0) return;
    const double x = -dy / length * radius;
    const double y = dx / length * radius;
    const std::array<Place, 4> corners = {{{from.x + x, from.y + y},
                                           {to.x + x, to.y + y},
                                           {to.x - x, to.y - y},
                                           {from.x - x, from.y - y}}};
    addConvex(spans, corners, visible);
}

// The same pixels, each of them once, row by row.
std::vector<QRect> united(std::vector<QRect> spans) {
    std::sort(spans.begin(), spans.end(), [](const QRect& a, const QRect& b) {
        return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
    });
    std::size_t count = 0;
    for (const QRect& span : spans) {
        const bool meets = count > 0 && spans[count - 1].y() == span.y() &&
                           span.left() <= spans[count - 1].right() + 1;
        if (!meets) {
            spans[count++] = span;
        } else if (span.right() > spans[count - 1].right()) {
            spans[count - 1].setRight(span.right());
        }
    }
    spans.resize(count);
    return spans;
}

// Corners of a regular polygon in the unit circle, clockwise from the right. The last one is kept:
// marks come in hundreds of one size.
const std::vector<Place>& unitCircle(std::size_t count) {
    thread_local std::vector<Place> corners;
    if (corners.size() == count) return corners;
    corners.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double angle =
            2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(count);
        corners[i] = {std::cos(angle), std::sin(angle)};
    }
    return corners;
}

}  // namespace

std::vector<QRect> pixelsOfPolygon(std::span<const Place> corners, bool isWinding,
                                   const RECT& visible) {
    std::vector<QRect> spans;
    addPolygon(spans, corners, isWinding, visible);
    return spans;
}

std::vector<QRect> pixelsOfWideLine(std::span<const Place> points, bool isClosed, double width,
                                    const RECT& visible) {
    const double radius = width / 2;
    std::vector<QRect> spans;
    for (std::size_t i = 0; i < points.size(); ++i) {
        addDisc(spans, points[i], radius, visible);
        if (i > 0) addBar(spans, points[i - 1], points[i], radius, visible);
    }
    if (isClosed) addBar(spans, points.back(), points.front(), radius, visible);
    return united(std::move(spans));
}

std::vector<Place> cornersOfEllipse(const Place& center, double halfWidth, double halfHeight) {
    // No corner stands out of the ellipse by more than a twentieth of a pixel.
    constexpr double least = 16;
    constexpr double most = 4096;
    const double wanted = std::sqrt(std::max(halfWidth, halfHeight)) * 10;
    const auto count = static_cast<std::size_t>(std::clamp(wanted, least, most));
    std::vector<Place> corners = unitCircle(count);
    for (Place& corner : corners) {
        corner = {center.x + halfWidth * corner.x, center.y + halfHeight * corner.y};
    }
    return corners;
}

}  // namespace tessalink::detail
