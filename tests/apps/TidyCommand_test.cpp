#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/apps/CommandLine.h"

namespace tessalink::test {
namespace {

using testing::HasSubstr;

const std::string cParted = "{\\rtf1 Dear {@Na}{\\b me}, {@I}{F(}{1\\endash 1)@THEN x@ENDIF}ok}";
const std::string cJoined = "{\\rtf1 Dear {@Name}{\\b }, {}{}{@IF(1-1)@THEN x@ENDIF}ok}";

class TidyCommand : public CommandLine {
protected:
    void SetUp() override {
        folder.Write("parted.rtf", cParted);
        folder.Write("vars.tsv", "Name\tstring\tAnn\nAge\tint\t34\nScore\tdouble\t61.5\n");
    }
};

TEST_F(TidyCommand, WritesWhereItIsTold) {
    const std::string told = "parted.rtf:1:14: changed: put together '@Name'\n";
    const Finished written = Run({"tidy", "parted.rtf", "-o", "out.rtf"});
    EXPECT_EQ(written.exitCode, 0);
    EXPECT_THAT(written.err, HasSubstr(told));
    EXPECT_EQ(folder.Read("out.rtf"), cJoined);
    EXPECT_EQ(Run({"tidy", "-", "-o", "-"}, {.input = cParted}).out, cJoined);
    EXPECT_EQ(folder.Read("parted.rtf"), cParted);

    const Finished checked = Run({"tidy", "parted.rtf", "--check"});
    EXPECT_EQ(checked.exitCode, 1);
    EXPECT_THAT(checked.err, HasSubstr("1:14: would change: put together '@Name'\n"));
    EXPECT_EQ(Run({"tidy", "parted.rtf"}).err, checked.err);
    EXPECT_EQ(Run({"tidy", "out.rtf"}).exitCode, 0);
    EXPECT_EQ(Run({"tidy", "out.rtf"}).err, "");

    EXPECT_EQ(Run({"tidy", "parted.rtf", "--in-place"}).exitCode, 0);
    EXPECT_EQ(folder.Read("parted.rtf"), cJoined);
    const auto time = std::filesystem::last_write_time(folder.Path("parted.rtf"));
    EXPECT_EQ(Run({"tidy", "parted.rtf", "--in-place"}).exitCode, 0);
    EXPECT_EQ(std::filesystem::last_write_time(folder.Path("parted.rtf")), time);
    ExpectOnly({"out.rtf", "parted.rtf", "vars.tsv"});
}

TEST_F(TidyCommand, TellsWhatIsLeft) {
    folder.Write("left.rtf", "{\\rtf1 {\\*\\fldinst a@b}@COMPUTE(1}{\\par +2) @Name}{\\b s}");
    const Finished run = Run({"tidy", "left.rtf", "-o", "out.rtf", "--vars", "vars.tsv"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_THAT(run.err, HasSubstr("left.rtf:1:21: left as it is: an @ in what is not shown"));
    EXPECT_THAT(run.err, HasSubstr("left.rtf:1:24: left as it is: '@COMPUTE(1}{': its line ends"));
    EXPECT_THAT(run.err, HasSubstr("left.rtf:1:45: left as it is: '@Name' is a variable"));
    EXPECT_EQ(folder.Read("out.rtf"), folder.Read("left.rtf"));
}

TEST_F(TidyCommand, LosesNothingOnBadInput) {
    folder.Write("plain.txt", "Dear @Name");
    folder.Write("cut.rtf", cParted.substr(0, 30));
    folder.Write("closed.rtf", cParted + "}");
    Store("stored.DAT", cParted);
    struct BadCase {
        Strings arguments;
        int exitCode;
        std::string err;
    };
    const BadCase cases[] = {
        {{"plain.txt"}, 1, "plain.txt:1:1: error: this is no RTF: save the template as Rich Text"},
        {{"stored.DAT"}, 1, "'tessalink unscramble'"},
        {{"cut.rtf"}, 1, "cut.rtf:1:31: error: the file ends inside a group"},
        {{"closed.rtf"}, 1, "error: a } that closes no group"},
        {{"none.rtf"}, 2, "tessalink: none.rtf: the file does not exist."},
        {{"parted.rtf", "--vars", "none.tsv"}, 2, "none.tsv"},
        {{"parted.rtf", "--check"}, 2, "excludes"},
        {{"-"}, 2, "standard input can't be changed"},
    };
    for (const BadCase& c : cases) {
        Strings arguments = {"tidy", "--in-place"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const Finished run = Run(arguments);
        EXPECT_EQ(run.exitCode, c.exitCode) << c.arguments[0];
        EXPECT_THAT(run.err, HasSubstr(c.err));
    }
    folder.Write("out.rtf", "before");
    EXPECT_EQ(Run({"tidy", "cut.rtf", "-o", "out.rtf"}).exitCode, 1);
    EXPECT_EQ(folder.Read("out.rtf"), "before");
    EXPECT_EQ(folder.Read("cut.rtf"), cParted.substr(0, 30));
    EXPECT_EQ(folder.Read("parted.rtf"), cParted);
}

TEST_F(TidyCommand, IsNamedWhereACommandIsBroken) {
    const std::string note =
        ": note: the command is broken by formatting; `tessalink tidy` joins it";
    folder.Write("outer.rtf", "{\\rtf1 @INCLUDE([parted])}");
    folder.Write("end.rtf", "{\\rtf1 @IF(0)@THEN x@EN}{DIF}");
    folder.Write("whole.rtf", "{\\rtf1 @Nobody @Na}{me}");
    struct NoteCase {
        Strings arguments;
        std::string note;
    };
    const NoteCase cases[] = {
        {{"report", "parted.rtf", "-o", "-"}, "parted.rtf:1:14" + note},
        {{"check", "parted.rtf"}, "parted.rtf:1:28" + note},
        {{"report", "outer.rtf", "-o", "-"}, "parted.rtf:1:14" + note},
        {{"check", "outer.rtf"}, "parted.rtf:1:28" + note},
        {{"report", "end.rtf", "-o", "-"}, "end.rtf:1:21" + note},
        {{"report", "-", "-o", "-"}, "<stdin>:1:14" + note},
    };
    for (const NoteCase& c : cases) {
        const Finished run = Run(c.arguments, {.input = cParted});
        EXPECT_EQ(run.exitCode, 1);
        EXPECT_THAT(run.err, HasSubstr("error: "));
        EXPECT_THAT(run.err, HasSubstr(c.note)) << c.arguments[1];
    }
    EXPECT_EQ(Run({"report", "whole.rtf", "-o", "-"}).err.find("note"), std::string::npos);
}

}  // namespace
}  // namespace tessalink::test
