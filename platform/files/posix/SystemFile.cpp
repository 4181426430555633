#include "platform/files/detail/SystemFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>

namespace tessalink::detail {

namespace {

static_assert(sizeof(off_t) == sizeof(std::int64_t));

constexpr int cMaxLinks = 40;
constexpr mode_t cNewFile = 0666;
constexpr mode_t cOwnerOnly = 0600;
constexpr mode_t cPermissions = 07777;

// Where a link whose end does not exist leads to.
int followLinks(CString& path) {
    char target[4096];
    for (int i = 0; i < cMaxLinks; ++i) {
        const ssize_t length = ::readlink(path, target, sizeof(target));
        if (length < 0) return 0;
        const CString next(target, static_cast<int>(length));
        path = target[0] == '/' ? next : folderOf(path) + '/' + next;
    }
    return ELOOP;
}

ReplacedFile regularFile(const CString& name, mode_t mode) {
    ReplacedFile file;
    file.kind = ReplacedFile::Kind::Regular;
    file.meanwhile = NewFileMode::Owner;
    file.mode = static_cast<int>(mode & cPermissions);
    const std::unique_ptr<char, decltype(&::free)> real(::realpath(name, nullptr), ::free);
    if (real == nullptr) {
        file.error = errno;
        return file;
    }
    file.path = CString(real.get());
    if (::access(file.path, W_OK) != 0) file.error = errno;
    return file;
}

// Waits until the entry of a file in its folder is on the disk.
int syncFolderOf(const CString& path) {
    const int folder = ::open(folderOf(path), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return -1;
    // Some file systems have no sync for folders and say EINVAL.
    const int error = ::fsync(folder) == 0 || errno == EINVAL ? 0 : errno;
    ::close(folder);
    errno = error;
    return error == 0 ? 0 : -1;
}

}  // namespace

OpenedFile makeFile(const char* name, NewFileMode mode) {
    OpenedFile file;
    const mode_t permissions = mode == NewFileMode::Owner ? cOwnerOnly : cNewFile;
    do {
        file.descriptor =
            ::open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, permissions);
    } while (file.descriptor < 0 && errno == EINTR);
    if (file.descriptor < 0) file.error = errno;
    file.isRegular = file.descriptor >= 0;
    return file;
}

std::int64_t readSome(int descriptor, void* buffer, std::size_t count, std::int64_t position) {
    for (;;) {
        const ssize_t got = position != cOwnPosition ? ::pread(descriptor, buffer, count, position)
                                                     : ::read(descriptor, buffer, count);
        if (got >= 0 || errno != EINTR) return got;
    }
}

std::int64_t writeSome(int descriptor, const void* buffer, std::size_t count,
                       std::int64_t position) {
    for (;;) {
        const ssize_t put = position != cOwnPosition ? ::pwrite(descriptor, buffer, count, position)
                                                     : ::write(descriptor, buffer, count);
        if (put >= 0 || errno != EINTR) return put;
    }
}

std::int64_t seekTo(int descriptor, std::int64_t position) {
    return ::lseek(descriptor, position, SEEK_SET);
}

std::int64_t currentPosition(int descriptor) {
    return ::lseek(descriptor, 0, SEEK_CUR);
}

std::int64_t lengthOf(int descriptor) {
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) return -1;
    return S_ISREG(status.st_mode) ? status.st_size : 0;
}

int setLength(int descriptor, std::uint64_t length) {
    return ::ftruncate(descriptor, static_cast<off_t>(length));
}

int syncFile(int descriptor) {
    return ::fsync(descriptor);
}

int closeFile(int descriptor) {
    // The descriptor is gone even when a signal came in between.
    return ::close(descriptor) == 0 || errno == EINTR ? 0 : -1;
}

int removeFile(const char* name) {
    return ::unlink(name);
}

int renameFile(const char* oldName, const char* newName) {
    return std::rename(oldName, newName);
}

int renameSynced(const char* oldName, const char* newName) {
    return renameFile(oldName, newName) == 0 ? syncFolderOf(newName) : -1;
}

int duplicateStandardOutput() {
    return ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
}

int randomNumber(std::uint64_t& number) {
    return ::getentropy(&number, sizeof(number));
}

ReplacedFile replacedBy(const CString& name) {
    struct stat status = {};
    if (::stat(name, &status) == 0 && S_ISREG(status.st_mode)) {
        return regularFile(name, status.st_mode);
    }
    ReplacedFile file;
    file.path = name;
    if (::stat(name, &status) == 0) {
        file.kind = ReplacedFile::Kind::Other;
    } else if (errno != ENOENT || name.IsEmpty()) {
        file.error = errno;
    } else {
        file.error = followLinks(file.path);
    }
    return file;
}

void giveMode(int descriptor, int mode) {
    // File systems without modes refuse, and need none.
    (void)::fchmod(descriptor, static_cast<mode_t>(mode));
}

bool isNamed(int descriptor, const char* name) {
    struct stat open = {};
    struct stat named = {};
    return ::fstat(descriptor, &open) == 0 && ::stat(name, &named) == 0 &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

void closeAndRemove(int descriptor, const char* name) {
    ::unlink(name);
    ::close(descriptor);
}

CString folderOf(const CString& path) {
    const int slash = path.ReverseFind('/');
    if (slash < 0) return ".";
    return path.Left(slash == 0 ? 1 : slash);
}

CString fileNameOf(const CString& path) {
    return path.Mid(path.ReverseFind('/') + 1);
}

CString wholePath(const CString& path) {
    if (path.IsEmpty() || path.GetAt(0) == '/') return path;
    const std::unique_ptr<char, decltype(&::free)> folder(::getcwd(nullptr, 0), ::free);
    return CString(folder != nullptr ? folder.get() : ".") + '/' + path;
}

bool isThere(const char* name) {
    return ::access(name, F_OK) == 0;
}

}  // namespace tessalink::detail
