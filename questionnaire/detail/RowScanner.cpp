#include "questionnaire/detail/RowScanner.h"

#include <array>

#include "questionnaire/detail/ByteWord.h"

namespace tessalink::detail {

namespace {

constexpr char cQuote = '"';
constexpr unsigned cLastByte = 0x80;
constexpr std::size_t cNone = std::string_view::npos;

/// For eight bits, one for each byte that is a quote: where a quote is open behind each byte, when
/// none is before them.
constexpr std::array<std::uint8_t, 256> cOpenBehind = [] {
    std::array<std::uint8_t, 256> table{};
    for (unsigned quotes = 0; quotes < table.size(); ++quotes) {
        unsigned open = quotes;
        for (const int shift : {1, 2, 4}) open ^= open << shift;
        table[quotes] = static_cast<std::uint8_t>(open);
    }
    return table;
}();

}  // namespace

RowScanner::State RowScanner::state_after(char ch) const {
    if (ch == cQuote) return State::MaybeClosed;
    return ch == m_delimiter || ch == '\n' ? State::CellStart : State::Plain;
}

/// Goes on by one character; true when it ends the row.
bool RowScanner::step(char ch) {
    if (m_state == State::Quoted) {
        if (ch == cQuote) m_state = State::MaybeClosed;
        return false;
    }
    if (ch == cQuote) {
        if (m_state != State::Plain) m_state = State::Quoted;
        return false;
    }
    m_state = state_after(ch);
    return ch == '\n';
}

std::size_t RowScanner::step_bytes(std::string_view text, std::size_t offset, std::size_t end) {
    for (; offset < end; ++offset) {
        if (step(text[offset])) return offset + 1;
    }
    return cNone;
}

std::size_t RowScanner::FindEnd(std::string_view text) {
    if (text.empty()) return cNone;
    if (m_state == State::Quoted) return find_end_by_words(text);
    const std::size_t feed = text.find('\n');
    if (text.substr(0, feed).find(cQuote) != cNone) return find_end_by_words(text);
    m_state = feed != cNone ? State::CellStart : state_after(text.back());
    return feed != cNone ? feed + 1 : cNone;
}

std::size_t RowScanner::find_end_by_words(std::string_view text) {
    std::size_t offset = 0;
    if constexpr (cHasByteWords) {
        for (; offset + cWordBytes <= text.size(); offset += cWordBytes) {
            if (const std::size_t end = scan_word(text, offset); end != cNone) return end;
        }
    }
    return step_bytes(text, offset, text.size());
}

/// The parity of quotes tells what lies in quotes, as long as each one that opens may do so.
std::size_t RowScanner::scan_word(std::string_view text, std::size_t offset) {
    const ByteWord word = loadWord(text.data() + offset);
    const unsigned quotes = gatherMarks(markEqual(word, cQuote));
    const bool isQuoted = m_state == State::Quoted;
    if (quotes == 0 && isQuoted) return cNone;
    const unsigned feeds = gatherMarks(markEqual(word, '\n'));
    const unsigned open = cOpenBehind[quotes] ^ (isQuoted ? 0xFFU : 0U);
    const unsigned ends = feeds & ~open;
    const unsigned lowestEnd = ends & (~ends + 1);
    if (quotes != 0) {
        const unsigned delimiters = gatherMarks(markEqual(word, m_delimiter));
        const bool mayOpen = m_state != State::Plain;
        const unsigned placesToOpen = (delimiters | feeds | quotes) << 1 | (mayOpen ? 1U : 0U);
        const unsigned openers = quotes & open & (lowestEnd - 1);
        if ((openers & ~placesToOpen) != 0) return step_bytes(text, offset, offset + cWordBytes);
    }
    if (ends != 0) {
        m_state = State::CellStart;
        return offset + static_cast<std::size_t>(std::countr_zero(ends)) + 1;
    }
    const bool staysOpen = (open & cLastByte) != 0;
    m_state = staysOpen ? State::Quoted : state_after(text[offset + cWordBytes - 1]);
    return cNone;
}

std::size_t findOpenQuote(std::string_view text, char delimiter) {
    std::size_t opening = cNone;
    RowScanner scanner(delimiter);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isNew = text[i] == cQuote && (i == 0 || text[i - 1] != cQuote);
        scanner.FindEnd(text.substr(i, 1));
        if (isNew && scanner.IsQuoted()) opening = i;
    }
    return opening;
}

}  // namespace tessalink::detail
