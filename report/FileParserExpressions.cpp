// Expressions: a recursive-descent reader checks the grammar, and operands and operators are
// combined by precedence while they are read.

#include <array>

#include "platform/base/NumberText.h"
#include "report/FileParser.h"
#include "report/VarTable.h"
#include "report/detail/Nesting.h"

using tessalink::detail::ScopedAddition;

namespace {

/// The precedence of each operator code: a higher one binds tighter.
constexpr std::array<std::int8_t, Token::cOperatorCount> cPrecedence = {
    0,                 // pending "("
    6, 6,              // unary "-", "~"
    5, 5,              // "*", "/"
    4, 4,              // "+", "-"
    3, 3, 3, 3, 3, 3,  // comparisons
    2,                 // "&"
    1                  // "|"
};

constexpr std::int8_t cTermPrecedence = 4;
constexpr std::int8_t cFactorPrecedence = 5;
constexpr std::int8_t cComparisonPrecedence = 3;
constexpr const char* cUnexpectedToken = "Unexpected token in expression!";
constexpr const char* cTooDeep = "Expression nested too deeply!";

int precedenceOf(Token::Operator code) {
    return cPrecedence[static_cast<std::size_t>(code)];
}

bool isOperatorOf(const Token& token, int precedence) {
    return token.GetKind() == Token::tkOperator && precedenceOf(token.GetOperator()) == precedence;
}

bool isLogical(const Token& token) {
    return token.GetKind() == Token::tkOperator &&
           (token.GetOperator() == Token::opAnd || token.GetOperator() == Token::opOr);
}

bool isPrefix(const Token& token) {
    return token.IsOperator(Token::opNegate) || token.IsOperator(Token::opNot);
}

/// A comparison, or a conjunction or disjunction of truths: any number but zero is true.
template <class Number>
bool holds(Token::Operator code, Number left, Number right) {
    switch (code) {
        case Token::opLess:
            return left < right;
        case Token::opLessEqual:
            return left <= right;
        case Token::opEqual:
            return left == right;
        case Token::opGreaterEqual:
            return left >= right;
        case Token::opGreater:
            return left > right;
        case Token::opNotEqual:
            return left != right;
        case Token::opAnd:
            return left != 0 && right != 0;
        default:
            return left != 0 || right != 0;
    }
}

}  // namespace

int FileParser::evaluate(const Token& token, int execute, Operand& result) {
    m_executing = execute;
    if (!get_exp(token)) return 0;
    if (!m_operators.IsEmpty() && !apply_pending(0)) return 0;
    if (m_operands.IsEmpty()) return handle_error(cUnexpectedToken);
    result = m_operands.Pop();
    return 1;
}

int FileParser::get_exp(const Token& token) {
    if (!get_exp_comp(token)) return 0;
    while (isLogical(token)) {
        if (!get_exp_operator(token) || !get_exp_comp(token)) return 0;
    }
    return 1;
}

int FileParser::get_exp_comp(const Token& token) {
    if (!get_exp_term(token)) return 0;
    while (isOperatorOf(token, cComparisonPrecedence)) {
        if (!get_exp_operator(token) || !get_exp_term(token)) return 0;
    }
    return 1;
}

int FileParser::get_exp_term(const Token& token) {
    if (!get_exp_factor(token)) return 0;
    while (isOperatorOf(token, cTermPrecedence)) {
        if (!get_exp_operator(token) || !get_exp_factor(token)) return 0;
    }
    return 1;
}

int FileParser::get_exp_factor(const Token& token) {
    if (!get_exp_elem(token)) return 0;
    while (isOperatorOf(token, cFactorPrecedence)) {
        if (!get_exp_operator(token) || !get_exp_elem(token)) return 0;
    }
    return 1;
}

int FileParser::get_exp_elem(const Token& token) {
    switch (token.GetKind()) {
        case Token::tkIdent:
            return get_exp_var(token);
        case Token::tkNumber:
            return get_exp_number(token);
        case Token::tkLParen:
            return get_exp_lparen(token) && get_exp(token) && get_exp_rparen(token);
        case Token::tkOperator:
            if (!isPrefix(token)) break;
            if (!get_exp_operator(token)) return 0;
            // A prefix operator would be applied before the operand of the one before it exists.
            if (isPrefix(token)) break;
            return get_exp_elem(token);
        default:
            break;
    }
    return handle_error(cUnexpectedToken);
}

int FileParser::get_exp_lparen(const Token&) {
    if (!push(Token::opLParen)) return 0;
    next_exp();
    return 1;
}

int FileParser::get_exp_rparen(const Token& token) {
    if (!expect(token, Token::tkRParen, "Right parenthesis missing in expression!")) return 0;
    while (!m_operators.IsEmpty() && m_operators.Top() != Token::opLParen) {
        if (!do_eval()) return 0;
    }
    if (!m_operators.IsEmpty()) m_operators.Pop();
    next_exp();
    return 1;
}

int FileParser::get_exp_operator(const Token& token) {
    const Token::Operator code = token.GetOperator();
    if (!apply_pending(precedenceOf(code)) || !push(code)) return 0;
    next_exp();
    return 1;
}

int FileParser::get_exp_number(const Token& token) {
    if (!push(token.IsInteger() ? Operand::Integer(token.GetInt())
                                : Operand::Real(token.GetDouble()))) {
        return 0;
    }
    next_exp();
    return 1;
}

int FileParser::get_exp_var(const Token& token) {
    const VariantVar* variable = m_variables.Find(token.Name());
    if (!variable || !variable->IsNumber()) {
        return handle_error("Non-number variable '%s' used in expression!", token.GetText());
    }
    if (!push(variable->IsInt() ? Operand::Integer(variable->GetAsInt())
                                : Operand::Real(variable->GetAsDouble()))) {
        return 0;
    }
    next_exp();
    return 1;
}

int FileParser::push(const Operand& operand) {
    return m_operands.Push(operand) || handle_error(cTooDeep);
}

int FileParser::push(Token::Operator code) {
    return m_operators.Push(code) || handle_error(cTooDeep);
}

int FileParser::apply_pending(int precedence) {
    while (!m_operators.IsEmpty() && precedenceOf(m_operators.Top()) >= precedence) {
        if (!do_eval()) return 0;
    }
    return 1;
}

int FileParser::do_eval() {
    const Token::Operator code = m_operators.Pop();
    if (code == Token::opLParen) return 1;
    if (code == Token::opNegate || code == Token::opNot) {
        apply_unary(code);
        return 1;
    }
    return apply_binary(code);
}

void FileParser::apply_unary(Token::Operator code) {
    Operand& operand = m_operands.Top();
    if (code == Token::opNot) {
        operand = Operand::Integer(!operand.IsTrue());
    } else if (operand.isInteger) {
        operand.integer = tessalink::wrapNeg(operand.integer);
    } else {
        operand.real = -operand.real;
    }
}

int FileParser::apply_binary(Token::Operator code) {
    const Operand right = m_operands.Pop();
    Operand& left = m_operands.Top();
    if (left.isInteger && right.isInteger) return apply_integers(code, left, right.integer);
    apply_reals(code, left, right);
    return 1;
}

int FileParser::apply_integers(Token::Operator code, Operand& left, std::int32_t right) {
    std::int32_t& value = left.integer;
    switch (code) {
        case Token::opMultiply:
            value = tessalink::wrapMul(value, right);
            return 1;
        case Token::opDivide:
            if (right == 0) {
                value = 0;
                m_dividedByZero = true;
                return check_zero_division();
            }
            value = tessalink::divide(value, right);
            return 1;
        case Token::opAdd:
            value = tessalink::wrapAdd(value, right);
            return 1;
        case Token::opSubtract:
            value = tessalink::wrapSub(value, right);
            return 1;
        default:
            value = holds(code, value, right);
            return 1;
    }
}

void FileParser::apply_reals(Token::Operator code, Operand& left, const Operand& right) {
    const double value = left.AsReal();
    switch (code) {
        case Token::opMultiply:
            left = Operand::Real(value * right.AsReal());
            return;
        case Token::opDivide:
            left = Operand::Real(value / right.AsReal());
            return;
        case Token::opAdd:
            left = Operand::Real(value + right.AsReal());
            return;
        case Token::opSubtract:
            left = Operand::Real(value - right.AsReal());
            return;
        default:
            left = Operand::Integer(holds(code, value, right.AsReal()));
            return;
    }
}

int FileParser::check_zero_division() {
    // A branch that is not carried out may divide by what only the other branch rules out.
    return !m_executing || handle_error("Division by zero in expression!");
}

void FileParser::clear_stacks() {
    m_operands.Clear();
    m_operators.Clear();
}

int FileParser::get_str_exp(const Token& token, CString& result, int execute) {
    result.Empty();
    for (;; next_exp()) {
        if (token.GetKind() == Token::tkString) {
            if (execute && !append_text(result, token.Text())) return 0;
            next_exp();
        } else if (token.GetKind() != Token::tkIdent) {
            return handle_error("Unexpected token in string expression!");
        } else if (const ValueStep step = find_value_function(token.Text())) {
            if (!append_value(step, token, result, execute)) return 0;
            next_exp();
        } else if (!get_str_exp_var(token, result, execute)) {
            return 0;
        }
        if (!token.IsOperator(Token::opAdd)) return 1;
    }
}

int FileParser::get_str_exp_var(const Token& token, CString& result, int execute) {
    const VariantVar* variable = m_variables.Find(token.Name());
    if (!variable) {
        return handle_error("Undefined variable '%s' used in string expression!", token.GetText());
    }
    if (execute && !append_text(result, tessalink::VariantText(*variable).View())) return 0;
    next_exp();
    return 1;
}

[[gnu::noinline]] int FileParser::append_value(ValueStep step, const Token& token, CString& result,
                                               int execute) {
    // What is built so far waits while the function's own texts are built.
    const ScopedAddition waiting(m_counts->liveText, static_cast<std::size_t>(result.GetLength()));
    CString text;
    if (!(this->*step)(token, text, execute)) return 0;
    if (!execute) return 1;
    if (m_counts->liveText + static_cast<std::size_t>(text.GetLength()) > cMaxTextLength) {
        return handle_error(cTextTooLong);
    }
    result += text;
    return 1;
}

int FileParser::append_text(CString& result, std::string_view text) {
    const std::size_t length = static_cast<std::size_t>(result.GetLength()) + text.size();
    if (m_counts->liveText + length > cMaxTextLength) return handle_error(cTextTooLong);
    result += text;
    return 1;
}
