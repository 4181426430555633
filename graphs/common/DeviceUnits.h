#pragma once

#include <limits>

#include "platform/base/NumberText.h"
#include "platform/graphics/Geometry.h"

namespace tessalink {

/// Design units to device units, as all graphs convert them: 0.5 is added and the rest cut off
/// toward zero, so that -1.2 becomes 0. Beyond 32 bits it saturates, not-a-number is 0.
inline int toDevice(double value) {
    constexpr double farthest = std::numeric_limits<int>::max();
    const double raised = value + 0.5;
    // What most lengths are, without a call.
    if (raised > -farthest && raised < farthest) return static_cast<int>(raised);
    return toInt(raised);
}

/// Sizes of fonts are in points.
constexpr double cPointsPerInch = 72;

/// Half of a length, rounded down.
constexpr int halved(int value) {
    return value >> 1;
}

/// The top of a block that lies in the middle between the margins. Like all lengths of graphs it
/// wraps around at 32 bits.
constexpr int middleTop(const CRect& rect, int topMargin, int bottomMargin, int height) {
    const int rest = wrapSub(rect.Height(), wrapAdd(height, wrapAdd(bottomMargin, topMargin)));
    return wrapAdd(rect.top, wrapAdd(topMargin, halved(rest)));
}

}  // namespace tessalink
