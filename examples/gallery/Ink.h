#pragma once

#include <cmath>

#include "platform/graphics/Colors.h"

// The colors of the graphs.
namespace gallery {

inline constexpr COLORREF cInk = RGB(45, 45, 50);
inline constexpr COLORREF cMuted = RGB(100, 100, 108);
inline constexpr COLORREF cLine = RGB(150, 150, 158);
inline constexpr COLORREF cGrid = RGB(205, 205, 212);
inline constexpr COLORREF cBlue = RGB(28, 75, 140);
inline constexpr COLORREF cPale = RGB(190, 210, 236);
inline constexpr COLORREF cRed = RGB(170, 45, 40);

// As a printer without color shows it: the gray of the same luminance (IEC 61966-2-1).
inline COLORREF inGray(COLORREF color) {
    constexpr double full = 255;
    constexpr double exponent = 2.4;
    constexpr double offset = 0.055;
    constexpr double slope = 12.92;
    const auto linear = [](int value) {
        const double part = value / full;
        return part <= 0.04045 ? part / slope : std::pow((part + offset) / (1 + offset), exponent);
    };
    const double luminance = 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) +
                             0.0722 * linear(GetBValue(color));
    const double part = luminance <= 0.0031308
                            ? luminance * slope
                            : std::pow(luminance, 1 / exponent) * (1 + offset) - offset;
    const auto gray = static_cast<BYTE>(std::lround(part * full));
    return RGB(gray, gray, gray);
}

}  // namespace gallery
