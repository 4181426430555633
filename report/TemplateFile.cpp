#include "report/TemplateFile.h"

#include <algorithm>
#include <filesystem>
#include <string>

#include "platform/files/CFileException.h"
#include "platform/files/PathText.h"
#include "report/detail/CharClasses.h"

namespace tessalink {

namespace {

constexpr unsigned int cOpenFlags = CFile::modeRead | CFile::typeBinary | CFile::shareDenyNone;

CString withSlashes(CString path) {
    path.Replace('\\', '/');
    return path;
}

/// The one entry of `folder` whose name equals `name` but for case; empty if none or several.
std::filesystem::path findEntry(const std::filesystem::path& folder, const std::string& name) {
    std::error_code error;
    std::filesystem::path found;
    for (auto entry = std::filesystem::directory_iterator(folder, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::filesystem::path candidate = entry->path().filename();
        if (!detail::equalNoCase(nameOf(candidate), name)) continue;
        if (!found.empty()) return {};
        found = folder / candidate;
    }
    return found;
}

/// The path of an existing file whose name equals `path` but for the case of letters, folder by
/// folder; an exact name goes before others. Empty when there is none or more than one.
CString findIgnoringCase(const CString& path) {
    std::filesystem::path found;
    std::error_code error;
    for (const std::filesystem::path& part : pathOf(path.View())) {
        const std::filesystem::path exact = found / part;
        if (std::filesystem::exists(exact, error)) {
            found = exact;
            continue;
        }
        found = findEntry(found.empty() ? std::filesystem::path(".") : found, nameOf(part));
        if (found.empty()) return CString();
    }
    CString name{std::string_view(nameOf(found))};
    return withSlashes(std::move(name));
}

}  // namespace

TemplateFile::TemplateFile(const CString& path) : m_path(withSlashes(path)) {
    CFileException error;
    if (!Open(m_path, cOpenFlags, &error)) {
        const bool missing = error.m_cause == CFileException::fileNotFound ||
                             error.m_cause == CFileException::badPath;
        const CString found = missing ? findIgnoringCase(m_path) : CString();
        if (found.IsEmpty() || !Open(found, cOpenFlags, nullptr)) throw error;
        m_path = found;
    }
    m_length = m_lengthAtOpen;
}

void TemplateFile::Suspend() {
    if (m_suspended) return;
    m_offset = CFile::GetPosition();
    Close();
    m_suspended = true;
}

std::size_t TemplateFile::Read(void* buffer, std::size_t count) {
    resume();
    // Asking for no more than there is spares the system call that only finds the end.
    const std::uint64_t left = m_length - std::min(m_length, CFile::GetPosition());
    return CFile::Read(buffer, std::min<std::uint64_t>(count, left));
}

std::uint64_t TemplateFile::Seek(std::int64_t offset, unsigned int from) {
    resume();
    return CFile::Seek(offset, from);
}

std::uint64_t TemplateFile::GetPosition() const {
    return m_suspended ? m_offset : CFile::GetPosition();
}

std::uint64_t TemplateFile::GetLength() const {
    return m_length;
}

void TemplateFile::resume() {
    if (!m_suspended) return;
    CFileException error;
    if (!Open(m_path, cOpenFlags, &error)) throw error;
    m_suspended = false;
    // A template that changed while its includes ran can't be read on from the old place.
    if (m_lengthAtOpen != m_length) {
        AfxThrowFileException(CFileException::invalidFile, 0, m_path);
    }
    CFile::Seek(static_cast<std::int64_t>(m_offset), CFile::begin);
}

}  // namespace tessalink
