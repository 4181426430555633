#include "report/detail/LineFinder.h"

#include <algorithm>
#include <array>

#include "core/BufferedFile.h"
#include "platform/files/CFile.h"

namespace tessalink::detail {

void LineColumn::Pass(char before, char ch) {
    if (ch == '\n' && before == '\r') return;
    if (ch == '\n' || ch == '\r') {
        ++line;
        column = 1;
    } else {
        ++column;
    }
}

LineColumn findLine(CFile& file, int scrambled, std::uint64_t position) {
    LineColumn place;
    const auto offset = static_cast<std::int64_t>(file.GetPosition());
    file.SeekToBegin();
    std::array<char, BufferedFile::cBlockSize> block;
    char before = '\0';
    while (position > 0) {
        const std::size_t wanted = std::min<std::uint64_t>(position, block.size());
        const std::size_t count = file.Read(block.data(), wanted);
        if (count == 0) break;
        if (scrambled) scramble(block.data(), count);
        for (std::size_t i = 0; i < count; before = block[i++]) place.Pass(before, block[i]);
        position -= count;
    }
    file.Seek(offset, CFile::begin);
    return place;
}

}  // namespace tessalink::detail
