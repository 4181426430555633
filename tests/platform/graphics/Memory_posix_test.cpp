// What drawing and playing take from the heap.
#include <gtest/gtest.h>
#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>

#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/MetafileDevice.h"
#include "platform/graphics/NullDevice.h"
#include "platform/graphics/PdfDevice.h"
#include "platform/graphics/SvgDevice.h"

namespace {

int allocations = 0;
std::size_t inUse = 0;
std::size_t most = 0;

}  // namespace

// Not inlined: GCC would take malloc and free for a mismatch with new and delete.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    void* const place = std::malloc(size > 0 ? size : 1);
    ++allocations;
    inUse += ::malloc_usable_size(place);
    most = std::max(most, inUse);
    return place;
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    if (void* place = operator new(size, std::nothrow)) return place;
    throw std::bad_alloc();
}

[[gnu::noinline]] void operator delete(void* place) noexcept {
    inUse -= ::malloc_usable_size(place);
    std::free(place);
}

[[gnu::noinline]] void operator delete(void* place, std::size_t) noexcept {
    operator delete(place);
}

namespace {

using tessalink::MetafileDevice;
using tessalink::NullDevice;
using tessalink::PdfDevice;
using tessalink::SvgDevice;

int allocationsOf(const std::function<void()>& work) {
    const int before = allocations;
    work();
    return allocations - before;
}

// A primitive takes nothing but the growth of what is written, and a text extent nothing at all.
TEST(Memory, PrimitivesTakeNothing) {
    CPen pen(PS_SOLID, 1, 0xFF);
    CBrush brush(HS_CROSS, 0xFF);
    CFont font;
    font.CreateFont(-12, 0, 0, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, "Times New Roman");
    const auto mark = [&](CDC& dc, int i) {
        const POINT corners[] = {{i, 0}, {i + 9, 4}, {i, 9}};
        dc.SelectObject(&pen);
        dc.SelectObject(&font);
        dc.Rectangle(i, i, i + 9, i + 20);
        dc.Polygon(corners, 3);
        dc.MoveTo(i, i);
        dc.LineTo(i, 90);
        dc.TextOut(i, i, "a label", 7);
        const CRect box(i, i, i + 5, i + 5);
        dc.FillRect(&box, &brush);
        dc.GetTextExtent("another label of another length", 31);
        dc.SelectStockObject(BLACK_PEN);
        dc.SelectStockObject(SYSTEM_FONT);
    };
    constexpr int marks = 1000;
    NullDevice null;
    MetafileDevice metafile(null);
    SvgDevice svg({1000, 1000});
    PdfDevice pdf({1000, 1000});
    tessalink::DrawingDevice* const devices[] = {&null, &metafile, &svg, &pdf};
    for (tessalink::DrawingDevice* device : devices) {
        CDC dc(*device);
        mark(dc, 0);
        const int taken = allocationsOf([&] {
            for (int i = 0; i < marks; ++i) mark(dc, i);
        });
        // A buffer that doubles from 64 KiB to a megabyte or less.
        EXPECT_LE(taken, 5);
    }
}

// The most that a picture and playing it take, in parts of its file.
double memoryOf(const std::function<void(CDC&)>& draw) {
    const NullDevice screen;
    MetafileDevice device(screen);
    CDC recorded(device);
    draw(recorded);
    const std::vector<BYTE> bytes = device.Finish();
    const std::size_t before = inUse;
    most = inUse;
    const tessalink::HENHMETAFILE picture =
        tessalink::SetEnhMetaFileBits(static_cast<UINT>(bytes.size()), bytes.data());
    EXPECT_NE(picture, nullptr);
    NullDevice target;
    CDC dc(target);
    dc.SetViewportOrg(3, 4);
    const CRect rect(0, 0, 700, 500);
    EXPECT_NE(PlayEnhMetaFile(&dc, picture, rect), 0);
    DeleteEnhMetaFile(picture);
    return static_cast<double>(most - before) / static_cast<double>(bytes.size());
}

TEST(Memory, PlayingTakesFourTimesTheFile) {
    const std::function<void(CDC&)> cases[] = {
        [](CDC& dc) {
            const std::vector<POINT> points(100'000, POINT{5, 6});
            dc.Polyline(points.data(), static_cast<int>(points.size()));
        },
        [](CDC& dc) { dc.TextOut(0, 0, CString(std::string(100'000, 'x'))); },
        [](CDC& dc) {
            CRgn region;
            CRgn bar;
            region.CreateRectRgn(0, 0, 0, 0);
            std::vector<RECT> bars;
            for (int i = 0; i < 20'000; ++i) bars.push_back({0, 2 * i, 9, 2 * i + 1});
            region.Assign(*tessalink::Region::OfBands(bars));
            dc.SelectClipRgn(&region);
            dc.Rectangle(0, 0, 9, 9);
            for (int i = 0; i < 1000; ++i) dc.SaveDC();
            dc.IntersectClipRect(0, 1, 5, 30'000);
            dc.Rectangle(0, 0, 9, 9);
        },
        [](CDC& dc) {
            for (int i = 0; i < 20'000; ++i) {
                CPen pen(PS_SOLID, 1, static_cast<COLORREF>(i));
                dc.SelectObject(&pen);
                dc.LineTo(0, 0);
                dc.SelectStockObject(BLACK_PEN);
            }
        },
    };
    for (const auto& draw : cases) EXPECT_LE(memoryOf(draw), 4) << &draw - cases;
}

}  // namespace
