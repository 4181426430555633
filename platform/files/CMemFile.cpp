#include "platform/files/CMemFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "platform/base/CInvalidArgException.h"

IMPLEMENT_DYNAMIC(CMemFile, CFile)

CMemFile::CMemFile(UINT growBytes) : m_growBytes(growBytes) {}

CMemFile::CMemFile(BYTE* buffer, std::size_t size, UINT growBytes) : m_growBytes(growBytes) {
    CMemFile::Attach(buffer, size, growBytes);
}

// The bytes are never written to: m_readOnly guards every writing operation.
CMemFile::CMemFile(std::string_view text)
    : m_data(reinterpret_cast<BYTE*>(const_cast<char*>(text.data()))),
      m_capacity(text.size()),
      m_length(text.size()),
      m_growBytes(0),
      m_ownsData(false),
      m_readOnly(true) {}

CMemFile::~CMemFile() {
    FreeStorage();
}

void CMemFile::FreeStorage() noexcept {
    if (m_ownsData) std::free(m_data);
    m_data = nullptr;
    m_capacity = 0;
    m_length = 0;
    m_offset = 0;
    m_ownsData = true;
    m_readOnly = false;
}

void CMemFile::Attach(BYTE* buffer, std::size_t size, UINT growBytes) {
    if (buffer == nullptr && size != 0) AfxThrowInvalidArgException();
    FreeStorage();
    m_data = buffer;
    m_capacity = size;
    m_length = growBytes == 0 ? size : 0;
    m_growBytes = growBytes;
    m_ownsData = false;
}

BYTE* CMemFile::Detach() {
    BYTE* const data = m_readOnly ? nullptr : m_data;
    m_ownsData = false;
    FreeStorage();
    return data;
}

std::uint64_t CMemFile::GetPosition() const {
    return m_offset;
}

BOOL CMemFile::Open(const char* name, UINT, CFileException* error) {
    if (error != nullptr) error->Set(CFileException::accessDenied, -1, name);
    return 0;
}

std::uint64_t CMemFile::Seek(std::int64_t offset, UINT from) {
    if (from > end) AfxThrowInvalidArgException();
    const std::uint64_t base = from == begin ? 0 : from == current ? m_offset : m_length;
    const std::uint64_t target = base + static_cast<std::uint64_t>(offset);
    if (target > std::numeric_limits<std::int64_t>::max()) {
        AfxThrowFileException(CFileException::badSeek, EINVAL);
    }
    m_offset = target;
    return target;
}

void CMemFile::CheckWritable() const {
    if (m_readOnly) AfxThrowFileException(CFileException::accessDenied, EACCES);
}

void CMemFile::SetLength(std::uint64_t length) {
    CheckWritable();
    if (length > m_length) {
        Extend(length);
    } else {
        m_length = static_cast<std::size_t>(length);
    }
    m_offset = length;
}

std::uint64_t CMemFile::GetLength() const {
    return m_length;
}

std::size_t CMemFile::Read(void* buffer, std::size_t count) {
    if (m_offset >= m_length) return 0;
    const std::size_t got = std::min(count, m_length - static_cast<std::size_t>(m_offset));
    if (got > 0) std::memcpy(buffer, m_data + m_offset, got);
    m_offset += got;
    return got;
}

void CMemFile::Write(const void* buffer, std::size_t count) {
    CheckWritable();
    if (count == 0) return;
    if (m_offset > m_length) {
        Extend(m_offset);
    }
    const std::uint64_t written = m_offset + count;
    if (written > m_capacity) Grow(static_cast<std::size_t>(written));
    std::memcpy(m_data + m_offset, buffer, count);
    m_offset = written;
    m_length = std::max(m_length, static_cast<std::size_t>(written));
}

// Makes the file longer, by zeros.
void CMemFile::Extend(std::uint64_t length) {
    if (length > m_capacity) Grow(static_cast<std::size_t>(length));
    std::memset(m_data + m_length, 0, static_cast<std::size_t>(length) - m_length);
    m_length = static_cast<std::size_t>(length);
}

void CMemFile::Grow(std::size_t size) {
    if (m_growBytes == 0) AfxThrowFileException(CFileException::diskFull, ENOSPC);
    constexpr std::size_t cMaxCapacity = std::numeric_limits<std::ptrdiff_t>::max();
    if (size > cMaxCapacity - m_growBytes) throw std::bad_alloc();
    const std::size_t wanted = std::max(size, std::min(m_capacity * 2, cMaxCapacity - m_growBytes));
    const std::size_t capacity = (wanted + m_growBytes - 1) / m_growBytes * m_growBytes;
    auto* const data = static_cast<BYTE*>(std::realloc(m_ownsData ? m_data : nullptr, capacity));
    if (data == nullptr) throw std::bad_alloc();
    if (!m_ownsData && m_length > 0) std::memcpy(data, m_data, m_length);
    m_data = data;
    m_capacity = capacity;
    m_ownsData = true;
}

void CMemFile::Abort() {
    FreeStorage();
}

void CMemFile::Close() {
    FreeStorage();
}
