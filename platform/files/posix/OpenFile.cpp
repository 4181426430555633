#include "platform/files/detail/SystemFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/files/CFile.h"

namespace tessalink::detail {

namespace {

constexpr unsigned cAccessMask = 0x0003;
constexpr unsigned cShareMask = 0x0070;
constexpr mode_t cNewFileMode = 0666;

// Far behind the contents of every file: one byte that is locked by those who deny writing, and a
// row of bytes of which each writer locks one.
constexpr off_t cDenyMark = off_t{1} << 62;
constexpr off_t cWriterMarks = cDenyMark + 1;
constexpr off_t cWriterMarkCount = 4096;

bool grantsReadOnly(unsigned share) {
    return share == CFile::shareDenyWrite;
}
bool grantsAll(unsigned share) {
    return share == CFile::shareDenyNone;
}

int accessOf(unsigned flags) {
    // Emptying a file takes the right to write.
    const bool empties = (flags & CFile::modeCreate) != 0 && (flags & CFile::modeNoTruncate) == 0;
    const unsigned access = flags & cAccessMask;
    if (access == CFile::modeReadWrite || (access == CFile::modeRead && empties)) return O_RDWR;
    return access == CFile::modeRead ? O_RDONLY : O_WRONLY;
}

struct flock rangeLock(int type, off_t start, off_t length) {
    struct flock lock = {};
    lock.l_type = static_cast<short>(type);
    lock.l_whence = SEEK_SET;
    lock.l_start = start;
    lock.l_len = length;
    return lock;
}

bool isClash(int error) {
    return error == EAGAIN || error == EACCES;
}

// Marks one free byte of the range. A descriptor that can't read has no shared locks and takes a
// byte for itself.
void mark(int descriptor, int access, off_t start, off_t count) {
    const int type = access == O_WRONLY ? F_WRLCK : F_RDLCK;
    for (off_t i = 0; i < count; ++i) {
        struct flock lock = rangeLock(type, start + i, 1);
        if (::fcntl(descriptor, F_OFD_SETLK, &lock) == 0 || !isClash(errno)) return;
    }
}

// Whether someone else has marked a byte of the range.
bool isMarked(int descriptor, off_t start, off_t count) {
    struct flock lock = rangeLock(F_WRLCK, start, count);
    return ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
}

// Returns 0 or EWOULDBLOCK. Each sets its own marks before it looks for those of others: of two
// that clash and come together both may fail, but never do both succeed.
int takeLocks(int descriptor, int access, unsigned share) {
    const bool exclusive = !grantsReadOnly(share) && !grantsAll(share);
    if (::flock(descriptor, (exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? EWOULDBLOCK : 0;
    }
    if (exclusive || (grantsAll(share) && access == O_RDONLY)) return 0;
    const bool writes = access != O_RDONLY;
    const bool denies = grantsReadOnly(share);
    if (writes) mark(descriptor, access, cWriterMarks, cWriterMarkCount);
    if (denies) mark(descriptor, access, cDenyMark, 1);
    const bool clash = (denies && isMarked(descriptor, cWriterMarks, cWriterMarkCount)) ||
                       (writes && isMarked(descriptor, cDenyMark, 1));
    return clash ? EWOULDBLOCK : 0;
}

// Returns 0 or an errno value.
int prepare(OpenedFile& file, int access, unsigned flags) {
    struct stat status = {};
    if (::fstat(file.descriptor, &status) != 0) return errno;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    file.isRegular = file.takesPositions = S_ISREG(status.st_mode);
    file.length = file.isRegular ? static_cast<std::uint64_t>(status.st_size) : 0;
    if (!file.isRegular) return 0;
    if (const int error = takeLocks(file.descriptor, access, flags & cShareMask)) return error;
    const bool empties = (flags & CFile::modeCreate) != 0 && (flags & CFile::modeNoTruncate) == 0;
    return empties && ::ftruncate(file.descriptor, 0) != 0 ? errno : 0;
}

int openDescriptor(const char* name, int flags) {
    int descriptor = -1;
    do {
        descriptor = ::open(name, flags, cNewFileMode);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

}  // namespace

OpenedFile openFile(const char* name, unsigned flags) {
    const int access = accessOf(flags);
    const int creation = (flags & CFile::modeCreate) != 0 ? O_CREAT : 0;
    OpenedFile file;
    file.descriptor = openDescriptor(name, access | creation | O_CLOEXEC | O_NOCTTY);
    file.error = file.descriptor < 0 ? errno : prepare(file, access, flags);
    if (file.error != 0 && file.descriptor >= 0) {
        ::close(file.descriptor);
        file.descriptor = -1;
    }
    return file;
}

}  // namespace tessalink::detail
