#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
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

/// What makes a capital letter a small one, and leaves digits and small letters as they are.
inline constexpr unsigned cFoldBit = 0x20;

/// A word's slot in the keyword table, from its length and its ends.
constexpr std::size_t keywordSlot(std::string_view word) {
    const unsigned first = static_cast<unsigned char>(word.front()) | cFoldBit;
    const unsigned last = static_cast<unsigned char>(word.back()) | cFoldBit;
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

/// Up to sixteen characters as two numbers, letters in lower case ("_" becomes a DEL); NULs fill
/// up.
struct FoldedWord {
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    bool operator==(const FoldedWord&) const = default;
};
inline constexpr std::size_t cFoldedSize = 2 * sizeof(std::uint64_t);
inline constexpr std::uint64_t cFoldBits = cFoldBit * 0x0101010101010101u;

/// The bits of the first `count` of eight characters, for a count of 0 to 8 (and of 9 to 16: all).
inline std::uint64_t firstBytes(std::size_t count) {
    return count >= sizeof(std::uint64_t) ? ~std::uint64_t{0}
                                          : (std::uint64_t{1} << (8 * count)) - 1;
}

/// Folds a word of at most cFoldedSize characters, of which cFoldedSize can be read.
inline FoldedWord foldWord(const char* word, std::size_t length) {
    FoldedWord folded;
    std::memcpy(&folded.first, word, sizeof(folded.first));
    std::memcpy(&folded.second, word + sizeof(folded.first), sizeof(folded.second));
    constexpr std::size_t half = sizeof(std::uint64_t);
    folded.first = (folded.first | cFoldBits) & firstBytes(length);
    folded.second = (folded.second | cFoldBits) & firstBytes(length > half ? length - half : 0);
    return folded;
}

inline const std::array<FoldedWord, Token::cKeywordCount> cFoldedKeywords = [] {
    std::array<FoldedWord, Token::cKeywordCount> folded;
    for (std::size_t code = 0; code < folded.size(); ++code) {
        std::array<char, cFoldedSize> room{};
        std::copy(cKeywords[code].begin(), cKeywords[code].end(), room.begin());
        folded[code] = foldWord(room.data(), cKeywords[code].size());
    }
    return folded;
}();

/// The code of a keyword, or cNoKeyword; case does not matter. The word is not empty, and
/// cFoldedSize characters from its start on can be read, as they can of every token.
inline int findKeyword(std::string_view word) {
    const int code = cKeywordSlots[keywordSlot(word)];
    if (code == cNoKeyword || word.size() > cFoldedSize) return cNoKeyword;
    return foldWord(word.data(), word.size()) == cFoldedKeywords[static_cast<std::size_t>(code)]
               ? code
               : cNoKeyword;
}

/// The first "@" or NUL at or after `text`, at which a NUL must come; eight characters are looked
/// at at a time, up to seven of them beyond it.
inline const char* findTextEnd(const char* text) {
    constexpr std::uint64_t ones = 0x0101010101010101u;
    constexpr std::uint64_t highs = 0x8080808080808080u;
    for (;; text += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text, sizeof(word));
        if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
        const std::uint64_t at = word ^ (ones * '@');
        // The lowest bit that is set belongs to the first zero byte of either.
        const std::uint64_t found = (((word - ones) & ~word) | ((at - ones) & ~at)) & highs;
        if (found != 0) return text + std::countr_zero(found) / 8;
    }
}

}  // namespace tessalink::detail
