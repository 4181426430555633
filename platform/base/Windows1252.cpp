#include "platform/base/Windows1252.h"

#include <algorithm>
#include <array>

#include "platform/base/Utf8.h"

namespace tessalink {

namespace {

// The characters 0x80 to 0x9F; all others are their own code point.
constexpr std::array<char16_t, 32> cUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr unsigned char cFirstUpperControl = 0x80;

}  // namespace

char32_t toUnicode(char windows1252) {
    const auto byte = static_cast<unsigned char>(windows1252);
    const unsigned index = byte - unsigned{cFirstUpperControl};
    return index < cUpperControls.size() ? cUpperControls[index] : byte;
}

std::optional<char> fromUnicode(char32_t character) {
    const unsigned index = static_cast<unsigned>(character) - cFirstUpperControl;
    if (character <= 0xFF && index >= cUpperControls.size()) return static_cast<char>(character);
    const auto place = std::find(cUpperControls.begin(), cUpperControls.end(), character);
    if (place == cUpperControls.end()) return std::nullopt;
    return static_cast<char>(cFirstUpperControl + (place - cUpperControls.begin()));
}

std::string toUtf8(std::string_view windows1252) {
    std::string text;
    text.reserve(windows1252.size());
    for (const char ch : windows1252) appendUtf8(text, toUnicode(ch));
    return text;
}

Windows1252Text fromUtf8(std::string_view utf8) {
    Windows1252Text result;
    result.text.reserve(utf8.size());
    for (std::string_view rest = utf8; !rest.empty();) {
        const std::size_t place = utf8.size() - rest.size();
        const auto code = takeUtf8(rest);
        const auto byte = code ? fromUnicode(*code) : std::nullopt;
        if (!byte) {
            result.fault = place;
            break;
        }
        result.text += *byte;
    }
    return result;
}

}  // namespace tessalink
