#include <gtest/gtest.h>

#include <string>

#include "tests/report/RandomExpressions.h"
#include "tests/report/RunTemplate.h"

namespace tessalink::test {
namespace {

struct Case {
    std::string expression;
    std::string outcome;
};

TEST(Expressions, have_these_values) {
    static const Case cases[] = {
        {"7/2", "3"},
        {"-7/2", "-3"},
        {"7/2.0", "3.50"},
        {"7.0/2", "3.50"},
        {"1+2*3", "7"},
        {"(1+2)*3", "9"},
        {"2*-3", "-6"},
        {"8-3-2", "3"},
        {"8/4/2", "1"},
        {"1<2 & 3<2", "0"},
        {"1<2 | 3<2", "1"},
        {"1|0&0", "1"},
        {"~0", "1"},
        {"~2.5", "0"},
        {"~0.0", "1"},
        {"~(-5)", "0"},
        {"-(~0)", "-1"},
        {"3>2>1", "0"},
        {"-2*-3", "6"},
        {"2.0=2", "1"},
        {"0/0.0=0/0.0", "0"},
        {"0/0.0<>1", "1"},
        {"-(2147483647)-1", "-2147483648"},
        {"(-2147483647-1)/(-1)", "-2147483648"},
        {"-(-2147483647-1)", "-2147483648"},
        {"2147483648", "2147483647"},
        {"65536*65536", "0"},
        {"-1/0.0", "-inf"},
        {"1/0", "Division by zero in expression!"},
        {"1&1/0", "Division by zero in expression!"},
        {"-~1", "Unexpected token in expression!"},
        {"~-1", "Unexpected token in expression!"},
        {"2--3", "5"},
        {"[1]", "Unexpected token in expression!"},
        {"", "Unexpected token in expression!"},
        {"@TEXT(1)", "Unexpected token in expression!"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(outcomeOf("@COMPUTE(" + c.expression + ")"), c.outcome) << c.expression;
    }
}

TEST(Expressions, stacks_hold_thirty_entries) {
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

TEST(Expressions, agree_with_the_plain_evaluator) {
    ExpressionComparison comparison(20260101);
    for (int i = 0; i < 200000; ++i) ASSERT_EQ(comparison.Step(), "") << comparison.Expression();
    EXPECT_GT(comparison.Faults(), 1000) << "some must be faulty";
    EXPECT_LT(comparison.Faults(), 100000);
}

}  // namespace
}  // namespace tessalink::test
