#include "examples/gallery/Cards.h"

#include <array>
#include <cstring>
#include <string>
#include <utility>

#include "graphs/common/ColorMgr.h"
#include "graphs/common/FormattedText.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/graphics/DCScope.h"

namespace gallery {

namespace {

using tessalink::RestoredState;
using tessalink::Selected;

constexpr COLORREF cCardBlue = RGB(0, 70, 160);
constexpr COLORREF cCardRed = RGB(190, 30, 30);
constexpr COLORREF cCardSand = RGB(250, 235, 200);
constexpr COLORREF cCardGray = RGB(110, 110, 110);
constexpr int cCaptionHeight = -11;

struct Font : CFont {
    Font(int height, const char* face, int weight = FW_NORMAL, bool italic = false,
         bool underline = false, bool strikeOut = false) {
        const bool isSymbol = std::strcmp(face, "Symbol") == 0;
        CreateFont(height, 0, 0, 0, weight, italic, underline, strikeOut,
                   isSymbol ? SYMBOL_CHARSET : ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                   CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, face);
    }
};

void caption(CDC& dc, int x, int y, const char* text) {
    const RestoredState restored(dc);
    Font font(cCaptionHeight, "Arial");
    dc.SelectObject(&font);
    dc.SetTextColor(cCardGray);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    dc.TextOut(x, y, text);
    dc.SelectStockObject(SYSTEM_FONT);
}

void write(CDC& dc, CFont&& font, int x, int y, const char* text) {
    const Selected<CFont> selected(dc, &font);
    dc.TextOut(x, y, text);
}

// Pens.

void drawLine(CDC& dc, int x, int y) {
    dc.MoveTo(x, y);
    dc.LineTo(x + 110, y);
    dc.LineTo(x + 150, y - 10);
}

void drawStyles(CDC& dc) {
    constexpr std::array<std::pair<UINT, const char*>, 5> styles = {
        {{PS_SOLID, "solid"},
         {PS_DASH, "dash"},
         {PS_DOT, "dot"},
         {PS_DASHDOT, "dash dot"},
         {PS_DASHDOTDOT, "dash dot dot"}}};
    caption(dc, 90, 4, "transparent");
    caption(dc, 260, 4, "opaque");
    dc.SetBkColor(RGB(245, 180, 40));
    int y = 34;
    for (const auto& [style, name] : styles) {
        CPen pen(style, 1, cCardBlue);
        const Selected selected(dc, &pen);
        caption(dc, 10, y - 8, name);
        dc.SetBkMode(TRANSPARENT);
        drawLine(dc, 90, y);
        dc.SetBkMode(OPAQUE);
        drawLine(dc, 260, y);
        y += 20;
    }
}

void drawWidths(CDC& dc) {
    int y = 150;
    for (const int width : {0, 1, 2, 3, 5, 8}) {
        CPen pen(PS_SOLID, width, cCardRed);
        const Selected selected(dc, &pen);
        caption(dc, 10, y - 8, ("width " + std::to_string(width)).c_str());
        drawLine(dc, 90, y);
        const POINT corners[] = {{270, y + 3}, {300, y - 9}, {330, y + 3}, {370, y - 9}, {400, y}};
        dc.Polyline(corners, 5);
        y += 21;
    }
}

void drawFrames(CDC& dc) {
    caption(dc, 440, 4, "on the outline");
    caption(dc, 440, 134, "inside the frame");
    int top = 26;
    for (const UINT style : {PS_SOLID, PS_INSIDEFRAME}) {
        CPen pen(style, 9, cCardBlue);
        CBrush brush(cCardSand);
        const Selected selectedPen(dc, &pen);
        const Selected selectedBrush(dc, &brush);
        dc.Rectangle(446, top, 496, top + 80);
        dc.Ellipse(510, top, 580, top + 80);
        const Selected thin(dc, static_cast<CPen*>(CGdiObject::FromStock(BLACK_PEN)));
        dc.SelectStockObject(NULL_BRUSH);
        dc.Rectangle(446, top, 496, top + 80);
        dc.Rectangle(510, top, 580, top + 80);
        top += 130;
    }
}

// Every line starts at the middle and excludes its end, which is a dot of its own.
void drawDirections(CDC& dc) {
    caption(dc, 440, 254, "ends");
    constexpr std::array<POINT, 8> ways = {
        {{1, 0}, {1, 1}, {0, 1}, {-1, 1}, {-1, 0}, {-1, -1}, {0, -1}, {1, -1}}};
    for (const POINT& way : ways) {
        dc.MoveTo(540, 270);
        dc.LineTo(540 + 12 * way.x, 270 + 12 * way.y);
        dc.SetPixel(540 + 12 * way.x, 270 + 12 * way.y, cCardRed);
    }
}

void drawPens(CDC& dc) {
    drawStyles(dc);
    drawWidths(dc);
    drawFrames(dc);
    drawDirections(dc);
}

// Brushes and shapes.

void drawStar(CDC& dc, int x, int y, int mode) {
    const POINT corners[] = {
        {x, y + 14}, {x + 40, y + 14}, {x + 8, y + 38}, {x + 20, y}, {x + 32, y + 38}};
    dc.SetPolyFillMode(mode);
    dc.Polygon(corners, 5);
}

void drawBrushes(CDC& dc) {
    constexpr std::array<const char*, 8> names = {"null",     "solid",      "horizontal",
                                                  "vertical", "f-diagonal", "b-diagonal",
                                                  "cross",    "diag-cross"};
    CPen pen(PS_SOLID, 1, cCardBlue);
    const Selected selectedPen(dc, &pen);
    dc.SetBkColor(cCardSand);
    int x = 10;
    for (int i = 0; i < 8; ++i, x += 75) {
        CBrush brush;
        const auto style = static_cast<UINT>(i == 0 ? BS_NULL : i == 1 ? BS_SOLID : BS_HATCHED);
        const LOGBRUSH description = {style, cCardRed,
                                      static_cast<std::uintptr_t>(i < 2 ? 0 : i - 2)};
        brush.CreateBrushIndirect(&description);
        const Selected selected(dc, &brush);
        caption(dc, x, 4, names[static_cast<std::size_t>(i)]);
        dc.SetBkMode(OPAQUE);
        dc.Rectangle(x, 20, x + 65, 55);
        dc.SetBkMode(TRANSPARENT);
        dc.Ellipse(x, 62, x + 65, 97);
    }
}

void drawPolygons(CDC& dc) {
    CBrush sand(cCardSand);
    const Selected selected(dc, &sand);
    caption(dc, 10, 106, "alternate");
    drawStar(dc, 20, 124, ALTERNATE);
    caption(dc, 85, 106, "winding");
    drawStar(dc, 95, 124, WINDING);
    caption(dc, 160, 106, "no pen");
    const Selected none(dc, static_cast<CPen*>(CGdiObject::FromStock(NULL_PEN)));
    drawStar(dc, 165, 124, ALTERNATE);
    dc.Rectangle(215, 124, 245, 139);
    dc.Ellipse(215, 146, 245, 161);
}

void drawFills(CDC& dc) {
    CBrush red(cCardRed);
    CBrush hatch(HS_DIAGCROSS, cCardBlue);
    caption(dc, 270, 106, "FillRect, FrameRect");
    dc.FillRect(CRect(270, 124, 320, 160), &hatch);
    dc.FrameRect(CRect(330, 124, 370, 160), &red);
    caption(dc, 390, 106, "3-D, focus");
    dc.FillSolidRect(390, 124, 46, 36, RGB(212, 208, 200));
    dc.Draw3dRect(CRect(393, 127, 433, 157), cWhite, cCardGray);
    dc.DrawFocusRect(CRect(397, 131, 429, 153));
    caption(dc, 460, 106, "FillRgn");
    CRgn ring;
    CRgn hole;
    ring.CreateEllipticRgn(460, 122, 520, 164);
    hole.CreateEllipticRgn(472, 132, 508, 154);
    ring.CombineRgn(&ring, &hole, RGN_DIFF);
    dc.FillRgn(&ring, &red);
    CRgn triangle;
    const POINT corners[] = {{530, 162}, {560, 122}, {590, 162}};
    triangle.CreatePolygonRgn(corners, 3, ALTERNATE);
    dc.FillRgn(&triangle, &hatch);
}

void drawBrushesAndShapes(CDC& dc) {
    drawBrushes(dc);
    drawPolygons(dc);
    drawFills(dc);
}

// Fonts.

void drawFaces(CDC& dc) {
    constexpr std::array<const char*, 2> faces = {"Arial", "Times New Roman"};
    int y = 22;
    for (const char* face : faces) {
        for (const bool bold : {false, true}) {
            for (const bool italic : {false, true}) {
                const int weight = bold ? FW_BOLD : FW_NORMAL;
                const std::string style = std::string(bold ? " bold" : "") + (italic ? " italic"
                                                                              : bold ? ""
                                                                                     : " regular");
                caption(dc, 10, y + 2, (face + style).c_str());
                write(dc, Font(-13, face, weight, italic), 172, y,
                      "Profile \xC4\xD6\xDC \x80 3\xBD");
                write(dc, Font(16, face, weight, italic), 310, y, "Profile AVATo");
                write(dc, Font(-20, face, weight, italic), 430, y - 4, "Score 123");
                y += 26;
            }
        }
    }
    caption(dc, 172, 4, "em of 13");
    caption(dc, 310, 4, "cell of 16");
    caption(dc, 430, 4, "em of 20");
}

void drawSymbols(CDC& dc) {
    caption(dc, 10, 236, "Symbol");
    write(dc, Font(-18, "Symbol"), 172, 230, "abgdmpsw S \xA3 \xB3 \xB1 \xB9 \xA5 \xB7 \xD6 \xAE");
    caption(dc, 10, 262, "lines");
    write(dc, Font(-14, "Arial", FW_NORMAL, false, true), 172, 258, "underlined gjp");
    write(dc, Font(-14, "Times New Roman", FW_NORMAL, false, false, true), 310, 258, "struck out");
}

void drawFonts(CDC& dc) {
    dc.SetBkMode(TRANSPARENT);
    drawFaces(dc);
    drawSymbols(dc);
}

// Alignments.

void drawCross(CDC& dc, int x, int y) {
    CPen pen(PS_SOLID, 1, cCardRed);
    const Selected selected(dc, &pen);
    dc.MoveTo(x - 8, y);
    dc.LineTo(x + 9, y);
    dc.MoveTo(x, y - 8);
    dc.LineTo(x, y + 9);
}

void drawAlignments(CDC& dc) {
    constexpr std::array<std::pair<UINT, const char*>, 3> across = {
        {{TA_LEFT, "left"}, {TA_CENTER, "center"}, {TA_RIGHT, "right"}}};
    constexpr std::array<std::pair<UINT, const char*>, 3> down = {
        {{TA_TOP, "top"}, {TA_BASELINE, "base line"}, {TA_BOTTOM, "bottom"}}};
    dc.SetBkColor(cCardSand);
    Font font(-18, "Arial");
    const Selected<CFont> selected(dc, &font);
    for (std::size_t row = 0; row < down.size(); ++row) {
        for (std::size_t column = 0; column < across.size(); ++column) {
            const int x = 100 + 200 * static_cast<int>(column);
            const int y = 48 + 80 * static_cast<int>(row);
            const std::string name = std::string(across[column].second) + ", " + down[row].second;
            caption(dc, x - 90, y - 44, name.c_str());
            dc.SetTextAlign(across[column].first | down[row].first);
            dc.TextOut(x, y, "Typing");
            drawCross(dc, x, y);
        }
    }
}

// Labels.

void drawAlignedLabel(CDC& dc, int y, const char* label) {
    constexpr std::array<std::pair<UINT, int>, 3> places = {
        {{TA_LEFT, 10}, {TA_CENTER, 300}, {TA_RIGHT, 590}}};
    for (const auto& [align, x] : places) {
        const RestoredState restored(dc);
        drawCross(dc, x, y);
        dc.SetTextAlign(align | TA_TOP);
        PrintFormatted(&dc, x, y, label, nullptr, nullptr, nullptr);
    }
}

void drawParagraphs(CDC& dc) {
    constexpr std::array<std::pair<UINT, const char*>, 4> forms = {
        {{DT_LEFT, "left"},
         {DT_CENTER, "center"},
         {DT_RIGHT, "right"},
         {DT_SINGLELINE | DT_VCENTER | DT_CENTER, "one line, cut"}}};
    int x = 10;
    for (const auto& [format, name] : forms) {
        CRect room(x, 184, x + 130, 250);
        caption(dc, x, 168, name);
        dc.FrameRect(room, static_cast<CBrush*>(CGdiObject::FromStock(LTGRAY_BRUSH)));
        room.DeflateRect(4, 4);
        dc.DrawText(CString("Words that need &more than one line"), room, format | DT_WORDBREAK);
        x += 150;
    }
}

void drawLabels(CDC& dc) {
    Font font(-14, "Arial");
    const Selected<CFont> selected(dc, &font);
    dc.SetBkMode(TRANSPARENT);
    caption(dc, 10, 2,
            "a plain label, and labels with switches: \\n normal, \\i italic, "
            "\\b bold, \\s symbol");
    drawAlignedLabel(dc, 24, "plain label");
    drawAlignedLabel(dc, 52, "\\bbold \\iitalic \\nnormal");
    drawAlignedLabel(dc, 80, "\\iz\\n \\s\xB3\\n 1.96, \\sa\\n = 5%");
    caption(dc, 10, 106, "several lines");
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    KOVGraphUtilities::PrintMultipleLines(&dc, 10, 122, "first line\n\\bsecond\\n line");
    dc.SetTextAlign(TA_CENTER | TA_TOP);
    KOVGraphUtilities::PrintMultipleLines(&dc, 300, 122, "first line\n\\bsecond\\n line");
    dc.SetTextAlign(TA_RIGHT | TA_TOP);
    KOVGraphUtilities::PrintMultipleLines(&dc, 590, 122, "first line\n\\bsecond\\n line");
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    drawParagraphs(dc);
}

// Clips and backgrounds.

void drawClipped(CDC& dc, int x, const char* name, void (*clip)(CDC& dc, const CRect& box)) {
    const CRect box(x, 22, x + 110, 92);
    caption(dc, x, 4, name);
    dc.SaveDC();
    clip(dc, box);
    CBrush brush(HS_BDIAGONAL, cCardBlue);
    CBrush sand(cCardSand);
    dc.FillRect(&box, &sand);
    dc.FillRect(&box, &brush);
    CPen pen(PS_SOLID, 3, cCardRed);
    Font font(-26, "Arial", FW_BOLD);
    dc.SelectObject(&pen);
    dc.SelectObject(&font);
    dc.SelectStockObject(NULL_BRUSH);
    dc.Ellipse(&box);
    dc.TextOut(x + 8, 42, "Clipped");
    dc.RestoreDC(-1);
}

void drawClips(CDC& dc) {
    dc.SetBkMode(TRANSPARENT);
    drawClipped(dc, 10, "none", [](CDC&, const CRect&) {});
    drawClipped(dc, 130, "rectangle", [](CDC& c, const CRect& box) {
        c.IntersectClipRect(box.left + 15, box.top + 10, box.right - 15, box.bottom - 10);
    });
    drawClipped(dc, 250, "excluded", [](CDC& c, const CRect& box) {
        c.ExcludeClipRect(box.left + 30, box.top + 20, box.right - 30, box.bottom - 20);
    });
    drawClipped(dc, 370, "ellipse", [](CDC& c, const CRect& box) {
        CRgn region;
        region.CreateEllipticRgn(box.left + 5, box.top, box.right - 5, box.bottom);
        c.SelectClipRgn(&region);
    });
    drawClipped(dc, 490, "triangle", [](CDC& c, const CRect& box) {
        const POINT corners[] = {
            {box.left, box.bottom}, {box.left + 55, box.top}, {box.right, box.bottom}};
        CRgn region;
        region.CreatePolygonRgn(corners, 3, ALTERNATE);
        c.SelectClipRgn(&region);
    });
}

void drawBackgrounds(CDC& dc) {
    CBrush hatch(HS_CROSS, RGB(170, 170, 170));
    Font font(-18, "Arial");
    const Selected<CFont> selected(dc, &font);
    caption(dc, 10, 102, "text: transparent, opaque, over a rectangle, cut by one");
    dc.FillRect(CRect(10, 118, 600, 160), &hatch);
    dc.SetBkColor(cCardSand);
    dc.SetTextColor(cCardBlue);
    dc.SetBkMode(TRANSPARENT);
    dc.TextOut(20, 128, "Transparent");
    const CRect filled(310, 124, 450, 154);
    dc.ExtTextOut(325, 128, ETO_OPAQUE, filled, CString("Rectangle"), nullptr);
    dc.SetBkMode(OPAQUE);
    dc.TextOut(180, 128, "Opaque");
    const CRect cut(480, 132, 570, 146);
    dc.ExtTextOut(470, 128, ETO_CLIPPED, cut, CString("Cut on all sides"), nullptr);
}

void drawClipsAndBackgrounds(CDC& dc) {
    drawClips(dc);
    drawBackgrounds(dc);
}

// Palettes.

void drawPalette(CDC& dc, int top, const char* name, const ColorMgr& colors) {
    caption(dc, 10, top, name);
    int x = 10;
    for (int i = 0; i < colors.GetColorCount(); ++i, x += 65) {
        const COLORREF color = colors.GetColor(i);
        CPen pen(PS_SOLID, 3, color);
        CBrush brush(color);
        dc.FillRect(CRect(x, top + 18, x + 55, top + 48), &brush);
        const Selected selected(dc, &pen);
        const POINT curve[] = {
            {x + 2, top + 78}, {x + 18, top + 58}, {x + 34, top + 72}, {x + 52, top + 56}};
        dc.Polyline(curve, 4);
    }
}

void drawPalettes(CDC& dc) {
    drawPalette(dc, 4, "default", ColorMgr());
    drawPalette(dc, 94, "colour-safe", ColorMgr(ColorMgr::ColorSafePalette()));
}

constexpr std::array<Card, 7> cCards = {{
    {"pens", "Pens", "Every style and width of pens, on lines and around shapes", 610, 290,
     drawPens},
    {"brushes", "Brushes and shapes",
     "Every brush on rectangles and ellipses; polygons, fills and regions", 610, 172,
     drawBrushesAndShapes},
    {"fonts", "Fonts", "Arial, Times New Roman and Symbol in styles and heights", 610, 284,
     drawFonts},
    {"alignment", "Alignment", "Texts at a reference point, which is a cross", 610, 250,
     drawAlignments},
    {"labels", "Labels", "Labels with switches of the font, several lines, paragraphs", 610, 260,
     drawLabels},
    {"clips", "Clips and backgrounds", "Shapes and texts in clips and over backgrounds", 610, 168,
     drawClipsAndBackgrounds},
    {"palettes", "Palettes", "The default and the colour-safe palette", 610, 184, drawPalettes},
}};

}  // namespace

std::span<const Card> cards() {
    return cCards;
}

}  // namespace gallery
