#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "report/detail/CharClasses.h"

// Searching in texts, eight characters at a time.
namespace tessalink::detail {

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
