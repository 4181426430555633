#pragma once

#include "platform/win32/detail/Scale.h"

// Places on the screens. Every screen has a scale of its own; in units it starts where it does in
// pixels.
namespace tessalink::detail {

CPoint screenUnits(const POINT& pixel);
CPoint screenPixel(const POINT& unit);
// The screen at a place, all of it and without what the system keeps for itself, in units.
CRect screenAt(const POINT& unit);
CRect roomAt(const POINT& unit);
// The scale of the screen at a place in units.
Scale scaleAt(const POINT& unit);

}  // namespace tessalink::detail
