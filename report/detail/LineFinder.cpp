#include "report/detail/LineFinder.h"

#include <algorithm>
#include <array>

#include "core/BufferedFile.h"
#include "platform/files/CFile.h"

namespace tessalink::detail {

void LineFinder::State::Pass(char ch) {
    const bool endsCrLf = afterCr && ch == '\n';
    afterCr = ch == '\r';
    if (endsCrLf) return;
    if (ch == '\n' || ch == '\r') {
        ++place.line;
        place.column = 1;
    } else {
        ++place.column;
    }
}

LineColumn LineFinder::Find(CFile& file, int scrambled, std::uint64_t position) {
    const auto offset = static_cast<std::int64_t>(file.GetPosition());
    std::size_t number = std::min<std::uint64_t>(position / cBlockSize, m_blockStarts.size() - 1);
    file.Seek(static_cast<std::int64_t>(number * cBlockSize), CFile::begin);
    State state = m_blockStarts[number];
    std::uint64_t left = position - number * cBlockSize;
    std::array<char, cBlockSize> block;
    while (left > 0) {
        const std::size_t wanted = std::min<std::uint64_t>(left, block.size());
        const std::size_t count = file.Read(block.data(), wanted);
        if (scrambled) scramble(block.data(), count);
        std::for_each_n(block.begin(), count, [&](char ch) { state.Pass(ch); });
        if (count < wanted) break;
        left -= count;
        if (wanted == block.size() && ++number == m_blockStarts.size()) {
            m_blockStarts.push_back(state);
        }
    }
    file.Seek(offset, CFile::begin);
    return state.place;
}

}  // namespace tessalink::detail
