#pragma once

#include <cstdint>

#include "platform/base/CString.h"

namespace tessalink {

/// A place in a file. Line and column count from 1, the column in bytes; 0 means unknown.
struct TextPlace {
    CString file;
    std::uint64_t line = 0;
    std::uint64_t column = 0;

    bool IsKnown() const { return line != 0; }
};

}  // namespace tessalink
