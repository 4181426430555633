// The picture of the program `drawing` by libEMF. A source of its own: its names are those of the
// classic desktop, like the product's.
#include <libEMF/emf.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "benchmarks/comparison/programs/Marks.h"

std::size_t libemfMarks() {
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* const file = open_memstream(&bytes, &size);
    HDC dc = CreateEnhMetaFileWithFILEA(0, file, nullptr, "");
    HFONT font = CreateFontA(marks::cFontHeight, 0, 0, 0, 400, 0, 0, 0, 0, 4, 0, 2, 6, "Arial");
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
    DeleteEnhMetaFile(CloseEnhMetaFile(dc));
    DeleteObject(font);
    DeleteObject(pen);
    DeleteObject(brush);
    std::fflush(file);
    std::free(bytes);
    return size;
}
