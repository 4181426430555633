#include "report/TemplateChecker.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/report/RandomTemplates.h"
#include "tests/report/RunTemplate.h"

namespace tessalink::test {
namespace {

std::string checked(std::string_view text) {
    CMemFile file(text);
    CMemFile output;
    VarTable definitions;
    TemplateChecker checker(file, output, definitions, 0);
    ParseException fault;
    const bool good = checker.Parse(&fault) != 0;
    EXPECT_EQ(output.GetLength(), 0u);
    return good ? "" : fault.what();
}

TEST(TemplateChecker, PassesWhatRuns) {
    Dice dice(4);
    Grammar grammar = templateGrammar();
    int ran = 0;
    for (int i = 0; i < 30000; ++i) {
        const std::string text = "@DEFINE(n)" + grammar.Write('S', 8, dice);
        VarTable variables;
        fillVariables(variables, dice);
        if (!runTemplate(text, variables).result) continue;
        ++ran;
        ASSERT_EQ(checked(text), "") << text;
    }
    EXPECT_GT(ran, 1000);
}

TEST(TemplateChecker, FindsTheFaultsThatRunsFind) {
    // Faults that no variables can mend, put anywhere into correct templates.
    const char* const faults[] = {
        "@",           "@THEN ",          "@COMPUTE(1",   "@COMPUTE(1+)", "@LET(n 1)",
        "@LET(n=[x)",  "@TEXT(1.0)",      "@CAP(1)",      "@IF(1)x",      "@CALL()",
        "@ID(",        "@COMMENT x",      "@DEFINE(n,n)", "@EVAL()",      "@COMMA_LIST([x]:[y])",
        "@INCLUDE(1)", "@DEFER_START(1)x"};
    Dice dice(6);
    Grammar grammar = templateGrammar();
    for (int i = 0; i < 3000; ++i) {
        const std::string fault = dice.Pick(faults);
        const std::string text = "@DEFINE(n)" + grammar.Write('S', 8, dice) + fault;
        ASSERT_NE(checked(text), "") << text;
        ASSERT_NE(checked("@IF(a)@THEN @IF(b)@THEN @ELSE " + fault + "@ENDIF@ENDIF"), "") << text;
    }
}

TEST(TemplateChecker, TellsWhatATemplateUses) {
    class Notes : public TemplateChecker {
    public:
        using TemplateChecker::TemplateChecker;
        std::string text;

    protected:
        void note_read(const CString& name, const TemplateChecker&) override { Add("read", name); }
        void note_define(const CString& name, const TemplateChecker&) override {
            Add("define", name);
        }
        void note_assign(const CString& name, const TemplateChecker&) override {
            Add("assign", name);
        }
        void note_call(const CString& name, const TemplateChecker&) override { Add("call", name); }
        void note_include(const CString& name, bool isConstant, const TemplateChecker&) override {
            Add(isConstant ? "include" : "include by", name);
        }

    private:
        void Add(const char* kind, const CString& name) {
            text += std::string(kind) + " " + std::string(name.View()) + "; ";
        }
    };
    const std::string text =
        "@a@DEFINE(b)@LET(b=c*2)@IF(d)@THEN @CALL(f)@ELSE @INCLUDE([x/y])@INCLUDE(v)@ENDIF"
        "@CAP(e)@DEFER_START(k)@g@DEFER_END@PRINT_DEFERRED(ASC)";
    CMemFile file{std::string_view(text)};
    CMemFile output;
    VarTable definitions;
    Notes notes(file, output, definitions, 0);
    EXPECT_TRUE(notes.Parse(nullptr));
    EXPECT_EQ(notes.text,
              "read a; define b; assign b; read c; read c; read d; call f; include x\\y.DAT; "
              "read v; include by v.DAT; read e; read k; read g; ");
}

}  // namespace
}  // namespace tessalink::test
