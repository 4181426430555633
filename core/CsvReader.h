#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/InputError.h"
#include "core/TextPlace.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CFile;

namespace tessalink {

/// A cell of a CSV file.
struct CsvCell {
    CString text;              ///< without the quotes around it, blanks included
    std::uint64_t line = 0;    ///< where it starts, at its quote when it is quoted; from 1
    std::uint64_t column = 0;  ///< in bytes of the file, from 1
};

/// Reads comma-separated values (RFC 4180) in UTF-8, with a header that names the columns.
///
/// A cell that holds a separator, a quote or a line end stands in quotes, a quote in it doubled.
/// Lines end in LF or CR LF. Blank lines, rows of empty cells, lines that start with "#" and rows
/// whose first cell does (a spreadsheet puts a comment with a comma in it into quotes) are skipped.
/// A byte order mark is skipped; columns count from behind it. Cells are parted by semicolons
/// instead when the header has one and no comma.
///
/// Every fault is an InputError with its place that says what to do: a file of more than
/// cMaxFileSize bytes or cMaxColumns columns, no header, malformed UTF-8, a character that
/// the code page lacks (where cells are to be in it), a NUL, a quote that is not closed or inside a
/// cell without quotes, text behind a closing quote, a CR without LF, a row with more or fewer
/// cells than the header. After one the reader is of no more use.
class TESSALINK_API CsvReader {
public:
    /// 16 MiB: no norm table needs more.
    static constexpr std::size_t cMaxFileSize = std::size_t{16} << 20;
    static constexpr std::size_t cMaxColumns = 1000;  ///< the most columns of a file

    /// What the texts of cells are in.
    enum class Text { CodePage, Utf8 };

    /// Reads the whole file, from its position on, and parses the header. The file is not needed
    /// any more afterwards. CFileException passes through.
    explicit CsvReader(CFile& file, Text text = Text::CodePage);

    /// The cells of the header: one at least.
    const std::vector<CsvCell>& GetHeader() const { return m_header; }

    /// Makes `row` the cells of the next row, as many as the header has. False at the end, with
    /// `row` emptied.
    bool ReadRow(std::vector<CsvCell>& row);

    /// The file as it was named when it was opened.
    const CString& GetFile() const { return m_file; }
    /// Where a cell stands, for an InputError about it.
    TextPlace PlaceOf(const CsvCell& cell) const { return {m_file, cell.line, cell.column}; }

private:
    bool take_used_row(std::vector<CsvCell>& row);
    void take_row(std::vector<CsvCell>& row);
    CsvCell take_cell();
    void take_plain(std::string& text);
    void take_quoted(std::string& text);
    void take_piece(std::size_t end, std::string& text);
    void take_line_end();
    void advance(std::size_t end);
    bool is_at(char ch) const { return m_next < m_text.size() && m_text[m_next] == ch; }
    bool is_at_end() const { return m_next == m_text.size(); }
    TextPlace place() const { return {m_file, m_line, m_next - m_lineStart + 1}; }
    [[noreturn]] void fail(std::string_view message) const { throw InputError(place(), message); }

    CString m_file;
    std::string m_text;
    Text m_cellText;
    std::size_t m_next = 0;  ///< what is looked at
    std::size_t m_lineStart = 0;
    std::uint64_t m_line = 1;
    char m_separator = ',';
    std::vector<CsvCell> m_header;
};

}  // namespace tessalink
