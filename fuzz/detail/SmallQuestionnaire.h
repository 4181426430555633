#pragma once

#include "fuzz/detail/require.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/ResponseSource.h"

namespace tessalink::fuzz {

/// A questionnaire with answers and fields of every kind.
inline const Questionnaire& smallQuestionnaire() {
    static const Questionnaire questionnaire = Questionnaire::Read(
        QuestionnaireFiles{{"questionnaire.json", R"({"id": "q", "title": "Q", "version": "1",
  "language": "en", "licence": "none", "source": "none",
  "responseSets": {"r": {"choices": [{"code": "0", "label": "no"}, {"code": "1", "label": "yes"}]},
                   "n": {"whole": [-5, 5]}},
  "items": [{"id": "Q1", "text": "1", "responses": "r"}, {"id": "Q2", "text": "2", "responses": "n"}],
  "fields": [{"id": "Name", "label": "N", "type": "text"},
             {"id": "Years", "label": "Y", "type": "integer", "min": 0, "max": 120},
             {"id": "Weight", "label": "W", "type": "decimal", "min": 0, "max": 300},
             {"id": "Sex", "label": "S", "type": "choice", "choices": [{"code": "f", "label": "female"}]},
             {"id": "Born", "label": "B", "type": "date"}, {"id": "Began", "label": "T", "type": "time"}]})"}},
        "q");
    return questionnaire;
}

/// Reads all; rows are numbered, and what was taken is what the questionnaire allows.
inline void readAll(ResponseSource& source) {
    std::uint64_t number = 0;
    for (ResponseBlock block; source.ReadBlock(block);) {
        source.Parse(block, [&](RespondentRow& row) {
            require(row.number == ++number, "rows are numbered");
            require(row.respondent.answers.size() == 2 && row.respondent.fields.size() == 6,
                    "lists as long as the questionnaire's");
            if (row.failure) return require(!row.failure->reason.empty(), "a reason");
            const Answer& choice = row.respondent.answers[0];
            require(!choice || *choice == 1 || *choice == 2, "a choice");
            const Answer& whole = row.respondent.answers[1];
            require(!whole || (*whole >= -5 && *whole <= 5), "a number of the range");
        });
    }
}

}  // namespace tessalink::fuzz
