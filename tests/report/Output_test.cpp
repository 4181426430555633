// What leaves a run: every prefix of templates, outputs that fail, hosts that override steps.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/base/HostServices.h"
#include "report/TemplateChecker.h"
#include "tests/report/RunTemplate.h"

namespace tessalink::test {
namespace {

/// A small template of every statement.
const std::string cEverything =
    "{\\rtf1 @ID(x)\r\n@DEFINE(n,t,d)@LET(n=3;t=[a]]b];d=n/2.0)\\par @COMMENT @x @COMMENT_END "
    "@@@n @t @d @COMPUTE(d*2:6:1)@IF(n>2 & ~(d=1))@THEN\\par yes@IF(0)@THEN x@ENDIF@ELSE no@ENDIF"
    "@CALL(f)@LINK @TEXT(n;20)@CAP([x]+t)@COMMA_LIST([a],t;[or])@EVAL([@n]+[!])"
    "@LET(t=COMMA_LIST([1],CAP(EVAL([@TEXT(n)]))))@t@DEFER_START(2)two@DEFER_END\r\n"
    "@DEFER_START(1)one@n@DEFER_END@PRINT_DEFERRED(ASC)}";

std::vector<std::string> sampleTemplates() {
    std::vector<std::string> texts = {cEverything};
    const std::filesystem::path folder = TESSALINK_SOURCE_DIR "/instruments/bigfive";
    if (!std::filesystem::exists(folder)) return texts;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".rtf") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return texts;
}

/// Whether a run of the text is good; one that is not has a message and a place.
template <class Parser>
bool isGood(const std::string& text) {
    const std::string stored = scrambled(text);
    CMemFile file{std::string_view(stored)};
    CMemFile output;
    VarTable variables;
    Parser parser(file, output, variables, 1);
    ParseException fault;
    bool good = false;
    try {
        good = parser.Parse(&fault) != 0;
    } catch (const CFileException&) {
        return false;  // an include that is not there
    }
    EXPECT_EQ(good, !fault.GetPlace().IsKnown()) << text;
    EXPECT_TRUE(good || std::string_view(fault.what()).ends_with('!')) << text;
    return good;
}

TEST(Output, EveryPrefixOfATemplateEndsWithSuccessOrMessage) {
    for (const std::string& text : sampleTemplates()) {
        const std::size_t step = text.size() > 4000 ? 7 : 1;
        std::size_t good = 0;
        for (std::size_t length = 0; length < text.size(); length += step) {
            // A checker goes on where a run misses variables.
            const bool isChecked = isGood<TemplateChecker>(text.substr(0, length));
            EXPECT_TRUE(!isGood<FileParser>(text.substr(0, length)) || isChecked) << text;
            good += isChecked;
        }
        EXPECT_GT(good, 0u);
        EXPECT_LT(good, text.size() / step) << "some prefixes are faulty";
        EXPECT_TRUE(isGood<TemplateChecker>(text)) << text;
    }
    EXPECT_TRUE(isGood<FileParser>(cEverything));
}

/// A file that takes `room` bytes in all, in writes of which the k-th fails.
class FailingFile : public CMemFile {
public:
    FailingFile(std::size_t failingWrite, std::size_t room)
        : m_failing(failingWrite), m_room(room) {}

    void Write(const void* buffer, std::size_t count) override {
        if (++m_writes >= m_failing || GetLength() + count > m_room) {
            AfxThrowFileException(CFileException::diskFull);
        }
        CMemFile::Write(buffer, count);
    }
    std::size_t Writes() const { return m_writes; }

private:
    std::size_t m_failing;
    std::size_t m_room;
    std::size_t m_writes = 0;
};

class WriteFaults : public testing::Test {
protected:
    WriteFaults() : m_before(hostServices()) {
        HostServices services = m_before;
        services.messageBox = [this](const char* text, UINT flags) {
            m_boxes.emplace_back(text);
            EXPECT_EQ(flags, MB_ICONERROR);
            return IDOK;
        };
        setHostServices(services);
    }
    ~WriteFaults() override { setHostServices(m_before); }

    /// Runs into the file; true when the run was good.
    bool Good(std::string_view text, CMemFile& output, bool hasSink) {
        CMemFile file(text);
        VarTable variables;
        FileParser parser(file, output, variables, 0);
        ParseException fault;
        const int result = parser.Parse(hasSink ? &fault : nullptr);
        EXPECT_STREQ(fault.what(), "");
        EXPECT_EQ(m_boxes.size(), result ? 0u : 1u);
        for (const std::string& box : std::exchange(m_boxes, {})) {
            EXPECT_EQ(box, "ERROR: Failed to write to file!");
        }
        return result != 0;
    }

    std::vector<std::string> m_boxes;

private:
    HostServices m_before;
};

TEST_F(WriteFaults, EndTheRunWithAMessageBox) {
    // Large enough for several writes, however output is gathered.
    const std::string filler(30000, 'x');
    const std::string text = cEverything + filler + cEverything.substr(cEverything.find("@@")) +
                             "@EVAL([@COMPUTE(1)" + filler + "]+[" + filler + "])" + filler;
    FailingFile whole(1000000, 1000000);
    ASSERT_TRUE(Good(text, whole, true));
    const std::string expected(whole.View());
    ASSERT_GT(whole.Writes(), 2u);
    for (std::size_t k = 1; k <= whole.Writes(); ++k) {
        FailingFile output(k, expected.size());
        EXPECT_FALSE(Good(text, output, k % 2 != 0)) << "write " << k;
        EXPECT_EQ(output.View(), expected.substr(0, output.View().size()));
    }
    for (std::size_t room = 0; room < expected.size(); room += 997) {
        FailingFile output(1000000, room);
        EXPECT_FALSE(Good(text, output, true)) << room << " bytes";
        EXPECT_EQ(output.View(), expected.substr(0, output.View().size()));
    }
}

TEST_F(WriteFaults, PassThroughHostFunctions) {
    NormalFctTable table(nullptr, nullptr);
    table.AddFct("f", [](CFile&, void*) { AfxThrowFileException(CFileException::hardIO); });
    VarTable variables;
    EXPECT_THROW(runTemplate("x@CALL(f)", variables, &table), CFileException);
    EXPECT_TRUE(m_boxes.empty());
}

TEST(Output, WhatWasWrittenBeforeAFaultStays) {
    struct Case {
        const char* text;
        const char* output;
    };
    const Case cases[] = {
        {"ab@u", "ab"},
        {"a@EVAL([b@u])c", "ab"},
        {"a@DEFER_START(1)x@u@DEFER_END@DEFER_START(0)y@DEFER_END@PRINT_DEFERRED(ASC)", "ayx"},
        {"@DEFINE(v)a@LET(v=EVAL([lost@u]))", "a"},
        {"a@IF(1)@THEN b", "ab"},
        {"a@COMPUTE(1.0:0:1001)", "a"},
    };
    for (const Case& c : cases) {
        VarTable variables;
        const auto run = runTemplate(c.text, variables);
        EXPECT_EQ(run.result, 0);
        EXPECT_EQ(run.output, c.output) << c.text;
    }
}

/// A host that shows variables in its own way, answers every call and logs what it sees.
class HostParser : public FileParser {
public:
    HostParser(CFile& file, CFile& out, VarTable& vars, std::string& log, int isScrambled)
        : FileParser(file, out, vars, isScrambled), m_log(log) {}

protected:
    int get_var(const Token& token, int execute) override {
        m_log += "var " + std::string(token.Text()) + (execute ? ";" : " (off);");
        if (execute) Show("<" + std::string(token.Text()) + ">");
        return FileParser::get_var(token, 0);
    }
    int get_call(const Token& token, int execute) override {
        m_log += "call;";
        return FileParser::get_call(token, execute);
    }
    int call_function(const CString& name) override {
        Show("[" + std::string(name.View()) + "]");
        return 1;
    }
    int get_exp_number(const Token& token) override {
        if (!push(Operand::Integer(token.GetInt() * 10))) return 0;
        scanner().NextExp();
        return 1;
    }
    int handle_error(const char* message) override {
        m_log += "error;";
        return FileParser::handle_error(("Host: " + std::string(message)).c_str());
    }
    using FileParser::handle_error;
    std::unique_ptr<FileParser> create_parser(CFile& file, CFile& out, int isScrambled) override {
        m_log += "nested;";
        return std::make_unique<HostParser>(file, out, variables(), m_log, isScrambled);
    }

private:
    void Show(const std::string& text) { output().Write(text.data(), text.size()); }

    std::string& m_log;
};

TEST(Output, HostsOverrideSteps) {
    struct Case {
        const char* text;
        const char* outcome;
        const char* log;
    };
    const Case cases[] = {
        {"a@b@CALL(f)c", "a<b>[f]c", "var b;call;"},
        {"@IF(0)@THEN@b@CALL(f)@ELSE@c@ENDIF", "<c>", "var b (off);call;var c;"},
        {"@COMPUTE(1+2)", "30", ""},
        {"@EVAL([@x])@DEFER_START(1)@y@DEFER_END@PRINT_DEFERRED(ASC)", "<x><y>",
         "nested;var x;nested;var y;"},
        {"@THEN", "Host: Unexpected keyword!", "error;"},
        {"@COMPUTE(u)", "Host: Non-number variable 'u' used in expression!", "error;"},
    };
    for (const Case& c : cases) {
        std::string log;
        CMemFile file{std::string_view(c.text)};
        CMemFile output;
        VarTable variables;
        HostParser parser(file, output, variables, log, 0);
        ParseException fault;
        const bool good = parser.Parse(&fault) != 0;
        EXPECT_EQ(good ? std::string(output.View()) : fault.what(), c.outcome) << c.text;
        EXPECT_EQ(log, c.log) << c.text;
    }
}

}  // namespace
}  // namespace tessalink::test
