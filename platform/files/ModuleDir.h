#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// The folder of the running program's executable, or the one that the host has named
/// (HostServices::moduleDirectory), without a slash at its end unless it is the root. "." when the
/// system does not tell. The system is asked once.
TESSALINK_API CString GetModuleDir();
