#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/TextPlace.h"
#include "questionnaire/ResponseSource.h"
#include "questionnaire/detail/RowScanner.h"

class CFile;

namespace tessalink::detail {

/// Reads a table piece by piece, and cuts it into its header and blocks of whole rows. It holds a
/// block and a row at the most.
class TableBlocks {
public:
    /// The longest row, in bytes with its line end.
    static constexpr std::size_t cMaxRow = std::size_t{1} << 20;

    /// Moves to the first line that has something in it.
    TableBlocks(CFile& file, std::size_t blockSize);

    /// The header as far as can be told without its delimiter.
    std::string_view PeekHeader();
    /// The header's row with a line feed behind it.
    std::string TakeHeader(char delimiter);
    TextPlace Place() const;

    /// The same as that of ResponseSource, once the header is taken.
    bool ReadBlock(ResponseBlock& block);

private:
    bool read_more();
    bool skip_blank_lines();
    std::size_t take_rows(RowScanner& scanner);
    void count_row(std::string_view row);
    void add_failure(ResponseBlock& block, RowScanner& scanner);
    bool skip_row(RowScanner& scanner);
    RowFailure failure_of(std::string_view start, std::uint64_t startLine) const;

    CFile& m_file;
    std::size_t m_blockSize;
    std::string m_text;  ///< what was read and is in no block yet; a row starts there
    bool m_isAtEnd = false;
    char m_delimiter = ',';
    std::uint64_t m_line = 1;
    std::uint64_t m_row = 1;
    std::size_t m_rowStart = 0;  ///< of the row that is looked at
    std::size_t m_scanned = 0;
    bool m_isTooLong = false;  ///< the row at m_rowStart
};

}  // namespace tessalink::detail
