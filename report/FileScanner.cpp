#include "report/FileScanner.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include "report/ParseException.h"
#include "report/detail/CharClasses.h"
#include "report/detail/Keywords.h"
#include "report/detail/NumeralText.h"
#include "report/detail/TextSearch.h"

using tessalink::detail::findTextEnd;
using tessalink::detail::isBlank;
using tessalink::detail::isDigit;
using tessalink::detail::isLineEnd;
using tessalink::detail::isWordChar;
using tessalink::detail::isWordStart;

namespace {

constexpr char cCommand = '@';
constexpr char cControl = '\\';
constexpr char cStringStart = '[';
constexpr char cStringEnd = ']';

/// After these keywords white space and a paragraph mark are swallowed.
constexpr bool swallowsParagraphMark(int keyword) {
    constexpr unsigned keywords = 1u << Token::kwThen | 1u << Token::kwElse | 1u << Token::kwEndif |
                                  1u << Token::kwLink | 1u << Token::kwDeferEnd |
                                  1u << Token::kwCommentEnd;
    return (keywords >> keyword & 1u) != 0;
}

enum class Start : std::uint8_t {
    none,
    pause,  // white space, or the NUL behind a block
    digit,
    word,
    sign,
    lParen,
    rParen,
    command,
    colon,
    semicolon,
    comma,
    string
};

/// The rule of expression mode that a token's first character selects.
constexpr auto cStarts = [] {
    std::array<Start, 256> starts{};
    for (unsigned ch = 0; ch < starts.size(); ++ch) {
        const unsigned classes = tessalink::detail::cCharClasses[ch];
        if (classes & tessalink::detail::cBlank) starts[ch] = Start::pause;
        if (classes & tessalink::detail::cDigit) starts[ch] = Start::digit;
        if (classes & tessalink::detail::cWordStart) starts[ch] = Start::word;
    }
    for (const char ch : std::string_view("&*+-/<=>|~")) {
        starts[static_cast<unsigned char>(ch)] = Start::sign;
    }
    starts[0] = Start::pause;
    starts['('] = Start::lParen;
    starts[')'] = Start::rParen;
    starts[cCommand] = Start::command;
    starts[':'] = Start::colon;
    starts[';'] = Start::semicolon;
    starts[','] = Start::comma;
    starts[cStringStart] = Start::string;
    return starts;
}();

Start startOf(char ch) {
    return cStarts[static_cast<unsigned char>(ch)];
}

/// The operator that one character alone makes.
constexpr auto cSigns = [] {
    std::array<Token::Operator, 256> signs{};
    signs['&'] = Token::opAnd;
    signs['*'] = Token::opMultiply;
    signs['+'] = Token::opAdd;
    signs['-'] = Token::opSubtract;
    signs['/'] = Token::opDivide;
    signs['<'] = Token::opLess;
    signs['='] = Token::opEqual;
    signs['>'] = Token::opGreater;
    signs['|'] = Token::opOr;
    signs['~'] = Token::opNot;
    return signs;
}();

}  // namespace

IMPLEMENT_DYNAMIC(FileScanner, CObject)

FileScanner::FileScanner(CFile& file, int scrambled) : m_reader(&file, scrambled) {
    if (!m_reader.IsOpen()) {
        AfxThrowFileException(CFileException::invalidFile, -1, file.GetGivenPath());
    }
    if (m_reader.AtEOF()) m_token.m_kind = m_previous = Token::tkEnd;
}

FileScanner::~FileScanner() {
    // Detach rewinds nothing and closes nothing: it only forgets the file.
    m_reader.Detach();
}

// The readers below first try what a token mostly is, a piece inside the block, without a call;
// what meets the end of the block, a NUL or a line end is left to a slower one.

const Token& FileScanner::NextText() {
    m_previous = m_token.m_kind;
    m_tokenPos = m_reader.GetPos();
    const char* start = m_reader.Cursor();
    if (*start == cCommand) return read_command();
    const char* end = findTextEnd(start);
    if (*end != cCommand || static_cast<std::size_t>(end - start) >= m_capacity) {
        return read_long_text();
    }
    m_reader.MoveTo(end);
    return finish(Token::tkText, {start, static_cast<std::size_t>(end - start)});
}

const Token& FileScanner::NextExp() {
    m_previous = m_token.m_kind;
    return startOf(*m_reader.Cursor()) == Start::pause ? read_after_pause() : read_exp();
}

[[gnu::noinline]] const Token& FileScanner::read_after_pause() {
    skip_white_space();
    if (m_reader.Fill()) return read_exp();
    m_tokenPos = m_reader.GetPos();
    return finish(Token::tkEnd);
}

inline const Token& FileScanner::read_exp() {
    m_tokenPos = m_reader.GetPos();
    switch (startOf(*m_reader.Cursor())) {
        case Start::digit:
            return read_number();
        case Start::word:
            return read_name();
        case Start::sign:
            return read_operator();
        case Start::lParen:
            return read_single(Token::tkLParen);
        case Start::rParen:
            return read_single(Token::tkRParen);
        case Start::command:
            return read_command();
        case Start::colon:
            return read_single(Token::tkColon);
        case Start::semicolon:
            return read_single(Token::tkSemicolon);
        case Start::comma:
            return read_single(Token::tkComma);
        case Start::string:
            return read_string_constant();
        default:
            return finish(Token::tkNone);
    }
}

CString FileScanner::GetStoredText(std::uint64_t first, std::uint64_t end) {
    return end > first ? m_reader.GetTextBlock(first, end - 1) : CString();
}

void FileScanner::SkipLineEnds() {
    while (m_reader.Fill() && isLineEnd(*m_reader.Cursor())) m_reader.GetCh();
}

void FileScanner::SkipParagraphMark() {
    skip_white_space();
    if (m_reader.Fill() && *m_reader.Cursor() == cControl) take_paragraph_mark();
}

[[gnu::noinline]] void FileScanner::take_paragraph_mark() {
    constexpr std::string_view mark = "par";
    m_reader.SavePos();
    m_reader.GetCh();
    std::array<char, mark.size() + 1> word;
    std::size_t length = 0;
    while (length < word.size() && m_reader.Fill() && !isBlank(*m_reader.Cursor()) &&
           *m_reader.Cursor() != cControl) {
        word[length++] = m_reader.GetCh();
    }
    if (std::string_view(word.data(), length) == mark) {
        skip_one_blank();
    } else {
        m_reader.RestorePos();
    }
}

void FileScanner::SkipTo(char wanted) {
    while (m_reader.Fill()) {
        const char* cursor = m_reader.Cursor();
        const char* end = m_reader.BlockEnd();
        const void* found = std::memchr(cursor, wanted, static_cast<std::size_t>(end - cursor));
        m_reader.MoveTo(found ? static_cast<const char*>(found) : end);
        if (found) return;
    }
}

const Token& FileScanner::Rewind(const Mark& mark) {
    m_reader.SetPos(mark.tokenPos);
    m_token.m_kind = mark.previous;
    return NextExp();
}

const Token& FileScanner::finish_text(Token::Kind kind, std::string_view text) {
    return finish(kind, tessalink::detail::untilNul(text));
}

[[gnu::noinline]] const Token& FileScanner::read_long_text() {
    if (!m_reader.Fill()) return finish(Token::tkEnd);
    // A token may have started behind the end of the last block.
    if (*m_reader.Cursor() == cCommand) return read_command();
    const std::size_t room = m_capacity - 1;
    std::size_t length = 0;  // of what stands in the text buffer already
    for (;;) {
        const char* cursor = m_reader.Cursor();
        const auto ahead = static_cast<std::size_t>(m_reader.BlockEnd() - cursor);
        const std::size_t limit = std::min(ahead, room - length);
        const auto* at = static_cast<const char*>(std::memchr(cursor, cCommand, limit));
        const std::size_t count = at ? static_cast<std::size_t>(at - cursor) : limit;
        const bool inOneBlock = length == 0;
        m_reader.MoveTo(cursor + count);
        const bool complete = at || length + count == room || m_reader.AtEOF();
        if (complete && inOneBlock) return finish_text(Token::tkText, {cursor, count});
        std::memcpy(text_buffer() + length, cursor, count);
        length += count;
        if (complete || !m_reader.Fill())
            return finish_text(Token::tkText, {text_buffer(), length});
    }
}

const Token& FileScanner::read_command() {
    // The first character is the "@". Mostly a whole word follows it in the block.
    const char* start = m_reader.Cursor() + 1;
    const tessalink::detail::Word word = tessalink::detail::scanWord(start);
    const char* end = start + word.length;
    m_reader.MoveTo(start);
    if (ends_at_seam(end) || word.length > cMaxCommandWord || !isWordStart(*start)) {
        return read_split_command();
    }
    m_reader.MoveTo(end);
    return finish_word({start, word.length}, word.first);
}

[[gnu::noinline]] const Token& FileScanner::read_split_command() {
    if (!m_reader.Fill()) return finish(Token::tkNone);
    if (take_if(cCommand)) return finish(Token::tkText, "@");
    if (!isWordStart(*m_reader.Cursor())) return finish(Token::tkNone);
    const std::string_view word = read_split_word(cMaxCommandWord);
    return finish_word(word, tessalink::firstEight(word));
}

const Token& FileScanner::finish_word(std::string_view word, std::uint64_t first) {
    const int code = tessalink::detail::cKeywordTable.Find(word, first);
    if (code == tessalink::detail::cNoKeyword) return finish_name(word, first);
    m_token.m_keyword = static_cast<Token::Keyword>(code);
    finish(Token::tkKeyword, tessalink::detail::cKeywords[static_cast<std::size_t>(code)]);
    return swallowsParagraphMark(code) ? finish_swallowing() : m_token;
}

[[gnu::noinline]] const Token& FileScanner::finish_swallowing() {
    SkipParagraphMark();
    return m_token;
}

const Token& FileScanner::finish_name(std::string_view name, std::uint64_t first) {
    m_token.m_hash = name.size() <= sizeof(first) ? tessalink::hashShortText(first, name.size())
                                                  : tessalink::hashText(name);
    return finish(Token::tkIdent, name);
}

const Token& FileScanner::read_single(Token::Kind kind) {
    m_reader.MoveTo(m_reader.Cursor() + 1);
    return finish(kind);
}

const Token& FileScanner::read_operator() {
    const char sign = *m_reader.Cursor();
    m_reader.MoveTo(m_reader.Cursor() + 1);
    m_token.m_operator = cSigns[static_cast<unsigned char>(sign)];
    if (sign == '<' || sign == '>') {
        read_comparison(sign);
    } else if (sign == '-' && (m_previous == Token::tkLParen || m_previous == Token::tkOperator)) {
        m_token.m_operator = Token::opNegate;
    }
    return finish(Token::tkOperator);
}

/// Reads what may follow the first character of a comparison.
[[gnu::noinline]] void FileScanner::read_comparison(char sign) {
    if (sign == '<') SkipLineEnds();
    if (take_if('=')) {
        m_token.m_operator = sign == '<' ? Token::opLessEqual : Token::opGreaterEqual;
    } else if (sign == '<' && take_if('>')) {
        m_token.m_operator = Token::opNotEqual;
    }
}

const Token& FileScanner::read_number() {
    // Mostly a few digits inside the block, then something else.
    constexpr int safeDigits = std::numeric_limits<std::int32_t>::digits10;
    const char* start = m_reader.Cursor();
    const char* end = start;
    std::int32_t value = 0;
    while (isDigit(*end) && end - start < safeDigits) value = value * 10 + (*end++ - '0');
    if (isDigit(*end) || *end == '.' || ends_at_seam(end)) return read_long_number();
    m_reader.MoveTo(end);
    m_token.m_isInteger = 1;
    m_token.m_int = value;
    return finish(Token::tkNumber, {start, static_cast<std::size_t>(end - start)});
}

[[gnu::noinline]] const Token& FileScanner::read_long_number() {
    tessalink::detail::NumeralText numeral(text_buffer(), m_capacity);
    read_digits(numeral);
    m_token.m_isInteger = !take_if('.');
    if (m_token.m_isInteger) {
        m_token.m_int = numeral.GetInt();
    } else {
        numeral.AddPoint();
        SkipLineEnds();
        read_digits(numeral);
        m_token.m_double = numeral.GetDouble();
    }
    return finish(Token::tkNumber, numeral.Text());
}

void FileScanner::read_digits(tessalink::detail::NumeralText& numeral) {
    while (m_reader.Fill() && isDigit(*m_reader.Cursor())) {
        numeral.AddDigit(m_reader.GetCh());
        SkipLineEnds();
    }
}

const Token& FileScanner::read_name() {
    const char* start = m_reader.Cursor();
    const tessalink::detail::Word word = tessalink::detail::scanWord(start);
    const char* end = start + word.length;
    if (ends_at_seam(end)) return read_split_name();
    m_reader.MoveTo(end);
    return finish_name({start, word.length}, word.first);
}

[[gnu::noinline]] const Token& FileScanner::read_split_name() {
    const std::string_view name = read_split_word(cMaxName);
    if (m_reader.Fill() && isWordChar(*m_reader.Cursor())) {
        throw ParseException("Name too long in expression!");
    }
    return finish_name(name, tessalink::firstEight(name));
}

const Token& FileScanner::read_string_constant() {
    // Mostly a constant inside the block, without doubled brackets.
    const char* start = m_reader.Cursor() + 1;
    const char* end = start;
    while (*end != cStringEnd && *end != '\0' && !isLineEnd(*end)) ++end;
    if (*end != cStringEnd || ends_at_seam(end + 1) || end[1] == cStringEnd) {
        return read_split_string();
    }
    m_reader.MoveTo(end + 1);
    return finish(Token::tkString, {start, static_cast<std::size_t>(end - start)});
}

[[gnu::noinline]] const Token& FileScanner::read_split_string() {
    const auto stops = [](char ch) { return ch == cStringEnd || isLineEnd(ch); };
    std::size_t length = 0;
    m_reader.GetCh();
    while (m_reader.Fill()) {
        const char* cursor = m_reader.Cursor();
        const char* stop = std::find_if(cursor, m_reader.BlockEnd(), stops);
        append(length, {cursor, static_cast<std::size_t>(stop - cursor)});
        m_reader.MoveTo(stop);
        if (stop == m_reader.BlockEnd() || isLineEnd(m_reader.GetCh())) {
            SkipLineEnds();
            continue;
        }
        SkipLineEnds();
        if (!take_if(cStringEnd)) return finish_text(Token::tkString, {text_buffer(), length});
        append(length, {&cStringEnd, 1});
    }
    throw ParseException("String constant not terminated!");
}

std::string_view FileScanner::read_split_word(std::size_t limit) {
    std::size_t length = 0;
    while (length < limit && m_reader.Fill() && isWordChar(*m_reader.Cursor())) {
        text_buffer()[length++] = m_reader.GetCh();
        SkipLineEnds();
    }
    return {text_buffer(), length};
}

bool FileScanner::ends_at_seam(const char* end) const {
    return end == m_reader.BlockEnd() || isLineEnd(*end);
}

bool FileScanner::take_if(char wanted) {
    if (!m_reader.Fill() || *m_reader.Cursor() != wanted) return false;
    m_reader.GetCh();
    return true;
}

void FileScanner::skip_white_space() {
    do {
        const char* p = m_reader.Cursor();
        while (isBlank(*p)) ++p;
        m_reader.MoveTo(p);
        if (p != m_reader.BlockEnd()) return;
    } while (m_reader.Fill());
}

void FileScanner::skip_one_blank() {
    if (!m_reader.Fill() || !isBlank(*m_reader.Cursor())) return;
    if (m_reader.GetCh() == '\r') take_if('\n');
}

void FileScanner::append(std::size_t& length, std::string_view text) {
    while (text.size() > m_capacity - 1 - length) grow(length);
    std::memcpy(text_buffer() + length, text.data(), text.size());
    length += text.size();
}

void FileScanner::grow(std::size_t length) {
    const std::size_t capacity = 2 * m_capacity + 1;
    auto buffer = std::make_unique_for_overwrite<char[]>(capacity);
    std::memcpy(buffer.get(), text_buffer(), length);
    m_buffer = std::move(buffer);
    m_capacity = capacity;
}
