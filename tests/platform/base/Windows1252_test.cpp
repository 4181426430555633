#include "platform/base/Windows1252.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace tessalink::test {
namespace {

using namespace std::string_literals;

constexpr std::size_t cWhole = std::string::npos;

TEST(Windows1252, KnownCharactersBothWays) {
    const struct {
        std::string ansi;
        const char* utf8;
    } table[] = {
        {"plain\t~\x7F", "plain\t~\x7F"},
        {"\xC4rger f\xFCr \xDF\xFF", "\u00C4rger f\u00FCr \u00DF\u00FF"},
        {"\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E",
         "\u20AC\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u017D"},
        {"\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F",
         "\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u017E\u0178"},
        // The bytes that Windows-1252 leaves open.
        {"\x81\x8D\x8F\x90\x9D", "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D"},
        {"\xA0", "\u00A0"},
    };
    for (const auto& [ansi, utf8] : table) {
        EXPECT_EQ(toUtf8(ansi), utf8);
        EXPECT_EQ(fromUtf8(utf8).text, ansi);
        EXPECT_TRUE(fromUtf8(utf8).IsWhole());
    }
}

TEST(Windows1252, EveryByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string one(1, static_cast<char>(byte));
        EXPECT_EQ(fromUtf8(toUtf8(one)).text, one) << byte;
        all += one;
    }
    EXPECT_EQ(fromUtf8(toUtf8(all)).text, all);
    EXPECT_EQ(fromUtf8("").text, "");
    EXPECT_TRUE(fromUtf8("").IsWhole());
}

TEST(Windows1252, ReadsWhatIsWrittenAndNothingElse) {
    std::set<std::string> characters;
    for (int byte = 0; byte < 256; ++byte) {
        characters.insert(toUtf8(std::string(1, static_cast<char>(byte))));
    }
    ASSERT_EQ(characters.size(), 256u);
    for (unsigned bytes = 0; bytes < 0x10000 * 5; ++bytes) {
        const std::string text = {static_cast<char>(bytes), static_cast<char>(bytes >> 8),
                                  "\0\x82\xA6\xAC\xBF"[bytes >> 16]};
        const Windows1252Text result = fromUtf8(text);
        const std::size_t end = std::min(result.fault, text.size());
        ASSERT_EQ(toUtf8(result.text), text.substr(0, end));
        for (std::size_t length = 1; length <= text.size() - end; ++length) {
            ASSERT_FALSE(characters.contains(text.substr(end, length)))
                << testing::PrintToString(text);
        }
    }
}

TEST(Windows1252, TellsWhereAFaultIs) {
    const struct {
        std::string utf8;
        const char* text;
        std::size_t fault;
    } table[] = {
        {"ab\x80", "ab", 2},  // a tail without a lead
        {"ab\xBFz", "ab", 2},
        {"ab\xFFz", "ab", 2},
        {"ab\xF8\x88\x80\x80\x80", "ab", 2},  // a form of five bytes
        {"\u00E4\xC3", "\xE4", 2},            // cut
        {"\xE2\x82", "", 0},
        {"\xF0\x9F\x98", "", 0},
        {"a\xC3z", "a", 1},  // a lead without its tail
        {"a\xE2\x82z", "a", 1},
        {"a\xE2z\xAC", "a", 1},
        {"a\xC3\xC3\xA4", "a", 1},
        {"\xC0\x80", "", 0},  // longer than need be
        {"\xC1\x81", "", 0},
        {"\xE0\x83\xA4", "", 0},
        {"\xF0\x82\x82\xAC", "", 0},
        {"x\xED\xA0\x80", "x", 1},      // half of a surrogate pair
        {"x\xF0\x9F\x98\x80", "x", 1},  // characters that Windows-1252 lacks
        {"x\xF4\x90\x80\x80", "x", 1},  // beyond the last character
        {"x\xF7\xBF\xBF\xBF", "x", 1},
        {"\u20AC\u0394", "\x80", 3},
        {"\xC2\x80", "", 0},  // a control character whose byte is another's
        {"\xC2\x9F", "", 0},
        {"\xEF\xBB\xBFx", "", 0},  // the byte order mark
        {"\u0100", "", 0},
        {"a\0b"s, nullptr, cWhole},
    };
    for (const auto& [utf8, text, fault] : table) {
        const Windows1252Text result = fromUtf8(utf8);
        EXPECT_EQ(result.fault, fault) << testing::PrintToString(utf8);
        EXPECT_EQ(result.text, text != nullptr ? text : utf8) << testing::PrintToString(utf8);
    }
    EXPECT_EQ(fromUtf8(std::string_view("\u20AC", 2)).fault, 0u) << "the third byte is not its";
}

}  // namespace
}  // namespace tessalink::test
