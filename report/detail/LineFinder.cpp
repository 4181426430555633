#include "report/detail/LineFinder.h"

#include <algorithm>

#include "core/BufferedFile.h"
#include "platform/files/CFile.h"
#include "report/detail/CharClasses.h"
#include "report/detail/TextSearch.h"

namespace tessalink::detail {

namespace {

/// The first CR or LF in a text, or its end.
const char* findLineEnd(const char* text, const char* end) {
    for (; static_cast<std::size_t>(end - text) >= sizeof(std::uint64_t);
         text += sizeof(std::uint64_t)) {
        const std::uint64_t word = loadEight(text);
        const std::uint64_t marks = markFirst(word, '\r') | markFirst(word, '\n');
        if (marks != 0) return text + firstMarked(marks);
    }
    return std::find_if(text, end, isLineEnd);
}

}  // namespace

void LineFinder::State::Pass(std::string_view text) {
    while (!text.empty()) {
        const char* const end = text.data() + text.size();
        const auto passed = static_cast<std::size_t>(findLineEnd(text.data(), end) - text.data());
        place.column += passed;
        if (passed > 0) afterCr = false;
        if (passed == text.size()) return;
        const char ch = text[passed];
        text.remove_prefix(passed + 1);
        const bool endsCrLf = afterCr && ch == '\n';
        afterCr = ch == '\r';
        if (endsCrLf) continue;
        ++place.line;
        place.column = 1;
    }
}

/// What stands at a position, as far as it is in memory; empty at the end of the file.
std::string_view LineFinder::text_at(CFile& file, int scrambled, std::uint64_t position) {
    if (position < m_windowStart || position >= m_windowStart + m_windowSize) {
        m_windowSize = 0;
        m_windowStart = position;
        m_window.resize(cWindowSize);
        file.Seek(static_cast<std::int64_t>(position), CFile::begin);
        m_windowSize = file.Read(m_window.data(), m_window.size());
        if (scrambled) scramble(m_window.data(), m_windowSize);
    }
    return std::string_view(m_window.data(), m_windowSize).substr(position - m_windowStart);
}

LineColumn LineFinder::Find(CFile& file, int scrambled, std::uint64_t position) {
    const auto offset = static_cast<std::int64_t>(file.GetPosition());
    std::size_t number = std::min<std::uint64_t>(position / cBlockSize, m_blockStarts.size() - 1);
    const bool goesOn = m_lastPosition <= position && m_lastPosition > number * cBlockSize;
    State state = goesOn ? m_last : m_blockStarts[number];
    std::uint64_t at = goesOn ? m_lastPosition : number * cBlockSize;
    number = at / cBlockSize;
    while (at < position) {
        const std::uint64_t blockEnd = (number + 1) * cBlockSize;
        const std::uint64_t wanted = std::min(position, blockEnd) - at;
        const std::string_view text = text_at(file, scrambled, at).substr(0, wanted);
        if (text.empty()) break;
        state.Pass(text);
        at += text.size();
        if (at == blockEnd && ++number == m_blockStarts.size()) m_blockStarts.push_back(state);
    }
    file.Seek(offset, CFile::begin);
    m_last = state;
    m_lastPosition = at;
    return state.place;
}

}  // namespace tessalink::detail
