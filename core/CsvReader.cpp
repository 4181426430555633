#include "core/CsvReader.h"

#include <algorithm>

#include "core/FileText.h"
#include "platform/base/CodePage.h"
#include "platform/base/Utf8.h"
#include "platform/files/CFile.h"

namespace tessalink {

namespace {

constexpr char cComment = '#';
constexpr char cQuote = '"';

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char ch) { return static_cast<unsigned char>(ch) < 0x80; });
}

bool isSkipped(const std::vector<CsvCell>& row) {
    return row.front().text.View().starts_with(cComment) ||
           std::all_of(row.begin(), row.end(), [](const CsvCell& cell) {
               return cell.text.View().find_first_not_of(" \t") == std::string_view::npos;
           });
}

char separatorOf(std::string_view header) {
    const bool isBySemicolon =
        header.find(';') != std::string_view::npos && header.find(',') == std::string_view::npos;
    return isBySemicolon ? ';' : ',';
}

}  // namespace

CsvReader::CsvReader(CFile& file, Text text)
    : m_file(file.GetGivenPath()), m_text(readText(file, cMaxFileSize)), m_cellText(text) {
    if (m_text.size() > cMaxFileSize) {
        fail("the file has more than " + std::to_string(cMaxFileSize) + " bytes: split it");
    }
    if (m_text.starts_with(cByteOrderMark)) m_lineStart = m_next = cByteOrderMark.size();
    if (!take_used_row(m_header)) fail("the file is empty: its first line must name the columns");
}

bool CsvReader::ReadRow(std::vector<CsvCell>& row) {
    if (!take_used_row(row)) return false;
    if (row.size() == m_header.size()) return true;
    CString message;
    message.Format("the row has %d cells, but the header %d: add or remove some",
                   static_cast<int>(row.size()), static_cast<int>(m_header.size()));
    const CsvCell& wrong = row[std::min(row.size() - 1, m_header.size())];
    throw InputError(PlaceOf(wrong), message);
}

bool CsvReader::take_used_row(std::vector<CsvCell>& row) {
    for (;;) {
        row.clear();
        while (is_at(cComment)) advance(std::min(m_text.find('\n', m_next), m_text.size() - 1) + 1);
        if (is_at_end()) return false;
        if (m_header.empty()) {
            const std::size_t end = m_text.find('\n', m_next);
            m_separator = separatorOf(std::string_view(m_text).substr(m_next, end - m_next));
        }
        take_row(row);
        if (!isSkipped(row)) return true;
    }
}

void CsvReader::take_row(std::vector<CsvCell>& row) {
    row.push_back(take_cell());
    while (is_at(m_separator)) {
        advance(m_next + 1);
        if (row.size() == cMaxColumns)
            fail("more than " + std::to_string(cMaxColumns) + " columns: remove some");
        row.push_back(take_cell());
    }
    take_line_end();
}

CsvCell CsvReader::take_cell() {
    const TextPlace start = place();
    std::string text;
    if (is_at(cQuote)) {
        take_quoted(text);
    } else {
        take_plain(text);
    }
    return {CString(std::move(text)), start.line, start.column};
}

void CsvReader::take_plain(std::string& text) {
    const char ends[] = {m_separator, '\r', '\n', cQuote};
    const std::size_t end = m_text.find_first_of(ends, m_next, sizeof ends);
    take_piece(std::min(end, m_text.size()), text);
    if (is_at(cQuote)) {
        fail("a quote inside a cell: put the whole cell into quotes and double the quotes in it");
    }
}

void CsvReader::take_quoted(std::string& text) {
    const TextPlace start = place();
    advance(m_next + 1);
    for (;;) {
        const std::size_t end = m_text.find(cQuote, m_next);
        if (end == std::string::npos) {
            throw InputError(start, "the quote that opens here is not closed: add one");
        }
        take_piece(end, text);
        advance(m_next + 1);
        if (!is_at(cQuote)) break;
        text += cQuote;
        advance(m_next + 1);
    }
    if (!is_at_end() && !is_at(m_separator) && !is_at('\r') && !is_at('\n')) {
        fail("text behind the closing quote: move it inside, with the quotes in it doubled");
    }
}

/// Moves to `end` and appends what lies before it.
void CsvReader::take_piece(std::size_t end, std::string& text) {
    const std::string_view piece = std::string_view(m_text).substr(m_next, end - m_next);
    const std::size_t nul = piece.find('\0');
    const CodePageText converted = isAscii(piece) ? CodePageText{std::string(piece)}
                                   : m_cellText == Text::Utf8
                                       ? CodePageText{std::string(piece), findMalformedUtf8(piece)}
                                       : fromUtf8(piece);
    if (const std::size_t fault = std::min(nul, converted.fault); fault != std::string::npos) {
        advance(m_next + fault);
        if (fault == nul) fail("a NUL byte: save the file as UTF-8, without any");
        std::string_view wrong = piece.substr(fault);
        fail(takeUtf8(wrong) ? notInCodePage() : cNoUtf8);
    }
    advance(end);
    text += converted.text;
}

void CsvReader::take_line_end() {
    if (is_at('\r')) {
        if (m_text.compare(m_next, 2, "\r\n") != 0) {
            fail("a carriage return without a line feed: end the lines in LF or CR LF");
        }
        advance(m_next + 1);
    }
    if (!is_at_end()) advance(m_next + 1);
}

/// Moves to `end`, which is not before the present position, and counts the lines.
void CsvReader::advance(std::size_t end) {
    for (; m_next < end; ++m_next) {
        if (m_text[m_next] != '\n') continue;
        ++m_line;
        m_lineStart = m_next + 1;
    }
}

}  // namespace tessalink
