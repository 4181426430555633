#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/files/CFileException.h"

/// An unbuffered binary file. Faults raise CFileException with the file's path; what an operation
/// that failed half-way has done so far stays done. One file object belongs to one thread at a
/// time.
///
/// A file opened by name keeps its position itself, so that seeking costs no system call, unless it
/// is a pipe or a terminal; these are read and written in order, and seeking in them raises
/// badSeek. A file made from a handle shares the handle's position with the handle's other users.
///
/// Sharing, among programs that use this class (others are not kept out): every open regular file
/// counts as in use until it is closed. The mode tells what others may do meanwhile:
///   shareDenyNone   read and write
///   shareDenyWrite  read
///   shareDenyRead   nothing (that others may write can't be granted apart; the stricter is taken)
///   shareExclusive  nothing
///   shareCompat     nothing, as documented for it; it is what a mode without a share flag means
/// An open that would clash with one that is there raises sharingViolation and leaves the file as
/// it was, also with modeCreate. Where the file system knows no locks, all is shared.
class TESSALINK_API CFile : public CObject {
    DECLARE_DYNAMIC(CFile)

public:
    static constexpr UINT modeRead = 0x0000;        ///< for reading only
    static constexpr UINT modeWrite = 0x0001;       ///< for writing only
    static constexpr UINT modeReadWrite = 0x0002;   ///< for reading and writing
    static constexpr UINT shareCompat = 0x0000;     ///< the same as shareExclusive
    static constexpr UINT shareExclusive = 0x0010;  ///< nobody else may have the file open
    static constexpr UINT shareDenyWrite = 0x0020;  ///< others may read
    static constexpr UINT shareDenyRead = 0x0030;   ///< nobody else may have the file open
    static constexpr UINT shareDenyNone = 0x0040;   ///< others may read and write
    static constexpr UINT modeNoInherit = 0x0080;   ///< holds always: children inherit no file
    static constexpr UINT modeCreate = 0x1000;  ///< makes the file, or empties one that is there
    static constexpr UINT modeNoTruncate = 0x2000;  ///< with modeCreate: does not empty it
    static constexpr UINT typeText = 0x4000;        ///< accepted; nothing is translated
    static constexpr UINT typeBinary = 0x8000;      ///< has no effect: every file is binary

    /// What an offset of Seek counts from.
    enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };

    static constexpr int hFileNull = -1;  ///< the descriptor of a closed file

    /// A closed file.
    CFile() = default;
    /// A file over an open descriptor, which it owns from now on and closes.
    explicit CFile(int handle);
    /// An open file, or CFileException.
    CFile(const char* name, UINT flags);
    /// Closes silently. A program that must know whether all was stored calls Close.
    ~CFile() override;

    /// The position of the next read or write, in bytes from the start.
    virtual std::uint64_t GetPosition() const;
    /// The name without its folder; empty for a file without a name.
    virtual CString GetFileName() const;
    /// The whole path; a relative name is taken in the present current folder.
    virtual CString GetFilePath() const;
    /// Gives the object another path, for GetFilePath, GetFileName and messages; nothing is opened
    /// or moved.
    virtual void SetFilePath(const char* path);
    /// The name or path as it was given to the constructor, Open or SetFilePath: for messages.
    const CString& GetGivenPath() const { return m_strFileName; }

    /// Opens the file; one that is open is closed first, silently. Returns nonzero, or 0 with the
    /// fault in `*error` when that is given. Opening a directory fails with accessDenied.
    /// modeCreate needs the right to write, also with modeRead.
    virtual BOOL Open(const char* name, UINT flags, CFileException* error = nullptr);

    /// Moves the position and returns it. Beyond the end is allowed; before the start raises
    /// badSeek.
    virtual std::uint64_t Seek(std::int64_t offset, UINT from);
    /// Cuts the file or extends it by zeros, and moves to its new end.
    virtual void SetLength(std::uint64_t length);
    /// The present length in bytes; 0 for what is no regular file.
    virtual std::uint64_t GetLength() const;

    /// Reads up to `count` bytes and returns how many were read: fewer only at the end of the file.
    virtual std::size_t Read(void* buffer, std::size_t count);
    /// Writes all bytes. What lies between the old end and the position reads as zeros.
    virtual void Write(const void* buffer, std::size_t count);

    /// Closes without reporting faults.
    virtual void Abort();
    /// Hands over what is buffered; nothing here.
    virtual void Flush();
    /// Closes; raises when the system reports that something could not be stored. The file is
    /// closed even then. Does nothing to a closed file.
    virtual void Close();

    /// Moves to the start.
    void SeekToBegin() { Seek(0, begin); }
    /// Moves behind the last byte, and returns the length.
    std::uint64_t SeekToEnd() { return Seek(0, end); }

    /// Gives a file another name; on a fault it keeps the old one. Raises CFileException.
    static void Rename(const char* oldName, const char* newName);
    /// Removes a file. Raises CFileException.
    static void Remove(const char* name);

    int m_hFile = hFileNull;  ///< the descriptor; hFileNull when closed

protected:
    /// Raises the fault of the last system call.
    [[noreturn]] void ThrowLastError() const;

    CString m_strFileName;  ///< as it was given
    /// Before modeCreate emptied the file; 0 if it is not regular.
    std::uint64_t m_lengthAtOpen = 0;

private:
    std::size_t ReadSome(void* buffer, std::size_t count);
    std::size_t WriteSome(const void* buffer, std::size_t count);
    std::uint64_t SeekBase(UINT from) const;
    std::int64_t SystemPosition() const;

    std::uint64_t m_position = 0;
    bool m_ownPosition = false;
};
