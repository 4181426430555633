#include "questionnaire/detail/VariableFiller.h"

#include <algorithm>
#include <limits>

#include "questionnaire/detail/WholeScores.h"
#include "report/PlainText.h"

namespace tessalink::detail {

/// Gives values to the variables, one after the other in the order of their names.
class VariableFiller::Row {
public:
    Row(const std::vector<MadeName>& names, VarTable& variables)
        : m_name(names.begin()), m_variables(variables) {}

    template <class VALUE>
    void Put(const VALUE& value) {
        m_variables.SetValue((m_name++)->name, value);
    }
    void PutMissingText() { Put(""); }
    void PutMissingNumber() { Put(std::numeric_limits<double>::quiet_NaN()); }
    /// Plain text of the questionnaire.
    void PutText(const CString& text) { Put(escapeText(text.View())); }
    void PutNumber(const std::optional<double>& number, bool isWhole) {
        if (!number) return PutMissingNumber();
        if (isWhole) return Put(static_cast<int>(*number));
        Put(*number);
    }

private:
    std::vector<MadeName>::const_iterator m_name;
    VarTable& m_variables;
};

VariableFiller::VariableFiller(Questionnaire questionnaire)
    : m_questionnaire(std::move(questionnaire)), m_names(madeNames(m_questionnaire.Model())) {
    if (m_questionnaire.Norms() == nullptr) return;
    const auto columns = m_questionnaire.Norms()->GetColumns();
    for (const CString& score : m_questionnaire.Model().norms->scores) {
        const auto column =
            std::find_if(columns.begin(), columns.end(),
                         [&](const NormColumn& known) { return known.name.text == score; });
        m_isWhole.push_back(column != columns.end() && column->isWhole);
    }
}

void VariableFiller::add_item(std::size_t item, const Answer& answer, Row& row) const {
    const QuestionnaireModel& model = m_questionnaire.Model();
    const ResponseSet& set = model.responseSets[model.items[item].responses];
    if (!answer) {
        row.PutMissingNumber();
        row.PutMissingNumber();
        row.PutMissingText();
    } else {
        row.Put(*answer);
        row.PutNumber(m_questionnaire.ValueOf(item, *answer), hasWholeValues(set));
        if (set.HasChoices()) {
            row.PutText(set.choices[static_cast<std::size_t>(*answer) - 1].label);
        } else {
            row.Put(std::to_string(*answer));
        }
    }
    row.PutText(model.items[item].text);
}

void VariableFiller::add_scale(std::size_t scale, const ScaleResult& result, Row& row) const {
    const QuestionnaireModel& model = m_questionnaire.Model();
    row.PutNumber(result.raw, isWholeScore(model, model.scales[scale]));
    row.Put(result.missing);
    row.PutText(model.scales[scale].title);
    for (std::size_t i = 0; i < result.standard.size(); ++i) {
        const StandardResult& standard = result.standard[i];
        const CString& column = model.norms->scores[i];
        row.PutNumber(standard.score, m_isWhole[i]);
        if (!hasInterval(*model.norms, column)) continue;
        if (!standard.confidence) {
            row.PutMissingNumber();
            row.PutMissingNumber();
            row.PutMissingText();
            continue;
        }
        row.Put(standard.confidence->low);
        row.Put(standard.confidence->high);
        row.Put(standard.confidence->Format(*findScoreScale(column.View())));
    }
}

void VariableFiller::add_missing_field(Field::Type type, Row& row) {
    using Type = Field::Type;
    const bool isNumber = type == Type::Integer || type == Type::Decimal || type == Type::Choice;
    if (isNumber) {
        row.PutMissingNumber();
    } else {
        row.PutMissingText();
    }
    if (type == Type::Choice) {
        row.PutMissingText();  // the code
        row.PutMissingText();  // the label
    } else if (type == Type::Date) {
        for (int part = 0; part < 3; ++part) row.PutMissingNumber();  // year, month, day
    }
}

void VariableFiller::add_field(const Field& field, const FieldValue& value, Row& row) const {
    if (std::holds_alternative<std::monostate>(value)) return add_missing_field(field.type, row);
    if (const auto* const text = std::get_if<std::string>(&value)) {
        row.Put(escapeUtf8(*text));
    } else if (const auto* const number = std::get_if<double>(&value)) {
        row.Put(*number);
    } else if (const auto* const date = std::get_if<Date>(&value)) {
        row.Put(isoText(*date));
        int year = 0;
        int month = 0;
        int day = 0;
        date->Get(year, month, day);
        for (const int part : {year, month, day}) row.Put(part);
    } else if (const auto* const time = std::get_if<Time>(&value)) {
        row.Put(isoText(*time));
    } else {
        const std::int32_t whole = std::get<std::int32_t>(value);
        row.Put(whole);
        if (field.type != Field::Type::Choice) return;
        const Choice& choice = field.choices[static_cast<std::size_t>(whole) - 1];
        row.PutText(choice.code);
        row.PutText(choice.label);
    }
}

void VariableFiller::Fill(const Respondent& respondent, const Scores& scores,
                          VarTable& variables) const {
    const QuestionnaireModel& model = m_questionnaire.Model();
    Row row(m_names, variables);
    row.PutText(model.id);
    row.PutText(model.title);
    row.PutText(model.version);
    row.Put(escapeUtf8(respondent.id));
    for (std::size_t i = 0; i < model.items.size(); ++i) add_item(i, respondent.answers[i], row);
    for (std::size_t i = 0; i < model.scales.size(); ++i) add_scale(i, scores.scales[i], row);
    for (std::size_t i = 0; i < model.vectors.size(); ++i) {
        const VectorScore& vector = model.vectors[i];
        const VectorResult& result = scores.vectors[i];
        row.PutNumber(result.length, false);
        row.PutNumber(result.angle, false);
        row.PutNumber(result.sector, true);
        row.PutText(result.sector ? vector.sectors[static_cast<std::size_t>(*result.sector) - 1]
                                  : CString());
        row.PutText(vector.title);
    }
    for (std::size_t i = 0; i < model.indexes.size(); ++i) {
        for (const auto& value : scores.indexes[i]) {
            row.PutNumber(value, isCount(model.indexes[i].kind));
        }
    }
    for (std::size_t i = 0; i < model.fields.size(); ++i) {
        const FieldValue& value = respondent.fields[i];
        add_field(model.fields[i], value, row);
        row.Put(std::holds_alternative<std::monostate>(value) ? 1 : 0);
    }
    for (const PersonWord& word : model.words) {
        const auto* const position =
            std::get_if<std::int32_t>(&respondent.fields[*model.wordsField]);
        row.PutText(position != nullptr ? word.words[static_cast<std::size_t>(*position) - 1]
                                        : word.otherwise);
    }
}

}  // namespace tessalink::detail
