#include "platform/graphics/EnhMetaFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <functional>
#include <memory>

#include "platform/graphics/FailingDevice.h"
#include "platform/graphics/MetafileDevice.h"
#include "platform/graphics/RecordingDevice.h"
#include "platform/graphics/SvgDevice.h"
#include "tests/support/Dice.h"
#include "tests/support/DrawingProgram.h"
#include "tests/support/ShownPrimitives.h"
#include "tests/support/Xml.h"

namespace {

using tessalink::MetafileDevice;
using tessalink::NullDevice;
using tessalink::Primitive;
using tessalink::RecordingDevice;
using tessalink::SvgDevice;
using tessalink::test::Dice;
using tessalink::test::DrawingProgram;
using tessalink::test::shown;
using Bytes = std::vector<BYTE>;

// All of the fixed screen, in hundredths of a millimetre and in units.
constexpr RECT cWholeFrame = {0, 0, 50800, 38100};
constexpr RECT cWholeScreen = {0, 0, 1920, 1440};

struct Deleter {
    void operator()(tessalink::HENHMETAFILE picture) const { DeleteEnhMetaFile(picture); }
};
using Picture = std::unique_ptr<tessalink::EnhMetaFile, Deleter>;

std::vector<Primitive> played(tessalink::HENHMETAFILE picture, const RECT& rect = cWholeScreen) {
    RecordingDevice device;
    CDC dc(device);
    EXPECT_NE(PlayEnhMetaFile(&dc, picture, &rect), 0);
    return device.Primitives();
}

// A picture with a bit of everything.
Bytes everything() {
    NullDevice screen;
    MetafileDevice device(screen, cWholeFrame, std::string_view("app\0picture\0", 12));
    CDC dc(device);
    Dice dice(11);
    DrawingProgram([&](std::size_t count) { return dice.Below(count); }, {&dc},
                   DrawingProgram::Coordinates::Tame)
        .Run(60);
    return device.Finish();
}

// The strongest statement about recording and playing: a picture that was recorded and played is
// the picture that is drawn directly.
TEST(EnhMetaFile, PlaysWhatWasDrawn) {
    for (const auto coordinates :
         {DrawingProgram::Coordinates::Tame, DrawingProgram::Coordinates::Wild}) {
        const bool tame = coordinates == DrawingProgram::Coordinates::Tame;
        for (std::uint64_t seed = 0; seed < (tame ? 400u : 100u); ++seed) {
            Dice dice(seed);
            NullDevice screen;
            RecordingDevice recording;
            SvgDevice svg({1920, 1440});
            MetafileDevice metafile(screen, cWholeFrame);
            CDC nothing(screen);
            CDC direct(recording);
            CDC drawing(svg);
            CDC recorded(metafile);
            DrawingProgram([&](std::size_t count) { return dice.Below(count); },
                           {&nothing, &direct, &drawing, &recorded}, coordinates)
                .Run(dice.Below(120));
            ASSERT_EQ(tessalink::test::XmlCheck::Fault(svg.Finish()), "") << seed;
            const Picture picture(tessalink::makeEnhMetaFile(metafile.Finish()));
            ASSERT_NE(picture, nullptr) << seed;
            const auto again = shown(played(picture.get()));
            const auto expected = shown(recording.Primitives());
            if (!tame) continue;
            ASSERT_EQ(again.size(), expected.size()) << seed;
            for (std::size_t i = 0; i < expected.size(); ++i) {
                ASSERT_EQ(again[i], expected[i]) << seed << ' ' << i;
            }
        }
    }
}

// Played into a metafile, a picture is recorded again.
TEST(EnhMetaFile, IsTheSameRecordedAgain) {
    const Picture first(tessalink::makeEnhMetaFile(everything()));
    NullDevice screen;
    MetafileDevice device(screen, cWholeFrame);
    CDC dc(device);
    ASSERT_NE(PlayEnhMetaFile(&dc, first.get(), &cWholeScreen), 0);
    const Picture second(tessalink::makeEnhMetaFile(device.Finish()));
    EXPECT_EQ(shown(played(second.get())), shown(played(first.get())));
}

TEST(EnhMetaFile, FillsTheRectangleAndLeavesTheContextAsItWas) {
    NullDevice screen;
    // A frame of 2 by 1 inches from one inch on: 96 to 288 and 0 to 96 units.
    MetafileDevice device(screen, RECT{2540, 0, 7620, 2540});
    CDC recorded(device);
    CPen pen(PS_SOLID, 2, 0xFF);
    CFont font;
    font.CreateFont(-20, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    recorded.SelectObject(&pen);
    recorded.SelectObject(&font);
    recorded.SetBkMode(TRANSPARENT);
    recorded.SetTextAlign(TA_BASELINE);
    recorded.Rectangle(96, 0, 288, 96);
    recorded.SelectStockObject(BLACK_PEN);
    recorded.TextOut(120, 48, "ab");
    const Picture picture(tessalink::makeEnhMetaFile(device.Finish()));
    struct Case {
        CRect rect;
        const char* box;
        const char* text;
    };
    const Case cases[] = {
        {{0, 0, 192, 96},
         "rectangle 5,7,197,103 pen solid 2 ff0000 brush solid ffffff clip 0,0,500,500",
         "text 29,55 \"ab\" at 0 11 22 font -20 \"Arial\" color 000000 clip 0,0,500,500"},
        {{10, 10, 394, 58},
         "rectangle 15,17,399,65 pen solid 4 ff0000 brush solid ffffff clip 0,0,500,500",
         "text 63,41 \"ab\" at 0 22 44 font -10 \"Arial\" color 000000 clip 0,0,500,500"},
    };
    for (const Case& c : cases) {
        RecordingDevice target;
        CDC dc(target);
        CPen own(PS_DOT, 1, 0x0F0F0F);
        dc.SelectObject(&own);
        dc.SetTextAlign(TA_CENTER);
        dc.SetViewportOrg(5, 7);
        dc.MoveTo(3, 4);
        dc.IntersectClipRect(-5, -7, 495, 493);
        ASSERT_NE(PlayEnhMetaFile(&dc, picture.get(), &c.rect), 0);
        EXPECT_EQ(target.Lines(), (std::vector<std::string>{c.box, c.text}));
        EXPECT_EQ(dc.GetCurrentPen(), &own);
        EXPECT_EQ(dc.GetTextAlign(), TA_CENTER);
        EXPECT_EQ(dc.GetCurrentPosition(), CPoint(3, 4));
        EXPECT_EQ(dc.SaveDC(), 1);
    }
    CDC none;
    EXPECT_EQ(PlayEnhMetaFile(&none, picture.get(), &cWholeScreen), 0);
    EXPECT_EQ(PlayEnhMetaFile(nullptr, picture.get(), &cWholeScreen), 0);
    EXPECT_EQ(tessalink::PlayEnhMetaFile(&none, nullptr, &cWholeScreen), 0);
}

// Whichever primitive fails, nothing of the picture stays selected.
TEST(EnhMetaFile, LeavesTheContextAsItWasWhenTheDeviceFails) {
    const Picture picture(tessalink::makeEnhMetaFile(everything()));
    const std::size_t count = played(picture.get()).size();
    ASSERT_GT(count, 20u);
    for (std::size_t k = 1; k <= count; ++k) {
        NullDevice screen;
        tessalink::FailingDevice failing(screen, k);
        CDC dc(failing);
        CPen* const pen = dc.GetCurrentPen();
        CBrush* const brush = dc.GetCurrentBrush();
        CFont* const font = dc.GetCurrentFont();
        EXPECT_THROW(PlayEnhMetaFile(&dc, picture.get(), &cWholeScreen),
                     tessalink::FailingDevice::Fault);
        EXPECT_EQ(dc.GetCurrentPen(), pen);
        EXPECT_EQ(dc.GetCurrentBrush(), brush);
        EXPECT_EQ(dc.GetCurrentFont(), font);
        EXPECT_EQ(dc.SaveDC(), 1);
    }
}

// A clip of the picture shows inside that of the context only.
TEST(EnhMetaFile, ClipsInsideTheClipOfTheContext) {
    NullDevice screen;
    MetafileDevice device(screen, cWholeFrame);
    CDC recorded(device);
    recorded.ExcludeClipRect(20, 20, 30, 30);
    recorded.Rectangle(0, 0, 50, 50);
    recorded.SelectClipRgn(nullptr);
    recorded.Rectangle(0, 0, 60, 60);
    const Picture picture(tessalink::makeEnhMetaFile(device.Finish()));
    RecordingDevice target;
    CDC dc(target);
    dc.SetViewportOrg(100, 0);
    dc.IntersectClipRect(0, 0, 40, 25);
    ASSERT_NE(PlayEnhMetaFile(&dc, picture.get(), &cWholeScreen), 0);
    const std::string style = " pen solid 1 000000 brush solid ffffff clip ";
    EXPECT_EQ(target.Lines(),
              (std::vector<std::string>{
                  "rectangle 100,0,150,50" + style + "100,0,140,20 100,20,120,25 130,20,140,25",
                  "rectangle 100,0,160,60" + style + "100,0,140,25"}));
}

RECT edges(const decltype(ENHMETAHEADER::rclFrame)& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

ENHMETAHEADER headerOf(tessalink::HENHMETAFILE picture) {
    ENHMETAHEADER header{};
    EXPECT_EQ(GetEnhMetaFileHeader(picture, sizeof(header), &header), sizeof(header));
    return header;
}

TEST(EnhMetaFile, HasACompleteHeader) {
    struct Case {
        std::function<void(CDC&)> calls;
        RECT bounds, frame;
    };
    CPen wide(PS_SOLID, 5, 0);
    const Case cases[] = {
        {[](CDC&) {}, {0, 0, -1, -1}, {0, 0, -26, -26}},
        {[](CDC& dc) { dc.Rectangle(10, 10, 100, 60); }, {10, 10, 99, 59}, {264, 264, 2619, 1561}},
        {[&](CDC& dc) {
             dc.SelectObject(&wide);
             dc.MoveTo(10, 10);
             dc.LineTo(20, 30);
         },
         {8, 8, 22, 32},
         {211, 211, 582, 846}},
        {[](CDC& dc) {
             dc.IntersectClipRect(0, 0, 50, 50);
             dc.Rectangle(10, 10, 100, 60);
             dc.Ellipse(60, 60, 70, 70);
         },
         {10, 10, 49, 49},
         {264, 264, 1296, 1296}},
        {[&](CDC& dc) {
             dc.SelectObject(&wide);
             dc.LineTo(INT_MAX, 30);
             dc.LineTo(INT_MIN, 0);
         },
         {INT_MIN, -2, INT_MAX, 32},
         {INT_MIN, -52, INT_MAX, 846}},
    };
    for (const Case& c : cases) {
        NullDevice screen;
        MetafileDevice device(screen);
        CDC dc(device);
        c.calls(dc);
        const Bytes bytes = device.Finish();
        const Picture picture(tessalink::makeEnhMetaFile(bytes));
        const ENHMETAHEADER header = headerOf(picture.get());
        EXPECT_EQ(edges(header.rclBounds), c.bounds);
        EXPECT_EQ(edges(header.rclFrame), c.frame);
        EXPECT_EQ(header.nBytes, bytes.size());
        EXPECT_EQ(header.szlDevice, (SIZE{1920, 1440}));
        EXPECT_EQ(header.szlMillimeters, (SIZE{508, 381}));
        EXPECT_EQ(header.nSize, 116u);
        EXPECT_EQ(header.nDescription, 3u);
        EXPECT_EQ(header.offDescription, 108u);
        EXPECT_EQ(std::memcmp(bytes.data() + 40, " EMF", 4), 0);
    }
    EXPECT_EQ(tessalink::GetEnhMetaFileHeader(nullptr, 0, nullptr), 0u);
}

// Many pens one after the other need few handles, and a state that is left open is closed.
TEST(EnhMetaFile, GivesHandlesBackAndClosesStates) {
    NullDevice screen;
    MetafileDevice device(screen);
    CDC dc(device);
    for (int i = 0; i < 5000; ++i) {
        CPen pen(PS_SOLID, 1, static_cast<COLORREF>(i));
        dc.SelectObject(&pen);
        dc.LineTo(i, 1);
        if (i % 10 == 0) dc.SaveDC();
        dc.SelectStockObject(BLACK_PEN);
    }
    const Picture picture(tessalink::makeEnhMetaFile(device.Finish()));
    ASSERT_NE(picture, nullptr);
    EXPECT_LT(headerOf(picture.get()).nHandles, 300);
    EXPECT_EQ(played(picture.get()).size(), 5000u);
}

TEST(EnhMetaFile, RefusesFilesCutAnywhere) {
    const Bytes whole = everything();
    ASSERT_NE(Picture(tessalink::makeEnhMetaFile(whole)), nullptr);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        Bytes cut(whole.begin(), whole.begin() + static_cast<long>(size));
        ASSERT_EQ(tessalink::makeEnhMetaFile(cut), nullptr) << size;
        // Also when the header knows of it.
        constexpr std::size_t sizeField = 48;
        if (size < sizeField + 4) continue;
        for (std::size_t i = 0; i < 4; ++i) cut[sizeField + i] = static_cast<BYTE>(size >> 8 * i);
        ASSERT_EQ(tessalink::makeEnhMetaFile(cut), nullptr) << size;
    }
    Bytes longer = whole;
    longer.resize(longer.size() + 4);
    EXPECT_EQ(tessalink::makeEnhMetaFile(longer), nullptr);
    EXPECT_EQ(tessalink::SetEnhMetaFileBits(5, nullptr), nullptr);
}

// A flipped bit is refused, or played without a fault; both happen.
TEST(EnhMetaFile, SurvivesFlippedBits) {
    const Bytes whole = everything();
    Dice dice(5);
    int refused = 0;
    constexpr int runs = 3000;
    for (int run = 0; run < runs; ++run) {
        Bytes bytes = whole;
        for (std::size_t flips = 1 + dice.Below(3); flips > 0; --flips) {
            bytes[dice.Below(bytes.size())] ^= static_cast<BYTE>(1U << dice.Below(8));
        }
        const Picture picture(tessalink::makeEnhMetaFile(bytes));
        refused += picture == nullptr;
        if (picture) played(picture.get(), {-7, 3, 500, 1});
    }
    EXPECT_GT(refused, runs / 20);
    EXPECT_LT(refused, runs);
}

// Records that the library never writes, but plays or refuses.
TEST(EnhMetaFile, RefusesWhatItDoesNotKnow) {
    NullDevice screen;
    MetafileDevice device(screen, cWholeFrame);
    const Bytes empty = device.Finish();
    constexpr std::size_t end = 20;
    constexpr std::size_t sizeField = 48;
    const auto with = [&](std::vector<std::uint32_t> words) {
        words.insert(words.begin() + 1, static_cast<std::uint32_t>(4 * words.size() + 4));
        Bytes bytes(empty.begin(), empty.end() - end);
        for (const std::uint32_t word : words) {
            for (int i = 0; i < 4; ++i) bytes.push_back(static_cast<BYTE>(word >> 8 * i));
        }
        bytes.insert(bytes.end(), empty.end() - end, empty.end());
        const auto put = [&](std::size_t at, std::size_t value) {
            for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<BYTE>(value >> 8 * i);
        };
        put(sizeField, bytes.size());
        put(sizeField + 4, headerOf(Picture(tessalink::makeEnhMetaFile(empty)).get()).nRecords + 1);
        return Picture(tessalink::makeEnhMetaFile(bytes)) != nullptr;
    };
    const std::pair<std::vector<std::uint32_t>, bool> cases[] = {
        {{70, 0}, true},  // a comment
        {{17, 1}, true},  // map modes
        {{17, 8}, true},
        {{17, 2}, false},
        {{9, 0, 5}, false},  // an extent of nothing
        {{20, 13}, true},    // raster operations: copy only
        {{20, 7}, false},
        {{34, 1}, false},          // restores what was not saved
        {{37, 0x80000007}, true},  // selects: stock, and what was not created
        {{37, 1}, false},
        {{40, 0}, false},
        {{38, 0, 0, 1, 0, 0}, false},  // a pen under the handle of the metafile
        {{38, 9, 0, 1, 0, 0}, false},
        {{3, 0, 0, 0, 0, 0x40000000}, false},  // points that are not there
        {{3, 0, 0, 0, 0, 2, 1, 1, 2, 2}, true},
        {{75, 48, 5, 32, 1, 1, 16, 0, 0, 9, 9, 0, 0, 9, 9}, true},
        {{75, 48, 5, 32, 1, 1, 16, 0, 0, 9, 9, 9, 0, 9, 9}, false},
        {{75, 48, 1, 32, 1, 1, 16, 0, 0, 9, 9, 0, 0, 9, 9}, true},
        {{75, 48, 2, 32, 1, 1, 16, 0, 0, 9, 9, 0, 0, 9, 9}, false},
        {{75, 0, 1}, false},
        {{76, 0, 0, 0, 0, 0, 0, 1, 1, 0x00CC0020, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, false},
        {{1, 0}, false},   // a second header
        {{46, 0}, false},  // a gradient
        {{105, 0}, false},
    };
    for (const auto& [words, plays] : cases) EXPECT_EQ(with(words), plays) << words[0];
}

TEST(EnhMetaFile, HandlesAreCopiedAndGivenBack) {
    const Bytes bytes = everything();
    const Picture picture(
        tessalink::SetEnhMetaFileBits(static_cast<UINT>(bytes.size()), bytes.data()));
    const Picture copy(CopyEnhMetaFile(picture.get(), nullptr));
    Bytes again(bytes.size());
    const auto size = static_cast<UINT>(bytes.size());
    EXPECT_EQ(GetEnhMetaFileBits(copy.get(), 0, nullptr), size);
    EXPECT_EQ(GetEnhMetaFileBits(copy.get(), size - 1, again.data()), 0u);
    EXPECT_EQ(GetEnhMetaFileBits(copy.get(), size, again.data()), size);
    EXPECT_EQ(again, bytes);
    EXPECT_EQ(tessalink::GetEnhMetaFileBits(nullptr, size, again.data()), 0u);
    EXPECT_EQ(tessalink::CopyEnhMetaFile(nullptr, nullptr), nullptr);
    EXPECT_EQ(tessalink::GetEnhMetaFile(nullptr), nullptr);
    EXPECT_EQ(tessalink::DeleteEnhMetaFile(nullptr), 0);
}

}  // namespace
