#include "platform/files/CFile.h"

#include <algorithm>
#include <cerrno>

#include "platform/base/CInvalidArgException.h"
#include "platform/files/detail/SystemFile.h"

using tessalink::detail::cMaxOffset;

namespace {

// Systems take no more than this in one call.
constexpr std::size_t cMaxTransfer = std::size_t{1} << 30;

void checkResult(int result, const char* name) {
    if (result == 0) return;
    const int error = errno;
    AfxThrowFileException(tessalink::detail::causeOf(error, name), error, name);
}

}  // namespace

IMPLEMENT_DYNAMIC(CFile, CObject)

CFile::CFile(int handle) : m_hFile(handle) {}

CFile::CFile(const char* name, UINT flags) {
    CFileException error;
    if (CFile::Open(name, flags, &error) == 0) throw error;
}

CFile::~CFile() {
    CFile::Abort();
}

void CFile::ThrowLastError() const {
    CFileException::ThrowOsError(errno, m_strFileName);
}

CString CFile::GetFileName() const {
    return tessalink::detail::fileNameOf(m_strFileName);
}

CString CFile::GetFilePath() const {
    return tessalink::detail::wholePath(m_strFileName);
}

void CFile::SetFilePath(const char* path) {
    m_strFileName = path;
}

BOOL CFile::Open(const char* name, UINT flags, CFileException* error) {
    CFile::Abort();
    m_strFileName = name;
    const auto file = tessalink::detail::openFile(m_strFileName, flags);
    m_hFile = file.descriptor;
    m_position = 0;
    m_ownPosition = file.takesPositions;
    m_lengthAtOpen = file.length;
    if (file.error == 0) return 1;
    if (error != nullptr) {
        const int cause = tessalink::detail::causeOf(file.error, m_strFileName);
        error->Set(cause, file.error, m_strFileName);
    }
    return 0;
}

std::uint64_t CFile::GetPosition() const {
    if (m_ownPosition) return m_position;
    const std::int64_t position = tessalink::detail::currentPosition(m_hFile);
    if (position >= 0) return static_cast<std::uint64_t>(position);
    if (errno == ESPIPE) return m_position;
    ThrowLastError();
}

std::uint64_t CFile::SeekBase(UINT from) const {
    switch (from) {
        case begin:
            return 0;
        case current:
            return GetPosition();
        case end:
            return GetLength();
        default:
            AfxThrowInvalidArgException();
    }
}

std::uint64_t CFile::Seek(std::int64_t offset, UINT from) {
    const std::uint64_t target = SeekBase(from) + static_cast<std::uint64_t>(offset);
    if (target > cMaxOffset) AfxThrowFileException(CFileException::badSeek, EINVAL, m_strFileName);
    const auto place = static_cast<std::int64_t>(target);
    if (!m_ownPosition && tessalink::detail::seekTo(m_hFile, place) < 0) ThrowLastError();
    m_position = target;
    return target;
}

void CFile::SetLength(std::uint64_t length) {
    if (length > cMaxOffset) AfxThrowFileException(CFileException::diskFull, EFBIG, m_strFileName);
    if (tessalink::detail::setLength(m_hFile, length) != 0) ThrowLastError();
    Seek(static_cast<std::int64_t>(length), begin);
}

std::uint64_t CFile::GetLength() const {
    const std::int64_t length = tessalink::detail::lengthOf(m_hFile);
    if (length < 0) ThrowLastError();
    return static_cast<std::uint64_t>(length);
}

std::int64_t CFile::SystemPosition() const {
    return m_ownPosition ? static_cast<std::int64_t>(m_position) : tessalink::detail::cOwnPosition;
}

std::size_t CFile::ReadSome(void* buffer, std::size_t count) {
    const std::int64_t got = tessalink::detail::readSome(
        m_hFile, buffer, std::min(count, cMaxTransfer), SystemPosition());
    if (got < 0) ThrowLastError();
    return static_cast<std::size_t>(got);
}

std::size_t CFile::WriteSome(const void* buffer, std::size_t count) {
    const std::int64_t put = tessalink::detail::writeSome(
        m_hFile, buffer, std::min(count, cMaxTransfer), SystemPosition());
    if (put < 0) ThrowLastError();
    // A device that takes nothing and names no error would be asked for ever.
    if (put == 0) AfxThrowFileException(CFileException::diskFull, ENOSPC, m_strFileName);
    return static_cast<std::size_t>(put);
}

std::size_t CFile::Read(void* buffer, std::size_t count) {
    auto* next = static_cast<char*>(buffer);
    std::size_t left = count;
    while (left > 0) {
        const std::size_t got = ReadSome(next, left);
        if (got == 0) break;
        m_position += got;
        next += got;
        left -= got;
    }
    return count - left;
}

void CFile::Write(const void* buffer, std::size_t count) {
    const auto* next = static_cast<const char*>(buffer);
    while (count > 0) {
        const std::size_t put = WriteSome(next, count);
        m_position += put;
        next += put;
        count -= put;
    }
}

void CFile::Abort() {
    if (m_hFile == hFileNull) return;
    tessalink::detail::closeFile(m_hFile);
    m_hFile = hFileNull;
}

void CFile::Flush() {}

void CFile::Close() {
    if (m_hFile == hFileNull) return;
    const int result = tessalink::detail::closeFile(m_hFile);
    m_hFile = hFileNull;
    if (result != 0) ThrowLastError();
}

void CFile::Rename(const char* oldName, const char* newName) {
    checkResult(tessalink::detail::renameFile(CString(oldName), CString(newName)), oldName);
}

void CFile::Remove(const char* name) {
    checkResult(tessalink::detail::removeFile(CString(name)), name);
}
