#include "report/tidy/detail/CommandJoiner.h"

#include <algorithm>
#include <array>
#include <utility>

#include "report/FileScanner.h"
#include "report/detail/CharClasses.h"
#include "report/tidy/TemplateTidier.h"

namespace tessalink::detail {

namespace {

using Kind = RtfPiece::Kind;

constexpr std::string_view cCommand = "@";
constexpr std::string_view cConstantEnd = "]";
constexpr std::string_view cParagraphMark = "\\par ";

constexpr const char* cNotClosed =
    "its line ends before the command does: write all of it in one paragraph, and close it";
constexpr const char* cOtherText =
    "a header, a footnote or a text box begins or ends in it, or an @ that is not shown: move "
    "that behind the command";
constexpr const char* cNoArgument =
    "a command stands where its parentheses must be closed: close them";
constexpr const char* cOddCharacter =
    "it has a character by its number whose stand-in for older readers is not beside it: type it "
    "anew";
constexpr const char* cOpenGroup =
    "a group begins within its brackets and ends outside, or the reverse: give all of the text in "
    "brackets one format";
constexpr const char* cTooLong = "it is too long, or the markup in it: type it anew";

/// Whether RTF ends in a control word whose blank is missing, so that a character behind it would
/// become part of it.
bool endsInControlWord(std::string_view rtf) {
    std::size_t start = rtf.size();
    while (start > 0 && isDigit(rtf[start - 1])) --start;
    if (rtf.size() - start > RtfReader::cMaxDigits) return false;
    if (start < rtf.size() && start > 0 && rtf[start - 1] == '-') --start;
    const std::size_t lettersEnd = start;
    while (start > 0 && isLetter(rtf[start - 1])) --start;
    const std::size_t letters = lettersEnd - start;
    std::size_t backslashes = 0;
    while (backslashes < start && rtf[start - 1 - backslashes] == '\\') ++backslashes;
    return letters > 0 && letters <= RtfReader::cMaxLetters && backslashes % 2 == 1;
}

/// The key that types a character of text: itself, or what a word processor puts something else
/// for.
char keyOf(char ch) {
    return static_cast<signed char>(ch) < 0 ? keyOfByte(ch) : ch;
}

/// Whether a character by its byte lacks a digit.
bool isCutHex(std::string_view raw) {
    constexpr std::size_t length = 4;
    return raw.starts_with("\\'") && raw.size() < length;
}

constexpr bool isOneOf(int keyword, std::initializer_list<Token::Keyword> keywords) {
    return std::find(keywords.begin(), keywords.end(), keyword) != keywords.end();
}

/// Keywords behind which no parenthesis comes.
constexpr auto cBareKeywords = {Token::kwThen,      Token::kwElse,    Token::kwEndif,
                                Token::kwLink,      Token::kwComment, Token::kwDeferEnd,
                                Token::kwCommentEnd};
/// Commands that swallow a paragraph mark behind their parentheses.
constexpr auto cSwallowers = {Token::kwLet,  Token::kwDefine,     Token::kwInclude,
                              Token::kwEval, Token::kwDeferStart, Token::kwPrintDeferred};

}  // namespace

const CommandJoiner::Step CommandJoiner::cSteps[] = {
    &CommandJoiner::take_none,            // closed
    &CommandJoiner::take_start,           // start
    &CommandJoiner::take_word,            // word
    &CommandJoiner::take_parenthesis,     // parenthesis
    &CommandJoiner::take_argument,        // arguments
    &CommandJoiner::take_constant,        // constant
    &CommandJoiner::take_constant_end,    // constantEnd
    &CommandJoiner::take_file_name,       // fileName
    &CommandJoiner::take_identification,  // identification
    &CommandJoiner::take_link,            // link
    &CommandJoiner::take_link_start,      // linkStart
    &CommandJoiner::take_link_word,       // linkWord
    &CommandJoiner::take_swallowed,       // swallow
    &CommandJoiner::take_complete,        // complete
    &CommandJoiner::take_brace,           // brace
    &CommandJoiner::take_none,            // ended
};

CommandJoiner::CommandJoiner(NameSource names, ResultListener listener)
    : m_names(std::move(names)), m_listener(std::move(listener)) {}

void CommandJoiner::Begin(const RtfPiece& piece) {
    m_output.clear();
    m_raw = m_text = cCommand;
    m_markup.clear();
    m_tail.clear();
    m_seams.clear();
    m_tailParts = m_tailIsGroup = m_isAfterData = m_lastIsRetyped = false;
    m_isAmbiguous = m_isSplit = m_follows = m_isBare = false;
    m_joints = m_retyped = 0;
    m_charEnd = m_raw.size();
    m_keyword = cNoKeyword;
    m_fault = nullptr;
    m_first = piece.first;
    m_unicodeCount = piece.unicodeCount;
    m_fallback = 0;
    end_here(State::start);
}

std::size_t CommandJoiner::Take(const RtfPiece& piece) {
    const bool isText = piece.kind == Kind::text;
    const std::size_t taken = isText              ? take_text(piece.raw)
                              : take_piece(piece) ? piece.raw.size()
                                                  : 0;
    if (m_raw.size() > TemplateTidier::cMaxLength ||
        m_raw.size() - m_charEnd > TemplateTidier::cMaxMarkup) {
        close_off(cTooLong);
        close();
    } else if (taken < piece.raw.size() || piece.raw.empty()) {
        close();
    }
    return taken;
}

std::size_t CommandJoiner::take_text(std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view raw = text.substr(i, 1);
        if (isLineEnd(text[i]) && m_state != State::constant) {
            m_tail += raw;
            add_raw(raw);
        } else if (!take_char({keyOf(text[i]), raw})) {
            return i;
        }
    }
    return text.size();
}

bool CommandJoiner::take_piece(const RtfPiece& piece) {
    switch (piece.kind) {
        case Kind::command:
            return take_char({cCommand.front(), piece.raw});
        case Kind::character:
            return take_character(piece);
        case Kind::open:
        case Kind::close:
        case Kind::markup:
        case Kind::hidden:
            return take_markup(piece);
        case Kind::invisible:
            return take_invisible(piece);
        case Kind::fallback:
            return take_fallback(piece.raw);
        case Kind::lineBreak:
            return take_line_break(piece);
        default:
            return take_boundary(piece);
    }
}

bool CommandJoiner::take_character(const RtfPiece& piece) {
    if (lacks_fallback() || (isCutHex(piece.raw) && is_within())) return fail(cOddCharacter);
    const bool isText = m_state == State::constant || m_state == State::fileName;
    const bool isKept = piece.isUnicode && (isText || piece.typed == '\0');
    if (isKept && is_within() && piece.unicodeCount != m_unicodeCount) return fail(cOddCharacter);
    if (!take_char({piece.typed, piece.raw})) return false;
    m_fallback = piece.isUnicode ? piece.unicodeCount : 0;
    m_isFallbackKept = isKept;
    return true;
}

bool CommandJoiner::take_markup(const RtfPiece& piece) {
    if (m_state == State::constant) {
        m_fallback = 0;
        m_groups += (piece.kind == Kind::open) - (piece.kind == Kind::close);
        take_verbatim(piece.raw);
        m_isAfterData = piece.kind == Kind::hidden;
        return true;
    }
    if (m_tailIsGroup && piece.kind == Kind::close && ends_at_empty_group()) {
        return take_empty_group(piece.raw);
    }
    if (lacks_fallback()) return fail(cOddCharacter);
    m_fallback = 0;
    m_tailIsGroup = piece.kind == Kind::open && m_tail.empty() && !m_tailParts;
    m_tailParts = true;
    m_isAfterData = piece.kind == Kind::hidden;
    m_tail += piece.raw;
    add_raw(piece.raw);
    return true;
}

/// Takes the empty group that ends a command, or its word before the parentheses; its start is the
/// tail.
bool CommandJoiner::take_empty_group(std::string_view raw) {
    if (m_state == State::linkWord) finish_link();
    if (m_state == State::word) finish_word();
    const bool canEnd =
        m_state == State::complete || m_state == State::swallow || m_state == State::parenthesis;
    if (!canEnd || m_end.raw != m_charEnd) {
        close_off(nullptr);
        return false;
    }
    m_text += m_tail;
    m_text += raw;
    m_tail.clear();
    m_tailParts = m_tailIsGroup = false;
    pass_char(raw);
    end_here(State::ended);
    return true;
}

bool CommandJoiner::ends_at_empty_group() const {
    switch (m_state) {
        case State::word:
        case State::linkWord:
        case State::parenthesis:
        case State::swallow:
        case State::complete:
            return true;
        default:
            return false;
    }
}

/// Whether a character by its number stays among the arguments, and not all that stands for it was
/// there.
bool CommandJoiner::lacks_fallback() const {
    return m_fallback > 0 && m_isFallbackKept && is_within();
}

/// One that is not at the end of the command is left out.
bool CommandJoiner::take_invisible(const RtfPiece& piece) {
    if (m_state == State::constant) return take_character(piece);
    if (lacks_fallback()) return fail(cOddCharacter);
    m_tailParts = true;
    m_tailIsGroup = false;
    m_fallback = piece.unicodeCount;
    m_isFallbackKept = false;
    add_raw(piece.raw);
    return true;
}

/// What stands for a character goes where that went.
bool CommandJoiner::take_fallback(std::string_view raw) {
    if (isCutHex(raw) && is_within()) return fail(cOddCharacter);
    m_fallback = std::max(m_fallback - 1, 0);
    if (m_state == State::constant) return take_verbatim(raw);
    if (m_tailParts) {
        add_raw(raw);
        return true;
    }
    const bool endsHere = m_end.raw == m_charEnd;
    if (!m_lastIsRetyped) m_text += raw;
    pass_char(raw);
    if (endsHere) m_end = mark();
    return true;
}

bool CommandJoiner::take_line_break(const RtfPiece& piece) {
    if (m_state == State::constant) return take_verbatim(piece.raw);
    if (m_state == State::linkWord) finish_link();
    if (m_state == State::word) finish_word();
    if (m_state == State::swallow && m_joints > 0 && m_tail.empty() && piece.isMark) {
        return take_paragraph_mark(piece.raw);
    }
    close_off(cNotClosed);
    return false;
}

bool CommandJoiner::take_boundary(const RtfPiece& piece) {
    const bool isInside = piece.kind == Kind::flow || piece.kind == Kind::hiddenCommand;
    if (m_state == State::constant && isInside) return take_verbatim(piece.raw);
    if (m_fallback > 0 && piece.kind == Kind::hiddenCommand) return fail(cOddCharacter);
    close_off(isInside ? cOtherText : cNotClosed);
    return false;
}

/// Of a text. The engine drops the line end that ends a control word there, so that needs a blank.
bool CommandJoiner::take_verbatim(std::string_view raw) {
    if (isLineEnd(raw.front()) && !m_isAfterData && endsInControlWord(m_text)) {
        m_text += ' ';
        ++m_joints;
    }
    m_text += raw;
    pass_char(raw);
    return true;
}

bool CommandJoiner::take_paragraph_mark(std::string_view raw) {
    m_text += cParagraphMark;
    pass_char(raw);
    end_here(State::ended);
    return true;
}

// Characters.

bool CommandJoiner::take_start(const Char& ch) {
    if (ch.raw == cCommand) {
        append(ch);
        end_here(State::ended);
        return true;
    }
    if (!isWordStart(ch.typed)) return false;
    start_word(State::word, ch);
    return true;
}

void CommandJoiner::start_word(State state, const Char& ch) {
    m_state = state;
    m_seams.clear();
    m_wordStart = m_text.size();
    append(ch);
}

bool CommandJoiner::take_word(const Char& ch) {
    if (grow_word(ch)) return true;
    finish_word();
    return take_char(ch);
}

bool CommandJoiner::grow_word(const Char& ch) {
    if (!isWordChar(ch.typed) || current_word().size() >= FileScanner::cMaxCommandWord)
        return false;
    if (m_tailParts) m_seams.push_back({mark(), current_word().size()});
    append(ch);
    return true;
}

void CommandJoiner::finish_word() {
    using enum State;
    static constexpr std::array<State, Token::cKeywordCount> behind = {
        parenthesis, swallow,     swallow,     parenthesis, parenthesis, swallow,    parenthesis,
        parenthesis, parenthesis, link,        parenthesis, ended,       swallow,    swallow,
        parenthesis, parenthesis, parenthesis, parenthesis, parenthesis, parenthesis};
    m_keyword = findKeyword(current_word());
    if (m_isComment && m_keyword != Token::kwCommentEnd) {
        if (!split(Token::kwCommentEnd)) {
            m_end = {cCommand.size(), cCommand.size()};
            m_keyword = cNoKeyword;
            m_state = ended;
        }
    } else if (m_keyword != cNoKeyword) {
        end_here(behind[static_cast<std::size_t>(m_keyword)]);
    } else if (m_seams.empty()) {
        end_here(complete);
    } else {
        finish_variable();
    }
}

/// The word is no keyword, and markup stands in it.
void CommandJoiner::finish_variable() {
    for (const Token::Keyword keyword : cBareKeywords) {
        if (split(keyword)) return;
    }
    m_isAmbiguous = true;
    const NameSet* const names = m_names(current_word());
    const Seam* const seam =
        names && !names->contains(current_word()) ? find_seam(*names) : nullptr;
    if (!seam) return end_here(State::complete);
    m_isSplit = true;
    m_end = seam->mark;
    m_state = State::ended;
}

/// The last seam before which the word is one of the names.
const CommandJoiner::Seam* CommandJoiner::find_seam(const NameSet& names) const {
    const auto found = std::find_if(m_seams.rbegin(), m_seams.rend(), [&](const Seam& seam) {
        return names.contains(current_word().substr(0, seam.length));
    });
    return found == m_seams.rend() ? nullptr : &*found;
}

/// Ends the command at a seam when the word before it is the keyword.
bool CommandJoiner::split(Token::Keyword keyword) {
    for (const Seam& seam : m_seams) {
        if (findKeyword(current_word().substr(0, seam.length)) != keyword) continue;
        m_end = seam.mark;
        m_keyword = keyword;
        m_state = State::ended;
        return true;
    }
    return false;
}

bool CommandJoiner::take_parenthesis(const Char& ch) {
    if (isBlank(ch.typed)) {
        append(ch);
        return true;
    }
    if (ch.typed != '(') return false;
    append(ch);
    m_depth = 1;
    m_argumentWord = 0;
    m_state = m_keyword == Token::kwId ? State::identification : State::arguments;
    return true;
}

bool CommandJoiner::take_argument(const Char& ch) {
    if (m_argumentWord > 0 && !isWordChar(ch.typed)) {
        if (findKeyword(std::string_view(m_text).substr(m_argumentWord)) != cNoKeyword) {
            return fail(cNoArgument);
        }
        m_argumentWord = 0;
    }
    append(ch, ch.typed == '{' || ch.typed == '}');
    switch (ch.typed) {
        case '@':
            m_argumentWord = m_text.size();
            break;
        case '[':
            m_groups = 0;
            m_state = m_keyword == Token::kwInclude ? State::fileName : State::constant;
            break;
        case '(':
            ++m_depth;
            break;
        case ')':
            if (--m_depth == 0) finish_arguments();
            break;
        default:
            break;
    }
    return true;
}

void CommandJoiner::finish_arguments() {
    end_here(m_keyword == Token::kwIf          ? State::link
             : isOneOf(m_keyword, cSwallowers) ? State::swallow
                                               : State::complete);
}

bool CommandJoiner::take_constant(const Char& ch) {
    if (ch.raw == cConstantEnd) m_state = State::constantEnd;
    return take_verbatim(ch.raw);
}

bool CommandJoiner::take_constant_end(const Char& ch) {
    if (ch.raw != cConstantEnd) {
        if (m_groups != 0) return fail(cOpenGroup);
        m_state = State::arguments;
        return take_argument(ch);
    }
    // A doubled bracket: what parts it stays in the constant.
    m_text += ch.raw;
    m_text += m_tail;
    m_joints += m_tailParts;
    m_tail.clear();
    m_tailParts = m_tailIsGroup = false;
    pass_char(ch.raw);
    m_state = State::constant;
    return true;
}

bool CommandJoiner::take_file_name(const Char& ch) {
    append(ch, true);
    if (ch.raw == cConstantEnd) m_state = State::arguments;
    return true;
}

bool CommandJoiner::take_identification(const Char& ch) {
    append(ch, ch.typed == '{' || ch.typed == '}');
    if (ch.raw == ")") finish_arguments();
    return true;
}

bool CommandJoiner::take_link(const Char& ch) {
    if (isBlank(ch.typed)) {
        append(ch);
        return true;
    }
    if (ch.raw != cCommand) return false;
    settle_tail(ch.typed);
    m_linkStart = mark();
    m_linkStart.raw = m_raw.size();
    append(ch);
    m_state = State::linkStart;
    return true;
}

bool CommandJoiner::take_link_start(const Char& ch) {
    if (isWordStart(ch.typed)) {
        start_word(State::linkWord, ch);
        return true;
    }
    rebase();
    m_state = State::start;
    return take_start(ch);
}

bool CommandJoiner::take_link_word(const Char& ch) {
    if (grow_word(ch)) return true;
    finish_link();
    return take_char(ch);
}

void CommandJoiner::finish_link() {
    const int code = findKeyword(current_word());
    if (m_keyword == Token::kwIf) {
        if (code == Token::kwThen) return end_here(State::swallow);
        if (code == cNoKeyword && split(Token::kwThen)) {
            m_keyword = Token::kwIf;
            return;
        }
    }
    const bool isGroup = m_keyword == Token::kwDeferEnd &&
                         isOneOf(code, {Token::kwDeferStart, Token::kwPrintDeferred});
    if (isGroup) m_end = m_linkStart;
    rebase();
    m_follows = isGroup;
    finish_word();
}

bool CommandJoiner::take_swallowed(const Char& ch) {
    if (m_isBare && ch.typed == '{') return take_complete(ch);
    if (m_joints == 0 || ch.IsRetyped() || !isBlank(ch.typed)) return false;
    append(ch);
    end_here(State::swallow);
    m_isBare = false;
    return true;
}

bool CommandJoiner::take_complete(const Char& ch) {
    if (ch.typed != '{') return false;
    append(ch);
    m_state = State::brace;
    return true;
}

bool CommandJoiner::take_brace(const Char& ch) {
    if (ch.typed != '}') return false;
    append(ch);
    end_here(State::ended);
    return true;
}

// The parts of a command.

void CommandJoiner::end_here(State next) {
    m_end = mark();
    m_isBare = true;
    m_state = next;
}

bool CommandJoiner::fail(const char* fault) {
    m_fault = fault;
    m_state = State::ended;
    return false;
}

CommandJoiner::Mark CommandJoiner::mark() const {
    return {m_charEnd, m_text.size(), m_markup.size(), m_joints, m_retyped};
}

void CommandJoiner::append(const Char& ch, bool keepsSpelling) {
    settle_tail(ch.typed);
    m_lastIsRetyped = ch.IsRetyped() && ch.typed != '\0' && !keepsSpelling;
    if (m_lastIsRetyped) {
        m_text += ch.typed;
        ++m_retyped;
    } else {
        m_text += ch.raw;
        if (ch.raw.size() > 1 && endsInControlWord(ch.raw)) m_text += ' ';
    }
    pass_char(ch.raw);
}

void CommandJoiner::settle_tail(char next) {
    if (m_tail.empty() && !m_tailParts) return;
    // The engine passes over line ends but in these places.
    const bool isTorn = m_text.back() == cCommand.front() || (m_text.back() == '>' && next == '=');
    m_joints += m_tailParts || isTorn;
    m_markup += m_tail;
    if (!m_tail.empty() && !m_isAfterData && endsInControlWord(m_markup)) m_markup += ' ';
    m_tail.clear();
    m_tailParts = m_tailIsGroup = false;
}

void CommandJoiner::add_raw(std::string_view raw) {
    m_raw += raw;
}

void CommandJoiner::pass_char(std::string_view raw) {
    m_raw += raw;
    m_charEnd = m_raw.size();
    m_isAfterData = false;
}

/// Markup goes before commands behind which text may be left out or moved.
bool CommandJoiner::is_before() const {
    return isOneOf(m_keyword, {Token::kwIf, Token::kwComment, Token::kwDeferEnd}) ||
           (m_keyword == Token::kwDeferStart && !m_follows);
}

// Ends.

/// No more of the command can come; what is not complete stays as it is.
void CommandJoiner::close_off(const char* fault) {
    if (is_within()) {
        fail(fault);
    } else {
        take_char({});
    }
}

/// Whether the parentheses of the command are open.
bool CommandJoiner::is_within() const {
    switch (m_state) {
        case State::arguments:
        case State::constant:
        case State::constantEnd:
        case State::fileName:
        case State::identification:
            return true;
        default:
            return false;
    }
}

void CommandJoiner::close() {
    if (m_end.raw > TemplateTidier::cMaxLength) m_fault = cTooLong;
    if (m_fault) {
        m_output += m_raw;
        tell(m_raw, {});
    } else {
        emit(m_end);
        m_output += std::string_view(m_raw).substr(m_end.raw);
    }
    if (m_keyword == Token::kwComment) m_isComment = true;
    if (m_keyword == Token::kwCommentEnd) m_isComment = false;
    m_state = State::closed;
}

void CommandJoiner::emit(const Mark& end) {
    if (end.joints == 0 && end.retyped == 0) {
        const auto raw = std::string_view(m_raw).substr(0, end.raw);
        m_output += raw;
        return tell(raw, {});
    }
    const auto text = std::string_view(m_text).substr(0, end.text);
    const auto markup = std::string_view(m_markup).substr(0, end.markup);
    m_output += is_before() ? markup : text;
    m_output += is_before() ? text : markup;
    tell(text, end);
}

void CommandJoiner::tell(std::string_view text, const Mark& end) {
    m_listener({m_first, text, end.joints > 0, end.retyped > 0, m_fault, m_isAmbiguous, m_isSplit});
}

/// Gives back the command before the link, and goes on with the one that begins there.
void CommandJoiner::rebase() {
    const Mark start = m_linkStart;
    emit(m_end);
    m_output += std::string_view(m_raw).substr(m_end.raw, start.raw - m_end.raw);
    m_raw.erase(0, start.raw);
    m_text.erase(0, start.text);
    m_markup.erase(0, start.markup);
    const auto shift = [&start](Mark& mark) {
        mark.raw -= start.raw;
        mark.text -= start.text;
        mark.markup -= start.markup;
        mark.joints -= start.joints;
        mark.retyped -= start.retyped;
    };
    for (Seam& seam : m_seams) shift(seam.mark);
    m_first += start.raw;
    m_charEnd -= start.raw;
    m_wordStart -= start.text;
    m_joints -= start.joints;
    m_retyped -= start.retyped;
    m_end = {cCommand.size(), cCommand.size()};
    m_keyword = cNoKeyword;
    m_follows = false;
}

}  // namespace tessalink::detail
