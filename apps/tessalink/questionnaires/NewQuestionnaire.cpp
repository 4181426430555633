#include <filesystem>

#include "apps/tessalink/Messages.h"
#include "apps/tessalink/questionnaires/NewFiles.h"
#include "apps/tessalink/questionnaires/QuestionnaireCommands.h"
#include "platform/base/CException.h"
#include "platform/files/WholeFile.h"

namespace tessalink::cli {

namespace fs = std::filesystem;

void makeFolder(const std::string& folder) {
    std::error_code error;
    if (fs::exists(folder, error) && (!fs::is_directory(folder) || !fs::is_empty(folder))) {
        throw CException((folder + ": is there already: name another folder.").c_str());
    }
    fs::create_directories(folder, error);
    if (error) throw CException((folder + ": can't be made: " + error.message() + ".").c_str());
}

void storeFile(const std::string& folder, const char* name, std::string_view text) {
    WholeFile output((fs::path(folder) / name).c_str());
    output.Write(text.data(), text.size());
    output.Commit();
}

int newQuestionnaire(const QuestionnaireOptions& options) {
    makeFolder(options.folder);
    for (const NewFile& file : cNewFiles) storeFile(options.folder, file.name, file.text);
    return printResult(options.folder + ": made; try  tessalink batch " + options.folder + " " +
                       (fs::path(options.folder) / "responses.csv").string() + " -o results\n");
}

}  // namespace tessalink::cli
