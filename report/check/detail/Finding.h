#pragma once

#include <cstdint>

#include "platform/base/CString.h"

namespace tessalink::detail {

/// A fault as it is found: its places are offsets in the file.
struct Finding {
    static constexpr std::uint64_t cNowhere = ~std::uint64_t{0};

    CString message;
    CString rule;
    std::uint64_t offset = 0;
    std::uint64_t start = 0;           ///< of what is faulty: a statement, an @IF, a group
    std::uint64_t item = 0;            ///< of the assignment in an @LET; otherwise as `start`
    std::uint64_t related = cNowhere;  ///< of what is to blame: a word, another definition
    bool isAtEnd = false;              ///< it was found where the template or its block ends
};

}  // namespace tessalink::detail
