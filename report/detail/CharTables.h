#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/base/TextHash.h"
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

inline constexpr int cNoKeyword = -1;

/// Finds keywords by their first eight characters, whatever their case: a hash table without
/// collisions, made when this is compiled.
class KeywordTable {
public:
    consteval KeywordTable() {
        while (!fill()) m_factor = m_factor * cNextFactor + 2;
    }

    /// The code of the word, or cNoKeyword. `first` is what firstEight makes of it.
    int Find(std::string_view word, std::uint64_t first) const {
        const std::uint64_t folded = first & cFold;
        const Slot& slot = m_slots[SlotOf(folded)];
        if (slot.first != folded || slot.length != word.size()) return cNoKeyword;
        const bool found = word.size() <= cWhole || equalNoCase(word, cKeywords[slot.code]);
        return found ? slot.code : cNoKeyword;
    }

private:
    static constexpr std::uint64_t cFold = 0xDFDFDFDFDFDFDFDFu;  ///< small letters become capitals
    static constexpr std::uint64_t cNextFactor = 6364136223846793005u;
    static constexpr int cSlotBits = 7;
    static constexpr std::size_t cWhole = 8;

    struct Slot {
        std::uint64_t first = 0;
        std::uint8_t length = 0;
        std::uint8_t code = 0;
    };

    constexpr std::size_t SlotOf(std::uint64_t folded) const {
        return static_cast<std::size_t>((folded * m_factor) >> (64 - cSlotBits));
    }
    constexpr bool fill() {
        m_slots = {};
        for (std::size_t code = 0; code < cKeywords.size(); ++code) {
            const std::string_view word = cKeywords[code];
            std::uint64_t first = 0;
            for (std::size_t i = std::min(word.size(), cWhole); i > 0; --i) {
                first = first << 8 | static_cast<unsigned char>(word[i - 1]);
            }
            Slot& slot = m_slots[SlotOf(first & cFold)];
            if (slot.length != 0) return false;
            slot = {first & cFold, static_cast<std::uint8_t>(word.size()),
                    static_cast<std::uint8_t>(code)};
        }
        return true;
    }

    std::uint64_t m_factor = 1;
    std::array<Slot, std::size_t{1} << cSlotBits> m_slots;
};

inline constexpr KeywordTable cKeywordTable;

/// The code of a keyword, or cNoKeyword; case does not matter.
inline int findKeyword(std::string_view word) {
    return cKeywordTable.Find(word, firstEight(word));
}

/// The text before its first NUL.
inline std::string_view untilNul(std::string_view text) {
    const void* nul = text.empty() ? nullptr : std::memchr(text.data(), 0, text.size());
    if (!nul) return text;
    return text.substr(0, static_cast<std::size_t>(static_cast<const char*>(nul) - text.data()));
}

inline constexpr std::uint64_t cOnes = 0x0101010101010101u;
inline constexpr std::uint64_t cHighBits = 0x80 * cOnes;

/// Eight characters as a number, the first one in the lowest byte.
inline std::uint64_t loadEight(const char* text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof(word));
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
    return word;
}

/// The place of the lowest byte whose high bit is set.
inline std::size_t firstMarked(std::uint64_t marks) {
    return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

/// Marks the bytes that equal `ch` with their high bit; bytes after the first may be marked
/// wrongly.
inline std::uint64_t markFirst(std::uint64_t word, char ch) {
    const std::uint64_t zero = word ^ (cOnes * static_cast<unsigned char>(ch));
    return (zero - cOnes) & ~zero & cHighBits;
}

/// The first "@" or NUL at or after `text`, at which a NUL must come; eight characters are looked
/// at at a time, up to seven of them beyond it.
inline const char* findTextEnd(const char* text) {
    for (;; text += sizeof(std::uint64_t)) {
        const std::uint64_t word = loadEight(text);
        const std::uint64_t marks = markFirst(word, '@') | markFirst(word, '\0');
        if (marks != 0) return text + firstMarked(marks);
    }
}

/// The first backslash or brace in a text, or its end.
inline const char* findRtfSpecial(const char* text, const char* end) {
    for (; static_cast<std::size_t>(end - text) >= sizeof(std::uint64_t);
         text += sizeof(std::uint64_t)) {
        const std::uint64_t word = loadEight(text);
        const std::uint64_t marks =
            markFirst(word, '\\') | markFirst(word, '{') | markFirst(word, '}');
        if (marks != 0) return text + firstMarked(marks);
    }
    return std::find_if(text, end, [](char ch) { return ch == '\\' || ch == '{' || ch == '}'; });
}

/// Sets the high bit of every byte that is no letter, digit or "_", and no other bit.
inline std::uint64_t markNonWordChars(std::uint64_t word) {
    // Adding to seven bits sets the high bit where a byte is at least, or greater than, a bound.
    const auto atLeast = [](std::uint64_t bytes, char bound) {
        return bytes + cOnes * (0x80u - static_cast<unsigned char>(bound));
    };
    const auto above = [](std::uint64_t bytes, char bound) {
        return bytes + cOnes * (0x7Fu - static_cast<unsigned char>(bound));
    };
    const std::uint64_t low = word & ~cHighBits;
    const std::uint64_t folded = low | cOnes * 0x20;
    const std::uint64_t letter = atLeast(folded, 'a') & ~above(folded, 'z');
    const std::uint64_t digit = atLeast(low, '0') & ~above(low, '9');
    const std::uint64_t otherThanUnderscore = above(low ^ cOnes * '_', 0);
    return (~(letter | digit) & otherThanUnderscore & cHighBits) | (word & cHighBits);
}

/// A run of letters, digits and "_" at the start of a text.
struct Word {
    std::size_t length;
    std::uint64_t first;  ///< what firstEight makes of it
};

/// Reads the word at `text`, after which a NUL must come; characters as with findTextEnd.
inline Word scanWord(const char* text) {
    const std::uint64_t first = loadEight(text);
    const std::uint64_t marks = markNonWordChars(first);
    if (marks != 0) {
        // All bits below the mark of the character after the word belong to the word.
        const std::size_t length = firstMarked(marks);
        return {length, first & ((std::uint64_t{1} << (8 * length)) - 1)};
    }
    const char* end = text + sizeof(first);
    while (isWordChar(*end)) ++end;
    return {static_cast<std::size_t>(end - text), first};
}

}  // namespace tessalink::detail
