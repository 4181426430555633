#pragma once

#include <cmath>
#include <numbers>

namespace tessalink {

/// A place by its angle in degrees, counterclockwise from the right (east) and from 0 to below 360,
/// and its distance from the middle.
struct Polar {
    double angle = 0;   ///< in degrees
    double length = 0;  ///< from the middle
};

/// A place by its offsets to the right and upward.
struct Planar {
    double x = 0;  ///< to the right
    double y = 0;  ///< upward
};

/// How many degrees a radian has.
inline constexpr double cDegreesPerRadian = 180 / std::numbers::pi;
inline constexpr double cFullTurn = 360;  ///< a full turn in degrees

/// Where an angular score lies: an octant at 135 degrees is left and above.
inline Planar toPlanar(const Polar& polar) {
    const double radians = polar.angle / cDegreesPerRadian;
    return {polar.length * std::cos(radians), polar.length * std::sin(radians)};
}

/// The reverse; the angle of the middle itself is 0.
inline Polar toPolar(const Planar& planar) {
    const double angle = std::atan2(planar.y, planar.x) * cDegreesPerRadian;
    const double turned = angle < 0 ? angle + cFullTurn : angle + 0.0;
    return {turned < cFullTurn ? turned : 0, std::hypot(planar.x, planar.y)};
}

}  // namespace tessalink
