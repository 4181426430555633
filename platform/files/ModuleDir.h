#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// The folder of the running program's executable, or the one that the host has named
/// (HostServices::moduleDirectory), without a slash at its end unless it is the root. The system is
/// asked once. Where /proc is not mounted, the name by which the program was started is followed;
/// when that is relative and the current folder was changed before the first call, the result is
/// "." or wrong, and the host should name the folder.
TESSALINK_API CString GetModuleDir();
