#include "questionnaire/detail/RowParser.h"

#include <array>

#include "core/FileText.h"
#include "platform/base/Utf8.h"
#include "questionnaire/RespondentId.h"
#include "questionnaire/detail/ByteWord.h"
#include "questionnaire/detail/FieldText.h"
#include "questionnaire/detail/RowScanner.h"

namespace tessalink::detail {

namespace {

constexpr const char* cStrayQuote =
    "a quote inside the cell: put the whole cell into quotes and double the quotes in it";

/// How many answers of one character, each with a delimiter, a word holds.
constexpr std::size_t cDigitCells = cWordBytes / 2;

/// The rows of a block that end.
std::string_view wholeRows(std::string_view bytes) {
    return bytes.substr(0, bytes.rfind('\n') + 1);
}

}  // namespace

RowParser::RowParser(const TableLayout& layout, const ResponseBlock& block)
    : m_layout(layout),
      m_cells(layout.delimiter),
      m_delimiters(repeated(layout.delimiter)),
      m_next(block.bytes.data()),
      m_end(m_next + wholeRows(block.bytes).size()),
      m_number(block.firstRow),
      m_line(block.firstLine),
      m_block(block) {}

bool RowParser::Next(RespondentRow& row) {
    if (skip_blank_rows()) {
        start(row);
        take_cells(row);
        ++m_line;
        return true;
    }
    if (!m_block.failure || m_isFailureTold) return false;
    start(row);
    row.failure = m_block.failure;
    m_isFailureTold = true;
    return true;
}

/// Moves to a row with something in it; false when there is none.
bool RowParser::skip_blank_rows() {
    for (const char* next = m_next; next < m_end; ++next) {
        if (*next == '\n') {
            m_next = next + 1;
            ++m_line;
        } else if (!isBlank(*next, m_layout.delimiter)) {
            return true;
        }
    }
    return false;
}

void RowParser::start(RespondentRow& row) {
    row.number = m_number++;
    row.line = m_line;
    row.failure.reset();
    row.respondent.id.clear();
    row.respondent.answers.assign(m_layout.model.items.size(), std::nullopt);
    row.respondent.fields.assign(m_layout.model.fields.size(), FieldValue());
    row.carried.resize(m_layout.carriedColumns.size());
    for (std::string& cell : row.carried) cell.clear();
}

void RowParser::take_cells(RespondentRow& row) {
    const std::vector<TableColumn>& columns = m_layout.columns;
    std::size_t count = 0;
    bool isAtEnd = false;
    while (!isAtEnd) {
        const std::size_t taken = take_answers(count, row.respondent.answers);
        if (taken > count && m_next[-1] == '\n') {
            count = taken;
            break;
        }
        Cell cell;
        m_next = m_cells.Take(m_next, m_end, cell);
        m_line += cell.lineFeeds;
        if (taken < columns.size()) take_cell(columns[taken], cell, row);
        count = taken + 1;
        isAtEnd = *m_next++ == '\n';
    }
    if (count != columns.size()) fail_count(row, count);
}

/// Takes answers from a column on, up to the row's end or to a cell that asks for more.
std::size_t RowParser::take_answers(std::size_t index, std::vector<Answer>& answers) {
    if constexpr (!cHasByteWords) return index;
    const char* next = m_next;
    const std::size_t end = m_layout.EndOfAnswers(index);
    while (index < end) {
        if (index + cDigitCells <= end &&
            take_digits(&m_layout.answerColumns[index], next, answers)) {
            index += cDigitCells;
            continue;
        }
        const AnswerColumn& column = m_layout.answerColumns[index];
        if (!take_short(column, next, answers[column.position])) break;
        ++index;
        if (next[-1] == '\n') break;
    }
    m_next = next;
    return index;
}

/// Takes as many answers of one character as a word holds.
bool RowParser::take_digits(const AnswerColumn* columns, const char*& next,
                            std::vector<Answer>& answers) const {
    constexpr ByteWord everySecond = 0xFF00FF00FF00FF00;
    if (m_end - next < static_cast<std::ptrdiff_t>(cWordBytes)) return false;
    if (((loadWord(next) ^ m_delimiters) & everySecond) != 0) return false;
    std::array<std::int16_t, cDigitCells> values{};
    int all = 0;
    for (std::size_t i = 0; i < cDigitCells; ++i) {
        values[i] = (*columns[i].characters)[static_cast<unsigned char>(next[2 * i])];
        all |= values[i];
    }
    if (all < 0) return false;
    for (std::size_t i = 0; i < cDigitCells; ++i) answers[columns[i].position] = values[i];
    next += cWordBytes;
    return true;
}

/// Takes the answer of a cell without quotes that the column's table knows.
bool RowParser::take_short(const AnswerColumn& column, const char*& next, Answer& answer) const {
    if (m_end - next < static_cast<std::ptrdiff_t>(cWordBytes)) return false;
    const ByteWord word = loadWord(next);
    const ByteWord ends = markEqual(word, m_layout.delimiter) | markEqual(word, '\n');
    CellTable::Value value = CellTable::cUnknown;
    const char* end = next;
    if (ends != 0) {
        const std::size_t length = firstMark(ends);
        value = column.table->FindShort(firstBytes(word, length), length);
        end += length;
    } else {
        end = m_cells.FindEnd(next + cWordBytes, m_end);
        value = column.table->Find({next, static_cast<std::size_t>(end - next)});
    }
    if (value == CellTable::cUnknown) return false;
    if (value != CellTable::cMissing) answer = static_cast<std::int32_t>(value);
    next = end + 1;
    return true;
}

void RowParser::take_cell(const TableColumn& column, const Cell& cell, RespondentRow& row) {
    if (cell.hasTextBehindQuote) {
        fail(row, column, cell,
             "text behind the closing quote: move it inside, with the quotes in it doubled");
        return;
    }
    std::string reason;
    if (column.isId) reason = read_id(cell, row.respondent.id);
    if (reason.empty() && column.carried) reason = read_kept(cell, row.carried[*column.carried]);
    if (reason.empty() && column.holds == TableColumn::Holds::Item) {
        reason = read_answer(column, cell, row.respondent.answers[column.position]);
    } else if (reason.empty() && column.holds == TableColumn::Holds::Field) {
        reason = read_field(column, cell, row.respondent.fields[column.position]);
    }
    if (!reason.empty()) fail(row, column, cell, std::move(reason));
}

std::string RowParser::read_id(const Cell& cell, std::string& id) const {
    std::string text = m_layout.Decoded(cell.text);
    std::string reason = respondentIdFault(text);
    if (reason.empty()) id = std::move(text);
    return reason;
}

/// A cell that is kept as it is.
std::string RowParser::read_kept(const Cell& cell, std::string& text) const {
    std::string reason = broken_cell(cell);
    if (reason.empty()) text = m_layout.Decoded(cell.text);
    return reason;
}

CellTable::Value RowParser::find(const TableColumn& column, const ResponseSet* set,
                                 std::string_view text) const {
    const auto value = m_layout.tables[column.table].Find(text);
    if (value != CellTable::cUnknown || set == nullptr || set->HasChoices()) return value;
    const auto number = readWhole(text, m_layout.options.hasDecimalComma);
    const bool isInside = number && *number >= set->lowest && *number <= set->highest;
    return isInside ? *number : CellTable::cUnknown;
}

std::string RowParser::read_answer(const TableColumn& column, const Cell& cell,
                                   Answer& answer) const {
    const QuestionnaireModel& model = m_layout.model;
    const ResponseSet& set = model.responseSets[model.items[column.position].responses];
    auto value = find(column, &set, cell.text);
    if (value == CellTable::cUnknown) value = find(column, &set, trimmedText(cell.text));
    if (value == CellTable::cUnknown) {
        std::string reason = broken_cell(cell);
        if (!reason.empty()) return reason;
        return set.HasChoices() ? unknown_choice(set.choices)
                                : "is not a whole number from " + std::to_string(set.lowest) +
                                      " to " + std::to_string(set.highest);
    }
    if (value != CellTable::cMissing) answer = static_cast<std::int32_t>(value);
    return {};
}

std::string RowParser::read_field(const TableColumn& column, const Cell& cell,
                                  FieldValue& value) const {
    const Field& field = m_layout.model.fields[column.position];
    const std::string_view text = trimmedText(cell.text);
    const auto found = find(column, nullptr, text);
    if (found == CellTable::cMissing) return {};
    if (found != CellTable::cUnknown) {
        value = static_cast<std::int32_t>(found);
        return {};
    }
    std::string reason = broken_cell(cell);
    if (!reason.empty()) return reason;
    if (field.type == Field::Type::Choice) return unknown_choice(field.choices);
    return readFieldText(field, m_layout.Decoded(text),
                         {m_layout.options.hasDecimalComma, m_layout.options.dateOrder}, value);
}

/// What is wrong with a cell whatever it is to hold.
std::string RowParser::broken_cell(const Cell& cell) const {
    if (!cell.isQuoted && cell.text.find('"') != std::string_view::npos) return cStrayQuote;
    if (cell.text.find('\0') != std::string_view::npos) return "holds a NUL byte: remove it";
    if (m_layout.IsUtf8() && findMalformedUtf8(cell.text) != std::string_view::npos) return cNoUtf8;
    return {};
}

std::string RowParser::unknown_choice(const std::vector<Choice>& choices) const {
    const bool hasLabels = m_layout.options.hasLabels;
    return (hasLabels ? "is not a label; there are " : "is not a code; there are ") +
           listedChoices(choices, hasLabels);
}

/// The first fault of a row is told.
void RowParser::fail(RespondentRow& row, const TableColumn& column, const Cell& cell,
                     std::string reason) const {
    if (row.failure) return;
    row.failure = {column.name, shortened(m_layout.Decoded(cell.text)), std::move(reason)};
}

/// A wrong number of cells counts first: it may be why others are wrong.
void RowParser::fail_count(RespondentRow& row, std::size_t count) const {
    row.failure = {"", "",
                   "the row has " + std::to_string(count) + " cells, but the header " +
                       std::to_string(m_layout.columns.size()) + ": add or remove some"};
}

}  // namespace tessalink::detail
