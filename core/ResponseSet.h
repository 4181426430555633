#pragma once

#include <optional>
#include <string_view>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// The responses that an item offers, as applications write them down: "[Yes|Yy|1][No|Nn|2]" offers
/// "Yes", which the keys Y and y select and which has the code 1, and "No".
namespace tessalink {

/// The longest caption, the most keys and the most digits of a response.
inline constexpr std::size_t cMaxResponseField = 80;

/// One response.
struct Response {
    CString caption;           ///< what the item shows for it
    CString keys;              ///< the characters that select it; case counts
    std::optional<int> value;  ///< its code, if one is given; the largest integer stands for more
};

/// Reads a response off the front of the text: "[", the caption, if wanted "|" and the keys, and
/// then "|" and the code in digits, and "]". Returns nothing when it is malformed: a field longer
/// than 80 characters, something else than digits in the code, or no "]".
TESSALINK_API std::optional<Response> readResponse(std::string_view& text);

}  // namespace tessalink
