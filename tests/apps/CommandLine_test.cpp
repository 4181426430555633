#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "core/BufferedFile.h"
#include "tests/apps/CommandLine.h"
#include "tests/support/Environment.h"

namespace tessalink::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST_F(CommandLine, MakesReports) {
    folder.Write("plain.rtf", "{\\rtf @Name is @age: @mean@IF(age>30)@THEN !@ENDIF}");
    Store("stored.dat", "{\\rtf1 @Name}");
    Store("text.dat", "@Name");
    folder.Write("vars.tsv", "# who\nName\tstring\tA\xe4\\n\nage\tint\t34\nmean\tdouble\t2.5\n");
    struct Case {
        Strings arguments;
        std::string input;
        std::string output;
    };
    const Case cases[] = {
        {{"plain.rtf", "--vars", "vars.tsv"}, "", "{\\rtf A\xe4\n is 34: 2.50!}"},
        {{"--vars=vars.tsv", "stored.dat"}, "", "{\\rtf1 A\xe4\n}"},
        {{"--scrambled", "text.dat", "--vars", "vars.tsv"}, "", "A\xe4\n"},
        {{"text.dat", "--vars", "vars.tsv"}, "", "A\xe4\n"},
        {{"-"}, "{\\rtf x}", "{\\rtf x}"},
        {{"-", "--plain"}, "no rtf", "no rtf"},
        {{"-", "--plain"}, "", ""},
        {{"-", "--plain"}, "{\\rt", "{\\rt"},
    };
    for (const Case& c : cases) {
        Strings arguments = {"report", "-o", "-"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const Finished printed = Run(arguments, {.input = c.input});
        EXPECT_EQ(printed.exitCode, 0) << c.arguments[0];
        EXPECT_EQ(printed.out, c.output);
        EXPECT_EQ(printed.err, "");
        arguments[1] = "--output";
        arguments[2] = "out.rtf";
        EXPECT_EQ(Run(arguments, {.input = c.input}).out, "");
        EXPECT_EQ(folder.Read("out.rtf"), c.output);
    }
    ExpectOnly({"out.rtf", "plain.rtf", "stored.dat", "text.dat", "vars.tsv"});
}

TEST_F(CommandLine, IncludesPlainAndScrambledParts) {
    folder.Write("outer.rtf", "{\\rtf @DEFINE(p)@INCLUDE([one])}");
    folder.Write("one.rtf", "plain @INCLUDE([two])@LET(p=[two])@EVAL([@INCLUDE(p)])");
    Store("two.DAT", "@IF(0)@THEN @INCLUDE([none])@ENDIF scrambled@INCLUDE([three])");
    folder.Write("three.rtf", "!");
    const Finished run = Run({"report", "outer.rtf", "-o", "-"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "{\\rtf plain scrambled!scrambled!}");
}

TEST_F(CommandLine, TellsFaultsWithTheirPlaces) {
    folder.Write("fault.rtf", "{\\rtf x\r\n@Nobody}");
    folder.Write("eval.rtf", "{\\rtf\n@EVAL([ab@u])");
    folder.Write("call.rtf", "{\\rtf @CALL(Graph)@CALL(Graph)\n@CALL(Other)}");
    folder.Write("outer.rtf",
                 std::string("{\\rtf\n @INCLUDE([") + (cIsWindows ? "inner" : "Inner") + "/one])}");
    std::filesystem::create_directory(folder.Path("inner"));
    Store("inner/one.DAT", "1\n2\n@INCLUDE([inner\\two])");
    Store("inner/two.DAT", "@IF(");
    folder.Write("missing.rtf", "{\\rtf @INCLUDE([none])}");
    folder.Write("twice.rtf", "{\\rtf @INCLUDE([both])}");
    folder.Write("both.rtf", "plain text");
    Store("both.DAT", "plain text");
    folder.Write("wrong.rtf", "{\\rtf @INCLUDE([wrong2])}");
    Store("wrong2.rtf", "{\\rtf Some Words \\b @Nobody}");
    folder.Write("leave.rtf", "{\\rtf @INCLUDE([../other])}");
    folder.Write("leave2.rtf", "{\\rtf @INCLUDE([a\\..\\..\\other])}");
    folder.Write("bad.tsv", "x\tint\tfive\n");
    struct Case {
        Strings arguments;
        int exitCode;
        std::string err;
    };
    const std::string leaves = ":1:7: error: Include '";
    const Case cases[] = {
        {{"fault.rtf"}, 1, "fault.rtf:2:1: error: Undefined variable 'Nobody' found!\n"},
        {{"./fault.rtf"}, 1, "./fault.rtf:2:1: error: Undefined variable 'Nobody' found!\n"},
        {{"-"}, 1, "<stdin>:1:7: error: Undefined variable 'u' found!\n"},
        {{"eval.rtf"},
         1,
         "eval.rtf:2:1: error: Undefined variable 'u' found!\n"
         "eval.rtf:2:1: note: at line 1, column 3 of the evaluated text\n"},
        {{"outer.rtf"},
         1,
         "inner/two.DAT:1:5: error: Unexpected token in expression!\n"
         "inner/one.DAT:3:1: note: included from here\n"
         "outer.rtf:2:2: note: included from here\n"},
        {{"missing.rtf"},
         1,
         "missing.rtf:1:7: error: Include 'none.DAT' is not in the include folder, and neither is "
         "'none.rtf'!"},
        {{"twice.rtf"},
         1,
         "twice.rtf:1:7: error: Include 'both.DAT' is there twice, scrambled and plain as "},
        {{"wrong.rtf"}, 1, "wrong.rtf:1:7: error: Include 'wrong2.rtf' is scrambled: "},
        {{"leave.rtf"}, 1, "leave.rtf" + leaves + "..\\other.DAT' leaves the include folder"},
        {{"leave2.rtf"}, 1, "leave2.rtf" + leaves},
        {{"fault.rtf", "--vars", "bad.tsv"}, 1, "bad.tsv:1:7: error: 'five' is not a whole number"},
        {{"fault.rtf", "--vars", "no.tsv"}, 2, "tessalink: no.tsv: the file does not exist.\n"},
        {{"none.rtf"}, 2, "tessalink: none.rtf: the file does not exist.\n"},
        {{"inner"}, 2, "tessalink: inner: access is denied.\n"},
        {{"fault.rtf", "--plain", "--scrambled"}, 2, ""},
        {{"fault.rtf", "--unknown"}, 2, ""},
        {{}, 2, ""},
    };
    folder.Write("out.rtf", "before");
    for (const Case& c : cases) {
        for (const std::string out : {"out.rtf", "-", "new.rtf"}) {
            Strings arguments = {"report", "-o", out};
            arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
            const Finished run = Run(arguments, {.input = "{\\rtf @u}"});
            EXPECT_EQ(run.exitCode, c.exitCode) << c.err;
            EXPECT_EQ(run.out, "") << c.err;
            std::string err = run.err;
            // Includes are named with the folder that they are looked up in.
            for (std::size_t at; (at = err.find("./inner")) != std::string::npos;) err.erase(at, 2);
            EXPECT_THAT(err, StartsWith(c.err));
            EXPECT_FALSE(err.empty());
        }
    }
    EXPECT_EQ(folder.Read("out.rtf"), "before");
    EXPECT_FALSE(std::filesystem::exists(folder.Path("new.rtf")));
    EXPECT_EQ(folder.Names().size(), 15u) << "nothing is left over";

    const Finished skipped = Run({"report", "call.rtf", "-o", "-"});
    EXPECT_EQ(skipped.exitCode, 0);
    EXPECT_EQ(skipped.out, "{\\rtf \n}");
    EXPECT_THAT(skipped.err, StartsWith("call.rtf:1:7: warning: "));
    EXPECT_THAT(skipped.err, HasSubstr("\ncall.rtf:2:1: warning: "));
    EXPECT_EQ(std::count(skipped.err.begin(), skipped.err.end(), '\n'), 2);
}

TEST_F(CommandLine, RefusesTemplatesThatAreStoredTheOtherWayRound) {
    folder.Write("plain.txt", "Dear @Name,\r\n");
    folder.Write("words.txt", "a few words");
    Store("stored.dat", "{\\rtf @DEFINE(n)@n}");
    folder.Write("outer.rtf", "{\\rtf \n@INCLUDE([part])}");
    folder.Write("part.DAT", "\\par text");
    struct Case {
        Strings arguments;
        std::string err;
    };
    const Case cases[] = {
        {{"plain.txt"}, "plain.txt:1:1: error: this template is plain text: "},
        {{"words.txt"}, "words.txt:1:1: error: this template is plain text: "},
        {{"stored.dat", "--plain"}, "stored.dat:1:1: error: this template is scrambled: "},
        {{"outer.rtf"}, "outer.rtf:2:1: error: Include 'part.DAT' is plain text: "},
        {{"words.txt", "--plain"}, ""},
        {{"stored.dat", "--scrambled"}, ""},
    };
    for (const Case& c : cases) {
        for (const Strings& command : {Strings{"report", "-o", "/dev/null"}, Strings{"check"}}) {
            Strings arguments = command;
            arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
            const Finished run = Run(arguments);
            EXPECT_EQ(run.exitCode, c.err.empty() ? 0 : 1) << c.err;
            EXPECT_THAT(run.err, StartsWith(c.err));
            EXPECT_EQ(run.err.empty(), c.err.empty()) << run.err;
        }
    }
    Store("part.DAT", "1|2");
    EXPECT_EQ(Run({"report", "outer.rtf", "-o", "-"}).out, "{\\rtf \n1|2}");
}

TEST_F(CommandLine, FindsIncludesInTheFolderThatIsNamed) {
    std::filesystem::create_directories(folder.Path("a/parts"));
    folder.Write("a/t.rtf", "{\\rtf @INCLUDE([Part])}");
    Store("a/Part.DAT", "beside");
    Store("a/parts/PART.DAT", "named");
    EXPECT_EQ(Run({"report", "a/t.rtf", "-o", "-"}).out, "{\\rtf beside}");
    EXPECT_EQ(Run({"report", "a/t.rtf", "-o", "-", "--include-dir", "a/parts"}).out,
              "{\\rtf named}");
    EXPECT_EQ(
        Run({"report", "-", "-o", "-", "--include-dir=a"}, {.input = "{\\rtf @INCLUDE(Part)"}).out,
        "{\\rtf beside");
    EXPECT_EQ(Run({"report", "a/t.rtf", "-o", "-", "--include-dir", "a/none"}).exitCode, 1);
}

TEST_F(CommandLine, LeavesNoPartOfAnOutputThatFails) {
    const std::string large(300000, 'x');
    folder.Write("large.rtf", "{\\rtf " + large);
    folder.Write("out.rtf", "before");
    const Strings report = {"report", "large.rtf", "-o"};
    const auto to = [&](const std::string& out, const Setting& setting = {}) {
        Strings arguments = report;
        arguments.push_back(out);
        return Run(arguments, setting);
    };
    for (const std::string out : {"out.rtf", "new.rtf"}) {
        if (cIsWindows) break;  // no such limits
        const Finished full = to(out, {.maxFileSize = 100000});
        EXPECT_EQ(full.exitCode, 2);
        EXPECT_THAT(full.err, StartsWith("tessalink: "));
        EXPECT_THAT(full.err, testing::EndsWith(out + ": the disk is full.\n"));
    }
    EXPECT_EQ(folder.Read("out.rtf"), "before");
    ExpectOnly({"large.rtf", "out.rtf"});
    struct Case {
        Finished run;
        const char* err;
    };
    const Case cases[] = {
        {to("/dev/full"), "tessalink: /dev/full: the disk is full.\n"},
        {to("-", {.outputPath = "/dev/full"}), "tessalink: <stdout>: the disk is full.\n"},
        {to("none/out.rtf"), "tessalink: none/out.rtf: the folder does not exist.\n"},
        {to("large.rtf/out"),
         "tessalink: large.rtf/out: a part of the path is a file, not a folder.\n"},
        {to("."), "tessalink: .: access is denied.\n"},
        {to(""), "tessalink: "},
        {Run({"scramble", "large.rtf", "/dev/full"}), "tessalink: /dev/full: the disk is full.\n"},
        {Run({"scramble", "none", "out.rtf"}), "tessalink: none: the file does not exist.\n"},
        {Run({"check", "large.rtf"}, {.outputPath = "/dev/full"}), "tessalink: standard output: "},
        {Run({"vars", "large.rtf"}, {.outputPath = "/dev/full"}), "tessalink: standard output: "},
        {Run({"--version"}, {.outputPath = "/dev/full"}), "tessalink: standard output: "},
        {Run({"--help"}, {.outputPath = "/dev/full"}), "tessalink: standard output: "},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.run.exitCode, 2) << c.err << c.run.err;
        EXPECT_THAT(c.run.err, StartsWith(c.err));
    }
    EXPECT_EQ(to("/dev/null").exitCode, 0);
    ExpectOnly({"large.rtf", "out.rtf"});
    if (cIsWindows) return;  // links need rights there
    std::filesystem::create_symlink("target.rtf", folder.Path("link"));
    EXPECT_EQ(to("link").exitCode, 0);
    EXPECT_EQ(folder.Read("target.rtf"), "{\\rtf " + large);
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
}

TEST_F(CommandLine, RefusesFilesThatMayNotBeRead) {
    if (cIsWindows) GTEST_SKIP() << "no permissions";
    folder.Write("secret.rtf", "{\\rtf}");
    std::filesystem::permissions(folder.Path("secret.rtf"), std::filesystem::perms::none);
    std::filesystem::permissions(folder.Path(""), std::filesystem::perms(0755));
    for (const Strings& arguments :
         {Strings{"report", "secret.rtf", "-o", "-"}, Strings{"check", "secret.rtf"},
          Strings{"vars", "secret.rtf"}, Strings{"report", "secret.rtf", "-o", "new.rtf"}}) {
        const Finished run = Run(arguments, {.hasFewRights = true});
        if (run.exitCode > 2) GTEST_SKIP() << "a user without rights can't run the program";
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.err, "tessalink: secret.rtf: access is denied.\n");
    }
}

TEST_F(CommandLine, ScramblesBothWays) {
    std::string bytes;
    for (int i = 0; i < 70000; ++i) bytes += static_cast<char>(i * 7);
    folder.Write("plain", bytes);
    EXPECT_EQ(Run({"scramble", "plain", "stored"}).exitCode, 0);
    std::string stored = folder.Read("stored");
    scramble(stored.data(), stored.size());
    EXPECT_EQ(stored, bytes);
    EXPECT_EQ(Run({"unscramble", "stored", "-"}).out, bytes);
    EXPECT_EQ(Run({"unscramble", "-", "again"}, {.input = folder.Read("stored")}).exitCode, 0);
    EXPECT_EQ(folder.Read("again"), bytes);
    EXPECT_EQ(Run({"scramble", "plain", "plain"}).exitCode, 0) << "in place";
    EXPECT_EQ(folder.Read("plain"), folder.Read("stored"));
}

TEST_F(CommandLine, OffersHelpEverywhere) {
    EXPECT_THAT(Run({"--version"}).out, StartsWith("tessalink "));
    EXPECT_THAT(Run({"--help"}).out, HasSubstr("unscramble"));
    for (const char* command : {"report", "scramble", "unscramble", "check", "vars"}) {
        const Finished help = Run({command, "--help"});
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_THAT(help.out, HasSubstr("Usage:"));
        EXPECT_EQ(Run({command}).exitCode, 2) << command;
    }
    EXPECT_EQ(Run({}).exitCode, 2);
    EXPECT_EQ(Run({"paint"}).exitCode, 2);
}

TEST_F(CommandLine, ChecksEveryBranch) {
    struct Case {
        const char* text;
        const char* fault;
    };
    const Case cases[] = {
        {"@x@IF(a>1)@THEN@y@ELSE@IF(b=[])@THEN@ENDIF@ENDIF", "Unexpected token in expression!"},
        {"@IF(a)@THEN@IF(b)@THEN@COMPUTE(@ENDIF@ELSE@ENDIF", "Unexpected token in expression!"},
        {"@IF(a)@THEN@ELSE@IF(b)@THEN@ELSE@TEXT()@ENDIF@ENDIF", "Unexpected token in expression!"},
        {"@DEFER_START(k)@IF(@DEFER_END@PRINT_DEFERRED(ASC)", "Unexpected token in expression!"},
        {"@IF(a)@THEN@DEFER_START(k)@u(@LET(u)@DEFER_END@PRINT_DEFERRED(ASC)@ENDIF",
         "'=' expected after Variable name 'u' in LET!"},
        {"@LET(a=b+[x];c=b-1;d=b;e=cap(b)+b)@a@COMPUTE(n/m:w:d)", ""},
        {"@LET(a=b-[x])", "Unexpected token in expression!"},
        {"@LET(a=b*2+[x])", "Unexpected token in expression!"},
        {"@TEXT(n;m)@TEXT(n/m)@COMPUTE(1/(n-n))@TEXT(3;n-5)", ""},
        {"@TEXT(n*1.0)", "Expected integer value in TEXT!"},
        {"@TEXT(2;0)", "Maximum in TEXT must be > 0!"},
        {"@DEFINE(a)@IF(x)@THEN@DEFINE(b)@ELSE@DEFINE(b)@ENDIF", "Variable 'b' already defined!"},
        // What an inner @IF defines need not be there afterwards.
        {"@IF(x)@THEN@IF(y)@THEN@DEFINE(a)@ENDIF@ELSE@IF(y)@THEN@DEFINE(a)@ENDIF@ENDIF@DEFINE(a)",
         ""},
        {"@IF(x)@THEN@DEFER_START(1)@DEFINE(a)@DEFER_END@PRINT_DEFERRED(ASC)@ENDIF@DEFINE(a)", ""},
        {"@EVAL([@u(]+v)@CALL(f)", ""},
        {"@INCLUDE(named)@INCLUDE(v) \\par", ""},
        {"@INCLUDE([none])",
         "Include 'none.DAT' is not in the include folder, and neither is 'none.rtf'!"},
        {"@IF(x)@THEN", "@ENDIF expected!"},
        {"@ELSE", "End of File expected!"},
    };
    for (const Case& c : cases) {
        const std::string err = Check(c.text);
        EXPECT_EQ(err.empty(), *c.fault == '\0') << c.text << err;
        EXPECT_THAT(err, HasSubstr(c.fault)) << c.text;
    }
}

TEST_F(CommandLine, ChecksIncludesAndTellsEveryFaultOfEachFile) {
    folder.Write("a.rtf", "{\\rtf @INCLUDE([b])\n@INCLUDE([bad])@INCLUDE([b])");
    folder.Write("x.rtf", "{\\rtf \n@THEN@ELSE");
    Store("b.DAT", "@IF(x)@THEN@INCLUDE([B])@INCLUDE([c/d])@ENDIF");
    std::filesystem::create_directory(folder.Path("c"));
    Store("c/d.DAT", "@x");
    Store("bad.DAT", "\n@COMPUTE([])@THEN");
    const Finished run = Run({"check", "a.rtf", "x.rtf"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.err, HasSubstr("bad.DAT:2:10: error: Unexpected token in expression!\n"
                                   "a.rtf:2:1: note: included from here\n"));
    EXPECT_THAT(run.err, HasSubstr("bad.DAT:2:13: error: Unexpected keyword!\n"));
    EXPECT_THAT(run.err, HasSubstr("x.rtf:2:1: error: Unexpected keyword!\n"));
    EXPECT_EQ(std::regex_replace(run.err, std::regex("[^\n]*: note: [^\n]*\n"), ""),
              "./bad.DAT:2:10: error: Unexpected token in expression!\n"
              "./bad.DAT:2:13: error: Unexpected keyword!\n"
              "x.rtf:2:1: error: Unexpected keyword!\n");
    folder.Write("spelt.rtf", "{\\rtf @INCLUDE([b])@INCLUDE([./B])@INCLUDE([c/D])}");
    if (!cIsWindows) {
        EXPECT_EQ(Run({"check", "spelt.rtf"}).out, "3 templates checked: no faults\n");
    }
    EXPECT_EQ(Run({"check", "none.rtf"}).exitCode, 2);
}

TEST_F(CommandLine, ReadsUtf8AndWarnsWhereItIsNotSaid) {
    folder.Write("t.rtf", "{\\rtf @s}");
    folder.Write("v.tsv", "i\tint\t1\ns\tstring\tZo\u00EB\n");
    const struct {
        const char* encoding;
        const char* report;
        const char* warning;
    } table[] = {
        {"UTF-8", "{\\rtf Zo\xEB}", ""},
        {"Windows-1252", "{\\rtf Zo\xC3\xAB}", ""},
        {nullptr, "{\\rtf Zo\xC3\xAB}", "v.tsv:2:12: warning: read as Windows-1252"},
    };
    for (const auto& row : table) {
        Strings arguments = {"report", "t.rtf", "--vars", "v.tsv", "-o", "-"};
        if (row.encoding) arguments.insert(arguments.end(), {"--encoding", row.encoding});
        const Finished run = Run(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(run.out, row.report);
        EXPECT_THAT(run.err, StartsWith(row.warning));
        EXPECT_EQ(run.err.empty(), *row.warning == '\0') << run.err;
    }
    EXPECT_EQ(Run({"report", "t.rtf", "--encoding", "utf-8", "-o", "-"}).exitCode, 2);
    EXPECT_EQ(Run({"report", "t.rtf", "--vars", "v.tsv", "--encoding", "x", "-o", "-"}).exitCode,
              2);
}

TEST_F(CommandLine, ReadsAndWritesInTheCodePageThatIsNamed) {
    folder.Write("t.rtf", "{\\rtf @Name}");
    folder.Write("vars.tsv", "Name\tstring\t\xD0\xAF\n");
    const Strings report = {"report", "t.rtf",    "-o",         "-",
                            "--vars", "vars.tsv", "--encoding", "utf-8"};
    const struct {
        Strings page;
        std::string out;
        std::string err;
    } table[] = {
        {{"--code-page", "1251"}, "{\\rtf \xDF}", ""},
        {{"--code-page=1251"}, "{\\rtf \xDF}", ""},
        {{"--code-page", "1252"}, "", "Windows-1252"},
        {{"--code-page=932"}, "", "--code-page 932: name 1250, 1251, 1252"},
        {{"--code-page"}, "", "name 1250, 1251, 1252"},
        {{"--code-page="}, "", "name 1250, 1251, 1252"},
    };
    for (const auto& [page, out, err] : table) {
        Strings arguments = page;
        arguments.insert(arguments.end(), report.begin(), report.end());
        const Finished run = Run(arguments);
        EXPECT_EQ(run.out, out) << page[0];
        EXPECT_THAT(run.err, HasSubstr(err));
        EXPECT_EQ(run.exitCode == 0, err.empty()) << run.err;
    }
}

TEST_F(CommandLine, PlainTextRunsNowhereInAReport) {
    Store("part.DAT", "<@t@EVAL(t)>");
    folder.Write("t.rtf", "{\\rtf @DEFER_START(1)@INCLUDE([part])@DEFER_END@PRINT_DEFERRED(ASC)}");
    folder.Write("v.tsv", "t\ttext\t@ENDIF{\\\\b} [@CALL(x)\u0141]\n");
    const Finished run =
        Run({"report", "t.rtf", "--vars", "v.tsv", "--encoding", "utf-8", "-o", "-"});
    EXPECT_EQ(run.err, "");
    const std::string text = "\\'40ENDIF\\{\\\\b\\} \\'5b\\'40CALL(x)\\u321L\\'5d";
    EXPECT_EQ(run.out, "{\\rtf <" + text + text + ">}");
}

TEST_F(CommandLine, ListsWhatATemplateUses) {
    Store("part.DAT", "\n@deep@CALL(g)");
    folder.Write("t.rtf",
                 "{\\rtf @Name\n@DEFINE(n)@LET(n=m+1)@IF(k)@THEN@CALL(g)@ELSE@IF(q)@THEN@Name"
                 "@ENDIF@ENDIF\n@INCLUDE([part])@INCLUDE(v)@CAP(s)\n@DEFER_START(key)\n@late"
                 "@DEFER_END@PRINT_DEFERRED(ASC)");
    const Finished run = Run({"vars", "t.rtf"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(std::regex_replace(run.out, std::regex("\\s"), ""),
              R"({"variables":[)"
              R"({"name":"Name","read":{"file":"t.rtf","line":1}},)"
              R"({"name":"n","defined":{"file":"t.rtf","line":2},)"
              R"("assigned":{"file":"t.rtf","line":2}},)"
              R"({"name":"m","read":{"file":"t.rtf","line":2}},)"
              R"({"name":"k","read":{"file":"t.rtf","line":2}},)"
              R"({"name":"q","read":{"file":"t.rtf","line":2}},)"
              R"({"name":"v","read":{"file":"t.rtf","line":3}},)"
              R"({"name":"s","read":{"file":"t.rtf","line":3}},)"
              R"({"name":"key","read":{"file":"t.rtf","line":4}},)"
              R"({"name":"late","read":{"file":"t.rtf","line":5}},)"
              R"({"name":"deep","read":{"file":"./part.DAT","line":2}}],)"
              R"("functions":[{"name":"g","file":"t.rtf","line":2}],)"
              R"("includes":[{"name":"part.DAT","file":"t.rtf","line":3},)"
              R"({"name":"v.DAT","file":"t.rtf","line":3,"named_by_variable":true}]})");
    EXPECT_EQ(Run({"vars", "t.rtf", "t.rtf"}).exitCode, 2);
    EXPECT_EQ(Run({"vars", "none.rtf"}).exitCode, 2);
    folder.Write("t.rtf", "{\\rtf @THEN");
    EXPECT_EQ(Run({"vars", "t.rtf"}).exitCode, 1);
    EXPECT_EQ(Run({"vars", "t.rtf"}).out, "");
}

TEST_F(CommandLine, ChecksLargeTemplatesInLinearTime) {
    std::string text = "{\\rtf ";
    for (int i = 0; i < 50000; ++i) {
        text += "a text of some words @v" + std::to_string(i % 20000) + " \\par\n";
    }
    folder.Write("large.rtf", text);
    for (const char* command : {"check", "vars"}) {
        EXPECT_EQ(Run({command, "large.rtf"}, {.secondsOfProcessor = 5}).exitCode, 0) << command;
    }
}

}  // namespace
}  // namespace tessalink::test
