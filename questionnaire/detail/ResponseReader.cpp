#include "questionnaire/detail/ResponseReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <set>

#include "json/JsonReader.h"
#include "json/JsonSource.h"
#include "platform/base/CodePage.h"
#include "questionnaire/detail/FieldText.h"
#include "questionnaire/detail/NamedText.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cMostItems = 100000;
constexpr std::string_view cValuePrefix = "value";

/// What an answer's value[x] says.
struct AnswerValue {
    const JsonValue* place = nullptr;
    std::string type;    ///< "Coding"
    std::string text;    ///< the code of a coding; a number as it is written
    std::string system;  ///< of a coding
    std::optional<double> number;
};

/// Types whose text is the value.
constexpr std::array<std::string_view, 6> cTextTypes = {"String", "Text", "Uri",
                                                        "Date",   "Time", "DateTime"};

std::string utf8(const CString& text) {
    return toUtf8(text.View());
}

/// The id in "Patient/7", "http://example.org/Patient/7/_history/2" or "urn:uuid:...".
std::string referredId(std::string_view reference) {
    reference = reference.substr(0, reference.find("/_history/"));
    return std::string(reference.substr(reference.find_last_of("/:") + 1));
}

/// Of a point in time a date takes the day. A time has no parts of seconds here.
std::string_view usedPart(Field::Type type, const AnswerValue& value) {
    const std::string_view text = value.text;
    constexpr std::size_t dayLength = 10;
    if (type == Field::Type::Date && value.type == "DateTime") return text.substr(0, dayLength);
    if (type == Field::Type::Time && value.type == "Time") return text.substr(0, text.find('.'));
    return text;
}

/// Reads one resource.
class ResourceReader {
public:
    ResourceReader(const ResponseReader& target, const JsonReader& in, std::string_view json,
                   Respondent& respondent)
        : m_target(target), m_in(in), m_json(json), m_respondent(respondent) {}

    /// The linkId that is read.
    const std::string& Question() const { return m_question; }

    void Read(const JsonValue& resource) {
        m_in.Expect(resource, JsonValue::Kind::Object);
        m_respondent.id = id_of(resource);
        check_type(resource);
        check_status(resource);
        read_items(resource);
        if (m_answered.empty() && m_hasItems) {
            m_in.Fail(*resource.Find("item"),
                      "no question has a linkId of the questionnaire: give its items and fields "
                      "the linkIds of these responses");
        }
    }

private:
    const std::string* text_of(const JsonValue& object, std::string_view key) const {
        const JsonValue* const value = object.Find(key);
        return value != nullptr ? &m_in.Utf8(*value) : nullptr;
    }

    void check_type(const JsonValue& resource) const {
        const std::string* const type = text_of(resource, "resourceType");
        if (type == nullptr) m_in.Fail(resource, "'resourceType' is missing");
        if (*type == "QuestionnaireResponse") return;
        m_in.Fail(*resource.Find("resourceType"), "is no QuestionnaireResponse");
    }

    void check_status(const JsonValue& resource) const {
        refuse_modifiers(resource);
        const std::string* const status = text_of(resource, "status");
        if (status == nullptr) m_in.Fail(resource, "'status' is missing");
        if (*status == "completed" || *status == "amended") return;
        m_in.Fail(*resource.Find("status"),
                  "is '" + *status + "': only responses that are completed or amended are taken");
    }

    void refuse_modifiers(const JsonValue& element) const {
        if (const JsonValue* const modifier = element.Find("modifierExtension")) {
            m_in.Fail(*modifier, "changes what is meant in a way that is not known here");
        }
    }

    std::string id_of(const JsonValue& resource) const {
        if (const JsonValue* const subject = resource.Find("subject")) {
            m_in.Expect(*subject, JsonValue::Kind::Object);
            const JsonValue* const identifier = subject->Find("identifier");
            if (identifier != nullptr) {
                m_in.Expect(*identifier, JsonValue::Kind::Object);
                if (const std::string* const value = text_of(*identifier, "value")) return *value;
            }
            if (const std::string* const reference = text_of(*subject, "reference")) {
                return referredId(*reference);
            }
        }
        const std::string* const id = text_of(resource, "id");
        return id != nullptr ? *id : std::string();
    }

    void read_items(const JsonValue& parent) {
        const JsonValue* const items = parent.Find("item");
        if (items == nullptr) return;
        for (const JsonMember& item : m_in.Members(*items, JsonValue::Kind::List, cMostItems)) {
            m_hasItems = true;
            m_in.Expect(item.value, JsonValue::Kind::Object);
            refuse_modifiers(item.value);
            read_item(item.value);
        }
    }

    void read_item(const JsonValue& item) {
        const std::string* const link = text_of(item, "linkId");
        if (link == nullptr) m_in.Fail(item, "'linkId' is missing");
        if (const LinkTarget* const target = m_target.Find(*link)) {
            m_question = *link;
            read_answers(item, *link, *target);
            m_question.clear();
        }
        read_items(item);
        const JsonValue* const answers = item.Find("answer");
        if (answers == nullptr) return;
        for (const JsonMember& answer : m_in.Members(*answers, JsonValue::Kind::List, cMostItems)) {
            m_in.Expect(answer.value, JsonValue::Kind::Object);
            read_items(answer.value);
        }
    }

    void read_answers(const JsonValue& item, const std::string& link, const LinkTarget& target) {
        if (!m_answered.insert(link).second) m_in.Fail(item, "the question is there twice");
        const JsonValue* const answers = item.Find("answer");
        if (answers == nullptr) return;
        const auto& members = m_in.Members(*answers, JsonValue::Kind::List, cMostItems);
        if (members.empty()) return;
        if (members.size() > 1) m_in.Fail(*answers, "has several answers: one can be taken");
        const AnswerValue value = value_of(members.front().value);
        if (value.place == nullptr) return;
        if (target.isField) {
            take_field(value, target.index);
        } else {
            take_answer(value, target.index);
        }
    }

    AnswerValue value_of(const JsonValue& answer) const {
        m_in.Expect(answer, JsonValue::Kind::Object);
        refuse_modifiers(answer);
        AnswerValue result;
        for (const JsonMember& member : answer.members) {
            if (!std::string_view(member.key).starts_with(cValuePrefix)) continue;
            if (result.place != nullptr) m_in.Fail(member.value, "is a second value");
            result.place = &member.value;
            result.type = member.key.substr(cValuePrefix.size());
        }
        if (result.place != nullptr) read_value(result);
        return result;
    }

    void read_value(AnswerValue& value) const {
        const JsonValue& place = *value.place;
        if (value.type == "Coding") {
            m_in.Expect(place, JsonValue::Kind::Object);
            const std::string* const code = text_of(place, "code");
            if (code == nullptr) m_in.Fail(place, "'code' is missing");
            value.text = *code;
            if (const std::string* const system = text_of(place, "system")) value.system = *system;
        } else if (value.type == "Integer" || value.type == "Decimal") {
            read_number(value, place);
        } else if (value.type == "Quantity") {
            m_in.Expect(place, JsonValue::Kind::Object);
            const JsonValue* const number = place.Find("value");
            if (number == nullptr) m_in.Fail(place, "'value' is missing");
            read_number(value, *number);
        } else if (value.type == "Boolean") {
            value.text = m_in.Flag(place) ? "true" : "false";
            value.number = m_in.Flag(place) ? 1 : 0;
        } else if (std::find(cTextTypes.begin(), cTextTypes.end(), value.type) !=
                   cTextTypes.end()) {
            value.text = m_in.Utf8(place);
        } else {
            m_in.Fail(place, "value" + value.type + " can't be taken");
        }
    }

    void read_number(AnswerValue& value, const JsonValue& place) const {
        m_in.Expect(place, JsonValue::Kind::Number);
        value.number = place.number;
        value.text = m_json.substr(place.start, place.end - place.start);
    }

    static bool isChosen(const Choice& choice, const AnswerValue& value) {
        if (utf8(choice.code) != value.text) return false;
        return choice.system.empty() || value.system.empty() || choice.system == value.system;
    }

    /// The position of a choice: by code, or else by its label or number where the value is no
    /// coding.
    std::int32_t position_of(const std::vector<Choice>& choices, const AnswerValue& value) const {
        const auto find = [&](auto isWanted) {
            return std::find_if(choices.begin(), choices.end(), isWanted);
        };
        auto found = find([&](const Choice& choice) { return isChosen(choice, value); });
        if (found == choices.end() && value.type != "Coding") {
            found = find([&](const Choice& choice) {
                return value.number ? choice.value == value.number
                                    : utf8(choice.label) == value.text;
            });
        }
        if (found == choices.end()) {
            m_in.Fail(*value.place,
                      "'" + shortened(value.text) + "' is not a code" +
                          (value.system.empty() ? "" : " of " + shortened(value.system)) +
                          "; there are " + listedChoices(choices, false));
        }
        return static_cast<std::int32_t>(found - choices.begin()) + 1;
    }

    void take_answer(const AnswerValue& value, std::size_t item) {
        const QuestionnaireModel& model = m_target.Model();
        const ResponseSet& set = model.responseSets[model.items[item].responses];
        if (set.HasChoices()) {
            m_respondent.answers[item] = position_of(set.choices, value);
            return;
        }
        const auto number = readWhole(value.text, false);
        if (!number || *number < set.lowest || *number > set.highest) {
            m_in.Fail(*value.place, "'" + shortened(value.text) + "' is not a whole number from " +
                                        std::to_string(set.lowest) + " to " +
                                        std::to_string(set.highest));
        }
        m_respondent.answers[item] = *number;
    }

    void take_field(const AnswerValue& value, std::size_t index) {
        const Field& field = m_target.Model().fields[index];
        FieldValue& result = m_respondent.fields[index];
        if (field.type == Field::Type::Choice) {
            result = position_of(field.choices, value);
            return;
        }
        const std::string fault = readFieldText(field, usedPart(field.type, value), {}, result);
        if (!fault.empty()) m_in.Fail(*value.place, "'" + shortened(value.text) + "' " + fault);
    }

    const ResponseReader& m_target;
    const JsonReader& m_in;
    std::string_view m_json;
    Respondent& m_respondent;
    std::string m_question;
    std::set<std::string> m_answered;
    bool m_hasItems = false;
};

}  // namespace

ResponseReader::ResponseReader(Questionnaire questionnaire)
    : m_questionnaire(std::move(questionnaire)) {
    const QuestionnaireModel& model = Model();
    for (std::size_t i = 0; i < model.items.size(); ++i) {
        m_targets.try_emplace(linkIdOf(model.items[i]), LinkTarget{false, i});
    }
    for (std::size_t i = 0; i < model.fields.size(); ++i) {
        m_targets.try_emplace(linkIdOf(model.fields[i]), LinkTarget{true, i});
    }
}

const LinkTarget* ResponseReader::Find(const std::string& linkId) const {
    const auto found = m_targets.find(linkId);
    return found != m_targets.end() ? &found->second : nullptr;
}

void ResponseReader::Read(std::string_view json, std::uint64_t line, RespondentRow& row) const {
    row.line = line;
    row.failure.reset();
    row.carried.clear();
    row.respondent.id.clear();
    row.respondent.answers.assign(Model().items.size(), std::nullopt);
    row.respondent.fields.assign(Model().fields.size(), FieldValue());
    std::string question;
    try {
        NamedText file(json, "");
        const JsonSource source(file);
        const JsonReader in(source);
        ResourceReader reader(*this, in, json, row.respondent);
        try {
            reader.Read(source.Root());
        } catch (const InputError&) {
            question = reader.Question();
            throw;
        }
    } catch (const InputError& error) {
        const TextPlace& place = error.GetPlace();
        row.failure = RowFailure{question, "",
                                 "line " + std::to_string(line + place.line - 1) + ", column " +
                                     std::to_string(place.column) + ": " + toUtf8(error.what())};
    }
}

}  // namespace tessalink::detail
