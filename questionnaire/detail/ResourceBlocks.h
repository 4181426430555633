#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "core/TextPlace.h"
#include "questionnaire/ResponseSource.h"

class CFile;

namespace tessalink::detail {

/// Cuts a file into FHIR resources. When its first line is a resource as a whole, every line is
/// one; otherwise the file is one JSON text, a Bundle or a single resource, and is read whole.
class ResourceBlocks {
public:
    explicit ResourceBlocks(CFile& file);

    /// The same as that of ResponseSource. A block of a Bundle is one resource.
    bool ReadBlock(ResponseBlock& block);
    /// Whether every line is a resource.
    bool HasLines() const { return m_hasLines; }
    /// How many entries of a Bundle are of other types.
    std::size_t OtherEntries() const { return m_otherEntries; }

private:
    struct Piece {
        std::size_t start;
        std::size_t end;
        std::uint64_t line;
    };

    bool read_more();
    void read_first_line();
    std::string_view line_at(std::size_t start);
    void read_document();
    bool read_lines(ResponseBlock& block);

    CFile& m_file;
    std::string m_text;  ///< what was read and is in no block yet, or the whole document
    bool m_isAtEnd = false;
    bool m_hasLines = false;
    std::uint64_t m_row = 1;
    std::uint64_t m_line = 1;
    std::deque<Piece> m_pieces;  ///< of the document
    std::size_t m_otherEntries = 0;
};

/// Whether a line has nothing in it.
bool isBlankLine(std::string_view line);

}  // namespace tessalink::detail
