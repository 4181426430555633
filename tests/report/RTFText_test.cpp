#include "report/RTFText.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "platform/base/HostServices.h"
#include "tests/report/RTFScalingModel.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

TEST(RTFText, EscapesBackslashesAndBraces) {
    const char* const cases[][2] = {
        {"", ""},
        {"plain \xe4\r\n", "plain \xe4\r\n"},
        {"a{b}\\c", "a\\{b\\}\\\\c"},
        {"\\", "\\\\"},
        {"\\{", "\\\\\\{"},
        {"}}", "\\}\\}"},
        {nullptr, ""},
    };
    for (const auto& [text, encoded] : cases) EXPECT_EQ(RTFEncode(text), encoded);
    const std::string large(100000, '{');
    std::string expected;
    for (std::size_t i = 0; i < large.size(); ++i) expected += "\\{";
    EXPECT_EQ(RTFEncode(large.c_str()), expected.c_str());
    // Whatever its length, nothing is lost at the ends of the blocks that a fast loop takes.
    for (std::size_t length = 0; length < 70; ++length) {
        for (std::size_t at = 0; at < length; ++at) {
            std::string text(length, '\xff');
            text[at] = '}';
            const std::string encoded = text.substr(0, at) + "\\" + text.substr(at);
            ASSERT_EQ(RTFEncode(text.c_str()), encoded.c_str());
        }
    }
}

TEST(RTFText, ReadsFreeIntegers) {
    struct Case {
        const char* text;
        int from;
        int result;
        int value;
        int to;
    };
    const Case cases[] = {
        {"-  7x", 0, 1, -7, 4},
        {" \t12 \r\n34", 0, 1, 12, 7},
        {"ab 5", 2, 1, 5, 4},
        {"", 0, 0, 0, 0},
        {"  ", 0, 0, 0, 2},
        {" - x", 0, 0, 0, 3},
        {"--5", 0, 0, 0, 1},
        {"+5", 0, 0, 0, 0},
        {"- 2147483648", 0, 1, INT_MIN, 12},
        {"4294967297", 0, 1, 1, 10},
        {"\xa0"
         "5",
         0, 0, 0, 0},
    };
    for (const Case& c : cases) {
        int value = 99;
        int position = c.from;
        EXPECT_EQ(ParseInt(c.text, position, value) != 0, c.result != 0) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
        EXPECT_EQ(position, c.to) << c.text;
    }
}

TEST(RTFText, ReadsIntegerFields) {
    struct Case {
        const char* text;
        int first;
        int last;
        int result;
        int value;
        int isBlank;
    };
    const Case cases[] = {
        {"  42 ", 0, 4, 1, 42, 0}, {" 4a", 0, 2, 0, 4, 0},     {"   ", 0, 2, 1, 0, 1},
        {"", 0, -1, 1, 0, 1},      {"12345", 1, 3, 1, 234, 0}, {"1 2", 0, 2, 0, 1, 0},
        {"-5", 0, 1, 0, 0, 0},     {"+5", 0, 1, 0, 0, 0},      {"x12x", 1, 2, 1, 12, 0},
        {"7", 0, 99, 0, 7, 0},     {"a", 0, 0, 0, 0, 0},       {"5\t\n", 0, 2, 1, 5, 0},
        {"12", 1, 0, 1, 0, 1},
    };
    for (const Case& c : cases) {
        int value = 99;
        int isBlank = 99;
        EXPECT_EQ(ParseInt(c.text, c.first, c.last, value) != 0, c.result != 0) << c.text;
        EXPECT_EQ(value, c.value) << c.text;
        EXPECT_EQ(ParseInt(c.text, c.first, c.last, value, isBlank) != 0,
                  c.result != 0 && !c.isBlank);
        EXPECT_EQ(value, c.value) << c.text;
        EXPECT_EQ(isBlank, c.isBlank) << c.text;
    }
}

std::string scaled(double factor, std::string_view rtf) {
    CString text(rtf);
    ScaleRTFText(factor, text);
    return std::string(text.View());
}

TEST(RTFText, ScalesSizesAndIndents) {
    struct Case {
        double factor;
        const char* rtf;
        const char* scaled;
    };
    const Case cases[] = {
        {0.5, "\\fs24 Text\\par", "\\fs12 Text\\par"},
        {0.5, "\\fi-360\\li720 ", "\\fi-180\\li360 "},
        {0.5, "\\fs25 ", "\\fs12 "},
        {0.5, "\\fi-25 ", "\\fi-12 "},
        {2, "\\sa1\\sb2\\sl3\\tx4\\ri5\\li6\\x", "\\sa2\\sb4\\sl6\\tx8\\ri10\\li12\\x"},
        {2, "\\f1 \\s2 \\b3 \\fa4 \\lx5 \\tab6 \\sbx7 ",
         "\\f1 \\s2 \\b3 \\fa4 \\lx5 \\tab6 \\sbx7 "},
        {2, "\\fs24", "\\fs"},
        {2, "\\fs-", "\\fs"},
        {2, "\\fs- x\\fs ", "\\fs0 x\\fs "},
        {2, "\\fs1\\fs2\\fs3}", "\\fs2\\fs4\\fs6}"},
        {2, "\\\\fs1 \\\\\\fs1 ", "\\\\fs1 \\\\\\fs2 "},
        {2, "\\f\\fs1 \\s\\li2 ", "\\f\\fs2 \\s\\li4 "},
        {-1.5, "\\li3 \\li-3 ", "\\li-4 \\li4 "},
        {1e300, "\\fs2 \\fs-2 ", "\\fs2147483647 \\fs-2147483647 "},
        {2, "", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(scaled(c.factor, c.rtf), c.scaled) << c.rtf;
        EXPECT_EQ(scaleByStates(c.factor, c.rtf), c.scaled) << c.rtf;
    }
    EXPECT_EQ(scaled(std::nan(""), "\\fs2 "), "\\fs0 ");
}

TEST(RTFText, ScalesAsTheStatesSay) {
    Dice dice(8);
    const double factors[] = {0.5, 2.0, 1.0, -0.1, 1e9};
    for (int i = 0; i < 50000; ++i) {
        const std::string rtf = dice.Text(dice.Below(40), "\\\\\\fflrstiixsabl--01239 {");
        const double factor = dice.Pick(factors);
        ASSERT_EQ(scaled(factor, rtf), scaleByStates(factor, rtf)) << rtf;
    }
}

/// Searches from the start after each replacement; where that goes on, replaces each "%1" once.
std::string replacedBySearching(const std::string& text, const std::string& argument) {
    constexpr int manySteps = 3000;
    std::string result = text;
    for (int i = 0; i < manySteps; ++i) {
        const auto at = result.find("%1");
        if (at == std::string::npos) return result;
        result.replace(at, 2, argument);
    }
    result = text;
    for (auto at = result.find("%1"); at != std::string::npos;) {
        result.replace(at, 2, argument);
        at = result.find("%1", at + argument.size());
    }
    return result;
}

TEST(RTFText, ReplacesArgumentsAsLongAsThatEnds) {
    Dice dice(5);
    for (int i = 0; i < 20000; ++i) {
        const std::string text = dice.Text(dice.Below(8), "%%11x");
        const std::string argument = dice.Text(dice.Below(6), "%%110");
        CString result;
        ReplaceTextA(result, text.c_str(), argument.c_str());
        ASSERT_EQ(result.View(), replacedBySearching(text, argument)) << text << " " << argument;
    }
    // A billion of them, which would end, but not soon.
    CString result;
    ReplaceTextA(result, CString('%', 40) + "1", "11%");
    EXPECT_EQ(result, CString('%', 39) + "11%");
}

TEST(RTFText, ReplacesArgumentsAndPrefixes) {
    const HostServices before = hostServices();
    HostServices services = before;
    services.stringTable = [](UINT id, CString& text) {
        text = "Scale";
        return id == 7;
    };
    setHostServices(services);
    struct Case {
        const char* text;
        const char* argument;
        const char* result;
    };
    const Case cases[] = {
        {"a %1 b %1", "x", "a x b x"}, {"%1", "", ""},      {"none", "x", "none"},
        {"%%11", "%", "%%"},           {"%%11", "", ""},    {"50% %2 %1", "100%", "50% %2 100%"},
        {"%1", "[%1]", "[%1]"},        {"%1", nullptr, ""}, {"%11", "10%", "1010%"},
    };
    for (const Case& c : cases) {
        CString result("before");
        ReplaceTextA(result, c.text, c.argument);
        EXPECT_EQ(result, c.result) << c.text << " " << (c.argument ? c.argument : "null");
    }
    CString result;
    ReplaceTextA(result, "<%1>", 7);
    EXPECT_EQ(result, "<Scale>");
    ReplaceTextA(result, "<%1>", 8);
    EXPECT_EQ(result, "<>");
    CStringArray strings;
    strings.Add("A");
    strings.Add("");
    PrefixStrings(7, strings);
    EXPECT_EQ(strings.GetAt(0), "Scale A");
    EXPECT_EQ(strings.GetAt(1), "Scale ");
    PrefixStrings(8, strings);
    EXPECT_EQ(strings.GetAt(0), " Scale A");
    setHostServices(before);
}

}  // namespace
}  // namespace tessalink::test
