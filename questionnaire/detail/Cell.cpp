#include "questionnaire/detail/Cell.h"

#include <algorithm>
#include <cstring>

#include "questionnaire/detail/ByteWord.h"

namespace tessalink::detail {

namespace {

const char* findQuote(const char* text, const char* end) {
    const void* const found = std::memchr(text, cCellQuote, static_cast<std::size_t>(end - text));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

std::string_view between(const char* start, const char* end) {
    return {start, static_cast<std::size_t>(end - start)};
}

/// Where a cell ends whose row may end there by CR LF.
const char* withoutReturn(const char* start, const char* end) {
    return *end == '\n' && end > start && end[-1] == '\r' ? end - 1 : end;
}

}  // namespace

const char* CellReader::FindEnd(const char* text, const char* end) const {
    if constexpr (cHasByteWords) {
        constexpr std::ptrdiff_t size = cWordBytes;
        for (; end - text >= size; text += size) {
            const ByteWord word = loadWord(text);
            const ByteWord ends = markEqual(word, m_delimiter) | markEqual(word, '\n');
            if (ends != 0) return text + firstMark(ends);
        }
    }
    while (!IsEnd(*text)) ++text;
    return text;
}

const char* CellReader::Take(const char* text, const char* end, Cell& cell) {
    cell = {};
    if (*text == cCellQuote) return take_quoted(text, end, cell);
    const char* const stop = FindEnd(text, end);
    cell.text = between(text, withoutReturn(text, stop));
    return stop;
}

const char* CellReader::take_quoted(const char* text, const char* end, Cell& cell) {
    cell.isQuoted = true;
    const char* start = text + 1;
    const char* closing = findQuote(start, end);
    cell.text = between(start, closing);
    if (closing < end && closing[1] == cCellQuote) {
        m_unquoted.clear();
        while (closing < end && closing[1] == cCellQuote) {
            m_unquoted.append(start, closing + 1);
            start = closing + 2;
            closing = findQuote(start, end);
        }
        m_unquoted.append(start, closing);
        cell.text = m_unquoted;
    }
    cell.lineFeeds = static_cast<std::size_t>(std::count(cell.text.begin(), cell.text.end(), '\n'));
    const char* const behind = std::min(closing + 1, end - 1);
    const char* const stop = FindEnd(behind, end);
    cell.hasTextBehindQuote = withoutReturn(behind, stop) != behind;
    return stop;
}

}  // namespace tessalink::detail
