// The command `preview`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "tests/apps/CommandLine.h"
#include "tests/support/Environment.h"

namespace tessalink::test {
namespace {

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::Not;

class PreviewCommand : public CommandLine {
protected:
    PreviewCommand() {
        folder.Write("letter.rtf",
                     "{\\rtf1 Dear @Name,\n@IF(Age<18)@THEN young@ELSE @INCLUDE([PART])@ENDIF\n"
                     "@DEFINE(n)@LET(n=Age+1)@n@CAP(Kind)@CALL(Bar)@INCLUDE(part)@LET(Out=1)}");
        folder.Write("PART.rtf", "@IF(Age>64)@THEN old@ELSE grown@ENDIF");
        folder.Write("child.tsv", "Name\tstring\tAnn\nAge\tint\t9\n");
        folder.Write("adult.tsv", "Age\tint\t40\nName\tstring\tBo\n");
    }

    Finished Preview(Strings arguments) const {
        arguments.insert(arguments.begin(), {"preview", "letter.rtf"});
        return Run(arguments);
    }
    std::string Out(const std::string& name) const { return folder.Read("out/" + name); }
};

TEST_F(PreviewCommand, MakesUpWhatIsNotGiven) {
    const Finished alone = Preview({"-o", "out", "--no-pages"});
    EXPECT_EQ(alone.exitCode, 0) << alone.err;
    EXPECT_EQ(Out("letter.rtf"), "{\\rtf1 Dear Name,\ngrown51Kindgrown}");
    EXPECT_THAT(alone.err, HasSubstr("letter: made up: Name, Age, Kind, part, Out\n"));
    EXPECT_THAT(alone.err, HasSubstr("@CALL(Bar) is skipped"));
    EXPECT_EQ(alone.out, "");
    const Finished given = Preview({"--vars", "child.tsv", "adult.tsv", "-o", "out", "--no-pages"});
    EXPECT_EQ(given.exitCode, 0) << given.err;
    EXPECT_EQ(Out("child.rtf"), "{\\rtf1 Dear Ann,\nyoung10Kindgrown}");
    EXPECT_EQ(Out("adult.rtf"), "{\\rtf1 Dear Bo,\ngrown41Kindgrown}");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path("out")), {}), 3);
}

TEST_F(PreviewCommand, ValuesHaveTheTypeThatTheirUseWants) {
    folder.Write("letter.rtf",
                 "{\\rtf1 @DEFINE(title,sum)@LET(title=Scale;sum=first)@LET(first=Raw)@title "
                 "@COMPUTE(sum+1)@DEFER_START(Key)@Shown@DEFER_END@PRINT_DEFERRED(ASC)"
                 "@COMMA_LIST(List,List) @TEXT(Count)@LET(title=Long+[;]+Raw)@title}");
    const Finished made = Preview({"-o", "out", "--no-pages"});
    EXPECT_EQ(made.exitCode, 0) << made.err;
    EXPECT_EQ(Out("letter.rtf"), "{\\rtf1 Scale 51ShownList and List 50Long;50}");
}

TEST_F(PreviewCommand, GraphsGetNumbers) {
    folder.Write("g.json", R"({"graphs": {"Bar": {"width": 2, "height": 0.5, "sections": [
  {"scale": {"min": 20, "max": 80, "left": "@Name", "points": ["@T"]}}]}}})");
    const Finished made =
        Preview({"-o", "out", "--no-pages", "--graphs", "g.json", "--vars", "adult.tsv"});
    EXPECT_EQ(made.exitCode, 0) << made.err;
    EXPECT_THAT(made.err, HasSubstr("made up: Kind, part, Out, T"));
    EXPECT_THAT(Out("adult.rtf"), HasSubstr("\\emfblip"));
}

TEST_F(PreviewCommand, TellsWhatNeverRan) {
    if (cIsWindows) GTEST_SKIP() << "PART and part count as two there";
    const Finished all =
        Preview({"--vars", "child.tsv", "adult.tsv", "--report-coverage", "cov", "--least", "80"});
    EXPECT_EQ(all.exitCode, 0) << all.err;
    // Of the template two branches and two includes, of the part two branches.
    EXPECT_EQ(all.out,
              "./PART.rtf:1:18: never ran: @THEN\n2 reports: 5 of 6 parts ran (83.3 percent)\n")
        << all.out;
    EXPECT_FALSE(fs::exists(folder.Path("out")));
    EXPECT_THAT(folder.Read("cov/coverage.html"),
                HasSubstr("<mark title=\"never ran\">old</mark>"));
    EXPECT_THAT(folder.Read("cov/coverage.txt"), HasSubstr("@THEN \xE2\x9F\xA6old\xE2\x9F\xA7"));
    EXPECT_EQ(Preview({"--vars", "child.tsv", "adult.tsv", "--least", "83.4"}).exitCode, 1);
    EXPECT_EQ(Preview({"--vars", "child.tsv", "--least", "50"}).exitCode, 0);
    EXPECT_EQ(Preview({"--vars", "child.tsv", "--least", "50.1"}).exitCode, 1);
}

TEST_F(PreviewCommand, FaultsAreTold) {
    folder.Write("file", "");
    folder.Write("bad.rtf", "{\\rtf1 @IF(1)}");
    folder.Write("zero.rtf", "{\\rtf1 @COMPUTE(1/Zero)}");
    folder.Write("zero.tsv", "Zero\tint\t0\n");
    folder.Write("one.tsv", "Zero\tint\t1\n");
    folder.Write("bad.tsv", "Zero\tint\n");
    fs::create_directory(folder.Path("x"));
    folder.Write("x/child.tsv", "");
    const struct {
        Strings arguments;
        int exitCode;
        const char* message;
    } cases[] = {
        {{"letter.rtf", "--vars", "child.tsv", "none.tsv", "-o", "out"},
         2,
         "none.tsv: the file does not exist"},
        {{"zero.rtf", "--vars", "bad.tsv", "-o", "out"}, 1, "bad.tsv:1:"},
        {{"none.rtf", "-o", "out"}, 2, "none.rtf: the file does not exist"},
        {{"bad.rtf", "-o", "out"}, 1, "bad.rtf:1:14: error: @THEN expected after condition!"},
        {{"letter.rtf", "-o", "file", "--no-pages"}, 2, "file: is a file"},
        {{"letter.rtf", "--report-coverage", "file/cov"}, 2, "file/cov"},
        {{"letter.rtf", "--vars", "child.tsv", "x/child.tsv", "-o", "out"},
         2,
         "another file would be the report child.rtf, too"},
        {{"-", "-o", "out"}, 2, "is read more than once"},
        {{"letter.rtf", "-o", "out", "--graphs", "-", "--vars", "-"}, 2, "standard input is"},
        {{"letter.rtf"}, 2, "name a folder for reports"},
        {{"letter.rtf", "--report-coverage", "cov", "--least", "101"}, 2, "--least"},
        {{"letter.rtf", "-o", "out", "--encoding", "utf-8"}, 2, "--encoding"},
    };
    for (const auto& c : cases) {
        Strings arguments = c.arguments;
        arguments.insert(arguments.begin(), "preview");
        const Finished finished = Run(arguments);
        EXPECT_EQ(finished.exitCode, c.exitCode) << finished.err;
        EXPECT_THAT(finished.err, HasSubstr(c.message));
        EXPECT_FALSE(fs::exists(folder.Path("out"))) << c.message;
        EXPECT_FALSE(fs::exists(folder.Path("cov"))) << c.message;
    }
    // One report with a fault; the others are made, and what ran before it counts.
    const Finished one = Run({"preview", "zero.rtf", "--vars", "zero.tsv", "one.tsv", "-o", "out",
                              "--no-pages", "--least", "0"});
    EXPECT_EQ(one.exitCode, 1);
    EXPECT_THAT(one.err, HasSubstr("Division by zero"));
    EXPECT_EQ(Out("one.rtf"), "{\\rtf1 1}");
    EXPECT_FALSE(fs::exists(folder.Path("out/zero.rtf")));
}

TEST_F(PreviewCommand, ReportsAreWrittenWithoutLibreOffice) {
    if (cIsWindows) GTEST_SKIP() << "programs are found elsewhere, too";
    const std::string path = std::getenv("PATH");
    setVariable("PATH", "/none");
    const Finished without = Preview({"-o", "out", "--report-coverage", "cov"});
    setVariable("PATH", path.c_str());
    EXPECT_EQ(without.exitCode, 2);
    EXPECT_THAT(without.err, HasSubstr("a preview of pages needs LibreOffice"));
    EXPECT_THAT(without.err, HasSubstr("The reports are written."));
    EXPECT_THAT(Out("letter.rtf"), HasSubstr("Dear Name"));
    EXPECT_TRUE(fs::exists(folder.Path("cov/coverage.html")));
    EXPECT_EQ(Preview({"-o", "out", "--no-pages"}).exitCode, 0);
}

TEST_F(PreviewCommand, ShowsPagesOfLibreOffice) {
    for (const char* program : {"soffice", "pdftoppm", "pdftotext"}) {
        const std::string look = std::string("command -v ") + program;
        if (cIsWindows || runProgram({"/usr/bin/env", "sh", "-c", look}).exitCode != 0) {
            GTEST_SKIP() << program << " is not installed";
        }
    }
    folder.Write("letter.rtf",
                 "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}Dear @Name\\par "
                 "@IF(Age>17)@THEN \\page Vote!\\par @ENDIF}");
    fs::create_directory(folder.Path("out"));
    folder.Write("out/child-page-2.png", "of an earlier preview");
    folder.Write("out/child-page-x.png", "another's");
    const Finished made = Preview({"--vars", "child.tsv", "adult.tsv", "-o", "out"});
    EXPECT_EQ(made.exitCode, 0) << made.err;
    const auto text = [&](const std::string& name) {
        return runProgram({"/usr/bin/env", "pdftotext", folder.Path("out/" + name), "-"}).out;
    };
    EXPECT_THAT(text("child.pdf"), HasSubstr("Dear Ann"));
    EXPECT_THAT(text("child.pdf"), Not(HasSubstr("Vote!")));
    EXPECT_THAT(text("adult.pdf"), HasSubstr("Vote!"));
    Strings names;
    for (const auto& entry : fs::directory_iterator(folder.Path("out"))) {
        names.push_back(entry.path().filename().generic_string());
        if (!names.back().ends_with(".png") || names.back() == "child-page-x.png") continue;
        EXPECT_TRUE(folder.Read("out/" + names.back()).starts_with("\x89PNG")) << names.back();
        EXPECT_GT(fs::file_size(entry.path()), 1000U) << names.back();
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("child.rtf", "child.pdf", "child-page-1.png",
                                                     "child-page-x.png", "adult.rtf", "adult.pdf",
                                                     "adult-page-1.png", "adult-page-2.png"));
}

}  // namespace
}  // namespace tessalink::test
