#include <gtest/gtest.h>

#include <string>

#include "tests/report/RunTemplate.h"

namespace tessalink::test {
namespace {

/// "LINE:COLUMN" of the fault, and of its place in an evaluated text.
std::string linesOf(const ParseException& fault) {
    const auto shown = [](const TextPlace& place) {
        return std::to_string(place.line) + ":" + std::to_string(place.column);
    };
    std::string places = shown(fault.GetPlace());
    if (fault.GetTextPlace().IsKnown()) places += " in " + shown(fault.GetTextPlace());
    return places;
}

struct PlaceCase {
    std::string text;
    const char* places;
};

const PlaceCase cCases[] = {
    // What ends a line.
    {"@u", "1:1"},
    {"abc@u", "1:4"},
    {"a\r\nb\r\n @u", "3:2"},
    {"a\nb\n@u", "3:1"},
    {"a\rb\r@u", "3:1"},
    {"\r\r\n\n@u", "4:1"},
    {"\n\r@u", "3:1"},
    // The token that is wrong.
    {"@IF(1)x", "1:7"},
    {"@IF(1)\r\n  x", "2:3"},
    {"@IF(1)@THEN \nx", "2:2"},
    {"@COMPUTE(1 +\n  u)", "2:3"},
    {"@COMPUTE(1/0)", "1:13"},
    {"@COMPUTE(1\n(", "2:1"},
    {"@DEFINE(a,\n a)", "2:2"},
    {"@DEFINE(a)@LET(a=[x", "1:18"},
    {"@DEFINE(a)@LET(a \n1)", "2:1"},
    {"@ID(\n\nx", "3:2"},
    {"@COMMENT\n x", "2:3"},
    {"x\n@ENDIF y", "2:1"},
    {"\n@", "2:1"},
    // Evaluated texts: the place of the @EVAL, and the position in the text.
    {"\n @EVAL([@u])", "2:2 in 1:1"},
    {"@DEFINE(t)@LET(t=[a\n@COMPUTE(]+[1 2)])\n@EVAL(t)", "3:1 in 1:13"},
    {"@DEFINE(t)@LET(t=\nEVAL([12@u]))", "2:1 in 1:3"},
    {"x@EVAL([ab@EVAL([cde@u]])])", "1:2 in 1:4"},
    {"@CAP(EVAL([@COMPUTE(]+[u)]))", "1:6 in 1:10"},
    // Deferred blocks: the place in the file.
    {"@DEFER_START(1)\nab@DEFER_END@DEFER_START(0)\r\n\r\n.@u@DEFER_END\n@PRINT_DEFERRED(ASC)",
     "4:2"},
    {"@DEFER_START(1)@DEFER_START(1)\n\n.\n@u@DEFER_END@PRINT_DEFERRED(ASC)\n@DEFER_END\n"
     "@PRINT_DEFERRED(ASC)",
     "4:1"},
    {"@DEFER_START(1)\n.\n@EVAL([abc@u])@DEFER_END@PRINT_DEFERRED(ASC)", "3:1 in 1:4"},
    {"@EVAL([@DEFER_START(1)abc@u@DEFER_END@PRINT_DEFERRED(ASC)])", "1:1 in 1:19"},
    {"@DEFER_START(1)x@IF(1)@THEN@DEFER_END\n@PRINT_DEFERRED(ASC)", "1:28"},
    {"@DEFER_START(1)x@DEFER_END \ny", "2:1"},
    {"@DEFER_START(1)\nx", "2:2"},
    // Far into the file, over block boundaries.
    {std::string(10000, '\n') + "  @u", "10001:3"},
    {std::string(4095, 'x') + "\r\n@u", "2:1"},
    {std::string(4096, 'x') + "@u", "1:4097"},
};

TEST(Places, OfFaultsInLinesAndColumns) {
    for (const PlaceCase& c : cCases) {
        for (const int isScrambled : {0, 1}) {
            VarTable variables;
            const std::string text = isScrambled ? scrambled(c.text) : c.text;
            const auto run = runTemplate(text, variables, nullptr, isScrambled);
            EXPECT_EQ(run.result, 0) << c.text;
            EXPECT_EQ(linesOf(run.error), c.places) << c.text;
            EXPECT_EQ(run.error.GetPlace().file, "test.rtf");
            EXPECT_TRUE(run.error.GetIncludes().empty());
        }
    }
}

TEST(Places, AreThrownWithoutASink) {
    for (const std::string text : {"\n@u", "\n@DEFINE(a)@LET(a=[x"}) {
        CMemFile file(text);
        CMemFile output;
        VarTable variables;
        FileParser parser(file, output, variables, 0);
        try {
            parser.Parse(nullptr);
            ADD_FAILURE() << text;
        } catch (const ParseException& fault) {
            EXPECT_EQ(fault.GetPlace().line, 2u);
            char message[8] = "#######";
            unsigned int help = 9;
            EXPECT_TRUE(fault.GetErrorMessage(message, 4, &help));
            EXPECT_EQ(std::string(message, 8),
                      std::string(fault.what(), 3) + std::string("\0###", 4) + '\0');
            EXPECT_EQ(help, 0u);
            EXPECT_TRUE(fault.GetErrorMessage(nullptr, 4));
            EXPECT_TRUE(fault.GetErrorMessage(message, 0));
        }
    }
}

}  // namespace
}  // namespace tessalink::test
