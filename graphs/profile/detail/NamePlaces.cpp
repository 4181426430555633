#include "graphs/profile/detail/NamePlaces.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "graphs/common/DeviceUnits.h"

namespace tessalink {

/// From a point to its name: 1 is wholly on that side, 0 is centered.
struct NamePlaces::Direction {
    double x, y;
    double outward = 0;  ///< how far it leads away from the middle of the circle

    bool IsDiagonal() const { return std::abs(x * y) == 1; }
};

namespace {

/// The distances of a name from its symbol that are tried, by the smallest.
constexpr std::array cDistances = {1.0, 1.4, 2.0, 2.8, 4.0, 5.6};
/// Distances in the diagonals, by those along the axes.
constexpr double cDiagonal = 0.75;

}  // namespace

CRect NamePlaces::Find(POINT point, CSize size) const {
    std::array<Direction, 16> directions = {{{1, 0},
                                             {-1, 0},
                                             {0, -1},
                                             {0, 1},
                                             {1, -1},
                                             {-1, -1},
                                             {1, 1},
                                             {-1, 1},
                                             {1, -0.5},
                                             {1, 0.5},
                                             {-1, -0.5},
                                             {-1, 0.5},
                                             {0.5, -1},
                                             {-0.5, -1},
                                             {0.5, 1},
                                             {-0.5, 1}}};
    const double dx = point.x - m_circle.middle.x;
    const double dy = point.y - m_circle.middle.y;
    for (Direction& each : directions) {
        each.outward = (each.x * dx + each.y * dy) / std::hypot(each.x, each.y);
    }
    std::stable_sort(directions.begin(), directions.end(),
                     [](const Direction& a, const Direction& b) { return a.outward > b.outward; });
    std::optional<CRect> overRim;
    for (const double distance : cDistances) {
        for (const Direction& direction : directions) {
            const CRect place = at(point, direction, distance, size);
            if (!m_grid.IsFree(place)) continue;
            if (!meets_rim(place)) return place;
            if (!overRim) overRim = place;
        }
    }
    return overRim.value_or(at(point, directions[0], 1, size));
}

CRect NamePlaces::at(POINT point, const Direction& direction, double distance, CSize size) const {
    const double part = direction.IsDiagonal() ? distance * cDiagonal : distance;
    const double x = point.x + direction.x * (m_circle.offset.cx * part + size.cx / 2.0);
    const double y = point.y + direction.y * (m_circle.offset.cy * part + size.cy / 2.0);
    return {CPoint(toDevice(x - size.cx / 2.0), toDevice(y - size.cy / 2.0)), size};
}

bool NamePlaces::meets_rim(CRect place) const {
    place.InflateRect(m_circle.rimGap.cx, m_circle.rimGap.cy);
    const auto distance = [this](double dx, double dy) {
        return std::hypot(dx / m_circle.radii.cx, dy / m_circle.radii.cy);
    };
    // Coordinates that don't fit an int come out in the wrong order.
    const auto span = [](double from, double to, double origin) {
        return std::minmax({from - origin, to - origin});
    };
    const auto [left, right] = span(place.left, place.right, m_circle.middle.x);
    const auto [top, bottom] = span(place.top, place.bottom, m_circle.middle.y);
    return distance(std::clamp(0.0, left, right), std::clamp(0.0, top, bottom)) < 1 &&
           distance(std::max(-left, right), std::max(-top, bottom)) > 1;
}

}  // namespace tessalink
