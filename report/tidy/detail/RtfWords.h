#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

// The control words of RTF that decide what is shown. All others are formatting.
namespace tessalink::detail {

enum class RtfRole : std::uint8_t {
    formatting,
    hidden,        ///< a destination that is not shown
    flow,          ///< a destination that is shown, a text of its own: a header, a footnote
    character,     ///< one character
    lineBreak,     ///< the end of a line, a paragraph, a cell, a page
    unicode,       ///< a character by its number
    unicodeCount,  ///< how many characters stand for one that older readers don't know
    binary,        ///< bytes that are no RTF
    deleted        ///< text that a revision removes
};

struct RtfWord {
    std::string_view name;
    RtfRole role = RtfRole::formatting;
    char typed = '\0';  ///< of a character: the key that types it; 0 for none
};

inline constexpr RtfWord cRtfWords[] = {
    {"fonttbl", RtfRole::hidden},
    {"colortbl", RtfRole::hidden},
    {"stylesheet", RtfRole::hidden},
    {"info", RtfRole::hidden},
    {"listtable", RtfRole::hidden},
    {"listoverridetable", RtfRole::hidden},
    {"filetbl", RtfRole::hidden},
    {"pict", RtfRole::hidden},
    {"nonshppict", RtfRole::hidden},
    {"nonesttables", RtfRole::hidden},
    {"objdata", RtfRole::hidden},
    {"fldinst", RtfRole::hidden},
    {"formfield", RtfRole::hidden},
    {"datafield", RtfRole::hidden},
    {"listtext", RtfRole::hidden},
    {"pntext", RtfRole::hidden},
    {"pntxta", RtfRole::hidden},
    {"pntxtb", RtfRole::hidden},
    {"sp", RtfRole::hidden},
    {"tc", RtfRole::hidden},
    {"xe", RtfRole::hidden},
    {"template", RtfRole::hidden},
    {"header", RtfRole::flow},
    {"headerl", RtfRole::flow},
    {"headerr", RtfRole::flow},
    {"headerf", RtfRole::flow},
    {"footer", RtfRole::flow},
    {"footerl", RtfRole::flow},
    {"footerr", RtfRole::flow},
    {"footerf", RtfRole::flow},
    {"footnote", RtfRole::flow},
    {"shptxt", RtfRole::flow},
    {"shprslt", RtfRole::flow},
    {"dptxbxtext", RtfRole::flow},
    {"endash", RtfRole::character, '-'},
    {"emdash", RtfRole::character, '-'},
    {"lquote", RtfRole::character, '\''},
    {"rquote", RtfRole::character, '\''},
    {"ldblquote", RtfRole::character, '"'},
    {"rdblquote", RtfRole::character, '"'},
    {"tab", RtfRole::character, '\t'},
    {"enspace", RtfRole::character, ' '},
    {"emspace", RtfRole::character, ' '},
    {"qmspace", RtfRole::character, ' '},
    {"bullet", RtfRole::character},
    {"chpgn", RtfRole::character},
    {"chdate", RtfRole::character},
    {"chdpl", RtfRole::character},
    {"chdpa", RtfRole::character},
    {"chtime", RtfRole::character},
    {"chftn", RtfRole::character},
    {"chatn", RtfRole::character},
    {"sectnum", RtfRole::character},
    {"par", RtfRole::lineBreak},
    {"line", RtfRole::lineBreak},
    {"lbr", RtfRole::lineBreak},
    {"cell", RtfRole::lineBreak},
    {"row", RtfRole::lineBreak},
    {"nestcell", RtfRole::lineBreak},
    {"nestrow", RtfRole::lineBreak},
    {"page", RtfRole::lineBreak},
    {"column", RtfRole::lineBreak},
    {"sect", RtfRole::lineBreak},
    {"u", RtfRole::unicode},
    {"uc", RtfRole::unicodeCount},
    {"bin", RtfRole::binary},
    {"deleted", RtfRole::deleted},
};

/// Finds the words by a hash table that is made when this is compiled.
class RtfWordTable {
public:
    consteval RtfWordTable() {
        for (const RtfWord& word : cRtfWords) {
            std::size_t slot = SlotOf(word.name);
            while (!m_slots[slot].name.empty()) slot = (slot + 1) % cSlots;
            m_slots[slot] = word;
            m_lengths[FirstOf(word.name)] |= 1ull << word.name.size();
        }
    }

    /// The word of that name, of at most 32 letters; one without a name, which is formatting, for
    /// all others.
    const RtfWord& Find(std::string_view name) const {
        if ((m_lengths[FirstOf(name)] >> name.size() & 1) == 0) return m_formatting;
        std::size_t slot = SlotOf(name);
        while (!m_slots[slot].name.empty() && m_slots[slot].name != name) {
            slot = (slot + 1) % cSlots;
        }
        return m_slots[slot];
    }

private:
    static constexpr std::size_t cSlots = 512;
    static constexpr std::size_t cLetters = 32;

    static constexpr std::size_t SlotOf(std::string_view name) {
        const auto at = [&](std::size_t i) { return static_cast<unsigned char>(name[i]); };
        return (at(0) * 7u + at(name.size() / 2) * 31u + at(name.size() - 1) * 13u +
                name.size() * 67u) %
               cSlots;
    }

    static constexpr std::size_t FirstOf(std::string_view name) {
        return static_cast<unsigned char>(name.front()) % cLetters;
    }

    std::array<std::uint64_t, cLetters>
        m_lengths{};  ///< of the words that begin with a letter, as bits
    RtfWord m_formatting;
    std::array<RtfWord, cSlots> m_slots;
};

inline constexpr RtfWordTable cRtfWordTable;

}  // namespace tessalink::detail
