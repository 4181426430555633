#include "scores/Rounding.h"

#include <cmath>

#include "platform/base/NumberText.h"

namespace tessalink {

double roundHalfUp(double value, int decimals) {
    double unit = 1;
    for (int i = 0; i < decimals; ++i) unit *= 10;
    return std::floor(value * unit + 0.5) / unit;
}

CString formatHalfUp(double value, int decimals) {
    return formatDouble(roundHalfUp(value, decimals), 0, decimals);
}

}  // namespace tessalink
