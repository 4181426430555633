#include "report/TemplateChecker.h"

#include "report/detail/Nesting.h"

namespace tessalink {

TemplateChecker::TemplateChecker(CFile& templateFile, CFile& output, VarTable& definitions,
                                 int scrambled)
    : FileParser(templateFile, output, definitions, scrambled), m_root(this) {}

TemplateChecker::TemplateChecker(CFile& templateFile, CFile& output, TemplateChecker& root,
                                 int scrambled)
    : FileParser(templateFile, output, root.variables(), scrambled), m_root(&root) {}

std::unique_ptr<FileParser> TemplateChecker::create_parser(CFile& templateFile, CFile& output,
                                                           int scrambled) {
    return std::unique_ptr<FileParser>(
        new TemplateChecker(templateFile, output, *m_root, scrambled));
}

// Statements are read without being carried out, but for those whose parts only an execution reads.

int TemplateChecker::get_stmt(const Token& token, int) {
    return FileParser::get_stmt(token, 0);
}

int TemplateChecker::get_call(const Token& token, int) {
    return FileParser::get_call(token, 1);
}

int TemplateChecker::get_include(const Token& token, int) {
    return FileParser::get_include(token, 1);
}

int TemplateChecker::get_deferred(const Token& token, int) {
    const Stretch blocks = begin_blocks();
    const int result = FileParser::get_deferred(token, 1);
    end_blocks(blocks);
    return result;
}

int TemplateChecker::get_cond_stmt(const Token& token, int) {
    const Stretch branches = begin_branches();
    const int result = read_condition(token);
    end_branches(branches);
    return result;
}

TemplateChecker::Stretch TemplateChecker::begin_branches() {
    // An outer @IF may skip an inner one; one branch of an @IF that is in none runs.
    const Stretch branches = begin_blocks();
    ++m_root->m_conditions;
    return branches;
}

void TemplateChecker::end_branches(const Stretch& branches) {
    --m_root->m_conditions;
    end_blocks(branches);
}

TemplateChecker::Stretch TemplateChecker::begin_blocks() const {
    return {m_root->m_defined.size(), is_conditional()};
}

void TemplateChecker::end_blocks(const Stretch& blocks) const {
    if (!blocks.isUnsure) return;
    std::vector<CString>& defined = m_root->m_defined;
    for (; defined.size() > blocks.defined; defined.pop_back()) {
        m_root->variables().RemoveKey(defined.back());
    }
}

int TemplateChecker::get_var(const Token& token, int) {
    m_root->note_read(token.GetText(), *this);
    return FileParser::get_var(token, 0);
}

int TemplateChecker::get_exp_var(const Token& token) {
    m_root->note_read(token.GetText(), *this);
    m_root->note_number(token.GetText(), *this);
    if (!push(Operand::Integer(1))) return 0;
    scanner().NextExp();
    return 1;
}

int TemplateChecker::do_eval() {
    if (!apply_operator()) return 0;
    if (Operand* operand = top_operand()) *operand = {operand->isInteger, 1, 1.0};
    return 1;
}

int TemplateChecker::get_str_exp_var(const Token& token, CString&, int) {
    m_root->note_read(token.GetText(), *this);
    if (m_isTrial) m_root->note_given(token.GetText(), m_target, *this);
    scanner().NextExp();
    return 1;
}

int TemplateChecker::check_assignable(const CString& name) {
    m_root->note_assign(name, *this);
    return 1;
}

int TemplateChecker::get_assigned_value(const Token& token, const CString& name, int) {
    if (token.GetKind() == Token::tkIdent && !is_value_function(token.Text())) {
        const FileScanner::Mark start = scanner().GetMark();
        m_target = name;
        if (is_text(token)) return 1;
        scanner().Rewind(start);
        clear_stacks();
    }
    return FileParser::get_assigned_value(token, name, 0);
}

/// Whether what follows up to the end of the assignment reads as a text.
bool TemplateChecker::is_text(const Token& token) {
    const detail::ScopedValue<bool> trial(m_isTrial, true);
    try {
        CString text;
        return get_str_exp(token, text, 0) &&
               (token.GetKind() == Token::tkSemicolon || token.GetKind() == Token::tkRParen);
    } catch (const ParseException&) {
        // The scanner's own faults come this way; reading as a number meets them again.
        return false;
    }
}

int TemplateChecker::handle_error(const char* message) {
    return m_isTrial ? 0 : FileParser::handle_error(message);
}

int TemplateChecker::handle_error(const char* format, const char* argument) {
    return m_isTrial ? 0 : FileParser::handle_error(format, argument);
}

int TemplateChecker::call_function(const CString& name) {
    m_root->note_call(name, *this);
    return 1;
}

int TemplateChecker::define_variable(const CString& name) {
    m_root->note_define(name, *this);
    if (!FileParser::define_variable(name)) return 0;
    m_root->m_defined.push_back(name);
    return 1;
}

CString TemplateChecker::include_name(const Token& token) {
    m_constantInclude = token.GetKind() == Token::tkString;
    if (!m_constantInclude) m_root->note_read(token.GetText(), *this);
    return token.GetText();
}

int TemplateChecker::do_include(const CString& name) {
    m_root->note_include(name, m_constantInclude, *this);
    return 1;
}

}  // namespace tessalink
