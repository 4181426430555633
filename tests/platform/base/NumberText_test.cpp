#include "platform/base/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "tests/support/Environment.h"
#include "tests/support/OddNumbers.h"

namespace {

using namespace tessalink;
using tessalink::test::cInfinity;

std::string written(double value, int decimals) {
    std::string text(cMaxDoubleHead + static_cast<std::size_t>(decimals), '\0');
    text.resize(static_cast<std::size_t>(writeDouble(text.data(), value, decimals) - text.data()));
    return text;
}

std::string writtenByC(double value, int decimals) {
    // Not every C library writes the sign.
    if (std::isnan(value)) return std::signbit(value) ? "-nan" : "nan";
    char text[2048];
    return {text,
            static_cast<std::size_t>(std::snprintf(text, sizeof(text), "%.*f", decimals, value))};
}

void expectAsC(double value) {
    for (const int decimals : {0, 1, 2, 3, 4, 9}) {
        ASSERT_EQ(written(value, decimals), writtenByC(value, decimals))
            << std::hexfloat << value << " with " << decimals;
    }
}

TEST(NumberText, WritesEdgeValuesAsC) {
    for (const double value : {0.0,
                               0.005,
                               0.015,
                               0.5,
                               1.5,
                               2.5,
                               0.05,
                               0.25,
                               0.125,
                               0.0005,
                               9.995,
                               99.995,
                               0.0625,
                               4503599627370495.5,
                               4503599627370496.0,
                               9007199254740991.0,
                               9007199254740992.0,
                               9007199254740994.0,
                               1e22,
                               1e23,
                               5e-324,
                               2.2250738585072014e-308,
                               1.7976931348623157e308,
                               cInfinity,
                               std::nan("")}) {
        expectAsC(value);
        expectAsC(-value);
        for (const int decimals : {17, 60, 400, 1100}) {
            EXPECT_EQ(written(value, decimals), writtenByC(value, decimals));
        }
    }
    EXPECT_EQ(written(-1.7976931348623157e308, 2).size(), cMaxDoubleText);
}

TEST(NumberText, WritesAnyBitPatternAsC) {
    std::mt19937_64 random(1);
    for (int i = 0; i < 150'000; ++i) expectAsC(std::bit_cast<double>(random()));
}

// Exact halves, the neighbours of decimal ties and plain scores, at every size of the fast way.
TEST(NumberText, RoundsTiesAsC) {
    std::mt19937_64 random(2);
    for (int i = 0; i < 80'000; ++i) {
        const auto mantissa = static_cast<double>(random() >> (random() % 54 + 10));
        expectAsC(std::ldexp(mantissa, -static_cast<int>(random() % 70)));
        const double tie = (std::floor(mantissa / 1024) + 0.5) / std::pow(10.0, random() % 4);
        expectAsC(tie);
        expectAsC(std::nextafter(tie, -cInfinity));
        expectAsC(-std::nextafter(tie, cInfinity));
    }
}

TEST(NumberText, WritesIntegers) {
    for (const int value : {0, 1, -1, 99, -100, INT_MAX, INT_MIN}) {
        char text[cMaxIntText];
        EXPECT_EQ(std::string(text, writeInt(text, value)), std::to_string(value));
    }
}

TEST(NumberText, FormatsInFieldsAsC) {
    if (tessalink::test::cIsWindows) GTEST_SKIP() << "the C library there differs in corners";
    char expected[512];
    for (const int width : {-20, -3, -1, 0, 1, 3, 14}) {
        for (const int precision : {-5, -1, 0, 1, 2, 7, 80}) {
            for (const int value : {0, 7, -42, INT_MIN}) {
                std::snprintf(expected, sizeof(expected), "%*.*d", width, precision, value);
                EXPECT_EQ(formatInt(value, width, precision), expected);
            }
            for (const double value : {0.0, -2.345, 1e20, cInfinity, -std::nan("")}) {
                std::snprintf(expected, sizeof(expected), "%*.*f", width, precision, value);
                EXPECT_EQ(formatDouble(value, width, precision), expected);
            }
        }
        std::snprintf(expected, sizeof(expected), "%*s", width, "ab");
        EXPECT_EQ(formatText("ab", width), expected);
    }
    EXPECT_EQ(formatText(std::string_view("\0b", 2), 3).View(), std::string_view(" \0b", 3));
    EXPECT_EQ(formatInt(5, 6, 2), "    05");
}

struct DoubleToInt {
    double value;
    int expected;
};

TEST(NumberText, TruncatesAndSaturatesToInt) {
    const DoubleToInt cases[] = {
        {2.9, 2},
        {-2.9, -2},
        {-0.0, 0},
        {2147483647.5, INT_MAX},
        {2147483646.9, INT_MAX - 1},
        {-2147483648.9, INT_MIN},
        {-2147483647.9, INT_MIN + 1},
        {1e300, INT_MAX},
        {-cInfinity, INT_MIN},
        {std::nan(""), 0},
    };
    for (const auto& [value, expected] : cases) EXPECT_EQ(toInt(value), expected) << value;
}

struct TextToInt {
    std::string_view text;
    int expected;
};

TEST(NumberText, ReadsIntegers) {
    const TextToInt cases[] = {
        {"", 0},
        {"12abc", 12},
        {"abc", 0},
        {" \t\n\v\f\r-7", -7},
        {"+5", 5},
        {"+-5", 0},
        {"- 5", 0},
        {"007", 7},
        {"0x10", 0},
        {"2147483647", INT_MAX},
        {"2147483648", INT_MAX},
        {"-2147483648", INT_MIN},
        {"-2147483649", INT_MIN},
        {"99999999999999999999999", INT_MAX},
        {"-99999999999999999999999", INT_MIN},
        {"1.9", 1},
        {"\xA0"
         "1",
         0},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(readInt(text), expected) << text;
    EXPECT_EQ(readInt(std::string(1'000'000, '9')), INT_MAX);
}

void expectReadAsC(const std::string& text) {
    const double expected = std::strtod(text.c_str(), nullptr);
    const double value = readDouble(text);
    if (std::isnan(expected)) {
        ASSERT_TRUE(std::isnan(value) && std::signbit(value) == std::signbit(expected)) << text;
    } else {
        ASSERT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected))
            << text;
    }
}

TEST(NumberText, ReadsDoublesAsC) {
    if (tessalink::test::cIsWindows) GTEST_SKIP() << "the C library there differs in corners";
    for (const char* text : {"",
                             "abc",
                             "1",
                             "-2.5",
                             "+3.25",
                             "+-1",
                             "--1",
                             " \t\n\v\f\r 4",
                             ".5",
                             "5.",
                             ".",
                             "-.",
                             "1e3",
                             "1e",
                             "1e+",
                             "1E-2x",
                             "e5",
                             "0x1p4",
                             "0X.8P1",
                             "0x",
                             "0xg",
                             "0x1.fffffffffffff8p0",
                             "-0x1p-1074",
                             "0x1p-1075",
                             "0x1.8p-1075",
                             "0x1p1024",
                             "-0x1p99999999999999999999",
                             "0x0p99999",
                             "0x0.0000001p-1060",
                             "0x123456789abcdef01p0",
                             "inf",
                             "-INFINITY",
                             "infinit",
                             "nan",
                             "-NaN",
                             "nan(12a)",
                             "1e308",
                             "1e309",
                             "-1e309",
                             "1.7976931348623159e308",
                             "5e-324",
                             "2.4e-324",
                             "2.5e-324",
                             "1e-400",
                             "-1e-400",
                             "0e99999",
                             "-0",
                             "-0x",
                             "-abc",
                             "0x-1p1",
                             "-0x.p1",
                             "0.00000000000000000000000000000000000000001e340",
                             "1e99999999999999999999",
                             "1e-99999999999999999999",
                             "100000000000000000000000000000e-400",
                             "1,5",
                             "1 2",
                             "179769313486231580793e288",
                             "0.1e-322",
                             "0000000000001.5"}) {
        expectReadAsC(text);
    }
    expectReadAsC("1" + std::string(400, '0'));
    expectReadAsC("0." + std::string(400, '0') + "1");
    expectReadAsC("0." + std::string(400, '0') + "1e401");
    expectReadAsC("1" + std::string(400, '0') + "e-400");
    expectReadAsC(std::string(100'000, '7'));
    expectReadAsC("0x1" + std::string(999, '0') + "p-2000");
    expectReadAsC("0x0." + std::string(999, '0') + "1p2000");
    EXPECT_EQ(readDouble(std::string_view("12", 1)), 1.0);
}

TEST(NumberText, ReadsWhatWasPrinted) {
    std::mt19937_64 random(3);
    char text[64];
    for (int i = 0; i < 200'000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (std::isnan(value)) continue;
        const int precision = static_cast<int>(random() % 20);
        std::snprintf(text, sizeof(text), i % 4 == 0 ? "%.*a" : "%.*e", precision, value);
        expectReadAsC(text);
    }
}

TEST(NumberText, WrapsAround) {
    EXPECT_EQ(wrapAdd(INT_MAX, 1), INT_MIN);
    EXPECT_EQ(wrapSub(INT_MIN, 1), INT_MAX);
    EXPECT_EQ(wrapMul(INT_MIN, -1), INT_MIN);
    EXPECT_EQ(wrapMul(65536, 65537), 65536);
    EXPECT_EQ(wrapNeg(INT_MIN), INT_MIN);
    EXPECT_EQ(divide(INT_MIN, -1), INT_MIN);
    EXPECT_EQ(divide(-7, 2), -3);
    EXPECT_EQ(divide(7, -1), -7);
}

}  // namespace
