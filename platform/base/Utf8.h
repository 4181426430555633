#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/base/Export.h"

namespace tessalink {

/// What a reader shows in place of bytes that are no character.
inline constexpr char32_t cReplacementCharacter = 0xFFFD;

/// Appends a Unicode character, U+0000 to U+10FFFF, in UTF-8.
TESSALINK_API void appendUtf8(std::string& text, char32_t character);

/// Cuts the first character off a text that is not empty and returns it; nothing when its bytes are
/// malformed: then as many are cut off as one replacement character stands for, at least one (the
/// longest start of a well-formed sequence: The Unicode Standard, table 3-7 and section 3.9).
TESSALINK_API std::optional<char32_t> takeUtf8(std::string_view& text);

/// Where the first byte stands that is no part of a well-formed character; npos when there is none.
TESSALINK_API std::size_t findMalformedUtf8(std::string_view text);

}  // namespace tessalink
