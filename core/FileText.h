#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/base/Export.h"

class CFile;

namespace tessalink {

/// What may stand in front of a file in UTF-8.
inline constexpr std::string_view cByteOrderMark = "\xEF\xBB\xBF";

/// What is wrong with a character of a file in UTF-8, as every reader says it.
inline constexpr const char* cNoUtf8 = "a byte that is no UTF-8: save the file as UTF-8";
/// What is wrong with a character that the program's code page lacks, as every reader says it.
TESSALINK_API std::string notInCodePage();

/// The bytes of a file from its position on: all of them, or `limit` + 1 when there are more than
/// `limit`. CFileException passes through.
TESSALINK_API std::string readText(CFile& file, std::size_t limit = std::string::npos - 1);

}  // namespace tessalink
