#pragma once

#include "graphs/common/GraphFont.h"

namespace tessalink {

/// What becomes of a length of pens and fonts that is no whole number: what is left of a unit
/// counts as one.
inline constexpr double cRoundUp = 0.999;

/// Creates the font of profile graphs, whose characters are `height` high.
inline void createProfileFont(CFont& font, int height, const CString& face, LONG weight = FW_NORMAL,
                              bool isItalic = false) {
    font.CreateFont(-height, 0, 0, 0, weight, isItalic ? 1 : 0, 0, 0, ANSI_CHARSET, OUT_TT_PRECIS,
                    CLIP_DEFAULT_PRECIS, PROOF_QUALITY, cTrueTypeVariable, face);
}

/// The font of signs beside it.
inline void createSymbolFont(CFont& font, int height) {
    font.CreateFont(-height, 0, 0, 0, FW_NORMAL, 0, 0, 0, SYMBOL_CHARSET, OUT_TT_PRECIS,
                    CLIP_DEFAULT_PRECIS, PROOF_QUALITY, cTrueTypeVariable, "Symbol");
}

}  // namespace tessalink
