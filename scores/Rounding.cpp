#include "scores/Rounding.h"

#include <cmath>

#include "platform/base/NumberText.h"

namespace tessalink {

double roundHalfUp(double value, int decimals) {
    double unit = 1;
    for (int i = 0; i < decimals; ++i) unit *= 10;
    // A half is compared as it is read from its digits: the product may have gone past it.
    const double below = std::floor(value * unit);
    const bool upward = value >= (below + 0.5) / unit;
    return (below + (upward ? 1 : 0)) / unit;
}

CString formatHalfUp(double value, int decimals) {
    return formatDouble(roundHalfUp(value, decimals), 0, decimals);
}

}  // namespace tessalink
