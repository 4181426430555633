#include "core/FileText.h"

#include <algorithm>

#include "platform/files/CFile.h"

namespace tessalink {

std::string readText(CFile& file, std::size_t limit) {
    constexpr std::size_t step = 1u << 16;
    std::string text;
    while (text.size() <= limit) {
        const std::size_t size = text.size();
        const std::size_t wanted = std::min(step, limit - size + 1);
        text.resize(size + wanted);
        const std::size_t count = file.Read(text.data() + size, wanted);
        text.resize(size + count);
        if (count < wanted) break;
    }
    return text;
}

}  // namespace tessalink
