#include "platform/graphics/CDC.h"

#include <gtest/gtest.h>

#include <functional>

#include "platform/graphics/DCScope.h"
#include "platform/graphics/FailingDevice.h"
#include "platform/graphics/RecordingDevice.h"
#include "tests/support/Dice.h"
#include "tests/support/DrawingProgram.h"

namespace {

using tessalink::FailingDevice;
using tessalink::NullDevice;
using tessalink::RecordingDevice;
using tessalink::test::Dice;
using tessalink::test::DrawingProgram;
using Lines = std::vector<std::string>;

// A context over a recording, with a font whose em has 16 units: "i" is 4 wide, a line 17 high.
class CDCTest : public testing::Test {
protected:
    CDCTest() {
        m_font.CreateFont(-16, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
        m_dc.SelectObject(&m_font);
    }
    // What the calls draw in a context of their own state.
    Lines Drawn(const std::function<void(CDC&)>& calls) {
        m_device.Clear();
        m_dc.SaveDC();
        calls(m_dc);
        m_dc.RestoreDC(-1);
        return m_device.Lines();
    }

    CFont m_font;
    RecordingDevice m_device;
    CDC m_dc{m_device};
};

TEST_F(CDCTest, StartsLikeTheClassicContext) {
    EXPECT_EQ(m_dc.GetCurrentPen(), CGdiObject::FromStock(BLACK_PEN));
    EXPECT_EQ(m_dc.GetCurrentBrush(), CGdiObject::FromStock(WHITE_BRUSH));
    EXPECT_EQ(m_dc.GetTextColor(), cBlack);
    EXPECT_EQ(m_dc.GetBkColor(), cWhite);
    EXPECT_EQ(m_dc.GetBkMode(), OPAQUE);
    EXPECT_EQ(m_dc.GetTextAlign(), TA_LEFT | TA_TOP);
    EXPECT_EQ(m_dc.GetPolyFillMode(), ALTERNATE);
    EXPECT_EQ(m_dc.GetDeviceCaps(LOGPIXELSX), 96);
    EXPECT_EQ(m_dc.GetDeviceCaps(HORZSIZE), 508);
    EXPECT_EQ(m_dc.GetDeviceCaps(TECHNOLOGY), DT_RASDISPLAY);
    EXPECT_EQ(m_dc.GetDeviceCaps(12345), 0);
}

TEST_F(CDCTest, DrawsPrimitivesInUnitsOfTheDevice) {
    CPen red(PS_DASH, 1, RGB(255, 0, 0));
    CPen wide(PS_DOT, 3, RGB(0, 0, 255));
    CBrush hatched(HS_CROSS, RGB(0, 128, 0));
    CRgn region;
    region.CreateRectRgn(0, 0, 9, 9);
    const POINT corners[] = {{0, 0}, {9, 0}, {4, 8}};
    const CRect box(10, 20, 14, 23);
    struct Case {
        std::function<void(CDC&)> calls;
        Lines expected;
    };
    const Case cases[] = {
        {[](CDC& dc) { dc.Rectangle(100, 60, 10, 10); },
         {"rectangle 10,10,100,60 pen solid 1 000000 brush solid ffffff"}},
        {[](CDC& dc) { dc.Ellipse(1, 2, 1, 9); }, {}},
        {[&](CDC& dc) {
             dc.SelectObject(&red);
             dc.MoveTo(1, 2);
             dc.LineTo(3, 4);
             dc.SetBkMode(TRANSPARENT);
             dc.LineTo(CPoint(5, 6));
         },
         {"line 1,2 3,4 pen dash 1 ff0000 over ffffff", "line 3,4 5,6 pen dash 1 ff0000"}},
        {[&](CDC& dc) {
             dc.SelectObject(&wide);
             dc.SelectObject(&hatched);
             dc.SetPolyFillMode(WINDING);
             dc.SetBkColor(RGB(1, 2, 3));
             dc.Polygon(corners, 3);
             dc.Polyline(corners, 1);
         },
         {"polygon 0,0 9,0 4,8 winding pen solid 3 0000ff brush cross 008000 over 010203"}},
        {[&](CDC& dc) {
             dc.SetViewportOrg(100, 200);
             dc.Polyline(corners, 2);
             dc.SetPixel(1, 1, RGB(9, 8, 7));
             dc.OffsetViewportOrg(-100, -200);
             dc.FillRgn(&region, &hatched);
         },
         {"polyline 100,200 109,200 pen solid 1 000000", "pixel 101,201 090807",
          "fill region 0,0,9,9 brush cross 008000 over ffffff"}},
        {[&](CDC& dc) { dc.FrameRect(&box, &hatched); },
         {"fill 10,20,14,21 brush cross 008000 over ffffff",
          "fill 10,22,14,23 brush cross 008000 over ffffff",
          "fill 10,20,11,23 brush cross 008000 over ffffff",
          "fill 13,20,14,23 brush cross 008000 over ffffff"}},
        {[&](CDC& dc) { dc.Draw3dRect(&box, 0x111111, 0x222222); },
         {"fill 10,20,13,21 brush solid 111111", "fill 10,20,11,22 brush solid 111111",
          "fill 13,20,14,23 brush solid 222222", "fill 10,22,14,23 brush solid 222222"}},
        {[&](CDC& dc) { dc.DrawFocusRect(&box); },
         {"rectangle 10,20,14,23 pen dot 1 000000 brush none over ffffff"}},
        {[&](CDC& dc) {
             dc.FillSolidRect(1, 2, 3, 4, 0xFF);
             dc.TextOut(0, 0, "");
         },
         {"fill 1,2,4,6 brush solid ff0000"}},
        {[&](CDC& dc) {
             region.CreatePolygonRgn(corners, 3, WINDING);
             dc.SetViewportOrg(1, 1);
             dc.FillRgn(&region, &hatched);
         },
         {"polygon 1,1 10,1 5,9 alternate pen none brush cross 008000 over ffffff"}},
    };
    for (const Case& c : cases) EXPECT_EQ(Drawn(c.calls), c.expected);
}

TEST_F(CDCTest, PlacesTextByItsAlignment) {
    struct Case {
        UINT align;
        int x, y;  // where "ii", 7 units wide, starts on its base line for a reference of 100, 50
    };
    const Case cases[] = {
        {TA_LEFT | TA_TOP, 100, 64},      {TA_RIGHT | TA_TOP, 93, 64},
        {TA_CENTER | TA_TOP, 97, 64},     {TA_LEFT | TA_BASELINE, 100, 50},
        {TA_RIGHT | TA_BASELINE, 93, 50}, {TA_CENTER | TA_BOTTOM, 97, 47},
    };
    for (const Case& c : cases) {
        m_device.Clear();
        m_dc.SetBkMode(TRANSPARENT);
        m_dc.SetTextAlign(c.align);
        m_dc.TextOut(100, 50, "ii");
        ASSERT_EQ(m_device.Primitives().size(), 1u);
        EXPECT_EQ(m_device.Primitives()[0].points[0], CPoint(c.x, c.y)) << c.align;
    }
    m_dc.MoveTo(10, 20);
    for (const auto& [align, x] : {std::pair(TA_LEFT, 17), {TA_RIGHT, 10}, {TA_CENTER, 10}}) {
        m_dc.SetTextAlign(align | TA_UPDATECP);
        m_dc.TextOut(100, 50, "ii");
        EXPECT_EQ(m_dc.GetCurrentPosition(), CPoint(x, 20)) << align;
    }
}

TEST_F(CDCTest, DrawsTextWithBackgroundClipAndAdvances) {
    const std::string font = "font -16 \"Arial\" color 0000ff";
    const CRect box(0, 0, 50, 10);
    const int advances[] = {10, -3};
    struct Case {
        std::function<void(CDC&)> calls;
        Lines expected;
    };
    const Case cases[] = {
        {[](CDC& dc) { dc.TextOut(1, 2, "i\"\xE4", -1); },
         {"text 1,16 \"i\\x22\\xe4\" at 0 4 9 18 " + font + " over ffffff 1,2,19,19"}},
        {[&](CDC& dc) {
             dc.SetBkMode(TRANSPARENT);
             dc.ExtTextOut(1, 2, ETO_OPAQUE | ETO_CLIPPED, &box, "ii", 2, advances);
         },
         {"fill 0,0,50,10 brush solid ffffff",
          "text 1,16 \"ii\" at 0 10 7 " + font + " within 0,0,50,10"}},
        {[&](CDC& dc) {
             dc.SetBkMode(TRANSPARENT);
             dc.ExtTextOut(1, 2, ETO_OPAQUE | ETO_CLIPPED, nullptr, CString("i"), nullptr);
         },
         {"text 1,16 \"i\" at 0 4 " + font}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Drawn([&](CDC& dc) {
                      dc.SetTextColor(RGB(0, 0, 255));
                      c.calls(dc);
                  }),
                  c.expected);
    }
}

// Where lines start, and their texts; the height that is returned; the rectangle afterwards.
TEST_F(CDCTest, DrawTextBreaksAndAlignsLines) {
    struct Case {
        const char* text;
        UINT format;
        std::vector<std::pair<CPoint, std::string>> lines;
        int height;
    };
    const CRect room(100, 100, 130, 200);
    const Case cases[] = {
        {"ii", 0, {{{100, 114}, "ii"}}, 17},
        {"ii\r\ni\n", DT_RIGHT, {{{123, 114}, "ii"}, {{126, 131}, "i"}}, 34},
        {"a\n\nb", DT_CENTER, {{{110, 114}, "a"}, {{110, 148}, "b"}}, 51},
        {"ii", DT_SINGLELINE | DT_VCENTER, {{{100, 155}, "ii"}}, 58},
        {"i\ni", DT_SINGLELINE | DT_BOTTOM | DT_NOCLIP, {{{100, 197}, "i\ni"}}, 100},
        {"&ii && &", 0, {{{100, 114}, "ii & "}}, 17},
        {"&ii && &", DT_NOPREFIX, {{{100, 114}, "&ii && &"}}, 17},
        {"iiii iiii iiii",
         DT_WORDBREAK,
         {{{100, 114}, "iiii"}, {{100, 131}, "iiii"}, {{100, 148}, "iiii"}},
         51},
        {"WWWWWWWWW i", DT_WORDBREAK, {{{100, 114}, "WWWWWWWWW"}, {{100, 131}, "i"}}, 34},
        {"ii\r\n&W&& W",
         DT_WORDBREAK,
         {{{100, 114}, "ii"}, {{100, 131}, "W&"}, {{100, 148}, "W"}},
         51},
        {"", 0, {}, 0},
    };
    m_dc.SetBkMode(TRANSPARENT);
    for (const Case& c : cases) {
        m_device.Clear();
        CRect rect = room;
        EXPECT_EQ(m_dc.DrawText(CString(c.text), &rect, c.format), c.height) << c.text;
        EXPECT_EQ(rect, room);
        std::vector<std::pair<CPoint, std::string>> lines;
        for (const auto& primitive : m_device.Primitives()) {
            if (primitive.kind != tessalink::Primitive::Kind::Text) continue;
            lines.emplace_back(primitive.points[0], primitive.text);
            EXPECT_EQ(primitive.textClip.has_value(), (c.format & DT_NOCLIP) == 0);
        }
        EXPECT_EQ(lines, c.lines) << c.text;
        m_device.Clear();
        EXPECT_EQ(m_dc.DrawText(CString(c.text), &rect, c.format | DT_CALCRECT), c.height);
        EXPECT_TRUE(m_device.Primitives().empty());
        EXPECT_EQ(rect.TopLeft(), room.TopLeft());
        EXPECT_EQ(rect.Height(), c.height);
    }
    m_device.Clear();
    CRect rect = room;
    m_dc.DrawText("a&ib", -1, &rect, DT_NOCLIP);
    EXPECT_EQ(m_device.Lines().back(), "fill 109,115,112,116 brush solid 000000");
    m_dc.DrawText("a&i&&b", -1, &rect, DT_CALCRECT);
    EXPECT_EQ(rect.Width(), m_dc.GetTextExtent("ai&b").cx);
    rect.right = rect.left + m_dc.GetTextExtent("ai b").cx;
    EXPECT_EQ(m_dc.DrawText("a&i &b", -1, &rect, DT_WORDBREAK), m_dc.GetTextExtent("ai b").cy);
}

// A line costs what it shows, not what lies behind it.
TEST_F(CDCTest, DrawTextBreaksLongTextsInTheirTime) {
    constexpr int words = 200'000;
    CString text;
    for (int i = 0; i < words; ++i) text += "word ";
    CRect rect(0, 0, m_dc.GetTextExtent("word").cx, 0);
    EXPECT_EQ(m_dc.DrawText(text, &rect, DT_WORDBREAK | DT_CALCRECT),
              words * m_dc.GetTextExtent("w").cy);
}

TEST_F(CDCTest, SavesAndRestoresTheWholeState) {
    CPen pen(PS_DOT, 1, 0x123456);
    const auto change = [&](CDC& dc, int by) {
        dc.SelectObject(&pen);
        dc.SelectStockObject(GRAY_BRUSH);
        dc.SelectStockObject(DEFAULT_GUI_FONT);
        dc.SetTextColor(RGB(by, 0, 0));
        dc.SetBkColor(RGB(0, by, 0));
        dc.SetBkMode(TRANSPARENT);
        dc.SetTextAlign(TA_CENTER);
        dc.SetPolyFillMode(WINDING);
        dc.SetViewportOrg(by, by);
        dc.MoveTo(by, by);
        dc.IntersectClipRect(0, 0, by, by);
    };
    const auto probe = [&](CDC& dc) {
        const POINT corners[] = {{0, 0}, {9, 0}, {4, 8}};
        dc.Polygon(corners, 3);
        dc.TextOut(0, 0, "i");
        dc.LineTo(dc.GetCurrentPosition() + CSize(1, 1));
        dc.LineTo(dc.GetCurrentPosition() - CSize(1, 1));
        return m_device.Lines();
    };
    const auto fresh = [&] {
        m_device.Clear();
        return probe(m_dc);
    };
    const Lines first = fresh();
    EXPECT_EQ(m_dc.SaveDC(), 1);
    change(m_dc, 50);
    const Lines second = fresh();
    EXPECT_NE(first, second);
    EXPECT_EQ(m_dc.SaveDC(), 2);
    change(m_dc, 20);
    EXPECT_EQ(m_dc.SaveDC(), 3);
    for (const int wrong : {0, 4, -2}) EXPECT_EQ(m_dc.RestoreDC(wrong), 0);
    EXPECT_NE(m_dc.RestoreDC(2), 0);
    EXPECT_EQ(fresh(), second);
    EXPECT_EQ(m_dc.RestoreDC(2), 0);
    EXPECT_NE(m_dc.RestoreDC(-1), 0);
    EXPECT_EQ(fresh(), first);
    EXPECT_EQ(m_dc.RestoreDC(-1), 0);
}

TEST_F(CDCTest, ClipsByRegions) {
    CRect box;
    EXPECT_EQ(m_dc.GetClipBox(box), SIMPLEREGION);
    EXPECT_EQ(box, CRect(0, 0, 1920, 1440));
    CRgn region;
    EXPECT_EQ(m_dc.GetClipRgn(&region), 0);
    m_dc.SetViewportOrg(10, 10);
    EXPECT_EQ(m_dc.IntersectClipRect(0, 0, 100, 100), SIMPLEREGION);
    EXPECT_EQ(m_dc.ExcludeClipRect(CRect(40, 40, 60, 60)), COMPLEXREGION);
    EXPECT_EQ(m_dc.GetClipRgn(&region), 1);
    EXPECT_EQ(region.PtInRegion(50, 49), 1);
    EXPECT_EQ(region.PtInRegion(50, 50), 0);
    EXPECT_EQ(m_dc.GetClipBox(box), COMPLEXREGION);
    EXPECT_EQ(box, CRect(0, 0, 100, 100));
    EXPECT_FALSE(m_dc.PtVisible(45, 45));
    EXPECT_TRUE(m_dc.PtVisible(0, 0));
    EXPECT_FALSE(m_dc.RectVisible(CRect(41, 41, 59, 59)));
    EXPECT_TRUE(m_dc.RectVisible(CRect(41, 41, 61, 59)));
    EXPECT_EQ(m_dc.IntersectClipRect(45, 45, 50, 50), NULLREGION);
    EXPECT_EQ(m_dc.SelectClipRgn(nullptr), SIMPLEREGION);
    EXPECT_TRUE(m_dc.PtVisible(45, 45));
    EXPECT_EQ(m_dc.ExcludeClipRect(0, 0, 1, 1), COMPLEXREGION);
    EXPECT_EQ(m_dc.SelectClipRgn(&region), COMPLEXREGION);
    const CRgn none;
    EXPECT_EQ(m_dc.SelectClipRgn(&none), ERRORREGION);
}

TEST_F(CDCTest, KeepsObjectsOutThatAreNoObjects) {
    CPen pen;
    EXPECT_EQ(m_dc.SelectObject(&pen), nullptr);
    EXPECT_EQ(m_dc.SelectObject(static_cast<CFont*>(nullptr)), nullptr);
    EXPECT_EQ(m_dc.SelectStockObject(9), nullptr);
    EXPECT_EQ(m_dc.SelectStockObject(WHITE_PEN), CGdiObject::FromStock(BLACK_PEN));
    EXPECT_EQ(pen.CreatePen(PS_INSIDEFRAME + 1, 1, 0), 0);
    CBrush brush;
    EXPECT_EQ(brush.CreateHatchBrush(HS_DIAGCROSS + 1, 0), 0);
    EXPECT_EQ(brush.CreateHatchBrush(-1, 0), 0);
    CGdiObject* const stock = CGdiObject::FromStock(BLACK_BRUSH);
    EXPECT_EQ(stock->DeleteObject(), 0);
    EXPECT_EQ(static_cast<CBrush*>(stock)->CreateSolidBrush(0xFF), 0);
    EXPECT_EQ(m_dc.Polygon(nullptr, 5), 0);
    const RECT* const none = nullptr;
    EXPECT_EQ(m_dc.Rectangle(none), 0);
    EXPECT_EQ(m_dc.Ellipse(none), 0);
    EXPECT_EQ(m_dc.IntersectClipRect(none), ERRORREGION);
    EXPECT_EQ(m_dc.ExcludeClipRect(none), ERRORREGION);
    m_dc.FillSolidRect(none, 0);
    m_dc.Draw3dRect(none, 0, 0);
    m_dc.DrawFocusRect(none);
    EXPECT_EQ(m_dc.FillRect(CRect(0, 0, 1, 1), &brush), 0);
    EXPECT_TRUE(m_device.Primitives().empty());
    LOGPEN description{};
    pen.CreatePen(PS_DASH, 7, 0xABCDEF);
    EXPECT_EQ(pen.GetObject(1, &description), 0);
    EXPECT_EQ(pen.GetObject(0, nullptr), static_cast<int>(sizeof(LOGPEN)));
    EXPECT_EQ(pen.GetLogPen(&description), static_cast<int>(sizeof(LOGPEN)));
    EXPECT_EQ(description, (LOGPEN{PS_DASH, {7, 0}, 0xABCDEF}));
}

// Without a device everything is refused and nothing is touched that is not there.
TEST(CDC, WithoutADeviceDrawsAndMeasuresNothing) {
    CDC dc;
    Dice dice(4);
    DrawingProgram program([&](std::size_t count) { return dice.Below(count); }, {&dc},
                           DrawingProgram::Coordinates::Wild);
    program.Run(300);
    EXPECT_EQ(dc.SaveDC(), 0);
    EXPECT_EQ(dc.GetTextExtent("abc"), CSize(0, 0));
    EXPECT_EQ(dc.IntersectClipRect(0, 0, 1, 1), ERRORREGION);
    TEXTMETRICA metrics{};
    EXPECT_EQ(dc.GetTextMetrics(&metrics), 0);
    EXPECT_EQ(dc.DeleteDC(), 0);
    SIZE size{};
    EXPECT_EQ(GetTextExtentPoint32(static_cast<CDC*>(nullptr), "a", 1, &size), 0);
    EXPECT_EQ(GetTextExtentPoint32(&dc, "a", -1, &size), 0);
}

TEST(CDC, MeasuresByTheAttributeDevice) {
    tessalink::DeviceCaps printer = {600, 300, 4800, 3600, 203, 305, true};
    NullDevice paper(printer);
    RecordingDevice screen;
    CDC dc(screen);
    const CSize onScreen = dc.GetTextExtent("iiiiiiiiii");
    CDC attributes(paper);
    dc.SetAttribDC(&attributes);
    EXPECT_EQ(dc.GetDeviceCaps(LOGPIXELSY), 300);
    EXPECT_EQ(dc.GetDeviceCaps(TECHNOLOGY), DT_RASPRINTER);
    EXPECT_EQ(dc.GetTextExtent("iiiiiiiiii"), CSize(2 * onScreen.cx, onScreen.cy));
    dc.ReleaseAttribDC();
    EXPECT_EQ(dc.GetTextExtent("iiiiiiiiii"), onScreen);
}

// Whichever primitive fails, the context goes on as one whose device did not fail.
TEST(FailingDevice, LeavesTheContextWhole) {
    const auto draw = [](CDC& dc) {
        const tessalink::RestoredState restored(dc);
        CPen pen(PS_DASH, 1, 0xFF);
        CBrush brush(HS_CROSS, 0xFF00);
        const tessalink::Selected selected(dc, &pen);
        dc.Rectangle(0, 0, 9, 9);
        CRect box(0, 0, 90, 90);
        dc.SetTextAlign(TA_RIGHT);
        dc.DrawText("two\nl&ines", -1, &box, 0);
        dc.Draw3dRect(&box, 1, 2);
        dc.FrameRect(&box, &brush);
        dc.TextOut(1, 1, "x");
    };
    const auto probe = [](RecordingDevice& device, CDC& dc) {
        device.Clear();
        dc.Rectangle(1, 2, 3, 4);
        dc.TextOut(3, 4, "a");
        return device.Lines();
    };
    RecordingDevice sound;
    CDC soundDC(sound);
    draw(soundDC);
    const Lines whole = sound.Lines();
    const Lines expected = probe(sound, soundDC);
    for (std::size_t k = 1; k <= whole.size(); ++k) {
        RecordingDevice device;
        FailingDevice failing(device, k);
        CDC dc(failing);
        EXPECT_THROW(draw(dc), FailingDevice::Fault);
        EXPECT_EQ(device.Lines(), Lines(whole.begin(), whole.begin() + static_cast<long>(k) - 1));
        EXPECT_EQ(probe(device, dc), expected) << k;
        FailingDevice dropping(device, k, FailingDevice::Failure::Drop);
        CDC lost(dropping);
        device.Clear();
        draw(lost);
        EXPECT_EQ(device.Primitives().size(), k - 1);
        EXPECT_EQ(dropping.Count(), whole.size());
    }
}

}  // namespace
