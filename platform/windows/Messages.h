#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/base/HostServices.h"
#include "platform/base/Types.h"
#include "platform/graphics/Geometry.h"
#include "platform/windows/WindowNames.h"

/// What messages of windows carry, beside the names that the platform may have itself.

/// A window's parent is asked for the colors of a child before it paints itself.
inline constexpr UINT WM_CTLCOLOR = 0x0019;

namespace tessalink {
/// A window as a handle.
inline HWND handleOf(WindowCore* window) {
    return reinterpret_cast<HWND>(window);
}
}  // namespace tessalink

/// A request of a scroll bar: the code, and the whole position of the thumb.
constexpr WPARAM scrollParam(UINT code, int position) {
    return (code & 0xFFFFU) | (static_cast<WPARAM>(static_cast<std::uint32_t>(position)) << 16);
}
/// The position of the thumb in what scrollParam made.
constexpr UINT thumbOf(WPARAM value) {
    return static_cast<UINT>(value >> 16);
}
/// The point in what MAKELPARAM made.
constexpr CPoint pointOf(LPARAM value) {
    const auto bits = static_cast<WPARAM>(value);
    return {static_cast<std::int16_t>(LOWORD(bits)), static_cast<std::int16_t>(HIWORD(bits))};
}
