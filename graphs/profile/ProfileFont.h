#pragma once

#include "platform/graphics/GdiObjects.h"

namespace tessalink {

/// What becomes of a length of pens and fonts that is no whole number: what is left of a unit
/// counts as one.
inline constexpr double cRoundUp = 0.999;

/// Creates the font of profile graphs, whose characters are `height` high.
inline void createProfileFont(CFont& font, int height, int weight = FW_NORMAL, BYTE italic = 0,
                              bool isSymbol = false) {
    constexpr BYTE cOutPrecision = 4;
    constexpr BYTE cQuality = 2;
    constexpr BYTE cPitchAndFamily = 6;
    font.CreateFont(-height, 0, 0, 0, weight, italic, 0, 0,
                    isSymbol ? SYMBOL_CHARSET : ANSI_CHARSET, cOutPrecision, 0, cQuality,
                    cPitchAndFamily, isSymbol ? "Symbol" : "Times New Roman");
}

}  // namespace tessalink
