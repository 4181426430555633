#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Eight bytes at a time, in the order of memory.
namespace tessalink::detail {

using ByteWord = std::uint64_t;
inline constexpr std::size_t cWordBytes = sizeof(ByteWord);
inline constexpr bool cHasByteWords = std::endian::native == std::endian::little;

inline constexpr ByteWord cEachByte = 0x0101010101010101;
inline constexpr ByteWord cLowBits = 0x7F7F7F7F7F7F7F7F;

inline ByteWord loadWord(const char* bytes) {
    ByteWord word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// The top bit of each byte that equals the character.
inline ByteWord markEqual(ByteWord word, char ch) {
    const ByteWord differing = word ^ (cEachByte * static_cast<unsigned char>(ch));
    return ~(((differing & cLowBits) + cLowBits) | differing | cLowBits);
}

/// One bit for each marked byte, the first byte's lowest.
inline unsigned gatherMarks(ByteWord marks) {
    constexpr ByteWord gather = 0x0102040810204080;
    constexpr int topByte = 56;
    constexpr int topBit = 7;
    return static_cast<unsigned>(((marks >> topBit) * gather) >> topByte);
}

/// The index of the first marked byte; there must be one.
inline std::size_t firstMark(ByteWord marks) {
    return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

}  // namespace tessalink::detail
