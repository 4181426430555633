#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tessalink::cli {

/// The MD5 digest of a respondent's id in small letters, as two big-endian numbers.
using IdHash = std::array<std::uint64_t, 2>;

IdHash hashOfId(std::string_view id);

/// Which row has which id, in at most 16 bytes a row when Reserve knew how many there are. Of a
/// digest 76 bits count: among a hundred million ids two are taken for the same with a probability
/// of one in ten millions.
class IdSet {
public:
    static constexpr std::uint64_t cMaxRow = (std::uint64_t{1} << 40) - 1;

    /// Tells how many ids may come.
    void Reserve(std::uint64_t count);
    /// Gives the id to a row, 1 to cMaxRow; returns the row that has it already, or 0.
    std::uint64_t Take(const IdHash& id, std::uint64_t row);

private:
    /// A hash table by open addressing. A slot is eight bytes of the hash and five of the row,
    /// which is 0 when it is free.
    class Part {
    public:
        std::uint64_t Take(std::uint64_t hash, std::uint64_t row, std::size_t expected);

    private:
        std::size_t slots() const;
        std::uint64_t put(std::uint64_t hash, std::uint64_t row);
        void grow(std::size_t slots);

        std::vector<unsigned char> m_bytes;
        std::size_t m_count = 0;
    };

    static constexpr unsigned cPartBits = 12;

    std::vector<Part> m_parts = std::vector<Part>(std::size_t{1} << cPartBits);
    std::size_t m_expected = 0;  ///< slots of a part
};

}  // namespace tessalink::cli
