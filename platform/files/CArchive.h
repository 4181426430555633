#pragma once

#include <algorithm>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/files/CArchiveException.h"
#include "platform/files/CFile.h"

namespace tessalink {

/// The numbers that an archive holds as they are: little-endian, in their own size (bool: one
/// byte).
template <class NUMBER>
concept ArchiveNumber = (std::integral<NUMBER> && !std::same_as<NUMBER, wchar_t>) ||
                        std::same_as<NUMBER, float> || std::same_as<NUMBER, double>;

}  // namespace tessalink

/// A buffered stream of values into a file or out of it. Everything is little-endian; a text is its
/// length (one byte; 0xFF and 16 bits from 255 on; 0xFF, 0xFFFF and 32 bits from 65534 on) and its
/// characters.
///
/// Faults of the data raise CArchiveException, faults of the file CFileException. The file must
/// stay open, and not be used otherwise, until the archive is closed.
class TESSALINK_API CArchive {
public:
    /// What an archive does: stores or loads; with bNoFlushOnDelete its destructor writes nothing.
    enum Mode : UINT { store = 0, load = 1, bNoFlushOnDelete = 2 };

    /// How large the buffer is when nothing is said, in bytes.
    static constexpr int cDefaultBufferSize = 4096;

    /// An archive over the caller's file, at its position. `bufferSize` is in bytes, at least 128.
    CArchive(CFile* file, UINT mode, int bufferSize = cDefaultBufferSize);
    /// Closes, unless an exception is on its way or the mode said bNoFlushOnDelete; faults are
    /// lost. A program that must know whether all was stored calls Close.
    ~CArchive();
    CArchive(const CArchive&) = delete;
    CArchive& operator=(const CArchive&) = delete;

    bool IsLoading() const noexcept { return m_loading; }
    /// Whether values go into the file.
    bool IsStoring() const noexcept { return !m_loading; }
    /// The file of the archive; null after Close and Abort.
    CFile* GetFile() const noexcept { return m_file; }

    /// Reads up to `count` bytes; returns how many there were.
    std::size_t Read(void* bytes, std::size_t count);
    /// Stores the bytes as they are.
    void Write(const void* bytes, std::size_t count) {
        if (m_loading || count > Left()) return WriteThrough(bytes, count);
        if (count > 0) std::memcpy(m_buffer.get() + m_next, bytes, count);
        m_next += count;
    }
    /// Reads `count` bytes or raises endOfFile.
    void ReadAll(void* bytes, std::size_t count) {
        if (!m_loading || count > Left()) return ReadThrough(bytes, count);
        if (count > 0) std::memcpy(bytes, m_buffer.get() + m_next, count);
        m_next += count;
    }

    /// Storing: hands what is buffered to the file. Loading: moves the file's position back to the
    /// next byte that was not loaded.
    void Flush();
    /// Flushes and lets go of the file, which stays open. The archive can't be used afterwards.
    void Close();
    /// Lets go of the file without flushing.
    void Abort() noexcept;

    /// A count of elements: 16 bits; from 65535 on 0xFFFF and 32 bits. A larger one than 32 bits
    /// raises badIndex.
    void WriteCount(std::size_t count);
    /// Loads what WriteCount has stored.
    std::size_t ReadCount();

    /// Stores or loads one number, little-endian and in its own size. Loading raises endOfFile when
    /// the file holds no more.
    template <tessalink::ArchiveNumber NUMBER>
    CArchive& operator<<(NUMBER value) {
        const auto bytes = LittleEndian(value);
        Write(&bytes, sizeof(bytes));
        return *this;
    }
    template <tessalink::ArchiveNumber NUMBER>
    CArchive& operator>>(NUMBER& value) {
        if constexpr (std::same_as<NUMBER, bool>) {
            BYTE byte = 0;
            *this >> byte;
            value = byte != 0;
        } else {
            ReadAll(&value, sizeof(value));
            value = LittleEndian(value);
        }
        return *this;
    }
    /// Stores or loads a text, see above.
    CArchive& operator<<(const CString& text);
    /// The text that was there is replaced when the loading succeeds. A length that the file does
    /// not hold raises endOfFile before storage for it is taken.
    CArchive& operator>>(CString& text);

private:
    template <class NUMBER>
    static NUMBER LittleEndian(NUMBER value) noexcept {
        if constexpr (std::endian::native == std::endian::big) {
            auto* const bytes = reinterpret_cast<std::byte*>(&value);
            std::reverse(bytes, bytes + sizeof(value));
        }
        return value;
    }
    std::size_t Left() const noexcept { return m_limit - m_next; }
    [[noreturn]] void Raise(int cause) const;
    void WriteThrough(const void* bytes, std::size_t count);
    void ReadThrough(void* bytes, std::size_t count);
    void WriteBuffer();
    std::size_t ReadTextLength();

    CFile* m_file;
    bool m_loading;
    bool m_flushOnDelete;
    std::size_t m_bufferSize;
    std::unique_ptr<BYTE[]> m_buffer;
    std::size_t m_next = 0;   ///< the next byte of the buffer to load or to fill
    std::size_t m_limit = 0;  ///< where the bytes to load, or the room to fill, end
};
