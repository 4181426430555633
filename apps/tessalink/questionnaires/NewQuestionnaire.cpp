#include <filesystem>

#include "apps/tessalink/Messages.h"
#include "apps/tessalink/questionnaires/NewFiles.h"
#include "apps/tessalink/questionnaires/QuestionnaireCommands.h"
#include "platform/base/CException.h"
#include "platform/files/WholeFile.h"

namespace tessalink::cli {

namespace fs = std::filesystem;

namespace {

/// Whether it was not there.
bool makeFolder(const std::string& folder) {
    std::error_code error;
    if (fs::exists(folder, error) && (!fs::is_directory(folder) || !fs::is_empty(folder))) {
        throw CException((folder + ": is there already: name another folder.").c_str());
    }
    const bool isNew = fs::create_directories(folder, error);
    if (error) throw CException((folder + ": can't be made: " + error.message() + ".").c_str());
    return isNew;
}

void storeFile(const fs::path& path, std::string_view text) {
    WholeFile output(path.generic_string().c_str());
    output.Write(text.data(), text.size());
    output.Commit();
}

}  // namespace

void storeFolder(const std::string& folder, const QuestionnaireFiles& files) {
    const bool isNew = makeFolder(folder);
    try {
        for (const auto& [name, text] : files) storeFile(fs::path(folder) / name, text);
    } catch (...) {
        std::error_code ignored;
        for (const auto& [name, text] : files) fs::remove(fs::path(folder) / name, ignored);
        if (isNew) fs::remove(folder, ignored);
        throw;
    }
}

int newQuestionnaire(const QuestionnaireOptions& options) {
    QuestionnaireFiles files;
    for (const NewFile& file : cNewFiles) files.emplace(file.name, file.text);
    storeFolder(options.folder, files);
    return printResult(options.folder + ": made; try  tessalink batch " + options.folder + " " +
                       (fs::path(options.folder) / "responses.csv").generic_string() +
                       " -o results\n");
}

}  // namespace tessalink::cli
