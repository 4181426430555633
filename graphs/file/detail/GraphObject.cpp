#include "graphs/file/detail/GraphObject.h"

namespace tessalink::detail {

namespace {

constexpr JsonBounds cLineHeight = {1, 1000};

}  // namespace

std::optional<double> GraphObject::Score(const JsonKey& key, const JsonBounds& bounds) {
    const JsonValue* const value = Value(key);
    if (value == nullptr || m_in->IsMissing(*value)) return std::nullopt;
    return m_in->Number(*value, bounds);
}

std::optional<CString> GraphObject::Label(const JsonKey& key) {
    const JsonValue* const value = Value(key);
    return value != nullptr ? m_in->Label(*value) : std::nullopt;
}

std::vector<CString> GraphObject::Labels(const JsonKey& key, std::size_t limit) {
    return List(key, limit,
                [this](const JsonValue& value) { return m_in->Label(value).value_or(CString()); });
}

std::optional<CString> GraphObject::Literal(const JsonKey& key) {
    const JsonValue* const value = Value(key);
    return value != nullptr ? std::optional(m_in->Literal(*value)) : std::nullopt;
}

std::optional<COLORREF> GraphObject::Color(const JsonKey& key) {
    const JsonValue* const value = Value(key);
    return value != nullptr ? m_in->Color(*value) : std::nullopt;
}

TextLook GraphObject::Look(const TextLook& usual, const LookKeys& keys) {
    return {Text(keys.face).value_or(usual.face),
            Whole(keys.size, cLineHeight).value_or(usual.size),
            Color(keys.color).value_or(usual.color)};
}

}  // namespace tessalink::detail
