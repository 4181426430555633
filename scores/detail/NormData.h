#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "scores/AgeSpan.h"
#include "scores/NormTable.h"

namespace tessalink::detail {

/// A value for each key, as a number from 1 on in the order of first appearance. 0 is any value in
/// a group, and in a person an unknown one.
using NormValues = std::array<std::uint32_t, NormTable::cMaxKeys>;

/// Where a row of the file stands; files are small enough.
struct NormSpot {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

struct RawSpan {
    int from = 0;
    int to = 0;
};

struct NormGroupData {
    std::uint32_t pattern = 0;  ///< the bit of each key that may have any value
    NormValues values{};
    AgeSpan ages;
    std::vector<RawSpan> raws;   ///< rising, without gaps
    std::vector<double> scores;  ///< a row of columns for each span; NaN: no score
    std::optional<double> reliability;
    NormSpot spot;
};

struct NormKey {
    NormName name;
    std::vector<NormName> values;
    std::map<CString, std::uint32_t> numbers;
};

/// A norm table as it is looked up.
struct NormData {
    CString file;
    std::vector<NormKey> keys;
    CString ageName;  ///< empty when there are no ages
    std::vector<NormColumn> columns;
    /// Rising by pattern, values and age; no two hold the same person.
    std::vector<NormGroupData> groups;
    std::vector<std::uint32_t> patterns;  ///< those of the groups, rising

    /// The group of a person, or null; without an age, one that holds every age.
    const NormGroupData* Find(const NormValues& person, std::optional<int> age) const;
    /// "scale Anxiety, sex f, age 6:0-8:11".
    CString Describe(const NormGroupData& group) const;
    TextPlace PlaceOf(NormSpot spot) const { return {file, spot.line, spot.column}; }
};

/// Whether a comes before b in NormData::groups.
bool isOrdered(const NormGroupData& a, const NormGroupData& b);

/// Whether both hold the same values of all keys but the age.
inline bool haveSameKeys(const NormGroupData& a, const NormGroupData& b) {
    return a.pattern == b.pattern && a.values == b.values;
}

}  // namespace tessalink::detail
