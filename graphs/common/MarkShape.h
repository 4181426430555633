#pragma once

#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

namespace tessalink {

/// The shapes that mark scores in all graphs.
enum class MarkShape { Cross, Disc, Square, Triangle, Diamond };

/// Draws a mark around (x, y) in the context's pen, which has its outline, and in the context's
/// brush unless it is hollow. rx and ry are the half axes of a disc in device units; triangles and
/// diamonds reach 1.2 times as far, so that they look as heavy. Sizes wrap around at 32 bits.
TESSALINK_API void drawMark(CDC& dc, int x, int y, int rx, int ry, MarkShape shape, bool isHollow);

/// The first of four filled shapes and their four outlines, in the numbering of bar and profile
/// graphs: disc, square, triangle and diamond are 0 to 3, their outlines 4 to 7. Other numbers draw
/// nothing.
TESSALINK_API void drawNumberedMark(CDC& dc, int x, int y, int rx, int ry, int number);

/// How many numbers there are.
inline constexpr int cNumberedMarks = 8;

}  // namespace tessalink
