#pragma once

#include "platform/base/CString.h"
#include "platform/graphics/GdiObjects.h"

namespace tessalink {

/// Creates the upright font of normal weight in which graphs print: `height` is that of its cell.
inline void createGraphFont(CFont& font, int height, const CString& typeface, BYTE outPrecision,
                            BYTE quality, BYTE pitchAndFamily) {
    font.CreateFont(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, outPrecision,
                    CLIP_DEFAULT_PRECIS, quality, pitchAndFamily, typeface);
}

}  // namespace tessalink
