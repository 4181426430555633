#pragma once

#include <string_view>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CFile;

/// How templates are stored: plain, or scrambled by `tessalink scramble` or tessalink::scramble.
namespace tessalink {

/// What names of scrambled templates end in.
inline constexpr std::string_view cScrambledEnding = ".DAT";
inline constexpr std::string_view cPlainEnding = ".rtf";  ///< what names of plain includes end in

/// The two files that an include may be in.
struct IncludeNames {
    CString part;       ///< "PART"
    CString scrambled;  ///< "PART.DAT"
    CString plain;      ///< "PART.rtf"
};

/// The files of the include that FileParser::do_include is given as `name`, "PART.DAT".
TESSALINK_API IncludeNames includeNames(std::string_view name);
/// Whether a file of that name is stored scrambled: it ends in cScrambledEnding.
TESSALINK_API bool isScrambledName(std::string_view name);

/// Whether a template is not stored as it would be read, scrambled unless that is 0: it begins with
/// characters that no text has, and read the other way round it is text. A few lower-case letters
/// are text both ways, and taken as told. The file is read from its start and rewound; a
/// CFileException passes through.
TESSALINK_API bool isStoredOtherwise(CFile& file, int scrambled);

/// The message, ending in "!", for an include that is in both files.
TESSALINK_API CString doubledInclude(const IncludeNames& names);

}  // namespace tessalink
