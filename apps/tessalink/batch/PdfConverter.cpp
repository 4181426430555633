#include "apps/tessalink/batch/PdfConverter.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace tessalink::cli {

namespace fs = std::filesystem;

namespace {

constexpr const char* cPrograms[] = {"soffice", "libreoffice"};

std::string findInPath(const std::string& name) {
    const char* const path = std::getenv("PATH");
    std::string rest = path != nullptr ? path : "";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        const fs::path program = fs::path(rest.substr(0, end)) / name;
        if (::access(program.c_str(), X_OK) == 0) return program;
        rest.erase(0, end + 1);
    }
    return {};
}

/// A path as a URL: whatever is no letter, digit or "/" is escaped.
std::string fileUrl(const std::string& path) {
    std::string url = "file://";
    for (const char ch : path) {
        const bool isPlain = (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') ||
                             (ch >= '0' && ch <= '9') || ch == '/' || ch == '-' || ch == '.';
        constexpr const char* digits = "0123456789ABCDEF";
        const auto byte = static_cast<unsigned char>(ch);
        if (isPlain) {
            url += ch;
        } else {
            url += {'%', digits[byte / 16], digits[byte % 16]};
        }
    }
    return url;
}

/// Runs a program to its end, with nothing to read and its messages thrown away. It is in a process
/// group of its own: what interrupts the run lets it finish what is under way.
void runQuietly(std::vector<std::string> arguments) {
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawnattr_init(&attributes);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
    }
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    pid_t child = 0;
    const int error =
        ::posix_spawn(&child, pointers[0], &files, &attributes, pointers.data(), environ);
    ::posix_spawn_file_actions_destroy(&files);
    ::posix_spawnattr_destroy(&attributes);
    if (error != 0) CFileException::ThrowOsError(error, pointers[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
}

}  // namespace

std::string PdfConverter::FindProgram() {
    for (const char* name : cPrograms) {
        if (std::string path = findInPath(name); !path.empty()) return path;
    }
    throw CException(
        "--pdf needs LibreOffice, and there is no soffice in the folders of PATH: install the "
        "package libreoffice-writer.");
}

PdfConverter::PdfConverter(const RunFolder& folder, std::string program, const std::string& name)
    : m_folder(folder),
      m_program(std::move(program)),
      m_profile("profile-" + name),
      m_output("pdf-" + name) {}

std::vector<std::string> PdfConverter::Convert(const std::vector<std::string>& names) const {
    const std::string profile = fs::absolute(m_folder.OwnPath(m_profile));
    const std::string output = m_folder.OwnPath(m_output);
    std::vector<std::string> arguments = {
        m_program,      "-env:UserInstallation=" + fileUrl(profile),
        "--headless",   "--norestore",
        "--convert-to", "pdf",
        "--outdir",     output};
    for (const std::string& name : names) arguments.push_back(m_folder.Path(name + ".rtf"));
    if (!names.empty()) runQuietly(std::move(arguments));
    std::vector<std::string> missing;
    for (const std::string& name : names) {
        const std::string made = (fs::path(output) / (name + ".pdf")).string();
        if (fs::exists(made)) {
            CFile::Rename(made.c_str(), m_folder.Path(name + ".pdf").c_str());
        } else {
            missing.push_back(name);
        }
    }
    return missing;
}

}  // namespace tessalink::cli
