#pragma once

#include <cstdint>
#include <vector>

namespace tessalink::detail {

/// The order in which blocks with these keys are printed: ascending or descending, blocks with
/// equal keys as they were written. A NaN is neither less nor greater than anything: its block
/// keeps its place, and the blocks before and after it are ordered apart. At most 65,535 keys.
std::vector<std::uint16_t> deferredOrder(const std::vector<double>& keys, bool descending);

}  // namespace tessalink::detail
