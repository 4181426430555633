// The commands `score` and `age`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/apps/CommandLine.h"
#include "tests/support/Environment.h"

namespace tessalink::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* cNorms =
    "Scale,sex,age,raw,T,z,Note,reliability\n"
    "Fear,f,6:0-6:5,0-9,40,-1,-,0.75\n"
    "Fear,f,6:6-8:11,0-4,41,-0.9,1,\n"
    "Fear,f,6:6-8:11,5-9,45,-0.5,-,\n"
    "Fear,m,6-8,0-9,60,1,1,\n"
    "Calm,*,*,0-9,50,0,2,0.91\n"
    "Calm,*,*,10,150,0.5,2,\n";

class ScoreCommands : public CommandLine {
protected:
    ScoreCommands() { folder.Write("norms.csv", cNorms); }

    /// Scores the variables to standard output.
    Finished Score(const std::string& raw, const Strings& more = {}) const {
        folder.Write("raw.tsv", raw);
        Strings arguments = {"score", "raw.tsv", "--norms", "norms.csv", "-o", "-"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return Run(arguments);
    }
};

TEST_F(ScoreCommands, AddsStandardScores) {
    struct Case {
        std::string raw;
        Strings more;
        std::string results;
    };
    const std::string calm = "Calm\tint\t3\n";
    const std::string calmScores = "Calm_T\tint\t50\nCalm_z\tdouble\t0\nCalm_Note\tint\t2\n";
    const std::string fear = "Fear\tint\t4\nsex\tstring\tf\n";
    const std::string at7 = "Fear_T\tint\t41\nFear_z\tdouble\t-0.9\nFear_Note\tint\t1\n";
    const std::string at6 = "Fear_T\tint\t40\nFear_z\tdouble\t-1\n";
    const Case cases[] = {
        {calm, {}, calmScores},
        {"x\tstring\ta\\nb\n" + calm + "y\tdouble\t0.1\n", {}, calmScores},
        {fear, {"--age", "7:3"}, at7},
        {fear, {"--age", "7"}, at7},
        {fear + "Age\tint\t3\n", {"--age", "6:5"}, at6},
        {fear + "Age\tint\t7\n", {}, at7},
        {fear + "Age\tstring\t6:6\n", {}, at7},
        {fear + "BirthDate\tstring\t2000-01-31\nTestDate\tstring\t07/30/2006\nAge\tint\t8\n",
         {},
         at6},
        {fear + "BirthDate\tstring\t1/31/2000\nTestDate\tstring\t2006-07-31\n", {}, at7},
        {fear + "BirthDate\tstring\tx\n", {"--birth=2000-01-31", "--test=2006-07-30"}, at6},
        {fear + "TestDate\tstring\t2006-07-31\n", {"--birth=2000-01-31"}, at7},
        {"Fear\tint\t4\n", {"--age=8", "--key", "sex=f"}, at7},
        {"Fear\tint\t4\nsex\tint\t1\n", {"--age=8", "--key=sex=f"}, at7},
        {fear + calm, {"--age=8:11"}, at7 + calmScores},
        {calm,
         {"--confidence", "90"},
         "Calm_T\tint\t50\nCalm_T_Low\tdouble\t45.0654\nCalm_T_High\tdouble\t54.934\n"
         "Calm_T_Range\tstring\t45-55\n"
         "Calm_z\tdouble\t0\nCalm_z_Low\tdouble\t-0.4934\nCalm_z_High\tdouble\t0.4934\n"
         "Calm_z_Range\tstring\t-0.49 to 0.49\nCalm_Note\tint\t2\n"},
    };
    for (const Case& c : cases) {
        const Finished scored = Score(c.raw, c.more);
        EXPECT_EQ(scored.exitCode, 0) << scored.err;
        // Of doubles only the first digits are compared.
        std::string expected = c.raw + c.results;
        std::string found = scored.out;
        std::size_t place = 0;
        for (std::size_t line = 0; line < expected.size();) {
            const std::size_t end = expected.find('\n', line);
            const std::string text = expected.substr(line, end - line);
            EXPECT_EQ(found.substr(place, text.size()), text) << c.raw;
            place = found.find('\n', place) + 1;
            line = end + 1;
        }
        EXPECT_EQ(place, found.size()) << found;
    }
}

TEST_F(ScoreCommands, WarnsOfWhatIsLeftOut) {
    const Finished scored = Score("Fear\tint\t5\nsex\tstring\tf\n", {"--age=7", "--confidence=90"});
    EXPECT_EQ(scored.exitCode, 0);
    EXPECT_THAT(scored.out, testing::EndsWith("Fear_T\tint\t45\nFear_z\tdouble\t-0.5\n"));
    EXPECT_THAT(scored.err,
                HasSubstr("raw.tsv:1:10: warning: the norms have no Note for this raw"));
    EXPECT_THAT(scored.err, HasSubstr("norms.csv:6:1: warning: no raw score 'Calm' in raw.tsv\n"));
    EXPECT_THAT(scored.err, HasSubstr("tessalink: --confidence: no confidence intervals"));
    // A group that never has a score of the kind is no cause.
    const Finished never = Score("Fear\tint\t5\nsex\tstring\tf\nCalm\tint\t0\n", {"--age=6:0"});
    EXPECT_EQ(never.err, "");
}

TEST_F(ScoreCommands, TellsFaultsWithTheirPlaces) {
    const std::string fear = "Fear\tint\t4\nsex\tstring\tf\n";
    const std::string calm = "Calm\tint\t3\n";
    struct Case {
        std::string raw;
        Strings more;
        int exitCode;
        const char* err;
    };
    const Case cases[] = {
        {"Calm\tint\t11\n", {}, 1, "raw.tsv:1:10: error: raw score 11 is outside the norms of "},
        {"Calm\tdouble\t3\n", {}, 1, "raw.tsv:1:13: error: 'Calm' is a raw score"},
        {"Calm\tint\tx\n", {}, 1, "raw.tsv:1:10: error: 'x' is not a whole number"},
        {"calm\tint\t3\n", {}, 1, "raw.tsv:1:1: error: no raw score"},
        {fear, {}, 1, "raw.tsv:1:10: error: the norms with Scale Fear, sex f depend on age"},
        {"Fear\tint\t4\n", {"--age=7"}, 1, "raw.tsv:1:10: error: the norms with Scale Fear depend"},
        {"Fear\tint\t4\nsex\tstring\td\n",
         {"--age=7"},
         1,
         "raw.tsv:2:12: error: no norms for sex 'd' with Scale Fear: the table has f, m\n"},
        {fear, {"--age=7", "--key=sex=d"}, 2, "tessalink: --key sex: no norms for sex 'd' with"},
        {"Fear\tint\t4\nsex\tdouble\t1\n", {"--age=7"}, 1, "raw.tsv:2:12: error: 'sex' must be"},
        {fear, {"--age=6"}, 2, "tessalink: --age: the norms of Fear need an age in years and mont"},
        {fear + "Age\tint\t6\n", {}, 1, "raw.tsv:3:9: error: the norms of Fear need an age"},
        {fear + "Age\tint\t9\n", {}, 1, "raw.tsv:3:9: error: no norms for age 9:0 with Scale Fe"},
        {fear, {"--age=9:0"}, 2, "tessalink: --age: no norms for age 9:0 with Scale Fear, sex"},
        {fear + "Age\tstring\tsix\n", {}, 1, "raw.tsv:3:12: error: 'six' is not an age"},
        {fear + "Age\tdouble\t6.5\n", {}, 1, "raw.tsv:3:12: error: 'Age' must be"},
        {fear, {"--age=6-8"}, 2, "tessalink: --age: '6-8' is not an age"},
        {fear, {"--birth=2000-01-01"}, 2, "tessalink: --birth: it needs --test"},
        {fear, {"--test=today"}, 2, "tessalink: --test: it needs --birth"},
        {fear, {"--birth=2000-02-30", "--test=today"}, 2, "tessalink: --birth: '2000-02-30' is no"},
        {fear + "BirthDate\tstring\t2000-13-01\nTestDate\tstring\t2000-01-01\n",
         {},
         1,
         "raw.tsv:3:18: error: '2000-13-01' is not a date: write YYYY-MM-DD or MM/DD/YYYY\n"},
        {fear + "BirthDate\tstring\t2000-01-02\nTestDate\tstring\t2000-01-01\n",
         {},
         1,
         "raw.tsv:4:17: error: the test lies before the birth\n"},
        {calm + "Calm_z\tint\t0\n", {}, 1, "raw.tsv:2:12: error: 'Calm_z' is the name of a resu"},
        {calm, {"--key", "sex"}, 2, "tessalink: --key sex: write NAME=VALUE"},
        {calm, {"--key", "x=y"}, 2, "tessalink: --key x=y: write NAME=VALUE"},
        {fear, {"--key=sex=m", "--key=sex=f"}, 2, "tessalink: --key sex=f: sex is given twice."},
        {calm, {"--key", "Scale=y"}, 2, "tessalink: --key Scale=y: write NAME=VALUE"},
        {calm, {"--key", "sex=\xE2\x89\xA5"}, 2, "tessalink: 'sex="},
        {calm, {"--confidence=100"}, 2, "--confidence: Value 100"},
        {calm, {"--confidence=nan"}, 2, "--confidence: Value nan is not a number"},
        {calm, {"--age=7", "--test=today"}, 2, "--age excludes"},
        {calm, {"--norms=-", "-"}, 2, ""},
    };
    for (const Case& c : cases) {
        const Finished scored = Score(c.raw, c.more);
        EXPECT_EQ(scored.exitCode, c.exitCode) << c.err;
        EXPECT_EQ(scored.out, "") << c.err;
        EXPECT_THAT(scored.err, HasSubstr(c.err));
        EXPECT_NE(scored.err, "");
    }
    folder.Write("out.tsv", "before");
    EXPECT_EQ(Run({"score", "raw.tsv", "--norms", "none.csv", "-o", "out.tsv"}).err,
              "tessalink: none.csv: the file does not exist.\n");
    folder.Write("raw.tsv", "Calm\tint\t11\n");
    EXPECT_EQ(Run({"score", "raw.tsv", "--norms", "norms.csv", "-o", "out.tsv"}).exitCode, 1);
    EXPECT_EQ(Run({"score", "raw.tsv", "--norms", "norms.csv", "-o", "new.tsv"}).exitCode, 1);
    EXPECT_EQ(folder.Read("out.tsv"), "before");
    ExpectOnly({"norms.csv", "out.tsv", "raw.tsv"});
}

TEST_F(ScoreCommands, KeysArePlainTextAndResultsKeepTheEscapes) {
    folder.Write("norms.csv", "scale,group,raw,T\nFear,[\u00E9],0-5,50\n");
    const Finished scored = Score("Fear\tint\t4\ngroup\ttext\t[\u00E9]\n", {"--encoding", "utf-8"});
    EXPECT_EQ(scored.err, "");
    EXPECT_EQ(scored.out, "Fear\tint\t4\ngroup\tstring\t\\\\'5b\xE9\\\\'5d\nFear_T\tint\t50\n");
}

TEST_F(ScoreCommands, TellsFaultsOfTheNorms) {
    struct Case {
        const char* norms;
        const char* err;
    };
    const Case cases[] = {
        {"scale,raw,T\nA,0,\n", "norms.csv:2:5: error: '' is not a standard score"},
        {"# c\nkey,raw,T\nA,0,1\n", "norms.csv:2:1: error: no key is named 'scale'"},
        {"scale,raw,T\nA,0,1\nB-C,0,1\n", "norms.csv:3:1: error: 'B-C' can't be the name"},
        {"scale,raw,T,T-x\nA,0,1,1\n", "norms.csv:1:13: error: 'T-x' can't be part"},
        {"scale,raw,T,IQ_in_its_most_extended_version\nA,0,1,1\n",
         "norms.csv:1:13: error: the result 'A_IQ_in_its_most_extended_version' has more than 32"},
        {"scale,raw,T,B_T\nA,0,1,2\nA_B,0,1,2\n",
         "norms.csv:1:11: error: two results have the name 'A_B_T'"},
    };
    for (const Case& c : cases) {
        folder.Write("norms.csv", c.norms);
        const Finished scored = Score("A\tint\t0\nA_B\tint\t0\n");
        EXPECT_EQ(scored.exitCode, 1) << c.err;
        EXPECT_EQ(scored.out, "");
        EXPECT_THAT(scored.err, StartsWith(c.err));
    }
}

TEST_F(ScoreCommands, ReadsAndWritesStandardStreams) {
    const std::string raw = "Calm\tint\t3\n";
    const std::string scored = Score(raw).out;
    EXPECT_EQ(Run({"score", "-", "--norms", "norms.csv", "-o", "-"}, {.input = raw}).out, scored);
    EXPECT_EQ(Run({"score", "raw.tsv", "--norms", "-", "-o", "-"}, {.input = cNorms}).out, scored);
    EXPECT_THAT(Run({"score", "-", "--norms=norms.csv", "-o", "-"}, {.input = "Calm"}).err,
                StartsWith("<stdin>:1:5: error: "));
    EXPECT_EQ(Run({"score", "raw.tsv", "--norms", "norms.csv", "-o", "/dev/full"}).exitCode, 2);
    EXPECT_EQ(Run({"score", "raw.tsv", "--norms", "norms.csv", "-o", "raw.tsv"}).exitCode, 0);
    EXPECT_EQ(folder.Read("raw.tsv"), scored) << "in place";
}

TEST_F(ScoreCommands, MakesTheReportOfTheExample) {
    const std::string example = TESSALINK_SOURCE_DIR "/examples/norms/";
    const Finished scored = Run({"score", example + "raw.tsv", "--norms", example + "norms.csv",
                                 "--confidence", "90", "-o", "scores.tsv"});
    ASSERT_EQ(scored.exitCode, 0) << scored.err;
    EXPECT_EQ(scored.err, "");
    const Finished report =
        Run({"report", example + "result.rtf", "--vars", "scores.tsv", "-o", "-"});
    EXPECT_EQ(report.exitCode, 0) << report.err;
    // T 64 and 46 stand in the table; 1.645 errors of 10 sqrt(0.16) and 10 sqrt(0.09) around them.
    EXPECT_THAT(report.out,
                HasSubstr("Worry: 11 of 20 points, T 64 (57-71), percentile rank 91\\par "
                          "Vocabulary: 10 of 24 points, T 46 (41-51), percentile rank 33\\par "
                          "Mia Example worries more than most children"));
}

TEST_F(ScoreCommands, PrintsAges) {
    struct Case {
        Strings arguments;
        const char* out;
    };
    const Case cases[] = {
        {{"1990-03-15", "2000-03-10"}, "9 years, 11 months, 26 days\n"},
        {{"03/15/1990", "3-10-2000"}, "9 years, 11 months, 26 days\n"},
        {{"1999-01-30", "2000-03-01"}, "1 year, 1 month, 2 days\n"},
        {{"2000-01-01", "2001-01-02"}, "1 year, 0 months, 1 day\n"},
        {{"1/31/00", "2000-03-01"}, "0 years, 1 month, 1 day\n"},
        {{"today", "today"}, ""},
        {{"2000-01-02", "2000-01-01"}, ""},
        {{"1990-02-29", "today"}, ""},
        {{"0099-01-01", "today"}, ""},
        {{"1990-3-15", "today"}, ""},
        {{"15.03.1990", "today"}, ""},
        {{"1990-03-15", "tomorrow"}, ""},
        {{"1990-03-15"}, ""},
    };
    for (const Case& c : cases) {
        Strings arguments = {"age"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const Finished age = Run(arguments);
        EXPECT_EQ(age.out, c.out) << c.arguments[0];
        EXPECT_EQ(age.exitCode, *c.out ? 0 : 2) << c.arguments[0];
        EXPECT_EQ(age.err.empty(), *c.out != '\0') << age.err;
    }
    EXPECT_THAT(Run({"age", "1900-01-01", "today"}).out, HasSubstr(" years, "));
    for (const char* command : {"score", "age"}) {
        EXPECT_THAT(Run({command, "--help"}).out, HasSubstr("Usage:"));
        EXPECT_EQ(Run({command}).exitCode, 2);
    }
}

TEST_F(ScoreCommands, ReadsDatesOfTheLocale) {
    const std::string make = "localedef -i de_DE -f UTF-8 '" + folder.Path("de_DE.UTF-8") + "'";
    if (std::system((make + " 2>/dev/null").c_str()) != 0) GTEST_SKIP() << "no locales";
    setVariable("LOCPATH", folder.Path("").c_str());
    setVariable("LC_ALL", "de_DE.UTF-8");
    setVariable("LSAN_OPTIONS",
                "detect_leaks=0");  // the C library leaks the path that LOCPATH names
    const Finished local = Run({"age", "--local", "15.03.1990", "2000-03-10"});
    const Finished fault = Run({"age", "--local", "03/15/1990", "2000-03-10"});
    const Finished plain = Run({"age", "03/15/1990", "2000-03-10"});
    removeVariable("LOCPATH");
    removeVariable("LC_ALL");
    removeVariable("LSAN_OPTIONS");
    EXPECT_EQ(local.out, "9 years, 11 months, 26 days\n");
    EXPECT_EQ(plain.out, local.out);
    EXPECT_THAT(fault.err, HasSubstr("write YYYY-MM-DD or DD.MM.YYYY"));
    EXPECT_EQ(fault.exitCode, 2);
}

}  // namespace
}  // namespace tessalink::test
