#include "platform/files/LockFile.h"

#include <cerrno>
#include <utility>

#include "platform/files/CFile.h"
#include "platform/files/detail/SystemFile.h"

namespace tessalink {

namespace {

constexpr int cNone = -1;
constexpr int cOwnerOnly = 0600;

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
        // One who has just released it has removed its name.
        if (detail::isNamed(file.descriptor, path)) {
            m_descriptor = file.descriptor;
            detail::giveMode(file.descriptor, cOwnerOnly);
            return;
        }
        detail::closeFile(file.descriptor);
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
    detail::closeAndRemove(m_descriptor, m_path);
    m_descriptor = cNone;
}

}  // namespace tessalink
