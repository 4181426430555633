#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"

namespace tessalink {

/// A file that stands beside what one program at a time may use: whoever holds it open has the
/// right. It goes when it is released; one that a killed program left behind is nobody's and taken
/// over. Programs on other computers are kept out as far as the file system knows locks.
class TESSALINK_API LockFile {
public:
    /// Takes the lock, or raises CFileException: sharingViolation when another holds it, in this
    /// process or elsewhere.
    explicit LockFile(const char* path);
    LockFile(LockFile&&) noexcept;
    /// Releases the lock that is held, and takes over the other one.
    LockFile& operator=(LockFile&&) noexcept;
    /// Releases it and removes the file.
    ~LockFile();

private:
    void Release() noexcept;

    CString m_path;
    int m_descriptor;  ///< -1 when released
};

}  // namespace tessalink
