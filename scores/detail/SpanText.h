#pragma once

#include <optional>
#include <string_view>
#include <utility>

namespace tessalink::detail {

inline std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\n\v\f\r\xA0";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The two sides of the dash of a span; nothing when there is no dash. A "-" at the start is a
/// sign. Spreadsheets like to write an en dash.
inline std::optional<std::pair<std::string_view, std::string_view>> sidesOfSpan(
    std::string_view text) {
    constexpr std::string_view dashes = "-\x96";
    const auto dash = text.find_first_of(dashes, 1);
    if (dash == std::string_view::npos) return std::nullopt;
    return std::pair(trimmed(text.substr(0, dash)), trimmed(text.substr(dash + 1)));
}

}  // namespace tessalink::detail
