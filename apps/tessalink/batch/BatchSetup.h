#pragma once

#include <memory>
#include <string>
#include <vector>

#include "apps/tessalink/batch/BatchOptions.h"
#include "apps/tessalink/batch/BatchRecord.h"
#include "apps/tessalink/batch/PersonWriter.h"
#include "apps/tessalink/batch/ResponsesFile.h"
#include "apps/tessalink/batch/Results.h"

// What is found out before a run begins. Faults are CExceptions.
namespace tessalink::cli {

/// The options with what the questionnaire, the mapping file and the machine say.
BatchOptions completed(BatchOptions options, const Questionnaire& questionnaire);

/// What is to be written for each respondent.
std::vector<ReportPlan> planReports(const BatchOptions& options,
                                    const Questionnaire& questionnaire);

/// Where the tables lie: the shard stands in their names.
ResultPaths pathsOf(const BatchOptions& options);

/// That no result takes the place of what is read.
void checkPaths(const BatchOptions& options, const ResultPaths& paths);

/// The record of a run that begins, or of the one that is to go on.
BatchRecord recordOf(const BatchOptions& options, const ResultPaths& paths,
                     const Questionnaire& questionnaire);

/// The respondents: FHIR when the first character says so, otherwise a table.
std::unique_ptr<ResponseSource> openResponses(const BatchOptions& options, ResponsesFile& file,
                                              const Questionnaire& questionnaire);

/// The header of the table of scores.
std::string scoresHeader(const QuestionnaireModel& model, const std::vector<std::string>& carried);

}  // namespace tessalink::cli
