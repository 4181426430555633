#include "platform/base/Windows1252.h"

#include <algorithm>
#include <array>

namespace tessalink {

namespace {

// The characters 0x80 to 0x9F; all others are their own code point.
constexpr std::array<char16_t, 32> cUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};
constexpr unsigned char cFirstUpperControl = 0x80;

void appendUtf8(std::string& text, char32_t code) {
    const auto tail = [&](int shift) {
        text += static_cast<char>(0x80u | (code >> shift & 0x3Fu));
    };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0u | code >> 6);
        tail(0);
    } else {
        text += static_cast<char>(0xE0u | code >> 12);
        tail(6);
        tail(0);
    }
}

// The character at the start of the text, which is cut off; nothing when its bytes are malformed.
std::optional<char32_t> takeCharacter(std::string_view& text) {
    struct Form {
        unsigned char mask;
        unsigned char lead;
        std::size_t length;
        char32_t least;
    };
    static constexpr std::array<Form, 4> forms = {{{0x80, 0x00, 1, 0},
                                                   {0xE0, 0xC0, 2, 0x80},
                                                   {0xF0, 0xE0, 3, 0x800},
                                                   {0xF8, 0xF0, 4, 0x10000}}};
    const auto lead = static_cast<unsigned char>(text.front());
    const auto form = std::find_if(forms.begin(), forms.end(),
                                   [&](const Form& f) { return (lead & f.mask) == f.lead; });
    if (form == forms.end() || form->length > text.size()) return std::nullopt;
    char32_t code = lead & static_cast<unsigned char>(~form->mask);
    for (std::size_t i = 1; i < form->length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0u) != 0x80) return std::nullopt;
        code = code << 6 | (byte & 0x3Fu);
    }
    if (code < form->least) return std::nullopt;
    text.remove_prefix(form->length);
    return code;
}

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
        const auto code = takeCharacter(rest);
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
