#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "questionnaire/detail/ByteWord.h"

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
    /// The table of these texts as cells that stand in a file: plain and in quotes.
    CellTable AsWritten() const;
    /// The same for the bytes of a word, and zeros behind them.
    Value FindShort(ByteWord key, std::size_t length) const {
        std::size_t place = placeOf(key, length) & m_mask;
        while (m_slots[place].length != length || m_slots[place].key != key) {
            if (m_slots[place].length == cFree) return cUnknown;
            place = (place + 1) & m_mask;
        }
        return m_slots[place].value;
    }

private:
    static constexpr std::size_t cFree = std::string_view::npos;

    struct Slot {
        ByteWord key = 0;
        std::size_t length = cFree;
        Value value = cUnknown;
        std::string text;
    };

    static ByteWord keyOf(std::string_view text);
    static std::size_t placeOf(ByteWord key, std::size_t length) {
        constexpr ByteWord spread = 0xD6E8FEB86659FD93;
        constexpr int topHalf = 32;
        return static_cast<std::size_t>(((key + length) * spread) >> topHalf);
    }
    Slot& slot_of(std::string_view text);
    void grow();

    std::vector<Slot> m_slots;  ///< as many as a power of two
    std::size_t m_mask;
    std::size_t m_used = 0;
};

}  // namespace tessalink::detail
