#include <algorithm>
#include <array>
#include <map>
#include <set>

#include "json/JsonReader.h"
#include "json/JsonSource.h"
#include "platform/base/Windows1252.h"
#include "questionnaire/QuestionnaireImport.h"
#include "questionnaire/detail/FieldText.h"
#include "questionnaire/detail/ImportBuilder.h"

namespace tessalink {

namespace {

using Kind = JsonValue::Kind;

constexpr std::size_t cMost = 100000;  ///< members of a list
constexpr std::array<std::string_view, 3> cOrdinals = {
    "http://hl7.org/fhir/StructureDefinition/ordinalValue",
    "http://hl7.org/fhir/StructureDefinition/itemWeight",
    "http://hl7.org/fhir/StructureDefinition/questionnaire-ordinalValue"};
constexpr std::string_view cLeast = "http://hl7.org/fhir/StructureDefinition/minValue";
constexpr std::string_view cGreatest = "http://hl7.org/fhir/StructureDefinition/maxValue";

class QuestionReader {
public:
    explicit QuestionReader(const JsonSource& source) : m_in(source), m_root(source.Root()) {}

    ImportedQuestionnaire Read() {
        m_in.Expect(m_root, Kind::Object);
        if (text(m_root, "resourceType") != "Questionnaire") {
            m_in.Fail(m_root, "is no FHIR Questionnaire");
        }
        read_value_sets();
        read_items(m_root);
        read_identity();
        if (m_build.Model().items.empty()) m_in.Fail(m_root, "no question can be an item");
        return m_build.Take();
    }

private:
    using Make = void (QuestionReader::*)(const JsonValue& item, const std::string& link);

    /// The text of a key; empty when there is none.
    std::string text(const JsonValue& object, std::string_view key) const {
        const JsonValue* const value = object.Find(key);
        return value != nullptr ? m_in.Utf8(*value) : std::string();
    }
    bool flag(const JsonValue& object, std::string_view key) const {
        const JsonValue* const value = object.Find(key);
        return value != nullptr && m_in.Flag(*value);
    }
    /// The objects of a list; none when there is no such key.
    std::vector<const JsonValue*> objects(const JsonValue& object, std::string_view key) const {
        std::vector<const JsonValue*> result;
        const JsonValue* const list = object.Find(key);
        if (list == nullptr) return result;
        for (const JsonMember& member : m_in.Members(*list, Kind::List, cMost)) {
            m_in.Expect(member.value, Kind::Object);
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
                return number_of(*value);
            }
        }
        return std::nullopt;
    }
    double number_of(const JsonValue& value) const {
        constexpr double most = 1e9;
        return m_in.Number(value, {-most, most}).value_or(0);
    }
    std::optional<double> ordinal(const JsonValue& element) const {
        for (const std::string_view url : cOrdinals) {
            if (const auto number = extension(element, url)) return number;
        }
        return std::nullopt;
    }

    void read_identity() {
        QuestionnaireModel& model = m_build.Model();
        const std::string name = text(m_root, "name");
        const std::string title = text(m_root, "title");
        const auto otherwise = [](const std::string& given, const char* other) {
            return given.empty() ? std::string(other) : given;
        };
        m_build.Start("");
        model.id = detail::ImportBuilder::Identity(name.empty() ? text(m_root, "id") : name);
        model.title =
            m_build.Text(otherwise(title.empty() ? name : title, "Imported questionnaire"));
        model.version = m_build.Text(otherwise(text(m_root, "version"), "1"));
        model.language = m_build.Text(otherwise(text(m_root, "language"), "en"));
        model.licence = m_build.Text(otherwise(text(m_root, "copyright"), "not known: fill in"));
        const std::string url = text(m_root, "url");
        model.source =
            m_build.Text(otherwise(url.empty() ? text(m_root, "publisher") : url, "FHIR"));
    }

    Choice choice_of(const JsonValue& concept_, const std::string& system) {
        Choice choice;
        const std::string code = text(concept_, "code");
        if (code.empty()) m_in.Fail(concept_, "'code' is missing");
        const std::string display = text(concept_, "display");
        choice.code = m_build.Text(code);
        choice.label = m_build.Text(display.empty() ? code : display);
        choice.system = system;
        choice.value = ordinal(concept_);
        return choice;
    }

    void read_value_sets() {
        for (const JsonValue* set : objects(m_root, "contained")) {
            if (text(*set, "resourceType") != "ValueSet") continue;
            const std::string id = text(*set, "id");
            m_build.Start("#" + id);
            std::vector<Choice>& choices = m_valueSets[id];
            if (const JsonValue* const compose = set->Find("compose")) {
                m_in.Expect(*compose, Kind::Object);
                for (const JsonValue* include : objects(*compose, "include")) {
                    for (const JsonValue* each : objects(*include, "concept")) {
                        choices.push_back(choice_of(*each, text(*include, "system")));
                    }
                }
            }
            const JsonValue* const expansion = set->Find("expansion");
            if (!choices.empty() || expansion == nullptr) continue;
            m_in.Expect(*expansion, Kind::Object);
            for (const JsonValue* each : objects(*expansion, "contains")) {
                choices.push_back(choice_of(*each, text(*each, "system")));
            }
        }
    }

    void read_items(const JsonValue& parent) {
        for (const JsonValue* item : objects(parent, "item")) {
            if (const JsonValue* const modifier = item->Find("modifierExtension")) {
                m_in.Fail(*modifier, "changes what is meant in a way that is not known here");
            }
            const std::string link = text(*item, "linkId");
            if (link.empty()) m_in.Fail(*item, "'linkId' is missing");
            if (!m_links.insert(link).second) m_in.Fail(*item, "duplicate linkId '" + link + "'");
            m_build.Start(link);
            read_item(*item, link);
            read_items(*item);
        }
    }

    void read_item(const JsonValue& item, const std::string& link) {
        static const std::map<std::string_view, Make> types = {
            {"choice", &QuestionReader::add_choice},      {"coding", &QuestionReader::add_choice},
            {"open-choice", &QuestionReader::add_choice}, {"boolean", &QuestionReader::add_boolean},
            {"integer", &QuestionReader::add_integer},    {"decimal", &QuestionReader::add_decimal},
            {"date", &QuestionReader::add_date},          {"time", &QuestionReader::add_time},
            {"string", &QuestionReader::add_text},        {"text", &QuestionReader::add_text},
            {"url", &QuestionReader::add_text},           {"dateTime", &QuestionReader::add_text}};
        const std::string type = text(item, "type");
        if (type == "group" || type == "display") return;
        const auto make = types.find(type);
        if (make == types.end()) {
            m_build.Note("stays behind: questions of the type '" + type +
                         "' can't be answered here");
            return;
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

    CString label(const JsonValue& item, const std::string& link) {
        const std::string given = text(item, "text");
        return m_build.Text(given.empty() ? link : given);
    }
    /// Kept where the id is another.
    static std::string kept(const std::string& link, const CString& id) {
        return id.View() == link ? std::string() : link;
    }

    Choice option(const JsonValue& value) {
        Choice choice;
        if (const JsonValue* const coding = value.Find("valueCoding")) {
            m_in.Expect(*coding, Kind::Object);
            choice = choice_of(*coding, text(*coding, "system"));
        } else if (const JsonValue* const number = value.Find("valueInteger")) {
            choice.value = number_of(*number);
            choice.code = choice.label =
                CString(std::to_string(static_cast<long long>(*choice.value)).c_str());
        } else {
            for (const char* key : {"valueString", "valueDate", "valueTime"}) {
                const JsonValue* const given = value.Find(key);
                if (given != nullptr) choice.code = choice.label = m_build.Text(m_in.Utf8(*given));
            }
            if (choice.code.IsEmpty()) m_in.Fail(value, "has no value that can be chosen");
        }
        if (const auto number = ordinal(value)) choice.value = number;
        return choice;
    }

    /// "Several days (1)": the number in brackets at the end.
    static std::optional<double> numberInLabel(const CString& label) {
        const std::string_view text = label.View();
        const std::size_t open = text.rfind('(');
        if (open == std::string_view::npos || text.back() != ')') return std::nullopt;
        return detail::numberOf(text.substr(open + 1, text.size() - open - 2));
    }

    void complete_values(std::vector<Choice>& choices) {
        const auto all = [&choices](auto has) {
            return std::all_of(choices.begin(), choices.end(), has);
        };
        if (all([](const Choice& choice) { return choice.value.has_value(); })) return;
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

    void add_choice(const JsonValue& item, const std::string& link) {
        std::vector<Choice> choices;
        for (const JsonValue* each : objects(item, "answerOption"))
            choices.push_back(option(*each));
        const std::string set = text(item, "answerValueSet");
        if (choices.empty() && set.starts_with('#') && m_valueSets.contains(set.substr(1))) {
            choices = m_valueSets[set.substr(1)];
        }
        if (choices.empty()) {
            m_build.Note(set.empty() ? "stays behind: it has no choices"
                                     : "stays behind: its choices are in " + set +
                                           ", which is not part of the file");
            return;
        }
        std::set<CString> codes;
        for (const Choice& choice : choices) {
            if (codes.insert(choice.code).second) continue;
            m_build.Note("stays behind: the code '" + toUtf8(choice.code.View()) +
                         "' is there twice");
            return;
        }
        if (text(item, "type") == "open-choice") {
            m_build.Note("may be answered freely there: such an answer fails here");
        }
        complete_values(choices);
        const CString id = m_build.Name(link);
        m_build.AddItem(id, label(item, link), m_build.Choices(choices), kept(link, id));
    }

    void add_boolean(const JsonValue& item, const std::string& link) {
        const std::vector<Choice> choices = {{"true", "", "Yes", 1.0, ""},
                                             {"false", "", "No", 0.0, ""}};
        const CString id = m_build.Name(link);
        m_build.AddItem(id, label(item, link), m_build.Choices(choices), kept(link, id));
    }

    void add_integer(const JsonValue& item, const std::string& link) {
        const auto low = extension(item, cLeast);
        const auto high = extension(item, cGreatest);
        const CString id = m_build.Name(link);
        const bool isItem = low && high && *low < *high;
        if (!isItem) {
            m_build.AddNumber(true, id, label(item, link), low, high, kept(link, id));
            m_build.Note(
                "becomes an entry of the form, as its least and greatest number are not "
                "given");
            return;
        }
        m_build.AddItem(id, label(item, link),
                        m_build.Whole(static_cast<int>(*low), static_cast<int>(*high)),
                        kept(link, id));
    }

    void add_decimal(const JsonValue& item, const std::string& link) {
        const CString id = m_build.Name(link);
        m_build.AddNumber(false, id, label(item, link), extension(item, cLeast),
                          extension(item, cGreatest), kept(link, id));
    }
    void add_date(const JsonValue& item, const std::string& link) {
        add_field(Field::Type::Date, item, link);
    }
    void add_time(const JsonValue& item, const std::string& link) {
        add_field(Field::Type::Time, item, link);
    }
    void add_text(const JsonValue& item, const std::string& link) {
        add_field(Field::Type::Text, item, link);
        if (text(item, "type") == "dateTime") m_build.Note("becomes a text");
    }
    void add_field(Field::Type type, const JsonValue& item, const std::string& link) {
        const CString id = m_build.Name(link);
        m_build.AddField(type, id, label(item, link), kept(link, id));
    }

    JsonReader m_in;
    const JsonValue& m_root;
    std::map<std::string, std::vector<Choice>> m_valueSets;
    std::set<std::string> m_links;
    detail::ImportBuilder m_build;
};

}  // namespace

ImportedQuestionnaire importFhirQuestionnaire(CFile& file) {
    const JsonSource source(file);
    return QuestionReader(source).Read();
}

}  // namespace tessalink
