#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/files/CFile.h"
#include "platform/files/CFileException.h"

/// Reads a file one character at a time through a block buffer, with one character of look-ahead,
/// one saved position for backtracking, random repositioning, and extraction of a stretch of the
/// file as text.
///
/// Report templates are stored scrambled: every byte is combined with 0x5C by exclusive or. A
/// reader made with the scramble flag turns each block back into plain text as it loads it.
///
/// The reader never owns the file object. It relies on the file's offset between two reads: a user
/// of the same file object puts the offset back.
///
/// Errors: reading past the end of the file raises a CFileException with the cause endOfFile; seek
/// and read errors of the file object pass through.
class TESSALINK_API BufferedFile : public CObject {
    DECLARE_DYNAMIC(BufferedFile)

public:
    /// Bytes that one read of the file fetches.
    static constexpr std::size_t cBlockSize = 4096;
    /// The key of the scrambling: four equal bytes, so that it does not matter where a block
    /// starts.
    static constexpr std::uint32_t cScrambleKey = 0x5C5C5C5Cu;
    /// A reader without a file that unscrambles what it will be attached to.
    BufferedFile() : BufferedFile(nullptr, 1) {}
    /// Reads `file` from its start; null for none, and a file that is not open waits for Open.
    /// `scrambled` nonzero unscrambles every block.
    BufferedFile(CFile* file, int scrambled);
    /// Closes the file object if the reader is still open: Detach first to keep it open.
    ~BufferedFile() override;

    BufferedFile(const BufferedFile&) = delete;
    BufferedFile& operator=(const BufferedFile&) = delete;

    /// Closes a reader that is open, then reads `file` from its start. It may be null or not open
    /// yet, as for the constructor.
    void Attach(CFile* file);
    /// Gives the file back, open as it is, and forgets it.
    CFile* Detach();
    /// Opens the attached file object under `name`; an open reader is closed first. Returns
    /// nonzero on success, 0 without a file object; a fault of opening is described in `error` when
    /// that is not null.
    int Open(const char* name, unsigned int flags, CFileException* error);
    /// Closes the file object if the reader is open, and forgets size, positions and buffer; the
    /// file object stays attached. The reader is closed even when closing the file raises.
    virtual void Close();
    /// Nonzero while a file is attached and its size is known.
    int IsOpen() const { return m_open; }

    /// The next character, advancing by one.
    char GetCh() {
        if (m_next == m_end) load_block();
        return *m_next++;
    }
    /// The next character, without advancing.
    char NextCh() {
        if (m_next == m_end) load_block();
        return *m_next;
    }
    /// Skips one line end, CR or CR LF, if one follows; a lone LF is no line end. A CR that ends
    /// the file is consumed, and the look for its LF raises the end of file.
    void SkipEol();
    /// Nonzero when the position has reached the size; always 0 for files of 4 GiB or more.
    int AtEOF() const { return m_size <= UINT32_MAX && GetPos() >= m_size; }

    /// Offset in the file of the character that GetCh returns next.
    std::uint64_t GetPos() const {
        return m_blockStart + static_cast<std::uint64_t>(m_next - m_block);
    }
    /// Moves to an offset: within the block in the buffer, or by a seek of the file.
    void SetPos(std::uint64_t position);
    /// Remembers the position for RestorePos.
    void SavePos() { m_savedPos = GetPos(); }
    /// Goes back to the saved position, which is read anew when it is ahead; does nothing when none
    /// is saved.
    void RestorePos();

    /// The bytes from offset `first` to offset `last`, both included, as they are stored in the
    /// file: a stretch of a scrambled file stays scrambled. Fewer when the file, which may have
    /// grown, ends before; none from a closed reader. More than 2 GiB raise CInvalidArgException.
    CString GetTextBlock(std::uint64_t first, std::uint64_t last);

    /// For readers that look at a whole block at a time, between Cursor and BlockEnd. Behind
    /// BlockEnd so many bytes may be looked at, too: all of them are NUL.
    static constexpr std::size_t cSlack = 16;
    /// Makes at least one character available at Cursor; false at the end of the file. Errors of
    /// the file pass through.
    bool Fill() {
        if (m_next != m_end) return true;
        if (AtEOF()) return false;
        load_block();
        return true;
    }
    /// The characters of the block that are still ahead lie between the two, and stay there until
    /// the next block is loaded.
    const char* Cursor() const { return m_next; }
    /// The end of the block, see Cursor.
    const char* BlockEnd() const { return m_end; }
    /// Advances to a place between Cursor and BlockEnd.
    void MoveTo(const char* cursor) { m_next = cursor; }

    /// The attached file (may be null), and whether what is read from it is unscrambled.
    CFile* GetFile() const { return m_file; }
    /// Nonzero when what is read is unscrambled.
    int IsScrambled() const { return m_scrambled; }

private:
    /// What an empty block points at.
    static constexpr char cNoBlock[cSlack] = {};
    static constexpr std::uint64_t cNoPosition = ~std::uint64_t{0};

    void reset();
    void forget();
    bool find_size();
    void load_block();
    void seek_to(std::uint64_t position);
    void clear_block(std::uint64_t position);

    CFile* m_file;
    int m_open = 0;
    std::uint64_t m_size = 0;
    std::uint64_t m_blockStart = 0;
    std::uint64_t m_savedPos = cNoPosition;
    int m_scrambled;
    const char* m_block = cNoBlock;  ///< the block's first character
    const char* m_next = cNoBlock;
    const char* m_end = cNoBlock;
    std::unique_ptr<char[]> m_buffer;  ///< made when the first block is loaded
    std::size_t m_capacity = 0;
};

namespace tessalink {

/// Scrambles or unscrambles `count` bytes in place: the key works both ways.
TESSALINK_API void scramble(char* bytes, std::size_t count);

}  // namespace tessalink
