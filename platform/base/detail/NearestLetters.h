#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tessalink::detail {

/// What stands for a character to which nothing comes near.
inline constexpr char cNoLetter = '_';

/// Characters that follow one another, and for each the nearest byte of Windows-1252.
struct NearestBlock {
    char32_t first;
    std::string_view letters;
};

/// The same in the letters of the same script that some code page has.
struct OwnBlock {
    char32_t first;
    std::u16string_view letters;
};

/// The ASCII letters nearest to the bytes of Windows-1252 from 0x80 on.
extern const std::string_view cPlainLetters;

inline constexpr std::size_t cOwnBlocks = 3;
extern const std::array<OwnBlock, cOwnBlocks> cOwnLetters;

inline constexpr std::size_t cNearestBlocks = 14;
extern const std::array<NearestBlock, cNearestBlocks> cNearestLetters;

}  // namespace tessalink::detail
