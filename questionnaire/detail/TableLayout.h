#pragma once

#include <array>
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
    bool isId = false;
    std::size_t position = 0;  ///< of the item or field
    std::size_t table = 0;     ///< of its cells
    std::optional<std::size_t> carried;
    std::string name;  ///< UTF-8
};

/// A column of an item that is neither id nor carried, for quick reading.
struct AnswerColumn {
    std::size_t position = 0;          ///< of the item
    const CellTable* table = nullptr;  ///< of cells as they are written; null for other columns
    /// The answers that cells of one letter or digit stand for; negative when it is none.
    const std::array<std::int16_t, 256>* characters = nullptr;
};

/// How the rows of a table are read: what its header and the options say.
struct TableLayout {
    /// `header` is the header's row with its line feed, at `place`.
    TableLayout(const QuestionnaireModel& questionnaire, const ResponseTableOptions& tableOptions,
                char separator, std::string_view header, const TextPlace& place);

    TableLayout(const TableLayout&) = delete;
    TableLayout& operator=(const TableLayout&) = delete;

    bool IsUtf8() const { return options.encoding != ResponseTableOptions::Encoding::CodePage; }
    /// Up to which column all are of answers alone, from one on.
    std::size_t EndOfAnswers(std::size_t column) const {
        return column < answerEnds.size() ? answerEnds[column] : column;
    }
    /// A cell, in the encoding of the file, as UTF-8.
    std::string Decoded(std::string_view text) const;

    const QuestionnaireModel& model;
    ResponseTableOptions options;
    char delimiter;
    std::vector<TableColumn> columns;
    std::vector<CellTable> tables;         ///< the first has missing values alone
    std::vector<CellTable> writtenTables;  ///< of cells with their quotes, if they have some
    std::vector<std::array<std::int16_t, 256>> characters;  ///< for each table
    std::vector<AnswerColumn> answerColumns;                ///< for each column
    std::vector<std::size_t> answerEnds;  ///< for each column, where answers from it on end
    std::vector<std::string> carriedColumns;
    std::vector<std::string> notes;
};

/// What parts the cells of a header: of comma, semicolon and tab that which makes most of them.
char findDelimiter(std::string_view header);

}  // namespace tessalink::detail
