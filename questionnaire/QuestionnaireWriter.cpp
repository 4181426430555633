#include <array>

#include "json/JsonWriter.h"
#include "platform/base/CodePage.h"
#include "questionnaire/QuestionnaireImport.h"
#include "questionnaire/detail/Utf8.h"

namespace tessalink {

namespace {

using detail::utf8;

// The words of questionnaire.json, by their enumerations.
constexpr std::array<const char*, 2> cMethods = {"sum", "mean"};
constexpr std::array<const char*, 3> cReplacements = {"none", "mean", "midpoint"};
constexpr std::array<const char*, 4> cKinds = {"missing", "longestRun", "shares", "inconsistency"};
constexpr std::array<const char*, 6> cTypes = {"text",   "integer", "decimal",
                                               "choice", "date",    "time"};

class ModelWriter {
public:
    explicit ModelWriter(const QuestionnaireModel& model) : m_model(model) {}

    std::string Write() {
        m_json.StartObject();
        text("id", m_model.id);
        text("title", m_model.title);
        text("version", m_model.version);
        text("language", m_model.language);
        text("licence", m_model.licence);
        text("source", m_model.source);
        add_sets();
        lines("items", m_model.items, [this](const Item& item) { add_item(item); });
        list("scales", m_model.scales, [this](const Scale& scale) { add_scale(scale); });
        list("vectors", m_model.vectors, [this](const VectorScore& each) { add_vector(each); });
        list("indexes", m_model.indexes, [this](const AnsweringIndex& each) { add_index(each); });
        add_fields();
        if (m_model.wordsField) add_words();
        if (m_model.norms) add_norms(*m_model.norms);
        file("graphs", m_model.graphFile);
        file("derived", m_model.derivedFile);
        lines("reports", m_model.reports, [this](const ReportTemplate& report) {
            text("id", report.id);
            text("title", report.title);
            m_json.Text("template", report.file);
        });
        m_json.EndObject();
        return m_json.Take();
    }

private:
    void text(const char* key, const CString& value) { m_json.Text(key, utf8(value)); }
    void file(const char* key, const std::string& name) {
        if (!name.empty()) m_json.Text(key, name);
    }
    /// A list of objects, whose members `add` writes; nothing for an empty one.
    template <class VALUES, class ADD>
    void list(const char* key, const VALUES& values, ADD add) {
        if (values.empty()) return;
        m_json.Key(key).StartList();
        for (const auto& value : values) {
            m_json.StartObject();
            add(value);
            m_json.EndObject();
        }
        m_json.EndList();
    }
    /// The same with an object a line.
    template <class VALUES, class ADD>
    void lines(const char* key, const VALUES& values, ADD add) {
        if (values.empty()) return;
        m_json.Key(key).StartList();
        for (const auto& value : values) {
            m_json.StartShortObject();
            add(value);
            m_json.EndShortObject();
        }
        m_json.EndList();
    }
    void item_ids(const char* key, const std::vector<std::size_t>& items) {
        m_json.Key(key).StartShortList();
        for (const std::size_t item : items) m_json.Text(utf8(m_model.items[item].id));
        m_json.EndList();
    }
    void choices(const std::vector<Choice>& values) {
        lines("choices", values, [this](const Choice& choice) {
            text("code", choice.code);
            if (!choice.key.IsEmpty()) text("key", choice.key);
            text("label", choice.label);
            if (choice.value) m_json.Number("value", *choice.value);
            file("system", choice.system);
        });
    }

    void add_sets() {
        m_json.Key("responseSets").StartObject();
        for (const ResponseSet& set : m_model.responseSets) {
            m_json.Key(utf8(set.id)).StartObject();
            if (set.HasChoices()) {
                choices(set.choices);
            } else {
                m_json.Key("whole").StartShortList();
                m_json.Number(set.lowest);
                m_json.Number(set.highest);
                m_json.EndList();
            }
            m_json.EndObject();
        }
        m_json.EndObject();
    }

    void add_item(const Item& item) {
        text("id", item.id);
        text("text", item.text);
        text("responses", m_model.responseSets[item.responses].id);
        file("linkId", item.linkId);
    }

    void add_scale(const Scale& scale) {
        text("id", scale.id);
        text("title", scale.title);
        lines("items", scale.items, [this](const ScaleItem& item) {
            text("item", m_model.items[item.item].id);
            if (item.isReversed) m_json.Flag("reverse", true);
            if (item.weight != 1) m_json.Number("weight", item.weight);
        });
        m_json.Text("score", cMethods[static_cast<std::size_t>(scale.method)]);
        m_json.Key("missing").StartObject();
        m_json.Number("allowed", static_cast<double>(scale.missingAllowed));
        m_json.Text("replace", cReplacements[static_cast<std::size_t>(scale.replacement)]);
        m_json.EndObject();
        if (m_model.norms) m_json.Flag("norms", scale.hasNorms);
        if (scale.normFactor != 1) m_json.Number("normFactor", scale.normFactor);
    }

    void add_vector(const VectorScore& vector) {
        text("id", vector.id);
        text("title", vector.title);
        text("horizontal", m_model.scales[vector.horizontal].id);
        text("vertical", m_model.scales[vector.vertical].id);
        if (vector.sectors.empty()) return;
        m_json.Key("sectors").StartShortList();
        for (const CString& sector : vector.sectors) m_json.Text(utf8(sector));
        m_json.EndList();
    }

    void add_index(const AnsweringIndex& index) {
        text("id", index.id);
        m_json.Text("kind", cKinds[static_cast<std::size_t>(index.kind)]);
        if (index.kind == AnsweringIndex::Kind::Inconsistency) {
            return lines("pairs", index.pairs, [this](const AnsweringIndex::Pair& pair) {
                item_ids("items", {pair.first, pair.second});
                if (pair.isReversed) m_json.Flag("reverse", true);
            });
        }
        if (index.kind == AnsweringIndex::Kind::Shares) {
            text("responses", m_model.responseSets[index.responses].id);
        }
        item_ids("items", index.items);
    }

    void add_fields() {
        if (m_model.fields.empty()) return;
        m_json.Key("fields").StartList();
        for (const Field& field : m_model.fields) {
            const bool isLine = field.choices.empty();
            isLine ? m_json.StartShortObject() : m_json.StartObject();
            add_field(field);
            isLine ? m_json.EndShortObject() : m_json.EndObject();
        }
        m_json.EndList();
    }

    void add_field(const Field& field) {
        text("id", field.id);
        text("label", field.label);
        m_json.Text("type", cTypes[static_cast<std::size_t>(field.type)]);
        file("linkId", field.linkId);
        if (field.type == Field::Type::Text) {
            m_json.Number("length", static_cast<double>(field.maxLength));
        } else if (field.type == Field::Type::Choice) {
            choices(field.choices);
        } else if (field.type == Field::Type::Integer || field.type == Field::Type::Decimal) {
            m_json.Number("min", field.lowest);
            m_json.Number("max", field.highest);
        }
    }

    void add_words() {
        const Field& field = m_model.fields[*m_model.wordsField];
        m_json.Key("words").StartObject();
        text("field", field.id);
        m_json.Key("words").StartObject();
        for (const PersonWord& word : m_model.words) {
            m_json.Key(utf8(word.name)).StartObject();
            for (std::size_t i = 0; i < word.words.size(); ++i) {
                m_json.Text(utf8(field.choices[i].code), utf8(word.words[i]));
            }
            text("otherwise", word.otherwise);
            m_json.EndObject();
        }
        m_json.EndObject();
        m_json.EndObject();
    }

    void add_norms(const NormSource& norms) {
        const auto id = [this](std::size_t field) { return utf8(m_model.fields[field].id); };
        m_json.Key("norms").StartObject();
        m_json.Text("file", norms.file);
        m_json.Key("scores").StartShortList();
        for (const CString& score : norms.scores) m_json.Text(utf8(score));
        m_json.EndList();
        if (norms.confidence) m_json.Number("confidence", *norms.confidence);
        if (!norms.keys.empty()) {
            m_json.Key("keys").StartObject();
            for (const NormSource::Key& key : norms.keys) {
                m_json.Text(utf8(key.name), id(key.field));
            }
            m_json.EndObject();
        }
        if (norms.ageField) m_json.Text("age", id(*norms.ageField));
        if (norms.birthField && norms.testField) {
            m_json.Key("age").StartObject();
            m_json.Text("birth", id(*norms.birthField));
            m_json.Text("test", id(*norms.testField));
            m_json.EndObject();
        }
        m_json.EndObject();
    }

    const QuestionnaireModel& m_model;
    JsonWriter m_json{JsonWriter::Form::Indented};
};

}  // namespace

std::string writeQuestionnaire(const QuestionnaireModel& model) {
    return ModelWriter(model).Write();
}

}  // namespace tessalink
