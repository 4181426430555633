#pragma once

#include "platform/graphics/GraphicsNames.h"

/// Colors that the library draws with.
inline constexpr COLORREF cBlack = 0x000000;
inline constexpr COLORREF cWhite = 0xFFFFFF;
