#include "core/FileText.h"

#include <algorithm>

#include "platform/base/CodePage.h"
#include "platform/files/CFile.h"

namespace tessalink {

std::string notInCodePage() {
    return "a character that " + codePageName() + ", the code page of reports, lacks: replace it";
}

std::string readText(CFile& file, std::size_t limit) {
    // Small files, of which many are read, take one small piece.
    constexpr std::size_t leastStep = 1u << 14;
    constexpr std::size_t greatestStep = 1u << 20;
    std::string text;
    while (text.size() <= limit) {
        const std::size_t size = text.size();
        const std::size_t wanted =
            std::min(std::clamp(size, leastStep, greatestStep), limit - size + 1);
        text.resize(size + wanted);
        const std::size_t count = file.Read(text.data() + size, wanted);
        text.resize(size + count);
        if (count < wanted) break;
    }
    return text;
}

}  // namespace tessalink
