#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string_view>
#include <tuple>
#include <vector>

#include "core/CsvReader.h"
#include "scores/detail/NormData.h"

namespace tessalink::detail {

/// Reads a norm table and checks it; see NormTable::Read.
class NormReader {
public:
    explicit NormReader(CFile& file) : m_csv(file) {}

    std::shared_ptr<const NormData> Read();

private:
    enum class Role { Key, Age, Raw, Score, Reliability };
    struct Row {
        RawSpan raws;
        NormSpot spot;  ///< of the raw scores
        std::size_t firstScore = 0;
    };
    struct Score {
        double score = 0;
        NormSpot spot;
    };
    struct Group {
        NormGroupData data;
        std::vector<Row> rows;
        NormSpot reliability;  ///< where it was given first
    };
    using GroupKey = std::tuple<NormValues, int, int>;

    void read_header();
    void add_column(const CsvCell& cell, bool isBehindRaw);
    void read_row();
    Group& group_of_row();
    std::uint32_t number_of_value(NormKey& key, const CsvCell& cell);
    AgeSpan read_ages(const CsvCell& cell) const;
    RawSpan read_raws(const CsvCell& cell) const;
    double read_score(const CsvCell& cell, NormColumn& column) const;
    void read_reliability(const CsvCell& cell, Group& group) const;

    void finish_group(Group& group);
    void check_raws(const Group& group) const;
    void check_direction(const Group& group, std::size_t column) const;
    void check_groups() const;
    void check_gap(const NormGroupData& group, const NormGroupData& next) const;
    void check_overlaps(std::uint32_t pattern, std::uint32_t other) const;
    [[noreturn]] void fail_overlap(const NormGroupData& a, const NormGroupData& b) const;

    NormSpot spot_of(const CsvCell& cell) const {
        return {static_cast<std::uint32_t>(cell.line), static_cast<std::uint32_t>(cell.column)};
    }
    [[noreturn]] void fail(const CsvCell& cell, const CString& message) const {
        throw InputError(m_csv.PlaceOf(cell), message);
    }
    [[noreturn]] void fail(NormSpot spot, const CString& message) const {
        throw InputError(m_data->PlaceOf(spot), message);
    }

    CsvReader m_csv;
    std::shared_ptr<NormData> m_data = std::make_shared<NormData>();
    std::vector<Role> m_roles;   ///< of the columns of the file
    std::vector<CsvCell> m_row;  ///< the present one
    std::vector<Group> m_groups;
    std::map<GroupKey, std::size_t> m_numbers;  ///< of the groups
    std::vector<Score> m_scores;                ///< of all rows
};

}  // namespace tessalink::detail
