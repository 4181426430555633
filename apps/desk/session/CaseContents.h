#pragma once

#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/Respondent.h"

namespace tessalink::desk {

/// An entry that this version of the questionnaire has no place for. It stays in the file.
struct UnusedEntry {
    Entry entry;
    std::string reason;  ///< UTF-8
};

/// What was keyed of a case, in the places that its questionnaire has for it.
struct CaseContents {
    Respondent respondent;  ///< its id is the label of the case
    std::vector<Answer> secondAnswers;
    std::vector<UnusedEntry> unused;

    /// Puts an entry in its place. Returns why there is none, and then changes nothing.
    std::string Take(const Questionnaire& questionnaire, const Entry& entry);
};

/// CaseStoreError: the case can't be read.
CaseContents readContents(CaseStore& store, const CaseSummary& summary,
                          const Questionnaire& questionnaire);

/// A questionnaire as the file keeps it. CaseStoreError: it can't be read.
Questionnaire readQuestionnaire(CaseStore& store, const std::string& hash);

}  // namespace tessalink::desk
