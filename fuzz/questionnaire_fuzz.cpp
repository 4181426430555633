// Any files as a questionnaire: parts of the input, parted by NULs, are in turn a file's name and
// its bytes. Every fault has a message; a questionnaire without one is written and reads back as
// the same, and scores and reports of a person who answers everything alike are made.
#include <cstdint>
#include <string>
#include <string_view>

#include "core/InputError.h"
#include "fuzz/detail/require.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/QuestionnaireImport.h"
#include "questionnaire/RespondentReports.h"
#include "report/ParseException.h"

namespace {

using namespace tessalink;
using fuzz::require;

std::string_view takePart(std::string_view& text) {
    const std::string_view part = text.substr(0, text.find('\0'));
    text.remove_prefix(std::min(text.size(), part.size() + 1));
    return part;
}

QuestionnaireFiles filesOf(std::string_view text) {
    QuestionnaireFiles files;
    while (!text.empty()) {
        const std::string name(takePart(text));
        files[name] = takePart(text);
    }
    return files;
}

Respondent somebody(const QuestionnaireModel& model) {
    Respondent person;
    person.id = "p";
    for (const Item& item : model.items) {
        const ResponseSet& set = model.responseSets[item.responses];
        person.answers.emplace_back(set.HasChoices() ? 1 : set.highest);
    }
    person.fields.resize(model.fields.size());
    return person;
}

void report(const Questionnaire& questionnaire) {
    const Respondent person = somebody(questionnaire.Model());
    try {
        Scores scores;
        Scorer(questionnaire).Score(person, scores);
        RespondentReports reports(questionnaire);
        reports.SetRespondent(person, scores);
        for (std::size_t i = 0; i < questionnaire.Model().reports.size(); ++i) {
            CMemFile output;
            reports.Write(i, output);
        }
    } catch (const ScoringError& error) {
        require(*error.what() != '\0', "why there is no score");
    } catch (const InputError& error) {
        require(*error.what() != '\0', "why there is no graph");
    } catch (const ParseException& error) {
        require(*error.what() != '\0', "why there is no report");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QuestionnaireFiles files = filesOf({reinterpret_cast<const char*>(data), size});
    try {
        const Questionnaire questionnaire = Questionnaire::Read(files, "q");
        const std::string text = writeQuestionnaire(questionnaire.Model());
        files["questionnaire.json"] = text;
        require(writeQuestionnaire(Questionnaire::Read(files, "q").Model()) == text,
                "the same again");
        report(questionnaire);
    } catch (const QuestionnaireFaults& faults) {
        for (const InputError& fault : faults.GetFaults()) {
            require(*fault.what() != '\0', "a message");
        }
    }
    return 0;
}
