#pragma once

#include <cstddef>

/// How much a questionnaire may hold.
namespace tessalink::detail {

inline constexpr std::size_t cMaxSets = 1000;
inline constexpr std::size_t cMaxChoices = 1000;  ///< of a set or field
inline constexpr std::size_t cMaxItems = 10000;
inline constexpr std::size_t cMaxFields = 1000;
inline constexpr std::size_t cMaxIdentity = 64;  ///< letters of an id that names files
inline constexpr int cMaxLength = 10000;         ///< characters of a text
inline constexpr double cMaxValue = 1e9;         ///< of a number, whatever its sign

}  // namespace tessalink::detail
