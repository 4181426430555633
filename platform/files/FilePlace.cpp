#include "platform/files/FilePlace.h"

#include <cerrno>

#include "platform/files/CFileException.h"
#include "platform/files/detail/SystemFile.h"

namespace tessalink {

bool makePrivateFile(const char* path) {
    const detail::OpenedFile file = detail::makeFile(path, detail::NewFileMode::Owner);
    if (file.error == EEXIST) return false;
    if (file.error != 0) AfxThrowFileException(detail::causeOf(file.error, path), file.error, path);
    detail::closeFile(file.descriptor);
    return true;
}

}  // namespace tessalink
