#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "report/Token.h"

// What the scanner knows about single characters and about the words after "@". Letters, digits and
// white space are those of ASCII, whatever the locale.
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

/// The keywords in the order of their codes.
inline constexpr std::array<std::string_view, Token::cKeywordCount> cKeywords = {
    "IF",          "THEN",    "ENDIF",       "CALL",      "COMPUTE",        "LINK",
    "ID",          "INCLUDE", "DEFER_START", "DEFER_END", "PRINT_DEFERRED", "COMMENT",
    "COMMENT_END", "ELSE",    "DEFINE",      "LET",       "COMMA_LIST",     "CAP",
    "TEXT",        "EVAL"};

/// A word's slot in the keyword table, from its length and its ends.
constexpr std::size_t keywordSlot(std::string_view word) {
    const auto first = static_cast<unsigned char>(lower(word.front()));
    const auto last = static_cast<unsigned char>(lower(word.back()));
    return (word.size() + first * 3u + last * 29u) & 63u;
}

inline constexpr std::int8_t cNoKeyword = -1;

constexpr std::array<std::int8_t, 64> makeKeywordSlots() {
    std::array<std::int8_t, 64> slots{};
    slots.fill(cNoKeyword);
    for (std::size_t code = 0; code < cKeywords.size(); ++code) {
        slots[keywordSlot(cKeywords[code])] = static_cast<std::int8_t>(code);
    }
    return slots;
}

inline constexpr auto cKeywordSlots = makeKeywordSlots();

/// Every keyword must have a slot of its own, or the later one hides the earlier.
constexpr bool keywordsHaveOwnSlots() {
    for (std::size_t code = 0; code < cKeywords.size(); ++code) {
        if (cKeywordSlots[keywordSlot(cKeywords[code])] != static_cast<std::int8_t>(code)) {
            return false;
        }
    }
    return true;
}

/// The code of a keyword, or cNoKeyword; case does not matter. The word must not be empty.
inline int findKeyword(std::string_view word) {
    const int code = cKeywordSlots[keywordSlot(word)];
    if (code == cNoKeyword) return cNoKeyword;
    return equalNoCase(word, cKeywords[static_cast<std::size_t>(code)]) ? code : cNoKeyword;
}

}  // namespace tessalink::detail
