#include "platform/base/CString.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <limits>
#include <string>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/NumberText.h"

#include "tests/support/Environment.h"

namespace {

using namespace std::string_view_literals;

const char* const cNull = nullptr;

TEST(CString, Constructs) {
    const std::pair<CString, std::string_view> cases[] = {
        {CString(), ""},
        {CString(cNull), ""},
        {CString("abc"), "abc"},
        {CString('x'), "x"},
        {CString('x', 3), "xxx"},
        {CString('x', 0), ""},
        {CString('x', -1), ""},
        {CString("a\0b", 3), "a\0b"sv},
        {CString(cNull, 0), ""},
        {CString("a\0b"sv), "a\0b"sv},
        {CString(std::string("own")), "own"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(text.View(), expected);
    CString source("a text longer than what is kept in place");
    const CString target(std::move(source));
    EXPECT_EQ(target, "a text longer than what is kept in place");
    EXPECT_TRUE(source.IsEmpty());
}

TEST(CString, EmbeddedNulsCountAsCharacters) {
    CString text("a\0b"sv);
    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_STREQ(text, "a");
    EXPECT_NE(text, "a");
    EXPECT_NE(text, CString("a\0c"sv));
    EXPECT_EQ((text + text).GetLength(), 6);
    EXPECT_EQ(text.Find('b'), 2);
    EXPECT_EQ(text.Replace('\0', '-'), 1);
    EXPECT_EQ(text, "a-b");
}

TEST(CString, AssignsAndAppends) {
    CString text = "abc";
    const CString& same = text;
    text = same;
    text += text;
    text += 'd';
    text += "ef";
    text += cNull;
    text += "gh"sv;
    EXPECT_EQ(text, "abcabcdefgh");
    text = static_cast<const char*>(text) + 6;
    EXPECT_EQ(text, "defgh");
    text = 'q';
    EXPECT_EQ(text, "q");
    text = cNull;
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, Concatenates) {
    const CString b = "b";
    const CString cases[] = {
        "a" + b + "c",
        CString("a") + b + CString("c"),
        CString('a') + "b" + 'c',
        'a' + b + "c"sv,
        "a"sv + b + 'c',
        'a' + (b + 'c'),
    };
    for (const CString& text : cases) EXPECT_EQ(text, "abc");
    EXPECT_EQ(b, "b");
    EXPECT_EQ(cNull + b + cNull, "b");
}

struct Order {
    const char* a;
    const char* b;
    int order;
    int orderNoCase;
};

TEST(CString, Compares) {
    const Order cases[] = {
        {"", "", 0, 0},        {"a", "", 1, 1},          {"a", "b", -1, -1},
        {"ab", "a", 1, 1},     {"A", "a", -1, 0},        {"Zoo", "apple", -1, 1},
        {"z", "\xE4", -1, -1}, {"\xC4", "\xE4", -1, -1}, {"_", "A", 1, -1},
    };
    for (const Order& entry : cases) {
        const CString a = entry.a;
        const CString b = entry.b;
        EXPECT_EQ(a.Compare(entry.b), entry.order) << entry.a << '/' << entry.b;
        EXPECT_EQ(b.Compare(entry.a), -entry.order);
        EXPECT_EQ(a.CompareNoCase(entry.b), entry.orderNoCase) << entry.a << '/' << entry.b;
        EXPECT_EQ(a == entry.b, entry.order == 0);
        EXPECT_EQ(entry.a != b, entry.order != 0);
        EXPECT_EQ(a < entry.b, entry.order < 0);
        EXPECT_EQ(entry.a > b, entry.order > 0);
        EXPECT_EQ(a <= b, entry.order <= 0);
        EXPECT_EQ(a >= std::string_view(entry.b), entry.order >= 0);
    }
    EXPECT_EQ(CString(), cNull);
}

TEST(CString, CutsPieces) {
    const CString text = "abcdef";
    const std::pair<CString, const char*> cases[] = {
        {text.Mid(2), "cdef"},
        {text.Mid(2, 3), "cde"},
        {text.Mid(2, 99), "cdef"},
        {text.Mid(6, 1), ""},
        {text.Mid(99), ""},
        {text.Mid(-3, 2), "ab"},
        {text.Mid(1, -1), ""},
        {text.Left(2), "ab"},
        {text.Left(99), "abcdef"},
        {text.Left(-1), ""},
        {text.Right(2), "ef"},
        {text.Right(99), "abcdef"},
        {text.Right(-1), ""},
        {text.SpanIncluding("cba"), "abc"},
        {text.SpanIncluding("x"), ""},
        {text.SpanIncluding("fedcba"), "abcdef"},
        {text.SpanExcluding("fd"), "abc"},
        {text.SpanExcluding("xyz"), "abcdef"},
        {text.SpanExcluding(cNull), "abcdef"},
    };
    for (const auto& [piece, expected] : cases) EXPECT_EQ(piece, expected);
}

TEST(CString, Finds) {
    const CString text = "abcabc";
    const std::pair<int, int> cases[] = {
        {text.Find('b'), 1},        {text.Find('b', 2), 4},      {text.Find('x'), -1},
        {text.Find('a', 6), -1},    {text.Find('a', 99), -1},    {text.Find('a', -1), -1},
        {text.Find("ca"), 2},       {text.Find("abc", 1), 3},    {text.Find("abcd"), -1},
        {text.Find(""), 0},         {text.Find("", 6), 6},       {text.Find("", 7), -1},
        {text.ReverseFind('b'), 4}, {text.ReverseFind('x'), -1}, {text.FindOneOf("xcb"), 1},
        {text.FindOneOf("x"), -1},  {CString().Find('a'), -1},
    };
    int index = 0;
    for (const auto& [found, expected] : cases) EXPECT_EQ(found, expected) << "case " << index++;
}

struct Change {
    const char* before;
    std::function<int(CString&)> change;
    const char* after;
    int result;
};

int sizeOf(const CString& text) {
    return text.GetLength();
}

TEST(CString, Changes) {
    const Change cases[] = {
        {"banana", [](CString& t) { return t.Replace('a', 'o'); }, "bonono", 3},
        {"banana", [](CString& t) { return t.Replace("an", "AN!"); }, "bAN!AN!a", 2},
        {"aaaa", [](CString& t) { return t.Replace("aa", "a"); }, "aa", 2},
        {"abc", [](CString& t) { return t.Replace("", "x"); }, "abc", 0},
        {"abab", [](CString& t) { return t.Replace("ab", cNull); }, "", 2},
        {"abab", [](CString& t) { return t.Replace(t, "x"); }, "x", 1},
        {"banana", [](CString& t) { return t.Remove('a'); }, "bnn", 3},
        {"ad", [](CString& t) { return t.Insert(1, "bc"); }, "abcd", 4},
        {"ab", [](CString& t) { return t.Insert(99, 'c'); }, "abc", 3},
        {"bc", [](CString& t) { return t.Insert(-5, 'a'); }, "abc", 3},
        {"ab", [](CString& t) { return t.Insert(1, t); }, "aabb", 4},
        {"abcd", [](CString& t) { return t.Delete(1, 2); }, "ad", 2},
        {"abcd", [](CString& t) { return t.Delete(2, 99); }, "ab", 2},
        {"abcd", [](CString& t) { return t.Delete(4); }, "abcd", 4},
        {"abcd", [](CString& t) { return t.Delete(0, -1); }, "abcd", 4},
        {"a\xE4z[`{", [](CString& t) { return sizeOf(t.MakeUpper()); }, "A\xE4Z[`{", 6},
        {"A\xC4Z@[", [](CString& t) { return sizeOf(t.MakeLower()); }, "a\xC4z@[", 5},
        {"abc", [](CString& t) { return sizeOf(t.MakeReverse()); }, "cba", 3},
        {" \t\n\v\f\r a b\n", [](CString& t) { return sizeOf(t.Trim()); }, "a b", 3},
        {"  a  ", [](CString& t) { return sizeOf(t.TrimLeft()); }, "a  ", 3},
        {"  a  ", [](CString& t) { return sizeOf(t.TrimRight()); }, "  a", 3},
        {" \r\n ", [](CString& t) { return sizeOf(t.Trim()); }, "", 0},
        {"xxaxx", [](CString& t) { return sizeOf(t.Trim('x')); }, "a", 1},
        {"xxa", [](CString& t) { return sizeOf(t.TrimLeft('x')); }, "a", 1},
        {"axx", [](CString& t) { return sizeOf(t.TrimRight('x')); }, "a", 1},
        {"xya.yx", [](CString& t) { return sizeOf(t.Trim("xy")); }, "a.", 2},
        {"xyxa", [](CString& t) { return sizeOf(t.TrimLeft("xy")); }, "a", 1},
        {"axyx", [](CString& t) { return sizeOf(t.TrimRight("xy")); }, "a", 1},
    };
    for (const Change& entry : cases) {
        CString text = entry.before;
        EXPECT_EQ(entry.change(text), entry.result) << entry.before << " to " << entry.after;
        EXPECT_EQ(text, entry.after);
    }
}

TEST(CString, LendsItsBuffer) {
    CString text = "abc";
    char* buffer = text.GetBuffer(100);
    EXPECT_STREQ(buffer, "abc");
    std::snprintf(buffer, 100, "a longer text that was written into the buffer");
    text.ReleaseBuffer();
    EXPECT_EQ(text, "a longer text that was written into the buffer");
    text.GetBuffer()[1] = '\0';
    text.ReleaseBuffer(3);
    EXPECT_EQ(text.View(), "a\0l"sv);
    text.GetBufferSetLength(1);
    text.ReleaseBuffer();
    EXPECT_EQ(text, "a");
}

TEST(CString, RejectsWhatIsOutOfRange) {
    CString text = "abc";
    const std::function<void()> cases[] = {
        [&] { (void)text[3]; },
        [&] { (void)text.GetAt(-1); },
        [&] { text.SetAt(3, 'x'); },
        [&] { (void)CString("abc", -1); },
        [&] { (void)CString(cNull, 1); },
        [&] { (void)text.GetBuffer(-1); },
        [&] { text.ReleaseBuffer(4); },
        [&] { text.Preallocate(-1); },
        [&] { (void)(text + std::string_view("", std::numeric_limits<std::uint32_t>::max())); },
        [&] { text += std::string_view("", std::numeric_limits<int>::max()); },
    };
    int index = 0;
    for (const auto& attempt : cases) {
        EXPECT_THROW(attempt(), CInvalidArgException) << "case " << index++;
    }
    EXPECT_EQ(text, "abc");
}

bool setNumbers(const char* locale) {
    return std::setlocale(LC_NUMERIC, locale) != nullptr;
}

// The classic decimal comma, from a locale of the system or one compiled for the purpose.
bool setForeignNumbers() {
    for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8"}) {
        if (setNumbers(name)) return true;
    }
    const std::string folder = testing::TempDir() + "tessalink-locale";
    const std::string compile =
        "mkdir -p " + folder + " && localedef -i de_DE -f UTF-8 " + folder + "/de_DE.UTF-8";
    const bool compiled = std::system((compile + " >/dev/null 2>&1").c_str()) == 0;
    tessalink::test::setVariable("LOCPATH", folder.c_str());
    const bool isSet = compiled && setNumbers("de_DE.UTF-8");
    tessalink::test::removeVariable("LOCPATH");
    std::filesystem::remove_all(folder);
    return isSet;
}

TEST(CString, FormatsWithoutTheLocale) {
    if (!setForeignNumbers()) GTEST_SKIP() << "no locale with a decimal comma is installed";
    char foreign[16];
    std::snprintf(foreign, sizeof(foreign), "%.1f", 2.5);
    CString text;
    text.Format("%1.2f|%g|%e|%d", 2.5, 0.25, 1.5, 1234567);
    const double read = tessalink::readDouble("2.5");
    setNumbers("C");
    EXPECT_STREQ(foreign, "2,5");
    EXPECT_EQ(read, 2.5);
    EXPECT_EQ(text, "2.50|0.25|1.500000e+00|1234567");
}

#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"

template <class VALUE>
void expectAsC(const std::string& format, VALUE value) {
    char expected[1024];
    std::snprintf(expected, sizeof(expected), format.c_str(), value);
    CString text;
    text.Format(format.c_str(), value);
    EXPECT_EQ(text.View(), expected) << format;
}

// Every mixture of flags, widths and precisions must come out as the C library's.
template <class VISIT>
void forEachFormat(const char* conversions, const char* length, VISIT visit) {
    for (unsigned flags = 0; flags < 32; ++flags) {
        std::string start = "<%";
        for (unsigned bit = 0; bit < 5; ++bit) {
            if ((flags >> bit & 1) != 0) start += "-+ #0"[bit];
        }
        for (const char* width : {"", "1", "12"}) {
            for (const char* precision : {"", ".", ".0", ".1", ".4", ".14"}) {
                for (const char* letter = conversions; *letter != '\0'; ++letter) {
                    visit(start + width + precision + length + *letter + ">");
                }
            }
        }
    }
}

TEST(CString, FormatsIntegersAsC) {
    if (tessalink::test::cIsWindows) GTEST_SKIP() << "the C library there differs in corners";
    for (const int value : {0, 1, -1, 42, -1234567, INT_MAX, INT_MIN}) {
        forEachFormat("diuxXo", "", [&](const auto& format) { expectAsC(format, value); });
        forEachFormat("dux", "h", [&](const auto& format) { expectAsC(format, value); });
        forEachFormat("dux", "hh", [&](const auto& format) { expectAsC(format, value); });
    }
    for (const long long value : {0LL, -5LL, LLONG_MAX, LLONG_MIN}) {
        for (const char* length : {"ll", "l", "j", "z", "t"}) {
            forEachFormat("duXo", length, [&](const auto& format) { expectAsC(format, value); });
        }
    }
}

TEST(CString, FormatsDoublesAsC) {
    if (tessalink::test::cIsWindows) GTEST_SKIP() << "the C library there differs in corners";
    const double infinity = std::numeric_limits<double>::infinity();
    const double values[] = {
        0.0,       -0.0,         1.0,          -2.5,     0.125,    9.995,
        1e-5,      1e-4,         99999.5,      123456.0, 1e15,     1.7976931348623157e308,
        5e-324,    1e-300,       0.1,          1000000,  999999.4, infinity,
        -infinity, std::nan(""), -std::nan("")};
    for (const double value : values) {
        forEachFormat("fFeEgG", "", [&](const auto& format) { expectAsC(format, value); });
        expectAsC("%lf", value);
        if (value == 0.0 || std::fabs(value) > 1e-307) expectAsC("%a|", value);
    }
}

// Rounding that adds a digit moves "%g" to its other form, also with '#' (where glibc errs).
TEST(CString, ChoosesTheGeneralFormAfterRounding) {
    for (const double value : {999999.5, 9.9999995e-5, 99.99999999}) expectAsC("%g", value);
    CString text;
    text.Format("%#g %#.3g", 999999.5, 999.5);
    EXPECT_EQ(text, "1.00000e+06 1.00e+03");
}

TEST(CString, FormatsTextsAsC) {
    if (tessalink::test::cIsWindows) GTEST_SKIP() << "the C library there differs in corners";
    for (const char* format : {"%s", "%5s", "%-5s|", "%.2s", "%5.1s", "%.0s", "%05s", "%%%s%%"}) {
        expectAsC(format, "abc");
    }
    for (const char* format : {"%c", "%3c", "%-3c|"}) expectAsC(format, 'x');
    CString text;
    expectAsC("%p", static_cast<void*>(&text));
    expectAsC("%20p", static_cast<const void*>(nullptr));
    text.Format("%*d|%-*d|%.*f", -5, 7, 4, 8, -1, 0.5);
    EXPECT_EQ(text, "7    |8   |0.500000");
    const std::string sized = "%I64d %I32d 0x%08X";  // sizes that the compiler does not know
    text.Format(sized.c_str(), LLONG_MIN, -5, 0xBEEFu);
    EXPECT_EQ(text, "-9223372036854775808 -5 0x0000BEEF");
    const std::string twice = "%s%s";
    text.Format(twice.c_str(), static_cast<const char*>(text), cNull);
    EXPECT_EQ(text, "-9223372036854775808 -5 0x0000BEEF(null)");
    text.AppendFormat("+%d", 1);
    EXPECT_EQ(text.Right(3), ")+1");
    text.Format("a%cb", 0);
    EXPECT_EQ(text.View(), "a\0b"sv);
}

TEST(CString, RejectsUnknownFormats) {
    CString text = "kept";
    for (const char* format : {"%", "ab%", "%n", "%5", "%k", "%ls", cNull}) {
        EXPECT_THROW(text.Format(format, 1), CInvalidArgException);
        EXPECT_EQ(text, "kept");
    }
}

}  // namespace
