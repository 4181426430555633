#pragma once

#include "platform/files/CFile.h"

namespace tessalink::detail {

/// An included template. While its own includes run it gives its file descriptor back and opens the
/// file again for the next block, so that deep nesting does not use up the descriptors.
class TemplateFile : public CFile {
public:
    /// Opens the file for reading, sharing allowed. "\" and "/" in `path` part folders; where no
    /// file has the exact name, the one whose name differs in case alone is taken. Throws
    /// CFileException.
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

/// The path of an existing file whose name equals `path` but for the case of letters, folder by
/// folder; an exact name goes before others. Empty when there is none or more than one.
CString findIgnoringCase(const CString& path);

/// A place in a text, counted from 1, the column in bytes.
struct LineColumn {
    std::uint64_t line = 1;
    std::uint64_t column = 1;

    /// Steps over `ch`, which follows `before`: CR, LF and CR LF each end a line.
    void Pass(char before, char ch);
};

/// The place of an offset in a template; the file's own offset stays as it is.
LineColumn findLine(CFile& file, int scrambled, std::uint64_t position);

}  // namespace tessalink::detail
