#include "apps/tessalink/preview/PreviewPages.h"

#include <algorithm>
#include <filesystem>

#include "apps/tessalink/Messages.h"
#include "apps/tessalink/batch/PdfConverter.h"
#include "platform/base/CException.h"
#include "platform/files/ChildProcess.h"

namespace tessalink::cli {

namespace fs = std::filesystem;

namespace {

constexpr const char* cPageProgram = "pdftoppm";
constexpr const char* cPageMiddle = "-page-";
constexpr const char* cPageEnding = ".png";

/// Whether the file is a page of that report.
bool isPageOf(const std::string& file, const std::string& name) {
    const std::string start = name + cPageMiddle;
    if (!file.starts_with(start) || !file.ends_with(cPageEnding)) return false;
    const std::string number =
        file.substr(start.size(), file.size() - start.size() - std::string(cPageEnding).size());
    return !number.empty() && number.find_first_not_of("0123456789") == std::string::npos;
}

/// The pages of a report that lie in a folder.
std::vector<fs::path> pagesIn(const fs::path& folder, const std::string& name) {
    std::vector<fs::path> pages;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        if (isPageOf(entry.path().filename().generic_string(), name)) pages.push_back(entry.path());
    }
    checkSystem(error, folder);
    return pages;
}

void removeStale(const RunFolder& folder, const std::string& name) {
    std::error_code error;
    fs::remove(folder.Path(name + ".pdf"), error);
    checkSystem(error, folder.Path(name + ".pdf"));
    for (const fs::path& page : pagesIn(folder.Path(""), name)) {
        fs::remove(page, error);
        checkSystem(error, page);
    }
}

/// Returns whether there is a page.
bool drawPages(const RunFolder& folder, const std::string& program, const std::string& name) {
    runQuietly(
        {program, "-r", "96", "-png", folder.Path(name + ".pdf"), folder.OwnPath(name + "-page")});
    const std::vector<fs::path> pages = pagesIn(folder.OwnPath(""), name);
    for (const fs::path& page : pages) {
        CFile::Rename(page.generic_string().c_str(),
                      folder.Path(page.filename().generic_string()).c_str());
    }
    return !pages.empty();
}

/// The program that draws pages; a CException when it is not installed.
std::string findPageProgram() {
    std::string program = findProgram(cPageProgram);
    if (!program.empty()) return program;
    throw CException(
        "pages as PNG need poppler, and there is no pdftoppm in the folders of PATH: install the "
        "package poppler-utils.");
}

bool makeAll(const RunFolder& folder, const std::vector<std::string>& names) {
    const PdfConverter converter(folder, PdfConverter::FindProgram("a preview of pages"),
                                 "preview");
    std::vector<std::string> made = names;
    bool isWhole = true;
    const auto fail = [&](const std::string& name, const char* why) {
        printTrouble((folder.Path(name) + why).c_str());
        isWhole = false;
    };
    for (std::size_t at = 0; at < names.size(); at += PdfConverter::cFilesAtOnce) {
        const auto first = names.begin() + static_cast<std::ptrdiff_t>(at);
        const std::size_t count = std::min(PdfConverter::cFilesAtOnce, names.size() - at);
        for (const std::string& name :
             converter.Convert({first, first + static_cast<std::ptrdiff_t>(count)})) {
            fail(name, ".rtf: LibreOffice made no PDF of it: open it there to see why");
            std::erase(made, name);
        }
    }
    const std::string program = findPageProgram();
    for (const std::string& name : made) {
        if (!drawPages(folder, program, name)) fail(name, ".pdf: pdftoppm made no pages of it");
    }
    return isWhole;
}

}  // namespace

bool makePages(const RunFolder& folder, const std::vector<std::string>& names) {
    for (const std::string& name : names) removeStale(folder, name);
    try {
        return names.empty() || makeAll(folder, names);
    } catch (const CFileException&) {
        throw;
    } catch (const CException& missing) {
        printTrouble((std::string(missing.what()) + " The reports are written.").c_str());
        return false;
    }
}

}  // namespace tessalink::cli
