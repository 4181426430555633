#include "report/check/FaultFinder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "tests/report/RunTemplate.h"
#include "tests/report/check/PlantedFaults.h"

namespace tessalink::test {
namespace {

using testing::HasSubstr;

struct Found {
    std::vector<TemplateFault> faults;
    bool isComplete = true;
};

Found find(std::string text, int isScrambled = 0) {
    if (isScrambled) text = scrambled(text);
    CMemFile file{std::string_view(text)};
    file.SetFilePath("test.rtf");
    CMemFile output;
    VarTable definitions;
    FaultFinder finder(file, output, definitions, isScrambled);
    Found found{finder.FindFaults(), finder.IsComplete()};
    EXPECT_EQ(output.GetLength(), 0u);
    return found;
}

/// Line and column of an offset.
std::pair<std::uint64_t, std::uint64_t> lineColumn(std::string_view text, std::size_t offset) {
    std::uint64_t line = 1;
    std::size_t start = 0;
    for (std::size_t i = 0; i < offset; ++i) {
        if (text[i] != '\n') continue;
        ++line;
        start = i + 1;
    }
    return {line, offset - start + 1};
}

std::string placeText(std::uint64_t line, std::uint64_t column, std::string_view message) {
    return std::to_string(line) + ":" + std::to_string(column) + ": " + std::string(message);
}

std::string toldOf(const TemplateFault& fault) {
    return placeText(fault.place.line, fault.place.column, fault.message.View());
}

bool hasNote(const TemplateFault& fault, std::string_view start) {
    return std::any_of(fault.notes.begin(), fault.notes.end(),
                       [&](const FaultNote& note) { return note.text.View().starts_with(start); });
}

TEST(FaultFinder, FindsNothingInTemplatesThatRun) {
    Dice dice(4);
    Grammar grammar = templateGrammar();
    int ran = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string text = "@DEFINE(n)" + grammar.Write('S', 8, dice);
        VarTable variables;
        fillVariables(variables, dice);
        if (!runTemplate(text, variables).result) continue;
        ++ran;
        const Found found = find(text);
        ASSERT_TRUE(found.faults.empty()) << text << "\n" << toldOf(found.faults.front());
    }
    EXPECT_GT(ran, 1000);
}

TEST(FaultFinder, FindsExactlyThePlantedFaults) {
    constexpr std::size_t cReach = 40;  // of the words that are told
    Dice dice(17);
    for (int i = 0; i < 3000; ++i) {
        const PlantedTemplate planted(dice, static_cast<int>(dice.Below(9)));
        const std::string& text = planted.Text();
        std::vector<std::string> expected;
        for (const PlantedFault& fault : planted.Faults()) {
            const auto [line, column] = lineColumn(text, fault.offset);
            expected.push_back(placeText(line, column, fault.message));
        }
        const Found found = find(text, static_cast<int>(dice.Below(2)));
        std::vector<std::string> told;
        for (const TemplateFault& fault : found.faults) told.push_back(toldOf(fault));
        ASSERT_THAT(told, testing::UnorderedElementsAreArray(expected)) << text;
        for (std::size_t k = 0; k < expected.size(); ++k) {
            const PlantedFault& fault = planted.Faults()[k];
            const auto at = std::find(told.begin(), told.end(), expected[k]) - told.begin();
            const TemplateFault& got = found.faults[static_cast<std::size_t>(at)];
            const std::size_t word = text.rfind(fault.word, fault.offset);
            const std::string between = text.substr(word, fault.offset - word);
            if (between.size() < cReach && between.find("\\par") == std::string::npos) {
                ASSERT_THAT(got.words, HasSubstr(fault.word)) << expected[k] << "\n" << text;
            }
            if (fault.note == cAnyNote) continue;
            if (fault.note.empty()) {
                ASSERT_TRUE(got.notes.empty())
                    << expected[k] << " " << got.notes.front().text.View() << "\n"
                    << text;
            } else {
                ASSERT_TRUE(hasNote(got, fault.note)) << expected[k] << "\n" << text;
            }
        }
    }
}

TEST(FaultFinder, TellsFirstWhatReportsMeetFirst) {
    Dice dice(23);
    Grammar grammar = templateGrammar();
    int compared = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::string before = "@DEFINE(n)" + grammar.Write('S', 6, dice);
        VarTable variables;
        fillVariables(variables, dice);
        VarTable again;
        Dice other(static_cast<std::uint64_t>(i));
        fillVariables(again, other);
        if (!runTemplate(before, again).result) continue;
        const FaultKind& kind = dice.Pick(cFaultKinds);
        std::string text = before + "{} @LET(n=1)" + std::string(kind.text) + "{} " +
                           grammar.Write('S', 4, dice) + "@IF(1+)@THEN";
        std::erase(text, '^');
        std::erase(text, '$');
        VarTable fresh;
        for (const char* name : {"IFx", "not", "x"}) fresh.AddVar(name, 1);
        Dice same(static_cast<std::uint64_t>(i));
        fillVariables(fresh, same);
        const test::Run run = runTemplate(text, fresh);
        const Found found = find(text);
        ASSERT_FALSE(found.faults.empty()) << text;
        ++compared;
        const TextPlace& place = run.error.GetPlace();
        ASSERT_EQ(toldOf(found.faults.front()),
                  placeText(place.line, place.column, run.error.what()))
            << text;
    }
    EXPECT_GT(compared, 1000);
}

TEST(FaultFinder, ReadsEveryPrefixToItsEnd) {
    const std::string text =
        "{\\rtf1 Dear @Name, @IF(a>1 & ~b)@THEN x@ELSE @DEFINE(c)@LET(c=[a]+CAP([b]]]);c=3)@ENDIF"
        "\\par @DEFER_START(1.5)@COMMENT x @COMMENT_END @COMPUTE(a/2:3:(-1))@DEFER_END @ID(x) "
        "@DEFER_START(b)@DEFER_START(1)y@DEFER_END@PRINT_DEFERRED(ASC)@DEFER_END"
        "@PRINT_DEFERRED(DSC)@COMMA_LIST([a],TEXT(3;2);[or])@EVAL([@x])@CALL(f)@LINK @ID(t)ann@@x}";
    constexpr std::size_t mostOpen = 4;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::string prefix = text.substr(0, length);
        CMemFile file{std::string_view(prefix)};
        CMemFile output;
        VarTable definitions;
        TemplateChecker checker(file, output, definitions, 0);
        ParseException first;
        const bool isGood = checker.Parse(&first) != 0;
        const Found found = find(prefix, static_cast<int>(length % 2));
        EXPECT_TRUE(found.isComplete);
        EXPECT_LE(found.faults.size(), mostOpen) << prefix;
        ASSERT_EQ(found.faults.empty(), isGood) << prefix;
        if (isGood) continue;
        const TextPlace& place = first.GetPlace();
        EXPECT_EQ(toldOf(found.faults.front()), placeText(place.line, place.column, first.what()));
    }
}

TEST(FaultFinder, TellsWhatIsIndependentOfAnotherFault) {
    struct Case {
        const char* text;
        const char* told;
    };
    const Case cases[] = {
        {"@IF(a==1)@THENx@ENDIF",
         "1:7: Unexpected token in expression! 1:10: @THEN expected after condition! "},
        {"@IF(a==1)@THEN x", "1:7: Unexpected token in expression! 1:17: @ENDIF expected! "},
        {"@IF(a==1 x", "1:7: Unexpected token in expression! "},
        {"@IF(a)@THEN @IF x@ENDIF y", "1:17: Left parenthesis expected after @IF! "},
        {"@IF(a)@THEN @IF x@ENDIF y@ENDIF@ENDIF",
         "1:17: Left parenthesis expected after @IF! 1:32: End of File expected! "},
        {"@LET(a=1+;b=*;c=3;d=[x]+1)",
         "1:10: Unexpected token in expression! 1:13: Unexpected token in expression! "
         "1:25: Unexpected token in string expression! "},
        {"@IF(a)@THEN@DEFER_START(1)x@DEFER_END@ENDIF@IF(b)@THEN@DEFER_START(2)y@DEFER_END@ENDIF"
         "@PRINT_DEFERRED(ASC)",
         "1:38: @PRINT_DEFERRED expected! 1:81: @PRINT_DEFERRED expected! "},
        {"@DEFER_START(1)a@DEFER_START(2)b@DEFER_END@PRINT_DEFERRED(ASC)c",
         "1:64: @DEFER_END expected! "},
        {"@DEFER_START(1)a@PRINT_DEFERRED(ASC)c@COMPUTE()",
         "1:48: @DEFER_END expected! 1:47: Unexpected token in expression! "},
        {"@IF(a)@THEN @COMMENT x@ENDIF\\par @COMPUTE()",
         "1:44: End of Comment Missing! 1:43: Unexpected token in expression! "},
        {"@CAP([x) @COMPUTE()\\par @COMMA_LIST([y],[z])",
         "1:40: Right parenthesis expected after CAP! 1:19: Unexpected token in expression! "},
    };
    for (const Case& c : cases) {
        std::string told;
        for (const TemplateFault& fault : find(c.text).faults) told += toldOf(fault) + " ";
        EXPECT_EQ(told, c.told) << c.text;
    }
}

TEST(FaultFinder, ShowsTheWordsOfThePage) {
    struct Case {
        const char* text;
        const char* words;
    };
    const Case cases[] = {
        {"{\\rtf{\\fonttbl{\\f0 Arial;}}Dear {\\b Mr} Smith, @THEN your",
         "Dear Mr Smith, @THEN your"},
        {"{\\rtf first\\par Gr\\'fc\\'dfe \\u8211? @THEN x\\par last",
         "Gr\u00FC\u00DFe \u2013 @THEN x"},
        {"{\\rtf one li\r\nne\\line @THEN\\cell next", "@THEN"},
        {"{\\rtf words before {\\*\\hidden @THEN} and after", "words before and after"},
        {"{\\rtf the only words\\par @IF(1)@THEN\\par\\par {\\pict 00}}", "@IF(1)@THEN"},
        {"{\\rtf a{\\footnote in the note @THEN of it}b", "in the note @THEN of it"},
        {"no RTF\n@THEN at all", "no RTF @THEN at all"},
        {"{\\rtf a word that is much longer than forty characters: "
         "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz@THEN",
         "abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz@THEN"},
        {"{\\rtf what stands far before the fault is left out, and so is @THEN what stands far "
         "behind the place where it was found",
         "before the fault is left out, and so is @THEN what stands far behind the place"},
    };
    for (const Case& c : cases) {
        const Found found = find(c.text);
        ASSERT_FALSE(found.faults.empty()) << c.text;
        if (std::string_view(c.words).starts_with("abc")) {
            EXPECT_THAT(found.faults.front().words, HasSubstr("xyz@THEN"));
        } else {
            EXPECT_EQ(found.faults.front().words, c.words) << c.text;
        }
    }
}

TEST(FaultFinder, EndsAtItsBounds) {
    const auto repeated = [](std::string_view text, int count) {
        std::string all;
        for (int i = 0; i < count; ++i) all += text;
        return all;
    };
    constexpr int many = 100000;
    struct Case {
        std::string text;
        std::size_t faults;
        bool isComplete;
    };
    const Case cases[] = {
        {repeated("@THEN@ELSE@ENDIF x", FaultFinder::cMaxFaults), FaultFinder::cMaxFaults, true},
        {repeated("@THEN@ELSE@ENDIF x", FaultFinder::cMaxFaults + 1), FaultFinder::cMaxFaults,
         false},
        {repeated("@COMMENT x\\par ", many), FaultFinder::cMaxFaults, false},
        {repeated("@COMMENT @COMMENT_ENDx ", many), FaultFinder::cMaxFaults, false},
        {repeated("@CAP([x ", FaultFinder::cMaxEndless), FaultFinder::cMaxEndless, true},
        {repeated("@CAP([x ", many), FaultFinder::cMaxEndless + 1, false},
        {repeated("@DEFER_START(1)", many), FaultFinder::cMaxFaults, false},
        {repeated("@ID(\\par ", many), FaultFinder::cMaxEndless + 1, false},
        {repeated("{", 1000000) + "@THEN", 1, true},
        {repeated("@IF(1)@THEN ", many), FaultFinder::cMaxFaults, false},
        {repeated("@IF(1)@THEN ", 1000000) + repeated("@ENDIF", 1000000), 1, true},
        {repeated("@IF(", many), FaultFinder::cMaxFaults, false},
        {repeated("@COMPUTE(", many), FaultFinder::cMaxFaults, false},
        {"@CAP(" + repeated("CAP(", many), 1, true},
        {"@LET(n=" + repeated("(", many), 1, true},
        {"@LET(" + repeated("n=1+;", many) + "n=1)", FaultFinder::cMaxFaults, false},
        {repeated("@", many), 0, true},
        {repeated("@ ", many), FaultFinder::cMaxFaults, false},
        {repeated("@IFx ", many) + "@THEN", 1, true},
    };
    for (const Case& c : cases) {
        const Found found = find(c.text);
        EXPECT_EQ(found.faults.size(), c.faults) << c.text.substr(0, 40);
        EXPECT_EQ(found.isComplete, c.isComplete) << c.text.substr(0, 40);
    }
}

}  // namespace
}  // namespace tessalink::test
