#include "questionnaire/ResponseTable.h"

#include <algorithm>

#include "core/CsvReader.h"
#include "core/InputError.h"
#include "platform/files/CFile.h"
#include "questionnaire/detail/RowParser.h"
#include "questionnaire/detail/TableBlocks.h"
#include "questionnaire/detail/TableLayout.h"

namespace tessalink {

namespace {

std::size_t findColumn(const CsvReader& reader, std::string_view name) {
    const std::vector<CsvCell>& header = reader.GetHeader();
    const auto found = std::find_if(header.begin(), header.end(),
                                    [&](const CsvCell& cell) { return cell.text == name; });
    if (found != header.end()) return static_cast<std::size_t>(found - header.begin());
    throw InputError(reader.PlaceOf(header.front()),
                     "the header must name the columns 'column' and 'item'");
}

}  // namespace

std::map<std::string, std::string> readColumnNames(CFile& file) {
    CsvReader reader(file, CsvReader::Text::Utf8);
    const std::size_t column = findColumn(reader, "column");
    const std::size_t item = findColumn(reader, "item");
    std::map<std::string, std::string> names;
    for (std::vector<CsvCell> row; reader.ReadRow(row);) {
        const CString& name = row[column].text;
        if (names.emplace(name.View(), row[item].text.View()).second) continue;
        throw InputError(reader.PlaceOf(row[column]), "duplicate column '" + name + "'");
    }
    return names;
}

struct ResponseTable::Data {
    Data(CFile& file, const Questionnaire& source, const ResponseTableOptions& options)
        : questionnaire(source),
          blocks(file, options.blockSize),
          place(blocks.Place()),
          delimiter(options.delimiter ? *options.delimiter
                                      : detail::findDelimiter(blocks.PeekHeader())),
          layout(questionnaire.Model(), options, delimiter, blocks.TakeHeader(delimiter), place) {}

    const Questionnaire questionnaire;
    detail::TableBlocks blocks;
    const TextPlace place;  ///< of the header
    const char delimiter;
    const detail::TableLayout layout;
};

ResponseTable::ResponseTable(CFile& file, const Questionnaire& questionnaire,
                             const ResponseTableOptions& options)
    : m_data(std::make_unique<Data>(file, questionnaire, options)) {}

ResponseTable::~ResponseTable() = default;

bool ResponseTable::ReadBlock(ResponseBlock& block) {
    return m_data->blocks.ReadBlock(block);
}

void ResponseTable::Parse(const ResponseBlock& block,
                          const std::function<void(RespondentRow&)>& use) const {
    detail::RowParser parser(m_data->layout, block);
    for (RespondentRow row; parser.Next(row);) use(row);
}

const std::vector<std::string>& ResponseTable::CarriedColumns() const {
    return m_data->layout.carriedColumns;
}

const std::vector<std::string>& ResponseTable::Notes() const {
    return m_data->layout.notes;
}

}  // namespace tessalink
