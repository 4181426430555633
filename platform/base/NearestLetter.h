#pragma once

#include "platform/base/Export.h"

namespace tessalink {

/// What stands for a character that the program's code page lacks: the letter without the marks
/// that are in the way ("L" for U+0141, "\xEA" for U+1EC7), the Latin letter for a Greek (ISO 843)
/// or Cyrillic one (ISO 9), the plain sign for a dash, a space, a prime or a wide letter; '?' when
/// nothing comes near. Marks are kept that Windows-1252 has, too. The result is a byte of the code
/// page.
TESSALINK_API char nearestLetter(char32_t character);

}  // namespace tessalink
