#pragma once

#include <vector>

#include "questionnaire/Questionnaire.h"
#include "questionnaire/Respondent.h"
#include "questionnaire/Scorer.h"
#include "questionnaire/detail/VariableNames.h"
#include "report/VarTable.h"

namespace tessalink::detail {

/// Makes the variables of persons, with names put together once.
class VariableFiller {
public:
    explicit VariableFiller(Questionnaire questionnaire);

    void Fill(const Respondent& respondent, const Scores& scores, VarTable& variables) const;

private:
    class Row;

    void add_item(std::size_t item, const Answer& answer, Row& row) const;
    void add_scale(std::size_t scale, const ScaleResult& result, Row& row) const;
    static void add_missing_field(Field::Type type, Row& row);
    void add_field(const Field& field, const FieldValue& value, Row& row) const;

    Questionnaire m_questionnaire;
    std::vector<MadeName> m_names;
    std::vector<bool> m_isWhole;  ///< for each score of NormSource whether it is an int
};

}  // namespace tessalink::detail
