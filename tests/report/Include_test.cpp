#include <gtest/gtest.h>

#include <string>

#include "platform/base/HostServices.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/report/RunTemplate.h"
#include "tests/support/Environment.h"
#include "tests/support/FileSizeLimit.h"

namespace tessalink::test {
namespace {

class Includes : public testing::Test {
protected:
    Includes() : m_before(hostServices()) {
        HostServices services = m_before;
        services.moduleDirectory = m_folder.Path("").c_str();
        setHostServices(services);
    }
    ~Includes() override { setHostServices(m_before); }

    void Store(const std::string& name, const std::string& text) {
        const std::filesystem::path path = m_folder.Path(name);
        std::filesystem::create_directories(path.parent_path());
        m_folder.Write(name, scrambled(text));
    }
    /// The output, or the message of what is thrown.
    std::string Outcome(const std::string& text) {
        VarTable variables;
        try {
            return runTemplate(text, variables).Outcome();
        } catch (const CException& fault) {
            return fault.what();
        }
    }
    std::string Missing(const std::string& name) {
        return m_folder.Path("") + "/" + name + ": the file does not exist.";
    }
    /// A template that counts up and includes "next" until it has run `levels` times.
    static std::string Counting(const std::string& include, int levels) {
        return "@LET(n=n+1)@IF(n<" + std::to_string(levels) + ")@THEN" + include + "@ENDIF";
    }

    TemporaryFolder m_folder;

private:
    HostServices m_before;
};

/// "FILE:LINE:COLUMN" of a fault, and of each include, innermost first.
std::string placesOf(const ParseException& fault) {
    const auto shown = [](const TextPlace& place) {
        const std::filesystem::path path(std::string(place.file.View()));
        return path.filename().string() + ":" + std::to_string(place.line) + ":" +
               std::to_string(place.column);
    };
    std::string places = shown(fault.GetPlace());
    for (const TextPlace& place : fault.GetIncludes()) places += " " + shown(place);
    return places;
}

TEST_F(Includes, AreFoundByName) {
    Store("sub.DAT", "<sub>");
    Store("x.dat.DAT", "<x.dat>");
    Store("Deep/Er/Part.DAT", "<part>");
    Store("Twin.DAT", "<Twin>");
    Store("TWIN.DAT", "<TWIN>");
    Store("name.DAT", "<name>");
    Store("7.DAT", "<seven>");
    struct Case {
        std::string text;
        std::string outcome;
    };
    const Case cases[] = {
        {"@INCLUDE([sub])", "<sub>"},
        {"@INCLUDE([sub.DAT])", "<sub>"},
        {"@INCLUDE([SUB])", "<sub>"},
        {"@INCLUDE([x.dat])", "<x.dat>"},
        {"@INCLUDE([X.DAT])", "x.dat.DAT is not it"},
        {"@INCLUDE([Deep/Er/Part])", "<part>"},
        {"@INCLUDE([Deep\\Er\\Part])", "<part>"},
        {"@INCLUDE([deep\\er/PART.DAT])", "<part>"},
        {"@INCLUDE([Twin])|@INCLUDE([TWIN])", "<Twin>|<TWIN>"},
        {"@INCLUDE([twin])", "several"},
        {"@INCLUDE(name)", "<name>"},
        {"@DEFINE(v)@LET(v=[sub])@INCLUDE(v) \\par @INCLUDE(@v)", "<sub><sub>"},
        {"@DEFINE(v)@LET(v=7)@INCLUDE(v)", "<seven>"},
        {"@INCLUDE([sub])\r\n\\par\r\nx", "<sub>x"},
        {"@IF(0)@THEN@INCLUDE([none])@ENDIF", ""},
    };
    for (const Case& c : cases) {
        if (cIsWindows && c.text.find("win") != std::string::npos) continue;  // Twin and TWIN
        const std::string outcome = Outcome(c.text);
        if (c.outcome.find("<") == std::string::npos && !c.outcome.empty()) {
            EXPECT_NE(outcome.find("does not exist"), std::string::npos) << c.text << outcome;
        } else {
            EXPECT_EQ(outcome, c.outcome) << c.text;
        }
    }
    std::filesystem::create_directory(m_folder.Path("dir.DAT"));
    EXPECT_NE(Outcome("@INCLUDE([dir])").find("access is denied"), std::string::npos);
}

TEST_F(Includes, ShareVariablesAndTellWhereTheyFail) {
    Store("a.DAT", "@DEFINE(x)@LET(x=5)");
    Store("outer.DAT", "first line\r\n  @INCLUDE([inner])");
    Store("inner.DAT", "\r\n\n@COMPUTE(1 2)");
    EXPECT_EQ(Outcome("@INCLUDE([a])@x"), "5");
    const auto places = [](const std::string& text) {
        VarTable variables;
        try {
            return "result " + std::to_string(runTemplate(text, variables).result);
        } catch (const ParseException& fault) {
            return std::string(fault.what()) + " " + placesOf(fault);
        }
    };
    const std::string fault = "Right parenthesis expected after COMPUTE! inner.DAT:3:12";
    EXPECT_EQ(places("@INCLUDE([inner])"), fault + " test.rtf:1:1");
    EXPECT_EQ(places("\n@INCLUDE([outer])"), fault + " outer.DAT:2:3 test.rtf:2:1");
    EXPECT_EQ(places("\r@EVAL([@INCLUDE([inner]])])"), fault + " test.rtf:2:1");
    EXPECT_EQ(places("@DEFER_START(1)\n\n.@INCLUDE([inner])@DEFER_END@PRINT_DEFERRED(ASC)"),
              fault + " test.rtf:3:2");
    // The table still has what the include did before its fault.
    Store("half.DAT", "@DEFINE(y)@LET(y=3)@ENDIF");
    VarTable variables;
    EXPECT_THROW(runTemplate("@INCLUDE([half])", variables), ParseException);
    EXPECT_EQ(variables.GetInt("y"), 3);
}

TEST_F(Includes, ArePlainWhereAllParsersAreMadeSo) {
    class PlainParser : public FileParser {
    public:
        using FileParser::FileParser;

    protected:
        std::unique_ptr<FileParser> create_parser(CFile& file, CFile& out, int) override {
            return std::make_unique<PlainParser>(file, out, variables(), 0);
        }
    };
    m_folder.Write("a.DAT", "a@DEFER_START(1)b@INCLUDE([b])@DEFER_END@PRINT_DEFERRED(ASC)");
    m_folder.Write("b.DAT", "@EVAL([c])");
    CMemFile text(std::string_view("@INCLUDE([a])"));
    CMemFile output;
    VarTable variables;
    PlainParser(text, output, variables, 0).Parse(nullptr);
    EXPECT_EQ(output.View(), "abc");
}

TEST_F(Includes, NestAThousandLevelsWithFewDescriptors) {
    const FewFiles limit;
    constexpr const char* start = "@DEFINE(n)@INCLUDE([a])@n";
    Store("a.DAT", Counting("@INCLUDE([A])", 1000) + "@IF(n=1000)@THEN.@ENDIF");
    EXPECT_EQ(Outcome(start), std::string(1000, '.') + "1000");
    Store("a.DAT", Counting("@INCLUDE([A])", 1001));
    EXPECT_EQ(Outcome(start), "Includes and EVALs nested too deeply!");
    Store("a.DAT", "text @INCLUDE([a])");
    EXPECT_EQ(Outcome("@INCLUDE([a])"), "Includes and EVALs nested too deeply!");
    // Each level costs two runs, of which one has a file.
    Store("a.DAT", Counting("@EVAL([@INCLUDE([a]])])", 500));
    EXPECT_EQ(Outcome(start), "500");
    Store("a.DAT", Counting("@DEFER_START(1)@INCLUDE([a])@DEFER_END@PRINT_DEFERRED(ASC)", 500));
    EXPECT_EQ(Outcome(start), "500");
}

TEST_F(Includes, GoOnWhereTheyWereAfterTheirIncludes) {
    // The text after the inner include lies in blocks that are read when it is over.
    const std::string tail(3 * BufferedFile::cBlockSize, 't');
    Store("a.DAT", "[@INCLUDE([b])" + tail + "]");
    Store("b.DAT", tail + "(@INCLUDE([c])" + tail + ")");
    Store("c.DAT", "c");
    EXPECT_EQ(Outcome("@INCLUDE([a])!"), "[" + tail + "(c" + tail + ")" + tail + "]!");
}

}  // namespace
}  // namespace tessalink::test
