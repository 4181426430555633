#include "questionnaire/detail/RowScanner.h"

#include "questionnaire/detail/ByteWord.h"
#include "questionnaire/detail/Cell.h"

namespace tessalink::detail {

namespace {

constexpr ByteWord cFirstByte = 0x80;
constexpr ByteWord cLastByte = cFirstByte << 56;
constexpr std::size_t cNoEnd = std::string_view::npos;

/// Marks each byte behind which a quote is open, from marks of quotes, when none is before them.
ByteWord openBehind(ByteWord quotes) {
    ByteWord open = quotes;
    for (int shift = cByteBits; shift < cByteBits * static_cast<int>(cWordBytes); shift *= 2) {
        open ^= open << shift;
    }
    return open;
}

}  // namespace

RowScanner::State RowScanner::state_after(char ch) const {
    if (ch == cCellQuote) return State::MaybeClosed;
    return ch == m_delimiter || ch == '\n' ? State::CellStart : State::Plain;
}

/// Goes on by one character; true when it ends the row.
bool RowScanner::step(char ch) {
    if (m_state == State::Quoted) {
        if (ch == cCellQuote) m_state = State::MaybeClosed;
        return false;
    }
    if (ch == cCellQuote) {
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
    return cNoEnd;
}

std::size_t RowScanner::FindEnd(std::string_view text) {
    if (text.empty()) return cNoEnd;
    if (m_state == State::Quoted) return find_end_by_words(text);
    const std::size_t feed = text.find('\n');
    if (text.substr(0, feed).find(cCellQuote) != cNoEnd) return find_end_by_words(text);
    m_state = feed != cNoEnd ? State::CellStart : state_after(text.back());
    return feed != cNoEnd ? feed + 1 : cNoEnd;
}

std::size_t RowScanner::find_end_by_words(std::string_view text) {
    std::size_t offset = 0;
    if constexpr (cHasByteWords) {
        for (; offset + cWordBytes <= text.size(); offset += cWordBytes) {
            if (const std::size_t end = scan_word(text, offset); end != cNoEnd) return end;
        }
    }
    return step_bytes(text, offset, text.size());
}

/// The parity of quotes tells what lies in quotes, as long as each one that opens may do so.
std::size_t RowScanner::scan_word(std::string_view text, std::size_t offset) {
    const ByteWord word = loadWord(text.data() + offset);
    const ByteWord quotes = markEqual(word, cCellQuote);
    const bool isQuoted = m_state == State::Quoted;
    if (quotes == 0 && isQuoted) return cNoEnd;
    const ByteWord feeds = markEqual(word, '\n');
    const ByteWord open = openBehind(quotes) ^ (isQuoted ? ~cLowBits : 0);
    const ByteWord ends = feeds & ~open;
    if (quotes != 0) {
        const ByteWord breaks = markEqual(word, m_delimiter) | feeds | quotes;
        const ByteWord places = breaks << cByteBits | (m_state != State::Plain ? cFirstByte : 0);
        const ByteWord beforeEnd = ends != 0 ? (ends & (~ends + 1)) - 1 : ~ByteWord{0};
        if ((quotes & open & beforeEnd & ~places) != 0) {
            return step_bytes(text, offset, offset + cWordBytes);
        }
    }
    if (ends != 0) {
        m_state = State::CellStart;
        return offset + firstMark(ends) + 1;
    }
    const bool staysOpen = (open & cLastByte) != 0;
    m_state = staysOpen ? State::Quoted : state_after(text[offset + cWordBytes - 1]);
    return cNoEnd;
}

std::size_t findOpenQuote(std::string_view text, char delimiter) {
    std::size_t opening = cNoEnd;
    RowScanner scanner(delimiter);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isNew = text[i] == cCellQuote && (i == 0 || text[i - 1] != cCellQuote);
        scanner.FindEnd(text.substr(i, 1));
        if (isNew && scanner.IsQuoted()) opening = i;
    }
    return opening;
}

}  // namespace tessalink::detail
