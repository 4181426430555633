#pragma once

#include "platform/base/CString.h"
#include "platform/graphics/GdiObjects.h"

namespace tessalink {

/// Pitch and family of the fonts of graphs: a TrueType face of any family, of unknown and of
/// variable pitch.
inline constexpr BYTE cTrueType = 4;
/// The same with variable pitch.
inline constexpr BYTE cTrueTypeVariable = cTrueType | VARIABLE_PITCH;

/// Creates the upright font of normal weight in which graphs print: `height` is that of its cell in
/// device units.
inline void createGraphFont(CFont& font, int height, const CString& typeface, BYTE outPrecision,
                            BYTE quality, BYTE pitchAndFamily) {
    font.CreateFont(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, outPrecision,
                    CLIP_DEFAULT_PRECIS, quality, pitchAndFamily, typeface);
}

/// The font of the descriptions and bodies of bar graphs.
inline void createBarFont(CFont& font, int height, const CString& typeface) {
    createGraphFont(font, height, typeface, OUT_DEFAULT_PRECIS, DEFAULT_QUALITY, cTrueType);
}

}  // namespace tessalink
