#include <filesystem>

#include "apps/tessalink/Messages.h"
#include "apps/tessalink/TemplateInput.h"
#include "apps/tessalink/questionnaires/QuestionnaireCommands.h"
#include "core/FileText.h"
#include "platform/base/CodePage.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/QuestionnaireImport.h"
#include "questionnaire/ScoreTable.h"
#include "report/PlainText.h"

namespace tessalink::cli {

namespace {

constexpr std::size_t cMostBytes = std::size_t{64} << 20;
constexpr const char* cMappingFile = "columns.csv";
constexpr const char* cReportStart =
    "{\\rtf1\\ansi\\ansicpg%d\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset%d Arial;}}\n"
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
    CString start;
    start.Format(cReportStart, static_cast<int>(codePage()), codePageCharset());
    std::string text(start.View());
    for (const Field& field : model.fields) {
        const std::string id(field.id.View());
        const bool isChoice = field.type == Field::Type::Choice;
        text.append("\\pard\\sa60 ").append(escapeText(field.label.View()).View());
        text.append(": @").append(id).append(isChoice ? "_Label" : "").append("\\par\n");
    }
    for (const Item& item : model.items) {
        const std::string id(item.id.View());
        text.append("\\trowd\\trgaph70\\trkeep\\cellx6500\\cellx9000\\pard\\intbl @").append(id);
        text.append("_Text\\cell\\pard\\intbl @").append(id).append("_Label\\cell\\row\n");
    }
    return text + "\\pard\\par}\n";
}

/// A mapping file for `batch --map`.
std::string mappingOf(const ImportedQuestionnaire& imported) {
    std::string rows = "column,item\n";
    for (const auto& [column, item] : imported.columnNames) {
        appendCell(column, rows);
        rows += "," + item + "\n";
    }
    return rows;
}

/// "dictionary.csv:12:1: note: mood_7: is called ..."
std::string noteLine(const ImportNote& note) {
    return std::string(note.place.Format().View()) +
           ": note: " + (note.name.empty() ? "" : note.name + ": ") + note.text + "\n";
}

}  // namespace

int importQuestionnaire(const QuestionnaireOptions& options) {
    ImportedQuestionnaire imported = read(options.importPath);
    imported.model.reports = {{"answers", "Answers", "answers.rtf"}};
    QuestionnaireFiles files = {{Questionnaire::cFileName, writeQuestionnaire(imported.model)},
                                {"answers.rtf", reportOf(imported.model)}};
    const bool hasMapping = !imported.columnNames.empty();
    if (hasMapping) files[cMappingFile] = mappingOf(imported);
    storeFolder(options.folder, files);
    std::string result;
    for (const ImportNote& note : imported.notes) result += noteLine(note);
    result += options.folder + ": made, with " + counted(imported.model.items.size(), "item") +
              " and " + counted(imported.model.fields.size(), "field") +
              "; add scales to questionnaire.json\n";
    if (hasMapping) {
        result += "some names differ: give tables to  tessalink batch  with  --map " +
                  (std::filesystem::path(options.folder) / cMappingFile).generic_string() + "\n";
    }
    return printResult(result);
}

}  // namespace tessalink::cli
