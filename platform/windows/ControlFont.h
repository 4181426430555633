#pragma once

#include "platform/graphics/GdiObjects.h"

namespace tessalink {

/// Creates the upright font in which controls show their texts, in place of what `font` was:
/// `height` is that of its cell in pixels, or when negative that of its letters; `weight` is
/// FW_NORMAL, FW_BOLD or another number up to 1,000, `clipping` a CLIP_... precision.
inline void createControlFont(CFont& font, int height, int weight,
                              BYTE clipping = CLIP_DEFAULT_PRECIS) {
    font.DeleteObject();
    font.CreateFont(height, 0, 0, 0, weight, 0, 0, 0, ANSI_CHARSET, OUT_TT_PRECIS, clipping,
                    PROOF_QUALITY, VARIABLE_PITCH, "Arial");
}

}  // namespace tessalink
