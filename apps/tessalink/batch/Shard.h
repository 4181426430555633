#pragma once

#include <cstdint>
#include <string>

#include "apps/tessalink/batch/IdSet.h"

namespace tessalink::cli {

/// One of `count` parts of the respondents. A respondent belongs to the one that the id says.
struct Shard {
    unsigned number = 1;  ///< from 1
    unsigned count = 1;

    bool IsWhole() const { return count == 1; }
    bool Has(const IdHash& id) const {
        // The whole of 128 bits, by the remainders of its halves.
        const std::uint64_t parts = count;
        const std::uint64_t carried = (~std::uint64_t{0} % parts + 1) % parts;
        return (id[0] % parts * carried % parts + id[1] % parts) % parts + 1 == number;
    }
    /// "name-2-of-8.csv" of "name.csv"; the same name for the whole.
    std::string NameFor(const std::string& stem, const std::string& ending) const;
    /// "2/8".
    std::string Text() const { return std::to_string(number) + "/" + std::to_string(count); }
};

/// Reads "2/8"; whether it is a shard.
bool readShard(const std::string& text, Shard& shard);

}  // namespace tessalink::cli
