#pragma once

#include <array>
#include <cstddef>

#include "platform/graphics/FaceMetrics.h"

namespace tessalink::detail {

struct BuiltInFace {
    const char* name;
    bool bold;
    bool italic;
    FaceMetrics metrics;
};

inline constexpr std::size_t cBuiltInFaces = 9;
// Regular, bold, italic and bold italic of Arial and of Times New Roman, then Symbol.
extern const std::array<BuiltInFace, cBuiltInFaces> cFaces;

}  // namespace tessalink::detail
