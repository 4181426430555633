#include "report/detail/DeferredOrder.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tessalink::detail {

std::vector<std::uint16_t> deferredOrder(const std::vector<double>& keys, bool descending) {
    std::vector<std::uint16_t> order(keys.size());
    std::iota(order.begin(), order.end(), std::uint16_t{0});
    const auto isNaN = [&](std::uint16_t block) { return std::isnan(keys[block]); };
    const auto before = [&](std::uint16_t a, std::uint16_t b) {
        return descending ? keys[a] > keys[b] : keys[a] < keys[b];
    };
    // Exchanges of neighbors never move a NaN nor anything past it.
    for (auto first = order.begin(); first != order.end();) {
        const auto last = std::find_if(first, order.end(), isNaN);
        std::stable_sort(first, last, before);
        first = last == order.end() ? last : last + 1;
    }
    return order;
}

}  // namespace tessalink::detail
