#include "platform/files/PathText.h"

namespace tessalink {

std::filesystem::path pathOf(std::string_view name) {
    try {
        return std::u8string(name.begin(), name.end());
    } catch (const std::exception&) {  // no UTF-8, on a system whose names are characters
        return {};
    }
}

std::string nameOf(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

}  // namespace tessalink
