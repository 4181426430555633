#include "platform/files/detail/SystemFile.h"

#include <cerrno>

#include "platform/files/CFileException.h"

namespace tessalink::detail {

int causeOf(int error, const CString& path) {
    if (error == ENOENT && !isThere(folderOf(path))) return CFileException::badPath;
    return CFileException::ErrnoToException(error);
}

}  // namespace tessalink::detail
