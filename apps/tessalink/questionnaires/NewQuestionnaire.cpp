#include <filesystem>

#include "apps/tessalink/Messages.h"
#include "apps/tessalink/questionnaires/NewFiles.h"
#include "apps/tessalink/questionnaires/QuestionnaireCommands.h"
#include "platform/files/WholeFile.h"

namespace tessalink::cli {

namespace fs = std::filesystem;

int newQuestionnaire(const QuestionnaireOptions& options) {
    const fs::path folder = options.folder;
    std::error_code error;
    if (fs::exists(folder, error) && (!fs::is_directory(folder) || !fs::is_empty(folder))) {
        printTrouble((options.folder + ": is there already: name another folder").c_str());
        return cUsage;
    }
    fs::create_directories(folder, error);
    if (error) {
        printTrouble((options.folder + ": can't be made: " + error.message()).c_str());
        return cUsage;
    }
    for (const NewFile& file : cNewFiles) {
        WholeFile output((folder / file.name).c_str());
        output.Write(file.text.data(), file.text.size());
        output.Commit();
    }
    return printResult(options.folder + ": made; try  tessalink batch " + options.folder + " " +
                       (folder / "responses.csv").string() + " -o results\n");
}

}  // namespace tessalink::cli
