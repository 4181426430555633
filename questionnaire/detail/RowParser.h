#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "questionnaire/ResponseSource.h"
#include "questionnaire/detail/ByteWord.h"
#include "questionnaire/detail/Cell.h"
#include "questionnaire/detail/TableLayout.h"

namespace tessalink::detail {

/// Makes respondents of the rows of a table's block.
class RowParser {
public:
    RowParser(const TableLayout& layout, const ResponseBlock& block);

    /// Makes `row` the next respondent; false at the end.
    bool Next(RespondentRow& row);

private:
    bool skip_blank_rows();
    void start(RespondentRow& row);
    void take_cells(RespondentRow& row);
    std::size_t take_answers(std::size_t index, std::vector<Answer>& answers);
    bool take_digits(const AnswerColumn* columns, const char*& next,
                     std::vector<Answer>& answers) const;
    bool take_short(const AnswerColumn& column, const char*& next, Answer& answer) const;
    void take_cell(const TableColumn& column, const Cell& cell, RespondentRow& row);
    std::string read_id(const Cell& cell, std::string& id) const;
    std::string read_kept(const Cell& cell, std::string& text) const;
    std::string read_answer(const TableColumn& column, const Cell& cell, Answer& answer) const;
    std::string read_field(const TableColumn& column, const Cell& cell, FieldValue& value) const;
    CellTable::Value find(const TableColumn& column, const ResponseSet* set,
                          std::string_view text) const;
    std::string broken_cell(const Cell& cell) const;
    std::string unknown_choice(const std::vector<Choice>& choices) const;
    void fail(RespondentRow& row, const TableColumn& column, const Cell& cell,
              std::string reason) const;
    void fail_count(RespondentRow& row, std::size_t count) const;

    const TableLayout& m_layout;
    CellReader m_cells;
    ByteWord m_delimiters;  ///< a word of them
    const char* m_next;
    const char* m_end;
    std::uint64_t m_number;
    std::uint64_t m_line;
    const ResponseBlock& m_block;
    bool m_isFailureTold = false;
};

}  // namespace tessalink::detail
