#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

class CFile;

namespace tessalink::detail {

/// A place in a text, counted from 1, the column in bytes: CR, LF and CR LF each end a line.
struct LineColumn {
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

/// Finds lines and columns of offsets in a template. It remembers where each block that it has read
/// starts, and the last place, so that many places cost one pass over the file.
class LineFinder {
public:
    /// The place of an offset; the file's own offset stays as it is.
    LineColumn Find(CFile& file, int scrambled, std::uint64_t position);

private:
    static constexpr std::size_t cBlockSize = 4096;
    static constexpr std::size_t cWindowSize = 16 * cBlockSize;

    /// A place, and whether it directly follows a CR.
    struct State {
        LineColumn place;
        bool afterCr = false;

        void Pass(std::string_view text);
    };

    std::string_view text_at(CFile& file, int scrambled, std::uint64_t position);

    std::vector<State> m_blockStarts{State{}};
    State m_last;
    std::uint64_t m_lastPosition = 0;
    std::vector<char> m_window;  ///< begins with what was read last
    std::size_t m_windowSize = 0;
    std::uint64_t m_windowStart = 0;
};

}  // namespace tessalink::detail
