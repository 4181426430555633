#include <gtest/gtest.h>

#include <string>

#include "tests/report/RandomExpressions.h"
#include "tests/report/RunTemplate.h"

namespace tessalink::test {
namespace {

TEST(Expressions, HaveTheseValues) {
    EXPECT_EQ(
        outcomeOf("@COMPUTE(7/2) @COMPUTE(-7/2) @COMPUTE(7/2.0) @COMPUTE(8-3-2) @COMPUTE(8/4/2) "
                  "@COMPUTE(1+2*3) @COMPUTE((1+2)*3) @COMPUTE(2*-3) @COMPUTE(2--3)"),
        "3 -3 3.50 3 1 7 9 -6 5");
    EXPECT_EQ(outcomeOf("@COMPUTE(1<2&3<2)@COMPUTE(1<2|3<2)@COMPUTE(1|0&0)@COMPUTE(~0)"
                        "@COMPUTE(~2.5)@COMPUTE(3>2>1)@COMPUTE(2.0=2)@COMPUTE(0/0.0=0/0.0)"),
              "01110010");
    EXPECT_EQ(outcomeOf("@COMPUTE(-(2147483647)-1) @COMPUTE((-2147483647-1)/(-1)) "
                        "@COMPUTE(2147483648) @COMPUTE(65536*65536) @COMPUTE(-1/0.0)"),
              "-2147483648 -2147483648 2147483647 0 -inf");
    for (const char* wrong : {"-~1", "~-1", "[1]", "", "@TEXT(1)", "1+", "*1"}) {
        EXPECT_EQ(outcomeOf("@COMPUTE(" + std::string(wrong) + ")"),
                  "Unexpected token in expression!")
            << wrong;
    }
    EXPECT_EQ(outcomeOf("@COMPUTE(1&1/0)"), "Division by zero in expression!");
}

TEST(Expressions, StacksHoldThirtyEntries) {
    const auto nested = [](std::size_t depth, const std::string& inner) {
        return outcomeOf("@COMPUTE(" + std::string(depth, '(') + inner + std::string(depth, ')') +
                         ")");
    };
    EXPECT_EQ(nested(30, "7"), "7");
    EXPECT_EQ(nested(31, "7"), "Expression nested too deeply!");
    EXPECT_EQ(nested(29, "3+4"), "7");
    EXPECT_EQ(nested(30, "3+4"), "Expression nested too deeply!");
    // The stacks are empty again for the next expression, and full for none.
    EXPECT_EQ(outcomeOf("@COMPUTE(1+2*3<4)@COMPUTE(" + std::string(30, '(') + "1" +
                        std::string(30, ')') + ":0:2)"),
              "01");
}

TEST(Expressions, AgreeWithThePlainEvaluator) {
    ExpressionComparison comparison(20260101);
    for (int i = 0; i < 200000; ++i) ASSERT_EQ(comparison.Step(), "") << comparison.Expression();
    EXPECT_GT(comparison.Faults(), 1000) << "some must be faulty";
    EXPECT_LT(comparison.Faults(), 100000);
}

}  // namespace
}  // namespace tessalink::test
