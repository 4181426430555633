#include "scores/NormTable.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "scores/detail/NormData.h"
#include "scores/detail/NormReader.h"

namespace tessalink {

using detail::NormData;
using detail::NormGroupData;
using Reason = NormError::Reason;

namespace {

/// Up to so many names are listed in a message.
constexpr std::size_t cMaxListed = 20;

CString listOf(const std::vector<CString>& names) {
    CString list;
    for (std::size_t i = 0; i < std::min(names.size(), cMaxListed); ++i) {
        list += (i == 0 ? "" : ", ") + names[i];
    }
    if (names.size() <= cMaxListed) return list;
    return list + " and " + std::to_string(names.size() - cMaxListed) + " more";
}

/// Says why there is no group for a person.
class Refusal {
public:
    Refusal(const NormData& table, const NormKeys& keys, const detail::NormValues& person)
        : m_table(table), m_keys(keys), m_person(person) {
        for (const NormGroupData& group : table.groups) m_groups.push_back(&group);
    }

    [[noreturn]] void Raise(std::optional<int> age) {
        for (std::size_t key = 0; key < m_table.keys.size(); ++key) leave_groups_of_value(key);
        if (!age) fail_missing(m_table.ageName, listOf(known_ages()));
        throw NormError(Reason::AgeOutside, m_table.ageName, {},
                        "no norms for " + m_table.ageName + " " + formatAge(*age) + m_context +
                            ": the table has " + listOf(known_ages()));
    }

private:
    /// Drops the groups for other values of the key; a fault when none is left.
    void leave_groups_of_value(std::size_t key) {
        std::vector<const NormGroupData*> left;
        std::copy_if(m_groups.begin(), m_groups.end(), std::back_inserter(left),
                     [&](const NormGroupData* group) {
                         const auto value = group->values[key];
                         return value == 0 || value == m_person[key];
                     });
        const CString& name = m_table.keys[key].name.text;
        const auto given = m_keys.find(name);
        if (left.empty() && given == m_keys.end()) fail_missing(name, known_values(key));
        if (left.empty()) {
            throw NormError(Reason::UnknownValue, name, {},
                            "no norms for " + name + " '" + given->second + "'" + m_context +
                                ": the table has " + known_values(key));
        }
        m_groups = std::move(left);
        if (given == m_keys.end()) return;
        m_context += (m_context.IsEmpty() ? " with " : ", ") + name + " " + given->second;
    }

    [[noreturn]] void fail_missing(const CString& name, const CString& known) const {
        throw NormError(Reason::MissingKey, name, {},
                        "the norms" + m_context + " depend on " + name +
                            ", which is not given: the table has " + known);
    }

    CString known_values(std::size_t key) const {
        std::vector<bool> isKnown(m_table.keys[key].values.size() + 1);
        for (const NormGroupData* group : m_groups) isKnown[group->values[key]] = true;
        std::vector<CString> names;
        for (std::size_t i = 1; i < isKnown.size(); ++i) {
            if (isKnown[i]) names.push_back(m_table.keys[key].values[i - 1].text);
        }
        return listOf(names);
    }

    /// The ages of the groups, spans that follow one another joined.
    std::vector<CString> known_ages() const {
        std::vector<AgeSpan> spans;
        for (const NormGroupData* group : m_groups) spans.push_back(group->ages);
        std::sort(spans.begin(), spans.end(),
                  [](const AgeSpan& a, const AgeSpan& b) { return a.from < b.from; });
        std::vector<CString> texts;
        for (std::size_t i = 0; i < spans.size();) {
            AgeSpan joined = spans[i++];
            for (; i < spans.size() && spans[i].from - 1 <= joined.to; ++i) {
                joined.to = std::max(joined.to, spans[i].to);
            }
            texts.push_back(joined.Format());
        }
        return texts;
    }

    const NormData& m_table;
    const NormKeys& m_keys;
    const detail::NormValues& m_person;
    std::vector<const NormGroupData*> m_groups;
    CString m_context;
};

std::size_t columnOf(const NormData& table, std::string_view name) {
    const auto& columns = table.columns;
    const auto column = std::find_if(columns.begin(), columns.end(),
                                     [&](const NormColumn& c) { return c.name.text == name; });
    if (column != columns.end()) return static_cast<std::size_t>(column - columns.begin());
    std::vector<CString> known;
    known.reserve(columns.size());
    for (const NormColumn& c : columns) known.push_back(c.name.text);
    throw NormError(
        Reason::UnknownColumn, "", {},
        "no standard score is named '" + CString(name) + "': the table has " + listOf(known));
}

}  // namespace

double NormGroup::Find(int raw, std::string_view column) const {
    if (const auto score = FindIfAny(raw, column)) return *score;
    CString message;
    message.Format("no %s for raw score %d of %s: the table says that there is none",
                   CString(column).GetString(), raw, Describe().GetString());
    throw NormError(Reason::NoScore, "", GetPlace(), message);
}

std::optional<double> NormGroup::FindIfAny(int raw, std::string_view column) const {
    const std::size_t number = columnOf(*m_table, column);
    const auto& raws = m_group->raws;
    const auto span =
        std::lower_bound(raws.begin(), raws.end(), raw,
                         [](const detail::RawSpan& s, int wanted) { return s.to < wanted; });
    if (span == raws.end() || raw < span->from) {
        CString message;
        message.Format("raw score %d is outside the norms of %s, which go from %d to %d", raw,
                       Describe().GetString(), GetLowestRaw(), GetHighestRaw());
        throw NormError(Reason::RawOutside, "", GetPlace(), message);
    }
    const auto row = static_cast<std::size_t>(span - raws.begin());
    const double score = m_group->scores[row * m_table->columns.size() + number];
    return std::isnan(score) ? std::nullopt : std::optional(score);
}

bool NormGroup::HasScores(std::string_view column) const {
    const std::size_t width = m_table->columns.size();
    for (std::size_t i = columnOf(*m_table, column); i < m_group->scores.size(); i += width) {
        if (!std::isnan(m_group->scores[i])) return true;
    }
    return false;
}

int NormGroup::GetLowestRaw() const {
    return m_group->raws.front().from;
}

int NormGroup::GetHighestRaw() const {
    return m_group->raws.back().to;
}

std::optional<double> NormGroup::GetReliability() const {
    return m_group->reliability;
}

const AgeSpan& NormGroup::GetAges() const {
    return m_group->ages;
}

CString NormGroup::Describe() const {
    return m_table->Describe(*m_group);
}

TextPlace NormGroup::GetPlace() const {
    return m_table->PlaceOf(m_group->spot);
}

NormTable NormTable::Read(CFile& file) {
    return NormTable(detail::NormReader(file).Read());
}

std::vector<NormName> NormTable::GetKeys() const {
    std::vector<NormName> names;
    for (const detail::NormKey& key : m_data->keys) names.push_back(key.name);
    return names;
}

bool NormTable::HasAges() const {
    return !m_data->ageName.IsEmpty();
}

const std::vector<NormColumn>& NormTable::GetColumns() const {
    return m_data->columns;
}

std::vector<NormName> NormTable::GetValues(std::string_view key) const {
    const auto& keys = m_data->keys;
    const auto known = std::find_if(keys.begin(), keys.end(),
                                    [&](const detail::NormKey& k) { return k.name.text == key; });
    return known != keys.end() ? known->values : std::vector<NormName>();
}

NormGroup NormTable::FindGroup(const NormKeys& keys, std::optional<int> ageInMonths) const {
    detail::NormValues person{};
    for (std::size_t i = 0; i < m_data->keys.size(); ++i) {
        const detail::NormKey& key = m_data->keys[i];
        const auto given = keys.find(key.name.text);
        if (given == keys.end()) continue;
        const auto number = key.numbers.find(given->second);
        if (number != key.numbers.end()) person[i] = number->second;
    }
    if (const NormGroupData* group = m_data->Find(person, ageInMonths)) return {*m_data, *group};
    Refusal(*m_data, keys, person).Raise(ageInMonths);
}

}  // namespace tessalink
