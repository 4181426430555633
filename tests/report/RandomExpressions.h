#pragma once

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
#include "tests/support/Dice.h"

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

/// Writes random expressions, nearly all of them correct.
class ExpressionWriter {
public:
    explicit ExpressionWriter(Dice& dice) : m_dice(dice) {}

    std::string Write() {
        m_text.clear();
        // Some are deep enough for the stacks to run over.
        if (m_dice.OneIn(50)) {
            Nest(20 + m_dice.Below(13));
        } else {
            Expression(1 + m_dice.Below(4));
        }
        if (m_dice.OneIn(50)) Spoil();
        return m_text;
    }

private:
    void Expression(std::size_t depth) {
        static constexpr const char* operators[] = {"*", "/",  "+",  "-", "<", "<=",  "=",
                                                    ">", ">=", "<>", "&", "|", "<\n>"};
        Element(depth);
        for (std::size_t more = m_dice.Below(4); more > 0; --more) {
            Space();
            m_text += m_dice.Pick(operators);
            Space();
            Element(depth);
        }
    }
    void Element(std::size_t depth) {
        static constexpr const char* prefixes[] = {"-", "~"};
        if (m_dice.OneIn(6)) m_text += m_dice.Pick(prefixes);
        Space();
        if (depth > 0 && m_dice.OneIn(3)) {
            m_text += '(';
            Space();
            Expression(depth - 1);
            Space();
            m_text += ')';
        } else if (m_dice.OneIn(2)) {
            Numeral();
        } else {
            Name();
        }
    }
    void Nest(std::size_t depth) {
        static constexpr const char* levels[] = {"(", "~(", "(1+", "1|(0=(", "n-("};
        std::string ends;
        for (std::size_t i = 0; i < depth; ++i) {
            const std::string level = m_dice.OneIn(8) ? m_dice.Pick(levels) : "(";
            m_text += level;
            ends += std::string(
                static_cast<std::size_t>(std::count(level.begin(), level.end(), '(')), ')');
        }
        Expression(1);
        m_text += ends;
    }
    void Numeral() {
        static constexpr const char* numerals[] = {"0",
                                                   "1",
                                                   "2",
                                                   "007",
                                                   "2147483647",
                                                   "2147483648",
                                                   "99999999999999999999",
                                                   "0.0",
                                                   "3.",
                                                   "1\r\n2",
                                                   "1\n.\r5",
                                                   "0.1",
                                                   "1000000.25",
                                                   "123456789012345678901234567890.5"};
        m_text += m_dice.Pick(numerals);
    }
    void Name() {
        if (m_dice.OneIn(2000)) {
            m_text += "nobody";
            return;
        }
        auto variable = expressionVariables().begin();
        std::advance(variable, m_dice.Below(expressionVariables().size()));
        if (variable->second.isText && !m_dice.OneIn(100)) variable = expressionVariables().begin();
        std::string name = variable->first;
        if (m_dice.OneIn(8)) name.insert(m_dice.Below(name.size() + 1), "\r\n");
        if (m_dice.OneIn(8) && name.size() < 32 && name[0] != '\r') name.insert(0, "@");
        m_text += name;
    }
    void Space() {
        static constexpr const char* spaces[] = {" ", "\r\n", "\t", " \n "};
        if (m_dice.OneIn(10)) m_text += m_dice.Pick(spaces);
    }
    void Spoil() {
        const std::size_t at = m_dice.Below(m_text.size());
        if (m_dice.OneIn(2)) {
            m_text.erase(at, 1);
        } else {
            m_text.insert(at, 1, m_dice.Pick(std::string_view("()-~+,.1a ")));
        }
    }

    Dice& m_dice;
    std::string m_text;
};

/// Compares the two evaluators on random expressions.
class ExpressionComparison {
public:
    explicit ExpressionComparison(std::uint64_t seed) : m_dice(seed), m_writer(m_dice) {
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
    std::string Step() { return CompareOn(m_writer.Write()); }

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
            run.output == Written(realValue(-value.Real()), width, decimals) + truth;
        if (run.output != expected + truth && !isOtherNaN) {
            return "expected " + expected + truth + ", got " + run.output;
        }
        return Same(value) ? "" : "other bits than " + expected;
    }
    const std::string& Expression() const { return m_expression; }
    int Faults() const { return m_faults; }

private:
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
    ExpressionWriter m_writer;
    VarTable m_variables;
    std::string m_expression;
    int m_faults = 0;
};

}  // namespace tessalink::test
