#pragma once

#include <limits>

namespace tessalink::test {

constexpr double cNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double cInfinity = std::numeric_limits<double>::infinity();
/// A value that is missing, to graphs.
constexpr double cMissing = -999999999.0;

}  // namespace tessalink::test
