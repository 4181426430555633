#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <map>
#include <string>

#include "report/VarTable.h"
#include "tests/report/PlainEvaluator.h"
#include "tests/report/RunTemplate.h"
#include "tests/support/Environment.h"
#include "tests/support/Grammar.h"

namespace tessalink::test {

/// The variables that random expressions use.
inline const std::map<std::string, Value>& expressionVariables() {
    using Real = std::numeric_limits<double>;
    static const std::map<std::string, Value> variables = {
        {"n", integerValue(7)},
        {"Zero", integerValue(0)},
        {"m_1", integerValue(-1)},
        {"least", integerValue(std::numeric_limits<int>::min())},
        {"most", integerValue(std::numeric_limits<int>::max())},
        {"d", realValue(2.5)},
        {"nought", realValue(-0.0)},
        {"NaN", realValue(Real::quiet_NaN())},
        {"endless", realValue(Real::infinity())},
        {"tiny", realValue(Real::denorm_min())},
        {"huge", realValue(-1e308)},
        {"a_name_that_is_longer_than_thirty_two_letters", realValue(1.0)},
        {"words", {.isText = true}},
    };
    return variables;
}

/// Expressions that follow the grammar; a few of their variables are no numbers.
inline Grammar expressionGrammar() {
    return Grammar({
        {'X', {"$e", "$e$_$o$_$e", "$e$o$e$_$o$e", "$e$o$e$o$e$o$e"}},
        {'e', {"1", "n", "0", "$n", "$v", "$v", "$u$_$v", "$u$n", "($_$X$_)", "($X)", "$u$_($X)"}},
        {'u', {"-", "~"}},
        {'o', {"*", "/", "+", "-", "<", "<=", "=", ">", ">=", "<>", "&", "|", "<\n>", "<\r\n="}},
        {'_', {"", "", "", "", "", " ", "\r\n", "\t", " \n "}},
        {'n',
         {"0", "1", "2", "007", "2147483647", "2147483648", "99999999999999999999", "0.0", "3.",
          "1\r\n2", "1\n.\r5", "0.1", "1000000.25", "123456789012345678901234567890.5"}},
        {'v',
         {"n",
          "Zero",
          "m_1",
          "least",
          "most",
          "d",
          "nought",
          "NaN",
          "endless",
          "tiny",
          "huge",
          "@n",
          "@Zero",
          "@m_1",
          "@least",
          "@most",
          "@d",
          "@NaN",
          "@endless",
          "@tiny",
          "le\r\nast",
          "@hu\nge",
          "d\r",
          "n",
          "least",
          "most",
          "Zero",
          "$w",
          "a_name_that_is_longer_than_thirty_two_letters"}},
        {'w', {"n", "d", "n", "d", "words", "nobody"}},
    });
}

/// Compares the two evaluators on random expressions.
class ExpressionComparison {
public:
    explicit ExpressionComparison(std::uint64_t seed) : m_dice(seed) {
        for (const auto& [name, value] : expressionVariables()) {
            if (value.isText) {
                m_variables.AddVar(name.c_str(), "7");
            } else if (value.isInteger) {
                m_variables.AddVar(name.c_str(), value.integer);
            } else {
                m_variables.AddVar(name.c_str(), value.real);
            }
        }
    }

    /// Compares on a random expression; empty when both agree, otherwise what each says.
    std::string Step() {
        std::string expression = m_grammar.Write('X', 6, m_dice);
        if (m_dice.OneIn(50)) Nest(expression);
        if (m_dice.OneIn(50)) Spoil(expression);
        return CompareOn(expression);
    }

    /// Compares on this one.
    std::string CompareOn(const std::string& expression) {
        m_expression = expression;
        const int width = static_cast<int>(m_dice.Below(30));
        const int decimals = static_cast<int>(m_dice.Below(20));
        PlainEvaluator plain(m_expression + ")", expressionVariables());
        const Value value = plain.Evaluate();
        m_variables.SetValue("result", 0);
        const Run run = runTemplate(Template(width, decimals), m_variables);
        m_faults += !run.result;
        if (!plain.Faults().empty() || !run.result) return CompareFaults(plain, run);
        const std::string expected = Written(value, width, decimals);
        const std::string truth = value.IsTrue() ? "|t" : "|f";
        // The sign of a NaN depends on the order in which a compiler puts operands.
        const bool isOtherNaN =
            std::isnan(value.Real()) &&
            (run.output == Written(realValue(-value.Real()), width, decimals) + truth ||
             (cIsWindows && run.output.find("nan") != std::string::npos));  // printed unsigned
        if (run.output != expected + truth && !isOtherNaN) {
            return "expected " + expected + truth + ", got " + run.output;
        }
        return Same(value) ? "" : "other bits than " + expected;
    }
    const std::string& Expression() const { return m_expression; }
    int Faults() const { return m_faults; }

private:
    /// Sets it so deep that the stacks may run over.
    void Nest(std::string& expression) {
        static constexpr const char* levels[] = {"(", "(", "(", "~(", "(1+", "1|(0=(", "n-("};
        for (std::size_t depth = 15 + m_dice.Below(17); depth > 0; --depth) {
            const std::string level = m_dice.Pick(levels);
            const auto ends = std::count(level.begin(), level.end(), '(');
            expression.insert(0, level).append(static_cast<std::size_t>(ends), ')');
        }
    }
    void Spoil(std::string& expression) {
        const std::size_t at = m_dice.Below(expression.size());
        if (m_dice.OneIn(2)) {
            expression.erase(at, 1);
        } else {
            expression.insert(at, 1, m_dice.Pick(std::string_view("()-~+,.1a ")));
        }
    }
    std::string Template(int width, int decimals) const {
        // Last, as @LET reads a text where the first word is one.
        return "@COMPUTE(" + m_expression + ":" + std::to_string(width) + ":" +
               std::to_string(decimals) + ")|@IF(" + m_expression +
               ")@THEN t@ELSE f@ENDIF@LET(result=" + m_expression + ")";
    }
    static std::string CompareFaults(const PlainEvaluator& plain, const Run& run) {
        if (run.result) return "no fault, but expected " + *plain.Faults().begin();
        // The engine names the first, and a spoilt end in its statement's words.
        const std::string message = run.error.what();
        if (plain.Faults().count(message)) return "";
        const bool isEnd = plain.Faults().count("Right parenthesis expected");
        return isEnd ? "" : "unexpected fault " + message;
    }
    static std::string Written(const Value& value, int width, int decimals) {
        std::array<char, 400> text{};
        if (value.isInteger) return std::to_string(value.integer);
        std::snprintf(text.data(), text.size(), "%*.*f", width, decimals, value.real);
        return text.data();
    }
    bool Same(const Value& value) const {
        const VariantVar result = m_variables.GetVar("result");
        if (value.isInteger) return result.IsInt() && result.GetAsInt() == value.integer;
        if (std::isnan(value.real)) return result.IsDouble() && std::isnan(result.GetAsDouble());
        return result.IsDouble() && std::bit_cast<std::uint64_t>(result.GetAsDouble()) ==
                                        std::bit_cast<std::uint64_t>(value.real);
    }

    Dice m_dice;
    Grammar m_grammar = expressionGrammar();
    VarTable m_variables;
    std::string m_expression;
    int m_faults = 0;
};

}  // namespace tessalink::test
