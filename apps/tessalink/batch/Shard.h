#pragma once

#include <string>

#include "apps/tessalink/batch/IdSet.h"

namespace tessalink::cli {

/// One of `count` parts of the respondents. A respondent belongs to the one that the id says.
struct Shard {
    unsigned number = 1;  ///< from 1
    unsigned count = 1;

    bool IsWhole() const { return count == 1; }
    bool Has(const IdHash& id) const {
        __extension__ using Wide = unsigned __int128;
        return (Wide{id[0]} << 64 | id[1]) % count + 1 == number;
    }
    /// "name-2-of-8.csv" of "name.csv"; the same name for the whole.
    std::string NameFor(const std::string& stem, const std::string& ending) const;
    /// "2/8".
    std::string Text() const { return std::to_string(number) + "/" + std::to_string(count); }
};

/// Reads "2/8"; whether it is a shard.
bool readShard(const std::string& text, Shard& shard);

}  // namespace tessalink::cli
