#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

#include "json/JsonReader.h"
#include "json/JsonSource.h"
#include "questionnaire/QuestionnaireImport.h"
#include "questionnaire/detail/FieldText.h"
#include "questionnaire/detail/HtmlText.h"
#include "questionnaire/detail/ImportBuilder.h"
#include "questionnaire/detail/ModelLimits.h"

namespace tessalink {

namespace {

using Kind = JsonValue::Kind;

constexpr std::size_t cMost = 100000;  ///< members of a list
constexpr std::array<std::string_view, 3> cOrdinals = {
    "http://hl7.org/fhir/StructureDefinition/ordinalValue",
    "http://hl7.org/fhir/StructureDefinition/itemWeight",
    "http://hl7.org/fhir/StructureDefinition/questionnaire-ordinalValue"};
constexpr JsonBounds cAnyValue = {-detail::cMaxValue, detail::cMaxValue};
constexpr std::string_view cLeast = "http://hl7.org/fhir/StructureDefinition/minValue";
constexpr std::string_view cGreatest = "http://hl7.org/fhir/StructureDefinition/maxValue";

/// A text, or another where it is empty.
std::string orElse(const std::string& text, const std::string& other) {
    return text.empty() ? other : text;
}

/// "Several days (1)": the number in brackets at the end.
std::optional<double> numberInLabel(const CString& label) {
    const std::string_view text = label.View();
    const std::size_t open = text.rfind('(');
    if (open == std::string_view::npos || text.back() != ')') return std::nullopt;
    return detail::numberOf(text.substr(open + 1, text.size() - open - 2));
}

class QuestionReader {
public:
    explicit QuestionReader(const JsonSource& source) : m_in(source), m_root(source.Root()) {}

    ImportedQuestionnaire Read() {
        m_in.Expect(m_root, Kind::Object);
        if (text(m_root, "resourceType") != "Questionnaire") {
            m_in.Fail(m_root, "is no FHIR Questionnaire");
        }
        refuse_modifiers(m_root);
        read_value_sets();
        read_items(m_root);
        read_identity();
        if (m_build.Model().items.empty()) {
            m_in.Fail(m_root, std::string(m_build.NoItem("question").View()));
        }
        return m_build.Take();
    }

private:
    using Make = void (QuestionReader::*)(const JsonValue& item, const std::string& link);

    /// The text of a key; empty when there is none.
    std::string text(const JsonValue& object, std::string_view key) const {
        const JsonValue* const value = object.Find(key);
        return value != nullptr ? m_in.Utf8(*value) : std::string();
    }
    CString plain(const std::string& utf8) { return m_build.Text(detail::withSingleBlanks(utf8)); }
    bool flag(const JsonValue& object, std::string_view key) const {
        const JsonValue* const value = object.Find(key);
        return value != nullptr && m_in.Flag(*value);
    }
    void stay_behind(const std::string& why) { m_build.Note("stays behind: " + why); }
    void start(const std::string& name, const JsonValue& value) {
        m_build.Start(name, [this, &value] { return m_in.Source().PlaceOf(value); });
    }
    void refuse_modifiers(const JsonValue& element) const {
        if (const JsonValue* const modifier = element.Find("modifierExtension")) {
            m_in.Fail(*modifier, "changes what is meant in a way that is not known here");
        }
    }

    /// The objects of a list; none when there is no such key.
    std::vector<const JsonValue*> objects(const JsonValue& object, std::string_view key) const {
        std::vector<const JsonValue*> result;
        const JsonValue* const list = object.Find(key);
        if (list == nullptr) return result;
        for (const JsonMember& member : m_in.Members(*list, Kind::List, cMost)) {
            m_in.Expect(member.value, Kind::Object);
            refuse_modifiers(member.value);
            result.push_back(&member.value);
        }
        return result;
    }
    /// The number of an extension.
    std::optional<double> extension(const JsonValue& element, std::string_view url) const {
        for (const JsonValue* each : objects(element, "extension")) {
            if (text(*each, "url") != url) continue;
            for (const char* key : {"valueDecimal", "valueInteger"}) {
                const JsonValue* const value = each->Find(key);
                if (value == nullptr) continue;
                m_in.Expect(*value, Kind::Number);
                return value->number;
            }
        }
        return std::nullopt;
    }
    double number_of(const JsonValue& value) const {
        return m_in.Number(value, cAnyValue).value_or(0);
    }
    std::optional<double> ordinal(const JsonValue& element) const {
        for (const std::string_view url : cOrdinals) {
            const auto number = extension(element, url);
            if (!number) continue;
            if (std::abs(*number) > detail::cMaxValue) {
                m_in.Fail(element, "counts more than a questionnaire takes");
            }
            return number;
        }
        return std::nullopt;
    }

    void read_identity() {
        QuestionnaireModel& model = m_build.Model();
        const std::string name = text(m_root, "name");
        const std::string title = orElse(text(m_root, "title"), name);
        start("", m_root);
        model.id = detail::ImportBuilder::Identity(orElse(name, text(m_root, "id")));
        model.title = plain(orElse(title, "Imported questionnaire"));
        model.version = plain(orElse(text(m_root, "version"), "1"));
        model.language = plain(orElse(text(m_root, "language"), "en"));
        model.licence = plain(orElse(text(m_root, "copyright"), "not known: fill in"));
        model.source =
            plain(orElse(text(m_root, "url"), orElse(text(m_root, "publisher"), "FHIR")));
        if (text(m_root, "language").empty()) m_build.NoteLanguage();
    }

    /// A choice without code goes by what is shown.
    Choice choice_of(const JsonValue& coding, const std::string& system) {
        Choice choice;
        const std::string display = text(coding, "display");
        const std::string code = orElse(text(coding, "code"), display);
        choice.code = m_build.Text(code);
        choice.label = plain(orElse(display, code));
        choice.system = system;
        choice.value = ordinal(coding);
        return choice;
    }

    void read_value_sets() {
        for (const JsonValue* set : objects(m_root, "contained")) {
            if (text(*set, "resourceType") != "ValueSet") continue;
            const std::string name = "#" + text(*set, "id");
            start(name, *set);
            const std::vector<Choice> choices = choices_of(*set);
            m_valueSets[name] = choices;
            m_valueSets[text(*set, "url")] = choices;
        }
    }

    std::vector<Choice> choices_of(const JsonValue& set) {
        std::vector<Choice> choices;
        if (const JsonValue* const compose = set.Find("compose")) {
            m_in.Expect(*compose, Kind::Object);
            for (const JsonValue* include : objects(*compose, "include")) {
                for (const JsonValue* each : objects(*include, "concept")) {
                    choices.push_back(choice_of(*each, text(*include, "system")));
                }
            }
        }
        const JsonValue* const expansion = set.Find("expansion");
        if (!choices.empty() || expansion == nullptr) return choices;
        m_in.Expect(*expansion, Kind::Object);
        for (const JsonValue* each : objects(*expansion, "contains")) {
            choices.push_back(choice_of(*each, text(*each, "system")));
        }
        return choices;
    }

    void read_items(const JsonValue& parent) {
        for (const JsonValue* item : objects(parent, "item")) {
            const std::string link = text(*item, "linkId");
            if (link.empty()) m_in.Fail(*item, "'linkId' is missing");
            if (!m_links.insert(link).second) m_in.Fail(*item, "duplicate linkId '" + link + "'");
            start(link, *item);
            read_item(*item, link);
            read_items(*item);
        }
    }

    void read_item(const JsonValue& item, const std::string& link) {
        static const std::map<std::string_view, Make> types = {
            {"choice", &QuestionReader::add_choice},      {"coding", &QuestionReader::add_choice},
            {"open-choice", &QuestionReader::add_choice}, {"boolean", &QuestionReader::add_boolean},
            {"integer", &QuestionReader::add_integer},    {"decimal", &QuestionReader::add_decimal},
            {"quantity", &QuestionReader::add_quantity},  {"date", &QuestionReader::add_date},
            {"time", &QuestionReader::add_time},          {"string", &QuestionReader::add_text},
            {"text", &QuestionReader::add_text},          {"url", &QuestionReader::add_text},
            {"dateTime", &QuestionReader::add_text},      {"group", &QuestionReader::leave_text},
            {"display", &QuestionReader::leave_text}};
        const std::string type = text(item, "type");
        const auto make = types.find(type);
        if (make == types.end()) {
            return stay_behind("questions of the type '" + type + "' can't be answered here");
        }
        (this->*make->second)(item, link);
        if (item.Find("enableWhen") != nullptr) {
            m_build.Note(
                "is asked under a condition there: a missing answer counts as missing here");
        }
        if (flag(item, "repeats")) {
            m_build.Note("may have several answers there: such a response fails here");
        }
    }

    /// Headings and texts that are shown.
    void leave_text(const JsonValue& item, const std::string&) {
        const std::string shown = detail::withSingleBlanks(text(item, "text"));
        if (!shown.empty()) {
            stay_behind("the text '" + detail::shortened(shown) + "' is shown, not answered");
        }
    }

    CString label(const JsonValue& item, const std::string& link) {
        return plain(orElse(text(item, "text"), link));
    }

    Choice option(const JsonValue& value) {
        Choice choice;
        if (const JsonValue* const coding = value.Find("valueCoding")) {
            m_in.Expect(*coding, Kind::Object);
            choice = choice_of(*coding, text(*coding, "system"));
        } else if (const JsonValue* const number = value.Find("valueInteger")) {
            choice.value = m_in.Whole(*number, cAnyValue);
            choice.code = choice.label =
                CString(std::to_string(static_cast<int>(*choice.value)).c_str());
        } else {
            for (const char* key : {"valueString", "valueDate", "valueTime"}) {
                const std::string given = text(value, key);
                if (!given.empty()) choice.code = choice.label = m_build.Text(given);
            }
        }
        if (const auto number = ordinal(value)) choice.value = number;
        return choice;
    }

    void complete_values(std::vector<Choice>& choices) {
        const auto all = [&choices](auto has) {
            return std::all_of(choices.begin(), choices.end(), has);
        };
        const auto hasValue = [](const Choice& choice) { return choice.value.has_value(); };
        if (all(hasValue)) return;
        if (std::any_of(choices.begin(), choices.end(), hasValue)) {
            m_build.Note(
                "has choices without a number, for instance that it does not apply: give each one "
                "a 'value' where a scale is to count it");
            return;
        }
        if (all([](const Choice& choice) { return numberInLabel(choice.label).has_value(); })) {
            for (Choice& choice : choices) choice.value = numberInLabel(choice.label);
            return;
        }
        double position = 0;
        for (Choice& choice : choices) choice.value = position++;
        m_build.Note(
            "has no numbers behind its choices: they count from 0 in their order; look "
            "whether that is meant");
    }

    /// The choices of a question; none when it has none, which is noted.
    std::vector<Choice> choices_for(const JsonValue& item) {
        std::vector<Choice> choices;
        for (const JsonValue* each : objects(item, "answerOption")) {
            choices.push_back(option(*each));
        }
        const std::string set = text(item, "answerValueSet");
        const auto known = m_valueSets.find(set);
        if (choices.empty() && !set.empty() && known != m_valueSets.end()) choices = known->second;
        if (choices.empty()) {
            stay_behind(set.empty() ? "it has no choices"
                                    : "its choices are those of " + set +
                                          ", which are not part of the file");
        }
        return choices;
    }

    /// Whether choices can be told apart; notes when they can't.
    bool are_codes_good(const std::vector<Choice>& choices) {
        const auto hasCode = [](const Choice& choice) { return !choice.code.IsEmpty(); };
        if (!std::all_of(choices.begin(), choices.end(), hasCode)) {
            stay_behind("a choice has no value that can be chosen");
            return false;
        }
        if (detail::hasEqualCodes(choices)) stay_behind("a code is there twice");
        return !detail::hasEqualCodes(choices);
    }

    void add_choice(const JsonValue& item, const std::string& link) {
        std::vector<Choice> choices = choices_for(item);
        if (choices.empty() || !are_codes_good(choices)) return;
        if (text(item, "type") == "open-choice") {
            m_build.Note("may be answered freely there: such an answer fails here");
        }
        const CString asked = label(item, link);
        if (detail::asksForSex(link, asked.View())) return m_build.AddChoice(link, asked, choices);
        complete_values(choices);
        m_build.AddItem(link, asked, choices);
    }

    void add_boolean(const JsonValue& item, const std::string& link) {
        m_build.AddItem(link, label(item, link),
                        {{"true", "", "Yes", 1.0, ""}, {"false", "", "No", 0.0, ""}});
    }

    detail::NumberRange range(const JsonValue& item) const {
        return {extension(item, cLeast), extension(item, cGreatest)};
    }
    void add_integer(const JsonValue& item, const std::string& link) {
        const detail::NumberRange ends = range(item);
        const auto isInside = [](double end) { return std::abs(end) <= detail::cMaxValue; };
        if (ends.low && ends.high && isInside(*ends.low) && isInside(*ends.high)) {
            return m_build.AddWhole(link, label(item, link), ends);
        }
        m_build.Note(
            "becomes an entry of the form, as its least and greatest number are not given");
        m_build.AddNumber(true, link, label(item, link), ends);
    }
    void add_decimal(const JsonValue& item, const std::string& link) {
        m_build.AddNumber(false, link, label(item, link), range(item));
    }
    void add_quantity(const JsonValue& item, const std::string& link) {
        m_build.Note("becomes a number: its unit is not checked");
        add_decimal(item, link);
    }
    void add_date(const JsonValue& item, const std::string& link) {
        m_build.AddDate(link, label(item, link));
    }
    void add_time(const JsonValue& item, const std::string& link) {
        m_build.AddTime(link, label(item, link));
    }
    void add_text(const JsonValue& item, const std::string& link) {
        constexpr double usual = 255;
        if (text(item, "type") == "dateTime") m_build.Note("becomes a text");
        const JsonValue* const given = item.Find("maxLength");
        const double most = given != nullptr ? number_of(*given) : usual;
        const bool isLong = given == nullptr && text(item, "type") == "text";
        m_build.AddText(link, label(item, link),
                        isLong ? detail::cMaxLength : static_cast<std::size_t>(std::fmax(most, 1)));
    }

    JsonReader m_in;
    const JsonValue& m_root;
    std::map<std::string, std::vector<Choice>> m_valueSets;  ///< by "#id" and by url
    std::set<std::string> m_links;
    detail::ImportBuilder m_build{detail::ImportBuilder::Names::Links};
};

}  // namespace

ImportedQuestionnaire importFhirQuestionnaire(CFile& file) {
    const JsonSource source(file);
    return QuestionReader(source).Read();
}

}  // namespace tessalink
