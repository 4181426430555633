#pragma once

#include "platform/base/CString.h"

namespace tessalink::detail {

/// The folder of the running program's executable; "." when the system doesn't tell.
CString ownProgramFolder();

/// On systems with links to what runs: the folder of the file that the link names; when there is no
/// such link, that of the file with this name, links in it followed; "." when there is none either.
CString programFolder(const char* link, const char* name);

}  // namespace tessalink::detail
