#pragma once

#include <QPalette>

#include "platform/base/Types.h"
#include "platform/graphics/Colors.h"

namespace tessalink::detail {

// The color that a palette has for COLOR_...; those of texts are as far from their ground as
// legibility asks for, whatever the theme (a contrast of 4.5, by WCAG 2.1).
COLORREF systemColor(const QPalette& palette, int index);

}  // namespace tessalink::detail
