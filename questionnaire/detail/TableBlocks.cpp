#include "questionnaire/detail/TableBlocks.h"

#include <algorithm>
#include <optional>

#include "core/FileText.h"
#include "core/InputError.h"
#include "platform/files/CFile.h"
#include "questionnaire/detail/FieldText.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cNone = std::string_view::npos;

std::uint64_t countFeeds(std::string_view text) {
    return static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
}

/// Where the first line ends that is not within quotes: behind its line feed.
std::size_t lineEnd(std::string_view text) {
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        isQuoted = isQuoted != (text[i] == '"');
        if (text[i] == '\n' && !isQuoted) return i + 1;
    }
    return cNone;
}

bool isUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

bool isBlankRow(std::string_view row, char delimiter) {
    return std::all_of(row.begin(), row.end() - 1,
                       [delimiter](char ch) { return isBlank(ch, delimiter); });
}

/// Where a byte of a row stands whose start is in a line.
std::string placeIn(std::string_view row, std::size_t offset, std::uint64_t startLine) {
    const std::string_view before = row.substr(0, offset);
    return "line " + std::to_string(startLine + countFeeds(before)) + ", column " +
           std::to_string(offset - (before.rfind('\n') + 1) + 1);
}

}  // namespace

TableBlocks::TableBlocks(CFile& file, std::size_t blockSize)
    : m_file(file), m_blockSize(std::max<std::size_t>(blockSize, 1)) {
    while (m_text.size() < cByteOrderMark.size() && read_more()) {
    }
    if (isUtf16(m_text)) throw InputError(Place(), "the file is UTF-16: save it as UTF-8");
    if (m_text.starts_with(cByteOrderMark)) m_text.erase(0, cByteOrderMark.size());
    while (skip_blank_lines() && read_more()) {
    }
    if (m_text.empty()) {
        throw InputError(Place(), "the file is empty: its first line must name the columns");
    }
}

TextPlace TableBlocks::Place() const {
    return {m_file.GetGivenPath(), m_line, 1};
}

/// Appends a piece of the file; false at its end.
bool TableBlocks::read_more() {
    if (m_isAtEnd) return false;
    const std::size_t size = m_text.size();
    // Of a small file not a whole block is filled; of a pipe the length is not known.
    const std::uint64_t length = m_file.GetLength();
    const std::size_t wanted =
        length > 0 ? static_cast<std::size_t>(std::min<std::uint64_t>(m_blockSize, length))
                   : m_blockSize;
    m_text.resize(size + wanted);
    const std::size_t count = m_file.Read(m_text.data() + size, wanted);
    m_text.resize(size + count);
    m_isAtEnd = count == 0;
    return count > 0;
}

/// Drops lines without anything in them; true when nothing else has been read.
bool TableBlocks::skip_blank_lines() {
    const std::size_t used = m_text.find_first_not_of(" \t\r\n");
    const std::string_view blank = std::string_view(m_text).substr(0, used);
    m_line += countFeeds(blank);
    m_text.erase(0, used == cNone ? blank.size() : blank.rfind('\n') + 1);
    return used == cNone;
}

std::string_view TableBlocks::PeekHeader() {
    std::size_t end = lineEnd(m_text);
    while (end == cNone && m_text.size() < cMaxRow && read_more()) end = lineEnd(m_text);
    return std::string_view(m_text).substr(0, std::min(end, cMaxRow));
}

std::string TableBlocks::TakeHeader(char delimiter) {
    m_delimiter = delimiter;
    RowScanner scanner(delimiter);
    std::size_t end = cNone;
    do {
        const std::string_view fresh = std::string_view(m_text).substr(m_scanned);
        end = scanner.FindEnd(fresh);
        m_scanned += std::min(end, fresh.size());
    } while (end == cNone && m_text.size() < cMaxRow && read_more());
    if (end == cNone && (scanner.IsQuoted() || m_scanned >= cMaxRow)) {
        throw InputError(Place(), std::string_view(failure_of(m_text, m_line).reason));
    }
    std::string header = m_text.substr(0, m_scanned);
    m_text.erase(0, m_scanned);
    if (header.back() != '\n') header += '\n';
    m_line += countFeeds(header);
    m_scanned = 0;
    return header;
}

bool TableBlocks::ReadBlock(ResponseBlock& block) {
    block.firstRow = m_row;
    block.firstLine = m_line;
    block.failure.reset();
    m_rowStart = m_scanned = 0;
    m_isTooLong = false;
    RowScanner scanner(m_delimiter);
    bool isMore = true;
    while (isMore) {
        const std::size_t pending = take_rows(scanner);
        if (m_isTooLong || (m_rowStart > 0 && m_text.size() >= m_blockSize)) break;
        m_isTooLong = pending >= cMaxRow;
        isMore = !m_isTooLong && read_more();
    }
    if (!isMore && !m_isTooLong && m_rowStart < m_text.size() && !scanner.IsQuoted()) {
        m_text += '\n';
        take_rows(scanner);
    }
    const bool isFailure = m_isTooLong || (!isMore && m_rowStart < m_text.size());
    // What follows the rows is little: it moves, and they stay.
    block.bytes.assign(m_text, m_rowStart);
    block.bytes.swap(m_text);
    block.bytes.resize(m_rowStart);
    m_line += countFeeds(block.bytes);
    if (isFailure) add_failure(block, scanner);
    return !block.bytes.empty() || isFailure;
}

/// Moves behind all rows that end, up to one that is too long. Returns the length of what is left.
std::size_t TableBlocks::take_rows(RowScanner& scanner) {
    while (m_scanned < m_text.size()) {
        const std::string_view fresh = std::string_view(m_text).substr(m_scanned);
        const std::size_t length = scanner.FindEnd(fresh);
        m_scanned += std::min(length, fresh.size());
        if (length == cNone) break;
        m_isTooLong = m_scanned - m_rowStart > cMaxRow;
        if (m_isTooLong) break;
        count_row(std::string_view(m_text).substr(m_rowStart, m_scanned - m_rowStart));
        m_rowStart = m_scanned;
    }
    return m_text.size() - m_rowStart;
}

void TableBlocks::count_row(std::string_view row) {
    if (isBlank(row.front(), m_delimiter) || row.front() == '\n') {
        if (isBlankRow(row, m_delimiter)) return;
    }
    ++m_row;
}

/// Ends the block by a row that is too long or in a quote at the end of the file.
void TableBlocks::add_failure(ResponseBlock& block, RowScanner& scanner) {
    m_scanned -= m_rowStart;
    block.failure = failure_of(std::string_view(m_text).substr(0, cMaxRow), m_line);
    ++m_row;
    const bool isEnded = m_text[m_scanned - 1] == '\n' && !scanner.IsQuoted();
    m_line += countFeeds(std::string_view(m_text).substr(0, m_scanned));
    m_text.erase(0, m_scanned);
    m_scanned = 0;
    if (!isEnded) skip_row(scanner);
}

/// Reads on to the end of the row.
bool TableBlocks::skip_row(RowScanner& scanner) {
    for (;;) {
        const std::size_t length = scanner.FindEnd(m_text);
        const std::size_t skipped = std::min(length, m_text.size());
        m_line += countFeeds(std::string_view(m_text).substr(0, skipped));
        m_text.erase(0, skipped);
        if (length != cNone) return true;
        if (!read_more()) return false;
    }
}

/// What is wrong with a row, by its start.
RowFailure TableBlocks::failure_of(std::string_view start, std::uint64_t startLine) const {
    const std::string_view row = start.substr(0, cMaxRow);
    const bool isTooLong = start.size() >= cMaxRow;
    const std::string limit = std::to_string(cMaxRow) + " bytes";
    RowScanner scanner(m_delimiter);
    scanner.FindEnd(row);
    if (!scanner.IsQuoted()) {
        return {"", shortened(row), "the row has more than " + limit + ": shorten it"};
    }
    const std::size_t quote = findOpenQuote(row, m_delimiter);
    return {"", shortened(row.substr(quote)),
            "the quote that opens in " + placeIn(row, quote, startLine) + " is not closed" +
                (isTooLong ? " within " + limit : "") + ": add one"};
}

}  // namespace tessalink::detail
