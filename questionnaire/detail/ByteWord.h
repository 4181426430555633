#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Eight bytes at a time, in the order of memory.
namespace tessalink::detail {

using ByteWord = std::uint64_t;
inline constexpr std::size_t cWordBytes = sizeof(ByteWord);
inline constexpr int cByteBits = 8;
/// The words' first byte is their lowest.
inline constexpr bool cHasByteWords = std::endian::native == std::endian::little;

inline constexpr ByteWord cEachByte = 0x0101010101010101;
inline constexpr ByteWord cLowBits = 0x7F7F7F7F7F7F7F7F;

inline ByteWord loadWord(const char* bytes) {
    ByteWord word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}
/// Fewer bytes than a word has, and zeros behind them.
inline ByteWord loadBytes(const char* bytes, std::size_t count) {
    ByteWord word = 0;
    if (count > 0) std::memcpy(&word, bytes, count);  // an empty text may have no bytes at all
    return word;
}
/// The first bytes of a word, and zeros behind them.
inline ByteWord firstBytes(ByteWord word, std::size_t count) {
    return word & ((ByteWord{1} << (cByteBits * count)) - 1);
}
/// A word of one character.
constexpr ByteWord repeated(char ch) {
    return cEachByte * static_cast<unsigned char>(ch);
}

/// The top bit of each byte that equals the character.
inline ByteWord markEqual(ByteWord word, char ch) {
    const ByteWord differing = word ^ repeated(ch);
    return ~(((differing & cLowBits) + cLowBits) | differing | cLowBits);
}

/// The index of the first marked byte; there must be one.
inline std::size_t firstMark(ByteWord marks) {
    return static_cast<std::size_t>(std::countr_zero(marks)) / cByteBits;
}

}  // namespace tessalink::detail
