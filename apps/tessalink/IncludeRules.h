#pragma once

#include "platform/base/CString.h"
#include "platform/files/CFileException.h"

namespace tessalink::cli {

inline constexpr const char* cIncludeOutside =
    "Include '%s' leaves the include folder: name a file in it!";

inline constexpr const char* cIncludePlain =
    "Include '%s' is plain text: store it with 'tessalink scramble'!";

/// Where an include is looked up.
CString includePath(const CString& name);

/// Whether an include's name, with "\" between folders, climbs out of the include folder.
bool leavesFolder(const CString& name);

/// The message for an include that can't be read.
CString includeTrouble(const CString& name, const CFileException& error);

}  // namespace tessalink::cli
