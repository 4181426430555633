#include "tests/platform/qt/TestCard.h"

#include <cstring>
#include <string>

#include "platform/graphics/DCScope.h"

namespace tessalink::test {

namespace {

constexpr COLORREF cBlue = RGB(0, 70, 160);
constexpr COLORREF cRed = RGB(190, 30, 30);
constexpr COLORREF cSand = RGB(250, 235, 200);

struct Font : CFont {
    Font(int height, const char* face, int weight = FW_NORMAL, bool italic = false,
         bool lines = false) {
        const bool isSymbol = std::strcmp(face, "Symbol") == 0;
        CreateFont(height, 0, 0, 0, weight, italic, lines, lines,
                   isSymbol ? SYMBOL_CHARSET : ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                   CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, face);
    }
};

void write(CDC& dc, CFont&& font, int x, int y, const char* text) {
    const Selected selected(dc, &font);
    dc.TextOut(x, y, text);
}

void drawPens(CDC& dc) {
    int y = 20;
    for (const UINT style : {PS_SOLID, PS_DASH, PS_DOT, PS_DASHDOT, PS_DASHDOTDOT}) {
        for (const int mode : {OPAQUE, TRANSPARENT}) {
            CPen pen(style, 1, cBlue);
            const Selected selected(dc, &pen);
            dc.SetBkMode(mode);
            dc.MoveTo(20, y);
            dc.LineTo(120, y);
            dc.LineTo(150, y + 4);
            y += 7;
        }
    }
    for (const int width : {2, 3, 6}) {
        CPen pen(PS_SOLID, width, cRed);
        const Selected selected(dc, &pen);
        const POINT corners[] = {{20, y + 14}, {50, y}, {80, y + 14}, {140, y + 3}};
        dc.Polyline(corners, 4);
        y += 22;
    }
}

void drawShapes(CDC& dc) {
    int x = 170;
    for (const UINT style : {PS_SOLID, PS_DOT, PS_NULL}) {
        for (int hatch = -1; hatch <= HS_DIAGCROSS; ++hatch) {
            CPen pen(style, 1, cBlue);
            CBrush brush;
            hatch < 0 ? brush.CreateSolidBrush(cSand) : brush.CreateHatchBrush(hatch, cRed);
            const Selected selectedPen(dc, &pen);
            const Selected selectedBrush(dc, &brush);
            dc.SetBkMode(hatch % 2 == 0 ? OPAQUE : TRANSPARENT);
            const int top = 16 + 34 * (hatch + 1);
            dc.Rectangle(x, top, x + 40, top + 28);
            dc.Ellipse(x + 45, top, x + 85, top + 28);
            const POINT star[] = {{x + 90, top + 10},
                                  {x + 128, top + 10},
                                  {x + 97, top + 28},
                                  {x + 109, top},
                                  {x + 121, top + 28}};
            dc.SetPolyFillMode(hatch % 2 == 0 ? WINDING : ALTERNATE);
            dc.Polygon(star, 5);
        }
        x += 145;
    }
    CPen wide(PS_SOLID, 5, cBlue);
    CPen inside(PS_INSIDEFRAME, 5, cRed);
    for (CPen* pen : {&wide, &inside}) {
        const Selected selected(dc, pen);
        const int top = pen == &wide ? 270 : 310;
        dc.Rectangle(170, top, 210, top + 30);
        dc.Ellipse(220, top, 260, top + 30);
    }
}

void drawTexts(CDC& dc) {
    dc.SetBkMode(TRANSPARENT);
    write(dc, Font(-15, "Arial"), 20, 165, "Arial AVATo \xE4\xF6\xFC\x80");
    write(dc, Font(16, "Arial", FW_BOLD), 20, 185, "Arial bold 16");
    write(dc, Font(16, "Times New Roman", FW_NORMAL, true), 20, 205, "Times italic");
    write(dc, Font(20, "Times New Roman", FW_BOLD, false, true), 20, 222, "Times lines");
    write(dc, Font(22, "Symbol"), 20, 245, "abcDFS \xA3\xB3\xB7\xD6\xA7");
    write(dc, Font(-12, "Courier New"), 20, 272, "Courier New");
    CFont font;
    font.CreateFont(-13, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Arial");
    const Selected selected(dc, &font);
    dc.SetBkColor(cSand);
    const UINT alignments[] = {TA_LEFT, TA_CENTER, TA_RIGHT | TA_BASELINE, TA_CENTER | TA_BOTTOM};
    int y = 310;
    for (const UINT alignment : alignments) {
        dc.SetBkMode(OPAQUE);
        dc.SetTextAlign(alignment);
        dc.SetTextColor(cBlue);
        dc.TextOut(90, y, "aligned gq");
        dc.SetPixel(90, y, cRed);
        y += 24;
    }
    dc.SetTextAlign(TA_LEFT);
    CRect box(20, 400, 150, 460);
    dc.FillSolidRect(&box, RGB(235, 235, 235));
    dc.DrawText("Lines are &wrapped at the edge of the box, and cut at its end when they are many.",
                -1, &box, DT_WORDBREAK);
}

void drawClips(CDC& dc) {
    CRgn round;
    round.CreateEllipticRgn(300, 270, 400, 350);
    const int saved = dc.SaveDC();
    dc.SelectClipRgn(&round);
    dc.ExcludeClipRect(340, 300, 360, 320);
    CBrush sand(cSand);
    const CRect all(290, 260, 420, 360);
    dc.FillRect(all, &sand);
    for (int x = 280; x < 420; x += 12) {
        dc.MoveTo(x, 260);
        dc.LineTo(x + 30, 360);
    }
    const CRect cut(305, 325, 380, 335);
    dc.ExtTextOut(300, 320, ETO_CLIPPED | ETO_OPAQUE, cut, CString("clipped text"), nullptr);
    dc.RestoreDC(saved);
    CBrush cross(HS_CROSS, cBlue);
    CRgn hole;
    hole.CreateEllipticRgn(440, 270, 520, 350);
    CRgn slot;
    slot.CreateRectRgn(470, 260, 490, 360);
    hole.CombineRgn(&hole, &slot, RGN_DIFF);
    dc.FillRgn(&hole, &cross);
    dc.DrawFocusRect(CRect(435, 265, 525, 355));
    dc.Draw3dRect(CRect(540, 270, 600, 300), RGB(255, 255, 255), RGB(90, 90, 90));
    dc.FrameRect(CRect(540, 310, 600, 340), &cross);
    const int advances[] = {20, 20, 20, 20, 20};
    dc.ExtTextOut(440, 370, 0, nullptr, CString("wider"), advances);
    for (int size = 4; size < 64; size += 10) {
        CFont font;
        font.CreateFont(size, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Arial");
        const Selected selected(dc, &font);
        dc.TextOut(170 + size * 7, 400, "Hg");
    }
}

}  // namespace

void drawTestCard(CDC& dc) {
    CBrush white(cWhite);
    dc.FillRect(CRect(0, 0, cTestCardWidth, cTestCardHeight), &white);
    dc.SelectStockObject(NULL_BRUSH);
    dc.Rectangle(0, 0, cTestCardWidth, cTestCardHeight);
    for (const auto draw : {drawPens, drawShapes, drawTexts, drawClips}) {
        const RestoredState restored(dc);
        draw(dc);
    }
}

}  // namespace tessalink::test
