#include "questionnaire/FhirResponses.h"

#include "json/JsonWriter.h"
#include "platform/base/CodePage.h"
#include "questionnaire/detail/ResourceBlocks.h"
#include "questionnaire/detail/ResponseReader.h"
#include "questionnaire/detail/Utf8.h"
#include "questionnaire/detail/WholeScores.h"

namespace tessalink {

struct FhirResponses::Data {
    Data(CFile& file, const Questionnaire& questionnaire) : blocks(file), reader(questionnaire) {
        if (blocks.OtherEntries() > 0) {
            notes.push_back(std::to_string(blocks.OtherEntries()) +
                            " entries of the Bundle are no QuestionnaireResponse and passed over");
        }
    }

    detail::ResourceBlocks blocks;
    detail::ResponseReader reader;
    std::vector<std::string> carried;
    std::vector<std::string> notes;
};

FhirResponses::FhirResponses(CFile& file, const Questionnaire& questionnaire)
    : m_data(std::make_unique<Data>(file, questionnaire)) {}

FhirResponses::~FhirResponses() = default;

bool FhirResponses::ReadBlock(ResponseBlock& block) {
    return m_data->blocks.ReadBlock(block);
}

void FhirResponses::Parse(const ResponseBlock& block,
                          const std::function<void(RespondentRow&)>& use) const {
    RespondentRow row;
    std::uint64_t number = block.firstRow;
    std::uint64_t line = block.firstLine;
    std::string_view rest = block.bytes;
    while (!rest.empty()) {
        const std::size_t end = m_data->blocks.HasLines() ? rest.find('\n') + 1 : rest.size();
        const std::string_view resource = rest.substr(0, end);
        rest.remove_prefix(end);
        if (!detail::isBlankLine(resource)) {
            row.number = number++;
            m_data->reader.Read(resource, line, row);
            use(row);
        }
        ++line;
    }
}

const std::vector<std::string>& FhirResponses::CarriedColumns() const {
    return m_data->carried;
}

const std::vector<std::string>& FhirResponses::Notes() const {
    return m_data->notes;
}

namespace {

using detail::utf8;

/// Writes the answers of a person.
class ResponseWriter {
public:
    std::string Write(const QuestionnaireModel& model, const Respondent& respondent) {
        m_json.StartObject();
        m_json.Text("resourceType", "QuestionnaireResponse");
        m_json.Text("questionnaire", utf8(model.id) + "|" + utf8(model.version));
        m_json.Text("status", "completed");
        m_json.Key("subject").StartObject();
        m_json.Key("identifier").StartObject();
        m_json.Text("value", respondent.id);
        m_json.EndObject();
        m_json.EndObject();
        m_json.Key("item").StartList();
        for (std::size_t i = 0; i < model.fields.size(); ++i) {
            add_field(model.fields[i], respondent.fields[i]);
        }
        for (std::size_t i = 0; i < model.items.size(); ++i) {
            const Item& item = model.items[i];
            add_item(item, model.responseSets[item.responses], respondent.answers[i]);
        }
        m_json.EndList();
        m_json.EndObject();
        return m_json.Take();
    }

private:
    template <class QUESTION, class PUT>
    void add(const QUESTION& question, const CString& text, PUT put) {
        m_json.StartObject();
        m_json.Text("linkId", detail::linkIdOf(question));
        m_json.Text("text", utf8(text));
        m_json.Key("answer").StartList();
        m_json.StartObject();
        put();
        m_json.EndObject();
        m_json.EndList();
        m_json.EndObject();
    }

    void add_choice(const std::vector<Choice>& choices, std::int32_t position) {
        const Choice& choice = choices[static_cast<std::size_t>(position) - 1];
        m_json.Key("valueCoding").StartObject();
        if (!choice.system.empty()) m_json.Text("system", choice.system);
        m_json.Text("code", utf8(choice.code));
        m_json.Text("display", utf8(choice.label));
        m_json.EndObject();
    }

    void add_item(const Item& item, const ResponseSet& set, const Answer& answer) {
        if (!answer) return;
        add(item, item.text, [&] {
            if (set.HasChoices()) return add_choice(set.choices, *answer);
            m_json.Number("valueInteger", *answer);
        });
    }

    void add_field(const Field& field, const FieldValue& value) {
        if (std::holds_alternative<std::monostate>(value)) return;
        add(field, field.label, [&] {
            if (const auto* const text = std::get_if<std::string>(&value)) {
                m_json.Text("valueString", *text);
            } else if (const auto* const number = std::get_if<double>(&value)) {
                m_json.Number("valueDecimal", *number);
            } else if (const auto* const date = std::get_if<Date>(&value)) {
                m_json.Text("valueDate", utf8(detail::isoText(*date)));
            } else if (const auto* const time = std::get_if<Time>(&value)) {
                const std::string text(detail::isoText(*time).View());
                // FHIR wants the seconds.
                m_json.Text("valueTime", time->GetSec() == 0 ? text + ":00" : text);
            } else if (field.type == Field::Type::Choice) {
                add_choice(field.choices, std::get<std::int32_t>(value));
            } else {
                m_json.Number("valueInteger", std::get<std::int32_t>(value));
            }
        });
    }

    JsonWriter m_json{JsonWriter::Form::Line};
};

}  // namespace

std::string writeFhirResponse(const Questionnaire& questionnaire, const Respondent& respondent) {
    return ResponseWriter().Write(questionnaire.Model(), respondent);
}

}  // namespace tessalink
