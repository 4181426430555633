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

inline constexpr std::size_t cNearestBlocks = 14;
extern const std::array<NearestBlock, cNearestBlocks> cNearestLetters;

}  // namespace tessalink::detail
