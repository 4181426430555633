#include "questionnaire/detail/TableLayout.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <unordered_map>

#include "core/FileText.h"
#include "core/InputError.h"
#include "json/NameHint.h"
#include "platform/base/CodePage.h"
#include "platform/base/Utf8.h"
#include "questionnaire/detail/Cell.h"
#include "questionnaire/detail/FieldText.h"

namespace tessalink::detail {

namespace {

/// The most columns of a table.
constexpr std::size_t cMaxTableColumns = 16384;
/// Whole numbers whose cells go by a table, from this one's negative on.
constexpr int cListedNumbers = 1000;
constexpr std::size_t cNamesInNote = 20;
constexpr const char* cNameField = "Name";
constexpr const char* cIdColumn = "id";

std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < std::min(names.size(), cNamesInNote); ++i) {
        text += (i == 0 ? "" : ", ") + names[i];
    }
    const std::size_t more = names.size() - std::min(names.size(), cNamesInNote);
    return more == 0 ? text : text + " and " + std::to_string(more) + " more";
}

bool isWholeCode(std::string_view code) {
    const std::string_view digits = code.substr(code.starts_with('-') ? 1 : 0);
    return !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
}

/// What cells of one character stand for, for those that have no meaning of their own in tables.
std::array<std::int16_t, 256> characterAnswers(const CellTable& table, char delimiter) {
    std::array<std::int16_t, 256> answers{};
    answers.fill(-1);
    for (std::size_t byte = 0; byte < answers.size(); ++byte) {
        const char ch = static_cast<char>(byte);
        const auto value = table.Find({&ch, 1});
        const bool isPlain = ch != delimiter && ch != '"' && ch != '\n' && ch != '\r';
        if (isPlain && value >= 0 && value <= std::numeric_limits<std::int16_t>::max()) {
            answers[byte] = static_cast<std::int16_t>(value);
        }
    }
    return answers;
}

/// A name of the header, and where it stands.
struct NamePlace {
    std::string name;
    TextPlace place;
};

/// Makes a layout's columns, and finds what is wrong with them.
class LayoutBuilder {
public:
    LayoutBuilder(TableLayout& layout, std::string_view header, const TextPlace& place)
        : m_layout(layout), m_model(layout.model), m_options(layout.options), m_place(place) {
        take_names(header);
    }

    void Build() {
        encode_missing();
        list_targets();
        make_columns();
        mark_id();
        for (const std::string& name : m_options.carried) carry(name);
        make_tables();
        list_answer_columns();
        add_notes();
    }

private:
    /// What a name of the questionnaire names.
    struct Target {
        TableColumn::Holds holds = TableColumn::Holds::Nothing;
        std::size_t position = 0;
        std::string id;
        std::optional<std::size_t> column;
    };

    void take_names(std::string_view header);
    void add_name(const Cell& cell, const TextPlace& place);
    void encode_missing();
    void list_targets();
    void add_target(const CString& id, TableColumn::Holds holds, std::size_t position);
    Target* find_target(std::string_view name);
    Target& need_target(const std::string& name);
    void make_columns();
    Target* target_of(const std::string& name, const std::map<std::string, std::string>& mapping);
    void mark_id();
    void carry(const std::string& name);
    std::optional<std::size_t> find_column(std::string_view name) const;
    std::size_t need_column(const std::string& name) const;
    void make_tables();
    void list_answer_columns();
    std::size_t add_table(const std::vector<Choice>& choices, const CString& name);
    void add_whole_numbers(const ResponseSet& set);
    void add_choice(CellTable& table, const Choice& choice, CellTable::Value position,
                    const CString& name);
    void add_missing(CellTable& table) const;
    std::string encoded(const CString& text) const;
    void add_notes();
    void note_items();

    [[noreturn]] static void fail_at(const TextPlace& place, std::string_view message) {
        throw InputError(place, message);
    }
    [[noreturn]] void fail(std::string_view message) const { fail_at(m_place, message); }

    TableLayout& m_layout;
    const QuestionnaireModel& m_model;
    const ResponseTableOptions& m_options;
    TextPlace m_place;
    std::vector<NamePlace> m_names;
    std::unordered_map<std::string, Target> m_targets;  ///< by names in small letters
    bool m_isIdFirst = false;
};

void LayoutBuilder::take_names(std::string_view header) {
    CellReader reader(m_layout.delimiter);
    const char* const end = header.data() + header.size();
    TextPlace place = m_place;
    for (const char* next = header.data(); next < end; ++next) {
        if (m_names.size() == cMaxTableColumns) {
            fail("more than " + std::to_string(cMaxTableColumns) + " columns: remove some");
        }
        Cell cell;
        const char* const start = next;
        next = reader.Take(next, end, cell);
        add_name(cell, place);
        place.line += cell.lineFeeds;
        const std::string_view taken(start, static_cast<std::size_t>(next - start));
        const std::size_t feed = cell.lineFeeds == 0 ? std::string_view::npos : taken.rfind('\n');
        place.column = feed == std::string_view::npos ? place.column + taken.size() + 1
                                                      : taken.size() - feed + 1;
    }
}

void LayoutBuilder::add_name(const Cell& cell, const TextPlace& place) {
    if (m_layout.IsUtf8() && findMalformedUtf8(cell.text) != std::string_view::npos) {
        fail_at(place, std::string(cNoUtf8) + ", or say that it is " + codePageName());
    }
    if (!cell.isQuoted && cell.text.find('\r') != std::string_view::npos) {
        fail_at(place, "a carriage return without a line feed: end the lines in LF or CR LF");
    }
    if (cell.hasTextBehindQuote) fail_at(place, "text behind the closing quote of a column's name");
    m_names.push_back({std::string(trimmedText(m_layout.Decoded(cell.text))), place});
}

/// Codes of missing answers in the encoding of the file; it can't hold others.
void LayoutBuilder::encode_missing() {
    if (m_layout.IsUtf8()) return;
    std::erase_if(m_layout.options.missingCodes, [](std::string& code) {
        CodePageText text = fromUtf8(code);
        code = std::move(text.text);
        return !text.IsWhole();
    });
}

void LayoutBuilder::add_target(const CString& id, TableColumn::Holds holds, std::size_t position) {
    m_targets[lowered(id.View())] = {holds, position, std::string(id.View()), std::nullopt};
}

void LayoutBuilder::list_targets() {
    for (std::size_t i = 0; i < m_model.items.size(); ++i) {
        add_target(m_model.items[i].id, TableColumn::Holds::Item, i);
    }
    for (std::size_t i = 0; i < m_model.fields.size(); ++i) {
        add_target(m_model.fields[i].id, TableColumn::Holds::Field, i);
    }
}

LayoutBuilder::Target* LayoutBuilder::find_target(std::string_view name) {
    const auto target = m_targets.find(lowered(name));
    return target != m_targets.end() ? &target->second : nullptr;
}

LayoutBuilder::Target& LayoutBuilder::need_target(const std::string& name) {
    Target* const target = find_target(name);
    if (target == nullptr) fail("the questionnaire has no item or field " + inQuotes(name));
    return *target;
}

LayoutBuilder::Target* LayoutBuilder::target_of(const std::string& name,
                                                const std::map<std::string, std::string>& mapping) {
    if (const auto named = mapping.find(name); named != mapping.end()) {
        return &need_target(named->second);
    }
    return name.empty() ? nullptr : find_target(name);
}

void LayoutBuilder::make_columns() {
    std::map<std::string, std::string> mapping = m_options.columnNames;
    if (!m_options.nameColumn.empty()) mapping[m_options.nameColumn] = cNameField;
    for (const auto& [column, target] : mapping) need_column(column);
    std::unordered_map<std::string, std::size_t> seen;
    for (const auto& [name, place] : m_names) {
        const std::size_t index = m_layout.columns.size();
        TableColumn& column = m_layout.columns.emplace_back();
        column.name = name;
        if (!name.empty() && !seen.emplace(name, index).second) {
            fail_at(place, "duplicate column " + inQuotes(name) + ": rename or remove one");
        }
        Target* const target = target_of(name, mapping);
        if (target == nullptr) continue;
        if (target->column) {
            fail_at(place, inQuotes(name) + " holds " + target->id + ", as the column " +
                               inQuotes(m_names[*target->column].name) +
                               " does: rename or remove one");
        }
        target->column = index;
        column.holds = target->holds;
        column.position = target->position;
    }
}

std::optional<std::size_t> LayoutBuilder::find_column(std::string_view name) const {
    const auto isNamed = [&](const NamePlace& column) { return column.name == name; };
    const auto isAlike = [&](const NamePlace& column) {
        return lowered(column.name) == lowered(name);
    };
    auto found = std::find_if(m_names.begin(), m_names.end(), isNamed);
    if (found == m_names.end()) found = std::find_if(m_names.begin(), m_names.end(), isAlike);
    if (found == m_names.end()) return std::nullopt;
    return static_cast<std::size_t>(found - m_names.begin());
}

std::size_t LayoutBuilder::need_column(const std::string& name) const {
    if (const auto column = find_column(name)) return *column;
    std::vector<std::string_view> names;
    for (const NamePlace& column : m_names) names.emplace_back(column.name);
    fail("no column " + inQuotes(name) + nameHint(name, names));
}

void LayoutBuilder::mark_id() {
    std::size_t id = 0;
    if (!m_options.idColumn.empty()) {
        id = need_column(m_options.idColumn);
    } else if (const auto named = find_column(cIdColumn)) {
        id = *named;
    } else {
        m_isIdFirst = true;
        if (m_layout.columns.front().holds != TableColumn::Holds::Nothing) {
            fail("no column of ids: name it 'id', or say which it is");
        }
    }
    m_layout.columns[id].isId = true;
}

void LayoutBuilder::carry(const std::string& name) {
    TableColumn& column = m_layout.columns[need_column(name)];
    if (column.carried) fail("the column " + inQuotes(name) + " is carried twice");
    column.carried = m_layout.carriedColumns.size();
    m_layout.carriedColumns.push_back(column.name);
}

void LayoutBuilder::make_tables() {
    CellTable missing;
    add_missing(missing);
    m_layout.tables.push_back(std::move(missing));
    std::map<std::size_t, std::size_t> tablesOfSets;
    for (TableColumn& column : m_layout.columns) {
        if (column.holds == TableColumn::Holds::Item) {
            const std::size_t number = m_model.items[column.position].responses;
            const ResponseSet& set = m_model.responseSets[number];
            const auto [table, isNew] = tablesOfSets.emplace(number, m_layout.tables.size());
            if (isNew && set.HasChoices()) add_table(set.choices, set.id);
            if (isNew && !set.HasChoices()) add_whole_numbers(set);
            column.table = table->second;
        } else if (column.holds == TableColumn::Holds::Field) {
            const Field& field = m_model.fields[column.position];
            if (field.type == Field::Type::Choice)
                column.table = add_table(field.choices, field.id);
        }
    }
}

void LayoutBuilder::list_answer_columns() {
    for (const CellTable& table : m_layout.tables) {
        m_layout.writtenTables.push_back(table.AsWritten());
        m_layout.characters.push_back(characterAnswers(table, m_layout.delimiter));
    }
    for (const TableColumn& column : m_layout.columns) {
        const bool isAnswer =
            column.holds == TableColumn::Holds::Item && !column.isId && !column.carried;
        m_layout.answerColumns.push_back(
            isAnswer ? AnswerColumn{column.position, &m_layout.writtenTables[column.table],
                                    &m_layout.characters[column.table]}
                     : AnswerColumn{});
    }
    const std::size_t count = m_layout.columns.size();
    m_layout.answerEnds.resize(count);
    for (std::size_t i = count; i-- > 0;) {
        const bool isAnswer = m_layout.answerColumns[i].table != nullptr;
        m_layout.answerEnds[i] = !isAnswer ? i : i + 1 < count ? m_layout.answerEnds[i + 1] : count;
    }
}

std::size_t LayoutBuilder::add_table(const std::vector<Choice>& choices, const CString& name) {
    CellTable table;
    for (const std::string& code : m_options.missingCodes) table.Add(code, CellTable::cMissing);
    table.Add("", CellTable::cMissing);
    CellTable::Value position = 0;
    for (const Choice& choice : choices) add_choice(table, choice, ++position, name);
    for (const Choice& choice : choices) {
        // Spreadsheets take codes for decimal numbers.
        if (m_options.hasLabels || !isWholeCode(choice.code.View())) continue;
        const auto value = table.Find(encoded(choice.code));
        table.Add(encoded(choice.code) + ".0", value);
        if (m_options.hasDecimalComma) table.Add(encoded(choice.code) + ",0", value);
    }
    add_missing(table);
    m_layout.tables.push_back(std::move(table));
    return m_layout.tables.size() - 1;
}

void LayoutBuilder::add_choice(CellTable& table, const Choice& choice, CellTable::Value position,
                               const CString& name) {
    const std::string text = encoded(m_options.hasLabels ? choice.label : choice.code);
    if (table.Add(text, position) || table.Find(text) == CellTable::cMissing) return;
    fail("two choices of " + inQuotes(name.View()) + " have the label " +
         inQuotes(toUtf8(choice.label.View())) + ": use codes");
}

/// Numbers of usual ranges go by the table, others are read.
void LayoutBuilder::add_whole_numbers(const ResponseSet& set) {
    CellTable table;
    add_missing(table);
    const int lowest = std::max(set.lowest, -cListedNumbers);
    const int highest = std::min(set.highest, cListedNumbers);
    for (int number = lowest; number <= highest; ++number) {
        table.Add(std::to_string(number), number);
    }
    m_layout.tables.push_back(std::move(table));
}

void LayoutBuilder::add_missing(CellTable& table) const {
    for (const std::string& code : m_options.missingCodes) table.Add(code, CellTable::cMissing);
    for (const char* text : {"", "NA"}) table.Add(text, CellTable::cMissing);
}

std::string LayoutBuilder::encoded(const CString& text) const {
    return m_layout.IsUtf8() ? toUtf8(text.View()) : std::string(text.View());
}

void LayoutBuilder::note_items() {
    std::vector<std::string> lacking;
    std::size_t found = 0;
    for (const Item& item : m_model.items) {
        if (find_target(item.id.View())->column) {
            ++found;
        } else {
            lacking.emplace_back(item.id.View());
        }
    }
    if (found == 0) {
        fail("no column has the name of an item: name the columns as the items, or map them");
    }
    if (lacking.empty()) return;
    m_layout.notes.push_back("no column for " + listed(lacking) +
                             ": all answers to them are missing");
}

void LayoutBuilder::add_notes() {
    static const std::map<char, std::string> names = {{';', "semicolons"}, {'\t', "tabs"}};
    const auto delimiter = names.find(m_layout.delimiter);
    if (!m_options.delimiter && delimiter != names.end()) {
        m_layout.notes.push_back("cells are parted by " + delimiter->second);
    }
    if (m_isIdFirst) {
        m_layout.notes.push_back("the first column, " + inQuotes(m_names.front().name) +
                                 ", holds the ids");
    }
    note_items();
    std::vector<std::string> ignored;
    for (const TableColumn& column : m_layout.columns) {
        if (column.holds != TableColumn::Holds::Nothing || column.isId || column.carried) continue;
        ignored.push_back(column.name.empty() ? "one without a name" : column.name);
    }
    if (!ignored.empty()) m_layout.notes.push_back("columns ignored: " + listed(ignored));
}

}  // namespace

TableLayout::TableLayout(const QuestionnaireModel& questionnaire,
                         const ResponseTableOptions& tableOptions, char separator,
                         std::string_view header, const TextPlace& place)
    : model(questionnaire), options(tableOptions), delimiter(separator) {
    LayoutBuilder(*this, header, place).Build();
}

std::string TableLayout::Decoded(std::string_view text) const {
    return IsUtf8() ? std::string(text) : toUtf8(text);
}

char findDelimiter(std::string_view header) {
    constexpr std::string_view delimiters = ",;\t";
    std::array<std::size_t, delimiters.size()> counts{};
    bool isQuoted = false;
    for (const char ch : header) {
        isQuoted = isQuoted != (ch == '"');
        const std::size_t index = isQuoted ? std::string_view::npos : delimiters.find(ch);
        if (index != std::string_view::npos) ++counts[index];
    }
    const auto most = std::max_element(counts.begin(), counts.end());
    return delimiters[static_cast<std::size_t>(most - counts.begin())];
}

}  // namespace tessalink::detail
