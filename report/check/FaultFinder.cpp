#include "report/check/FaultFinder.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "report/check/detail/FaultTexts.h"
#include "report/detail/CharClasses.h"
#include "report/detail/Keywords.h"
#include "report/detail/Nesting.h"

namespace tessalink {

using detail::Finding;
using detail::ScopedValue;

namespace {

constexpr const char* cNoEndif = "@ENDIF expected!";
constexpr const char* cNoPrint = "@PRINT_DEFERRED expected!";
constexpr std::string_view cUnclosedText = "String constant not terminated!";
constexpr std::string_view cTooDeep = "Statements nested too deeply!";
constexpr std::string_view cThen = "THEN";
constexpr std::string_view cParagraph = "\\par";
/// How far the end of a command is looked for.
constexpr std::uint64_t cMaxArguments = std::uint64_t{1} << 16;

/// After these faults the statement can be read on as if there were none.
constexpr std::string_view cPassable[] = {
    "Variable '%s' already defined!", "Expected integer value in TEXT!",
    "Expected integer in TEXT after ';'!", "Maximum in TEXT must be > 0!",
    "Division by zero in expression!"};

/// The keywords that a structure needs: a word that begins with one may be meant as it.
constexpr Token::Keyword cStructural[] = {Token::kwPrintDeferred, Token::kwDeferStart,
                                          Token::kwDeferEnd, Token::kwEndif, Token::kwIf};

std::string_view nameOf(Token::Keyword keyword) {
    return detail::cKeywords[static_cast<std::size_t>(keyword)];
}

bool isPassable(std::string_view format) {
    return std::find(std::begin(cPassable), std::end(cPassable), format) != std::end(cPassable);
}

bool beginsWith(std::string_view word, std::string_view keyword) {
    return word.size() > keyword.size() &&
           detail::equalNoCase(word.substr(0, keyword.size()), keyword);
}

std::optional<Token::Keyword> joinedKeyword(std::string_view word) {
    const auto* const found =
        std::find_if(std::begin(cStructural), std::end(cStructural),
                     [&](Token::Keyword keyword) { return beginsWith(word, nameOf(keyword)); });
    if (found == std::end(cStructural)) return std::nullopt;
    return *found;
}

bool takesArguments(Token::Keyword keyword) {
    return keyword == Token::kwIf || keyword == Token::kwDeferStart;
}

/// Whether the current token, in expression mode, is an "@THEN" that a word is joined to.
bool isJoinedThen(FileScanner& scanner) {
    const Token& token = scanner.GetToken();
    const bool isCommand = scanner.GetPos() - scanner.GetTokenPos() > token.Text().size();
    return token.GetKind() == Token::tkIdent && isCommand && beginsWith(token.Text(), cThen);
}

/// Where the text goes on behind the current token, which is an "@THEN" or begins as one.
std::uint64_t behindThen(const FileScanner& scanner) {
    return scanner.GetToken().GetKind() == Token::tkIdent ? scanner.GetTokenPos() + 1 + cThen.size()
                                                          : scanner.GetPos();
}

/// Passes the current token of a command that is not understood; false when the command can't go
/// on: at markup, at another statement, at the end.
bool passToken(FileScanner& scanner) {
    const Token& token = scanner.GetToken();
    switch (token.GetKind()) {
        case Token::tkEnd:
            return false;
        case Token::tkKeyword:
            return token.GetKeyword() >= Token::kwCommaList;
        case Token::tkNone:
            break;
        default:
            return true;
    }
    constexpr std::string_view markup = "\\{}";
    const bool isTaken = scanner.GetPos() != scanner.GetTokenPos();  // a lone "@"
    return isTaken || markup.find(scanner.TakeChar()) == std::string_view::npos;
}

}  // namespace

/// What was found in the whole template.
struct FaultFinder::Findings {
    std::vector<Finding> list;
    std::map<CString, std::uint64_t> definedAt;  ///< where names were defined first
};

const FaultFinder::Recovery FaultFinder::cRecoveries[Token::cKeywordCount] = {
    &FaultFinder::recover_condition,  // IF
    &FaultFinder::recover_branch,     // THEN
    &FaultFinder::recover_statement,  // ENDIF
    &FaultFinder::recover_arguments,  // CALL
    &FaultFinder::recover_arguments,  // COMPUTE
    &FaultFinder::recover_statement,  // LINK
    &FaultFinder::recover_id,         // ID
    &FaultFinder::recover_arguments,  // INCLUDE
    &FaultFinder::recover_group,      // DEFER_START
    &FaultFinder::recover_block_end,  // DEFER_END
    &FaultFinder::recover_print,      // PRINT_DEFERRED
    &FaultFinder::recover_comment,    // COMMENT
    &FaultFinder::recover_statement,  // COMMENT_END
    &FaultFinder::recover_statement,  // ELSE
    &FaultFinder::recover_arguments,  // DEFINE
    &FaultFinder::recover_arguments,  // LET
    &FaultFinder::recover_arguments,  // COMMA_LIST
    &FaultFinder::recover_arguments,  // CAP
    &FaultFinder::recover_arguments,  // TEXT
    &FaultFinder::recover_arguments,  // EVAL
};

FaultFinder::FaultFinder(CFile& templateFile, CFile& output, VarTable& definitions, int scrambled)
    : TemplateChecker(templateFile, output, definitions, scrambled),
      m_finder(this),
      m_findings(std::make_unique<Findings>()) {}

FaultFinder::FaultFinder(CFile& templateFile, CFile& output, FaultFinder& root, int scrambled)
    : TemplateChecker(templateFile, output, root, scrambled), m_finder(&root) {}

FaultFinder::~FaultFinder() = default;

std::unique_ptr<FileParser> FaultFinder::create_parser(CFile& templateFile, CFile& output,
                                                       int scrambled) {
    return std::unique_ptr<FileParser>(new FaultFinder(templateFile, output, *m_finder, scrambled));
}

std::vector<TemplateFault> FaultFinder::FindFaults() {
    Parse(nullptr);
    return detail::describeFindings(m_findings->list, scanner().GetFile(), scanner().IsScrambled());
}

// What is told.

int FaultFinder::handle_error(const char* message) {
    return handle_error(message, "");
}

int FaultFinder::handle_error(const char* format, const char* argument) {
    const std::uint64_t position = fault_position();
    if (is_trial()) {
        m_trial = Trial{format, argument, position};
        return 0;
    }
    if (m_isMuted || is_full()) return 0;
    m_fault = position;
    m_isTooDeep = format == cTooDeep;
    // Of the two readings of a value the one counts that got farther.
    const std::optional<Trial> trial = std::exchange(m_trial, std::nullopt);
    if (trial && trial->position > position) {
        m_fault = trial->position;
        tell(trial->format, trial->argument);
        return 0;
    }
    tell(format, argument);
    return isPassable(format);
}

void FaultFinder::tell(const CString& format, const CString& argument) {
    Finding finding;
    finding.rule = finding.message = format;
    finding.message.Replace("%s", argument);
    finding.offset = spot_at(m_fault).offset;
    finding.start = spot_at(m_start).offset;
    finding.item = spot_at(m_item).offset;
    finding.related = m_related;
    finding.isAtEnd = scanner().GetToken().GetKind() == Token::tkEnd;
    m_isTold = m_finder->add(finding);
}

/// Tells what is wrong with what began at `start`, at the current token.
void FaultFinder::tell_from(std::uint64_t start, const char* message, std::uint64_t related) {
    const ScopedValue<std::uint64_t> relation(m_related, related);
    m_start = m_item = start;
    handle_error(message);
}

void FaultFinder::tell_include(const TemplateChecker& at, const CString& message) {
    if (is_full()) return;
    Finding finding;
    finding.rule = finding.message = message;
    finding.offset = finding.start = finding.item = at.statement_spot().offset;
    add(finding);
}

/// Whether the finding is new, and there was room for it.
bool FaultFinder::add(const Finding& finding) {
    // What is read anew, behind a text without end, may meet the same fault again.
    std::vector<Finding>& list = m_findings->list;
    const bool isKnown = std::any_of(list.begin(), list.end(), [&](const Finding& other) {
        return other.offset == finding.offset && other.message == finding.message;
    });
    if (isKnown && !finding.isAtEnd) return false;
    m_isFull = list.size() == cMaxFaults;
    if (!m_isFull) list.push_back(finding);
    return !m_isFull;
}

void FaultFinder::count_endless() {
    if (++m_finder->m_endless > cMaxEndless) m_finder->m_isFull = true;
}

// Statements. Conditions and groups are no statements within one another here but what is open, so
// that a fault in one leaves the others as they are.

int FaultFinder::get_stmt(const Token& token, int) {
    if (std::exchange(m_isHeader, false)) {
        m_isHeaderRead = true;
        return 0;
    }
    while (!is_full()) {
        if (m_group && read_part_of_group(token)) continue;
        if (token.GetKind() == Token::tkEnd) break;
        if (token.IsKeyword(Token::kwElse)) {
            read_else();
        } else if (token.IsKeyword(Token::kwEndif)) {
            read_endif();
        } else {
            read_statement(token);
        }
    }
    end_run();
    return 1;
}

template <class Step>
void FaultFinder::attempt(const Token& token, Step step) {
    m_start = m_item = scanner().GetTokenPos();
    m_wordEnd = scanner().GetPos();
    m_kind = token.GetKind();
    m_keyword = token.GetKeyword();
    m_blockStart.reset();
    m_isUnclosed = m_isTold = false;
    try {
        if (step()) return;
    } catch (const ParseException& fault) {
        // The scanner's own faults come this way.
        handle_error(fault.what());
        m_isUnclosed = fault.what() == cUnclosedText;
        if (m_isUnclosed) count_endless();
    }
    m_isHeader = m_isHeaderRead = false;
    m_trial.reset();
    clear_stacks();
    if (m_group) m_group->isTold = true;
    if (is_full()) return;
    if (m_kind == Token::tkKeyword) {
        (this->*cRecoveries[m_keyword])();
    } else {
        recover_statement();
    }
}

void FaultFinder::read_statement(const Token& token) {
    if (token.IsKeyword(Token::kwDeferEnd) &&
        ((m_group && m_group->isTold) || take_forgiven(Token::kwDeferEnd))) {
        return resume(scanner().GetPos());
    }
    if (token.IsKeyword(Token::kwPrintDeferred) && take_forgiven(Token::kwPrintDeferred)) {
        return print_group(token);
    }
    attempt(token, [&] { return get_simple_stmt(token, 0); });
}

int FaultFinder::get_var(const Token& token, int execute) {
    const std::optional<Token::Keyword> keyword = joinedKeyword(token.Text());
    const std::uint64_t position = spot_at(scanner().GetTokenPos()).offset;
    const int result = TemplateChecker::get_var(token, execute);
    if (!keyword) return result;
    const bool hasArguments = token.GetKind() == Token::tkText && token.Text().starts_with('(');
    std::vector<std::uint64_t>& joined = m_joined[*keyword];
    if ((hasArguments || !takesArguments(*keyword)) && joined.size() < cMaxFaults) {
        joined.push_back(position);
    }
    return result;
}

/// Where the last word begins, behind an offset, that begins with a keyword; it is told once.
std::uint64_t FaultFinder::joined_behind(Token::Keyword keyword, std::uint64_t start) {
    std::vector<std::uint64_t>& joined = m_joined[keyword];
    if (joined.empty() || joined.back() < spot_at(start).offset) return cNowhere;
    const std::uint64_t position = joined.back();
    joined.pop_back();
    return position;
}

int FaultFinder::get_cond_stmt(const Token& token, int) {
    // The branches are not read by the statement itself, but with what follows it.
    m_isHeader = true;
    read_condition(token);
    if (!std::exchange(m_isHeaderRead, false)) return 0;
    open_condition(false);
    return 1;
}

void FaultFinder::open_condition(bool isDoubtful) {
    if (m_conditions.size() == cMaxNesting) return forgive(Token::kwIf);
    m_conditions.push_back({m_start, begin_branches(), isDoubtful});
    count_nesting(1);
}

/// Closes the innermost condition. When a doubtful one took an @ENDIF, one that it stands in may
/// have lost its own.
void FaultFinder::close_condition() {
    const int taken = m_conditions.back().takenByInner;
    end_branches(m_conditions.back().branches);
    count_nesting(-1);
    m_conditions.pop_back();
    if (!m_conditions.empty()) m_conditions.back().takenByInner += taken;
}

void FaultFinder::read_else() {
    constexpr auto unknown = cNowhere;
    if (m_conditions.empty()) {
        if (m_forgiven[Token::kwEndif] == 0) {
            tell_from(scanner().GetTokenPos(), "End of File expected!",
                      joined_behind(Token::kwIf, 0));
            ++m_forgiven[Token::kwEndif];
        }
    } else if (Condition& condition = m_conditions.back(); !condition.hasElse) {
        condition.hasElse = true;
    } else if (condition.isDoubtful && m_conditions.size() > 1) {
        return close_condition();  // it is that of an outer one
    } else if (!condition.isDoubtful && !std::exchange(condition.isTold, true)) {
        tell_from(condition.start, cNoEndif, unknown);
    }
    scanner().NextText();
}

void FaultFinder::read_endif() {
    if (m_conditions.empty()) {
        if (!take_forgiven(Token::kwEndif)) {
            tell_from(scanner().GetTokenPos(), "End of File expected!",
                      joined_behind(Token::kwIf, 0));
        }
    } else {
        m_conditions.back().takenByInner += m_conditions.back().isDoubtful;
        close_condition();
    }
    scanner().NextText();
}

/// What is still open at the end has lost its own end.
void FaultFinder::end_run() {
    m_group.reset();
    while (!m_conditions.empty()) {
        Condition& condition = m_conditions.back();
        if (condition.takenByInner > 0) {
            --condition.takenByInner;
        } else if (!condition.isDoubtful) {
            tell_from(condition.start, cNoEndif, joined_behind(Token::kwEndif, condition.start));
        }
        close_condition();
    }
}

// Deferred output.

int FaultFinder::get_deferred(const Token& token, int) {
    open_group(false);
    if (m_group->blocks.size() == cMaxDeferredBlocks && !std::exchange(m_group->isTooLarge, true)) {
        handle_error("Too many deferred blocks in one group!");
    }
    double key = 0.0;
    if (!get_deferred_key(token, 1, key)) return 0;
    return hold_block(token);
}

/// Keeps the block that begins here.
int FaultFinder::hold_block(const Token& token) {
    m_blockStart = scanner().GetPos();
    std::uint64_t end = 0;
    if (std::binary_search(m_endlessBlocks.begin(), m_endlessBlocks.end(), m_start)) {
        move_to_end();
        return handle_error("@DEFER_END expected!");
    }
    if (!skip_deferred_text(token, end)) {
        note_endless_blocks();
        return 0;
    }
    if (!m_group->isTooLarge) m_group->blocks.push_back({*m_blockStart, end});
    m_group->isTold = false;
    scanner().SkipLineEnds();
    scanner().NextText();
    return 1;
}

/// Notes which blocks from here on have no end, so that none is looked for again.
void FaultFinder::note_endless_blocks() {
    m_end = scanner().GetPos();
    m_endlessBlocks = {m_start};
    scanner().MoveTo(*m_blockStart);
    const Token& token = scanner().GetToken();
    while (scanner().NextText().GetKind() != Token::tkEnd) {
        if (token.IsKeyword(Token::kwDeferStart)) {
            m_endlessBlocks.push_back(scanner().GetTokenPos());
        } else if (token.IsKeyword(Token::kwDeferEnd) && m_endlessBlocks.size() > 1) {
            m_endlessBlocks.pop_back();
        }
    }
}

/// The end of the template is the current token then.
void FaultFinder::move_to_end() {
    resume(m_end);
}

int FaultFinder::get_comment(const Token& token, int execute) {
    const std::uint64_t start = scanner().GetTokenPos();
    if (start < m_endlessComment) return TemplateChecker::get_comment(token, execute);
    move_to_end();
    return handle_error("End of Comment Missing!");
}

void FaultFinder::open_group(bool isTold) {
    if (!m_group) m_group = Group{m_start, m_conditions.size(), isTold, false, {}};
}

/// Reads what belongs to the open group alone; false when the token is that of a statement.
bool FaultFinder::read_part_of_group(const Token& token) {
    if (token.IsKeyword(Token::kwPrintDeferred)) {
        print_group(token);
        return true;
    }
    if (token.IsKeyword(Token::kwDeferStart) || token.IsKeyword(Token::kwId) ||
        token.IsKeyword(Token::kwComment)) {
        return false;
    }
    if (!std::exchange(m_group->isTold, true)) {
        tell_from(m_group->start, cNoPrint, joined_behind(Token::kwPrintDeferred, m_group->start));
    }
    const bool isEnd = token.IsKeyword(Token::kwElse) || token.IsKeyword(Token::kwEndif);
    if (token.GetKind() == Token::tkEnd || (isEnd && m_conditions.size() <= m_group->depth)) {
        ++m_forgiven[Token::kwPrintDeferred];
        close_group();
    }
    return false;
}

void FaultFinder::print_group(const Token& token) {
    attempt(token, [&] {
        bool descending = false;
        return get_print_deferred(token, descending);
    });
    if (m_group) close_group();
}

void FaultFinder::close_group() {
    const Group group = *std::exchange(m_group, std::nullopt);
    const Stretch stretch = begin_blocks();
    for (const Block& block : group.blocks) {
        if (is_full()) break;
        CString text;
        m_start = m_item = group.start;
        if (take_block(block.start, block.end, text)) run_block(text, block.start, group.start);
    }
    end_blocks(stretch);
}

// Values.

int FaultFinder::get_assignment(const Token& token, int execute) {
    const std::uint64_t start = scanner().GetTokenPos();
    m_item = start;
    m_trial.reset();
    if (TemplateChecker::get_assignment(token, execute)) {
        if (token.GetKind() == Token::tkSemicolon || token.GetKind() == Token::tkRParen) return 1;
        handle_error("Unexpected token in LET!");
    }
    clear_stacks();
    return skip_assignment(start);
}

/// Moves to the ";" or ")" behind an assignment that has a fault.
int FaultFinder::skip_assignment(std::uint64_t start) {
    scanner().MoveTo(start);
    const Token& token = scanner().NextExp();
    for (int depth = 0; scanner().GetPos() - start < cMaxArguments; scanner().NextExp()) {
        const bool isEnd =
            token.GetKind() == Token::tkSemicolon || token.GetKind() == Token::tkRParen;
        if (depth == 0 && isEnd) return 1;
        depth += token.GetKind() == Token::tkLParen;
        depth -= token.GetKind() == Token::tkRParen;
        if (!passToken(scanner())) return 0;
    }
    return 0;
}

int FaultFinder::get_exp_number(const Token& token) {
    if (!top_operand()) m_isConstant = true;
    return TemplateChecker::get_exp_number(token);
}

int FaultFinder::get_exp_var(const Token& token) {
    m_isConstant = false;
    return TemplateChecker::get_exp_var(token);
}

int FaultFinder::do_eval() {
    return m_isConstant ? apply_operator() : TemplateChecker::do_eval();
}

int FaultFinder::check_zero_division() {
    // A branch may never be carried out.
    return !m_isConstant || is_conditional() || handle_error("Division by zero in expression!");
}

int FaultFinder::define_variable(const CString& name) {
    const std::uint64_t position = spot_at(scanner().GetTokenPos()).offset;
    const auto [first, isNew] = m_finder->m_findings->definedAt.try_emplace(name, position);
    const ScopedValue<std::uint64_t> relation(m_related, cNowhere);
    if (!variables().Exists(name)) {
        first->second = position;
    } else if (!isNew) {
        m_related = first->second;
    }
    return TemplateChecker::define_variable(name);
}

// Going on behind a fault.

void FaultFinder::resume(std::uint64_t position) {
    scanner().MoveTo(position);
    scanner().NextText();
}

/// What lost its beginning or its end by something that was skipped is no fault.
void FaultFinder::forgive(Token::Keyword keyword) {
    switch (keyword) {
        case Token::kwIf:
            ++m_forgiven[Token::kwEndif];
            break;
        case Token::kwEndif:
            if (!take_forgiven(keyword) && !m_conditions.empty()) {
                ++m_conditions.back().takenByInner;
            }
            break;
        case Token::kwDeferStart:
            ++m_forgiven[Token::kwDeferEnd];
            ++m_forgiven[Token::kwPrintDeferred];
            break;
        default:
            break;
    }
}

bool FaultFinder::take_forgiven(Token::Keyword keyword) {
    int& count = m_forgiven[static_cast<std::size_t>(keyword)];
    return count > 0 && count-- > 0;
}

/// The offset behind the ")" that closes the "(" right behind the statement's word.
std::optional<std::uint64_t> FaultFinder::find_close() {
    if (m_isUnclosed) return std::nullopt;
    scanner().MoveTo(m_wordEnd);
    try {
        const Token& token = scanner().NextExp();
        if (token.GetKind() != Token::tkLParen) return std::nullopt;
        for (int depth = 0; scanner().GetPos() - m_wordEnd < cMaxArguments; scanner().NextExp()) {
            depth += token.GetKind() == Token::tkLParen;
            depth -= token.GetKind() == Token::tkRParen;
            if (depth == 0) return scanner().GetPos();
            if (!passToken(scanner())) return std::nullopt;
        }
    } catch (const ParseException&) {
        // A text or a name that never ends: the command doesn't either.
    }
    return std::nullopt;
}

/// Where a text in brackets begins, before the fault, that goes on behind its paragraph: it may
/// have lost its end.
std::optional<std::uint64_t> FaultFinder::find_long_text() {
    if (m_isUnclosed || cRecoveries[m_keyword] != &FaultFinder::recover_arguments) return {};
    scanner().MoveTo(m_wordEnd);
    const Token& token = scanner().NextExp();
    while (scanner().GetTokenPos() < m_fault && passToken(scanner())) {
        const bool isLong = token.GetKind() == Token::tkString &&
                            token.Text().find(cParagraph) != std::string_view::npos;
        if (isLong) return scanner().GetTokenPos();
        scanner().NextExp();
    }
    return {};
}

void FaultFinder::recover_arguments() {
    if (const std::optional<std::uint64_t> text = find_long_text()) {
        blame(spot_at(*text).offset);
        return resume(*text + 1);
    }
    resume(find_close().value_or(behind_fault()));
}

/// The offset behind the "@THEN" that is the next keyword from `start` on.
std::optional<std::uint64_t> FaultFinder::find_then(std::uint64_t start) {
    scanner().MoveTo(start);
    while (scanner().GetPos() - start < cMaxArguments) {
        const Token& token = scanner().NextText();
        if (token.IsKeyword(Token::kwThen) || isJoinedThen(scanner())) return behindThen(scanner());
        if (token.GetKind() == Token::tkKeyword || token.GetKind() == Token::tkEnd) break;
    }
    return std::nullopt;
}

void FaultFinder::recover_condition() {
    if (m_isTooDeep) {
        // All that is within it is too deep as well.
        const ScopedValue<bool> mute(m_isMuted, true);
        resume(m_start);
        skip_cond_stmt(scanner().GetToken(), 0);
        return;
    }
    const std::uint64_t fault = behind_fault();
    const std::optional<std::uint64_t> close = find_close();
    const std::uint64_t start = close.value_or(fault);
    open_condition(!close || !check_then(*close));
    const std::optional<std::uint64_t> branch = find_then(start);
    resume(branch.value_or(start));
}

/// What follows a condition with a fault is judged by itself: whether it is an "@THEN", be it that
/// a word is joined to it.
bool FaultFinder::check_then(std::uint64_t close) {
    scanner().MoveTo(close);
    try {
        const bool isThen = scanner().NextExp().IsKeyword(Token::kwThen);
        if (!isThen && m_fault < close) handle_error("@THEN expected after condition!");
        return isThen || isJoinedThen(scanner());
    } catch (const ParseException&) {
        // A text that never ends stands in its place.
        return false;
    }
}

void FaultFinder::recover_branch() {
    blame(joined_behind(Token::kwIf, 0));
    open_condition(true);
    resume(m_wordEnd);
}

void FaultFinder::recover_group() {
    if (m_blockStart) {
        const std::optional<std::uint64_t> joined = find_joined(Token::kwDeferEnd, *m_blockStart);
        if (joined) blame(spot_at(*joined).offset);
    } else {
        const ScopedValue<bool> mute(m_isMuted, true);
        const std::uint64_t fault = behind_fault();
        scanner().MoveTo(find_close().value_or(fault));
        if (hold_block(scanner().GetToken())) return;
    }
    resume(*m_blockStart);
}

void FaultFinder::recover_block_end() {
    blame(joined_behind(Token::kwDeferStart, 0));
    open_group(true);
    resume(m_wordEnd);
}

void FaultFinder::recover_print() {
    if (!m_group) blame(joined_behind(Token::kwDeferStart, 0));
    recover_arguments();
}

void FaultFinder::recover_comment() {
    m_end = scanner().GetPos();
    m_endlessComment = std::min(m_endlessComment, m_start);
    const std::optional<std::uint64_t> joined = find_joined(Token::kwCommentEnd, m_wordEnd);
    if (!joined) return skip_paragraph(m_wordEnd);
    blame(spot_at(*joined).offset);
    resume(*joined + 1 + nameOf(Token::kwCommentEnd).size());
}

void FaultFinder::recover_id() {
    if (scanner().GetToken().GetKind() != Token::tkEnd) return recover_statement();
    count_endless();
    skip_paragraph(m_wordEnd);
}

/// Names what is to blame for the fault of the statement.
void FaultFinder::blame(std::uint64_t related) {
    if (m_isTold) m_finder->m_findings->list.back().related = related;
}

/// Where the next word begins, from `start` on, that begins with a keyword.
std::optional<std::uint64_t> FaultFinder::find_joined(Token::Keyword keyword, std::uint64_t start) {
    JoinedAhead& ahead = m_joinedAhead[keyword];
    if (start < ahead.from || start > ahead.position) {
        ahead = {start, cNowhere};
        scanner().MoveTo(start);
        const Token& token = scanner().GetToken();
        while (scanner().NextText().GetKind() != Token::tkEnd) {
            if (token.GetKind() != Token::tkIdent || !beginsWith(token.Text(), nameOf(keyword))) {
                continue;
            }
            ahead.position = scanner().GetTokenPos();
            break;
        }
    }
    if (ahead.position == cNowhere) return std::nullopt;
    return ahead.position;
}

/// Moves behind the paragraph.
void FaultFinder::skip_paragraph(std::uint64_t start) {
    const std::string_view mark = cParagraph;
    const auto isMark = [&](std::string_view text, std::size_t at) {
        return at != std::string_view::npos &&
               (at + mark.size() == text.size() || !detail::isWordChar(text[at + mark.size()]));
    };
    scanner().MoveTo(start);
    for (;;) {
        const Token& token = scanner().NextText();
        const std::uint64_t position = scanner().GetTokenPos();
        if (token.GetKind() == Token::tkEnd) return;
        if (token.GetKind() == Token::tkKeyword) {
            forgive(token.GetKeyword());
            // Some swallow a paragraph mark.
            const std::uint64_t length = scanner().GetPos() - position;
            if (length <= token.Text().size() + mark.size()) continue;
            scanner().NextText();
            return;
        }
        std::size_t at = token.Text().find(mark);
        while (at != std::string_view::npos && !isMark(token.Text(), at)) {
            at = token.Text().find(mark, at + 1);
        }
        if (token.GetKind() == Token::tkText && at != std::string_view::npos) {
            return resume(position + at);
        }
    }
}

}  // namespace tessalink
