#include "platform/base/NearestLetter.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/base/Utf8.h"
#include "platform/base/Windows1252.h"

namespace tessalink::test {
namespace {

TEST(NearestLetter, KnowsLatinGreekCyrillicAndSigns) {
    const char* const names[][2] = {
        {"\u0141ukasz \u017B\u00F3\u0142\u0107", "Lukasz Z\u00F3lc"},
        {"\u0150ri \u0130\u0131 \u0110\u0111 \u014B \u0259", "Ori Ii Dd n a"},
        {"Nguy\u1EC5n Th\u1ECB \u01B0\u01A1ng", "Nguy\u00EAn Thi uong"},
        {"\u0395\u03BB\u03AD\u03BD\u03B7 \u03A8\u1F00", "El\u00E9ni Pa"},
        {"\u0416\u0443\u0440\u0430\u0432\u043B\u0451\u0432 \u042F\u044C",
         "\u017Duravl\u00EBv \u00C2'"},
        {"\u2010\u2011\u2012\u2212\u2009\u2032\u2033\u02BC", "--\u2013- '\"\u2019"},
        {"\u2085\u2074\uFB01\uFF21\uFF20", "54fA@"},
        {"\u4E2D\U0001F600\u0301\uFFFF", "????"},
    };
    for (const auto& [name, expected] : names) {
        std::string nearest;
        for (std::string_view rest = name; !rest.empty();) {
            const char32_t character = takeUtf8(rest).value_or(0);
            nearest += fromUnicode(character).value_or(nearestLetter(character));
        }
        EXPECT_EQ(toUtf8(nearest), expected);
    }
}

}  // namespace
}  // namespace tessalink::test
