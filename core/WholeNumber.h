#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace tessalink {

/// The number that the whole text is, without the locale; nothing when the text is anything else, a
/// number that the type can't hold included. A double may be infinite or no number, and may have
/// the form that std::chars_format says.
template <class Number, class... Form>
std::optional<Number> wholeNumber(std::string_view text, Form... form) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, form...);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

}  // namespace tessalink
