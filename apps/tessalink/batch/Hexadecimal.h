#pragma once

#include <string>
#include <string_view>

namespace tessalink::cli {

/// Bytes as pairs of hexadecimal digits.
inline std::string hexadecimal(std::string_view bytes) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (const char ch : bytes) {
        const auto byte = static_cast<unsigned char>(ch);
        text += digits[byte / 16];
        text += digits[byte % 16];
    }
    return text;
}

}  // namespace tessalink::cli
