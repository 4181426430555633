#include "dataentry/detail/NeighbourIndex.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <numeric>

namespace tessalink {

namespace {

struct SideRule {
    LONG RECT::*own;    ///< the edge of the rectangle that is left
    LONG RECT::*other;  ///< the edge of the neighbour that faces it
    int direction;      ///< 1 when coordinates grow that way, -1 otherwise
    bool isVertical;
};

constexpr std::array<SideRule, 4> cRules = {{{&RECT::top, &RECT::bottom, -1, true},
                                             {&RECT::bottom, &RECT::top, 1, true},
                                             {&RECT::left, &RECT::right, -1, false},
                                             {&RECT::right, &RECT::left, 1, false}}};

/// How far an edge lies that way.
std::int64_t along(const SideRule& rule, LONG edge) {
    return std::int64_t{rule.direction} * edge;
}

/// The centre across the direction.
std::int64_t centre(const SideRule& rule, const CRect& rect) {
    return rule.isVertical ? std::int64_t{rect.left} + (rect.Width() >> 1)
                           : std::int64_t{rect.top} + (rect.Height() >> 1);
}

}  // namespace

void NeighbourIndex::sort(const std::vector<CRect>& rects) {
    for (std::size_t side = 0; side < m_order.size(); ++side) {
        const SideRule& rule = cRules[side];
        auto& order = m_order[side];
        order.resize(rects.size());
        std::iota(order.begin(), order.end(), 0);
        const auto edge = [&](int i) {
            return along(rule, rects[static_cast<std::size_t>(i)].*rule.other);
        };
        std::stable_sort(order.begin(), order.end(),
                         [&](int a, int b) { return edge(a) < edge(b); });
    }
    m_isSorted = true;
}

int NeighbourIndex::Closest(const std::vector<CRect>& rects, int index, Side side) {
    if (!m_isSorted) sort(rects);
    const SideRule& rule = cRules[static_cast<std::size_t>(side)];
    const auto& order = m_order[static_cast<std::size_t>(side)];
    const CRect& own = rects[static_cast<std::size_t>(index)];
    const std::int64_t start = along(rule, own.*rule.own);
    const auto edge = [&](int i) {
        return along(rule, rects[static_cast<std::size_t>(i)].*rule.other);
    };
    auto next =
        std::partition_point(order.begin(), order.end(), [&](int i) { return edge(i) < start; });
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    int found = -1;
    for (; next != order.end(); ++next) {
        const std::int64_t gap = edge(*next) - start;
        if (gap > best) break;
        if (*next == index) continue;
        const std::int64_t score =
            gap +
            std::abs(centre(rule, rects[static_cast<std::size_t>(*next)]) - centre(rule, own));
        if (score < best || (score == best && *next < found)) {
            best = score;
            found = *next;
        }
    }
    return found;
}

}  // namespace tessalink
