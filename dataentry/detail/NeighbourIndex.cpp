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

/// How far a rectangle's middle lies that way, doubled.
std::int64_t reach(const SideRule& rule, const CRect& rect) {
    return along(rule, rect.*rule.own) + along(rule, rect.*rule.other);
}

/// The centre across the direction.
std::int64_t centre(const SideRule& rule, const CRect& rect) {
    return rule.isVertical ? std::int64_t{rect.left} + (rect.Width() >> 1)
                           : std::int64_t{rect.top} + (rect.Height() >> 1);
}

}  // namespace

void NeighbourIndex::Forget() {
    for (auto& order : m_order) order.clear();
    for (auto& reach : m_reach) reach.clear();
}

const NeighbourIndex::Order& NeighbourIndex::order(const std::vector<CRect>& rects, Side side) {
    const SideRule& rule = cRules[static_cast<std::size_t>(side)];
    Order& order = m_order[static_cast<std::size_t>(side)];
    if (!order.empty()) return order;
    order.resize(rects.size());
    std::iota(order.begin(), order.end(), 0);
    if (rule.direction < 0) std::reverse(order.begin(), order.end());
    const auto edge = [&](int i) {
        return along(rule, rects[static_cast<std::size_t>(i)].*rule.other);
    };
    const auto isNearer = [&](int a, int b) { return edge(a) < edge(b); };
    // Most layouts place their items in order.
    if (!std::is_sorted(order.begin(), order.end(), isNearer)) {
        std::sort(order.begin(), order.end(), isNearer);
    }
    return order;
}

// Those of the order that start before the area's end and are not known to end before its start.
std::span<const int> NeighbourIndex::reaching(const std::vector<CRect>& rects, const CRect& area,
                                              Side side) {
    const SideRule& rule = cRules[static_cast<std::size_t>(side)];
    const Order& all = order(rects, side);
    auto& reach = m_reach[static_cast<std::size_t>(side)];
    if (reach.empty()) {
        LONG farthest = std::numeric_limits<LONG>::min();
        reach.reserve(all.size());
        for (const int i : all) {
            farthest = std::max(farthest, rects[static_cast<std::size_t>(i)].*rule.own);
            reach.push_back(farthest);
        }
    }
    const auto first = std::partition_point(reach.begin(), reach.end(),
                                            [&](LONG end) { return end <= area.*rule.other; });
    const auto last = std::partition_point(all.begin(), all.end(), [&](int i) {
        return rects[static_cast<std::size_t>(i)].*rule.other < area.*rule.own;
    });
    const auto start = first - reach.begin();
    const auto end = std::max(last - all.begin(), start);
    return {all.data() + start, static_cast<std::size_t>(end - start)};
}

std::vector<int> NeighbourIndex::Touching(const std::vector<CRect>& rects, const CRect& area) {
    const auto byTop = reaching(rects, area, Side::Below);
    const auto byLeft = reaching(rects, area, Side::Right);
    std::vector<int> found;
    for (const int i : byTop.size() <= byLeft.size() ? byTop : byLeft) {
        CRect common;
        if (common.IntersectRect(&rects[static_cast<std::size_t>(i)], &area) != 0) {
            found.push_back(i);
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

int NeighbourIndex::Closest(const std::vector<CRect>& rects, int index, Side side, bool isFarther) {
    const SideRule& rule = cRules[static_cast<std::size_t>(side)];
    const Order& all = order(rects, side);
    const CRect& own = rects[static_cast<std::size_t>(index)];
    const std::int64_t start = along(rule, own.*rule.own);
    const auto edge = [&](int i) {
        return along(rule, rects[static_cast<std::size_t>(i)].*rule.other);
    };
    auto next =
        std::partition_point(all.begin(), all.end(), [&](int i) { return edge(i) < start; });
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    int found = -1;
    for (; next != all.end(); ++next) {
        const std::int64_t gap = edge(*next) - start;
        if (gap > best) break;
        const CRect& rect = rects[static_cast<std::size_t>(*next)];
        if (*next == index || (isFarther && reach(rule, rect) <= reach(rule, own))) continue;
        const std::int64_t score = gap + std::abs(centre(rule, rect) - centre(rule, own));
        if (score < best || (score == best && *next < found)) {
            best = score;
            found = *next;
        }
    }
    return found;
}

}  // namespace tessalink
