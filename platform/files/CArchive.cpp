#include "platform/files/CArchive.h"

#include <exception>
#include <iterator>
#include <limits>
#include <string>
#include <utility>

#include "platform/base/Serialization.h"

namespace {

constexpr int cMinBufferSize = 128;
// The most that is reserved on the word of a length that was loaded.
constexpr std::size_t cTextStep = std::size_t{1} << 20;

constexpr BYTE cLongText = 0xFF;
constexpr WORD cVeryLongText = 0xFFFF;
constexpr WORD cWideText = 0xFFFE;
constexpr WORD cLongCount = 0xFFFF;

constexpr const char* cArchiveMessages[] = {
    "no fault",
    "the operation failed",
    "the archive was opened for loading and can't be stored into",
    "the file ends too early",
    "the archive was opened for storing and can't be loaded from",
    "the file is damaged: a count or index is out of range",
    "the file is damaged: it names an unknown class",
    "the file has an unknown form",
    "the buffer is full",
};
static_assert(std::size(cArchiveMessages) == CArchiveException::bufferFull + 1);

CString messageFor(int cause, const char* fileName) {
    const auto index = static_cast<std::size_t>(static_cast<unsigned>(cause));
    CString message(fileName);
    if (!message.IsEmpty()) message += ": ";
    message += index < std::size(cArchiveMessages)
                   ? cArchiveMessages[index]
                   : cArchiveMessages[CArchiveException::genericException];
    return message + '.';
}

}  // namespace

IMPLEMENT_DYNAMIC(CArchiveException, CException)

CArchiveException::CArchiveException(int cause, const char* fileName)
    : CException(messageFor(cause, fileName)), m_cause(cause), m_strFileName(fileName) {}

void AfxThrowArchiveException(int cause, const char* fileName) {
    throw CArchiveException(cause, fileName);
}

CArchive::CArchive(CFile* file, UINT mode, int bufferSize)
    : m_file(file),
      m_loading((mode & load) != 0),
      m_flushOnDelete((mode & bNoFlushOnDelete) == 0),
      m_bufferSize(static_cast<std::size_t>(std::max(bufferSize, cMinBufferSize))),
      m_buffer(std::make_unique<BYTE[]>(m_bufferSize)),
      m_limit(m_loading ? 0 : m_bufferSize) {}

CArchive::~CArchive() {
    if (m_file == nullptr || !m_flushOnDelete || std::uncaught_exceptions() > 0) return;
    try {
        Close();
    } catch (const std::exception&) {
    }
}

void CArchive::Raise(int cause) const {
    AfxThrowArchiveException(cause, m_file != nullptr ? m_file->GetFilePath() : CString());
}

void CArchive::WriteBuffer() {
    if (m_file == nullptr) Raise(CArchiveException::genericException);
    const std::size_t filled = std::exchange(m_next, 0);
    m_file->Write(m_buffer.get(), filled);
}

void CArchive::WriteThrough(const void* bytes, std::size_t count) {
    if (m_loading) Raise(CArchiveException::readOnly);
    WriteBuffer();
    if (count >= m_bufferSize) return m_file->Write(bytes, count);
    std::memcpy(m_buffer.get(), bytes, count);
    m_next = count;
}

std::size_t CArchive::Read(void* bytes, std::size_t count) {
    if (!m_loading) Raise(CArchiveException::writeOnly);
    auto* const target = static_cast<BYTE*>(bytes);
    const std::size_t buffered = std::min(count, Left());
    if (buffered > 0) std::memcpy(target, m_buffer.get() + m_next, buffered);
    m_next += buffered;
    const std::size_t left = count - buffered;
    if (left == 0) return count;
    if (m_file == nullptr) Raise(CArchiveException::genericException);
    if (left >= m_bufferSize) return buffered + m_file->Read(target + buffered, left);
    m_limit = m_next = 0;
    m_limit = m_file->Read(m_buffer.get(), m_bufferSize);
    const std::size_t got = std::min(left, m_limit);
    if (got > 0) std::memcpy(target + buffered, m_buffer.get(), got);
    m_next = got;
    return buffered + got;
}

void CArchive::ReadThrough(void* bytes, std::size_t count) {
    if (Read(bytes, count) != count) Raise(CArchiveException::endOfFile);
}

void CArchive::Flush() {
    if (m_file == nullptr) return;
    if (m_loading) {
        const auto unread = static_cast<std::int64_t>(Left());
        if (unread > 0) m_file->Seek(-unread, CFile::current);
        m_next = m_limit = 0;
    } else {
        WriteBuffer();
        m_file->Flush();
    }
}

void CArchive::Close() {
    if (m_file == nullptr) return;
    const auto letGo = [](CArchive* archive) { archive->Abort(); };
    const std::unique_ptr<CArchive, decltype(letGo)> guard(this, letGo);
    Flush();
}

void CArchive::Abort() noexcept {
    m_file = nullptr;
    m_next = m_limit = 0;
}

void CArchive::WriteCount(std::size_t count) {
    if (count < cLongCount) {
        *this << static_cast<WORD>(count);
    } else if (count <= std::numeric_limits<DWORD>::max()) {
        *this << cLongCount << static_cast<DWORD>(count);
    } else {
        Raise(CArchiveException::badIndex);
    }
}

std::size_t CArchive::ReadCount() {
    WORD shortCount = 0;
    *this >> shortCount;
    if (shortCount != cLongCount) return shortCount;
    DWORD count = 0;
    *this >> count;
    return count;
}

CArchive& CArchive::operator<<(const CString& text) {
    const std::string_view characters = text.View();
    if (characters.size() < cLongText) {
        *this << static_cast<BYTE>(characters.size());
    } else if (characters.size() < cWideText) {
        *this << cLongText << static_cast<WORD>(characters.size());
    } else {
        *this << cLongText << cVeryLongText << static_cast<DWORD>(characters.size());
    }
    Write(characters.data(), characters.size());
    return *this;
}

std::size_t CArchive::ReadTextLength() {
    BYTE shortLength = 0;
    *this >> shortLength;
    if (shortLength != cLongText) return shortLength;
    WORD length = 0;
    *this >> length;
    if (length == cWideText) Raise(CArchiveException::badSchema);
    if (length != cVeryLongText) return length;
    DWORD longLength = 0;
    *this >> longLength;
    return longLength;
}

CArchive& CArchive::operator>>(CString& text) {
    const std::size_t length = ReadTextLength();
    if (length <= Left()) {
        text = std::string_view(reinterpret_cast<const char*>(m_buffer.get()) + m_next, length);
        m_next += length;
        return *this;
    }
    std::string loaded;
    while (loaded.size() < length) {
        const std::size_t first = loaded.size();
        const std::size_t step = std::min(length - first, std::max(first, cTextStep));
        loaded.resize(first + step);
        ReadAll(loaded.data() + first, step);
    }
    text = CString(std::move(loaded));
    return *this;
}

namespace tessalink {

bool isStoring(const CArchive& archive) {
    return archive.IsStoring();
}

void storeCount(CArchive& archive, std::size_t count) {
    archive.WriteCount(count);
}

std::size_t loadCount(CArchive& archive) {
    return archive.ReadCount();
}

void exchangeBytes(CArchive& archive, void* bytes, std::size_t count) {
    if (archive.IsStoring()) {
        archive.Write(bytes, count);
    } else {
        archive.ReadAll(bytes, count);
    }
}

void exchangeText(CArchive& archive, CString& text) {
    if (archive.IsStoring()) {
        archive << text;
    } else {
        archive >> text;
    }
}

}  // namespace tessalink
