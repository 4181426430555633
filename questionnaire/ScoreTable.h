#pragma once

#include <string>
#include <vector>

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/Respondent.h"
#include "questionnaire/Scorer.h"
#include "report/VarTable.h"

/// Scores under their names: as variables of a report and as columns of a table. The names are the
/// same in both, and docs/questionnaires.md lists them.
namespace tessalink {

/// Makes the variables of a person: identity of the questionnaire, answers, scores, indexes, fields
/// and words. A number that is missing is a NaN, a text that is missing an empty one.
TESSALINK_API void fillVariables(const Questionnaire& questionnaire, const Respondent& respondent,
                                 const Scores& scores, VarTable& variables);

/// The names of all variables that fillVariables makes, in its order.
TESSALINK_API std::vector<CString> variableNames(const QuestionnaireModel& model);

/// The columns of scores: raw and standard scores with their intervals, vectors, indexes.
TESSALINK_API std::vector<CString> scoreColumns(const QuestionnaireModel& model);

/// Appends the scores as cells of RFC 4180, each with a comma before it: the shortest numbers that
/// read back, missing ones empty.
TESSALINK_API void appendScores(const QuestionnaireModel& model, const Scores& scores,
                                std::string& row);

/// Appends a text in UTF-8 as a cell: in quotes where RFC 4180 asks for them, and with an
/// apostrophe before "=", "+", "-" and "@", which spreadsheets would run.
TESSALINK_API void appendCell(std::string_view utf8, std::string& row);

}  // namespace tessalink
