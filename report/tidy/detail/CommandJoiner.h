#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "report/Token.h"
#include "report/detail/Keywords.h"
#include "report/tidy/detail/RtfReader.h"

namespace tessalink::detail {

/// Names of variables, found without making strings.
using NameSet = std::set<std::string, std::less<>>;

/// Takes the pieces of one command after another, from its "@" on, and puts each together. What it
/// has taken it gives back as text once it knows where the command ends.
class CommandJoiner {
public:
    /// What a command came to.
    struct Result {
        std::uint64_t first = 0;      ///< its offset in the file
        std::string_view text;        ///< the command, as it is written now
        bool isJoined = false;        ///< markup stood in it
        bool isRetyped = false;       ///< characters of it became the keys that were pressed
        const char* fault = nullptr;  ///< why it was left as it is; null if it was not
        bool isAmbiguous = false;     ///< its name was parted by markup
        bool isSplit = false;         ///< its name ends where markup follows, as the names told
    };
    using ResultListener = std::function<void(const Result&)>;
    /// Gives the names of variables when they are needed, that are known or at least this one; null
    /// for none.
    using NameSource = std::function<const NameSet*(std::string_view)>;

    /// `names` decides where a name ends that markup parts.
    CommandJoiner(NameSource names, ResultListener listener);

    bool IsOpen() const { return m_state != State::closed; }
    /// Begins a command at its "@", and takes it. None may be open.
    void Begin(const RtfPiece& piece);
    /// Takes a piece, or the first characters of a text; how many of its bytes. When they are not
    /// all, the command is closed.
    std::size_t Take(const RtfPiece& piece);
    /// What was taken, commands put together. No command may be open; it is forgotten by the next
    /// Begin.
    const std::string& Output() const { return m_output; }

private:
    enum class State : std::uint8_t {
        closed,
        start,           // behind the "@"
        word,            // in the word behind it
        parenthesis,     // where "(" must come
        arguments,       // within parentheses
        constant,        // within brackets
        constantEnd,     // behind "]", which may be doubled
        fileName,        // within the brackets of @INCLUDE
        identification,  // within the parentheses of @ID
        link,            // where an "@" may continue the statement: that of @THEN
        linkStart,       // behind that "@"
        linkWord,        // in the word behind it
        swallow,         // where white space is swallowed
        complete,        // nothing but "{}" can belong to it
        brace,           // behind a "{" that was typed
        ended            // nothing can
    };
    /// Lengths of what was taken up to a place, and what was done up to there.
    struct Mark {
        std::size_t raw = 0;
        std::size_t text = 0;
        std::size_t markup = 0;
        int joints = 0;
        int retyped = 0;
    };
    /// A place in a word where markup stands.
    struct Seam {
        Mark mark;
        std::size_t length = 0;  ///< of the word before it
    };
    /// A shown character: the key that types it, 0 for none, and how it is written.
    struct Char {
        char typed = '\0';
        std::string_view raw;

        bool IsRetyped() const { return raw.size() != 1 || raw.front() != typed; }
    };
    using Step = bool (CommandJoiner::*)(const Char&);
    static const Step cSteps[];

    // Each step takes a character, or refuses it because the command has ended before.
    bool take_char(const Char& ch) { return (this->*cSteps[static_cast<int>(m_state)])(ch); }
    bool take_none(const Char&) { return false; }
    bool take_start(const Char& ch);
    bool take_word(const Char& ch);
    bool take_parenthesis(const Char& ch);
    bool take_argument(const Char& ch);
    bool take_constant(const Char& ch);
    bool take_constant_end(const Char& ch);
    bool take_file_name(const Char& ch);
    bool take_identification(const Char& ch);
    bool take_link(const Char& ch);
    bool take_link_start(const Char& ch);
    bool take_link_word(const Char& ch);
    bool take_swallowed(const Char& ch);
    bool take_complete(const Char& ch);
    bool take_brace(const Char& ch);

    // The same for pieces.
    bool take_piece(const RtfPiece& piece);
    bool take_character(const RtfPiece& piece);
    std::size_t take_text(std::string_view text);
    bool take_markup(const RtfPiece& piece);
    bool take_empty_group(std::string_view raw);
    bool take_invisible(const RtfPiece& piece);
    bool take_fallback(std::string_view raw);
    bool take_line_break(const RtfPiece& piece);
    bool take_boundary(const RtfPiece& piece);
    bool take_verbatim(std::string_view raw);
    bool take_paragraph_mark(std::string_view raw);

    void start_word(State state, const Char& ch);
    bool grow_word(const Char& ch);
    void finish_word();
    void finish_variable();
    void finish_link();
    void finish_arguments();
    bool split(Token::Keyword keyword);
    const Seam* find_seam(const NameSet& names) const;
    void end_here(State next);
    bool fail(const char* fault);

    void append(const Char& ch, bool keepsSpelling = false);
    void settle_tail(char next);
    void add_raw(std::string_view raw);
    void pass_char(std::string_view raw);
    Mark mark() const;
    std::string_view current_word() const { return std::string_view(m_text).substr(m_wordStart); }
    bool is_within() const;
    bool lacks_fallback() const;
    bool is_before() const;
    bool ends_at_empty_group() const;

    void close();
    void close_off(const char* fault);
    void emit(const Mark& end);
    void tell(std::string_view text, const Mark& end);
    void rebase();

    NameSource m_names;
    ResultListener m_listener;
    State m_state = State::closed;
    std::uint64_t m_first = 0;
    std::string m_raw;             ///< all that was taken
    std::string m_text;            ///< the characters of the command
    std::string m_markup;          ///< what stood between them
    std::string m_tail;            ///< what stands behind the last of them
    bool m_tailParts = false;      ///< the tail holds more than line ends
    bool m_tailIsGroup = false;    ///< the tail is a "{"
    bool m_isAfterData = false;    ///< the last piece is binary data, whatever its bytes look like
    bool m_lastIsRetyped = false;  ///< the last character is written as its key
    std::size_t m_charEnd = 0;     ///< in m_raw: behind the last character
    int m_joints = 0;
    int m_retyped = 0;
    int m_unicodeCount = 0;  ///< how many characters stand for one by its number, at the "@"
    int m_fallback = 0;      ///< how many are still to come
    bool m_isFallbackKept = false;
    Mark m_end;             ///< where the command ends, as far as is known
    bool m_isBare = false;  ///< nothing was swallowed behind that
    Mark m_linkStart;
    std::vector<Seam> m_seams;
    std::size_t m_wordStart = 0;
    std::size_t m_argumentWord = 0;  ///< in m_text: the word behind an "@" among the arguments; 0
    int m_keyword = cNoKeyword;
    const char* m_fault = nullptr;
    int m_groups = 0;        ///< that were opened in a constant and not closed
    int m_depth = 0;         ///< of parentheses
    bool m_follows = false;  ///< directly follows a deferred block
    bool m_isAmbiguous = false;
    bool m_isSplit = false;
    bool m_isComment = false;  ///< between @COMMENT and @COMMENT_END
    std::string m_output;
};

}  // namespace tessalink::detail
