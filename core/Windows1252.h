#pragma once

#include <string>
#include <string_view>

#include "platform/base/Export.h"

namespace tessalink {

/// Windows-1252 text as UTF-8. The five bytes that Windows-1252 leaves open become the control
/// characters of the same number, as the web does it.
TESSALINK_API std::string toUtf8(std::string_view windows1252);

}  // namespace tessalink
