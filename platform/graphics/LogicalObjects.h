#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/graphics/Colors.h"
#include "platform/graphics/Geometry.h"

/// Pens, brushes and fonts as plain descriptions, with the constants of the classic desktop.

inline constexpr BYTE cFamilyMask = 0xF0;  ///< what of pitch and family is the family

constexpr bool operator==(const LOGPEN& a, const LOGPEN& b) {
    return a.lopnStyle == b.lopnStyle && a.lopnWidth == b.lopnWidth && a.lopnColor == b.lopnColor;
}
constexpr bool operator==(const LOGBRUSH& a, const LOGBRUSH& b) {
    return a.lbStyle == b.lbStyle && a.lbColor == b.lbColor && a.lbHatch == b.lbHatch;
}
/// Byte for byte, what stands behind the name's NUL included.
inline bool operator==(const LOGFONTA& a, const LOGFONTA& b) {
    return std::memcmp(&a, &b, sizeof(LOGFONTA)) == 0;
}
static_assert(sizeof(LOGFONTA) == 60, "no byte of a LOGFONTA is padding");
