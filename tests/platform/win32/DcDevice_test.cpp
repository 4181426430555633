// Pixels and texts of the platform's device contexts.
#include "platform/win32/DcDevice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/CMetaFileDC.h"
#include "platform/graphics/DCScope.h"
#include "platform/graphics/PictureModuleCalls.h"
#include "platform/win32/CImageException.h"
#include "platform/win32/Win32Images.h"
#include "platform/win32/Win32Metafiles.h"
#include "platform/win32/Win32Printing.h"
#include "tests/support/Dice.h"
#include "tests/support/DrawingProgram.h"
#include "tests/support/PixelCases.h"

namespace tessalink::test {
namespace {

MemoryBitmap bitmapOf(int width, int height, const Draw& draw) {
    MemoryBitmap bitmap(width, height, 96);
    bitmap.Draw(draw);
    return bitmap;
}

Rows rowsOf(const MemoryBitmap& bitmap) {
    Rows rows;
    for (int y = 0; y < bitmap.Height(); ++y) {
        std::string row;
        for (int x = 0; x < bitmap.Width(); ++x) row += letterOf(bitmap.Pixel(x, y));
        rows.push_back(row);
    }
    return rows;
}

int differentPixels(const MemoryBitmap& a, const MemoryBitmap& b) {
    int different = 0;
    for (int y = 0; y < a.Height(); ++y) {
        for (int x = 0; x < a.Width(); ++x) different += a.Pixel(x, y) != b.Pixel(x, y) ? 1 : 0;
    }
    return different;
}

// Where the platform draws by a way of its own: pixels at ties, round ends of wide pens, and the
// place in a dash where a shape starts.
const std::set<std::string> cOwnWay = {"wide line", "wide corner", "dots go round",
                                       "round corners inside"};

TEST(DcDevice, PixelsFollowTheRules) {
    for (const PixelCase& c : cPixelCases) {
        if (cOwnWay.count(c.name) != 0) continue;
        const auto width = static_cast<int>(c.rows.front().size());
        const auto height = static_cast<int>(c.rows.size());
        const MemoryBitmap bitmap = bitmapOf(width, height, [&](CDC& dc) { drawCase(c, dc); });
        EXPECT_EQ(rowsOf(bitmap), c.rows) << c.name;
    }
}

// At two pixels for a unit, all of a picture of whole units is twice as large.
TEST(DcDevice, UnitsOfSeveralPixels) {
    constexpr int cWidth = 24;
    constexpr int cHeight = 16;
    const Draw draw = [](CDC& dc) {
        CPen ink(PS_SOLID, 1, cInk);
        CBrush brush(cFill);
        dc.SelectObject(&ink);
        dc.SelectObject(&brush);
        dc.Rectangle(1, 1, 9, 7);
        line(dc, 10, 2, 20, 2);
        line(dc, 20, 4, 10, 4);
        line(dc, 12, 6, 12, 14);
        line(dc, 14, 14, 14, 6);
        dc.FillSolidRect(16, 7, 5, 4, cGap);
        dc.SetPixel(22, 1, cInk);
        dc.IntersectClipRect(2, 10, 8, 15);
        dc.FillSolidRect(0, 0, 24, 16, cInk);
        dc.SelectStockObject(BLACK_PEN);
        dc.SelectStockObject(WHITE_BRUSH);
    };
    const MemoryBitmap single = bitmapOf(cWidth, cHeight, draw);
    for (const int factor : {2, 3}) {
        const MemoryBitmap scaled(cWidth * factor, cHeight * factor, 96);
        {
            DcDevice device(scaled.Context(), 96 * factor);
            CDC dc(device);
            draw(dc);
        }
        int wrong = 0;
        for (int y = 0; y < scaled.Height(); ++y) {
            for (int x = 0; x < scaled.Width(); ++x) {
                wrong += scaled.Pixel(x, y) != single.Pixel(x / factor, y / factor) ? 1 : 0;
            }
        }
        EXPECT_EQ(wrong, 0) << factor;
    }
}

// At any scale, shapes that meet leave no gap and do not overlap.
TEST(DcDevice, NeighborsMeetAtEveryScale) {
    Dice dice(11);
    constexpr int cUnits = 40;
    for (const int dpi : {96, 120, 144, 168, 192, 240}) {
        const MemoryBitmap bitmap(cUnits * dpi / 96, 4, 96);
        DcDevice device(bitmap.Context(), dpi);
        CDC dc(device);
        std::array<COLORREF, 2> colors = {cFill, cGap};
        for (int left = 0, count = 0; left < cUnits; ++count) {
            const int width = 1 + static_cast<int>(dice.Below(4));
            dc.FillSolidRect(left, 0, std::min(width, cUnits - left), 4, colors[count % 2]);
            left += width;
        }
        for (int x = 0; x < bitmap.Width(); ++x) {
            EXPECT_NE(bitmap.Pixel(x, 0), cWhite) << dpi << " at " << x;
        }
    }
}

TEST(DcDevice, LeavesTheContextAsItWasAndItsClip) {
    const MemoryBitmap bitmap(20, 20, 96);
    const HDC context = bitmap.Context();
    const HGDIOBJ pen = ::SelectObject(context, ::GetStockObject(WHITE_PEN));
    ::SelectObject(context, pen);
    ::IntersectClipRect(context, 0, 0, 5, 20);
    ::SetViewportOrgEx(context, 1, 0, nullptr);
    {
        DcDevice device(context, 0);
        CDC dc(device);
        for (int i = 0; i < 2; ++i) {
            dc.FillSolidRect(-1, i, 20, 1, cFill);
            dc.IntersectClipRect(1, 0, 20, 20);
        }
    }
    EXPECT_EQ(::GetCurrentObject(context, OBJ_PEN), pen);
    RECT clip = {};
    ::GetClipBox(context, &clip);
    EXPECT_EQ(clip, (RECT{-1, 0, 4, 20}));
    EXPECT_EQ(rowsOf(bitmap)[0], "ooooo...............");
    EXPECT_EQ(rowsOf(bitmap)[1], "..ooo...............");
}

TEST(DcDevice, HandlesThatAreNoContext) {
    EXPECT_THROW(DcDevice(nullptr), CInvalidArgException);
    EXPECT_THROW(DcDevice(reinterpret_cast<HDC>(UINT_PTR{0x1234})), CInvalidArgException);
}

TEST(DcDevice, ManyObjectsStayFew) {
    const MemoryBitmap bitmap(40, 40, 96);
    DcDevice device(bitmap.Context());
    CDC dc(device);
    const DWORD before = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    for (int i = 0; i < 500; ++i) {
        CPen pen(PS_SOLID, 1 + i % 7, RGB(i % 256, 0, 0));
        CBrush brush(RGB(0, i % 256, 0));
        CFont font;
        font.CreateFont(-5 - i % 90, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
        const Selected chosenPen(dc, &pen);
        const Selected chosenBrush(dc, &brush);
        const Selected chosenFont(dc, &font);
        dc.Rectangle(1, 1, 30, 30);
        dc.TextOut(1, 1, "x");
    }
    constexpr DWORD cKept = 3 * 32 + 8;
    EXPECT_LE(::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS), before + cKept);
}

// Texts.

/// The columns that hold anything but white.
std::pair<int, int> inkedColumns(const MemoryBitmap& bitmap) {
    int first = bitmap.Width();
    int last = -1;
    for (int y = 0; y < bitmap.Height(); ++y) {
        for (int x = 0; x < bitmap.Width(); ++x) {
            if (bitmap.Pixel(x, y) == cWhite) continue;
            first = std::min(first, x);
            last = std::max(last, x);
        }
    }
    return {first, last};
}

TEST(DcDevice, GlyphsStandAtTheirPositions) {
    const auto columns = [](const int* advances, int dpi) {
        MemoryBitmap bitmap(600, 80, 96);
        DcDevice device(bitmap.Context(), dpi);
        CDC dc(device);
        CFont font;
        font.CreateFont(-20, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Arial");
        dc.SelectObject(&font);
        dc.SetBkMode(TRANSPARENT);
        dc.ExtTextOut(10, 5, 0, nullptr, "lll", 3, advances);
        dc.SelectStockObject(SYSTEM_FONT);
        return inkedColumns(bitmap);
    };
    const int advances[] = {50, 100, 7};  // otherwise the last one stands at 9
    const auto [first, last] = columns(advances, 96);
    EXPECT_EQ(first, columns(nullptr, 96).first);
    EXPECT_EQ(last - first, 150 + columns(nullptr, 96).second - first - 9);
    const auto [firstWide, lastWide] = columns(advances, 192);
    EXPECT_NEAR(firstWide, 2 * first, 2);
    EXPECT_NEAR(lastWide - firstWide, 2 * (last - first), 3);
}

TEST(DcDevice, MeasuresAreTheBuiltInOnesUnlessAnotherFaceIsThere) {
    const auto measuresOf = [](const char* face) -> const FaceMetrics& {
        LOGFONTA font = {};
        std::strcpy(font.lfFaceName, face);
        return platformTextMetrics().MetricsOf(font);
    };
    LOGFONTA sans = {};
    const FaceMetrics& builtIn = builtInMetrics(sans);
    for (const char* face : {"Arial", "ARIAL", "MS Shell Dlg", "", "Surely Not Installed"}) {
        EXPECT_EQ(&measuresOf(face), &builtIn) << face;
    }
    // At least one of these is installed wherever there are fonts.
    const char* const faces[] = {"Courier New", "Tahoma", "Liberation Mono", "Verdana"};
    int own = 0;
    for (const char* face : faces) {
        const FaceMetrics& measures = measuresOf(face);
        EXPECT_EQ(&measures, &measuresOf(face)) << face;
        if (&measures == &builtIn) continue;
        ++own;
        EXPECT_NE(measures.advances, builtIn.advances) << face;
        EXPECT_EQ(measures.advances['\n'], 0) << face;
        EXPECT_GE(measures.advances['W'], measures.advances['i']) << face;
    }
    EXPECT_GT(own, 0);
}

// Metafiles.

MemoryBitmap playedByPlatform(::HENHMETAFILE picture, int width, int height) {
    MemoryBitmap bitmap(width, height, 96);
    const RECT whole = {0, 0, width, height};
    EXPECT_NE(::PlayEnhMetaFile(bitmap.Context(), picture, &whole), 0);
    return bitmap;
}

MemoryBitmap playedByUs(HENHMETAFILE picture, int width, int height) {
    return bitmapOf(width, height, [&](CDC& dc) {
        EXPECT_NE(PlayEnhMetaFile(&dc, picture, CRect(0, 0, width, height)), 0);
    });
}

TEST(Metafiles, ThoseOfThePlatformAreRead) {
    constexpr int cSide = 100;
    const RECT frame = {0, 0, 2646, 2646};
    const HDC recording = ::CreateEnhMetaFileW(nullptr, nullptr, &frame, L"maker\0picture\0");
    ASSERT_NE(recording, nullptr);
    const HPEN pen = ::CreatePen(PS_SOLID, 1, cInk);
    const HBRUSH brush = ::CreateSolidBrush(cFill);
    const HGDIOBJ penBefore = ::SelectObject(recording, pen);
    const HGDIOBJ brushBefore = ::SelectObject(recording, brush);
    ::Rectangle(recording, 10, 10, 60, 40);
    ::Ellipse(recording, 50, 50, 90, 90);
    ::MoveToEx(recording, 5, 95, nullptr);
    ::LineTo(recording, 95, 5);
    const POINT corners[] = {{70, 10}, {95, 20}, {80, 40}};
    ::Polygon(recording, corners, 3);
    ::ExtTextOutW(recording, 12, 70, 0, nullptr, L"Text", 4, nullptr);
    ::SelectObject(recording, penBefore);
    ::SelectObject(recording, brushBefore);
    const ::HENHMETAFILE theirs = ::CloseEnhMetaFile(recording);
    ASSERT_NE(theirs, nullptr);
    const HENHMETAFILE ours = fromPlatformMetafile(theirs);
    ASSERT_NE(ours, nullptr);
    const MemoryBitmap byPlatform = playedByPlatform(theirs, cSide, cSide);
    EXPECT_LE(differentPixels(byPlatform, playedByUs(ours, cSide, cSide)), cSide * cSide / 50);
    EXPECT_GT(differentPixels(byPlatform, MemoryBitmap(cSide, cSide, 96)), 2000);
    DeleteEnhMetaFile(ours);
    ::DeleteEnhMetaFile(theirs);
    ::DeleteObject(pen);
    ::DeleteObject(brush);
}

TEST(Metafiles, OnesOfOursGoThereAndBack) {
    CMetaFileDC recording;
    const RECT frame = {0, 0, 2646, 2646};
    recording.CreateEnhanced(nullptr, nullptr, &frame, "maker\0picture\0");
    recording.Rectangle(10, 10, 60, 40);
    recording.TextOut(12, 70, "Text");
    const HENHMETAFILE ours = recording.CloseEnhanced();
    ASSERT_NE(ours, nullptr);
    const ::HENHMETAFILE theirs = toPlatformMetafile(ours);
    ASSERT_NE(theirs, nullptr);
    const HENHMETAFILE back = fromPlatformMetafile(theirs);
    ASSERT_NE(back, nullptr);
    const auto bytes = bytesOf(back);
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), bytesOf(ours).begin(), bytesOf(ours).end()));
    ::DeleteEnhMetaFile(theirs);
    DeleteEnhMetaFile(back);
    DeleteEnhMetaFile(ours);
}

TEST(Metafiles, HandlesThatAreNone) {
    EXPECT_EQ(toPlatformMetafile(nullptr), nullptr);
    EXPECT_EQ(fromPlatformMetafile(nullptr), nullptr);
    EXPECT_EQ(fromPlatformMetafile(reinterpret_cast<::HENHMETAFILE>(UINT_PTR{0x4321})), nullptr);
}

// Pictures of pixels.

TEST(MemoryBitmap, PngComesBackAsItWas) {
    Dice dice(5);
    for (int round = 0; round < 20; ++round) {
        const int width = 1 + static_cast<int>(dice.Below(70));
        const int height = 1 + static_cast<int>(dice.Below(50));
        const MemoryBitmap bitmap = bitmapOf(width, height, [&](CDC& dc) {
            for (int i = 0; i < 200; ++i) {
                dc.SetPixel(static_cast<int>(dice.Below(70)), static_cast<int>(dice.Below(50)),
                            static_cast<COLORREF>(dice.Below(0x1000000)));
            }
        });
        const std::vector<BYTE> png = bitmap.Png();
        EXPECT_EQ(png, bitmap.Png());
        const MemoryBitmap back = MemoryBitmap::OfPng(png);
        ASSERT_EQ(back.Width(), width);
        ASSERT_EQ(back.Height(), height);
        EXPECT_EQ(differentPixels(back, bitmap), 0) << round;
    }
}

TEST(MemoryBitmap, RefusesWhatItCantBe) {
    for (const auto& [width, height, dpi] :
         {std::array{0, 5, 96}, {5, 0, 96}, {5, 5, 0}, {-1, 5, 96}, {cMaxBitmapSide + 1, 5, 96}}) {
        EXPECT_THROW(MemoryBitmap(width, height, dpi), CInvalidArgException);
    }
    std::vector<BYTE> png = MemoryBitmap(30, 30, 96).Png();
    for (std::size_t length = 0; length < 40; ++length) {
        const std::vector<BYTE> part(png.begin(),
                                     png.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_THROW(MemoryBitmap::OfPng(part), CImageException) << length;
    }
}

// The module of the command line, which lies beside the tests.

class Module {
public:
    Module() : m_module(::LoadLibraryA(TESSALINK_WIN32_MODULE)) {}
    ~Module() { ::FreeLibrary(m_module); }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    template <class Function>
    Function Find(const char* name) const {
        return reinterpret_cast<Function>(
            reinterpret_cast<void*>(::GetProcAddress(m_module, name)));
    }

private:
    HMODULE m_module;
};

TEST(PictureModule, DrawsMetafilesAsPng) {
    const Module module;
    const auto render = module.Find<TessalinkRenderPicture>(cRenderPictureName);
    const auto free = module.Find<TessalinkFreePicture>(cFreePictureName);
    ASSERT_NE(render, nullptr);
    ASSERT_NE(free, nullptr);
    CMetaFileDC recording;
    const RECT frame = {0, 0, 2646, 2646};
    recording.CreateEnhanced(nullptr, nullptr, &frame, nullptr);
    recording.FillSolidRect(10, 10, 30, 20, cFill);
    const HENHMETAFILE picture = recording.CloseEnhanced();
    const auto bytes = bytesOf(picture);
    TessalinkPictureJob job = {bytes.data(), bytes.size(), "png", 100, 100, 96};
    TessalinkPictureFile file = {};
    ASSERT_NE(render(&job, &file), 0) << file.message;
    const MemoryBitmap shown = MemoryBitmap::OfPng({file.bytes, file.bytes + file.size});
    free(&file);
    EXPECT_EQ(differentPixels(shown, playedByUs(picture, 100, 100)), 0);
    EXPECT_EQ(shown.Pixel(20, 20), cFill);
    job.format = "pdf";
    EXPECT_EQ(render(&job, &file), 0);
    EXPECT_THAT(file.message, testing::HasSubstr("--embed-fonts"));
    job = {bytes.data(), bytes.size(), "png", 0, 100, 96};
    EXPECT_EQ(render(&job, &file), 0);
    DeleteEnhMetaFile(picture);
}

// Printers.

TEST(Printing, DamagedChoicesChangeNothing) {
    const HGLOBAL names = ::GlobalAlloc(GHND, 6);
    EXPECT_EQ(selectApplicationPrinter(nullptr, names), 0);
    ::GlobalFree(names);
    EXPECT_EQ(selectApplicationPrinter(nullptr, nullptr), 1);
}

}  // namespace
}  // namespace tessalink::test
