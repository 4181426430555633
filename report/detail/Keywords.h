#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/base/TextHash.h"
#include "report/Token.h"
#include "report/detail/CharClasses.h"

namespace tessalink::detail {

/// The keywords in the order of their codes.
inline constexpr std::array<std::string_view, Token::cKeywordCount> cKeywords = {
    "IF",          "THEN",    "ENDIF",       "CALL",      "COMPUTE",        "LINK",
    "ID",          "INCLUDE", "DEFER_START", "DEFER_END", "PRINT_DEFERRED", "COMMENT",
    "COMMENT_END", "ELSE",    "DEFINE",      "LET",       "COMMA_LIST",     "CAP",
    "TEXT",        "EVAL"};

inline constexpr int cNoKeyword = -1;

/// Finds keywords by their first eight characters, whatever their case: a hash table without
/// collisions, made when this is compiled.
class KeywordTable {
public:
    consteval KeywordTable() {
        while (!fill()) m_factor = m_factor * cNextFactor + 2;
    }

    /// The code of the word, or cNoKeyword. `first` is what firstEight makes of it.
    int Find(std::string_view word, std::uint64_t first) const {
        const std::uint64_t folded = first & cFold;
        const Slot& slot = m_slots[SlotOf(folded)];
        if (slot.first != folded || slot.length != word.size()) return cNoKeyword;
        const bool found = word.size() <= cWhole || equalNoCase(word, cKeywords[slot.code]);
        return found ? slot.code : cNoKeyword;
    }

private:
    static constexpr std::uint64_t cFold = 0xDFDFDFDFDFDFDFDFu;  ///< small letters become capitals
    static constexpr std::uint64_t cNextFactor = 6364136223846793005u;
    static constexpr int cSlotBits = 7;
    static constexpr std::size_t cWhole = 8;

    struct Slot {
        std::uint64_t first = 0;
        std::uint8_t length = 0;
        std::uint8_t code = 0;
    };

    constexpr std::size_t SlotOf(std::uint64_t folded) const {
        return static_cast<std::size_t>((folded * m_factor) >> (64 - cSlotBits));
    }
    constexpr bool fill() {
        m_slots = {};
        for (std::size_t code = 0; code < cKeywords.size(); ++code) {
            const std::string_view word = cKeywords[code];
            std::uint64_t first = 0;
            for (std::size_t i = std::min(word.size(), cWhole); i > 0; --i) {
                first = first << 8 | static_cast<unsigned char>(word[i - 1]);
            }
            Slot& slot = m_slots[SlotOf(first & cFold)];
            if (slot.length != 0) return false;
            slot = {first & cFold, static_cast<std::uint8_t>(word.size()),
                    static_cast<std::uint8_t>(code)};
        }
        return true;
    }

    std::uint64_t m_factor = 1;
    std::array<Slot, std::size_t{1} << cSlotBits> m_slots;
};

inline constexpr KeywordTable cKeywordTable;

/// The code of a keyword, or cNoKeyword; case does not matter.
inline int findKeyword(std::string_view word) {
    return cKeywordTable.Find(word, firstEight(word));
}

}  // namespace tessalink::detail
