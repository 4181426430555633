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
    enum class Kind { Null, Boolean, Number, Text, List, Object };

    Kind kind = Kind::Null;
    bool isTrue = false;
    double number = 0;
    std::string text;  ///< UTF-8, its escapes replaced
    std::size_t start = 0;
    std::size_t end = 0;
    std::vector<JsonMember> members;  ///< of an object, or of a list, whose keys are empty

    bool Is(Kind k) const { return kind == k; }
    /// The value of an object's key; null when it has none.
    const JsonValue* Find(std::string_view key) const;
};

struct JsonMember {
    std::string key;           ///< UTF-8
    std::size_t keyStart = 0;  ///< where its quote stands
    JsonValue value;
};

}  // namespace tessalink
