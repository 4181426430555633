#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/graphics/CDC.h"

/// What lines and shapes look like on a device of pixels, by the rules of DrawingDevice.
namespace tessalink::test {

using Draw = std::function<void(CDC&)>;
using Rows = std::vector<std::string>;

inline constexpr COLORREF cInk = cBlack;
inline constexpr COLORREF cFill = RGB(255, 0, 0);
inline constexpr COLORREF cGap = RGB(0, 0, 255);

/// A pixel as a letter: nothing, ink, filling, background, anything else.
inline char letterOf(COLORREF color) {
    return color == cWhite  ? '.'
           : color == cInk  ? '#'
           : color == cFill ? 'o'
           : color == cGap  ? '-'
                            : '?';
}

struct PixelCase {
    const char* name;
    LOGPEN pen{};
    LOGBRUSH brush{};
    Draw draw;
    Rows rows;
};

inline constexpr LOGPEN cThin = {PS_SOLID, {0, 0}, cInk};
inline constexpr LOGPEN cNone = {PS_NULL, {}, cInk};
inline constexpr LOGBRUSH cRed = {BS_SOLID, cFill, 0};
inline constexpr LOGBRUSH cHollow = {BS_NULL, 0, 0};

inline LOGPEN pen(UINT style, int width = 1) {
    return {style, {width, 0}, cInk};
}

inline LOGBRUSH hatch(std::uintptr_t kind) {
    return {BS_HATCHED, cFill, kind};
}

inline void line(CDC& dc, int x1, int y1, int x2, int y2) {
    dc.MoveTo(x1, y1);
    dc.LineTo(x2, y2);
}

inline const PixelCase cPixelCases[] = {
    {"no last pixel", cThin, cHollow, [](CDC& dc) { line(dc, 1, 0, 5, 0); }, {".####..."}},
    {"leftwards", cThin, cHollow, [](CDC& dc) { line(dc, 5, 0, 1, 0); }, {"..####.."}},
    {"no way", cThin, cHollow, [](CDC& dc) { line(dc, 1, 0, 1, 0); }, {"........"}},
    {"flat, a half goes up",
     cThin,
     cHollow,
     [](CDC& dc) { line(dc, 0, 0, 8, 2); },
     {"###.....", "...####.", ".......#"}},
    {"and so it does back",
     cThin,
     cHollow,
     [](CDC& dc) { line(dc, 8, 2, 0, 0); },
     {".##.....", "...####.", ".......#"}},
    {"steep", cThin, cHollow, [](CDC& dc) { line(dc, 1, 0, 0, 3); }, {".#.", ".#.", "#.."}},
    {"partly outside",
     cThin,
     cHollow,
     [](CDC& dc) { line(dc, -2, -2, 9, 9); },
     {"#..", ".#.", "..#"}},
    {"far away",
     cThin,
     cHollow,
     [](CDC& dc) { line(dc, -2147483647, 1, 2147483647, 1); },
     {"....", "####", "...."}},
    {"rectangle",
     cThin,
     cRed,
     [](CDC& dc) { dc.Rectangle(1, 0, 5, 4); },
     {".####.", ".#oo#.", ".#oo#.", ".####.", "......"}},
    {"rectangle of one unit",
     cThin,
     cRed,
     [](CDC& dc) { dc.Rectangle(1, 0, 2, 1); },
     {".#.", "..."}},
    {"rectangle of one row",
     cThin,
     cRed,
     [](CDC& dc) { dc.Rectangle(1, 0, 4, 1); },
     {".###.", "....."}},
    {"rectangle without a pen",
     cNone,
     cRed,
     [](CDC& dc) { dc.Rectangle(1, 0, 5, 4); },
     {".ooo..", ".ooo..", ".ooo..", "......"}},
    {"filled exactly",
     cThin,
     cHollow,
     [](CDC& dc) { dc.FillSolidRect(1, 0, 3, 2, cFill); },
     {".ooo.", ".ooo.", "....."}},
    {"frame inside",
     pen(PS_INSIDEFRAME, 2),
     cRed,
     [](CDC& dc) { dc.Rectangle(1, 1, 8, 8); },
     {"..........", ".#######..", ".#######..", ".##ooo##..", ".##ooo##..", ".##ooo##..",
      ".#######..", ".#######..", ".........."}},
    {"round corners inside",
     pen(PS_INSIDEFRAME, 5),
     cRed,
     [](CDC& dc) { dc.Rectangle(0, 0, 9, 9); },
     {".#######.", "#########", "#########", "#########", "#########", "#########", "#########",
      "#########", ".#######."}},
    {"ellipse",
     cThin,
     cRed,
     [](CDC& dc) { dc.Ellipse(0, 0, 8, 6); },
     {"..####..", ".#oooo#.", "#oooooo#", "#oooooo#", ".#oooo#.", "..####..", "........"}},
    {"ellipse without a pen",
     cNone,
     cRed,
     [](CDC& dc) { dc.Ellipse(0, 0, 9, 7); },
     {"..oooo...", ".oooooo..", "oooooooo.", "oooooooo.", ".oooooo..", "..oooo...", "........."}},
    {"alternate",
     cNone,
     cRed,
     [](CDC& dc) {
         const POINT p[] = {{0, 0}, {6, 0}, {6, 4}, {2, 4}, {2, 1}, {4, 1}, {4, 3}, {0, 3}};
         dc.Polygon(p, 8);
     },
     {"oooooo.", "oo..oo.", "oo..oo.", "..oooo.", "......."}},
    {"winding",
     cNone,
     cRed,
     [](CDC& dc) {
         const POINT p[] = {{0, 0}, {6, 0}, {6, 4}, {2, 4}, {2, 1}, {4, 1}, {4, 3}, {0, 3}};
         dc.SetPolyFillMode(WINDING);
         dc.Polygon(p, 8);
     },
     {"oooooo.", "oooooo.", "oooooo.", "..oooo.", "......."}},
    {"two units wide",
     pen(PS_SOLID, 2),
     cHollow,
     [](CDC& dc) { line(dc, 2, 2, 4, 2); },
     {"......", ".####.", ".####.", "......"}},
    {"wide corner",
     pen(PS_SOLID, 4),
     cHollow,
     [](CDC& dc) {
         const POINT corners[] = {{3, 3}, {8, 3}, {8, 7}};
         dc.Polyline(corners, 3);
     },
     {"...........", "..#######..", ".#########.", ".#########.", "..########.", "......####.",
      "......####.", "......####.", ".......##..", "..........."}},
    {"wide line",
     pen(PS_SOLID, 3),
     cHollow,
     [](CDC& dc) { line(dc, 2, 2, 6, 2); },
     {".........", ".#######.", ".#######.", ".#######.", "........."}},
    {"dots over background",
     pen(PS_DOT),
     cHollow,
     [](CDC& dc) { line(dc, 0, 0, 10, 0); },
     {"###---###-.."}},
    {"transparent dots",
     pen(PS_DOT),
     cHollow,
     [](CDC& dc) {
         dc.SetBkMode(TRANSPARENT);
         line(dc, 0, 0, 10, 0);
     },
     {"###...###..."}},
    {"dashes",
     pen(PS_DASH),
     cHollow,
     [](CDC& dc) { line(dc, 0, 0, 28, 0); },
     {"##################------####.."}},
    {"dash dot",
     pen(PS_DASHDOT),
     cHollow,
     [](CDC& dc) { line(dc, 0, 0, 28, 0); },
     {"#########------###------####.."}},
    {"dash dot dot",
     pen(PS_DASHDOTDOT),
     cHollow,
     [](CDC& dc) { line(dc, 0, 0, 28, 0); },
     {"#########---###---###---####.."}},
    {"dots go round",
     pen(PS_DOT),
     cHollow,
     [](CDC& dc) { dc.Rectangle(0, 0, 5, 3); },
     {"###--", "-...-", "--###"}},
    {"horizontal",
     cNone,
     hatch(HS_HORIZONTAL),
     [](CDC& dc) { dc.Rectangle(1, 2, 5, 6); },
     {".....", ".....", ".---.", ".ooo.", ".---.", "....."}},
    {"upward over what is there",
     cNone,
     hatch(HS_BDIAGONAL),
     [](CDC& dc) {
         dc.SetBkMode(TRANSPARENT);
         dc.FillRect(CRect(0, 0, 9, 3), dc.GetCurrentBrush());
     },
     {".......o..", "......o...", ".....o...."}},
    {"clipped",
     cThin,
     cRed,
     [](CDC& dc) {
         dc.IntersectClipRect(1, 0, 5, 4);
         dc.ExcludeClipRect(2, 1, 3, 3);
         dc.Rectangle(0, 0, 9, 3);
     },
     {".####.", ".o.oo.", ".#.##.", "......"}},
    {"nothing is left",
     cThin,
     cRed,
     [](CDC& dc) {
         dc.IntersectClipRect(1, 1, 1, 1);
         dc.Rectangle(0, 0, 4, 2);
         dc.TextOut(0, 0, "M");
     },
     {"....", "...."}},
    {"region",
     cThin,
     cRed,
     [](CDC& dc) {
         CRgn region, hole;
         region.CreateRectRgn(0, 0, 4, 3);
         hole.CreateRectRgn(1, 1, 2, 2);
         region.CombineRgn(&region, &hole, RGN_DIFF);
         dc.FillRgn(&region, dc.GetCurrentBrush());
     },
     {"oooo.", "o.oo.", "oooo.", "....."}},
    {"pixel", cThin, cRed, [](CDC& dc) { dc.SetPixel(2, 0, cGap); }, {"..-."}},
    {"text background",
     cThin,
     cRed,
     [](CDC& dc) {
         CFont font;
         font.CreateFont(3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
         dc.SelectObject(&font);
         const int advance = 4;
         dc.ExtTextOut(1, 1, 0, nullptr, CString(" "), &advance);
         dc.SelectStockObject(SYSTEM_FONT);
     },
     {"......", ".----.", ".----.", ".----.", "......"}},
};

/// Draws a case with its pen and brush.
inline void drawCase(const PixelCase& c, CDC& dc) {
    CPen pen;
    pen.CreatePenIndirect(&c.pen);
    CBrush brush;
    brush.CreateBrushIndirect(&c.brush);
    dc.SelectObject(&pen);
    dc.SelectObject(&brush);
    dc.SetBkColor(cGap);
    c.draw(dc);
    dc.SelectStockObject(BLACK_PEN);
    dc.SelectStockObject(WHITE_BRUSH);
}

}  // namespace tessalink::test
