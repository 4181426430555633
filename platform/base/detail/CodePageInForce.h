#pragma once

#include "platform/base/CodePage.h"

namespace tessalink::detail {

// The code page of the user's settings, 1252 when they name none that texts can be in. Defined in
// platform/files, which alone asks the system.
CodePage systemCodePage();

// Takes over the code page of the host services.
void rereadCodePage();

// The character of a byte of Windows-1252.
char32_t westernCharacter(char byte);

}  // namespace tessalink::detail
