#include <algorithm>
#include <array>
#include <map>

#include "core/CsvReader.h"
#include "platform/base/Windows1252.h"
#include "questionnaire/QuestionnaireImport.h"
#include "questionnaire/detail/FieldText.h"
#include "questionnaire/detail/ImportBuilder.h"

namespace tessalink {

namespace {

using detail::trimmed;

/// The columns that are read.
enum Column {
    FieldName,
    FormName,
    FieldType,
    FieldLabel,
    Choices,
    Validation,
    Least,
    Most,
    Branching,
    Ranking,
    ColumnCount
};
constexpr std::array<std::string_view, ColumnCount> cColumns = {
    "Variable / Field Name",
    "Form Name",
    "Field Type",
    "Field Label",
    "Choices, Calculations, OR Slider Labels",
    "Text Validation Type OR Show Slider Number",
    "Text Validation Min",
    "Text Validation Max",
    "Branching Logic (Show field only if...)",
    "Matrix Ranking?"};

/// Reads a dictionary, row by row.
class DictionaryReader {
public:
    explicit DictionaryReader(CFile& file) : m_reader(file, CsvReader::Text::Utf8) {
        const std::vector<CsvCell>& header = m_reader.GetHeader();
        for (std::size_t column = 0; column < cColumns.size(); ++column) {
            const auto found = std::find_if(header.begin(), header.end(), [&](const CsvCell& cell) {
                return trimmed(cell.text.View()) == cColumns[column];
            });
            if (found == header.end()) {
                throw InputError(m_reader.PlaceOf(header.front()),
                                 "no column '" + CString(cColumns[column]) +
                                     "': this is no data dictionary as REDCap exports it");
            }
            m_columns[column] = static_cast<std::size_t>(found - header.begin());
        }
    }

    ImportedQuestionnaire Read() {
        while (m_reader.ReadRow(m_row)) {
            const std::string name(cell(FieldName));
            if (name.empty()) fail(FieldName, "the field has no name");
            if (!m_seen.try_emplace(name, true).second) fail(FieldName, "duplicate field");
            if (m_form.empty()) m_form = cell(FormName);
            m_build.Start(name);
            read_field(name);
        }
        QuestionnaireModel& model = m_build.Model();
        if (model.items.empty()) {
            throw InputError({m_reader.GetFile(), 1, 1}, "no field can be an item");
        }
        m_build.Start(m_form);
        model.id = detail::ImportBuilder::Identity(m_form);
        model.title = m_build.Text(m_form.empty() ? "Imported questionnaire" : m_form);
        model.version = "1";
        model.language = "en";
        model.licence = "not known: fill in";
        model.source = "REDCap data dictionary";
        return m_build.Take();
    }

private:
    using Make = void (DictionaryReader::*)(const std::string& name);

    std::string_view cell(Column column) const {
        return trimmed(m_row[m_columns[column]].text.View());
    }
    [[noreturn]] void fail(Column column, const CString& message) const {
        throw InputError(m_reader.PlaceOf(m_row[m_columns[column]]), message);
    }

    void read_field(const std::string& name) {
        static const std::map<std::string_view, Make> types = {
            {"radio", &DictionaryReader::add_choice_item},
            {"dropdown", &DictionaryReader::add_choice_item},
            {"yesno", &DictionaryReader::add_yes_no},
            {"truefalse", &DictionaryReader::add_true_false},
            {"checkbox", &DictionaryReader::add_checkboxes},
            {"slider", &DictionaryReader::add_slider},
            {"text", &DictionaryReader::add_text},
            {"notes", &DictionaryReader::add_notes}};
        const auto type = types.find(cell(FieldType));
        if (type == types.end()) {
            m_build.Note("stays behind: fields of the type '" + std::string(cell(FieldType)) +
                         "' hold no answer");
            return;
        }
        (this->*type->second)(name);
        if (!cell(Branching).empty()) {
            m_build.Note("is asked under a condition there (" + std::string(cell(Branching)) +
                         "): a missing answer counts as missing here");
        }
        if (cell(Ranking) == "y")
            m_build.Note("is a rank there: that no rank is given twice is not checked here");
    }

    /// The name where there is no label.
    CString label() {
        const CString text = m_build.Text(cell(FieldLabel));
        return text.IsEmpty() ? m_build.Text(cell(FieldName)) : text;
    }

    /// "0, Never | 1, Sometimes, or so".
    std::vector<Choice> choices() {
        std::vector<Choice> result;
        for (std::string_view rest = cell(Choices); !rest.empty();) {
            const std::string_view part = trimmed(rest.substr(0, rest.find('|')));
            rest.remove_prefix(std::min(
                rest.size(), rest.find('|') == rest.npos ? rest.size() : rest.find('|') + 1));
            if (part.empty()) continue;
            const std::size_t comma = std::min(part.find(','), part.size());
            Choice choice;
            choice.code = m_build.Text(trimmed(part.substr(0, comma)));
            const std::string_view text =
                comma < part.size() ? trimmed(part.substr(comma + 1)) : std::string_view();
            choice.label = text.empty() ? choice.code : m_build.Text(text);
            const bool isThere =
                std::any_of(result.begin(), result.end(),
                            [&](const Choice& other) { return other.code == choice.code; });
            if (choice.code.IsEmpty() || isThere) fail(Choices, "a choice has no code of its own");
            result.push_back(std::move(choice));
        }
        return result;
    }

    void add_choice_item(const std::string& name) {
        std::vector<Choice> read = choices();
        if (read.empty()) {
            m_build.Note("stays behind: it has no choices");
            return;
        }
        if (!detail::takeCodesAsValues(read)) {
            m_build.Note(
                "has codes that are no numbers: give each choice a 'value' where a scale "
                "is to count it");
        }
        m_build.AddItem(m_build.Name(name), label(), m_build.Choices(read));
    }

    void add_two(const std::string& name, const CString& text, const char* one, const char* zero) {
        std::vector<Choice> two = {{"1", "", one, 1.0, ""}, {"0", "", zero, 0.0, ""}};
        m_build.AddItem(m_build.Name(name), text, m_build.Choices(two));
    }
    void add_yes_no(const std::string& name) { add_two(name, label(), "Yes", "No"); }
    void add_true_false(const std::string& name) { add_two(name, label(), "True", "False"); }

    /// One item a choice, as the columns of the exported data.
    void add_checkboxes(const std::string& name) {
        for (const Choice& choice : choices()) {
            std::string code(choice.code.View());
            std::replace(code.begin(), code.end(), '-', '_');
            add_two(name + "___" + code, label() + ": " + choice.label, "Checked", "Unchecked");
        }
    }

    void add_slider(const std::string& name) {
        constexpr int usualHighest = 100;
        const int low = static_cast<int>(detail::numberOf(cell(Least)).value_or(0));
        const int high = static_cast<int>(detail::numberOf(cell(Most)).value_or(usualHighest));
        if (low >= high) fail(Most, "must be greater than the least number");
        m_build.AddItem(m_build.Name(name), label(), m_build.Whole(low, high));
    }

    void add_text(const std::string& name) {
        const std::string_view kind = cell(Validation);
        const CString id = m_build.Name(name);
        const auto least = detail::numberOf(cell(Least));
        const auto most = detail::numberOf(cell(Most));
        if (kind == "integer") {
            m_build.AddNumber(true, id, label(), least, most);
        } else if (kind.starts_with("number")) {
            m_build.AddNumber(false, id, label(), least, most);
        } else if (kind.starts_with("date_")) {
            m_build.AddField(Field::Type::Date, id, label());
        } else if (kind == "time" || kind == "time_hh_mm_ss") {
            m_build.AddField(Field::Type::Time, id, label());
        } else {
            m_build.AddField(Field::Type::Text, id, label());
            if (!kind.empty()) {
                m_build.Note("becomes a text, whose form ('" + std::string(kind) +
                             "') is not checked");
            }
        }
    }

    void add_notes(const std::string& name) {
        constexpr std::size_t longText = 10000;
        m_build.AddField(Field::Type::Text, m_build.Name(name), label()).maxLength = longText;
    }

    CsvReader m_reader;
    std::array<std::size_t, ColumnCount> m_columns{};
    std::vector<CsvCell> m_row;
    std::map<std::string, bool> m_seen;
    std::string m_form;
    detail::ImportBuilder m_build;
};

}  // namespace

ImportedQuestionnaire importDictionary(CFile& file) {
    return DictionaryReader(file).Read();
}

}  // namespace tessalink
