#include "json/JsonObject.h"

#include <algorithm>
#include <limits>

namespace tessalink {

JsonObject::JsonObject(const JsonReader& in, const JsonValue& value) : m_in(&in), m_value(&value) {
    in.Expect(value, JsonValue::Kind::Object);
}

JsonObject::JsonObject(const JsonReader& in, const JsonValue& value, const JsonShorthand& shorthand)
    : m_in(&in), m_value(&value) {
    if (value.Is(JsonValue::Kind::Object)) return;
    if (!value.Is(JsonValue::Kind::Text) && !value.Is(JsonValue::Kind::Number)) {
        in.FailKind(value, std::string(shorthand.what) + " or an object");
    }
    m_shorthand = shorthand.key;
}

const JsonValue* JsonObject::Find(std::string_view key) const {
    if (m_shorthand.empty()) return m_value->Find(key);
    return key == m_shorthand ? m_value : nullptr;
}

void JsonObject::Fail(std::string_view key, const std::string& message) const {
    // With a shorthand there is no other place than the value itself.
    const JsonValue* const value = m_shorthand.empty() ? m_value->Find(key) : nullptr;
    m_in->Fail(value != nullptr ? *value : *m_value, message);
}

void JsonObject::CheckKeys() {
    if (m_shorthand.empty()) {
        for (const JsonMember& member : m_value->members) {
            if (std::find(m_known.begin(), m_known.end(), member.key) != m_known.end()) continue;
            m_in->Attempt([&] {
                m_in->Source().FailAtKey(member, "unknown key" + nameHint(member.key, m_known));
            });
        }
    }
    for (const std::string_view key : m_missing) {
        m_in->Attempt([&] { m_in->Fail(*m_value, inQuotes(key) + " is missing"); });
    }
    m_known = {};
    m_missing = {};
}

const JsonValue* JsonObject::Value(const JsonKey& key) {
    constexpr std::size_t usual = 16;
    if (m_known.empty()) m_known.reserve(usual);
    m_known.push_back(key.name);
    const JsonValue* const value = Find(key.name);
    if (value == nullptr && key.isRequired) m_missing.push_back(key.name);
    return value;
}

std::optional<double> JsonObject::Number(const JsonKey& key, const JsonBounds& bounds) {
    return Value(key, [&](const JsonValue& value) { return m_in->Number(value, bounds); });
}

std::optional<int> JsonObject::Whole(const JsonKey& key, const JsonBounds& bounds) {
    return Value(key, [&](const JsonValue& value) { return m_in->Whole(value, bounds); });
}

std::optional<bool> JsonObject::Flag(const JsonKey& key) {
    return Value(key, [&](const JsonValue& value) { return std::optional(m_in->Flag(value)); });
}

std::optional<CString> JsonObject::Text(const JsonKey& key) {
    return Value(key, [&](const JsonValue& value) { return m_in->Text(value); });
}

std::string JsonObject::Utf8(const JsonKey& key) {
    return Value(key, [&](const JsonValue& value) { return m_in->Utf8(value); });
}

std::optional<std::uint16_t> JsonObject::ReadWords(const JsonKey& key,
                                                   std::span<const JsonWord> words) {
    return Value(key, [&](const JsonValue& value) { return m_in->Words(value, words); });
}

void JsonObject::CheckOrder(std::string_view lowKey, std::string_view highKey,
                            bool mayBeEqual) const {
    constexpr double most = std::numeric_limits<double>::infinity();
    const JsonValue* const lowest = Find(lowKey);
    const JsonValue* const highest = Find(highKey);
    if (lowest == nullptr || highest == nullptr) return;
    const auto low = m_in->Number(*lowest, {-most, most});
    const auto high = m_in->Number(*highest, {-most, most});
    if (!low || !high || *low < *high || (mayBeEqual && *low == *high)) return;
    m_in->Fail(*highest, (mayBeEqual ? "must not be less than " : "must be greater than ") +
                             inQuotes(lowKey));
}

}  // namespace tessalink
