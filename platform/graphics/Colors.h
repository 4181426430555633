#pragma once

#include <cstdint>

#include "platform/base/Types.h"

/// A color: red in the low byte, then green, then blue; the high byte is 0.
using COLORREF = std::uint32_t;

inline constexpr COLORREF cBlack = 0x000000;
inline constexpr COLORREF cWhite = 0xFFFFFF;

constexpr COLORREF RGB(int red, int green, int blue) {
    return static_cast<COLORREF>(red & 0xFF) | static_cast<COLORREF>(green & 0xFF) << 8 |
           static_cast<COLORREF>(blue & 0xFF) << 16;
}
constexpr BYTE GetRValue(COLORREF color) {
    return static_cast<BYTE>(color & 0xFF);
}
constexpr BYTE GetGValue(COLORREF color) {
    return static_cast<BYTE>(color >> 8 & 0xFF);
}
constexpr BYTE GetBValue(COLORREF color) {
    return static_cast<BYTE>(color >> 16 & 0xFF);
}
