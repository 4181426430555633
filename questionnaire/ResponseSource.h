#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/base/Export.h"
#include "questionnaire/Respondent.h"

namespace tessalink {

/// Why a respondent can't be taken.
struct RowFailure {
    std::string column;  ///< UTF-8, as the table names it; empty when it is the row as a whole
    std::string value;   ///< UTF-8, the cell; may be shortened
    std::string reason;  ///< what is wrong and what to do
};

/// One respondent of a table, or why there is none.
struct RespondentRow {
    std::uint64_t number = 0;           ///< of the respondent in the source, from 1
    std::uint64_t line = 0;             ///< where it starts, from 1
    Respondent respondent;              ///< its id, if it has one, even after a failure
    std::vector<std::string> carried;   ///< the cells of carried columns, UTF-8
    std::optional<RowFailure> failure;  ///< nothing when there is a respondent
};

/// A piece of a source: whole rows, not parsed yet.
struct ResponseBlock {
    std::string bytes;            ///< each row with its line end
    std::uint64_t firstRow = 1;   ///< the number of its first respondent
    std::uint64_t firstLine = 1;  ///< its line
    /// Set for rows that end too early, for instance in a quoted cell that is never closed.
    std::optional<RowFailure> failure;
};

/// Where respondents come from, for instance a table: one thread reads blocks in their order, any
/// number of threads parse them. Rows don't depend on one another, nor on where blocks end.
class TESSALINK_API ResponseSource {
public:
    virtual ~ResponseSource();
    ResponseSource(const ResponseSource&) = delete;
    ResponseSource& operator=(const ResponseSource&) = delete;

    /// Makes `block` the next one, of about 256 KiB; false at the end. CFileException passes
    /// through; an InputError is a fault of the whole source.
    virtual bool ReadBlock(ResponseBlock& block) = 0;
    /// Calls `use` with each row of the block, in order. The row may be changed and moved from; its
    /// memory is used again. Any number of threads at a time.
    virtual void Parse(const ResponseBlock& block,
                       const std::function<void(RespondentRow&)>& use) const = 0;
    /// The names of carried columns, UTF-8.
    virtual const std::vector<std::string>& CarriedColumns() const = 0;
    /// What the user should know of how the source is read (separator found, columns ignored, items
    /// without a column), for standard error.
    virtual const std::vector<std::string>& Notes() const = 0;

protected:
    ResponseSource() = default;
};

}  // namespace tessalink
