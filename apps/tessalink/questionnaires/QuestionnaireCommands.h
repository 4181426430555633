#pragma once

#include <functional>
#include <string>

#include "questionnaire/Questionnaire.h"

namespace CLI {
class App;
}

namespace tessalink::cli {

/// What stands behind the command `questionnaire`.
struct QuestionnaireOptions {
    std::string folder;
    bool listsVariables = false;
    std::string importPath;  ///< what `import` reads
};

/// Adds the command, which makes `command` what is to be run. All must outlive the app.
void addQuestionnaire(CLI::App& app, QuestionnaireOptions& options, std::function<int()>& command);

/// Tells every fault of every file of a questionnaire, or what it has.
int checkQuestionnaire(const QuestionnaireOptions& options);
/// Makes a folder with a small questionnaire that works.
int newQuestionnaire(const QuestionnaireOptions& options);

/// Makes a folder of what another program describes, and tells what did not come over.
int importQuestionnaire(const QuestionnaireOptions& options);

/// "1 item", "2 items".
std::string counted(std::size_t count, const char* what);
/// Makes a folder, which must not be there or be empty, with these files; none of it is left after
/// trouble, which is a CException.
void storeFolder(const std::string& folder, const QuestionnaireFiles& files);

}  // namespace tessalink::cli
