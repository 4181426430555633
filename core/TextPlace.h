#pragma once

#include <cstdint>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

namespace tessalink {

/// A place in a file. Line and column count from 1, the column in bytes; 0 means unknown.
struct TESSALINK_API TextPlace {
    CString file;              ///< as it was named when it was opened
    std::uint64_t line = 0;    ///< from 1; 0 when unknown
    std::uint64_t column = 0;  ///< in bytes, from 1; 0 when unknown

    /// Whether there is a line.
    bool IsKnown() const { return line != 0; }
    /// "norms.csv:12:13", as compilers write it and editors jump to it; what is unknown is left
    /// out.
    CString Format() const;
};

}  // namespace tessalink
