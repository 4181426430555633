#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateInput.h"
#include "apps/tessalink/questionnaires/QuestionnaireCommands.h"
#include "core/FileText.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/QuestionnaireImport.h"

namespace tessalink::cli {

namespace {

constexpr std::size_t cMostBytes = std::size_t{64} << 20;
constexpr const char* cReportStart =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}}\n"
    "@COMMENT A report to start from: what was answered. @COMMENT_END\n"
    "\\pard\\sa240\\b\\f0\\fs32 @QuestionnaireTitle\\b0\\par\n"
    "\\fs20\\pard\\sa120 @RespondentID\\par\n";

ImportedQuestionnaire read(const std::string& path) {
    const auto input = openInput(path);
    const std::string text = readText(*input, cMostBytes);
    CMemFile file(text);
    file.SetFilePath(input->GetGivenPath());
    std::string_view start = text;
    if (start.starts_with(cByteOrderMark)) start.remove_prefix(cByteOrderMark.size());
    const std::size_t first = start.find_first_not_of(" \t\r\n");
    const bool isJson = first != std::string_view::npos && start[first] == '{';
    return isJson ? importFhirQuestionnaire(file) : importDictionary(file);
}

/// A line for each entry of the form, and a row of a table for each item.
std::string reportOf(const QuestionnaireModel& model) {
    std::string text = cReportStart;
    for (const Field& field : model.fields) {
        const std::string id(field.id.View());
        const bool isChoice = field.type == Field::Type::Choice;
        text += "\\pard\\sa60 " + id + ": @" + id + (isChoice ? "_Label" : "") + "\\par\n";
    }
    for (const Item& item : model.items) {
        const std::string id(item.id.View());
        text += "\\trowd\\trgaph70\\trkeep\\cellx6500\\cellx9000\\pard\\intbl @" + id +
                "_Text\\cell\\pard\\intbl @" + id + "_Label\\cell\\row\n";
    }
    return text + "\\pard\\par}\n";
}

}  // namespace

int importQuestionnaire(const QuestionnaireOptions& options) {
    ImportedQuestionnaire imported = read(options.importPath);
    imported.model.reports = {{"answers", "Answers", "answers.rtf"}};
    makeFolder(options.folder);
    storeFile(options.folder, "questionnaire.json", writeQuestionnaire(imported.model));
    storeFile(options.folder, "answers.rtf", reportOf(imported.model));
    std::string result;
    for (const ImportNote& note : imported.notes) {
        result += (note.place.empty() ? "" : note.place + ": ") + note.text + "\n";
    }
    result += options.folder + ": made, with " + std::to_string(imported.model.items.size()) +
              " items and " + std::to_string(imported.model.fields.size()) +
              " fields; add scales to questionnaire.json\n";
    return printResult(result);
}

}  // namespace tessalink::cli
