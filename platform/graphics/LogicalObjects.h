#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/graphics/Colors.h"
#include "platform/graphics/Geometry.h"

/// Pens, brushes and fonts as plain descriptions, with the constants of the classic desktop.

/// Pen styles. Dashes and dots are drawn by pens of width 1 only; wider ones are solid.
inline constexpr UINT PS_SOLID = 0;
inline constexpr UINT PS_DASH = 1;
inline constexpr UINT PS_DOT = 2;
inline constexpr UINT PS_DASHDOT = 3;
inline constexpr UINT PS_DASHDOTDOT = 4;
inline constexpr UINT PS_NULL = 5;
inline constexpr UINT PS_INSIDEFRAME = 6;

struct LOGPEN {
    UINT lopnStyle = PS_SOLID;
    /// x is the width in device units; 0 and less stand for one unit; y is unused.
    POINT lopnWidth;
    COLORREF lopnColor = cBlack;

    bool operator==(const LOGPEN&) const = default;
};

/// Brush styles and hatches.
inline constexpr UINT BS_SOLID = 0;
inline constexpr UINT BS_NULL = 1;
inline constexpr UINT BS_HOLLOW = BS_NULL;
inline constexpr UINT BS_HATCHED = 2;

inline constexpr int HS_HORIZONTAL = 0;  ///< -----
inline constexpr int HS_VERTICAL = 1;    ///< |||||
inline constexpr int HS_FDIAGONAL = 2;   ///< downward
inline constexpr int HS_BDIAGONAL = 3;   ///< upward
inline constexpr int HS_CROSS = 4;
inline constexpr int HS_DIAGCROSS = 5;

struct LOGBRUSH {
    UINT lbStyle = BS_SOLID;
    COLORREF lbColor = cWhite;
    std::uintptr_t lbHatch = 0;  ///< HS_...

    bool operator==(const LOGBRUSH&) const = default;
};

/// How polygons that cross themselves are filled.
inline constexpr int ALTERNATE = 1;
inline constexpr int WINDING = 2;

/// Weights of fonts, from 0 (whatever there is) to 1000.
inline constexpr LONG FW_DONTCARE = 0;
inline constexpr LONG FW_LIGHT = 300;
inline constexpr LONG FW_NORMAL = 400;
inline constexpr LONG FW_SEMIBOLD = 600;  ///< from here on a face is bold
inline constexpr LONG FW_BOLD = 700;

inline constexpr BYTE ANSI_CHARSET = 0;
inline constexpr BYTE DEFAULT_CHARSET = 1;
inline constexpr BYTE SYMBOL_CHARSET = 2;

inline constexpr BYTE OUT_DEFAULT_PRECIS = 0;
inline constexpr BYTE OUT_TT_PRECIS = 4;
inline constexpr BYTE CLIP_DEFAULT_PRECIS = 0;
inline constexpr BYTE CLIP_CHARACTER_PRECIS = 1;
inline constexpr BYTE DEFAULT_QUALITY = 0;
inline constexpr BYTE PROOF_QUALITY = 2;
inline constexpr BYTE DEFAULT_PITCH = 0;
inline constexpr BYTE FIXED_PITCH = 1;
inline constexpr BYTE VARIABLE_PITCH = 2;
inline constexpr BYTE FF_DONTCARE = 0x00;
inline constexpr BYTE FF_ROMAN = 0x10;     ///< with serifs
inline constexpr BYTE FF_SWISS = 0x20;     ///< without
inline constexpr BYTE cFamilyMask = 0xF0;  ///< what of pitch and family is the family

inline constexpr std::size_t LF_FACESIZE = 32;

struct LOGFONT {
    LONG lfHeight = 0;       ///< ascent + descent in device units; negative: the em
    LONG lfWidth = 0;        ///< not used: characters have their natural widths
    LONG lfEscapement = 0;   ///< not used: text runs from left to right
    LONG lfOrientation = 0;  ///< not used
    LONG lfWeight = FW_NORMAL;
    BYTE lfItalic = 0;
    BYTE lfUnderline = 0;
    BYTE lfStrikeOut = 0;
    BYTE lfCharSet = ANSI_CHARSET;
    BYTE lfOutPrecision = OUT_DEFAULT_PRECIS;
    BYTE lfClipPrecision = CLIP_DEFAULT_PRECIS;
    BYTE lfQuality = DEFAULT_QUALITY;
    BYTE lfPitchAndFamily = DEFAULT_PITCH;
    char lfFaceName[LF_FACESIZE] = {};  ///< ends in a NUL

    /// Byte for byte, what stands behind the name's NUL included.
    bool operator==(const LOGFONT& other) const {
        return std::memcmp(this, &other, sizeof(other)) == 0;
    }
};
static_assert(sizeof(LOGFONT) == 60, "no byte of a LOGFONT is padding");

/// What GetTextMetrics tells, in device units.
struct TEXTMETRIC {
    LONG tmHeight = 0;  ///< ascent + descent
    LONG tmAscent = 0;
    LONG tmDescent = 0;
    LONG tmInternalLeading = 0;
    LONG tmExternalLeading = 0;
    LONG tmAveCharWidth = 0;
    LONG tmMaxCharWidth = 0;
    LONG tmWeight = 0;
    LONG tmOverhang = 0;
    LONG tmDigitizedAspectX = 0;
    LONG tmDigitizedAspectY = 0;
    BYTE tmFirstChar = 0;
    BYTE tmLastChar = 0;
    BYTE tmDefaultChar = 0;
    BYTE tmBreakChar = 0;
    BYTE tmItalic = 0;
    BYTE tmUnderlined = 0;
    BYTE tmStruckOut = 0;
    BYTE tmPitchAndFamily = 0;
    BYTE tmCharSet = 0;
};
