#include "platform/base/Utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tessalink::test {
namespace {

constexpr char32_t cFirstSurrogate = 0xD800;
constexpr char32_t cAfterSurrogates = 0xE000;
constexpr char32_t cHighest = 0x10FFFF;

TEST(Utf8, EveryCharacterComesBack) {
    for (char32_t character = 0; character <= cHighest; ++character) {
        std::string bytes;
        appendUtf8(bytes, character);
        std::string_view rest(bytes);
        const auto taken = takeUtf8(rest);
        const bool isSurrogate = character >= cFirstSurrogate && character < cAfterSurrogates;
        ASSERT_EQ(taken.has_value(), !isSurrogate) << std::hex << unsigned{character};
        if (isSurrogate) continue;
        ASSERT_EQ(*taken, character);
        ASSERT_TRUE(rest.empty()) << std::hex << unsigned{character};
    }
    std::string euro;
    appendUtf8(euro, 0x20AC);
    appendUtf8(euro, 0x1F600);
    EXPECT_EQ(euro, "\xE2\x82\xAC\xF0\x9F\x98\x80");
}

// Examples of The Unicode Standard, tables 3-8 to 3-11, and cut ends.
TEST(Utf8, MalformedBytesStandForOneReplacementEach) {
    const struct {
        std::string_view bytes;
        const char* shown;  // "?" for a replacement
    } table[] = {
        {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41", "????????A"},
        {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41", "????????A"},
        {"\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42", "?????A??B"},
        {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", "????A"},
        {"x\xE2\x82", "x?"},
        {"\xF0\x9F\x98", "?"},
        {"plain", "plain"},
    };
    for (const auto& row : table) {
        std::string shown;
        for (std::string_view rest = row.bytes; !rest.empty();) {
            shown += static_cast<char>(takeUtf8(rest).value_or('?'));
        }
        EXPECT_EQ(shown, row.shown);
        EXPECT_EQ(findMalformedUtf8(row.bytes), shown.find('?')) << row.shown;
    }
}

}  // namespace
}  // namespace tessalink::test
