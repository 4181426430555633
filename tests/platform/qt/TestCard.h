#pragma once

#include "platform/graphics/CDC.h"

namespace tessalink::test {

inline constexpr int cTestCardWidth = 640;
inline constexpr int cTestCardHeight = 480;

/// Draws every pen, brush, shape, font, alignment and clipping, in units of a screen of 96 dpi.
void drawTestCard(CDC& dc);

}  // namespace tessalink::test
