#include "apps/tessalink/questionnaires/QuestionnaireCommands.h"

#include <CLI/CLI.hpp>

namespace tessalink::cli {

void addQuestionnaire(CLI::App& app, QuestionnaireOptions& options, std::function<int()>& command) {
    CLI::App* const questionnaire =
        app.add_subcommand("questionnaire", "Check a questionnaire's folder, or make one");
    questionnaire->require_subcommand(1);
    const auto add = [&](const char* name, const char* text,
                         int (*run)(const QuestionnaireOptions&), const char* folderText) {
        CLI::App* const step = questionnaire->add_subcommand(name, text);
        step->add_option("folder", options.folder, folderText)->required();
        step->callback(
            [&options, &command, run] { command = [&options, run] { return run(options); }; });
        return step;
    };
    add("check", "Name all faults of all its files", checkQuestionnaire,
        "the folder with questionnaire.json")
        ->add_flag("--variables", options.listsVariables,
                   "list the variables that it makes, one a line");
    add("new", "Make a small questionnaire to start from", newQuestionnaire,
        "a folder that is not there yet, or is empty");
    CLI::App* const import = questionnaire->add_subcommand(
        "import", "Make a questionnaire of a REDCap data dictionary or a FHIR Questionnaire");
    import->add_option("file", options.importPath, "the dictionary (CSV) or Questionnaire (JSON)")
        ->required();
    import->add_option("-o,--output", options.folder, "a folder that is not there yet, or is empty")
        ->required();
    import->callback([&options, &command] {
        command = [&options] { return importQuestionnaire(options);
};
}  // namespace tessalink::cli
);
}

}  // namespace tessalink::cli
