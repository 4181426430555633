#pragma once

#include <cstring>
#include <memory>
#include <optional>

#include "platform/files/CFile.h"

namespace tessalink {

namespace detail {
struct ReplacedFile;
}

/// An output file that appears as a whole or not at all: what is written goes to a temporary file
/// in the same folder, which takes the final name at Commit. Until then, and after every fault, a
/// file that was there stays as it was. Writing is buffered; small pieces cost no system call.
///
/// A symbolic link is followed: the file that it leads to is replaced, keeping its mode. A device
/// or pipe that exists under the name is written directly, and "-" stands for standard output,
/// which gets everything at Commit. Faults are CFileExceptions with the final path; after a failed
/// write nothing can be committed any more. A program that is killed leaves the temporary file
/// behind.
class TESSALINK_API WholeFile final : public CFile {
public:
    /// Whether Commit waits until the contents are on the disk.
    enum class Sync { No, Yes };
    /// Who may read a file that was not there before; one that is replaced keeps its mode.
    enum class Readers { Usual, Owner };

    /// A closed file.
    WholeFile();
    /// An open file, or CFileException: a missing folder gives badPath, a directory or a file that
    /// may not be written accessDenied.
    explicit WholeFile(const char* name, Sync sync = Sync::No, Readers readers = Readers::Usual);
    /// Gives up what was not committed.
    ~WholeFile() override;

    /// As the constructor; the flags are those of writing, whatever is given.
    BOOL Open(const char* name, UINT flags, CFileException* error = nullptr) override;

    /// Stores the whole contents under the final name and closes. On a fault nothing is left but
    /// the file that was there before; only a device, pipe or standard output may have got a part.
    void Commit();

    std::uint64_t GetPosition() const override;
    std::uint64_t Seek(std::int64_t offset, UINT from) override;
    /// Cuts what is written so far or extends it by zeros, and moves to its new end.
    void SetLength(std::uint64_t length) override;
    std::uint64_t GetLength() const override;
    /// An output is not read: raises accessDenied.
    std::size_t Read(void* buffer, std::size_t count) override;
    void Write(const void* buffer, std::size_t count) override {
        if (count > m_limit - m_filled) return WriteThrough(buffer, count);
        CopyPiece(m_buffer.get() + m_filled, static_cast<const BYTE*>(buffer), count);
        m_filled += count;
    }
    void Flush() override;
    /// Both give up what was not committed and close.
    void Abort() override;
    void Close() override;

private:
    /// Most pieces are words and numbers: two copies of a fixed size, which may overlap, need no
    /// call.
    static void CopyPiece(BYTE* to, const BYTE* from, std::size_t count) noexcept {
        constexpr std::size_t word = 8;
        constexpr std::size_t half = 4;
        if (count > 2 * word) {
            std::memcpy(to, from, count);
        } else if (count >= word) {
            std::memcpy(to, from, word);
            std::memcpy(to + count - word, from + count - word, word);
        } else if (count >= half) {
            std::memcpy(to, from, half);
            std::memcpy(to + count - half, from + count - half, half);
        } else {
            for (std::size_t i = 0; i < count; ++i) to[i] = from[i];
        }
    }

    void OpenOutput(const CString& name);
    void OpenNamed(const CString& name);
    void OpenTemporary(const detail::ReplacedFile& replaced);
    void CheckOpen() const;
    void FlushBuffer();
    void WriteThrough(const void* buffer, std::size_t count);
    void WriteOut(const void* buffer, std::size_t count);
    void StoreStandardOutput();
    void StoreTemporary();
    void Discard() noexcept;

    std::unique_ptr<CFile>
        m_output;             ///< the temporary file, the device, or memory; null when closed
    CString m_temporaryPath;  ///< empty when there is no temporary file
    std::unique_ptr<BYTE[]> m_buffer;
    std::size_t m_filled = 0;
    std::size_t m_limit = 0;  ///< the size of the buffer; 0 when nothing may be buffered
    std::optional<CFileException> m_fault;
    Sync m_sync = Sync::No;
    Readers m_readers = Readers::Usual;
    bool m_toStandardOutput = false;
};

}  // namespace tessalink
