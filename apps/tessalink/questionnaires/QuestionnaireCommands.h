#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace tessalink::cli {

/// What stands behind the command `questionnaire`.
struct QuestionnaireOptions {
    std::string folder;
    bool listsVariables = false;
};

/// Adds the command, which makes `command` what is to be run. All must outlive the app.
void addQuestionnaire(CLI::App& app, QuestionnaireOptions& options, std::function<int()>& command);

/// Tells every fault of every file of a questionnaire, or what it has.
int checkQuestionnaire(const QuestionnaireOptions& options);
/// Makes a folder with a small questionnaire that works.
int newQuestionnaire(const QuestionnaireOptions& options);

}  // namespace tessalink::cli
