#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace tessalink::fuzz {

/// Ends the program when a property does not hold.
inline void require(bool holds, std::string_view property) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %.*s\n", static_cast<int>(property.size()),
                 property.data());
    std::abort();
}

}  // namespace tessalink::fuzz
