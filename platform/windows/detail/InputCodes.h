#pragma once

#include "platform/base/Types.h"

namespace tessalink {

/// Characters of the keyboard: below the first that prints, they are commands.
constexpr UINT cBackspace = 8;
constexpr UINT cFirstPrintable = 32;

/// What a wheel turns from one notch to the next.
constexpr int cWheelNotch = 120;

constexpr bool isDigit(char ch) {
    return ch >= '0' && ch <= '9';
}

}  // namespace tessalink
