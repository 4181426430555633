#pragma once

#include <string>
#include <string_view>

namespace tessalink::detail {

constexpr char cCellQuote = '"';

/// A cell of a table, as it stands there but for the quotes around it.
struct Cell {
    std::string_view text;
    bool isQuoted = false;
    bool hasTextBehindQuote = false;
    std::size_t lineFeeds = 0;  ///< in quotes
};

/// Takes cells off rows whose quotes are closed and whose last character is a line feed.
class CellReader {
public:
    explicit CellReader(char delimiter) : m_delimiter(delimiter) {}

    /// Makes `cell` the one that starts at `text`, which ends at `end`, and returns where the
    /// delimiter or line feed behind it stands. The cell lasts until the next one is taken.
    const char* Take(const char* text, const char* end, Cell& cell);

    /// Where the first delimiter or line feed stands.
    const char* FindEnd(const char* text, const char* end) const;
    bool IsEnd(char ch) const { return ch == m_delimiter || ch == '\n'; }

private:
    const char* take_quoted(const char* text, const char* end, Cell& cell);

    char m_delimiter;
    std::string m_unquoted;  ///< of a cell with quotes in it
};

}  // namespace tessalink::detail
