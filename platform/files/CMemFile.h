#pragma once

#include <string_view>

#include "platform/files/CFile.h"

/// A file in memory. It is open from the start; its name is empty.
///
/// Its storage is a whole number of growth steps and at least doubles when it has to grow, so that
/// writing much in small pieces takes linear time. A growth step of 0 means storage that does not
/// grow: writing beyond it raises CFileException with the cause diskFull and writes nothing. When
/// memory runs out, std::bad_alloc is raised and the contents stay as they were.
class TESSALINK_API CMemFile : public CFile {
    DECLARE_DYNAMIC(CMemFile)

public:
    /// The step in which storage grows when nothing is said, in bytes.
    static constexpr UINT cDefaultGrowBytes = 1024;

    explicit CMemFile(UINT growBytes = cDefaultGrowBytes);
    /// As Attach.
    CMemFile(BYTE* buffer, std::size_t size, UINT growBytes = 0);
    /// Reads the caller's text in place; it must outlive the file's use. Writing raises
    /// accessDenied.
    explicit CMemFile(std::string_view text);
    ~CMemFile() override;

    /// Uses the caller's buffer, which stays the caller's and must outlive its use. With the growth
    /// step 0 its bytes are the file's contents; otherwise the file is empty, and the buffer is
    /// only its first storage: when that is too small, the contents move to storage of the file's
    /// own.
    void Attach(BYTE* buffer, std::size_t size, UINT growBytes = 0);
    /// Gives up the storage and returns it, leaving an empty file; GetLength tells beforehand how
    /// much of it is filled. Storage that was not the caller's is to be freed by std::free. Null
    /// when there is none, and for a file over a text.
    BYTE* Detach();

    /// The whole contents; valid until the next writing operation.
    std::string_view View() const noexcept {
        return {reinterpret_cast<const char*>(m_data), m_length};
    }

    std::uint64_t GetPosition() const override;
    /// A file in memory can't be opened by name: returns 0 with the cause accessDenied.
    BOOL Open(const char* name, UINT flags, CFileException* error = nullptr) override;
    std::uint64_t Seek(std::int64_t offset, UINT from) override;
    /// Cuts the contents or extends them by zeros, and moves to their new end; storage grows as for
    /// writing.
    void SetLength(std::uint64_t length) override;
    std::uint64_t GetLength() const override;
    std::size_t Read(void* buffer, std::size_t count) override;
    void Write(const void* buffer, std::size_t count) override;
    /// Both free the storage and leave an empty file.
    void Abort() override;
    void Close() override;

private:
    void CheckWritable() const;
    void Extend(std::uint64_t length);
    void Grow(std::size_t size);
    void FreeStorage() noexcept;

    BYTE* m_data = nullptr;
    std::size_t m_capacity = 0;
    std::size_t m_length = 0;
    std::uint64_t m_offset = 0;
    UINT m_growBytes;
    bool m_ownsData = true;
    bool m_readOnly = false;
};
