#pragma once

#include "platform/base/Export.h"
#include "platform/files/CFile.h"

namespace tessalink {

/// An included template. While its own includes run it gives its file descriptor back and opens the
/// file again for the next block, so that deep nesting does not use up the descriptors.
class TESSALINK_API TemplateFile : public CFile {
public:
    /// Opens the file for reading, sharing allowed. "\" and "/" in `path` part folders, and a
    /// relative one counts from the current folder; where no file has the exact name, the one whose
    /// name differs in case alone is taken. Throws CFileException.
    explicit TemplateFile(const CString& path);

    /// Closes the file until it is read again.
    void Suspend();

    std::size_t Read(void* buffer, std::size_t count) override;
    std::uint64_t Seek(std::int64_t offset, unsigned int from) override;
    std::uint64_t GetPosition() const override;
    std::uint64_t GetLength() const override;

private:
    void resume();

    CString m_path;
    bool m_suspended = false;
    std::uint64_t m_offset = 0;
    std::uint64_t m_length = 0;
};

}  // namespace tessalink
