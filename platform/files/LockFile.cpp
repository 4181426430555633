#include "platform/files/LockFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/files/CFile.h"
#include "platform/files/detail/OpenFile.h"

namespace tessalink {

namespace {

constexpr int cNone = -1;
constexpr mode_t cOwnerOnly = 0600;

/// Whether the name still leads to the open file: one who has just released it has removed it.
bool isStillThere(int descriptor, const char* path) {
    struct stat open = {};
    struct stat named = {};
    return ::fstat(descriptor, &open) == 0 && ::stat(path, &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

}  // namespace

LockFile::LockFile(const char* path) : m_path(path), m_descriptor(cNone) {
    constexpr unsigned flags =
        CFile::modeReadWrite | CFile::modeCreate | CFile::modeNoTruncate | CFile::shareExclusive;
    constexpr int attempts = 100;
    for (int i = 0; i < attempts; ++i) {
        const detail::OpenedFile file = detail::openFile(path, flags);
        if (file.error != 0) {
            AfxThrowFileException(detail::causeOf(file.error, path), file.error, path);
        }
        if (isStillThere(file.descriptor, path)) {
            m_descriptor = file.descriptor;
            // File systems without modes refuse, and need none.
            (void)::fchmod(file.descriptor, cOwnerOnly);
            return;
        }
        ::close(file.descriptor);
    }
    AfxThrowFileException(CFileException::sharingViolation, EWOULDBLOCK, path);
}

LockFile::LockFile(LockFile&& other) noexcept
    : m_path(std::move(other.m_path)), m_descriptor(std::exchange(other.m_descriptor, cNone)) {}

LockFile& LockFile::operator=(LockFile&& other) noexcept {
    if (this != &other) {
        Release();
        m_path = std::move(other.m_path);
        m_descriptor = std::exchange(other.m_descriptor, cNone);
    }
    return *this;
}

LockFile::~LockFile() {
    Release();
}

void LockFile::Release() noexcept {
    if (m_descriptor == cNone) return;
    ::unlink(m_path);
    ::close(m_descriptor);
    m_descriptor = cNone;
}

}  // namespace tessalink
