#include "report/PlainText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "platform/base/CodePage.h"
#include "platform/base/NearestLetter.h"
#include "platform/base/Utf8.h"
#include "report/detail/CharClasses.h"

namespace tessalink {

namespace {

struct RtfEscape {
    char letter;
    std::string_view written;
};
constexpr std::array<RtfEscape, 6> cRtfEscapes = {
    {{'\\', "\\\\"}, {'{', "\\{"}, {'}', "\\}"}, {'@', "\\'40"}, {'[', "\\'5b"}, {']', "\\'5d"}}};
constexpr std::string_view cEscaped = "\\{}@[]";
constexpr std::string_view cUnicodeStart = "\\u";
constexpr char cNoLetter = '?';

// UTF-16, in whose units RTF counts characters.
constexpr char32_t cFirstBeyond = 0x10000;
constexpr char32_t cFirstHigh = 0xD800;
constexpr char32_t cFirstLow = 0xDC00;
constexpr char32_t cAfterLow = 0xE000;
constexpr int cSurrogateBits = 10;
constexpr char32_t cSurrogateMask = 0x3FF;

void appendLetter(std::string& text, char letter) {
    const auto escape = std::find_if(cRtfEscapes.begin(), cRtfEscapes.end(),
                                     [letter](const RtfEscape& e) { return e.letter == letter; });
    if (escape != cRtfEscapes.end()) {
        text += escape->written;
    } else {
        text += letter;
    }
}

/// `\uN` for one unit of UTF-16, and the letter for readers that don't know it.
void appendUnit(std::string& text, char32_t unit, char letter) {
    text.append(cUnicodeStart).append(std::to_string(static_cast<std::int16_t>(unit)));
    // Otherwise the letter would be part of the number, or its end.
    if (detail::isDigit(letter) || letter == ' ') text += ' ';
    appendLetter(text, letter);
}

void appendForeign(std::string& text, char32_t character) {
    const char letter = nearestLetter(character);
    if (character < cFirstBeyond) return appendUnit(text, character, letter);
    const char32_t offset = character - cFirstBeyond;
    appendUnit(text, cFirstHigh | offset >> cSurrogateBits, letter);
    appendUnit(text, cFirstLow | (offset & cSurrogateMask), cNoLetter);
}

/// Takes an escape of a single letter off the start of the text.
std::optional<char> takeEscape(std::string_view& text) {
    const auto escape =
        std::find_if(cRtfEscapes.begin(), cRtfEscapes.end(),
                     [text](const RtfEscape& e) { return text.starts_with(e.written); });
    if (escape == cRtfEscapes.end()) return std::nullopt;
    text.remove_prefix(escape->written.size());
    return escape->letter;
}

/// A unit of UTF-16 and the letter that stands for it.
struct Unit {
    char32_t code;
    char letter;
};

std::optional<Unit> takeUnit(std::string_view& text) {
    if (!text.starts_with(cUnicodeStart)) return std::nullopt;
    std::string_view rest = text.substr(cUnicodeStart.size());
    std::int16_t number = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), number);
    if (error != std::errc()) return std::nullopt;
    rest.remove_prefix(static_cast<std::size_t>(end - rest.data()));
    if (rest.starts_with(' ')) rest.remove_prefix(1);
    if (rest.empty()) return std::nullopt;
    std::optional<char> letter = takeEscape(rest);
    if (!letter) {
        letter = rest.front();
        rest.remove_prefix(1);
    }
    text = rest;
    return Unit{static_cast<std::uint16_t>(number), *letter};
}

/// Takes what stands for one character, two units or one.
std::optional<char> takeForeign(std::string_view& text) {
    const auto unit = takeUnit(text);
    if (!unit) return std::nullopt;
    if (unit->code >= cFirstHigh && unit->code < cFirstLow) {
        std::string_view rest = text;
        const auto second = takeUnit(rest);
        if (second && second->code >= cFirstLow && second->code < cAfterLow) text = rest;
    }
    return fromUnicode(unit->code).value_or(unit->letter);
}

}  // namespace

CString escapeText(std::string_view plain) {
    std::string text;
    while (!plain.empty()) {
        const std::size_t before = std::min(plain.find_first_of(cEscaped), plain.size());
        text += plain.substr(0, before);
        plain.remove_prefix(before);
        if (plain.empty()) break;
        appendLetter(text, plain.front());
        plain.remove_prefix(1);
    }
    return CString(std::move(text));
}

CString escapeUtf8(std::string_view utf8) {
    std::string text;
    while (!utf8.empty()) {
        const char32_t character = takeUtf8(utf8).value_or(cReplacementCharacter);
        if (const auto letter = fromUnicode(character)) {
            appendLetter(text, *letter);
        } else {
            appendForeign(text, character);
        }
    }
    return CString(std::move(text));
}

CString unescapeText(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const std::size_t before = std::min(text.find('\\'), text.size());
        plain += text.substr(0, before);
        text.remove_prefix(before);
        if (text.empty()) break;
        auto letter = takeEscape(text);
        if (!letter) letter = takeForeign(text);
        if (!letter) {  // another backslash
            letter = text.front();
            text.remove_prefix(1);
        }
        plain += *letter;
    }
    return CString(std::move(plain));
}

}  // namespace tessalink
