#include "platform/files/WholeFile.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cinttypes>
#include <cstdio>

#include "platform/files/CMemFile.h"
#include "platform/files/detail/OpenFile.h"

namespace tessalink {

namespace {

constexpr std::size_t cBufferSize = std::size_t{64} * 1024;
constexpr const char* cStandardOutputName = "-";
constexpr UINT cMemoryGrowBytes = 64 * 1024;
constexpr int cMaxLinks = 40;
constexpr int cMaxNameAttempts = 100;
constexpr int cNewFileMode = 0666;
constexpr int cOwnerMode = 0600;
constexpr int cNoFile = -1;

[[noreturn]] void raise(int error, const CString& path) {
    AfxThrowFileException(detail::causeOf(error, path), error, path);
}

// Where a link whose end does not exist leads to.
CString endOfLinks(CString path) {
    char target[4096];
    for (int i = 0; i < cMaxLinks; ++i) {
        const ssize_t length = ::readlink(path, target, sizeof(target));
        if (length < 0) return path;
        const CString next(target, static_cast<int>(length));
        path = target[0] == '/' ? next : detail::folderOf(path) + '/' + next;
    }
    raise(ELOOP, path);
}

CString realPath(const CString& path) {
    const std::unique_ptr<char, decltype(&::free)> real(::realpath(path, nullptr), ::free);
    if (real == nullptr) raise(errno, path);
    return CString(real.get());
}

CString temporaryPath(const CString& finalPath) {
    std::uint64_t number = 0;
    if (::getentropy(&number, sizeof(number)) != 0) raise(errno, finalPath);
    CString name;
    name.Format("/.tessalink-%016" PRIx64 ".tmp", number);
    return detail::folderOf(finalPath) + name;
}

void syncFolder(const CString& path) {
    const int folder = ::open(detail::folderOf(path), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) raise(errno, path);
    // Some file systems have no sync for folders and say EINVAL.
    const int error = ::fsync(folder) == 0 || errno == EINVAL ? 0 : errno;
    ::close(folder);
    if (error != 0) raise(error, path);
}

}  // namespace

WholeFile::WholeFile() = default;

WholeFile::WholeFile(const char* name, Sync sync, Readers readers)
    : m_sync(sync), m_readers(readers) {
    OpenOutput(name);
}

WholeFile::~WholeFile() {
    Discard();
}

BOOL WholeFile::Open(const char* name, UINT, CFileException* error) {
    Discard();
    try {
        OpenOutput(name);
        return 1;
    } catch (const CFileException& fault) {
        Discard();
        if (error != nullptr) *error = fault;
        return 0;
    }
}

void WholeFile::OpenOutput(const CString& name) {
    m_strFileName = name;
    struct stat status = {};
    if (name == cStandardOutputName) {
        m_toStandardOutput = true;
        m_output = std::make_unique<CMemFile>(cMemoryGrowBytes);
    } else if (::stat(name, &status) != 0) {
        if (errno != ENOENT || name.IsEmpty()) raise(errno, name);
        m_strFileName = endOfLinks(name);
        OpenTemporary(cNoFile);
    } else if (S_ISREG(status.st_mode)) {
        m_strFileName = realPath(name);
        if (::access(m_strFileName, W_OK) != 0) raise(errno, m_strFileName);
        OpenTemporary(static_cast<int>(status.st_mode & 07777));
    } else {
        m_output = std::make_unique<CFile>(name, modeWrite);
    }
    m_buffer = std::make_unique_for_overwrite<BYTE[]>(cBufferSize);
    m_limit = cBufferSize;
}

// `existingMode` is the mode of the file that is replaced, or cNoFile.
void WholeFile::OpenTemporary(int existingMode) {
    const int newMode = m_readers == Readers::Owner ? cOwnerMode : cNewFileMode;
    const int mode = existingMode == cNoFile ? newMode : existingMode;
    int descriptor = -1;
    for (int i = 0; i < cMaxNameAttempts && descriptor < 0; ++i) {
        m_temporaryPath = temporaryPath(m_strFileName);
        descriptor =
            ::open(m_temporaryPath, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY, mode);
        if (descriptor < 0 && errno != EEXIST && errno != EINTR) break;
    }
    if (descriptor < 0) {
        m_temporaryPath.Empty();
        raise(errno, m_strFileName);
    }
    m_output = std::make_unique<CFile>(descriptor);
    m_output->SetFilePath(m_strFileName);
    // The umask has cut the mode; file systems without modes refuse, and need none.
    if (existingMode != cNoFile) (void)::fchmod(descriptor, static_cast<mode_t>(existingMode));
}

void WholeFile::CheckOpen() const {
    if (m_fault) throw *m_fault;
    if (m_output == nullptr) raise(EBADF, m_strFileName);
}

// Remembers the first fault: an output with a gap must never be committed.
void WholeFile::WriteOut(const void* buffer, std::size_t count) {
    try {
        m_output->Write(buffer, count);
    } catch (const CFileException& fault) {
        m_fault = fault;
        m_limit = m_filled = 0;
        throw;
    }
}

void WholeFile::FlushBuffer() {
    CheckOpen();
    const std::size_t filled = m_filled;
    m_filled = 0;
    WriteOut(m_buffer.get(), filled);
}

void WholeFile::WriteThrough(const void* buffer, std::size_t count) {
    FlushBuffer();
    if (count >= cBufferSize) return WriteOut(buffer, count);
    std::memcpy(m_buffer.get(), buffer, count);
    m_filled = count;
}

void WholeFile::Flush() {
    FlushBuffer();
}

std::uint64_t WholeFile::GetPosition() const {
    CheckOpen();
    return m_output->GetPosition() + m_filled;
}

std::uint64_t WholeFile::Seek(std::int64_t offset, UINT from) {
    FlushBuffer();
    return m_output->Seek(offset, from);
}

void WholeFile::SetLength(std::uint64_t length) {
    FlushBuffer();
    m_output->SetLength(length);
}

std::uint64_t WholeFile::GetLength() const {
    CheckOpen();
    const std::uint64_t stored = m_output->GetLength();
    return m_filled == 0 ? stored : std::max(stored, m_output->GetPosition() + m_filled);
}

std::size_t WholeFile::Read(void*, std::size_t) {
    CheckOpen();
    raise(EACCES, m_strFileName);
}

void WholeFile::Commit() {
    const std::unique_ptr<WholeFile, void (*)(WholeFile*)> guard(
        this, [](WholeFile* file) { file->Discard(); });
    FlushBuffer();
    if (m_toStandardOutput) {
        StoreStandardOutput();
    } else if (m_temporaryPath.IsEmpty()) {
        m_output->Close();
    } else {
        StoreTemporary();
    }
}

void WholeFile::StoreStandardOutput() {
    const int descriptor = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    if (descriptor < 0) raise(errno, m_strFileName);
    CFile output(descriptor);
    output.SetFilePath("<stdout>");
    const std::string_view contents = static_cast<const CMemFile&>(*m_output).View();
    output.Write(contents.data(), contents.size());
    output.Close();
}

void WholeFile::StoreTemporary() {
    if (m_sync == Sync::Yes && ::fsync(m_output->m_hFile) != 0) raise(errno, m_strFileName);
    m_output->Close();
    if (::rename(m_temporaryPath, m_strFileName) != 0) raise(errno, m_strFileName);
    m_temporaryPath.Empty();
    if (m_sync == Sync::Yes) syncFolder(m_strFileName);
}

void WholeFile::Discard() noexcept {
    m_output.reset();
    if (!m_temporaryPath.IsEmpty()) ::unlink(m_temporaryPath);
    m_temporaryPath.Empty();
    m_buffer.reset();
    m_fault.reset();
    m_filled = m_limit = 0;
    m_toStandardOutput = false;
}

void WholeFile::Abort() {
    Discard();
}

void WholeFile::Close() {
    Discard();
}

}  // namespace tessalink
