#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/base/Export.h"

namespace tessalink {

/// The Unicode character of a byte of Windows-1252, and the byte of a character; nothing when there
/// is none. The five bytes that Windows-1252 leaves open are control characters of the same number.
TESSALINK_API char32_t toUnicode(char windows1252);
TESSALINK_API std::optional<char> fromUnicode(char32_t character);

/// Windows-1252 text as UTF-8. The five bytes that Windows-1252 leaves open become the control
/// characters of the same number, as the web does it.
TESSALINK_API std::string toUtf8(std::string_view windows1252);

/// What fromUtf8 made of a text.
struct Windows1252Text {
    std::string text;  ///< up to the first fault
    /// Where in the UTF-8 text the first byte stands that is malformed or of a character that
    /// Windows-1252 lacks.
    std::size_t fault = std::string::npos;

    bool IsWhole() const { return fault == std::string::npos; }
};

/// UTF-8 text as Windows-1252, the reverse of toUtf8. A byte order mark is a character like others.
TESSALINK_API Windows1252Text fromUtf8(std::string_view utf8);

}  // namespace tessalink
