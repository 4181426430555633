#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "report/tidy/detail/RtfWords.h"

class CFile;

namespace tessalink::detail {

/// A piece of RTF, and what it is to one who reads the page.
struct RtfPiece {
    enum class Kind : std::uint8_t {
        text,           ///< shown characters; line ends among them are not shown
        command,        ///< a shown "@"
        character,      ///< one shown character that is written otherwise
        open,           ///< "{"
        close,          ///< "}"
        markup,         ///< formatting
        invisible,      ///< a character by its number that has no width
        hidden,         ///< what is not shown
        hiddenCommand,  ///< an "@" there
        fallback,       ///< what stands for the character before it, in older readers
        lineBreak,      ///< the end of a line, a paragraph, a cell, a page
        flow,           ///< where a text of its own begins or ends: a header, a footnote
        end,            ///< the end of the file, all groups closed
        cut,            ///< the end of the file inside a group
        unopened        ///< a "}" too many
    };

    Kind kind = Kind::end;
    char typed = '\0';               ///< of a character: the key that types it; 0 for none
    bool isMark = false;             ///< of a "\\par": it ends as one must that a command swallows
    bool isUnicode = false;          ///< it is a character by its number
    std::uint16_t unicodeCount = 1;  ///< how many characters stand for such a one here
    std::string_view raw;     ///< as it stands in the file; valid until the next piece is read
    std::uint64_t first = 0;  ///< its offset
};

/// The key that types a character of the code page; 0 for none.
char keyOfByte(char byte);

/// Cuts RTF into pieces. It keeps one block of the file and the state of each open group; groups
/// deeper than cMaxGroups are counted, and nothing in them is shown.
class RtfReader {
public:
    static constexpr std::size_t cMaxGroups = 65536;
    /// Of a control word; what is longer is text.
    static constexpr std::size_t cMaxLetters = 32;
    static constexpr std::size_t cMaxDigits = 10;

    /// Reads the file, which must be open and outlive the reader, from its start; its offset is the
    /// reader's. CFileException passes through.
    explicit RtfReader(CFile& file);

    const RtfPiece& Next();
    /// All pieces up to the next "@", or to the end of the block, as one of markup; the next piece
    /// when there are none.
    const RtfPiece& NextRun();
    /// Reads the last `count` bytes of a text once more.
    void GiveBack(std::size_t count) { m_next -= count; }
    /// Whether some groups were too deep.
    bool WasTooDeep() const { return m_wasTooDeep; }

private:
    static constexpr std::size_t cBlockSize = std::size_t{1} << 18;
    static constexpr std::size_t cSmallBlockSize = std::size_t{1} << 16;  ///< for short files
    static constexpr std::size_t cLongestToken = 64;  ///< letters, number and delimiter of a word
    static constexpr std::size_t cSlack = 16;

    struct Group {
        std::uint16_t unicodeCount = 1;
        bool isHidden = false;
        bool isDeleted = false;
        bool isFlow = false;
        bool isStarred = false;  ///< behind "\*": the next word hides it, unless it is a text's
    };

    /// A control word.
    struct Control {
        std::string_view name;
        bool hasNumber = false;
        int number = 0;
    };

    void fill();
    bool is_run() const;
    const RtfPiece& read();
    bool is_hidden() const {
        return m_tooDeep > 0 || m_groups.back().isHidden || m_groups.back().isDeleted;
    }
    const RtfPiece& finish(RtfPiece::Kind kind, std::size_t end, char typed = '\0');
    const RtfPiece& finish_shown(RtfPiece::Kind kind, std::size_t end, char typed = '\0');
    const RtfPiece& read_text();
    const RtfPiece& read_at();
    const RtfPiece& read_open();
    const RtfPiece& read_close();
    const RtfPiece& read_end();
    const RtfPiece& read_binary();
    const RtfPiece& read_control();
    const RtfPiece& read_symbol(char symbol);
    const RtfPiece& read_hex();
    const RtfPiece& read_word();
    const RtfPiece& finish_word(const Control& control, std::size_t end);
    const RtfPiece& finish_special(const RtfWord& word, const Control& control, std::size_t end);
    const RtfPiece& finish_unicode(int number, std::size_t end);
    /// Whether the word opens a destination.
    static bool enter(RtfRole role, Group& group);

    CFile& m_file;
    std::vector<char> m_block;  ///< with NULs behind m_end
    std::uint64_t m_blockStart = 0;
    std::size_t m_next = 0;
    std::size_t m_end = 0;
    bool m_isLast = false;  ///< nothing follows the block
    std::vector<Group> m_groups{Group{}};
    std::uint64_t m_tooDeep = 0;  ///< open groups beyond cMaxGroups
    bool m_wasTooDeep = false;
    std::uint64_t m_binary = 0;    ///< bytes that are still to come
    std::uint32_t m_fallback = 0;  ///< characters, likewise
    RtfPiece m_piece;
};

}  // namespace tessalink::detail
