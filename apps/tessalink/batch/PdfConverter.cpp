#include "apps/tessalink/batch/PdfConverter.h"

#include <filesystem>

#include "platform/files/ChildProcess.h"

namespace tessalink::cli {

namespace fs = std::filesystem;

namespace {

constexpr const char* cPrograms[] = {"soffice", "libreoffice"};

/// A whole path as a URL: whatever is no letter, digit or "/" is escaped.
std::string fileUrl(const std::string& path) {
    std::string url = path.starts_with('/') ? "file://" : "file:///";
    for (const char ch : path) {
        const bool isPlain = (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') ||
                             (ch >= '0' && ch <= '9') || ch == '/' || ch == '-' || ch == '.' ||
                             ch == ':';
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

}  // namespace

std::string PdfConverter::FindProgram(const std::string& needer) {
    for (const char* name : cPrograms) {
        if (std::string path = findProgram(name); !path.empty()) return path;
    }
    const std::string missing =
        " needs LibreOffice, and there is no soffice in the folders of PATH: install the package "
        "libreoffice-writer.";
    throw CException(CString(needer + missing));
}

PdfConverter::PdfConverter(const RunFolder& folder, std::string program, const std::string& name)
    : m_folder(folder),
      m_program(std::move(program)),
      m_profile("profile-" + name),
      m_output("pdf-" + name) {}

std::vector<std::string> PdfConverter::Convert(const std::vector<std::string>& names) const {
    const std::string profile = fs::absolute(m_folder.OwnPath(m_profile)).generic_string();
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
        const std::string made = (fs::path(output) / (name + ".pdf")).generic_string();
        if (fs::exists(made)) {
            CFile::Rename(made.c_str(), m_folder.Path(name + ".pdf").c_str());
        } else {
            missing.push_back(name);
        }
    }
    return missing;
}

}  // namespace tessalink::cli
