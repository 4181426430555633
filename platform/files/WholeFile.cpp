#include "platform/files/WholeFile.h"

#include <cerrno>
#include <cinttypes>

#include "platform/files/CMemFile.h"
#include "platform/files/detail/SystemFile.h"

namespace tessalink {

namespace {

constexpr std::size_t cBufferSize = std::size_t{64} * 1024;
constexpr const char* cStandardOutputName = "-";
constexpr UINT cMemoryGrowBytes = 64 * 1024;
constexpr int cMaxNameAttempts = 100;

[[noreturn]] void raise(int error, const CString& path) {
    AfxThrowFileException(detail::causeOf(error, path), error, path);
}

CString temporaryPath(const CString& finalPath) {
    std::uint64_t number = 0;
    if (detail::randomNumber(number) != 0) raise(errno, finalPath);
    CString name;
    name.Format("/.tessalink-%016" PRIx64 ".tmp", number);
    return detail::folderOf(finalPath) + name;
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
    if (name == cStandardOutputName) {
        m_toStandardOutput = true;
        m_output = std::make_unique<CMemFile>(cMemoryGrowBytes);
    } else {
        OpenNamed(name);
    }
    m_buffer = std::make_unique_for_overwrite<BYTE[]>(cBufferSize);
    m_limit = cBufferSize;
}

void WholeFile::OpenNamed(const CString& name) {
    const detail::ReplacedFile replaced = detail::replacedBy(name);
    if (replaced.error != 0) raise(replaced.error, replaced.path.IsEmpty() ? name : replaced.path);
    if (replaced.kind == detail::ReplacedFile::Kind::Other) {
        m_output = std::make_unique<CFile>(name, modeWrite);
        return;
    }
    m_strFileName = replaced.path;
    OpenTemporary(replaced);
}

void WholeFile::OpenTemporary(const detail::ReplacedFile& replaced) {
    const bool isNew = replaced.kind == detail::ReplacedFile::Kind::Missing;
    const auto newMode =
        m_readers == Readers::Owner ? detail::NewFileMode::Owner : detail::NewFileMode::Usual;
    detail::OpenedFile file;
    for (int i = 0; i < cMaxNameAttempts && file.descriptor < 0; ++i) {
        m_temporaryPath = temporaryPath(m_strFileName);
        file = detail::makeFile(m_temporaryPath, isNew ? newMode : replaced.meanwhile);
        if (file.error != 0 && file.error != EEXIST) break;
    }
    if (file.descriptor < 0) {
        m_temporaryPath.Empty();
        raise(file.error, m_strFileName);
    }
    m_output = std::make_unique<CFile>(file.descriptor);
    m_output->SetFilePath(m_strFileName);
    if (!isNew) detail::giveMode(file.descriptor, replaced.mode);
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
    const int descriptor = detail::duplicateStandardOutput();
    if (descriptor < 0) raise(errno, m_strFileName);
    CFile output(descriptor);
    output.SetFilePath("<stdout>");
    const std::string_view contents = static_cast<const CMemFile&>(*m_output).View();
    output.Write(contents.data(), contents.size());
    output.Close();
}

void WholeFile::StoreTemporary() {
    const bool waits = m_sync == Sync::Yes;
    if (waits && detail::syncFile(m_output->m_hFile) != 0) raise(errno, m_strFileName);
    m_output->Close();
    const auto rename = waits ? detail::renameSynced : detail::renameFile;
    if (rename(m_temporaryPath, m_strFileName) != 0) raise(errno, m_strFileName);
    m_temporaryPath.Empty();
}

void WholeFile::Discard() noexcept {
    m_output.reset();
    if (!m_temporaryPath.IsEmpty()) detail::removeFile(m_temporaryPath);
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
