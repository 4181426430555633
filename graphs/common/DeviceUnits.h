#pragma once

#include "platform/base/NumberText.h"

namespace tessalink {

/// Design units to device units, as all graphs convert them: 0.5 is added and the rest cut off
/// toward zero, so that -1.2 becomes 0. Beyond 32 bits it saturates, not-a-number is 0.
inline int toDevice(double value) {
    return toInt(value + 0.5);
}

/// Half of a length, rounded down.
constexpr int halved(int value) {
    return value >> 1;
}

}  // namespace tessalink
