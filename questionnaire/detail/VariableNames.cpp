#include "questionnaire/detail/VariableNames.h"

#include <initializer_list>
#include <string>

#include "scores/ScoreScale.h"

namespace tessalink::detail {

namespace {

/// Gathers names of one owner after the other.
class NameList {
public:
    void Add(NameOwner owner, std::size_t index, const CString& id,
             std::initializer_list<const char*> suffixes) {
        for (const char* suffix : suffixes) m_names.push_back({id + suffix, owner, index});
    }
    std::vector<MadeName> Take() { return std::move(m_names); }

private:
    std::vector<MadeName> m_names;
};

void addScale(const QuestionnaireModel& model, std::size_t index, NameList& names) {
    const Scale& scale = model.scales[index];
    names.Add(NameOwner::Scale, index, scale.id, {"", cMissingSuffix, cTitleSuffix});
    if (!scale.hasNorms || !model.norms) return;
    for (const CString& column : model.norms->scores) {
        const CString score = scale.id + "_" + column;
        names.Add(NameOwner::Scale, index, score, {""});
        if (!hasInterval(*model.norms, column)) continue;
        names.Add(NameOwner::Scale, index, score, {cLowSuffix, cHighSuffix, cRangeSuffix});
    }
}

void addIndex(const QuestionnaireModel& model, std::size_t index, NameList& names) {
    const AnsweringIndex& answering = model.indexes[index];
    if (answering.kind != AnsweringIndex::Kind::Shares) {
        return names.Add(NameOwner::Index, index, answering.id, {""});
    }
    const std::size_t choices = model.responseSets[answering.responses].choices.size();
    for (std::size_t i = 1; i <= choices; ++i) {
        names.Add(NameOwner::Index, index, answering.id, {("_" + std::to_string(i)).c_str()});
    }
}

}  // namespace

bool hasInterval(const NormSource& norms, const CString& column) {
    return norms.confidence && findScoreScale(column.View()) != nullptr;
}

std::vector<MadeName> madeNames(const QuestionnaireModel& model) {
    NameList names;
    names.Add(NameOwner::Questionnaire, 0, "",
              {cQuestionnaireId, cQuestionnaireTitle, cQuestionnaireVersion, cRespondentId});
    for (std::size_t i = 0; i < model.items.size(); ++i) {
        names.Add(NameOwner::Item, i, model.items[i].id,
                  {"", cValueSuffix, cLabelSuffix, cTextSuffix});
    }
    for (std::size_t i = 0; i < model.scales.size(); ++i) addScale(model, i, names);
    for (std::size_t i = 0; i < model.vectors.size(); ++i) {
        names.Add(NameOwner::Vector, i, model.vectors[i].id,
                  {cLengthSuffix, cAngleSuffix, cSectorSuffix, cLabelSuffix, cTitleSuffix});
    }
    for (std::size_t i = 0; i < model.indexes.size(); ++i) addIndex(model, i, names);
    for (std::size_t i = 0; i < model.fields.size(); ++i) {
        const Field& field = model.fields[i];
        names.Add(NameOwner::Field, i, field.id, {""});
        if (field.type == Field::Type::Choice) {
            names.Add(NameOwner::Field, i, field.id, {cCodeSuffix, cLabelSuffix});
        } else if (field.type == Field::Type::Date) {
            names.Add(NameOwner::Field, i, field.id, {cYearSuffix, cMonthSuffix, cDaySuffix});
        }
        names.Add(NameOwner::Field, i, field.id, {cMissingSuffix});
    }
    for (std::size_t i = 0; i < model.words.size(); ++i) {
        names.Add(NameOwner::Word, i, model.words[i].name, {""});
    }
    return names.Take();
}

}  // namespace tessalink::detail
