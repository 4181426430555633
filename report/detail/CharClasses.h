#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// Classes of characters. Letters, digits and white space are those of ASCII, whatever the locale.
namespace tessalink::detail {

enum CharClass : std::uint8_t { cWordStart = 1, cDigit = 2, cBlank = 4, cLineEnd = 8 };

constexpr std::array<std::uint8_t, 256> makeCharClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (unsigned ch = 'A'; ch <= 'Z'; ++ch) classes[ch] = classes[ch | 0x20u] = cWordStart;
    classes['_'] = cWordStart;
    for (unsigned ch = '0'; ch <= '9'; ++ch) classes[ch] = cDigit;
    for (const char ch : std::string_view(" \t\n\v\f\r")) {
        classes[static_cast<unsigned char>(ch)] = cBlank;
    }
    classes['\r'] |= cLineEnd;
    classes['\n'] |= cLineEnd;
    return classes;
}

inline constexpr auto cCharClasses = makeCharClasses();

inline bool isOf(char ch, unsigned classes) {
    return (cCharClasses[static_cast<unsigned char>(ch)] & classes) != 0;
}
inline bool isBlank(char ch) {
    return isOf(ch, cBlank);
}
inline bool isLineEnd(char ch) {
    return isOf(ch, cLineEnd);
}
inline bool isDigit(char ch) {
    return isOf(ch, cDigit);
}
inline bool isWordStart(char ch) {
    return isOf(ch, cWordStart);
}
inline bool isLetter(char ch) {
    return static_cast<unsigned char>((ch | 0x20) - 'a') <= 'z' - 'a';
}
inline bool isWordChar(char ch) {
    return isOf(ch, cWordStart | cDigit);
}

constexpr char lower(char ch) {
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch | 0x20) : ch;
}

constexpr bool equalNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (lower(a[i]) != lower(b[i])) return false;
    }
    return true;
}

}  // namespace tessalink::detail
