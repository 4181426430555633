// Texts that several benchmarks run on.
#pragma once

#include <string>
#include <string_view>

#include "platform/files/CMemFile.h"

namespace bench {

/// `text` over and over, `size` bytes at the most.
inline std::string repeat(std::string_view text, std::size_t size) {
    std::string result;
    result.reserve(size);
    while (result.size() + text.size() <= size) result.append(text);
    return result;
}

/// Reads from a text as from a file; the text must outlive it.
class TextFile : public CMemFile {
public:
    explicit TextFile(std::string& text) {
        Attach(reinterpret_cast<BYTE*>(text.data()), static_cast<UINT>(text.size()));
    }
};

}  // namespace bench
