#include "platform/graphics/FaceMetrics.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>

#include "platform/graphics/SymbolText.h"
#include "tests/support/Dice.h"

namespace {

using tessalink::builtInMetrics;
using tessalink::SizedFont;

LOGFONTA fontOf(const char* face, LONG height, LONG weight = FW_NORMAL, BYTE italic = 0) {
    LOGFONTA font{};
    font.lfHeight = height;
    font.lfWeight = weight;
    font.lfItalic = italic;
    std::strcpy(font.lfFaceName, face);
    return font;
}

SizedFont sized(const LOGFONTA& font, double aspect = 1) {
    return SizedFont(builtInMetrics(font), font, aspect);
}

// The faces were measured once; at an em of 2048 units a width is the width itself.
TEST(FaceMetrics, AreThoseOfTheMeasuredFaces) {
    struct Case {
        const char* face;
        LONG weight;
        BYTE italic;
        int ascent, descent, widthOfText;
    };
    const Case cases[] = {
        {"Arial", 400, 0, 1854, 434, 8878},      {"ARIAL", 700, 0, 1854, 434, 9216},
        {"Unheard of", 599, 1, 1854, 434, 8878}, {"Times New Roman", 400, 0, 1825, 443, 8872},
        {"times", 400, 0, 1825, 443, 8872},
    };
    for (const Case& c : cases) {
        const SizedFont font = sized(fontOf(c.face, -2048, c.weight, c.italic));
        EXPECT_EQ(font.Ascent(), c.ascent) << c.face;
        EXPECT_EQ(font.Descent(), c.descent) << c.face;
        EXPECT_EQ(font.WidthOf("AVAToTe"), c.widthOfText) << c.face << c.weight;
    }
    LOGFONTA serif = fontOf("", -2048);
    serif.lfPitchAndFamily = FF_ROMAN | VARIABLE_PITCH;
    EXPECT_EQ(sized(serif).Ascent(), 1825);
    LOGFONTA symbol = fontOf("Arial", -2048, FW_BOLD);
    symbol.lfCharSet = SYMBOL_CHARSET;
    EXPECT_EQ(&builtInMetrics(symbol), &builtInMetrics(fontOf("Symbol", 12)));
    EXPECT_NE(&builtInMetrics(symbol), &builtInMetrics(fontOf("Arial", 12)));
}

TEST(SizedFont, HasAPositiveHeightAsCellAndANegativeAsEm) {
    struct Case {
        LONG height;
        double em;
        int ascent, descent;
    };
    const Case cases[] = {
        {16, 16 * 2048 / 2288.0, 13, 3},
        {-16, 16, 14, 3},
        {0, 12, 11, 3},
        {1, 2048 / 2288.0, 1, 0},
        {-1, 1, 1, 0},
        {100, 100 * 2048 / 2288.0, 81, 19},
        {INT_MIN, 2147483648.0, 1944059904, 455081984},
    };
    for (const Case& c : cases) {
        const SizedFont font = sized(fontOf("Arial", c.height));
        EXPECT_DOUBLE_EQ(font.Em(), c.em) << c.height;
        EXPECT_EQ(font.Ascent(), c.ascent) << c.height;
        EXPECT_EQ(font.Descent(), c.descent) << c.height;
        if (c.height > 0) {
            EXPECT_EQ(font.Height(), c.height);
        }
    }
    EXPECT_EQ(sized(fontOf("Arial", 16)).InternalLeading(), 2);
}

// Every place is the rounded sum of exact widths: no error grows with the text.
TEST(SizedFont, PlacesAreRoundedSums) {
    tessalink::test::Dice dice(3);
    for (int run = 0; run < 200; ++run) {
        const LOGFONTA description = fontOf(
            dice.OneIn(2) ? "Arial" : "Times New Roman", static_cast<LONG>(dice.Below(80)) - 40,
            dice.OneIn(2) ? FW_BOLD : FW_NORMAL, static_cast<BYTE>(dice.Below(2)));
        const double aspect = dice.OneIn(2) ? 1 : 0.75;
        const SizedFont font = sized(description, aspect);
        const std::string text = dice.Text(dice.Below(60), "AVil .W\xE4\xFC\x80");
        double sum = 0;
        for (const char ch : text) sum += font.Advance(ch);
        EXPECT_EQ(font.WidthOf(text), std::floor(sum * font.Em() / 2048 * aspect + 0.5));
    }
}

TEST(SymbolText, ShowsTheCodesOfTheSymbolFace) {
    const std::pair<int, char32_t> cases[] = {
        {'a', 0x3B1},   {'D', 0x394},   {'m', 0x3BC},   {'-', 0x2212},  {'1', '1'},
        {0xA3, 0x2264}, {0xB3, 0x2265}, {0xB1, 0xB1},   {0xB7, 0x2022}, {0xB9, 0x2260},
        {0xA5, 0x221E}, {0xD6, 0x221A}, {0xE5, 0x2211}, {0xAE, 0x2192}, {0xFE, 0x23AD},
        {0x7E, 0x223C}, {0xC6, 0x2205}, {0xF0, ' '},    {0xFF, ' '},    {0x7F, ' '},
        {0x80, ' '},    {0x9F, ' '},    {0x1F, ' '},    {0, ' '},
    };
    for (const auto& [code, character] : cases) {
        EXPECT_EQ(tessalink::symbolToUnicode(static_cast<char>(code)), character) << code;
    }
}

// A code has a picture exactly where the face has a width; 0x80 is a logo that few fonts have.
TEST(SymbolText, HasCharactersWhereTheFaceHasWidths) {
    const auto& face = builtInMetrics(fontOf("Symbol", 12));
    for (int code = 0; code < 256; ++code) {
        if (code == 0x80) continue;
        const bool blank = tessalink::symbolToUnicode(static_cast<char>(code)) == ' ';
        const bool has = face.advances[static_cast<std::size_t>(code)] != 0;
        EXPECT_EQ(blank, !has || code == ' ') << code;
    }
}

}  // namespace
