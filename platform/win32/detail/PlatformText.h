#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/base/CString.h"

// Texts of the library are single bytes, those of the platform UTF-16.
namespace tessalink::detail {

std::wstring toPlatform(std::string_view text);
// Nothing when a character is not in the code page.
std::optional<CString> fromPlatform(std::wstring_view text);

// UTF-8 as the platform has it, and back.
std::wstring utf8ToPlatform(std::string_view utf8);
std::string platformToUtf8(std::wstring_view text);

// Whether a byte has no picture and no width.
constexpr bool isControlCode(char code) {
    const auto byte = static_cast<unsigned char>(code);
    return byte < 0x20 || byte == 0x7F;
}

}  // namespace tessalink::detail
