#pragma once

#include <cstddef>
#include <string>

#include "platform/base/Export.h"

class CFile;

namespace tessalink {

/// The bytes of a file from its position on: all of them, or `limit` + 1 when there are more than
/// `limit`. CFileException passes through.
TESSALINK_API std::string readText(CFile& file, std::size_t limit = std::string::npos - 1);

}  // namespace tessalink
