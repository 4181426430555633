#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace tessalink::detail {

/// What the cells of a column stand for: a small table of texts, made once and looked up often.
class CellTable {
public:
    /// A number that an answer can be, or one of these.
    using Value = std::int64_t;
    static constexpr Value cMissing = std::numeric_limits<Value>::min();
    static constexpr Value cUnknown = cMissing + 1;

    CellTable();

    /// Adds a text; one that is there stays as it is, and the result is false.
    bool Add(std::string_view text, Value value);

    Value Find(std::string_view text) const;
    /// The same for a text of one letter or digit of ASCII; unknown for other characters.
    Value FindCharacter(char ch) const { return m_characters[static_cast<unsigned char>(ch)]; }

private:
    struct Slot {
        std::uint64_t key = 0;
        Value value = cUnknown;
        std::string text;
        bool isUsed = false;
    };

    std::size_t slot_of(std::string_view text) const;
    void grow();

    std::array<Value, 256> m_characters{};
    std::vector<Slot> m_slots;
    std::size_t m_used = 0;
};

}  // namespace tessalink::detail
