#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "core/CsvReader.h"
#include "core/InputError.h"
#include "questionnaire/QuestionnaireImport.h"
#include "questionnaire/detail/FieldText.h"
#include "questionnaire/detail/HtmlText.h"
#include "questionnaire/detail/ImportBuilder.h"
#include "questionnaire/detail/ModelLimits.h"

namespace tessalink {

namespace {

using detail::NumberRange;
using detail::trimmedText;

/// The columns that are read.
enum Column {
    FieldName,
    FormName,
    Heading,
    FieldType,
    FieldLabel,
    Choices,
    FieldNote,
    Validation,
    Least,
    Most,
    Identifier,
    Branching,
    Required,
    Ranking,
    Annotation,
    ColumnCount
};
/// A column's heading in an exported file, and its name in the programming interface.
struct ColumnNames {
    std::string_view heading;
    std::string_view name;
};
constexpr std::array<ColumnNames, ColumnCount> cColumns = {
    {{"Variable / Field Name", "field_name"},
     {"Form Name", "form_name"},
     {"Section Header", "section_header"},
     {"Field Type", "field_type"},
     {"Field Label", "field_label"},
     {"Choices, Calculations, OR Slider Labels", "select_choices_or_calculations"},
     {"Field Note", "field_note"},
     {"Text Validation Type OR Show Slider Number", "text_validation_type_or_show_slider_number"},
     {"Text Validation Min", "text_validation_min"},
     {"Text Validation Max", "text_validation_max"},
     {"Identifier?", "identifier"},
     {"Branching Logic (Show field only if...)", "branching_logic"},
     {"Required Field?", "required_field"},
     {"Matrix Ranking?", "matrix_ranking"},
     {"Field Annotation", "field_annotation"}}};

/// What a dictionary says of a field beside its answers, and what becomes of it.
struct Remark {
    Column column;
    const char* before;
    const char* behind;
};
constexpr Remark cRemarks[] = {
    {Heading, "stands under the heading '", "', which stays behind"},
    {FieldNote, "has the note '", "', which stays behind"},
    {Branching, "is asked under a condition there (", "): a missing answer counts as missing here"},
    {Annotation, "has the annotation '", "', which has no effect here"}};

/// Why fields of some types stay behind.
const std::map<std::string_view, const char*> cLeftTypes = {
    {"calc", "it is computed: make a scale of it, or a value in the template of derived values"},
    {"descriptive", "it is shown, not answered"},
    {"file", "a file can't be an answer"},
    {"sql", "its choices are in a database"}};

constexpr std::size_t cTextLength = 255;

/// Reads a dictionary, row by row.
class DictionaryReader {
public:
    explicit DictionaryReader(CFile& file) : m_reader(file, CsvReader::Text::Utf8) {
        for (std::size_t i = 0; i < cColumns.size(); ++i) m_columns[i] = find_column(cColumns[i]);
    }

    ImportedQuestionnaire Read() {
        while (m_reader.ReadRow(m_row)) {
            const std::string name(cell(FieldName));
            if (name.empty()) fail(FieldName, "the field has no name");
            if (!m_seen.insert(name).second) fail(FieldName, "duplicate field");
            m_build.Start(name, [place = m_reader.PlaceOf(m_row.front())] { return place; });
            add_form();
            read_field(name);
        }
        read_identity();
        return m_build.Take();
    }

private:
    using Make = void (DictionaryReader::*)(const std::string& name);

    std::size_t find_column(const ColumnNames& column) const {
        const std::vector<CsvCell>& header = m_reader.GetHeader();
        const auto found = std::find_if(header.begin(), header.end(), [&](const CsvCell& cell) {
            const std::string_view text = trimmedText(cell.text.View());
            return text == column.heading || text == column.name;
        });
        if (found != header.end()) return static_cast<std::size_t>(found - header.begin());
        throw InputError(m_reader.PlaceOf(header.front()),
                         "no column '" + CString(column.heading) +
                             "': this is no data dictionary as REDCap exports it");
    }

    std::string_view cell(Column column) const {
        return trimmedText(m_row[m_columns[column]].text.View());
    }
    bool is_set(Column column) const { return cell(column) == "y" || cell(column) == "Y"; }
    [[noreturn]] void fail(Column column, const CString& message) const {
        throw InputError(m_reader.PlaceOf(m_row[m_columns[column]]), message);
    }
    /// Plain text of what may be HTML.
    CString text(std::string_view html) { return m_build.Text(detail::withoutHtml(html)); }
    void stay_behind(const std::string& why) { m_build.Note("stays behind: " + why); }

    void add_form() {
        const std::string form(cell(FormName));
        if (m_forms.empty()) m_firstForm = form;
        m_forms.insert(form);
        if (is_set(Required)) ++m_required;
    }

    /// REDCap's first field holds the ids of its records.
    bool is_id(const std::string& name) const {
        return m_seen.size() == 1 && cell(FieldType) == "text" &&
               (name.ends_with("id") || name.ends_with("ID"));
    }

    void read_field(const std::string& name) {
        static const std::map<std::string_view, Make> types = {
            {"radio", &DictionaryReader::add_choice},
            {"dropdown", &DictionaryReader::add_choice},
            {"yesno", &DictionaryReader::add_yes_no},
            {"truefalse", &DictionaryReader::add_true_false},
            {"checkbox", &DictionaryReader::add_checkboxes},
            {"slider", &DictionaryReader::add_slider},
            {"text", &DictionaryReader::add_text},
            {"notes", &DictionaryReader::add_notes}};
        if (is_id(name)) return stay_behind("it is the id of the respondents, see --id of batch");
        const std::string_view type = cell(FieldType);
        if (const auto left = cLeftTypes.find(type); left != cLeftTypes.end()) {
            return stay_behind(left->second);
        }
        const auto make = types.find(type);
        if (make == types.end()) {
            return stay_behind("fields of the type '" + std::string(type) + "' are not known");
        }
        (this->*make->second)(name);
        add_remarks();
    }

    void add_remarks() {
        for (const Remark& remark : cRemarks) {
            const std::string said = detail::withoutHtml(cell(remark.column));
            if (!said.empty()) {
                m_build.Note(remark.before + detail::shortened(said) + remark.behind);
            }
        }
        if (is_set(Ranking))
            m_build.Note("is a rank there: that no rank is given twice is not checked here");
    }

    /// The name where there is no label.
    CString label() {
        const CString given = text(cell(FieldLabel));
        return given.IsEmpty() ? m_build.Text(cell(FieldName)) : given;
    }

    /// "0, Never | 1, Sometimes, or so".
    std::vector<Choice> choices() {
        std::vector<Choice> result;
        std::string_view rest = cell(Choices);
        while (!rest.empty()) {
            const std::size_t end = std::min(rest.find('|'), rest.size());
            const std::string_view part = trimmedText(rest.substr(0, end));
            rest.remove_prefix(std::min(end + 1, rest.size()));
            if (!part.empty()) result.push_back(choice(part));
        }
        return result;
    }
    Choice choice(std::string_view part) {
        const std::size_t comma = std::min(part.find(','), part.size());
        Choice result;
        result.code = m_build.Text(trimmedText(part.substr(0, comma)));
        result.label = text(part.substr(std::min(comma + 1, part.size())));
        if (result.label.IsEmpty()) result.label = result.code;
        return result;
    }
    /// Choices that can be told apart; notes why there are none.
    std::vector<Choice> good_choices() {
        std::vector<Choice> read = choices();
        const auto hasCode = [](const Choice& each) { return !each.code.IsEmpty(); };
        if (read.empty()) {
            stay_behind("it has no choices");
        } else if (detail::hasEqualCodes(read) || !std::all_of(read.begin(), read.end(), hasCode)) {
            stay_behind("a choice has no code of its own");
            read.clear();
        }
        return read;
    }

    void add_choice(const std::string& name) {
        std::vector<Choice> read = good_choices();
        if (read.empty()) return;
        const bool hasValues = detail::takeCodesAsValues(read);
        const CString asked = label();
        if (is_set(Identifier) || detail::asksForSex(name, asked.View())) {
            for (Choice& each : read) each.value.reset();
            return m_build.AddChoice(name, asked, read);
        }
        if (!hasValues) {
            m_build.Note(
                "has codes that are no numbers: give each choice a 'value' where a scale "
                "is to count it");
        }
        m_build.AddItem(name, asked, read);
    }

    void add_two(const std::string& name, const CString& asked, const char* one, const char* zero) {
        m_build.AddItem(name, asked, {{"1", "", one, 1.0, ""}, {"0", "", zero, 0.0, ""}});
    }
    void add_yes_no(const std::string& name) { add_two(name, label(), "Yes", "No"); }
    void add_true_false(const std::string& name) { add_two(name, label(), "True", "False"); }

    /// One item a choice, as the columns of the exported data.
    void add_checkboxes(const std::string& name) {
        const CString asked = label();
        for (const Choice& each : good_choices()) {
            std::string column = "___";
            column += each.code.View();
            std::replace(column.begin(), column.end(), '-', '_');
            add_two(name + column, asked + ": " + each.label, "Checked", "Unchecked");
        }
    }

    /// The ends of numbers; those that are none, for instance other fields, are noted.
    NumberRange range(bool hasDecimalComma) {
        return {end_of(Least, hasDecimalComma), end_of(Most, hasDecimalComma)};
    }
    std::optional<double> end_of(Column column, bool hasDecimalComma) {
        std::string written(cell(column));
        if (written.empty()) return std::nullopt;
        if (hasDecimalComma) std::replace(written.begin(), written.end(), ',', '.');
        const auto number = detail::numberOf(written);
        if (!number) m_build.Note("has the end '" + written + "', which is not checked here");
        return number;
    }

    void add_slider(const std::string& name) {
        constexpr double usualHighest = 100;
        NumberRange ends = range(false);
        if (!ends.low) ends.low = 0;
        if (!ends.high) ends.high = usualHighest;
        const std::string ticks = detail::withoutHtml(cell(Choices));
        if (!ticks.empty()) {
            m_build.Note("has the labels '" + detail::shortened(ticks) + "', which stay behind");
        }
        m_build.AddWhole(name, label(), ends);
    }

    void add_text(const std::string& name) {
        const std::string_view kind = cell(Validation);
        const bool isWhole = kind == "integer";
        if (isWhole || kind.starts_with("number")) return add_number(name, isWhole);
        if (kind.starts_with("date_") || kind == "time" || kind == "time_hh_mm_ss") {
            note_ends();
            const bool isDate = kind.starts_with("date_");
            return isDate ? m_build.AddDate(name, label()) : m_build.AddTime(name, label());
        }
        if (!kind.empty()) {
            m_build.Note("becomes a text, whose form ('" + std::string(kind) + "') is not checked");
        }
        m_build.AddText(name, label(), cTextLength);
    }

    void add_number(const std::string& name, bool isWhole) {
        const bool hasDecimalComma = cell(Validation).ends_with("comma_decimal");
        if (hasDecimalComma) {
            m_build.Note("has a decimal comma there, see --decimal-comma of batch");
        }
        m_build.AddNumber(isWhole, name, label(), range(hasDecimalComma));
    }

    /// The first and last day or time.
    void note_ends() {
        for (const Column end : {Least, Most}) {
            if (cell(end).empty()) continue;
            m_build.Note("has the end '" + std::string(cell(end)) + "', which is not checked here");
        }
    }

    void add_notes(const std::string& name) { m_build.AddText(name, label(), detail::cMaxLength); }

    void read_identity() {
        QuestionnaireModel& model = m_build.Model();
        TextPlace start = {m_reader.GetFile(), 1, 1};
        if (model.items.empty()) throw InputError(start, m_build.NoItem("field"));
        m_build.Start("", [start] { return start; });
        model.id = detail::ImportBuilder::Identity(m_firstForm);
        model.title = m_build.Text(m_firstForm.empty() ? "Imported questionnaire" : m_firstForm);
        model.version = "1";
        model.language = "en";
        model.licence = "not known: fill in";
        model.source = "REDCap data dictionary";
        note_whole();
    }

    void note_whole() {
        m_build.NoteLanguage();
        if (m_forms.size() > 1) {
            m_build.Note("has " + std::to_string(m_forms.size()) +
                         " forms, which become one questionnaire: take out what is not of it");
        }
        if (m_required > 0) {
            m_build.Note("fields that must be answered there: " + std::to_string(m_required) +
                         "; here an answer may be missing");
        }
    }

    CsvReader m_reader;
    std::array<std::size_t, ColumnCount> m_columns{};
    std::vector<CsvCell> m_row;
    std::set<std::string> m_seen;
    std::set<std::string> m_forms;
    std::string m_firstForm;
    std::size_t m_required = 0;
    detail::ImportBuilder m_build{detail::ImportBuilder::Names::Columns};
};

}  // namespace

ImportedQuestionnaire importDictionary(CFile& file) {
    return DictionaryReader(file).Read();
}

}  // namespace tessalink
