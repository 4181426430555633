#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// A JSON text as a tree whose values know where they stand.
namespace tessalink::detail {

/// How deep values may be nested.
inline constexpr std::size_t cMaxJsonDepth = 32;

struct JsonMember;

struct JsonValue {
    enum class Kind { Null, Boolean, Number, Text, List, Object };

    Kind kind = Kind::Null;
    bool isTrue = false;
    double number = 0;
    std::string text;  ///< UTF-8
    std::size_t start = 0;
    std::size_t end = 0;              ///< bytes in the text, the end excluded
    std::vector<JsonMember> members;  ///< of a list, without keys, or an object

    bool Is(Kind k) const { return kind == k; }
    /// The value of an object's key; null when it has none.
    const JsonValue* Find(std::string_view key) const;
};

struct JsonMember {
    std::string key;
    std::size_t keyStart = 0;
    JsonValue value;
};

/// Where a text is no JSON, and why.
struct JsonFault {
    std::size_t offset = 0;
    std::string message;
};

/// Reads a text, in UTF-8. Throws JsonFault; that a key is there twice, is a fault too.
JsonValue parseJson(std::string_view text);

/// The path from the root to the innermost value that holds the byte, as a JSON pointer:
/// "/graphs/Anxiety/sections/2".
std::string pathTo(const JsonValue& root, std::size_t offset);

/// Where the byte of a text's value that has this index stands, given the quoted text as it is
/// written.
std::size_t rawOffset(std::string_view quoted, std::size_t index);

}  // namespace tessalink::detail
