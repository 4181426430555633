#pragma once

#include <array>
#include <vector>

#include "platform/graphics/Geometry.h"

namespace tessalink {

/// Where a neighbour is looked for.
enum class Side : int { Above, Below, Left, Right };

/// Finds the nearest rectangle on one side of another: of those beyond its edge the one with the
/// least sum of the gap and the distance of the centres across; the lowest index of several. Only
/// rectangles as near as the best one are looked at.
class NeighbourIndex {
public:
    /// The rectangles have changed.
    void Forget() { m_isSorted = false; }
    /// The index of the neighbour of rectangle `index`, or -1. The rectangles are those of the
    /// calls before unless they were forgotten.
    int Closest(const std::vector<CRect>& rects, int index, Side side);

private:
    void sort(const std::vector<CRect>& rects);

    bool m_isSorted = false;
    std::array<std::vector<int>, 4> m_order;  ///< by side: from the edge that faces it on
};

}  // namespace tessalink
