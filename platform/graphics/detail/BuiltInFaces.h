#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/graphics/FaceMetrics.h"

namespace tessalink::detail {

inline constexpr std::size_t cFaceCharacters = 488;
// The characters of all code pages, in their order.
extern const std::array<char16_t, cFaceCharacters> cCharactersOfFaces;

struct BuiltInFace {
    int ascent;
    int descent;
    int externalLeading;
    std::array<std::uint16_t, cFaceCharacters> advances;
};

inline constexpr std::size_t cTextFaces = 8;
// Regular, bold, italic and bold italic of Arial and of Times New Roman.
extern const std::array<BuiltInFace, cTextFaces> cFaces;
extern const FaceMetrics cSymbolFace;

// The measures of one of them for the program's code page; behind the last one those of Symbol.
const FaceMetrics& builtInFace(std::size_t face);

}  // namespace tessalink::detail
