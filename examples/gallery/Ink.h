#pragma once

#include <cmath>

#include "platform/graphics/Colors.h"

// The colours of the graphs.
namespace gallery {

inline constexpr COLORREF cInk = RGB(45, 45, 50);
inline constexpr COLORREF cMuted = RGB(100, 100, 108);
inline constexpr COLORREF cLine = RGB(150, 150, 158);
inline constexpr COLORREF cGrid = RGB(205, 205, 212);
inline constexpr COLORREF cBlue = RGB(28, 75, 140);
inline constexpr COLORREF cPale = RGB(190, 210, 236);
inline constexpr COLORREF cRed = RGB(170, 45, 40);

// As a printer without colour shows it.
inline COLORREF inGrey(COLORREF color) {
    const double luminance =
        0.299 * GetRValue(color) + 0.587 * GetGValue(color) + 0.114 * GetBValue(color);
    const auto grey = static_cast<BYTE>(std::lround(luminance));
    return RGB(grey, grey, grey);
}

}  // namespace gallery
