#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/base/Export.h"

namespace tessalink {

/// The code pages that texts can be in: a byte for each character, written from left to right, the
/// bytes below 0x80 those of ASCII.
enum class CodePage : int {
    CentralEuropean = 1250,
    Cyrillic = 1251,
    Western = 1252,
    Greek = 1253,
    Turkish = 1254,
    Baltic = 1257
};

/// The code page of this number; nothing for one that texts can't be in.
TESSALINK_API std::optional<CodePage> codePageOf(int number);

/// The code page of the program, that of its texts (HostServices::codePage).
TESSALINK_API CodePage codePage();

/// What the program's code page is called: "Windows-1252".
TESSALINK_API std::string codePageName();

/// The number by which fonts in RTF name the characters of the program's code page: 0 for 1252,
/// 161 for 1253.
TESSALINK_API int codePageCharset();

/// The Unicode character of a byte of the program's code page, and the byte of a character; nothing
/// when the code page lacks it.
///
/// A byte that a code page leaves open is the control character of the same number (0x81 in
/// Windows-1252); from 0xA0 on it is one for private use, U+F8F9 to U+F8FD (three bytes of
/// Windows-1253 and two of Windows-1257).
TESSALINK_API char32_t toUnicode(char byte);
/// The byte of a Unicode character in the program's code page, the reverse of toUnicode.
TESSALINK_API std::optional<char> fromUnicode(char32_t character);

/// Text in the program's code page as UTF-8.
TESSALINK_API std::string toUtf8(std::string_view text);

/// What fromUtf8 made of a text.
struct CodePageText {
    std::string text;  ///< up to the first fault
    /// Where in the UTF-8 text the first byte stands that is malformed or of a character that the
    /// code page lacks.
    std::size_t fault = std::string::npos;

    /// Whether all of the text could be converted.
    bool IsWhole() const { return fault == std::string::npos; }
};

/// UTF-8 text in the program's code page, the reverse of toUtf8. A byte order mark is a character
/// like others.
TESSALINK_API CodePageText fromUtf8(std::string_view utf8);

}  // namespace tessalink
