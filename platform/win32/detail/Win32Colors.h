#pragma once

#include "platform/graphics/Colors.h"

namespace tessalink::detail {

// The platform's color with a number (COLOR_...), or that of the dark theme when the user has
// chosen one and no theme of high contrast. What the themes leave illegible is moved.
COLORREF platformColor(int index);

}  // namespace tessalink::detail
