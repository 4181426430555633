#include "apps/tessalink/Messages.h"
#include "apps/tessalink/questionnaires/QuestionnaireCommands.h"
#include "platform/base/CodePage.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/ScoreTable.h"

namespace tessalink::cli {

namespace {

std::string summaryOf(const Questionnaire& questionnaire) {
    const QuestionnaireModel& model = questionnaire.Model();
    return toUtf8(model.title.View()) + " " + toUtf8(model.version.View()) + ": " +
           counted(model.items.size(), "item") + ", " + counted(model.scales.size(), "scale") +
           ", " + counted(model.fields.size(), "field") + ", " +
           counted(model.reports.size(), "report") + "; no faults\n";
}

}  // namespace

std::string counted(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

int checkQuestionnaire(const QuestionnaireOptions& options) {
    try {
        const Questionnaire questionnaire =
            Questionnaire::Read(CString(std::string_view(options.folder)));
        if (!options.listsVariables) return printResult(summaryOf(questionnaire));
        std::string names;
        for (const CString& name : variableNames(questionnaire.Model())) {
            names.append(name.View()).append("\n");
        }
        return printResult(names);
    } catch (const QuestionnaireFaults& faults) {
        for (const InputError& fault : faults.GetFaults()) printFault(fault);
        return cInputFault;
    }
}

}  // namespace tessalink::cli
