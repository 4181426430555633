#include "apps/tessalink/batch/RunFolder.h"

#include <system_error>

namespace tessalink::cli {

namespace fs = std::filesystem;

namespace {

constexpr const char* cLockName = "lock";

void makeFolder(const fs::path& path) {
    std::error_code error;
    fs::create_directories(path, error);
    checkSystem(error, path);
}

void removeAllBut(const fs::path& folder, const char* kept) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        if (entry.path().filename() == kept) continue;
        fs::remove_all(entry.path(), error);
        checkSystem(error, entry.path());
    }
    checkSystem(error, folder);
}

}  // namespace

void checkSystem(const std::error_code& error, const fs::path& path) {
    // An errno value, whatever the system's own codes are.
    const int code = error.default_error_condition().value();
    if (error) CFileException::ThrowOsError(code, path.generic_string().c_str());
}

RunFolder::RunFolder(const std::string& folder, const std::string& name)
    : m_folder(folder), m_own(m_folder / (name + ".tmp")) {
    if (fs::exists(m_folder) && !fs::is_directory(m_folder)) {
        throw CException(CString(std::string_view(folder)) +
                         ": is a file, and results need a folder: name another.");
    }
    makeFolder(m_own);
    CFileException error;
    const std::string lock = OwnPath(cLockName);
    if (!m_lock.Open(lock.c_str(), CFile::modeWrite | CFile::modeCreate | CFile::shareExclusive,
                     &error)) {
        if (error.m_cause != CFileException::sharingViolation) throw error;
        throw CException(CString(std::string_view(folder)) +
                         ": another run is writing here: wait for it, or name another folder.");
    }
    removeAllBut(m_own, cLockName);
}

RunFolder::~RunFolder() {
    m_lock.Abort();  // Windows would keep a file that is open, and its folder
    std::error_code ignored;
    fs::remove_all(m_own, ignored);
}

void RunFolder::Store(const std::string& name, std::string_view bytes,
                      const std::string& writer) const {
    const std::string unfinished = OwnPath(writer);
    CFile file(unfinished.c_str(), CFile::modeWrite | CFile::modeCreate | CFile::shareDenyNone);
    file.Write(bytes.data(), bytes.size());
    file.Close();
    CFile::Rename(unfinished.c_str(), Path(name).c_str());
}

}  // namespace tessalink::cli
