#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"

namespace tessalink {

/// Whether a file, or the folder that it would be in, lies on a file system that other computers
/// use too (NFS, SMB, AFS, FUSE ...), where locks and memory shared between programs can't be
/// trusted. False when the system doesn't tell.
TESSALINK_API bool isOnNetworkShare(const char* path);

/// Makes an empty file that only its owner may read and write. False when there is one of this
/// name, which stays as it is; CFileException when it can't be made.
TESSALINK_API bool makePrivateFile(const char* path);

/// The name of the user whom the process belongs to, as the system writes it; its number when it
/// has no name.
TESSALINK_API CString accountName();

}  // namespace tessalink
