// The pictures of the programs `drawing` and `profiles` by libEMF. A source of its own: its names
// are those of the classic desktop, like the product's.
#include <libEMF/emf.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "benchmarks/comparison/programs/Marks.h"
#include "benchmarks/comparison/programs/ProfileData.h"

namespace {

/// The size of the metafile that `draw` draws, in a stream in memory.
template <class Draw>
std::size_t sizeOf(Draw draw) {
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* const file = open_memstream(&bytes, &size);
    HDC dc = CreateEnhMetaFileWithFILEA(0, file, nullptr, "");
    draw(dc);
    DeleteEnhMetaFile(CloseEnhMetaFile(dc));
    std::fflush(file);
    std::free(bytes);
    return size;
}

HFONT createFont(int height, const char* face) {
    return CreateFontA(height, 0, 0, 0, 400, 0, 0, 0, 0, 4, 0, 2, 6, face);
}

void drawMarks(HDC dc) {
    HFONT font = createFont(marks::cFontHeight, "Arial");
    HPEN pen = CreatePen(PS_SOLID, 1, marks::cPenColor);
    HBRUSH brush = CreateSolidBrush(marks::cBrushColor);
    SelectObject(dc, font);
    SelectObject(dc, pen);
    SelectObject(dc, brush);
    SetBkMode(dc, TRANSPARENT);
    for (const marks::Mark& mark : marks::all()) {
        Ellipse(dc, mark.x, mark.y, mark.x + marks::cSize, mark.y + marks::cSize);
        TextOutA(dc, mark.x + marks::cLabelOffset, mark.y, mark.label, mark.length);
    }
    DeleteObject(font);
    DeleteObject(pen);
    DeleteObject(brush);
}

// The plot of the profile graph.

using namespace profiles;

constexpr int cLeft = 60;
constexpr int cRight = cWidth - 10;
constexpr int cTop = 15;
constexpr int cBottom = cHeight - 80;
constexpr int cHalfSymbol = 5;

int xOf(int scale) {
    return cLeft + (scale + 1) * (cRight - cLeft) / (cScales + 1);
}

int yOf(int score) {
    return cBottom - (score - cLowest) * (cBottom - cTop) / (cHighest - cLowest);
}

void line(HDC dc, int x1, int y1, int x2, int y2) {
    MoveToEx(dc, x1, y1, nullptr);
    LineTo(dc, x2, y2);
}

void text(HDC dc, int x, int y, const Label& label) {
    TextOutA(dc, x, y, label.text, label.length);
}

void drawSymbol(HDC dc, int x, int y, int kind) {
    constexpr int r = cHalfSymbol;
    const POINT triangle[] = {{x, y - r}, {x + r, y + r}, {x - r, y + r}};
    const POINT diamond[] = {{x, y - r}, {x + r, y}, {x, y + r}, {x - r, y}};
    switch (kind % 4) {
        case 0:
            Ellipse(dc, x - r, y - r, x + r, y + r);
            break;
        case 1:
            Rectangle(dc, x - r, y - r, x + r, y + r);
            break;
        case 2:
            Polygon(dc, triangle, 3);
            break;
        default:
            Polygon(dc, diamond, 4);
            break;
    }
}

void drawBands(HDC dc) {
    SelectObject(dc, GetStockObject(NULL_PEN));
    for (const Band& band : cBands) {
        HBRUSH brush = CreateSolidBrush(band.color);
        SelectObject(dc, brush);
        Rectangle(dc, cLeft, yOf(band.to), cRight, yOf(band.from));
        SelectObject(dc, GetStockObject(NULL_BRUSH));
        DeleteObject(brush);
    }
}

void drawAxes(HDC dc) {
    SelectObject(dc, GetStockObject(BLACK_PEN));
    Rectangle(dc, 0, 0, cWidth, cHeight);
    line(dc, cLeft, cTop, cLeft, cBottom);
    line(dc, cLeft, cTop, cRight, cTop);
    line(dc, cLeft, cBottom, cRight, cBottom);
    SetTextAlign(dc, TA_RIGHT | TA_TOP);
    for (int score = cLowest; score <= cHighest; score += cTick) {
        line(dc, cLeft - cHalfSymbol, yOf(score), cLeft, yOf(score));
        text(dc, cLeft - 2 * cHalfSymbol, yOf(score) - cFontHeight / 2, label("%d", score));
    }
    SetTextAlign(dc, TA_CENTER | TA_TOP);
    for (int scale = 0; scale < cScales; ++scale) {
        const int end = cBottom + cHalfSymbol + scale % 2 * cFontHeight;
        line(dc, xOf(scale), cBottom, xOf(scale), end);
        text(dc, xOf(scale), end, scaleName(scale));
    }
}

void drawProfile(HDC dc, int profile) {
    constexpr int sample = 40;
    POINT points[cScales];
    for (int scale = 0; scale < cScales; ++scale) {
        points[scale] = {xOf(scale), yOf(scoreOf(profile, scale))};
    }
    Polyline(dc, points, cScales);
    for (const POINT& point : points) drawSymbol(dc, point.x, point.y, profile);
    const int y = cTop + (2 + profile) * cFontHeight;
    const int x = cLeft + sample;
    line(dc, x, y, x + sample, y);
    drawSymbol(dc, x + sample / 2, y, profile);
    text(dc, x + sample + cFontHeight, y - cFontHeight / 2, profileName(profile));
}

void drawProfiles(HDC dc) {
    SetTextAlign(dc, TA_LEFT | TA_TOP);
    for (int profile = 0; profile < cProfiles; ++profile) {
        HPEN pen = CreatePen(PS_SOLID, 1, cColors[static_cast<std::size_t>(profile)]);
        HBRUSH brush = CreateSolidBrush(cColors[static_cast<std::size_t>(profile)]);
        SelectObject(dc, pen);
        SelectObject(dc, profile < cProfiles / 2 ? brush : GetStockObject(NULL_BRUSH));
        drawProfile(dc, profile);
        SelectObject(dc, GetStockObject(BLACK_PEN));
        SelectObject(dc, GetStockObject(NULL_BRUSH));
        DeleteObject(pen);
        DeleteObject(brush);
    }
}

void drawProfileGraph(HDC dc) {
    HFONT font = createFont(cFontHeight, "Times New Roman");
    SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    drawBands(dc);
    drawAxes(dc);
    drawProfiles(dc);
    DeleteObject(font);
}

}  // namespace

std::size_t libemfMarks() {
    return sizeOf(drawMarks);
}

std::size_t libemfProfiles() {
    return sizeOf(drawProfileGraph);
}
