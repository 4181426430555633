#include "platform/qt/detail/PixelPolygon.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace tessalink::detail {

namespace {

// Where an edge crosses a row, and whether it goes down or up there.
struct Crossing {
    double x;
    int winding;

    bool operator<(const Crossing& other) const { return x < other.x; }
};

// The first pixel whose centre is not left of (above) the place, within bounds.
int firstPixel(double place, LONG least, LONG most) {
    return static_cast<int>(std::clamp<double>(std::ceil(place - 0.5), least, most));
}

void findCrossings(std::span<const Place> corners, double y, std::vector<Crossing>& crossings) {
    crossings.clear();
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Place& a = corners[i];
        const Place& b = corners[i + 1 < corners.size() ? i + 1 : 0];
        if ((a.y <= y) == (b.y <= y)) continue;
        const double dx = b.x - a.x;
        const double dy = b.y - a.y;
        crossings.push_back({(a.x * dy + (y - a.y) * dx) / dy, a.y <= y ? 1 : -1});
    }
    std::sort(crossings.begin(), crossings.end());
}

void addSpan(std::vector<QRect>& spans, LONG row, double from, double to, const RECT& visible) {
    const int left = firstPixel(from, visible.left, visible.right);
    const int right = firstPixel(to, visible.left, visible.right);
    if (left < right) spans.emplace_back(left, row, right - left, 1);
}

void addPolygon(std::vector<QRect>& spans, std::span<const Place> corners, bool isWinding,
                const RECT& visible) {
    const auto [highest, lowest] = std::minmax_element(
        corners.begin(), corners.end(), [](const Place& a, const Place& b) { return a.y < b.y; });
    std::vector<Crossing> crossings;
    const LONG last = firstPixel(lowest->y, visible.top, visible.bottom);
    for (LONG row = firstPixel(highest->y, visible.top, visible.bottom); row < last; ++row) {
        findCrossings(corners, row + 0.5, crossings);
        int inside = 0;
        for (std::size_t i = 0; i + 1 < crossings.size(); ++i) {
            inside += isWinding ? crossings[i].winding : 1;
            if (isWinding ? inside == 0 : inside % 2 == 0) continue;
            addSpan(spans, row, crossings[i].x, crossings[i + 1].x, visible);
        }
    }
}

void addDisc(std::vector<QRect>& spans, const Place& centre, double radius, const RECT& visible) {
    const LONG last = firstPixel(centre.y + radius, visible.top, visible.bottom);
    for (LONG row = firstPixel(centre.y - radius, visible.top, visible.bottom); row < last; ++row) {
        const double y = row + 0.5 - centre.y;
        const double reach = std::sqrt(std::max(0.0, radius * radius - y * y));
        addSpan(spans, row, centre.x - reach, centre.x + reach, visible);
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
    addPolygon(spans, corners, true, visible);
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
    return spans;
}

std::vector<Place> cornersOfEllipse(const Place& centre, double halfWidth, double halfHeight) {
    // No corner stands out of the ellipse by more than a twentieth of a pixel.
    constexpr double least = 16;
    constexpr double most = 4096;
    const double wanted = std::sqrt(std::max(halfWidth, halfHeight)) * 10;
    const auto count = static_cast<std::size_t>(std::clamp(wanted, least, most));
    std::vector<Place> corners(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double angle =
            2 * std::numbers::pi * static_cast<double>(i) / static_cast<double>(count);
        corners[i] = {centre.x + halfWidth * std::cos(angle),
                      centre.y + halfHeight * std::sin(angle)};
    }
    return corners;
}

}  // namespace tessalink::detail
