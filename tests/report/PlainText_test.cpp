#include "report/PlainText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "platform/base/CodePage.h"
#include "platform/base/NearestLetter.h"
#include "platform/base/Utf8.h"
#include "tests/report/RunTemplate.h"
#include "tests/support/Dice.h"

namespace tessalink::test {
namespace {

TEST(PlainText, EscapesWhatIsNoPlainLetterAndTurnsItBack) {
    const struct {
        const char* utf8;
        const char* escaped;
        const char* plain;  // in Windows-1252
    } table[] = {
        {"", "", ""},
        {"Zo\u00EB \u20AC", "Zo\xEB \x80", "Zo\xEB \x80"},
        {"{a\\b}", "\\{a\\\\b\\}", "{a\\b}"},
        {"[x@y]", "\\'5bx\\'40y\\'5d", "[x@y]"},
        {"\\'40\\u321L", "\\\\'40\\\\u321L", "\\'40\\u321L"},
        {"\u0141uk\u0105 5", "\\u321Luk\\u261a 5", "Luka 5"},
        {"\u1EC7\u2085\u2003.", "\\u7879\xEA\\u8325 5\\u8195  .",
         "\xEA"
         "5 ."},
        {"\u03A9\u0416\u65E5", "\\u937O\\u1046\x8E\\u26085?", "O\x8E?"},
        {"\uFF20\uFF3B\uFF5B", "\\u-224\\'40\\u-197\\'5b\\u-165\\{", "@[{"},
        {"\U0001F600!", "\\u-10179?\\u-8704?!", "?!"},
        {"\U0001F600\u0141", "\\u-10179?\\u-8704?\\u321L", "?L"},
        {"a\xFF\xE2\x82z", "a\\u-3?\\u-3?z", "a??z"},
    };
    for (const auto& row : table) {
        EXPECT_EQ(escapeUtf8(row.utf8), row.escaped);
        EXPECT_EQ(unescapeText(row.escaped), row.plain) << row.escaped;
        EXPECT_EQ(unescapeText(escapeText(CString(row.plain)).View()), row.plain);
    }
    // What others write stays, but for letters that are known.
    for (const char* other : {"\\b", "\\u", "\\ux", "\\u5", "\\u99999x", "\\'41", "\\", "\\par "}) {
        EXPECT_EQ(unescapeText(other), other);
    }
    EXPECT_EQ(unescapeText("\\u8364?\\u-10179?"), "\x80?");
}

TEST(PlainText, NothingInItRuns) {
    std::string text = "@LET(n=5)@n@IF(1)@THEN@ENDIF@EVAL(t)@@ \\par {\\rtf [x] ]]@[[ @DEFER_END @";
    for (int byte = 255; byte > 0; --byte) text += static_cast<char>(byte);
    const CString escaped = escapeText(text);
    const char* const templates[] = {
        "@t",
        "@EVAL(t)",
        "@EVAL([@EVAL(t)])",
        "@EVAL([@IF(1)@THEN]+t+[@ENDIF])",
        "@DEFER_START(2)@DEFER_END@DEFER_START(1)@EVAL(t)@DEFER_END@PRINT_DEFERRED(ASC)",
        "@EVAL([@DEFER_START(1)]+t+[@DEFER_END@PRINT_DEFERRED(ASC)])",
        "@EVAL([@COMMENT]+t+[@COMMENT_END]+t)",
    };
    for (const char* const source : templates) {
        VarTable variables;
        variables.SetValue("t", escaped);
        variables.SetValue("n", 1);
        EXPECT_EQ(runTemplate(source, variables).Outcome(), escaped.GetString()) << source;
    }
    // Line ends are skipped in constants.
    std::string line = escaped.GetString();
    std::erase_if(line, [](char ch) { return ch == '\r' || ch == '\n'; });
    VarTable variables;
    variables.SetValue("t", CString(std::string_view(line)));
    EXPECT_EQ(runTemplate("@EVAL([@DEFINE(q)@LET(q=[]+t+[]])@q])", variables).Outcome(), line);
}

TEST(PlainText, ComesBackFromItsEscapes) {
    constexpr std::string_view special = "\\\\'{}@[]u1-4 5bd?\xE4";
    Dice dice(15);
    for (int round = 0; round < 3000; ++round) {
        const std::string bytes = dice.Text(dice.Below(30), special);
        const CString escaped = escapeText(bytes);
        EXPECT_EQ(escaped.View().find_first_of("@[]"), std::string_view::npos);
        ASSERT_EQ(unescapeText(escaped.View()), CString(std::string_view(bytes)));

        std::string utf8;
        std::string nearest;
        for (std::size_t i = dice.Below(20); i > 0; --i) {
            constexpr char32_t surrogates = 0xD800;
            auto character =
                static_cast<char32_t>(1 + dice.Below(dice.OneIn(8) ? 0x10FFFFu : 0x2FFFu));
            if (dice.OneIn(2) || (character & ~0x7FFu) == surrogates) {
                character = static_cast<unsigned char>(special[dice.Below(special.size())]);
            }
            appendUtf8(utf8, character);
            nearest += fromUnicode(character).value_or(nearestLetter(character));
        }
        const CString foreign = escapeUtf8(utf8);
        EXPECT_EQ(foreign.View().find_first_of("@[]"), std::string_view::npos);
        ASSERT_EQ(unescapeText(foreign.View()), CString(std::string_view(nearest))) << utf8;
    }
}

}  // namespace
}  // namespace tessalink::test
