#include "core/Windows1252.h"

#include <array>

namespace tessalink {

namespace {

/// The characters 0x80 to 0x9F; all others are their own code point.
constexpr std::array<char16_t, 32> cUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr unsigned char cFirstUpperControl = 0x80;

char32_t codePoint(char ch) {
    const auto byte = static_cast<unsigned char>(ch);
    const unsigned index = byte - unsigned{cFirstUpperControl};
    return index < cUpperControls.size() ? cUpperControls[index] : byte;
}

void appendUtf8(std::string& text, char32_t code) {
    const auto tail = [&](int shift) {
        text += static_cast<char>(0x80u | (code >> shift & 0x3Fu));
    };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0u | code >> 6);
        tail(0);
    } else {
        text += static_cast<char>(0xE0u | code >> 12);
        tail(6);
        tail(0);
    }
}

}  // namespace

std::string toUtf8(std::string_view windows1252) {
    std::string text;
    text.reserve(windows1252.size());
    for (const char ch : windows1252) appendUtf8(text, codePoint(ch));
    return text;
}

}  // namespace tessalink
