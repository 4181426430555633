#pragma once

#include "platform/base/Export.h"

namespace tessalink {

/// The Unicode character that a code of the Symbol face shows: 0xB3 is U+2265, 0xB7 the bullet, "a"
/// the small alpha. Pieces of tall brackets are those of U+239B and following. A code without a
/// picture is a blank.
TESSALINK_API char32_t symbolToUnicode(char code);

}  // namespace tessalink
