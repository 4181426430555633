// The statements of the template language.

#include <algorithm>
#include <iterator>

#include "platform/base/NumberText.h"
#include "platform/files/ModuleDir.h"
#include "report/FctTable.h"
#include "report/FileParser.h"
#include "report/TemplateFile.h"
#include "report/VarTable.h"
#include "report/detail/Nesting.h"

using tessalink::detail::ScopedAddition;
using tessalink::detail::ScopedValue;

namespace {

constexpr char cFolderSeparator = '\\';
constexpr const char* cTemplateExtension = ".DAT";

}  // namespace

/// What carries out the statement that starts with each keyword; null for a keyword that can't
/// start one.
const FileParser::StatementStep FileParser::cStatements[Token::cKeywordCount] = {
    &FileParser::get_cond_stmt,   // IF
    nullptr,                      // THEN
    nullptr,                      // ENDIF
    &FileParser::get_call,        // CALL
    &FileParser::get_compute,     // COMPUTE
    &FileParser::get_link,        // LINK
    &FileParser::get_id,          // ID
    &FileParser::get_include,     // INCLUDE
    &FileParser::get_deferred,    // DEFER_START
    nullptr,                      // DEFER_END
    nullptr,                      // PRINT_DEFERRED
    &FileParser::get_comment,     // COMMENT
    nullptr,                      // COMMENT_END
    nullptr,                      // ELSE
    &FileParser::get_define,      // DEFINE
    &FileParser::get_let,         // LET
    &FileParser::get_comma_list,  // COMMA_LIST
    &FileParser::get_cap,         // CAP
    &FileParser::get_text,        // TEXT
    &FileParser::get_eval,        // EVAL
};

int FileParser::get_stmt(const Token& token, int execute) {
    while (token.GetKind() != Token::tkEnd && !token.IsKeyword(Token::kwEndif) &&
           !token.IsKeyword(Token::kwElse)) {
        if (!get_simple_stmt(token, execute)) return 0;
    }
    return 1;
}

int FileParser::get_simple_stmt(const Token& token, int execute) {
    m_statementPos = m_scanner.GetTokenPos();
    switch (token.GetKind()) {
        case Token::tkText:
            if (execute && !write_output(token.Text())) return 0;
            next_text();
            return 1;
        case Token::tkIdent:
            return get_var(token, execute);
        case Token::tkKeyword:
            return token.GetKeyword() == Token::kwIf ? get_cond_stmt(token, execute)
                                                     : get_uncond_stmt(token, execute);
        default:
            return handle_error("Error in simple statement!");
    }
}

int FileParser::get_uncond_stmt(const Token& token, int execute) {
    const StatementStep step = cStatements[token.GetKeyword()];
    return step ? (this->*step)(token, execute) : handle_error("Unexpected keyword!");
}

int FileParser::get_var(const Token& token, int execute) {
    if (execute) {
        const VariantVar* variable = m_variables.Find(token.Name());
        if (!variable) return handle_error("Undefined variable '%s' found!", token.GetText());
        if (!write_value(*variable)) return 0;
    }
    next_text();
    return 1;
}

int FileParser::get_cond_stmt(const Token& token, int execute) {
    if (!execute) return skip_cond_stmt(token, execute);
    if (m_counts->nesting >= cMaxNesting) return handle_error("Statements nested too deeply!");
    const ScopedAddition nesting(m_counts->nesting);
    if (!next_is(Token::tkLParen, "Left parenthesis expected after @IF!")) return 0;
    Operand condition{};
    if (!evaluate(next_exp(), execute, condition)) return 0;
    if (!expect(token, Token::tkRParen, "Right parenthesis expected at end of condition!"))
        return 0;
    if (!next_exp().IsKeyword(Token::kwThen))
        return handle_error("@THEN expected after condition!");
    next_text();
    if (!get_stmt(token, condition.IsTrue())) return 0;
    if (token.IsKeyword(Token::kwElse)) {
        next_text();
        if (!get_stmt(token, !condition.IsTrue())) return 0;
    }
    if (!token.IsKeyword(Token::kwEndif)) return handle_error("@ENDIF expected!");
    next_text();
    return 1;
}

int FileParser::skip_cond_stmt(const Token& token, int) {
    std::uint64_t nesting = 0;
    for (;;) {
        if (token.IsKeyword(Token::kwIf)) ++nesting;
        if (token.IsKeyword(Token::kwEndif) && --nesting == 0) break;
        if (token.GetKind() == Token::tkEnd) return handle_error("@ENDIF expected!");
        m_scanner.SkipTo('@');
        next_text();
    }
    next_text();
    return 1;
}

int FileParser::get_call(const Token& token, int execute) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after CALL!")) return 0;
    if (!next_is(Token::tkIdent, "Function name expected after CALL!")) return 0;
    if (execute && !call_function(token.GetText())) return 0;
    if (!next_is(Token::tkRParen, "Right parenthesis expected after CALL!")) return 0;
    next_text();
    return 1;
}

int FileParser::call_function(const CString& name) {
    return !m_functions || m_functions->Call(name) ||
           handle_error("Function %s not defined!", name);
}

int FileParser::get_compute(const Token& token, int execute) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after COMPUTE!")) return 0;
    Operand value{};
    if (!evaluate(next_exp(), execute, value)) return 0;
    int width = 0;
    int decimals = cDefaultDecimals;
    if (!get_field(token, execute, width, decimals)) return 0;
    if (!expect(token, Token::tkRParen, "Right parenthesis expected after COMPUTE!")) return 0;
    if (execute && !write_number(value, width, decimals)) return 0;
    next_text();
    return 1;
}

int FileParser::get_field(const Token& token, int execute, int& width, int& decimals) {
    for (int* part : {&width, &decimals}) {
        if (token.GetKind() != Token::tkColon) return 1;
        Operand value{};
        if (!evaluate(next_exp(), execute, value)) return 0;
        *part = value.AsInteger();
    }
    return 1;
}

int FileParser::write_number(const Operand& value, int width, int decimals) {
    if (value.isInteger) return write_value(value.integer);
    if (width > cMaxFieldWidth || width < -cMaxFieldWidth) {
        return handle_error("Field width too large in COMPUTE!");
    }
    if (decimals > cMaxDecimals) return handle_error("Too many decimals in COMPUTE!");
    if (width == 0 && decimals == cDefaultDecimals) return write_value(value.real);
    return write_output(tessalink::formatDouble(value.real, width, decimals).View());
}

int FileParser::get_link(const Token&, int) {
    next_text();
    return 1;
}

int FileParser::get_id(const Token&, int) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after ID!")) return 0;
    m_scanner.SkipTo(')');
    if (!next_is(Token::tkRParen, "Right parenthesis missing after ID!")) return 0;
    m_scanner.SkipLineEnds();
    next_text();
    return 1;
}

int FileParser::get_include(const Token& token, int execute) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after INCLUDE!")) return 0;
    next_exp();
    if (token.GetKind() != Token::tkString && token.GetKind() != Token::tkIdent) {
        return handle_error("File name expected after INCLUDE!");
    }
    CString name = include_name(token);
    if (!next_is(Token::tkRParen, "Right parenthesis expected after INCLUDE!")) return 0;
    m_scanner.SkipParagraphMark();
    next_text();
    if (!execute) return 1;
    name.Replace('/', cFolderSeparator);
    if (!name.View().ends_with(cTemplateExtension)) name += cTemplateExtension;
    const ScopedValue<const std::uint64_t*> place(m_faultPos, &m_statementPos);
    return do_include(name);
}

CString FileParser::include_name(const Token& token) {
    const VariantVar* variable =
        token.GetKind() == Token::tkIdent ? m_variables.Find(token.Name()) : nullptr;
    return variable ? variable->GetAsStr() : token.GetText();
}

int FileParser::do_include(const CString& name) {
    tessalink::TemplateFile file(GetModuleDir() + cFolderSeparator + name);
    return run_include(file);
}

int FileParser::get_comment(const Token& token, int) {
    do {
        m_scanner.SkipTo('@');
        next_text();
        if (token.GetKind() == Token::tkEnd) return handle_error("End of Comment Missing!");
    } while (!token.IsKeyword(Token::kwCommentEnd));
    m_scanner.SkipLineEnds();
    next_text();
    return 1;
}

int FileParser::get_define(const Token& token, int) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after DEFINE!")) return 0;
    next_exp();
    for (;;) {
        if (!expect(token, Token::tkIdent, "Variable name expected in DEFINE!")) return 0;
        if (!define_variable(token.GetText())) return 0;
        if (next_exp().GetKind() != Token::tkComma) break;
        if (next_exp().GetKind() == Token::tkRParen) {
            return handle_error("Unexpected comma before right parenthesis in DEFINE!");
        }
    }
    if (!expect(token, Token::tkRParen, "Right parenthesis expected to terminate DEFINE!"))
        return 0;
    m_scanner.SkipParagraphMark();
    next_text();
    return 1;
}

int FileParser::define_variable(const CString& name) {
    if (m_variables.Exists(name)) return handle_error("Variable '%s' already defined!", name);
    m_variables.AddVar(name, 0);
    return 1;
}

int FileParser::get_let(const Token& token, int execute) {
    if (!next_is(Token::tkLParen, "Left parenthesis expected after LET!")) return 0;
    do {
        next_exp();
        if (!get_assignment(token, execute)) return 0;
    } while (token.GetKind() == Token::tkSemicolon);
    if (!expect(token, Token::tkRParen, "Unexpected token in LET!")) return 0;
    m_scanner.SkipParagraphMark();
    next_text();
    return 1;
}

int FileParser::get_assignment(const Token& token, int execute) {
    if (!expect(token, Token::tkIdent, "Variable name expected as start of assignment in LET!")) {
        return 0;
    }
    const CString name = token.GetText();
    if (!check_assignable(name)) return 0;
    if (!next_exp().IsOperator(Token::opEqual)) {
        return handle_error("'=' expected after Variable name '%s' in LET!", name);
    }
    next_exp();
    return get_assigned_value(token, name, execute);
}

int FileParser::check_assignable(const CString& name) {
    return m_variables.Exists(name) || handle_error("Variable '%s' not defined!", name);
}

int FileParser::get_assigned_value(const Token& token, const CString& name, int execute) {
    if (is_text_value(token)) {
        CString text;
        if (!get_str_exp(token, text, execute)) return 0;
        return !execute || assign_text(name, text);
    }
    Operand value{};
    if (!evaluate(token, execute, value)) return 0;
    if (execute) assign_number(name, value);
    return 1;
}

int FileParser::assign_text(const CString& name, const CString& text) {
    VariantVar& variable = m_variables.FindOrAdd(name).value;
    release_text(variable);
    m_counts->variableText += text.GetLength();
    if (m_counts->variableText > static_cast<std::int64_t>(cMaxTextLength)) {
        return handle_error("Texts of variables too long!");
    }
    variable = text;
    return 1;
}

void FileParser::assign_number(const CString& name, const Operand& value) {
    VariantVar& variable = m_variables.FindOrAdd(name).value;
    release_text(variable);
    variable = value.isInteger ? VariantVar(value.integer) : VariantVar(value.real);
}

/// No longer counts the text of a variable that gets another value.
void FileParser::release_text(const VariantVar& variable) {
    // What the host gave to a variable was not counted.
    std::int64_t& count = m_counts->variableText;
    count = std::max<std::int64_t>(count - std::ssize(variable.Text()), 0);
}

bool FileParser::is_text_value(const Token& token) const {
    if (token.GetKind() == Token::tkString) return true;
    if (token.GetKind() != Token::tkIdent) return false;
    if (find_value_function(token.Text())) return true;
    const VariantVar* variable = m_variables.Find(token.Name());
    return variable && variable->IsString();
}
