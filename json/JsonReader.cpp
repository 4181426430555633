#include "json/JsonReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "platform/base/NumberText.h"

namespace tessalink {

namespace {

/// What a kind is called, with its article.
std::string nameOf(JsonValue::Kind kind) {
    constexpr std::array<const char*, 6> names = {"null",   "true or false", "a number",
                                                  "a text", "a list",        "an object"};
    return names[static_cast<std::size_t>(kind)];
}

/// A number as a message shows it.
std::string shown(double number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

}  // namespace

JsonReader::~JsonReader() = default;

void JsonReader::FailKind(const JsonValue& value, std::string_view expected) const {
    Fail(value, "must be " + std::string(expected) + ", not " + nameOf(value.kind));
}

void JsonReader::Expect(const JsonValue& value, JsonValue::Kind kind) const {
    if (!value.Is(kind)) FailKind(value, nameOf(kind));
}

const std::vector<JsonMember>& JsonReader::Members(const JsonValue& value, JsonValue::Kind kind,
                                                   std::size_t limit) const {
    Expect(value, kind);
    if (value.members.size() > limit) {
        Fail(value.members[limit].value, "too many: at most " + std::to_string(limit) + " here");
    }
    return value.members;
}

const std::string& JsonReader::Utf8(const JsonValue& value) const {
    Expect(value, JsonValue::Kind::Text);
    return value.text;
}

std::optional<double> JsonReader::number_of(const JsonValue& value) const {
    Expect(value, JsonValue::Kind::Number);
    return value.number;
}

std::optional<double> JsonReader::Number(const JsonValue& value, const JsonBounds& bounds) const {
    const std::optional<double> number = number_of(value);
    if (number && (*number < bounds.low || *number > bounds.high)) {
        Fail(value, shown(*number) + " is out of range: " + shown(bounds.low) + " to " +
                        shown(bounds.high));
    }
    return number;
}

std::optional<int> JsonReader::Whole(const JsonValue& value, const JsonBounds& bounds) const {
    const std::optional<double> number = Number(value, bounds);
    if (!number) return std::nullopt;
    if (*number != std::trunc(*number)) Fail(value, shown(*number) + " is not a whole number");
    return toInt(*number);
}

bool JsonReader::Flag(const JsonValue& value) const {
    Expect(value, JsonValue::Kind::Boolean);
    return value.isTrue;
}

std::optional<CString> JsonReader::Text(const JsonValue& value) const {
    Expect(value, JsonValue::Kind::Text);
    return m_source.TextOf(value);
}

std::optional<std::uint16_t> JsonReader::Words(const JsonValue& value,
                                               std::span<const JsonWord> words) const {
    const std::optional<CString> text = Text(value);
    if (!text) return std::nullopt;
    unsigned bits = 0;
    std::vector<int> groups;
    for (std::string_view rest = text->View(); !rest.empty() || groups.empty();) {
        const std::string_view name = rest.substr(0, rest.find(' '));
        const auto word = std::find_if(words.begin(), words.end(),
                                       [&](const JsonWord& w) { return w.name == name; });
        if (word == words.end()) {
            std::vector<std::string_view> names;
            for (const JsonWord& known : words) names.push_back(known.name);
            Fail(value, inQuotes(name) + " is not allowed here" + nameHint(name, names));
        }
        if (std::find(groups.begin(), groups.end(), word->group) != groups.end()) {
            Fail(value, inQuotes(name) + " contradicts the word before it");
        }
        groups.push_back(word->group);
        bits |= word->value;
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
    }
    return static_cast<std::uint16_t>(bits);
}

}  // namespace tessalink
