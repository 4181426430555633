// Plays an enhanced metafile by the platform's own calls into a bitmap: for the comparison with our
// player. A program for that platform or a run-time compatible with it.
//
//     play_metafile IN.emf OUT.bmp WIDTH HEIGHT
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

int main(int argc, char** argv) {
    constexpr int arguments = 5;
    if (argc != arguments) return 2;
    const int width = std::atoi(argv[3]);
    const int height = std::atoi(argv[4]);
    const HENHMETAFILE picture = GetEnhMetaFileA(argv[1]);
    if (picture == nullptr) return 1;

    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    void* pixels = nullptr;
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    SelectObject(dc, bitmap);
    RECT whole = {0, 0, width, height};
    FillRect(dc, &whole, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    if (!PlayEnhMetaFile(dc, picture, &whole)) return 1;
    GdiFlush();

    const DWORD size = static_cast<DWORD>((width * 3 + 3) / 4 * 4 * height);
    BITMAPFILEHEADER head = {};
    head.bfType = 0x4D42;
    head.bfOffBits = sizeof(head) + sizeof(info.bmiHeader);
    head.bfSize = head.bfOffBits + size;
    std::FILE* const out = std::fopen(argv[2], "wb");
    if (out == nullptr) return 1;
    std::fwrite(&head, sizeof(head), 1, out);
    std::fwrite(&info.bmiHeader, sizeof(info.bmiHeader), 1, out);
    std::fwrite(pixels, size, 1, out);
    return std::fclose(out) == 0 ? 0 : 1;
}
