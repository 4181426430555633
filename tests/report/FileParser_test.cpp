#include "report/FileParser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/report/RunTemplate.h"

namespace tessalink::test {
namespace {

struct Case {
    std::string text;
    std::string outcome;
};

/// Every case runs over fresh variables, plain and scrambled; a fault's outcome is its message.
void expectOutcomes(const std::vector<Case>& cases) {
    for (const Case& c : cases) EXPECT_EQ(outcomeOf(c.text), c.outcome) << c.text;
}

/// A template that gives `a` the value before `rest`.
std::string with(const std::string& value, const std::string& rest) {
    return "@DEFINE(a,b)@LET(a=" + value + ")" + rest;
}

TEST(Statements, WriteTextAndValues) {
    expectOutcomes({
        {"", ""},
        {"plain {\\b text}\r\n", "plain {\\b text}\r\n"},
        {"a@@b", "a@b"},
        {"@DEFINE(a,b)@LET(a=2;b=a*1.5)@a @b", "2 3.00"},
        {with("[text]", "@a@LET(a=3)@a"), "text3"},
        {with("[x]", "@\r\na"), "Error in simple statement!"},
        {with("[x]", "@a\r\n|"), "x|"},
        {with("[x]", "@a\r\n\n\rb"), "Undefined variable 'ab' found!"},
        {with("2147483647+1", "@a"), "-2147483648"},
        {with("99999999999", "@a"), "2147483647"},
        {with("0.005", "@a"), "0.01"},
        {with("0.125", "@a"), "0.12"},
        {"@LINK x", "x"},
        {"@LINK\\par x", "x"},
        {"@ID(any @IF [ text)\r\n\r\nx", "x"},
        {"@COMMENT @undefined @IF( @COMMENT_END \\par\r\nx", "x"},
        {"@comment @@ @Comment_End\\par\\pard x", "\\pard x"},
        {"@CALL(f)x", "x"},
    });
}

TEST(Statements, ChooseBranches) {
    expectOutcomes({
        {"@IF(1)@THEN yes@ELSE no@ENDIF", "yes"},
        {"@if(0)@then yes@Else no@endif", "no"},
        {"@IF(0)@THEN yes@ENDIF.", "."},
        {"@IF(1) \r\n @THEN\\par yes@ENDIF", "yes"},
        {"@IF(0)@THEN @IF(x)@THEN a@ENDIF b@ENDIF", ""},
        {"@IF(1)@THEN@IF(0)@THEN a@ELSE b@ENDIF c@ELSE@IF(u)@THEN d@ENDIF@ENDIF", "bc"},
        {"@IF(0.0)@THEN a@ELSE b@ENDIF", "b"},
        {"@IF(0/0.0)@THEN a@ENDIF", "a"},
        // A false branch is read, but for the @IFs in it.
        {"@IF(0)@THEN@u@ENDIF", ""},
        {"@IF(0)@THEN@COMPUTE(u)@ENDIF", "Non-number variable 'u' used in expression!"},
        {"@IF(0)@THEN@COMPUTE(1/0)@ENDIF", ""},
        {"@IF(0)@THEN@TEXT(3;5/0)@ENDIF", ""},
        {"@IF(0)@THEN@TEXT(3;0)@ENDIF", "Maximum in TEXT must be > 0!"},
        {"@IF(0)@THEN@DEFINE(a)@ENDIF@a", "0"},
        {"@IF(0)@THEN@IF(1)@THEN@DEFINE(a)@ENDIF@ENDIF@a", "Undefined variable 'a' found!"},
        {"@IF(1)@THEN@DEFINE(a)@ELSE@DEFINE(a)@ENDIF", "Variable 'a' already defined!"},
        {with("1", "@IF(0)@THEN@LET(a=2)@ENDIF@a"), "1"},
        // Skipping sees keywords wherever they stand.
        {"@IF(0)@THEN@IF(1)@THEN@ID(@ENDIF)x@ENDIF@ENDIF", "End of File expected!"},
    });
}

TEST(Statements, SwallowOneParagraphMark) {
    expectOutcomes({
        {"@IF(1)@THEN\\par\\par x@ENDIF", "\\par x"},
        {"@IF(1)@THEN \r\n\\par\r\n\r\nx@ENDIF", "\r\nx"},
        {"@IF(1)@THEN@ENDIF\\pard x", "\\pard x"},
        {"@IF(1)@THEN@ENDIF\\par}", "\\par}"},
        {"@IF(1)@THEN@ENDIF\\par@@", "\\par@"},
        {"@IF(1)@THEN@ENDIF\\par", ""},
        {"@IF(1)@THEN@ENDIF\\pa\\par x", "\\pa\\par x"},
        {"@IF(1)@THEN@ENDIF \\", "\\"},
        {"@DEFINE(a) \\par x", "x"},
        {with("1", " \\par @a\\par "), "1\\par "},
        {"@COMPUTE(1) \\par x", "1 \\par x"},
        {"@TEXT(1) \\par x", "one \\par x"},
        {"@EVAL([a]) \\par x", "ax"},
    });
}

TEST(Statements, ComputeWithWidthAndDecimals) {
    expectOutcomes({
        {"@COMPUTE(10/4)", "2"},
        {"@COMPUTE(10/4.0)", "2.50"},
        {"@COMPUTE(10/4.0:6:3)", " 2.500"},
        {"@COMPUTE(10/4.0:6.9:0.9)", "     2"},
        {"@COMPUTE(2.5:(-6):1)|", "2.5   |"},
        {"@COMPUTE(2.5:0:(-1))", "2.500000"},
        {"@COMPUTE(7:6:3)", "7"},
        {"@COMPUTE(1/0.0) @COMPUTE(-1/0.0)", "inf -inf"},
        {"@COMPUTE(1.0:1000:0)", std::string(999, ' ') + "1"},
        {"@COMPUTE(1.0:1001:0)", "Field width too large in COMPUTE!"},
        {"@COMPUTE(1.0:(-1001):0)", "Field width too large in COMPUTE!"},
        {"@COMPUTE(1.0:0:1000)", "1." + std::string(1000, '0')},
        {"@COMPUTE(1.0:0:1001)", "Too many decimals in COMPUTE!"},
        {"@DEFINE(x)@COMPUTE(x:-5)", "Unexpected token in expression!"},
        {"@COMPUTE(1/0)", "Division by zero in expression!"},
    });
}

TEST(ValueFunctions, WriteWordsAndLists) {
    expectOutcomes({
        {"@TEXT(0) @TEXT(20) @TEXT(21) @TEXT(12;10) @TEXT(10;10) @TEXT(5;3) @TEXT(20;99)",
         "zero twenty 21 12 ten 5 twenty"},
        {"@TEXT(-3)", "-3"},
        {"@CAP([the test])|@CAP([])|@CAP([\xe4])|@CAP([1a])", "The test||\xe4|1a"},
        {"@COMMA_LIST([a],[],[b];[or])", "a or b"},
        {"@COMMA_LIST([a],[b],[c])", "a, b, and c"},
        {"@COMMA_LIST([a],[b];[])|@COMMA_LIST([a],[b],[c];[])", "a b|a, b, c"},
        {"@COMMA_LIST([])|@COMMA_LIST([],[a])", "|a"},
        {"@COMMA_LIST([1],[2],[3],[4];[&])", "1, 2, 3, & 4"},
        {with("cap(text(3))+[-]+comma_list([x],[y])", "@a"), "Three-x and y"},
        {with("[[a]]b]", "@a"), "[a]b"},
        {with("[a]\r\n]b]", "@a"), "a]b"},
        {with("[\r\nx\r\ny\r\n]", "@a"), "xy"},
        {with("12.0", "@LET(b=[Score: ]+a)@b"), "Score: 12.00"},
        {with("[@b]", "@LET(b=7)@EVAL(a)"), "7"},
        {with("EVAL([@TEXT(3)]+[ x])", "@a"), "three x"},
        {"@EVAL([@DEFINE(z)@LET(z=4)])@z", "4"},
        {"@EVAL([@EVAL([@TEXT(2)]])])", "two"},
    });
}

TEST(Deferred, PrintsBlocksInOrderOfKeys) {
    const auto group = [](const std::string& order) {
        return "@DEFER_START(2)A@DEFER_END\r\n@DEFER_START(1)B@DEFER_END @ID(x)@DEFER_START(2)C"
               "@DEFER_END@COMMENT x @COMMENT_END@PRINT_DEFERRED(" +
               order + ") \\par .";
    };
    expectOutcomes({
        {group("ASC"), "BAC."},
        {group("dsc"), "ACB."},
        {"@DEFER_START(2)2@DEFER_END@DEFER_START(1.5)m@DEFER_END@DEFER_START(1)1@DEFER_END"
         "@PRINT_DEFERRED(asc)",
         "1m2"},
        // NaNs keep their places and part the others.
        {"@DEFER_START(3)3@DEFER_END@DEFER_START(2)2@DEFER_END@DEFER_START(0/0.0)n@DEFER_END"
         "@DEFER_START(1)1@DEFER_END@DEFER_START(0)0@DEFER_END@PRINT_DEFERRED(ASC)",
         "23n01"},
        {with("1",
              "@DEFER_START(1)[@a]@LET(a=a+1)@DEFER_END@DEFER_START(0)(@a)@LET(a=5)@DEFER_END"
              "@PRINT_DEFERRED(ASC)@a"),
         "(1)[5]6"},
        {"@DEFER_START(1)<@DEFER_START(2)x@DEFER_END@DEFER_START(1)y@DEFER_END@PRINT_DEFERRED(ASC)>"
         "@DEFER_END@PRINT_DEFERRED(ASC)",
         "<yx>"},
        {"@IF(0)@THEN@DEFER_START(1)@u@DEFER_END@PRINT_DEFERRED(ASC)@ENDIF", ""},
        {"@IF(0)@THEN@DEFER_START(u)@DEFER_END@PRINT_DEFERRED(ASC)@ENDIF",
         "Non-number variable 'u' used in expression!"},
        {"@DEFER_START(1)@DEFER_END@PRINT_DEFERRED(ASC)", ""},
        {"@DEFER_START(1)x@DEFER_END\r\n\r\n@PRINT_DEFERRED(ASC)", "x"},
    });
}

TEST(Faults, HaveTheirMessages) {
    expectOutcomes({
        {"x@ENDIF", "End of File expected!"},
        {"x@ELSE", "End of File expected!"},
        {"@", "Error in simple statement!"},
        {"@ ", "Error in simple statement!"},
        {"@THEN", "Unexpected keyword!"},
        {"@DEFER_END", "Unexpected keyword!"},
        {"@PRINT_DEFERRED", "Unexpected keyword!"},
        {"@COMMENT_END", "Unexpected keyword!"},
        {"@Nobody", "Undefined variable 'Nobody' found!"},
        {"@IF 1", "Left parenthesis expected after @IF!"},
        {"@IF(1 2", "Right parenthesis expected at end of condition!"},
        {"@IF(1)x", "@THEN expected after condition!"},
        {"@IF(1)@ELSE", "@THEN expected after condition!"},
        {"@IF(1)@THEN", "@ENDIF expected!"},
        {"@IF(1)@THEN@ELSE@ELSE@ENDIF", "@ENDIF expected!"},
        {"@IF(0)@THEN@IF(1)@THEN x", "@ENDIF expected!"},
        {"@CALL", "Left parenthesis expected after CALL!"},
        {"@CALL(1)", "Function name expected after CALL!"},
        {"@CALL(f,1)", "Right parenthesis expected after CALL!"},
        {"@COMPUTE", "Left parenthesis expected after COMPUTE!"},
        {"@COMPUTE(1", "Right parenthesis expected after COMPUTE!"},
        {"@COMPUTE(1:2:3:4)", "Right parenthesis expected after COMPUTE!"},
        {"@ID", "Left parenthesis expected after ID!"},
        {"@ID(x", "Right parenthesis missing after ID!"},
        {"@INCLUDE", "Left parenthesis expected after INCLUDE!"},
        {"@INCLUDE(1)", "File name expected after INCLUDE!"},
        {"@INCLUDE(x", "Right parenthesis expected after INCLUDE!"},
        {"@COMMENT x @ y", "End of Comment Missing!"},
        {"@DEFINE", "Left parenthesis expected after DEFINE!"},
        {"@DEFINE()", "Variable name expected in DEFINE!"},
        {"@DEFINE(a,a)", "Variable 'a' already defined!"},
        {"@DEFINE(a,)", "Unexpected comma before right parenthesis in DEFINE!"},
        {"@DEFINE(a;b)", "Right parenthesis expected to terminate DEFINE!"},
        {"@LET", "Left parenthesis expected after LET!"},
        {"@LET()", "Variable name expected as start of assignment in LET!"},
        {"@LET(a=1)", "Variable 'a' not defined!"},
        {"@DEFINE(a)@LET(a 1)", "'=' expected after Variable name 'a' in LET!"},
        {"@DEFINE(a)@LET(a=1,a=2)", "Unexpected token in LET!"},
        {"@DEFINE(a)@LET(a=[x", "String constant not terminated!"},
        {"@COMPUTE(+1)", "Unexpected token in expression!"},
        {"@COMPUTE(~~1)", "Unexpected token in expression!"},
        {"@COMPUTE(1--~1)", "Unexpected token in expression!"},
        {"@COMPUTE((1)", "Right parenthesis expected after COMPUTE!"},
        {"@COMPUTE((1 2)", "Right parenthesis missing in expression!"},
        {"@COMPUTE(a)", "Non-number variable 'a' used in expression!"},
        {with("[x]", "@COMPUTE(a)"), "Non-number variable 'a' used in expression!"},
        {with("[x]+u", ""), "Undefined variable 'u' used in string expression!"},
        {with("[x]+1", ""), "Unexpected token in string expression!"},
        {"@CAP(@TEXT(1))", "Unexpected token in string expression!"},
        {"@TEXT", "Left parenthesis expected after TEXT!"},
        {"@TEXT(2.0)", "Expected integer value in TEXT!"},
        {"@TEXT(1;2.0)", "Expected integer in TEXT after ';'!"},
        {"@TEXT(3;0)", "Maximum in TEXT must be > 0!"},
        {"@TEXT(3,0)", "Right parenthesis expected after TEXT!"},
        {"@CAP", "Left parenthesis expected after CAP!"},
        {"@CAP([x],[y])", "Right parenthesis expected after CAP!"},
        {"@COMMA_LIST", "Left parenthesis expected after COMMA_LIST!"},
        {"@COMMA_LIST([x]:[y])", "Unexpected token in COMMA_LIST!"},
        {"@COMMA_LIST([x];[y],[z])", "Right parenthesis expected after COMMA_LIST!"},
        {"@EVAL", "Left parenthesis expected after EVAL!"},
        {"@EVAL([x];)", "Right parenthesis expected after EVAL!"},
        {"@EVAL([@u])", "Undefined variable 'u' found!"},
        {"@DEFER_START", "Left parenthesis expected after @DEFER_START!"},
        {"@DEFER_START(1,", "Right parenthesis expected at end of DEFER_START condition!"},
        {"@DEFER_START(1)x", "@DEFER_END expected!"},
        {"@DEFER_START(1)@DEFER_START(1)x@DEFER_END", "@DEFER_END expected!"},
        {"@DEFER_START(1)x@DEFER_END y", "@PRINT_DEFERRED expected!"},
        {"@DEFER_START(1)x@DEFER_END@PRINT_DEFERRED",
         "Left parenthesis expected after @PRINT_DEFERRED!"},
        {"@DEFER_START(1)x@DEFER_END@PRINT_DEFERRED(1)", "Missing sort order in @PRINT_DEFERRED!"},
        {"@DEFER_START(1)x@DEFER_END@PRINT_DEFERRED(UP)",
         "Unrecognized sort order in @PRINT_DEFERRED!"},
        {"@DEFER_START(1)x@DEFER_END@PRINT_DEFERRED(ASC,",
         "Right parenthesis expected after @PRINT_DEFERRED sort order!"},
    });
}

}  // namespace
}  // namespace tessalink::test
