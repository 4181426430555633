#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessalink::detail {

/// Finds where rows of a table end: at line feeds outside of quotes. A quote opens at the start of
/// a cell only; in quotes, two stand for one; what follows a closing quote up to the delimiter is
/// plain. The scanner goes on over pieces of a text, wherever these are cut.
class RowScanner {
public:
    explicit RowScanner(char delimiter) : m_delimiter(delimiter) {}

    /// The length of the text up to and with the end of its first row, where the next one starts;
    /// npos when the text ends before that.
    std::size_t FindEnd(std::string_view text);
    /// Whether a quote is open at the end of what was scanned.
    bool IsQuoted() const { return m_state == State::Quoted; }

private:
    enum class State : std::uint8_t { CellStart, Plain, Quoted, MaybeClosed };

    bool step(char ch);
    std::size_t step_bytes(std::string_view text, std::size_t offset, std::size_t end);
    std::size_t find_end_by_words(std::string_view text);
    std::size_t scan_word(std::string_view text, std::size_t offset);
    State state_after(char ch) const;

    char m_delimiter;
    State m_state = State::CellStart;
};

/// Where the quote stands that is still open at the end of a row's start.
std::size_t findOpenQuote(std::string_view text, char delimiter);

/// Rows that hold nothing but these before their line end are none.
inline bool isBlank(char ch, char delimiter) {
    return ch == ' ' || ch == '\t' || ch == '\r' || ch == delimiter;
}

}  // namespace tessalink::detail
