#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "core/InputError.h"
#include "core/TextPlace.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "scores/AgeSpan.h"
#include "scores/NormError.h"

class CFile;

namespace tessalink {

namespace detail {
struct NormData;
struct NormGroupData;
}  // namespace detail

/// What is known of a person and of the score that is looked up: the values of keys by name, for
/// instance {{"scale", "Anxiety"}, {"sex", "f"}}. Those that a table has no key for are ignored.
using NormKeys = std::map<CString, CString>;

/// A name or value in a norm table, and where it stands first.
struct NormName {
    CString text;     ///< as the file has it
    TextPlace place;  ///< its first place in the file
};

/// A standard score that a norm table gives.
struct NormColumn {
    NormName name;  ///< the heading of its column
    /// Whether all its scores are whole numbers within the range of an int.
    bool isWhole = true;
};

/// The norms of one group of persons on one scale: a view into its table, to be used as long as a
/// copy of the table lives.
class TESSALINK_API NormGroup {
public:
    /// The standard score in that column for a raw score. NormError: RawOutside, NoScore,
    /// UnknownColumn.
    double Find(int raw, std::string_view column) const;
    /// Likewise, but nothing where the table says that there is no score.
    std::optional<double> FindIfAny(int raw, std::string_view column) const;
    /// Whether any raw score has a standard score in that column. NormError: UnknownColumn.
    bool HasScores(std::string_view column) const;

    /// The raw scores that the group has norms for: all from the lowest to the highest.
    int GetLowestRaw() const;
    /// The highest raw score that the group has norms for.
    int GetHighestRaw() const;
    /// The reliability of the raw scores in the group, 0 to 1, if the table gives one: for a
    /// Reliability with the scale of the column (findScoreScale).
    std::optional<double> GetReliability() const;
    /// The ages of the group; any when the table has no ages.
    const AgeSpan& GetAges() const;
    /// The group in words: "scale Anxiety, sex f, age 6:0-8:11".
    CString Describe() const;
    /// The first row of the group.
    TextPlace GetPlace() const;

private:
    friend class NormTable;
    NormGroup(const detail::NormData& table, const detail::NormGroupData& group)
        : m_table(&table), m_group(&group) {}

    const detail::NormData* m_table;
    const detail::NormGroupData* m_group;
};

/// Norms: raw scores to standard scores by group. A file of comma-separated values (see CsvReader):
///
///     # Norms of the anxiety scales
///     scale,sex,age,raw,T,reliability
///     Anxiety,f,6-8,0-3,38,0.84
///     Anxiety,f,6-8,4,41,
///     Anxiety,*,9+,0-4,40,0.9
///
/// The columns before `raw` are keys: together they name a group. `age` holds ages ("6:0-8:11" in
/// years:months, "6-8" for 6:0 to 8:11, "7" for 7:0 to 7:11, "65+" without end); every other key is
/// compared as text, letter by letter. "*" stands for any value. `raw` holds a whole number or a
/// span ("4-7", "-3--1"). The columns behind it are standard scores, decimal numbers with a full
/// stop, or "-" where there is no score. A column `reliability` among them holds the reliability of
/// the raw scores in the group, from 0 to 1: given once, or more often the same. `age`, `raw` and
/// `reliability` may be written in capitals; blanks around names and values don't count. The rows
/// may have any order. docs/norm-tables.md is the manual for authors.
///
/// A table is constant once it is read: any number of threads may use it. Copies share the norms.
class TESSALINK_API NormTable {
public:
    static constexpr std::size_t cMaxKeys = 8;        ///< without the age
    static constexpr std::size_t cMaxGroups = 65536;  ///< the most groups of a table

    /// Reads a table from the file's position on, and checks it. An InputError names the place and
    /// the remedy: besides the faults of CsvReader, columns that are missing, there twice, too many
    /// or on the wrong side of `raw`; texts that are no number, age or span, and reversed spans;
    /// raw scores that are missing between two rows of a group, or there twice; a standard score
    /// that both rises and falls in a group; two reliabilities in one; groups that one person
    /// belongs to at a time; ages that are missing between groups which differ in nothing else.
    /// CFileException passes through.
    static NormTable Read(CFile& file);

    /// The keys in the order of the file, without the age.
    std::vector<NormName> GetKeys() const;
    /// Whether norms depend on age.
    bool HasAges() const;
    /// The standard scores in the order of the file, without the reliability.
    const std::vector<NormColumn>& GetColumns() const;
    /// The values of a key in the order of the file, without "*"; none when there is no such key.
    std::vector<NormName> GetValues(std::string_view key) const;

    /// The group of a person of that age in completed months, see ageInMonths. What is not given
    /// matches "*" alone. NormError: MissingKey, UnknownValue, AgeOutside.
    NormGroup FindGroup(const NormKeys& keys, std::optional<int> ageInMonths = std::nullopt) const;

    /// The standard score in that column:
    ///
    ///     const NormTable norms = NormTable::Read(file);
    ///     const double t =
    ///         norms.Find({{"scale", "Anxiety"}, {"sex", "f"}}, ageInMonths(7, 4), 17, "T");
    ///
    /// Every NormError. The group is found by binary search, the score likewise; when many scores
    /// are wanted of one group, FindGroup once is faster.
    double Find(const NormKeys& keys, std::optional<int> ageInMonths, int raw,
                std::string_view column) const {
        return FindGroup(keys, ageInMonths).Find(raw, column);
    }

private:
    explicit NormTable(std::shared_ptr<const detail::NormData> data) : m_data(std::move(data)) {}

    std::shared_ptr<const detail::NormData> m_data;
};

}  // namespace tessalink
