#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "platform/base/Export.h"

namespace tessalink {

struct JsonMember;

/// A value of a JSON text, which knows where it stands there. Offsets count bytes from the start of
/// the text; the end is excluded.
struct TESSALINK_API JsonValue {
    /// What kinds of values there are.
    enum class Kind { Null, Boolean, Number, Text, List, Object };

    Kind kind = Kind::Null;           ///< of this value
    bool isTrue = false;              ///< the value of a Boolean
    double number = 0;                ///< the value of a Number
    std::string text;                 ///< UTF-8, its escapes replaced
    std::size_t start = 0;            ///< where it begins
    std::size_t end = 0;              ///< where it ends
    std::vector<JsonMember> members;  ///< of an object, or of a list, whose keys are empty

    /// Whether the value is of this kind.
    bool Is(Kind k) const { return kind == k; }
    /// The value of an object's key; null when it has none.
    const JsonValue* Find(std::string_view key) const;
};

/// A key and its value.
struct JsonMember {
    std::string key;           ///< UTF-8
    std::size_t keyStart = 0;  ///< where its quote stands
    JsonValue value;           ///< what the key has
};

}  // namespace tessalink
