#pragma once

#include <array>
#include <span>
#include <vector>

#include "platform/graphics/Geometry.h"

namespace tessalink {

/// Where a neighbor is looked for.
enum class Side : int { Above, Below, Left, Right };

/// Finds rectangles by their place, and looks at few others. The rectangles are those of the calls
/// before unless they were forgotten.
class NeighbourIndex {
public:
    /// The rectangles have changed.
    void Forget();
    /// The nearest rectangle on one side of rectangle `index`: of those beyond its edge the one
    /// with the least sum of the gap and the distance of the centers across; the lowest index of
    /// several. -1 when there is none. With `isFarther` those alone count whose middle lies farther
    /// out: next to a rectangle without width, others may be at the same place.
    int Closest(const std::vector<CRect>& rects, int index, Side side, bool isFarther);
    /// The rectangles that overlap an area, by ascending index.
    std::vector<int> Touching(const std::vector<CRect>& rects, const CRect& area);

private:
    using Order = std::vector<int>;

    const Order& order(const std::vector<CRect>& rects, Side side);
    std::span<const int> reaching(const std::vector<CRect>& rects, const CRect& area, Side side);

    std::array<Order, 4> m_order;              ///< by side: from the edge that faces it on
    std::array<std::vector<LONG>, 4> m_reach;  ///< how far an order's rectangles reach, up to each
};

}  // namespace tessalink
