#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <set>
#include <string>

namespace tessalink::test {

/// A number of an expression; `isText` marks a variable that is none.
struct Value {
    bool isInteger = true;
    std::int32_t integer = 0;
    double real = 0.0;
    bool isText = false;

    double Real() const { return isInteger ? integer : real; }
    bool IsTrue() const { return isInteger ? integer != 0 : real != 0.0; }
};

inline Value integerValue(std::int64_t value) {
    return {true, static_cast<std::int32_t>(static_cast<std::uint32_t>(value)), 0.0};
}
inline Value realValue(double value) {
    return {false, 0, value};
}

/// Evaluates an expression by plain recursion, one function a level of precedence, over a text that
/// ends with ")". It goes on after a fault where it can, so `Faults` holds all that may be
/// reported.
class PlainEvaluator {
public:
    PlainEvaluator(std::string text, const std::map<std::string, Value>& variables)
        : m_text(std::move(text)), m_variables(variables) {
        Next(true);
    }

    Value Evaluate() {
        try {
            const Value value = Binary(0, {});
            if (m_kind != ')' || m_at != m_text.size()) Fail("Right parenthesis expected");
            return value;
        } catch (const Stop&) {
            return {};
        }
    }
    const std::set<std::string>& Faults() const { return m_faults; }

private:
    struct Stop {};
    /// What waits while a part is evaluated: left operands, and operators with open parentheses.
    struct Waiting {
        int operands = 0;
        int operators = 0;
    };
    static constexpr int cLevels = 5;
    static constexpr int cStackSize = 30;

    Value Binary(int level, Waiting waiting) {
        static const std::string operators[cLevels] = {"|", "&", "<l=g>n", "+-", "*/"};
        if (level == cLevels) return Element(waiting);
        Value left = Binary(level + 1, waiting);
        while (operators[level].find(m_kind) != std::string::npos) {
            const char code = m_kind;
            Check(waiting.operators);
            Next(true);
            left =
                Apply(code, left, Binary(level + 1, {waiting.operands + 1, waiting.operators + 1}));
        }
        return left;
    }

    Value Element(Waiting waiting) {
        const char kind = m_kind;
        if (kind == '1' || kind == 'a') {
            Check(waiting.operands);
            const Value value = kind == '1' ? m_number : Variable();
            Next(false);
            return value;
        }
        if (kind != '(' && kind != '_' && kind != '~') Fail("Unexpected token in expression!");
        Check(waiting.operators);
        Next(true);
        const Waiting inner = {waiting.operands, waiting.operators + 1};
        if (kind == '(') {
            const Value value = Binary(0, inner);
            if (m_kind != ')') Fail("Right parenthesis missing in expression!");
            Next(false);
            return value;
        }
        if (m_kind == '_' || m_kind == '~') Fail("Unexpected token in expression!");
        const Value value = Element(inner);
        if (kind == '~') return integerValue(!value.IsTrue());
        return value.isInteger ? integerValue(-std::int64_t{value.integer})
                               : realValue(-value.real);
    }

    Value Variable() {
        const auto found = m_variables.find(m_name);
        if (found != m_variables.end() && !found->second.isText) return found->second;
        constexpr std::size_t longest = 299;
        const std::string message = "Non-number variable '" + m_name + "' used in expression!";
        m_faults.insert(message.substr(0, longest));
        throw Stop();
    }

    Value Apply(char code, const Value& left, const Value& right) {
        const bool integers = left.isInteger && right.isInteger;
        const std::int64_t a = left.integer;
        const std::int64_t b = right.integer;
        const double x = left.Real();
        const double y = right.Real();
        switch (code) {
            case '|':
                return integerValue(left.IsTrue() || right.IsTrue());
            case '&':
                return integerValue(left.IsTrue() && right.IsTrue());
            case '<':
                return integerValue(x < y);
            case 'l':
                return integerValue(x <= y);
            case '=':
                return integerValue(x == y);
            case 'g':
                return integerValue(x >= y);
            case '>':
                return integerValue(x > y);
            case 'n':
                return integerValue(x != y);
            case '+':
                return integers ? integerValue(a + b) : realValue(x + y);
            case '-':
                return integers ? integerValue(a - b) : realValue(x - y);
            case '*':
                return integers ? integerValue(a * b) : realValue(x * y);
            default:
                if (!integers) return realValue(x / y);
                if (b != 0) return integerValue(a / b);
                m_faults.insert("Division by zero in expression!");
                return integerValue(0);
        }
    }

    void Check(int waiting) {
        if (waiting >= cStackSize) m_faults.insert("Expression nested too deeply!");
    }
    [[noreturn]] void Fail(const char* message) {
        m_faults.insert(message);
        throw Stop();
    }

    // The words. m_kind is "1" for a number, "a" for a name, "_" for a prefix minus, "l", "g" and
    // "n" for "<=", ">=" and "<>", 0 at the end, otherwise the character.

    /// `isPrefix`: a minus here has no left operand.
    void Next(bool isPrefix) {
        while (std::isspace(Ahead())) ++m_at;
        const int ch = Ahead();
        if (std::isdigit(ch)) return Number();
        if (std::isalpha(ch) || ch == '_') return Name();
        m_kind = static_cast<char>(ch);
        if (m_at < m_text.size()) ++m_at;
        if (m_kind == '@' && (std::isalpha(Ahead()) || Ahead() == '_')) return Name(32);
        if (m_kind == '-' && isPrefix) m_kind = '_';
        if (m_kind == '<') {
            LineEnds();
            if (Ahead() == '=')
                Pair('l');
            else if (Ahead() == '>')
                Pair('n');
        } else if (m_kind == '>' && Ahead() == '=') {
            Pair('g');
        }
    }
    void Pair(char kind) {
        m_kind = kind;
        ++m_at;
    }
    void Number() {
        m_kind = '1';
        std::string digits = Run(std::isdigit);
        if (Ahead() == '.') {
            ++m_at;
            LineEnds();
            digits += '.' + Run(std::isdigit);
            m_number = realValue(std::strtod(digits.c_str(), nullptr));
        } else {
            const double value = std::strtod(digits.c_str(), nullptr);
            m_number = integerValue(value > 2147483647.0 ? 2147483647 : std::llround(value));
        }
    }
    void Name(std::size_t limit = std::string::npos) {
        m_kind = 'a';
        m_name = Run([](int ch) { return std::isalnum(ch) || ch == '_' ? 1 : 0; }, limit);
    }
    std::string Run(int (*belongs)(int), std::size_t limit = std::string::npos) {
        std::string run;
        while (run.size() < limit && belongs(Ahead())) {
            run += m_text[m_at++];
            LineEnds();
        }
        return run;
    }
    void LineEnds() {
        while (Ahead() == '\r' || Ahead() == '\n') ++m_at;
    }
    int Ahead() const {
        return m_at < m_text.size() ? static_cast<unsigned char>(m_text[m_at]) : 0;
    }

    std::string m_text;
    const std::map<std::string, Value>& m_variables;
    std::size_t m_at = 0;
    char m_kind = 0;
    Value m_number;
    std::string m_name;
    std::set<std::string> m_faults;
};

}  // namespace tessalink::test
