#include "report/tidy/TemplateTidier.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/files/CFileException.h"
#include "tests/report/RandomTemplates.h"
#include "tests/report/RunTemplate.h"
#include "tests/report/tidy/PartedTemplates.h"
#include "tests/report/tidy/PlainRtf.h"
#include "tests/report/tidy/TidyText.h"

namespace tessalink::test {
namespace {

std::string page(const std::string& text) {
    return "{\\rtf1\\ansi{{" + text + "}}}";
}

/// Commands in the forms in which word processors write them.
struct JoinedCase {
    std::string before;
    std::string after;
};

const std::vector<JoinedCase> cJoined = {
    // Names, by groups and by formatting that is switched on and off.
    {"@Na}{\\b me, x", "@Name}{\\b , x"},
    {"@Na{\\b me}!", "@Name{\\b }!"},
    {"@Na\\b me\\b0  and", "@Name\\b \\b0  and"},
    {"@\\b(", "@\\b("},
    {"\\b@\\i N\\ul1 a1\\b0.", "\\b@Na1\\i \\ul1 \\b0."},
    {"@}\r\n{\\loch\r\nName", "@Name}\r\n{\\loch\r\n"},
    {"@Na\\'6d\\u101 ?.", "@Name."},
    {"@Na\\u8203 ?me\\u8203 ?.", "@Name\\u8203 ?."},
    {"@\r\nName.", "@Name\r\n."},
    {"@Text}{s.", "@Texts}{."},
    {"@}{@home", "@@}{home"},
    {"@Na{\\deleted gone}me.", "@Name{\\deleted gone}."},
    {"@Na{\\*\\bkmkstart m}{\\*\\bkmkend m}me.", "@Name{\\*\\bkmkstart m}{\\*\\bkmkend m}."},
    {"@Na{\\pict\\bin5 @]{}\\x}me.", "@Na{\\pict\\bin5 @]{}\\x}me."},
    // A paragraph mark that the command swallows goes along, one behind a group does not.
    {"@EN}{DIF and", "@ENDIF }{and"},
    {"@EN}{DIF}{  and", "@ENDIF  }{}{and"},
    {"@EN}{DIF\\par x", "@ENDIF\\par }{x"},
    {"@EN}{DIF\\par\r\nx", "@ENDIF\\par }{\r\nx"},
    {"@EN}{DIF\\par}{x", "@ENDIF}{\\par}{x"},
    {"@EN}{DIF}\\par {x", "@ENDIF}{}\\par {x"},
    {"@ENDIF}{ and", "@ENDIF}{ and"},
    {"@INCLUDE([s}{ub])\\par x", "@INCLUDE([sub])\\par }{x"},
    // Expressions.
    {"@COMP}{UTE (S\\i core\\i0 :0:1)x", "@COMPUTE (Score:0:1)}{\\i \\i0 x"},
    {"@COMPUTE(a\\endash b\\'96c\\u8722 -d\\_e\\~/\\tab 2\x96 1)", "@COMPUTE(a-b-c-d-e /\t2- 1)"},
    {"@IF(a>\\b =1)@THEN x", "\\b @IF(a>=1)@THEN x"},
    {"@ID(Report \\{2\\} \\endash  \\u8220\\'93\\'e4\\u945 a}{x)y",
     "@ID(Report \\{2\\} - \"\\'e4\\u945 ax)}{y"},
    // Texts stay as they are.
    {"@L}{ET(t=[\\u8220\\'93x} {\\b y)]}{)z", "@LET(t=[\\u8220\\'93x} {\\b y)])}{}{z"},
    {"@LET(t=[a {\\b\r\nb\\\\b\r\n\\i1\nc}\nd])", "@LET(t=[a {\\b \r\nb\\\\b\r\n\\i1 \nc}\nd])"},
    {"@LET(t=[a]}{]b])", "@LET(t=[a]]}{b])"},
    {"@LET(t=[a\\par b]}{+c)", "@LET(t=[a\\par b]+c)}{"},
    // What follows a condition may be left out, and what follows a block be moved.
    {"@I\\b F(x)@TH\\b0 EN yes", "\\b \\b0 @IF(x)@THEN yes"},
    {"@IF(x)}{@THEN yes", "}{@IF(x)@THEN yes"},
    {"@IF(x) @EN}{DIF", "@IF(x) @ENDIF}{"},
    {"@IF(x) }{@@", "@IF(x) }{@@"},
    {"@EL}{SE no", "@ELSE }{no"},
    {"@DEFER_ST}{ART(1)a@DEFER_END}{\\b @DEFER_START}{(2)b@DEFER_}{END@PRINT_}{DEFERRED(ASC)",
     "}{@DEFER_START(1)a}{\\b @DEFER_END@DEFER_START(2)}{b}{@DEFER_END@PRINT_DEFERRED(ASC)}{"},
    {"@DEFER_END}{x", "@DEFER_END}{x"},
    {"@DEFER_EN}{D\\par @DEFER_START(1)", "}{@DEFER_END\\par @DEFER_START(1)"},
    {"@COM}{MENT @Na}{me( @COMMENT}{_END }{x", "}{@COMMENT @Na}{me( @COMMENT_END }{}{x"},
    // A keyword ends before a word with another format; a longer one goes on.
    {"@ENDIF}{\\b Then", "@ENDIF}{\\b Then"},
    {"@EN}{DIF}{\\b Then", "@ENDIF}{}{\\b Then"},
    {"@IF(x)@THEN}{\\b yes", "@IF(x)@THEN}{\\b yes"},
    {"@DEFER}{_END", "}{@DEFER_END"},
    // The empty group that ends a name.
    {"@Name\\{\\}s", "@Name{}s"},
    {"@ENDIF\\{}{\\} x", "@ENDIF{}}{ x"},
    {"@ENDIF \\{\\}", "@ENDIF \\{\\}"},
    {"@Na{}{\\b me}", "@Na{}{\\b me}"},
    {"@Name\\{x", "@Name\\{x"},
    {"@{LET{}(a=1)}", "@LET{}{(a=1)}"},
    // No commands.
    {"a @ b @", "a @ b @"},
    {"ann\\'40x}{.org \\u64 @x", "ann\\'40x}{.org \\u64 @x"},
};

TEST(TemplateTidier, PutsCommandsTogether) {
    for (const JoinedCase& c : cJoined) {
        const Tidied tidied = tidy(page(c.before));
        EXPECT_EQ(tidied.text, page(c.after)) << c.before;
        EXPECT_EQ(tidied.isChanged, c.before != c.after) << c.before;
        EXPECT_EQ(tidied.fault, "");
    }
}

TEST(TemplateTidier, LeavesWhatItCannotDecide) {
    const std::string cases[] = {
        "@COMPUTE(a}{+\\par b)",
        "@COMPUTE(a}{+{\\footnote b)}",
        "@COMPUTE(a}{+",
        "@LET(a=[b}{",
        "{@L}{ET(a=[b}])",
        "@IF(a}{>1 @THEN x@ENDIF",
        "@ID(a}{\\u945 }{b)",
        "@ID(a}{\\uc2 \\u945 ab)",
        "{\\*\\fldinst @Na}{\\*\\fldinst @}",
        "{\\fonttbl @Na{\\b me};}",
        "{\\deleted @Na}{me}",
        "{\\pict\\bin3 a@b}",
        "\\u8211 @",
    };
    for (const std::string& text : cases) {
        const Tidied tidied = tidy(page(text));
        EXPECT_EQ(tidied.text, page(text));
        EXPECT_TRUE(tidied.IsLeft() && !tidied.isChanged) << text;
    }
}

TEST(TemplateTidier, AsksTheVariablesWhereANameEnds) {
    struct NameCase {
        std::string text;
        std::vector<std::string> variables;
        std::string after;
    };
    const NameCase cases[] = {
        {"@Name}{\\b s", {}, "@Names}{\\b "},
        {"@Name}{\\b s", {"Name"}, "@Name}{\\b s"},
        {"@Name}{\\b s", {"Name", "Names"}, "@Names}{\\b "},
        {"@Name}{\\b s @Name.", {}, "@Name}{\\b s @Name."},
        {"@Name}{\\b s @IF(x=1&Name)@THEN", {}, "@Name}{\\b s @IF(x=1&Name)@THEN"},
        {"@Name}{\\b s @LET(x=[Name])", {}, "@Names}{\\b  @LET(x=[Name])"},
        {"@N}{ame}{s @DEFINE(Na}{me)", {}, "@Name}{}{s @DEFINE(Name)}{"},
    };
    for (const NameCase& c : cases) {
        EXPECT_EQ(tidy(page(c.text), c.variables).text, page(c.after)) << c.text;
    }
}

TEST(TemplateTidier, TellsWhatItDidAndWhere) {
    const Tidied tidied =
        tidy("{\\rtf1\r\n{\\*\\xe @a}\r\n x{@Na}{\\b\r\nme} @COMPUTE(1\\endash 2)}");
    std::string told;
    for (const TidyFinding& one : tidied.findings) {
        told += std::to_string(one.place.line) + ":" + std::to_string(one.place.column) + " " +
                std::string(one.message.View()) + "\n";
    }
    EXPECT_EQ(told,
              "2:8 an @ in what is not shown (a font, a picture, the instruction of a field, "
              "deleted text): reports take it for a command; remove it in the word processor\n"
              "3:4 put together '@Name'\n"
              "4:5 typographic characters replaced in '@COMPUTE(1-2)'\n");
}

TEST(TemplateTidier, RefusesWhatIsNoRtf) {
    for (const char* text : {"", "{\\rt", "Dear @Na", "\xEF\xBB\xBF{\\rtf1}"}) {
        EXPECT_NE(tidy(text).fault.find("no RTF"), std::string::npos) << text;
    }
    EXPECT_NE(tidy("{\\rtf1 @Na}{\\b me").fault.find("cut"), std::string::npos);
    EXPECT_NE(tidy("{\\rtf1 \\bin9 }").fault.find("cut"), std::string::npos);
    EXPECT_NE(tidy("{\\rtf1 @Na}}").fault.find("closes no group"), std::string::npos);
}

/// What holds for every text: the same is shown, the same markup stands in the same order, groups
/// stay closed, and there is nothing left to do.
void expectSame(const std::string& rtf, const Tidied& tidied) {
    const PlainRtf before(rtf);
    const PlainRtf after(tidied.text);
    ASSERT_EQ(after.text, before.text) << rtf;
    ASSERT_TRUE(after.HasMarkupOf(before)) << rtf << "\n" << tidied.text;
    ASSERT_EQ(after.isBalanced, before.isBalanced) << rtf;
    const Tidied again = tidy(tidied.text);
    ASSERT_EQ(again.text, tidied.text) << rtf;
    ASSERT_FALSE(again.isChanged) << rtf;
}

std::string allCases() {
    std::string text;
    for (const JoinedCase& c : cJoined) text += "{{" + c.before + "}}\\par\r\n";
    return "{\\rtf1" + text + "}";
}

TEST(TemplateTidier, TakesEveryPrefix) {
    const std::string whole = allCases();
    expectSame(whole, tidy(whole));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::string rtf = whole.substr(0, length);
        ASSERT_NE(tidy(rtf).fault, "") << length;
    }
}

TEST(TemplateTidier, TakesEveryFlippedBit) {
    int good = 0;
    for (const JoinedCase& c : cJoined) {
        const std::string whole = page(c.before);
        for (std::size_t bit = 0; bit < 8 * whole.size(); ++bit) {
            std::string rtf = whole;
            rtf[bit / 8] = static_cast<char>(rtf[bit / 8] ^ (1 << bit % 8));
            const Tidied tidied = tidy(rtf);
            if (!tidied.fault.empty()) continue;
            ++good;
            expectSame(rtf, tidied);
            if (HasFatalFailure()) return;
        }
    }
    EXPECT_GT(good, 5000);
}

/// The outcome of a report: what it shows, or its message.
std::string shownReport(const std::string& text, std::uint64_t seed) {
    VarTable variables;
    Dice dice(seed);
    fillVariables(variables, dice);
    const Run run = runTemplate(text, variables);
    if (!run.result) return run.error.what();
    const PlainRtf report(run.output);
    EXPECT_TRUE(report.isBalanced) << text << "\n" << run.output;
    EXPECT_EQ(report.depth, 0) << text << "\n" << run.output;
    std::string shown = report.text;
    for (std::size_t at; (at = shown.find("(gone)")) != std::string::npos;) shown.erase(at, 6);
    return shown;
}

TEST(TemplateTidier, GivesTheReportOfTheUntouchedTemplate) {
    constexpr std::uint64_t count = 3000;
    int parted = 0;
    int good = 0;
    for (std::uint64_t seed = 0; seed < count; ++seed) {
        Dice dice(seed);
        const std::string text = page(templateGrammar().Write('S', 5, dice));
        const std::string rtf = part(text, dice, 1 + seed % 4);
        const Tidied tidied = tidy(rtf, {"i", "j", "d", "s", "t", "v", "w", "x"});
        expectSame(rtf, tidied);
        ASSERT_EQ(shownReport(tidied.text, seed), shownReport(text, seed)) << text << "\n"
                                                                           << rtf << "\n"
                                                                           << tidied.text;
        parted += tidied.isChanged;
        good += !shownReport(text, seed).ends_with('!');
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(parted, 2000);
    EXPECT_GT(good, 1000);
}

TEST(TemplateTidier, ReadsTheFormsOfOtherWordProcessors) {
    const std::string start = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 A;}{\\f1 B;}}\r\n";
    const std::string templates[] = {
        // A group for each stretch of letters, with marks of revisions and of words that it knows.
        "\\pard\\plain \\ltrpar {\\rtlch\\fcs1 \\af0 \\ltrch\\fcs0 \\insrsid101 Dear "
        "@N}{\\*\\xmlopen\\xmlns1"
        "{\\factoidname PersonName}}{\\rtlch\\fcs1 \\ab\\af0 \\ltrch\\fcs0 \\b\\insrsid102 "
        "am}{\\*\\xmlclose}"
        "{\\insrsid101 e, @IF(}{\\insrsid103 Age\\u8211\\'96}{\\insrsid101 4>3)@TH}{\\insrsid104 "
        "EN yes@EN}"
        "{\\insrsid101 DIF.\r\n\\par }",
        // Formatting that is switched on and off.
        "{\\*\\generator G;}\\viewkind4\\uc1 \r\n\\pard\\f0\\fs22 Dear @Na\\b me\\b0 , @IF(\\i "
        "Age\\i0\\f1"
        "-4>3)@TH\\ul EN\\ulnone  yes@ENDI\\cf1 F\\cf0 .\\par\r\n",
        // The same on lines of its own, and lines that a backslash ends.
        "\\pard\\tx560\\pardirnatural\n\n\\f0\\fs24 \\cf0 Dear @Na\n\\f1\\b me\n\\f0\\b0 , "
        "@IF(Age-4\n\\f1\\b >3"
        "\n\\f0\\b0 )@TH\n\\f1\\b EN\n\\f0\\b0  yes@ENDIF.\\\n",
        // Groups within groups.
        "{\\pard\\plain{\\f0\\fs24\\lang1033{\\*\\listtag0}Dear @Na{\\b{\\i me}}, "
        "@IF({\\super{Age}-}4>3{)}"
        "}{\\f0 @TH{\\f1 EN} yes{@EN{\\i}}DIF.}\\par}",
    };
    for (const std::string& text : templates) {
        const Tidied tidied = tidy(start + text + "}");
        expectSame(start + text + "}", tidied);
        VarTable variables;
        variables.AddVar("Name", "Ann");
        variables.AddVar("Age", 34);
        const auto run = runTemplate(tidied.text, variables);
        EXPECT_EQ(run.result ? PlainRtf(run.output).text : run.error.what(), "Dear Ann, yes.\n")
            << tidied.text;
    }
}

TEST(TemplateTidier, BlocksMakeNoDifference) {
    constexpr std::size_t block = 262144;
    const std::string whole = allCases();
    const std::string tidied = tidy(whole).text;
    for (std::size_t k = 0; k < whole.size(); k += 7) {
        const std::string filler(block - k, 'x');
        EXPECT_EQ(tidy("{\\rtf1 " + filler + whole + "}").text, "{\\rtf1 " + filler + tidied + "}");
    }
}

TEST(TemplateTidier, KeepsItsLimits) {
    constexpr std::size_t deep = 1000000;
    const std::string groups = std::string(deep, '{') + "@Na{\\b me}" + std::string(deep, '}');
    const Tidied nested = tidy("{\\rtf1" + groups + "@Na{\\b me}}");
    EXPECT_EQ(nested.text, "{\\rtf1" + groups + "@Name{\\b }}");
    EXPECT_TRUE(nested.IsLeft());

    const std::string markup(TemplateTidier::cMaxMarkup, 'f');
    const std::string command = "@COMPUTE(1{\\*\\x " + markup + "}+2) @Na";
    const Tidied wide = tidy(page(command + "}{me"));
    EXPECT_TRUE(wide.text == page(command + "me}{"));
    EXPECT_TRUE(wide.IsLeft());
    const std::string text(TemplateTidier::cMaxLength, 't');
    const std::string start = "@L}{ET(t=[" + text + "])@Na";
    const Tidied longText = tidy(page(start + "}{me"));
    EXPECT_TRUE(longText.text == page(start + "me}{"));
    EXPECT_TRUE(longText.IsLeft());
}

/// A file whose k-th read or write fails.
class FailingTemplate : public CMemFile {
public:
    FailingTemplate(std::string_view text, int failAt) {
        CMemFile::Write(text.data(), text.size());
        m_left = failAt;
    }

    std::size_t Read(void* buffer, std::size_t count) override {
        pass();
        return CMemFile::Read(buffer, count);
    }
    void Write(const void* buffer, std::size_t count) override {
        pass();
        CMemFile::Write(buffer, count);
    }

private:
    void pass() {
        if (--m_left == 0) AfxThrowFileException(CFileException::hardIO);
    }

    int m_left = 0;
};

TEST(TemplateTidier, PassesFaultsOfFilesOn) {
    const std::string text = page(std::string(400000, 'x') + "@Na}{me @Name");
    const auto run = [&](int failRead, int failWrite) {
        FailingTemplate file(text, failRead);
        FailingTemplate output({}, failWrite);
        try {
            TemplateTidier(file).Tidy(output, [](const TidyFinding&) {});
            return true;
        } catch (const CFileException&) {
            return false;
        }
    };
    for (const bool isRead : {false, true}) {
        int k = 1;
        while (k < 1000 && !run(isRead ? k : 0, isRead ? 0 : k)) ++k;
        EXPECT_GT(k, 5);
        EXPECT_LT(k, 1000);
    }
}

}  // namespace
}  // namespace tessalink::test
