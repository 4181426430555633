#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "json/JsonReader.h"
#include "platform/base/Export.h"

namespace tessalink {

/// A key that is asked for; one that is required must be there.
struct JsonKey {
    // NOLINTNEXTLINE(google-explicit-constructor): a name is a key
    /// A key that may be missing.
    constexpr JsonKey(const char* keyName) : name(keyName) {}
    /// A key that must be there when `mustBeThere` says so.
    constexpr JsonKey(std::string_view keyName, bool mustBeThere)
        : name(keyName), isRequired(mustBeThere) {}

    std::string_view name;    ///< the key
    bool isRequired = false;  ///< whether it must be there
};
/// A key that must be there.
constexpr JsonKey required(std::string_view name) {
    return {name, true};
}

/// A value that isn't an object, but stands for an object with this key alone. `what` names such
/// values in a message, as "a text".
struct JsonShorthand {
    std::string_view key;   ///< the key that the value belongs to
    std::string_view what;  ///< the value in words, for messages
};

/// An object of a JSON file as a structure: every member asks for its key where it is initialized.
///
///     struct Point : JsonObject {
///         using JsonObject::JsonObject;
///         std::optional<double> at = Number(required("at"), {0, 100});
///         int size = Whole("size", {1, 9}).value_or(5);
///     };
///     const auto point = readObject<Point>(reader, value);
///
/// The keys that are asked for are those that the object may have: others are faults, and so is a
/// required one that is missing. With a reader that collects faults, a value with a fault is as one
/// that is not there. A structure that derives from another has its keys, too. Reader
/// and value must outlive the object.
class TESSALINK_API JsonObject {
public:
    /// A value that isn't an object is a fault.
    JsonObject(const JsonReader& in, const JsonValue& value);
    /// A text or a number stands for the shorthand's object; the other kinds are faults.
    JsonObject(const JsonReader& in, const JsonValue& value, const JsonShorthand& shorthand);

    /// Raises a fault at the value of a key, or at the object when it hasn't that key.
    [[noreturn]] void Fail(std::string_view key, const std::string& message) const;
    /// Raises the faults of keys that are unknown or missing, once all have been asked for.
    void CheckKeys();

    /// The object's own value, for its place.
    const JsonValue& Place() const { return *m_value; }

protected:
    /// The reader that the object was made with.
    const JsonReader& Reader() const { return *m_in; }

    /// Whether the key is there. It does not count as asked for.
    bool Has(std::string_view key) const { return Find(key) != nullptr; }
    /// Asks for a key whose value is read elsewhere; null when it isn't there.
    const JsonValue* Value(const JsonKey& key);
    /// A number within bounds; nothing when the key isn't there.
    std::optional<double> Number(const JsonKey& key, const JsonBounds& bounds);
    /// A whole number within bounds; nothing when the key isn't there.
    std::optional<int> Whole(const JsonKey& key, const JsonBounds& bounds);
    /// True or false; nothing when the key isn't there.
    std::optional<bool> Flag(const JsonKey& key);
    /// A text in the code page; nothing when the key isn't there.
    std::optional<CString> Text(const JsonKey& key);
    /// A text in UTF-8; empty when it isn't there.
    std::string Utf8(const JsonKey& key);
    /// A text of words; see JsonReader::Words.
    template <class T = std::uint16_t>
    std::optional<T> Words(const JsonKey& key, std::span<const JsonWord> words) {
        const auto value = ReadWords(key, words);
        return value ? std::optional(static_cast<T>(*value)) : std::nullopt;
    }
    /// What `read` makes of each value of a list; nothing when the key isn't there.
    template <class Read>
    auto List(const JsonKey& key, std::size_t limit, Read read) {
        std::vector<decltype(read(std::declval<const JsonValue&>()))> values;
        const JsonValue* const list = Value(key);
        if (list == nullptr) return values;
        m_in->Attempt([&] {
            const auto& members = m_in->Members(*list, JsonValue::Kind::List, limit);
            values.reserve(members.size());
            for (const JsonMember& member : members) {
                m_in->Attempt([&] { values.push_back(read(member.value)); });
            }
        });
        return values;
    }

    /// Two scores, each of which may be missing or unknown, must be in ascending order.
    void CheckOrder(std::string_view lowKey, std::string_view highKey, bool mayBeEqual) const;

private:
    const JsonValue* Find(std::string_view key) const;
    /// What `read` makes of a key's value; nothing when the key isn't there.
    template <class Read>
    auto Value(const JsonKey& key, Read read) {
        decltype(read(std::declval<const JsonValue&>())) result{};
        if (const JsonValue* const value = Value(key)) {
            m_in->Attempt([&] { result = read(*value); });
        }
        return result;
    }
    std::optional<std::uint16_t> ReadWords(const JsonKey& key, std::span<const JsonWord> words);

    const JsonReader* m_in;
    const JsonValue* m_value;
    std::string_view m_shorthand;  ///< the key that a value which isn't an object has
    std::vector<std::string_view> m_known;
    std::vector<std::string_view> m_missing;
};

/// Reads an object as a structure; what comes after the value goes to its constructor.
template <class T, class Reader, class... More>
T readObject(Reader& in, const JsonValue& value, const More&... more) {
    T object(in, value, more...);
    object.CheckKeys();
    return object;
}

}  // namespace tessalink
