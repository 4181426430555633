#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "questionnaire/QuestionnaireModel.h"
#include "questionnaire/Respondent.h"
#include "questionnaire/Scorer.h"
#include "scores/NormTable.h"

namespace tessalink::detail {

/// Finds the standard scores of a questionnaire's scales. Where every key is a choice, the groups
/// of all persons are looked up once, beforehand.
class NormLookup {
public:
    NormLookup(const QuestionnaireModel& model, const NormTable& table);

    /// What the norms ask of one person.
    struct Person {
        NormKeys keys;
        std::optional<AgeSpan> age;
        std::size_t combination = 0;  ///< of choices, among the prepared groups
    };
    /// A ScoringError when a date or an age is wrong.
    Person PersonOf(const Respondent& respondent) const;
    /// The standard scores of a raw score, already multiplied and rounded. A ScoringError when the
    /// norms have none.
    void Find(const Person& person, std::size_t scale, int raw,
              std::vector<StandardResult>& results) const;

private:
    /// Norms of persons of some ages.
    struct Group {
        AgeSpan ages;
        NormGroup norms;
        int lowest = 0;
        std::vector<std::vector<StandardResult>> byRaw;  ///< from the lowest raw score on
    };

    void prepare();
    void prepare_group(std::vector<Group>& groups, NormKeys keys, const CString& scale) const;
    std::size_t combinations() const;
    std::vector<StandardResult> results_of(const NormGroup& group, int raw) const;
    const Group* prepared(const Person& person, std::size_t scale, int raw) const;
    NormGroup group_of(const Person& person, const CString& scale) const;
    std::optional<AgeSpan> age_of(const Respondent& respondent) const;
    CString field_of(const CString& key) const;

    const QuestionnaireModel& m_model;
    const NormSource& m_source;
    NormTable m_table;
    CString m_scaleKey;
    /// For each scale and combination of choices its groups; empty where they are not prepared.
    std::vector<std::vector<std::vector<Group>>> m_groups;
};

}  // namespace tessalink::detail
