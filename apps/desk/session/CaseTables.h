#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "questionnaire/ResponseSource.h"

class CFile;

/// Cases in and out of a file of cases, many at a time.
namespace tessalink::desk {

/// Why a case, or a row of a table, was left out.
struct LeftOut {
    std::uint64_t line = 0;  ///< of the table, from 1; 0 for a case
    std::string label;       ///< the respondent's id, as far as it is known
    std::string reason;      ///< UTF-8, with the column in question
};

/// Writes the scores of cases as CSV (RFC 4180, UTF-8): id, state, and the columns of scores
/// (questionnaire/ScoreTable.h); what norms have nothing for is empty. All cases must have the
/// questionnaire with this hash. Returns those that can't be read. CFileException and, for the
/// questionnaire, CaseStoreError pass through.
std::vector<LeftOut> writeScores(CaseStore& store, const std::string& questionnaire,
                                 std::span<const CaseSummary> cases, CFile& output);

struct ImportedCases {
    std::vector<CaseId> ids;
    std::vector<LeftOut> leftOut;
};

/// Adds a complete case for each respondent of a table or of FHIR resources. A respondent who has a
/// case of this version of the questionnaire already, or is there twice, is left out: so an import
/// that was broken off can be made once more. Cases are kept block by block: when this throws,
/// those before are in the file.
ImportedCases importResponses(CaseStore& store, const Questionnaire& questionnaire,
                              ResponseSource& source);

}  // namespace tessalink::desk
