#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "json/JsonValue.h"

// From a JSON text to a tree whose values know where they stand, and back to places in the text.
namespace tessalink::detail {

/// Where a text is not valid JSON, or not what we read, and why.
struct JsonFault {
    std::size_t offset = 0;
    std::string message;
};

/// Reads a text, in UTF-8. Throws JsonFault.
JsonValue parseJson(std::string_view text);

/// The path from the root to the innermost value that holds the byte, as a JSON pointer:
/// "/graphs/Anxiety/sections/2".
std::string pathTo(const JsonValue& root, std::size_t offset);

/// Where the byte of a text's value that has this index stands, given the quoted text as it is
/// written.
std::size_t rawOffset(std::string_view quoted, std::size_t index);

}  // namespace tessalink::detail
