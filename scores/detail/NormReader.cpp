#include "scores/detail/NormReader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <string>

#include "core/WholeNumber.h"
#include "scores/detail/SpanText.h"

namespace tessalink::detail {

namespace {

constexpr const char* cRaw = "raw";
constexpr const char* cAge = "age";
constexpr const char* cReliability = "reliability";
constexpr std::string_view cAny = "*";
constexpr std::string_view cNoScore = "-";

CString inQuotes(const CString& text) {
    return "'" + text + "'";
}

CString lineText(NormSpot spot) {
    return "line " + CString(std::to_string(spot.line));
}

CString rawText(std::int64_t from, std::int64_t to) {
    if (from == to) return "raw score " + CString(std::to_string(from)) + " is";
    return "raw scores " + CString(std::to_string(from)) + " to " + std::to_string(to) + " are";
}

bool isRaw(const CsvCell& cell) {
    return cell.text.CompareNoCase(cRaw) == 0;
}

bool isInt(double score) {
    return std::floor(score) == score && std::abs(score) <= std::numeric_limits<int>::max();
}

/// The values of the keys that are not in the pattern.
NormValues valuesWithout(std::uint32_t pattern, const NormGroupData& group) {
    NormValues values = group.values;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if ((pattern >> i & 1) != 0) values[i] = 0;
    }
    return values;
}

}  // namespace

std::shared_ptr<const NormData> NormReader::Read() {
    m_data->file = m_csv.GetFile();
    read_header();
    while (m_csv.ReadRow(m_row)) read_row();
    if (m_groups.empty())
        fail(m_csv.GetHeader().front(), "no rows follow the header: add the norms");
    for (Group& group : m_groups) finish_group(group);
    std::sort(m_data->groups.begin(), m_data->groups.end(), isOrdered);
    for (const NormGroupData& group : m_data->groups) {
        auto& patterns = m_data->patterns;
        if (patterns.empty() || patterns.back() != group.pattern) patterns.push_back(group.pattern);
    }
    check_groups();
    return m_data;
}

void NormReader::read_header() {
    std::vector<CsvCell> header = m_csv.GetHeader();
    for (CsvCell& cell : header) cell.text = trimmed(cell.text.View());
    const auto raw = std::find_if(header.begin(), header.end(), isRaw);
    if (raw == header.end()) {
        fail(header.front(),
             "no column is named 'raw': the first line names the columns, the keys, then raw, then "
             "the standard scores, with commas between them");
    }
    std::set<CString> names;
    for (auto cell = header.begin(); cell != header.end(); ++cell) {
        if (cell->text.IsEmpty()) fail(*cell, "a column without a name: name it or remove it");
        if (!names.insert(cell->text).second || (isRaw(*cell) && cell != raw)) {
            fail(*cell, "duplicate column " + inQuotes(cell->text) + ": rename or remove one");
        }
        add_column(*cell, cell > raw);
    }
    if (m_data->columns.empty()) {
        fail(*raw, "no standard score stands behind 'raw': add a column for each");
    }
}

void NormReader::add_column(const CsvCell& cell, bool isBehindRaw) {
    const NormName name = {cell.text, m_csv.PlaceOf(cell)};
    const bool isReliability = cell.text.CompareNoCase(cReliability) == 0;
    if (isRaw(cell)) {
        m_roles.push_back(Role::Raw);
    } else if (isReliability) {
        if (!isBehindRaw) fail(cell, "'reliability' is not a key: move the column behind 'raw'");
        if (std::count(m_roles.begin(), m_roles.end(), Role::Reliability) != 0) {
            fail(cell, "duplicate column 'reliability': remove one");
        }
        m_roles.push_back(Role::Reliability);
    } else if (isBehindRaw) {
        m_roles.push_back(Role::Score);
        m_data->columns.push_back({name});
    } else if (cell.text.CompareNoCase(cAge) == 0) {
        if (!m_data->ageName.IsEmpty()) fail(cell, "duplicate column 'age': remove one");
        m_roles.push_back(Role::Age);
        m_data->ageName = cell.text;
    } else {
        if (m_data->keys.size() == NormTable::cMaxKeys) {
            fail(cell, "more than " + CString(std::to_string(NormTable::cMaxKeys)) +
                           " keys besides the age: put several into one column");
        }
        m_roles.push_back(Role::Key);
        m_data->keys.push_back({name, {}, {}});
    }
}

void NormReader::read_row() {
    for (CsvCell& cell : m_row) cell.text = trimmed(cell.text.View());
    Group& group = group_of_row();
    auto& row = group.rows.emplace_back();
    row.firstScore = m_scores.size();
    auto column = m_data->columns.begin();
    for (std::size_t i = 0; i < m_row.size(); ++i) {
        const CsvCell& cell = m_row[i];
        if (m_roles[i] == Role::Raw) {
            row.raws = read_raws(cell);
            row.spot = spot_of(cell);
        } else if (m_roles[i] == Role::Score) {
            m_scores.push_back({read_score(cell, *column++), spot_of(cell)});
        } else if (m_roles[i] == Role::Reliability) {
            read_reliability(cell, group);
        }
    }
}

NormReader::Group& NormReader::group_of_row() {
    NormGroupData data;
    std::size_t key = 0;
    for (std::size_t i = 0; m_roles[i] != Role::Raw; ++i) {
        if (m_roles[i] == Role::Age) {
            data.ages = read_ages(m_row[i]);
            continue;
        }
        data.values[key] = number_of_value(m_data->keys[key], m_row[i]);
        if (data.values[key] == 0) data.pattern |= 1u << key;
        ++key;
    }
    const auto [known, isNew] =
        m_numbers.try_emplace({data.values, data.ages.from, data.ages.to}, m_groups.size());
    if (isNew) {
        if (m_groups.size() == NormTable::cMaxGroups) {
            fail(m_row.front(), "more than " + CString(std::to_string(NormTable::cMaxGroups)) +
                                    " groups: split the table");
        }
        data.spot = spot_of(m_row.front());
        m_groups.push_back({std::move(data), {}, {}});
    }
    return m_groups[known->second];
}

std::uint32_t NormReader::number_of_value(NormKey& key, const CsvCell& cell) {
    if (cell.text == cAny) return 0;
    if (cell.text.IsEmpty()) {
        fail(cell, "no value of " + inQuotes(key.name.text) + ": write one, or * for any");
    }
    const auto next = static_cast<std::uint32_t>(key.values.size() + 1);
    const auto [known, isNew] = key.numbers.try_emplace(cell.text, next);
    if (isNew) key.values.push_back({cell.text, m_csv.PlaceOf(cell)});
    return known->second;
}

AgeSpan NormReader::read_ages(const CsvCell& cell) const {
    if (cell.text == cAny) return {};
    const auto ages = parseAgeSpan(cell.text.View());
    if (!ages) {
        fail(cell, inQuotes(cell.text) +
                       " is not an age span: write 6:0-8:11, 6-8, 7, 65+ or *, in "
                       "years or years:months with months from 0 to 11");
    }
    if (ages->from > ages->to) {
        fail(cell, inQuotes(cell.text) + " is reversed: write the lower age first");
    }
    return *ages;
}

RawSpan NormReader::read_raws(const CsvCell& cell) const {
    const auto sides = sidesOfSpan(cell.text.View());
    const auto from = wholeNumber<int>(sides ? sides->first : cell.text.View());
    const auto to = sides ? wholeNumber<int>(sides->second) : from;
    if (!from || !to) {
        fail(cell,
             inQuotes(cell.text) + " is not a raw score: write a whole number, or a span as 4-7");
    }
    if (*from > *to) fail(cell, inQuotes(cell.text) + " is reversed: write the lower score first");
    return {*from, *to};
}

double NormReader::read_score(const CsvCell& cell, NormColumn& column) const {
    if (cell.text == cNoScore) return std::numeric_limits<double>::quiet_NaN();
    const auto score = wholeNumber<double>(cell.text.View(), std::chars_format::fixed);
    if (!score || !std::isfinite(*score)) {
        fail(cell, inQuotes(cell.text) +
                       " is not a standard score: write a number, with a full stop "
                       "before decimals, or - where there is none");
    }
    column.isWhole = column.isWhole && isInt(*score);
    return *score;
}

void NormReader::read_reliability(const CsvCell& cell, Group& group) const {
    if (cell.text.IsEmpty() || cell.text == cNoScore) return;
    const auto value = wholeNumber<double>(cell.text.View(), std::chars_format::fixed);
    if (!value || !(*value >= 0 && *value <= 1)) {
        fail(cell, inQuotes(cell.text) +
                       " is not a reliability: write a number from 0 to 1, with a "
                       "full stop before decimals, or nothing");
    }
    auto& known = group.data.reliability;
    if (known && *known != *value) {
        fail(cell, "another reliability than in " + lineText(group.reliability) +
                       ": a group has one, write it once or always alike");
    }
    if (known) return;
    known = value;
    group.reliability = spot_of(cell);
}

void NormReader::finish_group(Group& group) {
    std::stable_sort(group.rows.begin(), group.rows.end(),
                     [](const Row& a, const Row& b) { return a.raws.from < b.raws.from; });
    check_raws(group);
    const std::size_t columns = m_data->columns.size();
    for (std::size_t i = 0; i < columns; ++i) check_direction(group, i);
    NormGroupData& data = m_data->groups.emplace_back(std::move(group.data));
    data.raws.reserve(group.rows.size());
    data.scores.reserve(group.rows.size() * columns);
    for (const Row& row : group.rows) {
        data.raws.push_back(row.raws);
        for (std::size_t i = 0; i < columns; ++i) {
            data.scores.push_back(m_scores[row.firstScore + i].score);
        }
    }
}

/// Each span must begin where the one before it ends.
void NormReader::check_raws(const Group& group) const {
    for (std::size_t i = 1; i < group.rows.size(); ++i) {
        const Row& before = group.rows[i - 1];
        const Row& row = group.rows[i];
        const std::int64_t next = std::int64_t{before.raws.to} + 1;
        if (row.raws.from > next) {
            fail(row.spot, rawText(next, std::int64_t{row.raws.from} - 1) + " missing between " +
                               lineText(before.spot) +
                               " and this one: a group has all raw scores from its lowest to its "
                               "highest");
        }
        if (row.raws.from < next) {
            const bool isLater = row.spot.line > before.spot.line;
            fail(isLater ? row.spot : before.spot,
                 rawText(row.raws.from, std::min(before.raws.to, row.raws.to)) + " in " +
                     lineText(isLater ? before.spot : row.spot) +
                     " too, for the same group: correct one of them");
        }
    }
}

void NormReader::check_direction(const Group& group, std::size_t column) const {
    const Score* before = nullptr;
    bool rises = false;
    bool falls = false;
    for (const Row& row : group.rows) {
        const Score& score = m_scores[row.firstScore + column];
        if (std::isnan(score.score)) continue;
        if (before) {
            rises = rises || score.score > before->score;
            falls = falls || score.score < before->score;
        }
        if (rises && falls) {
            fail(score.spot, inQuotes(m_data->columns[column].name.text) +
                                 " changes its direction " + "after " + lineText(before->spot) +
                                 ": within a group it may rise or fall, not both");
        }
        before = &score;
    }
}

void NormReader::check_groups() const {
    const auto& groups = m_data->groups;
    for (std::size_t i = 1; i < groups.size(); ++i) {
        const NormGroupData& before = groups[i - 1];
        if (haveSameKeys(before, groups[i]) && groups[i].ages.from <= before.ages.to) {
            fail_overlap(before, groups[i]);
        }
    }
    const auto& patterns = m_data->patterns;
    for (auto pattern = patterns.begin(); pattern != patterns.end(); ++pattern) {
        for (auto other = patterns.begin(); other != pattern; ++other) {
            check_overlaps(*pattern, *other);
        }
    }
    for (std::size_t i = 1; i < groups.size(); ++i) {
        if (haveSameKeys(groups[i - 1], groups[i])) check_gap(groups[i - 1], groups[i]);
    }
}

void NormReader::check_gap(const NormGroupData& group, const NormGroupData& next) const {
    // Groups for any value of a key may fill the gap.
    int age = group.ages.to + 1;
    while (age < next.ages.from) {
        const NormGroupData* between = m_data->Find(group.values, age);
        if (!between) {
            fail(group.spot.line > next.spot.line ? group.spot : next.spot,
                 "ages are missing from " + formatAge(age) + " on, between " +
                     m_data->Describe(group) + " (" + lineText(group.spot) + ") and age " +
                     next.ages.Format() + " (" + lineText(next.spot) +
                     "): add them, or widen a span");
        }
        age = between->ages.to + 1;
    }
}

/// Groups of two patterns: a key of which one has any value doesn't part them. In the order of the
/// other keys and ages two groups overlap when one starts before the end of one of the other
/// pattern.
void NormReader::check_overlaps(std::uint32_t pattern, std::uint32_t other) const {
    struct Entry {
        NormValues values;
        const NormGroupData* group;
    };
    std::vector<Entry> entries;
    for (const std::uint32_t either : {pattern, other}) {
        const auto& groups = m_data->groups;
        const auto first = std::lower_bound(groups.begin(), groups.end(), either,
                                            [](const NormGroupData& group, std::uint32_t wanted) {
                                                return group.pattern < wanted;
                                            });
        for (auto group = first; group != groups.end() && group->pattern == either; ++group) {
            entries.push_back({valuesWithout(pattern | other, *group), &*group});
        }
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return std::tie(a.values, a.group->ages.from) < std::tie(b.values, b.group->ages.from);
    });
    std::array<const NormGroupData*, 2> last{};  // of either pattern, the one that ends last
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const NormGroupData* group = entries[i].group;
        if (i != 0 && entries[i].values != entries[i - 1].values) last = {};
        const std::size_t own = group->pattern == other ? 1 : 0;
        const NormGroupData* rival = last[1 - own];
        if (rival && group->ages.from <= rival->ages.to) fail_overlap(*rival, *group);
        if (!last[own] || last[own]->ages.to < group->ages.to) last[own] = group;
    }
}

void NormReader::fail_overlap(const NormGroupData& a, const NormGroupData& b) const {
    const bool isLater = b.spot.line > a.spot.line;
    const NormGroupData& later = isLater ? b : a;
    const NormGroupData& earlier = isLater ? a : b;
    fail(later.spot, "a person of this group, " + m_data->Describe(later) +
                         ", may belong to that of " + lineText(earlier.spot) + " too, " +
                         m_data->Describe(earlier) + ": part them");
}

}  // namespace tessalink::detail
