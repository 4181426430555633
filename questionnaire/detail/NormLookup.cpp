#include "questionnaire/detail/NormLookup.h"

#include <algorithm>
#include <string>

#include "core/Date.h"
#include "platform/base/CodePage.h"
#include "scores/Reliability.h"

namespace tessalink::detail {

namespace {

/// How many groups of persons are looked up beforehand at most.
constexpr std::size_t cMaxPrepared = 4096;
constexpr double cPercent = 100;

}  // namespace

NormLookup::NormLookup(const QuestionnaireModel& model, const NormTable& table)
    : m_model(model), m_source(*model.norms), m_table(table) {
    for (const NormName& key : m_table.GetKeys()) {
        if (key.text.CompareNoCase("scale") == 0) m_scaleKey = key.text;
    }
    prepare();
}

/// How many combinations of choices the keys have, one more for each key that is missing; 0 when a
/// key is no choice.
std::size_t NormLookup::combinations() const {
    std::size_t count = 1;
    for (const NormSource::Key& key : m_source.keys) {
        const Field& field = m_model.fields[key.field];
        if (field.type != Field::Type::Choice) return 0;
        count *= field.choices.size() + 1;
        if (count > cMaxPrepared) return 0;
    }
    return count;
}

void NormLookup::prepare() {
    const std::size_t count = combinations();
    if (count == 0 || count * m_model.scales.size() > cMaxPrepared) return;
    m_groups.resize(m_model.scales.size());
    for (std::size_t scale = 0; scale < m_groups.size(); ++scale) {
        if (!m_model.scales[scale].hasNorms) continue;
        m_groups[scale].resize(count);
        for (std::size_t combination = 0; combination < count; ++combination) {
            NormKeys keys;
            std::size_t rest = combination;
            for (const NormSource::Key& key : m_source.keys) {
                const auto& choices = m_model.fields[key.field].choices;
                const std::size_t choice = rest % (choices.size() + 1);
                rest /= choices.size() + 1;
                if (choice > 0) keys[key.name] = choices[choice - 1].code;
            }
            prepare_group(m_groups[scale][combination], keys, m_model.scales[scale].id);
        }
    }
}

/// The groups of all ages. Persons without norms are left to the look-up that tells why.
void NormLookup::prepare_group(std::vector<Group>& groups, NormKeys keys,
                               const CString& scale) const {
    keys[m_scaleKey] = scale;
    const int last = m_table.HasAges() ? ageInMonths(AgeSpan::cMaxYears) : 0;
    int age = 0;
    while (age <= last) {
        try {
            const NormGroup norms =
                m_table.HasAges() ? m_table.FindGroup(keys, age) : m_table.FindGroup(keys);
            Group group{norms.GetAges(), norms, norms.GetLowestRaw(), {}};
            for (int raw = group.lowest; raw <= norms.GetHighestRaw(); ++raw) {
                group.byRaw.push_back(results_of(norms, raw));
            }
            groups.push_back(group);
            if (group.ages.to == AgeSpan::cOpenEnd) return;
            age = std::max(age, group.ages.to) + 1;
        } catch (const NormError& error) {
            if (error.GetReason() != NormError::Reason::AgeOutside) return;
            ++age;
        }
    }
}

std::vector<StandardResult> NormLookup::results_of(const NormGroup& group, int raw) const {
    std::vector<StandardResult> results(m_source.scores.size());
    for (std::size_t i = 0; i < results.size(); ++i) {
        const CString& column = m_source.scores[i];
        StandardResult& result = results[i];
        result.score = group.FindIfAny(raw, column.View());
        const ScoreScale* const scale = findScoreScale(column.View());
        const auto reliability = group.GetReliability();
        if (!result.score || !m_source.confidence || scale == nullptr || !reliability) continue;
        result.confidence =
            Reliability(*scale, *reliability)
                .GetIntervalOfMeasurement(*result.score, *m_source.confidence / cPercent);
    }
    return results;
}

std::optional<AgeSpan> NormLookup::age_of(const Respondent& respondent) const {
    if (m_source.ageField) {
        const FieldValue& value = respondent.fields[*m_source.ageField];
        if (const auto* years = std::get_if<std::int32_t>(&value)) {
            constexpr int monthsOfYear = 12;
            const int first = ageInMonths(*years);
            return AgeSpan{first, first + monthsOfYear - 1};
        }
        const auto* text = std::get_if<std::string>(&value);
        if (text == nullptr) return std::nullopt;
        const auto age = parseAge(*text);
        if (age) return age;
        throw ScoringError(m_model.fields[*m_source.ageField].id,
                           "'" + CString(std::string_view(fromUtf8(*text).text)) +
                               "' is not an age: write years:months, as 9:4, or whole years");
    }
    if (!m_source.birthField || !m_source.testField) return std::nullopt;
    const auto* birth = std::get_if<Date>(&respondent.fields[*m_source.birthField]);
    const auto* test = std::get_if<Date>(&respondent.fields[*m_source.testField]);
    if (birth == nullptr || test == nullptr) return std::nullopt;
    if (*test < *birth) {
        throw ScoringError(m_model.fields[*m_source.testField].id,
                           "the test lies before the birth");
    }
    int years = 0;
    int months = 0;
    int days = 0;
    test->Minus(*birth, years, months, days);
    const int age = ageInMonths(years, months);
    return AgeSpan{age, age};
}

NormLookup::Person NormLookup::PersonOf(const Respondent& respondent) const {
    Person person;
    person.age = age_of(respondent);
    std::size_t factor = 1;
    for (const NormSource::Key& key : m_source.keys) {
        const Field& field = m_model.fields[key.field];
        const FieldValue& value = respondent.fields[key.field];
        if (field.type == Field::Type::Choice) {
            const auto* position = std::get_if<std::int32_t>(&value);
            const std::size_t choice =
                position != nullptr ? static_cast<std::size_t>(*position) : 0;
            person.combination += factor * choice;
            factor *= field.choices.size() + 1;
            if (choice > 0 && m_groups.empty())
                person.keys[key.name] = field.choices[choice - 1].code;
        } else if (const auto* text = std::get_if<std::string>(&value)) {
            person.keys[key.name] = CString(std::string_view(fromUtf8(*text).text));
        } else if (const auto* number = std::get_if<std::int32_t>(&value)) {
            person.keys[key.name] = CString(std::string_view(std::to_string(*number)));
        }
    }
    return person;
}

const NormLookup::Group* NormLookup::prepared(const Person& person, std::size_t scale,
                                              int raw) const {
    if (m_groups.empty()) return nullptr;
    for (const Group& group : m_groups[scale][person.combination]) {
        const bool fits =
            !m_table.HasAges() ||
            (person.age && group.ages.from <= person.age->from && person.age->to <= group.ages.to);
        if (!fits) continue;
        const bool hasRaw = raw >= group.lowest &&
                            static_cast<std::size_t>(raw - group.lowest) < group.byRaw.size();
        return hasRaw ? &group : nullptr;
    }
    return nullptr;
}

void NormLookup::Find(const Person& person, std::size_t scale, int raw,
                      std::vector<StandardResult>& results) const {
    if (const Group* const group = prepared(person, scale, raw)) {
        results = group->byRaw[static_cast<std::size_t>(raw - group->lowest)];
        return;
    }
    Person known = person;
    if (!m_groups.empty()) {
        std::size_t rest = person.combination;
        for (const NormSource::Key& key : m_source.keys) {
            const auto& choices = m_model.fields[key.field].choices;
            const std::size_t choice = rest % (choices.size() + 1);
            rest /= choices.size() + 1;
            if (choice > 0) known.keys[key.name] = choices[choice - 1].code;
        }
    }
    const CString& id = m_model.scales[scale].id;
    try {
        results = results_of(group_of(known, id), raw);
    } catch (const NormError& error) {
        const bool isKey = error.GetReason() == NormError::Reason::MissingKey ||
                           error.GetReason() == NormError::Reason::UnknownValue ||
                           error.GetReason() == NormError::Reason::AgeOutside;
        throw ScoringError(isKey ? field_of(error.GetKey()) : id, error.what());
    }
}

NormGroup NormLookup::group_of(const Person& person, const CString& scale) const {
    NormKeys keys = person.keys;
    keys[m_scaleKey] = scale;
    if (!person.age) return m_table.FindGroup(keys);
    const NormGroup group = m_table.FindGroup(keys, person.age->from);
    const NormGroup last = m_table.FindGroup(keys, person.age->to);
    if (last.GetPlace().line != group.GetPlace().line) {
        throw ScoringError(m_model.fields[*m_source.ageField].id,
                           "the norms of " + scale + " need an age in years and months, as 6:3");
    }
    return group;
}

/// The field that stands for a key of the norms; the age's when it is none.
CString NormLookup::field_of(const CString& key) const {
    for (const NormSource::Key& known : m_source.keys) {
        if (known.name == key) return m_model.fields[known.field].id;
    }
    const auto age = m_source.ageField ? m_source.ageField : m_source.birthField;
    return age ? m_model.fields[*age].id : key;
}

}  // namespace tessalink::detail
