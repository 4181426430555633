#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/TextPlace.h"
#include "questionnaire/Questionnaire.h"
#include "questionnaire/ResponseTable.h"
#include "questionnaire/detail/CellTable.h"

namespace tessalink::detail {

/// What a column of a table of responses holds.
struct TableColumn {
    enum class Holds : std::uint8_t { Nothing, Item, Field };

    Holds holds = Holds::Nothing;
    bool isAnswerOnly = false;  ///< an item, and neither id nor carried
    bool isId = false;
    std::size_t position = 0;  ///< of the item or field
    std::size_t table = 0;     ///< of its cells
    std::optional<std::size_t> carried;
    std::string name;  ///< UTF-8
};

/// How the rows of a table are read: what its header and the options say.
struct TableLayout {
    /// `header` is the header's row with its line feed, at `place`.
    TableLayout(const QuestionnaireModel& questionnaire, const ResponseTableOptions& tableOptions,
                char separator, std::string_view header, const TextPlace& place);

    bool IsUtf8() const { return options.encoding != ResponseTableOptions::Encoding::Windows1252; }
    /// A cell, in the encoding of the file, as UTF-8.
    std::string Decoded(std::string_view text) const;

    const QuestionnaireModel& model;
    ResponseTableOptions options;
    char delimiter;
    std::vector<TableColumn> columns;
    std::vector<CellTable> tables;  ///< the first has missing values alone
    std::vector<std::string> carriedColumns;
    std::vector<std::string> notes;
};

/// What parts the cells of a header: of comma, semicolon and tab that which makes most of them.
char findDelimiter(std::string_view header);

}  // namespace tessalink::detail
