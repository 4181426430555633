#include "core/BufferedFile.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "platform/base/CInvalidArgException.h"

namespace tessalink {

void scramble(char* bytes, std::size_t count) {
    constexpr auto key = static_cast<char>(BufferedFile::cScrambleKey & 0xFFu);
    for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(bytes[i] ^ key);
}

}  // namespace tessalink

IMPLEMENT_DYNAMIC(BufferedFile, CObject)

BufferedFile::BufferedFile(CFile* file, int scrambled) : m_file(file), m_scrambled(scrambled) {
    reset();
}

BufferedFile::~BufferedFile() {
    try {
        BufferedFile::Close();
    } catch (const CException&) {
        // A destructor has nobody to tell.
    }
}

void BufferedFile::Attach(CFile* file) {
    Close();
    m_file = file;
    reset();
}

CFile* BufferedFile::Detach() {
    CFile* file = m_file;
    m_file = nullptr;
    reset();
    return file;
}

int BufferedFile::Open(const char* name, unsigned int flags, CFileException* error) {
    Close();
    if (m_file && m_file->Open(name, flags, error)) reset();
    return m_open;
}

void BufferedFile::Close() {
    const bool wasOpen = m_open != 0;
    forget();
    if (wasOpen) m_file->Close();
}

void BufferedFile::SkipEol() {
    if (AtEOF() || NextCh() != '\r') return;
    GetCh();
    if (NextCh() == '\n') GetCh();
}

void BufferedFile::SetPos(std::uint64_t position) {
    const auto count = static_cast<std::uint64_t>(m_end - m_block);
    if (position >= m_blockStart && position - m_blockStart <= count) {
        m_next = m_block + (position - m_blockStart);
        return;
    }
    seek_to(position);
}

void BufferedFile::RestorePos() {
    if (m_savedPos == cNoPosition) return;
    // A block that was read before the position was saved is not trusted to reach it.
    if (m_savedPos > GetPos()) {
        seek_to(m_savedPos);
    } else {
        SetPos(m_savedPos);
    }
}

void BufferedFile::seek_to(std::uint64_t position) {
    if (m_file) m_file->Seek(static_cast<std::int64_t>(position), CFile::begin);
    clear_block(position);
}

CString BufferedFile::GetTextBlock(std::uint64_t first, std::uint64_t last) {
    if (!m_open) return CString();
    // A file may have grown since its size was asked for.
    const std::uint64_t size = last < m_size ? m_size : m_file->GetLength();
    const std::uint64_t end = last < size ? last + 1 : size;
    if (end <= first) return CString();
    if (end - first > INT_MAX) AfxThrowInvalidArgException();
    const auto length = static_cast<std::size_t>(end - first);
    CString text;
    char* bytes = text.GetBuffer(static_cast<int>(length));
    std::size_t got = length;
    const auto count = static_cast<std::uint64_t>(m_end - m_block);
    if (first >= m_blockStart && end <= m_blockStart + count) {
        std::memcpy(bytes, m_block + (first - m_blockStart), length);
        if (m_scrambled) tessalink::scramble(bytes, length);
    } else {
        const auto offset = static_cast<std::int64_t>(m_file->GetPosition());
        m_file->Seek(static_cast<std::int64_t>(first), CFile::begin);
        got = m_file->Read(bytes, length);
        m_file->Seek(offset, CFile::begin);
    }
    text.ReleaseBuffer(static_cast<int>(got));
    return text;
}

void BufferedFile::reset() {
    forget();
    if (!m_file || !find_size()) return;
    m_open = 1;
    m_file->SeekToBegin();
}

void BufferedFile::forget() {
    m_open = 0;
    m_size = 0;
    m_savedPos = cNoPosition;
    clear_block(0);
}

/// False for a file object that is not open yet.
bool BufferedFile::find_size() {
    try {
        m_size = m_file->GetLength();
        return true;
    } catch (const CFileException&) {
        // Files of other kinds, those in memory for instance, have no handle when they are open.
        if (m_file->m_hFile == CFile::hFileNull) return false;
        throw;
    }
}

void BufferedFile::load_block() {
    clear_block(m_blockStart + static_cast<std::uint64_t>(m_end - m_block));
    if (!m_file) AfxThrowFileException(CFileException::endOfFile);
    // A short file needs no more room than its size; one that tells none may still hold something.
    const std::size_t room =
        m_size == 0 ? cBlockSize
                    : static_cast<std::size_t>(std::min<std::uint64_t>(m_size, cBlockSize));
    if (m_capacity < room) {
        m_buffer = std::make_unique_for_overwrite<char[]>(room + cSlack);
        m_capacity = room;
    }
    char* bytes = m_buffer.get();
    const std::size_t count = m_file->Read(bytes, room);
    if (count == 0) AfxThrowFileException(CFileException::endOfFile);
    if (m_scrambled) tessalink::scramble(bytes, count);
    std::memset(bytes + count, 0, cSlack);
    m_next = m_block = bytes;
    m_end = bytes + count;
}

void BufferedFile::clear_block(std::uint64_t position) {
    m_blockStart = position;
    m_next = m_end = m_block = cNoBlock;
}
