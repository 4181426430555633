#include "report/detail/LineFinder.h"

#include <algorithm>
#include <array>

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

LineColumn LineFinder::Find(CFile& file, int scrambled, std::uint64_t position) {
    const auto offset = static_cast<std::int64_t>(file.GetPosition());
    std::size_t number = std::min<std::uint64_t>(position / cBlockSize, m_blockStarts.size() - 1);
    const bool goesOn = m_lastPosition <= position && m_lastPosition > number * cBlockSize;
    State state = goesOn ? m_last : m_blockStarts[number];
    std::uint64_t at = goesOn ? m_lastPosition : number * cBlockSize;
    number = at / cBlockSize;
    file.Seek(static_cast<std::int64_t>(at), CFile::begin);
    std::array<char, cBlockSize> block;
    while (at < position) {
        const std::uint64_t blockEnd = (number + 1) * cBlockSize;
        const std::size_t wanted = std::min(position, blockEnd) - at;
        const std::size_t count = file.Read(block.data(), wanted);
        if (scrambled) scramble(block.data(), count);
        state.Pass({block.data(), count});
        at += count;
        if (count < wanted) break;
        if (at == blockEnd && ++number == m_blockStarts.size()) m_blockStarts.push_back(state);
    }
    file.Seek(offset, CFile::begin);
    m_last = state;
    m_lastPosition = at;
    return state.place;
}

}  // namespace tessalink::detail
