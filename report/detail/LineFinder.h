#pragma once

#include <cstdint>

class CFile;

namespace tessalink::detail {

/// A place in a text, counted from 1, the column in bytes.
struct LineColumn {
    std::uint64_t line = 1;
    std::uint64_t column = 1;

    /// Steps over `ch`, which follows `before`: CR, LF and CR LF each end a line.
    void Pass(char before, char ch);
};

/// The place of an offset in a template; the file's own offset stays as it is.
LineColumn findLine(CFile& file, int scrambled, std::uint64_t position);

}  // namespace tessalink::detail
