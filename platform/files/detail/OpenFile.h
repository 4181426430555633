#pragma once

#include <cstdint>

#include "platform/base/CString.h"

namespace tessalink::detail {

// An open descriptor, or the errno value of the failure.
struct OpenedFile {
    int descriptor = -1;
    int error = 0;
    bool isRegular = false;  // no directory, device or pipe
    std::uint64_t length = 0;
};

// Opens a file with the flags of CFile and takes the locks that its sharing mode asks for. Of a
// failed open nothing remains.
OpenedFile openFile(const char* name, unsigned flags);

// The path up to and without its last "/" ("." when it has none, "/" for the root).
CString folderOf(const CString& path);

// The text behind the last "/".
CString fileNameOf(const CString& path);

// The cause of CFileException for the failure of an operation on this path. It tells a missing
// folder from a missing file.
int causeOf(int error, const CString& path);

}  // namespace tessalink::detail
