#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/base/Types.h"

/// Colors, points, pens, brushes, fonts and what else drawing calls take, with the names and values
/// of the classic desktop.
/// Where the platform has them itself (Windows), they are the platform's.
#ifndef _WIN32

/// A color: red in the low byte, then green, then blue; the high byte is 0.
using COLORREF = std::uint32_t;

/// The color of three components from 0 to 255.
constexpr COLORREF RGB(int red, int green, int blue) {
    return static_cast<COLORREF>(red & 0xFF) | static_cast<COLORREF>(green & 0xFF) << 8 |
           static_cast<COLORREF>(blue & 0xFF) << 16;
}

/// The red of a color, 0 to 255.
constexpr BYTE GetRValue(COLORREF color) {
    return static_cast<BYTE>(color & 0xFF);
}

/// The green of a color, 0 to 255.
constexpr BYTE GetGValue(COLORREF color) {
    return static_cast<BYTE>(color >> 8 & 0xFF);
}

/// The blue of a color, 0 to 255.
constexpr BYTE GetBValue(COLORREF color) {
    return static_cast<BYTE>(color >> 16 & 0xFF);
}

/// A point in device units.
struct POINT {
    LONG x = 0;  ///< to the right
    LONG y = 0;  ///< downward
};

/// A size in device units.
struct SIZE {
    LONG cx = 0;  ///< width
    LONG cy = 0;  ///< height
};

/// A rectangle in device units.
struct RECT {
    LONG left = 0;    ///< belongs to the rectangle
    LONG top = 0;     ///< belongs to the rectangle
    LONG right = 0;   ///< does not belong to it
    LONG bottom = 0;  ///< does not belong to it
};

/// Pen styles. Dashes and dots are drawn by pens of width 1 only; wider ones are solid.
inline constexpr UINT PS_SOLID = 0;
inline constexpr UINT PS_DASH = 1;
inline constexpr UINT PS_DOT = 2;
inline constexpr UINT PS_DASHDOT = 3;
inline constexpr UINT PS_DASHDOTDOT = 4;
inline constexpr UINT PS_NULL = 5;
inline constexpr UINT PS_INSIDEFRAME = 6;

/// A pen.
struct LOGPEN {
    UINT lopnStyle = PS_SOLID;  ///< PS_
    /// x is the width in device units; 0 and less stand for one unit; y is unused.
    POINT lopnWidth;
    COLORREF lopnColor = 0x000000;  ///< of the line
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

/// A brush.
struct LOGBRUSH {
    UINT lbStyle = BS_SOLID;      ///< BS_
    COLORREF lbColor = 0xFFFFFF;  ///< of the area or of the hatches
    std::uintptr_t lbHatch = 0;   ///< HS_...
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

/// Character sets of fonts: that of the code page, or the codes of a symbol face.
inline constexpr BYTE ANSI_CHARSET = 0;
inline constexpr BYTE DEFAULT_CHARSET = 1;
inline constexpr BYTE SYMBOL_CHARSET = 2;

/// How the platform chooses a font; the library itself passes these on.
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
inline constexpr BYTE FF_ROMAN = 0x10;  ///< with serifs
inline constexpr BYTE FF_SWISS = 0x20;  ///< without

/// The longest name of a typeface, with its NUL.
inline constexpr std::size_t LF_FACESIZE = 32;

/// A font in bytes of the code page.
struct LOGFONTA {
    LONG lfHeight = 0;              ///< ascent + descent in device units; negative: the em
    LONG lfWidth = 0;               ///< not used: characters have their natural widths
    LONG lfEscapement = 0;          ///< not used: text runs from left to right
    LONG lfOrientation = 0;         ///< not used
    LONG lfWeight = FW_NORMAL;      ///< FW_
    BYTE lfItalic = 0;              ///< nonzero for italics
    BYTE lfUnderline = 0;           ///< nonzero for a line below the text
    BYTE lfStrikeOut = 0;           ///< nonzero for a line through the text
    BYTE lfCharSet = ANSI_CHARSET;  ///< a symbol face or the code page
    BYTE lfOutPrecision = OUT_DEFAULT_PRECIS;    ///< passed on to metafiles and systems
    BYTE lfClipPrecision = CLIP_DEFAULT_PRECIS;  ///< passed on to metafiles and systems
    BYTE lfQuality = DEFAULT_QUALITY;            ///< passed on to metafiles and systems
    BYTE lfPitchAndFamily = DEFAULT_PITCH;       ///< a pitch and a family, FF_..., together
    char lfFaceName[LF_FACESIZE] = {};           ///< ends in a NUL
};
/// The same as LOGFONTA.
using LOGFONT = LOGFONTA;

/// What GetTextMetrics tells, in device units.
struct TEXTMETRICA {
    LONG tmHeight = 0;            ///< ascent + descent
    LONG tmAscent = 0;            ///< from the base line up
    LONG tmDescent = 0;           ///< from the base line down
    LONG tmInternalLeading = 0;   ///< the part of the height beyond the em
    LONG tmExternalLeading = 0;   ///< what the face asks for between lines
    LONG tmAveCharWidth = 0;      ///< the width of the letter x
    LONG tmMaxCharWidth = 0;      ///< the width of the letter W
    LONG tmWeight = 0;            ///< FW_
    LONG tmOverhang = 0;          ///< always 0: bold and italic letters keep to their widths
    LONG tmDigitizedAspectX = 0;  ///< units per inch of the device
    LONG tmDigitizedAspectY = 0;  ///< units per inch of the device
    BYTE tmFirstChar = 0;         ///< the first character that the face has
    BYTE tmLastChar = 0;          ///< the last character that the face has
    BYTE tmDefaultChar = 0;       ///< stands for characters that the face lacks
    BYTE tmBreakChar = 0;         ///< parts words
    BYTE tmItalic = 0;            ///< nonzero for italics
    BYTE tmUnderlined = 0;        ///< nonzero for a line below the text
    BYTE tmStruckOut = 0;         ///< nonzero for a line through the text
    BYTE tmPitchAndFamily = 0;    ///< pitch, technology and family
    BYTE tmCharSet = 0;           ///< as in LOGFONT
};
/// The same as TEXTMETRICA.
using TEXTMETRIC = TEXTMETRICA;

/// How the reference point of a text lies to it.
inline constexpr UINT TA_NOUPDATECP = 0;
inline constexpr UINT TA_UPDATECP = 1;  ///< texts start at the current position and move it
inline constexpr UINT TA_LEFT = 0;
inline constexpr UINT TA_RIGHT = 2;
inline constexpr UINT TA_CENTER = 6;
inline constexpr UINT TA_TOP = 0;
inline constexpr UINT TA_BOTTOM = 8;
inline constexpr UINT TA_BASELINE = 24;

/// What SetBkMode takes.
inline constexpr int TRANSPARENT = 1;
inline constexpr int OPAQUE = 2;

/// What ExtTextOut takes.
inline constexpr UINT ETO_OPAQUE = 2;
inline constexpr UINT ETO_CLIPPED = 4;

/// What DrawText takes.
inline constexpr UINT DT_TOP = 0x0000;
inline constexpr UINT DT_LEFT = 0x0000;
inline constexpr UINT DT_CENTER = 0x0001;
inline constexpr UINT DT_RIGHT = 0x0002;
inline constexpr UINT DT_VCENTER = 0x0004;  ///< with DT_SINGLELINE
inline constexpr UINT DT_BOTTOM = 0x0008;   ///< with DT_SINGLELINE
inline constexpr UINT DT_WORDBREAK = 0x0010;
inline constexpr UINT DT_SINGLELINE = 0x0020;
inline constexpr UINT DT_NOCLIP = 0x0100;
inline constexpr UINT DT_CALCRECT = 0x0400;  ///< only sets the rectangle to what is needed
inline constexpr UINT DT_NOPREFIX = 0x0800;  ///< "&" is a character

/// What GetDeviceCaps tells.
inline constexpr int TECHNOLOGY = 2;
inline constexpr int HORZSIZE = 4;  ///< in millimeters
inline constexpr int VERTSIZE = 6;
inline constexpr int HORZRES = 8;  ///< in units
inline constexpr int VERTRES = 10;
inline constexpr int LOGPIXELSX = 88;  ///< units per inch
inline constexpr int LOGPIXELSY = 90;
inline constexpr int DT_RASDISPLAY = 1;
inline constexpr int DT_RASPRINTER = 2;

/// What GetCurrentObject takes.
inline constexpr UINT OBJ_PEN = 1;
inline constexpr UINT OBJ_BRUSH = 2;
inline constexpr UINT OBJ_FONT = 6;

/// The stock objects, which are always there.
inline constexpr int WHITE_BRUSH = 0;
inline constexpr int LTGRAY_BRUSH = 1;
inline constexpr int GRAY_BRUSH = 2;
inline constexpr int DKGRAY_BRUSH = 3;
inline constexpr int BLACK_BRUSH = 4;
inline constexpr int NULL_BRUSH = 5;
inline constexpr int HOLLOW_BRUSH = NULL_BRUSH;
inline constexpr int WHITE_PEN = 6;
inline constexpr int BLACK_PEN = 7;
inline constexpr int NULL_PEN = 8;
inline constexpr int OEM_FIXED_FONT = 10;
inline constexpr int ANSI_FIXED_FONT = 11;
inline constexpr int ANSI_VAR_FONT = 12;
inline constexpr int SYSTEM_FONT = 13;
inline constexpr int DEVICE_DEFAULT_FONT = 14;
inline constexpr int SYSTEM_FIXED_FONT = 16;
inline constexpr int DEFAULT_GUI_FONT = 17;

/// How CombineRgn joins two regions.
inline constexpr int RGN_AND = 1;
inline constexpr int RGN_OR = 2;
inline constexpr int RGN_XOR = 3;
inline constexpr int RGN_DIFF = 4;  ///< the first without the second
inline constexpr int RGN_COPY = 5;  ///< the first

/// What kind of region a call has left, if not ERRORREGION.
inline constexpr int NULLREGION = 1;
inline constexpr int SIMPLEREGION = 2;  ///< one rectangle
inline constexpr int COMPLEXREGION = 3;

/// What the header of a metafile says.
struct ENHMETAHEADER {
    std::uint32_t iType = 0;         ///< 1, the type of the first record
    std::uint32_t nSize = 0;         ///< of the header record, in bytes
    RECT rclBounds;                  ///< of what is drawn, in units of the device, edges included
    RECT rclFrame;                   ///< of the picture, in hundredths of a millimeter
    std::uint32_t dSignature = 0;    ///< " EMF", from the lowest byte on
    std::uint32_t nVersion = 0;      ///< of the format
    std::uint32_t nBytes = 0;        ///< of the metafile
    std::uint32_t nRecords = 0;      ///< how many there are, header included
    std::uint16_t nHandles = 0;      ///< the metafile's own included
    std::uint16_t sReserved = 0;     ///< unused
    std::uint32_t nDescription = 0;  ///< in characters
    /// Where the description begins in the header, in bytes; 0 for none.
    std::uint32_t offDescription = 0;
    std::uint32_t nPalEntries = 0;  ///< entries of the palette; 0 here
    SIZE szlDevice;                 ///< of the reference device, in its units
    SIZE szlMillimeters;            ///< and in millimeters
};

#endif
