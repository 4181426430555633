#include "platform/base/CodePage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "platform/base/CInvalidArgException.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

using namespace std::string_literals;

constexpr std::size_t cWhole = std::string::npos;

// The characters from 0x80 on, as iconv of the GNU C library has them; "_" where a byte has none.
struct KnownPage {
    CodePage page;
    std::u16string_view upper;
};
// clang-format off
const KnownPage cKnownPages[] = {
    {CodePage::CentralEuropean,
     u"\u20AC_\u201A_\u201E\u2026\u2020\u2021_\u2030\u0160\u2039\u015A\u0164\u017D\u0179_"
     u"\u2018\u2019\u201C\u201D\u2022\u2013\u2014_\u2122\u0161\u203A\u015B\u0165\u017E"
     u"\u017A\u00A0\u02C7\u02D8\u0141\u00A4\u0104\u00A6\u00A7\u00A8\u00A9\u015E\u00AB\u00AC"
     u"\u00AD\u00AE\u017B\u00B0\u00B1\u02DB\u0142\u00B4\u00B5\u00B6\u00B7\u00B8\u0105\u015F"
     u"\u00BB\u013D\u02DD\u013E\u017C\u0154\u00C1\u00C2\u0102\u00C4\u0139\u0106\u00C7\u010C"
     u"\u00C9\u0118\u00CB\u011A\u00CD\u00CE\u010E\u0110\u0143\u0147\u00D3\u00D4\u0150\u00D6"
     u"\u00D7\u0158\u016E\u00DA\u0170\u00DC\u00DD\u0162\u00DF\u0155\u00E1\u00E2\u0103\u00E4"
     u"\u013A\u0107\u00E7\u010D\u00E9\u0119\u00EB\u011B\u00ED\u00EE\u010F\u0111\u0144\u0148"
     u"\u00F3\u00F4\u0151\u00F6\u00F7\u0159\u016F\u00FA\u0171\u00FC\u00FD\u0163\u02D9"},
    {CodePage::Cyrillic,
     u"\u0402\u0403\u201A\u0453\u201E\u2026\u2020\u2021\u20AC\u2030\u0409\u2039\u040A\u040C"
     u"\u040B\u040F\u0452\u2018\u2019\u201C\u201D\u2022\u2013\u2014_\u2122\u0459\u203A"
     u"\u045A\u045C\u045B\u045F\u00A0\u040E\u045E\u0408\u00A4\u0490\u00A6\u00A7\u0401\u00A9"
     u"\u0404\u00AB\u00AC\u00AD\u00AE\u0407\u00B0\u00B1\u0406\u0456\u0491\u00B5\u00B6\u00B7"
     u"\u0451\u2116\u0454\u00BB\u0458\u0405\u0455\u0457\u0410\u0411\u0412\u0413\u0414\u0415"
     u"\u0416\u0417\u0418\u0419\u041A\u041B\u041C\u041D\u041E\u041F\u0420\u0421\u0422\u0423"
     u"\u0424\u0425\u0426\u0427\u0428\u0429\u042A\u042B\u042C\u042D\u042E\u042F\u0430\u0431"
     u"\u0432\u0433\u0434\u0435\u0436\u0437\u0438\u0439\u043A\u043B\u043C\u043D\u043E\u043F"
     u"\u0440\u0441\u0442\u0443\u0444\u0445\u0446\u0447\u0448\u0449\u044A\u044B\u044C\u044D"
     u"\u044E\u044F"},
    {CodePage::Western,
     u"\u20AC_\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152_\u017D__"
     u"\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153_\u017E"
     u"\u0178\u00A0\u00A1\u00A2\u00A3\u00A4\u00A5\u00A6\u00A7\u00A8\u00A9\u00AA\u00AB\u00AC"
     u"\u00AD\u00AE\u00AF\u00B0\u00B1\u00B2\u00B3\u00B4\u00B5\u00B6\u00B7\u00B8\u00B9\u00BA"
     u"\u00BB\u00BC\u00BD\u00BE\u00BF\u00C0\u00C1\u00C2\u00C3\u00C4\u00C5\u00C6\u00C7\u00C8"
     u"\u00C9\u00CA\u00CB\u00CC\u00CD\u00CE\u00CF\u00D0\u00D1\u00D2\u00D3\u00D4\u00D5\u00D6"
     u"\u00D7\u00D8\u00D9\u00DA\u00DB\u00DC\u00DD\u00DE\u00DF\u00E0\u00E1\u00E2\u00E3\u00E4"
     u"\u00E5\u00E6\u00E7\u00E8\u00E9\u00EA\u00EB\u00EC\u00ED\u00EE\u00EF\u00F0\u00F1\u00F2"
     u"\u00F3\u00F4\u00F5\u00F6\u00F7\u00F8\u00F9\u00FA\u00FB\u00FC\u00FD\u00FE\u00FF"},
    {CodePage::Greek,
     u"\u20AC_\u201A\u0192\u201E\u2026\u2020\u2021_\u2030_\u2039_____\u2018\u2019\u201C"
     u"\u201D\u2022\u2013\u2014_\u2122_\u203A____\u00A0\u0385\u0386\u00A3\u00A4\u00A5\u00A6"
     u"\u00A7\u00A8\u00A9_\u00AB\u00AC\u00AD\u00AE\u2015\u00B0\u00B1\u00B2\u00B3\u0384"
     u"\u00B5\u00B6\u00B7\u0388\u0389\u038A\u00BB\u038C\u00BD\u038E\u038F\u0390\u0391\u0392"
     u"\u0393\u0394\u0395\u0396\u0397\u0398\u0399\u039A\u039B\u039C\u039D\u039E\u039F\u03A0"
     u"\u03A1_\u03A3\u03A4\u03A5\u03A6\u03A7\u03A8\u03A9\u03AA\u03AB\u03AC\u03AD\u03AE"
     u"\u03AF\u03B0\u03B1\u03B2\u03B3\u03B4\u03B5\u03B6\u03B7\u03B8\u03B9\u03BA\u03BB\u03BC"
     u"\u03BD\u03BE\u03BF\u03C0\u03C1\u03C2\u03C3\u03C4\u03C5\u03C6\u03C7\u03C8\u03C9\u03CA"
     u"\u03CB\u03CC\u03CD\u03CE_"},
    {CodePage::Turkish,
     u"\u20AC_\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152____\u2018"
     u"\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153__\u0178\u00A0"
     u"\u00A1\u00A2\u00A3\u00A4\u00A5\u00A6\u00A7\u00A8\u00A9\u00AA\u00AB\u00AC\u00AD\u00AE"
     u"\u00AF\u00B0\u00B1\u00B2\u00B3\u00B4\u00B5\u00B6\u00B7\u00B8\u00B9\u00BA\u00BB\u00BC"
     u"\u00BD\u00BE\u00BF\u00C0\u00C1\u00C2\u00C3\u00C4\u00C5\u00C6\u00C7\u00C8\u00C9\u00CA"
     u"\u00CB\u00CC\u00CD\u00CE\u00CF\u011E\u00D1\u00D2\u00D3\u00D4\u00D5\u00D6\u00D7\u00D8"
     u"\u00D9\u00DA\u00DB\u00DC\u0130\u015E\u00DF\u00E0\u00E1\u00E2\u00E3\u00E4\u00E5\u00E6"
     u"\u00E7\u00E8\u00E9\u00EA\u00EB\u00EC\u00ED\u00EE\u00EF\u011F\u00F1\u00F2\u00F3\u00F4"
     u"\u00F5\u00F6\u00F7\u00F8\u00F9\u00FA\u00FB\u00FC\u0131\u015F\u00FF"},
    {CodePage::Baltic,
     u"\u20AC_\u201A_\u201E\u2026\u2020\u2021_\u2030_\u2039_\u00A8\u02C7\u00B8_\u2018\u2019"
     u"\u201C\u201D\u2022\u2013\u2014_\u2122_\u203A_\u00AF\u02DB_\u00A0_\u00A2\u00A3\u00A4_"
     u"\u00A6\u00A7\u00D8\u00A9\u0156\u00AB\u00AC\u00AD\u00AE\u00C6\u00B0\u00B1\u00B2\u00B3"
     u"\u00B4\u00B5\u00B6\u00B7\u00F8\u00B9\u0157\u00BB\u00BC\u00BD\u00BE\u00E6\u0104\u012E"
     u"\u0100\u0106\u00C4\u00C5\u0118\u0112\u010C\u00C9\u0179\u0116\u0122\u0136\u012A\u013B"
     u"\u0160\u0143\u0145\u00D3\u014C\u00D5\u00D6\u00D7\u0172\u0141\u015A\u016A\u00DC\u017B"
     u"\u017D\u00DF\u0105\u012F\u0101\u0107\u00E4\u00E5\u0119\u0113\u010D\u00E9\u017A\u0117"
     u"\u0123\u0137\u012B\u013C\u0161\u0144\u0146\u00F3\u014D\u00F5\u00F6\u00F7\u0173\u0142"
     u"\u015B\u016B\u00FC\u017C\u017E\u02D9"},
};
// clang-format on

HostServices servicesOf(CodePage page) {
    HostServices services;
    services.codePage = page;
    return services;
}

TEST(CodePage, HasTheCharactersOfIconv) {
    for (const auto& [page, upper] : cKnownPages) {
        const HostServicesScope scope(servicesOf(page));
        EXPECT_EQ(codePage(), page);
        ASSERT_EQ(upper.size(), 128u);
        std::map<char32_t, char> bytes;
        for (int byte = 0; byte < 256; ++byte) {
            const char ch = static_cast<char>(byte);
            char32_t character = byte < 0x80 ? static_cast<char16_t>(byte)
                                             : upper[static_cast<std::size_t>(byte) - 0x80];
            if (byte >= 0x80 && character == u'_') {
                character = toUnicode(ch);
                const bool isPrivate = character >= 0xF8F9 && character <= 0xF8FD;
                EXPECT_TRUE(byte < 0xA0 ? character == static_cast<char32_t>(byte) : isPrivate);
            }
            EXPECT_EQ(toUnicode(ch), character) << codePageName() << ' ' << byte;
            EXPECT_TRUE(bytes.emplace(character, ch).second);
        }
        for (char32_t character = 0; character <= 0x1FFFF; ++character) {
            const auto known = bytes.find(character);
            const auto expected =
                known != bytes.end() ? std::optional(known->second) : std::nullopt;
            ASSERT_EQ(fromUnicode(character), expected)
                << codePageName() << ' ' << static_cast<unsigned>(character);
        }
    }
    EXPECT_EQ(codePage(), CodePage::Western);
}

TEST(CodePage, IsThatOfTheHostAndIsKnownByItsNumber) {
    static CodePage told = CodePage::Western;
    whenHostServicesChange([] { told = codePage(); });
    {
        const HostServicesScope scope(servicesOf(CodePage::Greek));
        EXPECT_EQ(told, CodePage::Greek);
        EXPECT_EQ(codePageName(), "Windows-1253");
        EXPECT_EQ(codePageCharset(), 161);
        EXPECT_EQ(fromUtf8("\u0391\u03B1\u0416").fault, 4u);
        EXPECT_THROW(setHostServices(servicesOf(static_cast<CodePage>(932))), CInvalidArgException);
        EXPECT_EQ(hostServices().codePage, CodePage::Greek);
        EXPECT_EQ(codePage(), CodePage::Greek);
    }
    EXPECT_EQ(told, CodePage::Western);
    EXPECT_EQ(codePageCharset(), 0);
    for (int number = 0; number < 2000; ++number) {
        const bool isKnown = std::any_of(
            std::begin(cKnownPages), std::end(cKnownPages),
            [&](const KnownPage& known) { return static_cast<int>(known.page) == number; });
        EXPECT_EQ(codePageOf(number).has_value(), isKnown) << number;
    }
}

TEST(CodePage, KnownCharactersBothWays) {
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

TEST(CodePage, EveryByteComesBack) {
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

TEST(CodePage, ReadsWhatIsWrittenAndNothingElse) {
    std::set<std::string> characters;
    for (int byte = 0; byte < 256; ++byte) {
        characters.insert(toUtf8(std::string(1, static_cast<char>(byte))));
    }
    ASSERT_EQ(characters.size(), 256u);
    for (unsigned bytes = 0; bytes < 0x10000 * 5; ++bytes) {
        const std::string text = {static_cast<char>(bytes), static_cast<char>(bytes >> 8),
                                  "\0\x82\xA6\xAC\xBF"[bytes >> 16]};
        const CodePageText result = fromUtf8(text);
        const std::size_t end = std::min(result.fault, text.size());
        ASSERT_EQ(toUtf8(result.text), text.substr(0, end));
        for (std::size_t length = 1; length <= text.size() - end; ++length) {
            ASSERT_FALSE(characters.contains(text.substr(end, length)))
                << testing::PrintToString(text);
        }
    }
}

TEST(CodePage, TellsWhereAFaultIs) {
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
        const CodePageText result = fromUtf8(utf8);
        EXPECT_EQ(result.fault, fault) << testing::PrintToString(utf8);
        EXPECT_EQ(result.text, text != nullptr ? text : utf8) << testing::PrintToString(utf8);
    }
    EXPECT_EQ(fromUtf8(std::string_view("\u20AC", 2)).fault, 0u) << "the third byte is not its";
}

}  // namespace
}  // namespace tessalink::test
