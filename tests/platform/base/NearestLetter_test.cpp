#include "platform/base/NearestLetter.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/base/CodePage.h"
#include "platform/base/Utf8.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

std::string nearestOf(std::string_view name) {
    std::string nearest;
    while (!name.empty()) {
        const char32_t character = takeUtf8(name).value_or(0);
        nearest += fromUnicode(character).value_or(nearestLetter(character));
    }
    return nearest;
}

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
        EXPECT_EQ(toUtf8(nearestOf(name)), expected);
    }
}

TEST(NearestLetter, IsOneOfTheCodePage) {
    const struct {
        CodePage page;
        const char* name;
        const char* expected;
    } cases[] = {
        {CodePage::Greek, "\u1F08\u03B8\u1FC6\u03BD\u03B1\u1F72",
         "\u0391\u03B8\u03AE\u03BD\u03B1\u03AD"},
        {CodePage::Greek, "M\u00FCller \u0416\u0151\u0160 \u00D7\u00BF", "Muller ZoS x?"},
        {CodePage::Cyrillic, "\u049A\u0430\u0437\u0430\u049B\u04E3",
         "\u041A\u0430\u0437\u0430\u043A\u0438"},
        {CodePage::Cyrillic, "\u00C9\u03B1\u0142\u00DF", "Eals"},
        {CodePage::CentralEuropean, "\u0141\u00F1\u1EC5\u0391", "\u0141neA"},
        {CodePage::Baltic, "\u00E6\u0153\u015D\u00F8", "\u00E6os\u00F8"},
        {CodePage::Turkish, "\u0130\u0142\u00F0", "\u0130ld"},
    };
    for (const auto& [page, name, expected] : cases) {
        HostServices services;
        services.codePage = page;
        const HostServicesScope scope(services);
        EXPECT_EQ(toUtf8(nearestOf(name)), expected);
    }
}

// Windows-1254 has what it shares with Windows-1252 in the same bytes.
TEST(NearestLetter, IsThePlainLetterWhereAPageLacksThatOf1252) {
    std::string nearest;
    for (char32_t ch = 0; ch < 0x20000; ++ch) nearest += nearestLetter(ch);
    HostServices services;
    services.codePage = CodePage::Turkish;
    const HostServicesScope scope(services);
    for (char32_t ch = 0; ch < 0x20000; ++ch) {
        const char letter = nearestLetter(ch);
        EXPECT_TRUE(letter == nearest[ch] || static_cast<unsigned char>(letter) < 0x80)
            << static_cast<unsigned>(ch);
    }
}

}  // namespace
}  // namespace tessalink::test
