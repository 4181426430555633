#include "core/ResponseSet.h"

#include <algorithm>

#include "platform/base/NumberText.h"

namespace tessalink {

namespace {

constexpr std::string_view cFieldEnds = "|]";

/// Takes a field with the character behind it off the text; nothing when it is too long or open.
std::optional<std::string_view> takeField(std::string_view& text, char& end) {
    const std::size_t length = text.substr(0, cMaxResponseField + 1).find_first_of(cFieldEnds);
    if (length == std::string_view::npos) return std::nullopt;
    const std::string_view field = text.substr(0, length);
    end = text[length];
    text.remove_prefix(length + 1);
    return field;
}

}  // namespace

std::optional<Response> readResponse(std::string_view& text) {
    if (text.empty() || text.front() != '[') return std::nullopt;
    text.remove_prefix(1);
    Response response;
    char end = '|';
    for (CString* field : {&response.caption, &response.keys}) {
        if (end == ']') return response;
        const auto read = takeField(text, end);
        if (!read) return std::nullopt;
        *field = CString(read->data(), static_cast<int>(read->size()));
    }
    if (end == ']') return response;
    const auto digits = takeField(text, end);
    if (!digits || end != ']') return std::nullopt;
    const auto isDigit = [](char ch) { return ch >= '0' && ch <= '9'; };
    if (!std::all_of(digits->begin(), digits->end(), isDigit)) return std::nullopt;
    if (!digits->empty()) response.value = readInt(*digits);
    return response;
}

}  // namespace tessalink
