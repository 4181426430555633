#include "graphs/common/FormattedText.h"

#include <gtest/gtest.h>

#include "graphs/common/KOVGraphUtilities.h"
#include "graphs/common/PlainLabel.h"
#include "platform/graphics/FailingDevice.h"
#include "platform/graphics/RecordingDevice.h"

namespace {

using tessalink::plainLabel;
using tessalink::RecordingDevice;
using Lines = std::vector<std::string>;

// An em of 2048 units: widths are those of the faces themselves.
constexpr int cEm = -2048;
constexpr int cA = 1366;      // "A", regular and italic
constexpr int cABold = 1479;  // "A", bold
constexpr int cAlpha = 1292;  // the Symbol face's "a"
constexpr int cB = 1139;      // "b"
constexpr int cBackslash = 569;

class FormattedText : public testing::Test {
protected:
    FormattedText() {
        m_font.CreateFont(cEm, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
        m_other.CreateFont(-1024, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
        m_dc.SelectObject(&m_font);
        m_dc.SetBkMode(TRANSPARENT);
    }
    // Where each run starts, its text, and what is special about its font.
    Lines Runs() {
        Lines lines;
        for (const auto& p : m_device.Primitives()) {
            lines.push_back(std::to_string(p.points[0].x) + ' ' + p.text +
                            (p.font.lfHeight != cEm ? " other" : "") +
                            (p.font.lfWeight == FW_BOLD ? " bold" : "") +
                            (p.font.lfItalic != 0 ? " italic" : "") +
                            (p.font.lfCharSet == SYMBOL_CHARSET ? " symbol" : ""));
        }
        m_device.Clear();
        return lines;
    }

    CFont m_font;
    CFont m_other;
    RecordingDevice m_device;
    CDC m_dc{m_device};
};

std::string at(int x, const char* rest) {
    return std::to_string(x) + ' ' + rest;
}

TEST_F(FormattedText, SwitchesFonts) {
    struct Case {
        const char* label;
        Lines runs;
        int width;
    };
    const Case cases[] = {
        {"", {}, 0},
        {"Ab", {"7 Ab"}, 0},
        {"\\nA", {"7 A"}, cA},
        {"A\\bA\\nA\\iA",
         {"7 A", at(7 + cA, "A bold"), at(7 + cA + cABold, "A"),
          at(7 + 2 * cA + cABold, "A italic")},
         3 * cA + cABold},
        {"\\saA\\bA", {"7 aA symbol", at(7 + cAlpha + 1479, "A bold")}, cAlpha + 1479 + cABold},
        {"A\\\\b", {"7 A", at(7 + cA, "\\b")}, cA + cBackslash + cB},
        {"\\\\", {"7 \\"}, cBackslash},
        {"A\\qA", {"7 A", at(7 + cA, "A")}, 2 * cA},
        {"\\b\\nA\\", {"7 A"}, cA},
        {"\\", {}, 0},
        {"\\Bb", {"7 b"}, cB},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(PrintFormatted(&m_dc, 7, 9, c.label, nullptr, nullptr, nullptr), c.width)
            << c.label;
        EXPECT_EQ(Runs(), c.runs) << c.label;
        EXPECT_EQ(m_dc.GetCurrentFont(), &m_font);
    }
    EXPECT_EQ(PrintFormatted(nullptr, 7, 9, "\\bA", nullptr, nullptr, nullptr), 0);
}

TEST_F(FormattedText, TakesTheFontsThatAreGiven) {
    CFont bold;
    bold.CreateFont(-1024, 0, 0, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    PrintFormatted(&m_dc, 0, 0, "A\\nA\\iA\\bA\\saA", &m_other, nullptr, &bold);
    EXPECT_EQ(Runs(),
              (Lines{"0 A", at(cA, "A other"), at(cA + 683, "A other italic"),
                     at(cA + 2 * 683, "A other bold"), at(cA + 2 * 683 + 740, "aA other symbol")}));
    EXPECT_EQ(m_dc.GetCurrentFont(), &m_font);
}

TEST_F(FormattedText, HonoursTheAlignment) {
    const int width = cA + cABold;
    struct Case {
        UINT align;
        int start;
    };
    const Case cases[] = {{TA_LEFT | TA_BASELINE, 10000},
                          {TA_RIGHT | TA_BOTTOM, 10000 - width},
                          {TA_CENTER | TA_TOP, 10000 - width / 2}};
    for (const Case& c : cases) {
        m_dc.SetTextAlign(c.align);
        EXPECT_EQ(PrintFormatted(&m_dc, 10000, 5000, "A\\bA", nullptr, nullptr, nullptr), width);
        const LONG base = m_device.Primitives()[0].points[0].y;
        EXPECT_EQ(base, c.align & TA_BOTTOM ? (c.align & 16 ? 5000 : 5000 - 434) : 5000 + 1854);
        EXPECT_EQ(Runs(), (Lines{at(c.start, "A"), at(c.start + cA, "A bold")}));
        EXPECT_EQ(m_dc.GetTextAlign(), c.align);
        EXPECT_EQ(PrintFormatted(&m_dc, 10000, 5000, "A", nullptr, nullptr, nullptr), 0);
        const int plain = c.align & TA_RIGHT ? (c.align & 4 ? cA / 2 : cA) : 0;
        EXPECT_EQ(Runs(), Lines{at(10000 - plain, "A")});
    }
}

TEST_F(FormattedText, MeasuresLabels) {
    CFont bold;
    bold.CreateFont(cEm, 0, 0, 0, FW_BOLD, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    CFont symbol;
    symbol.CreateFont(cEm, 0, 0, 0, FW_NORMAL, 0, 0, 0, 2, 0, 0, 0, 0, "Symbol");
    struct Case {
        const char* label;
        int width;
    };
    const Case cases[] = {
        {"", 0},
        {"Ab", cA + cB},
        {"A\\bA", cA + cABold},
        {"\\iA", cA},
        {"A\\\\b", cA + cB},
        {"\\sa\\nA", cAlpha + cA / 2},
        {"\\b\\qA", cABold},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(CalcFormattedWidth(&m_dc, c.label, &m_other, nullptr, &bold, &symbol), c.width)
            << c.label;
        EXPECT_EQ(m_dc.GetCurrentFont(), &m_font);
    }
    EXPECT_EQ(CalcFormattedWidth(&m_dc, "\\sa", nullptr, nullptr, nullptr), cB);
    EXPECT_EQ(CalcFormattedWidth(nullptr, "a", nullptr, nullptr, nullptr), 0);
    EXPECT_TRUE(m_device.Primitives().empty());
}

TEST_F(FormattedText, RestoresTheContextWhenTheDeviceFails) {
    for (std::size_t k = 1; k <= 3; ++k) {
        tessalink::FailingDevice failing(m_device, k);
        CDC dc(failing);
        dc.SelectObject(&m_font);
        dc.SetTextAlign(TA_RIGHT);
        EXPECT_THROW(PrintFormatted(&dc, 0, 0, "A\\bA\\iA", nullptr, nullptr, nullptr),
                     tessalink::FailingDevice::Fault);
        EXPECT_EQ(dc.GetCurrentFont(), &m_font);
        EXPECT_EQ(dc.GetTextAlign(), TA_RIGHT);
    }
}

TEST_F(FormattedText, PrintsSeveralLines) {
    struct Case {
        const char* text;
        Lines runs;
        std::vector<int> lines;  // which line each run stands in
        int count;
    };
    const Case cases[] = {
        {"", {}, {}, 0},
        {"A", {"3 A"}, {0}, 1},
        {"A\nb", {"3 A", "3 b"}, {0, 1}, 2},
        {"A\n\nb\n", {"3 A", "3 b"}, {0, 2}, 4},
        {"\\bA\nb", {"3 A bold", "3 b"}, {0, 1}, 2},
        {"\n", {}, {}, 2},
    };
    for (const Case& c : cases) {
        KOVGraphUtilities::PrintMultipleLines(&m_dc, 3, 0, c.text);
        std::vector<int> lines;
        for (const auto& p : m_device.Primitives()) lines.push_back((p.points[0].y - 1854) / 2288);
        EXPECT_EQ(lines, c.lines) << c.text;
        EXPECT_EQ(Runs(), c.runs) << c.text;
        EXPECT_EQ(KOVGraphUtilities::CountLines(c.text), c.count) << c.text;
    }
    EXPECT_EQ(KOVGraphUtilities::CountLines(nullptr), 0);
    KOVGraphUtilities::PrintMultipleLines(nullptr, 0, 0, "A\nb");
}

// Each factor as it would be alone; the axis with the larger physical scale gives way.
TEST(KOVGraphUtilities, ScalesBothAxesByTheSameLength) {
    struct Case {
        int dpiX, dpiY, deviceWidth, deviceHeight, designWidth, designHeight;
        double x, y;
    };
    const Case cases[] = {
        {96, 96, 200, 100, 100, 100, 1, 1},     {96, 96, 100, 200, 100, 100, 1, 1},
        {96, 96, 300, 100, 100, 50, 2, 2},      {600, 300, 600, 300, 100, 100, 6, 3},
        {600, 300, 300, 300, 100, 100, 3, 1.5}, {600, 300, 1200, 300, 100, 100, 6, 3},
        {96, 96, -200, 100, 100, 100, -2, -2},
    };
    for (const Case& c : cases) {
        tessalink::NullDevice device({c.dpiX, c.dpiY, 100, 100, 10, 10, false});
        CDC dc(device);
        double x = 0;
        double y = 0;
        KOVGraphUtilities::CalcARScaleFactors(&dc, c.deviceWidth, c.deviceHeight, c.designWidth,
                                              c.designHeight, x, y);
        EXPECT_DOUBLE_EQ(x, c.x) << c.deviceWidth;
        EXPECT_DOUBLE_EQ(y, c.y) << c.deviceWidth;
    }
}

TEST(PlainLabel, NamesWhatStandsInTheSymbolFont) {
    const std::pair<const char*, const char*> labels[] = {
        {"\\bbold\\n\nand \\\\ one", "bold and \\ one"},
        {"\\s\xB3\\n 5", ">= 5"},
        {"\\sa\\bb\\s D\xA3\xB1\xB6\\q9",
         "alphab Delta<=\xB1"
         "9"},
    };
    for (const auto& [label, plain] : labels) EXPECT_STREQ(plainLabel(label), plain);
}

}  // namespace
