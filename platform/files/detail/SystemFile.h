#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "platform/base/CString.h"

/// What the files of the library ask of the system: one source for each system, in posix/ and
/// windows/. Descriptors are those of the C library. What fails tells an errno value; names are in
/// UTF-8 where the system knows characters, otherwise bytes.
namespace tessalink::detail {

/// The largest position in a file.
inline constexpr auto cMaxOffset =
    static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());

/// The position of reads and writes is the descriptor's own: always, when it takes no positions.
inline constexpr std::int64_t cOwnPosition = -1;

/// An open descriptor, or the errno value of the failure.
struct OpenedFile {
    int descriptor = -1;
    int error = 0;
    bool isRegular = false;       // no directory, device or pipe
    bool takesPositions = false;  // readSome and writeSome are to be told where
    std::uint64_t length = 0;
};

/// Opens a file with the flags of CFile and keeps out those that its sharing mode denies. Of a
/// failed open nothing remains.
OpenedFile openFile(const char* name, unsigned flags);

/// Who may read a new file.
enum class NewFileMode { Usual, Owner };

/// A new file to write, which must not be there yet (EEXIST).
OpenedFile makeFile(const char* name, NewFileMode mode);

// As the calls of the same purpose in POSIX: -1 and errno on a fault.

std::int64_t readSome(int descriptor, void* buffer, std::size_t count, std::int64_t position);
std::int64_t writeSome(int descriptor, const void* buffer, std::size_t count,
                       std::int64_t position);
/// ESPIPE for what has no positions.
std::int64_t seekTo(int descriptor, std::int64_t position);
std::int64_t currentPosition(int descriptor);
/// 0 for what is no regular file.
std::int64_t lengthOf(int descriptor);
int setLength(int descriptor, std::uint64_t length);
/// Waits until the contents are on the disk.
int syncFile(int descriptor);
/// The descriptor is gone even when it tells a fault.
int closeFile(int descriptor);
int removeFile(const char* name);
/// Replaces a file of the new name in one step.
int renameFile(const char* oldName, const char* newName);
/// The same, and waits until the new name is on the disk.
int renameSynced(const char* oldName, const char* newName);
/// A descriptor of its own for standard output.
int duplicateStandardOutput();
/// A number that no one guesses, for names of temporary files.
int randomNumber(std::uint64_t& number);

/// What a file that is to be written as a whole would replace.
struct ReplacedFile {
    enum class Kind { Missing, Regular, Other };
    Kind kind = Kind::Missing;
    int error = 0;                               ///< an errno value; then nothing else counts
    CString path;                                ///< links followed to their end
    int mode = 0;                                ///< permissions of a regular file, for giveMode
    NewFileMode meanwhile = NewFileMode::Usual;  ///< of the new file, until then
};
ReplacedFile replacedBy(const CString& name);
/// Gives a new file the permissions of the one that it replaces. Systems without them need none.
void giveMode(int descriptor, int mode);

/// Whether the name still leads to the open file.
bool isNamed(int descriptor, const char* name);
/// Closes an open file and takes its name away, so that no one else's file of this name goes.
void closeAndRemove(int descriptor, const char* name);

/// The path up to and without its last separator ("." when it has none, "/" for the root).
CString folderOf(const CString& path);
/// The text behind the last separator.
CString fileNameOf(const CString& path);
/// A path that doesn't depend on the current folder.
CString wholePath(const CString& path);
bool isThere(const char* name);

/// The cause of CFileException for the failure of an operation on this path. It tells a missing
/// folder from a missing file.
int causeOf(int error, const CString& path);

}  // namespace tessalink::detail
