#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/base/Export.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/ResponseSource.h"

class CFile;

namespace tessalink {

/// How a table of responses is written.
struct ResponseTableOptions {
    /// What the table is written in.
    enum class Encoding { Utf8, CodePage };  ///< CodePage: that of the program
    /// The order of day, month and year in dates.
    enum class DateOrder { Iso, DayMonthYear, MonthDayYear, YearMonthDay };

    std::string idColumn;    ///< empty: "id" in letters of either case, or the first column
    std::string nameColumn;  ///< the person's name: the column of the field Name; empty: as named
    std::optional<Encoding> encoding;       ///< nothing: UTF-8
    std::optional<char> delimiter;          ///< nothing: found from the header line
    bool hasDecimalComma = false;           ///< whether decimals are written with a comma
    std::vector<std::string> missingCodes;  ///< beside the empty cell and NA
    bool hasLabels = false;                 ///< cells hold labels instead of codes
    std::vector<std::string> carried;       ///< columns that go to the table of scores as they are
    DateOrder dateOrder = DateOrder::Iso;   ///< how dates are written
    /// Names of columns, and the items or fields that they hold, where these differ.
    std::map<std::string, std::string> columnNames;
    std::size_t blockSize = std::size_t{256} << 10;  ///< how much is read at a time, in bytes
};

/// Reads a mapping file: CSV with the columns "column" and "item". InputError and CFileException.
TESSALINK_API std::map<std::string, std::string> readColumnNames(CFile& file);

/// A table of responses (RFC 4180): a header, then a row for each respondent.
class TESSALINK_API ResponseTable : public ResponseSource {
public:
    /// Reads the header. The file is kept and must be readable in order only; it need not be
    /// seekable. InputError: no header, a named column that is not there or there twice, ids that
    /// are no column, no item's column at all. CFileException passes through.
    ResponseTable(CFile& file, const Questionnaire& questionnaire,
                  const ResponseTableOptions& options);
    ~ResponseTable() override;

    bool ReadBlock(ResponseBlock& block) override;
    void Parse(const ResponseBlock& block,
               const std::function<void(RespondentRow&)>& use) const override;
    const std::vector<std::string>& CarriedColumns() const override;
    const std::vector<std::string>& Notes() const override;

private:
    struct Data;
    std::unique_ptr<Data> m_data;
};

}  // namespace tessalink
