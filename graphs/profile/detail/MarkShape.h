#pragma once

#include "platform/graphics/CDC.h"

namespace tessalink {

/// Draws the shape of a symbol around (x, y) in the context's pen and brush, with half axes of rx
/// and ry: 1 a cross, 2 a disc, 3 a rectangle, 4 a triangle, 5 a diamond, others nothing.
void drawMarkShape(CDC& dc, int x, int y, int rx, int ry, int shape);

}  // namespace tessalink
