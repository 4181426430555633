#include "questionnaire/ScoreTable.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "questionnaire/detail/VariableFiller.h"
#include "questionnaire/detail/VariableNames.h"

namespace tessalink {

namespace {

constexpr std::string_view cRunBySpreadsheets = "=+-@";
constexpr std::string_view cQuoted = ",\"\r\n";
constexpr std::size_t cLongestNumber = 32;
constexpr double cMostWhole = 1e9;

void appendNumber(const std::optional<double>& number, std::string& row) {
    row += ',';
    if (!number) return;
    char digits[cLongestNumber];
    char* const end = digits + cLongestNumber;
    // Most scores are whole numbers, and those are written faster as what they are.
    const bool isWhole = std::abs(*number) < cMostWhole && std::floor(*number) == *number;
    row.append(digits, isWhole ? std::to_chars(digits, end, static_cast<int>(*number)).ptr
                               : std::to_chars(digits, end, *number).ptr);
}

/// Whether a variable of that name is a column, too: all scores, no texts.
bool isColumn(const CString& name, detail::NameOwner owner, const QuestionnaireModel& model,
              std::size_t index) {
    const auto isOf = [&](const CString& id, std::initializer_list<const char*> texts) {
        for (const char* suffix : texts) {
            if (name == id + suffix) return false;
        }
        return true;
    };
    switch (owner) {
        case detail::NameOwner::Scale:
            return isOf(model.scales[index].id, {detail::cTitleSuffix}) &&
                   !name.View().ends_with(detail::cRangeSuffix);
        case detail::NameOwner::Vector:
            return isOf(model.vectors[index].id, {detail::cTitleSuffix, detail::cLabelSuffix});
        default:
            return owner == detail::NameOwner::Index;
    }
}

}  // namespace

void fillVariables(const Questionnaire& questionnaire, const Respondent& respondent,
                   const Scores& scores, VarTable& variables) {
    detail::VariableFiller(questionnaire).Fill(respondent, scores, variables);
}

std::vector<CString> variableNames(const QuestionnaireModel& model) {
    std::vector<CString> names;
    for (detail::MadeName& made : detail::madeNames(model)) names.push_back(std::move(made.name));
    return names;
}

std::vector<CString> scoreColumns(const QuestionnaireModel& model) {
    std::vector<CString> columns;
    for (const detail::MadeName& made : detail::madeNames(model)) {
        if (isColumn(made.name, made.owner, model, made.index)) columns.push_back(made.name);
    }
    return columns;
}

void appendScores(const QuestionnaireModel& model, const Scores& scores, std::string& row) {
    for (const ScaleResult& scale : scores.scales) {
        appendNumber(scale.raw, row);
        appendNumber(scale.missing, row);
        for (std::size_t i = 0; i < scale.standard.size(); ++i) {
            const StandardResult& standard = scale.standard[i];
            appendNumber(standard.score, row);
            if (!detail::hasInterval(*model.norms, model.norms->scores[i])) continue;
            const auto& interval = standard.confidence;
            appendNumber(interval ? std::optional(interval->low) : std::nullopt, row);
            appendNumber(interval ? std::optional(interval->high) : std::nullopt, row);
        }
    }
    for (const VectorResult& vector : scores.vectors) {
        appendNumber(vector.length, row);
        appendNumber(vector.angle, row);
        appendNumber(vector.sector, row);
    }
    for (const auto& values : scores.indexes) {
        for (const auto& value : values) appendNumber(value, row);
    }
}

void appendCell(std::string_view utf8, std::string& row) {
    const bool isRun = !utf8.empty() && cRunBySpreadsheets.find(utf8.front()) != utf8.npos;
    const bool isQuoted = utf8.find_first_of(cQuoted) != utf8.npos;
    if (isQuoted) row += '"';
    if (isRun) row += '\'';
    for (const char letter : utf8) {
        if (letter == '"') row += '"';
        row += letter;
    }
    if (isQuoted) row += '"';
}

}  // namespace tessalink
