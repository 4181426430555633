#include "questionnaire/detail/QuestionnaireCheck.h"

#include <algorithm>
#include <set>

#include "json/NameHint.h"
#include "questionnaire/detail/NamedText.h"
#include "questionnaire/detail/TemplateCheck.h"

namespace tessalink::detail {

namespace {

constexpr const char* cScaleKey = "scale";

bool isScaleKey(const CString& name) {
    return name.CompareNoCase(cScaleKey) == 0;
}

std::vector<std::string_view> namesOf(const std::vector<NormName>& names) {
    std::vector<std::string_view> result;
    result.reserve(names.size());
    for (const NormName& name : names) result.push_back(name.text.View());
    return result;
}

bool holds(const std::vector<NormName>& names, const CString& name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const NormName& known) { return known.text == name; });
}

}  // namespace

void QuestionnaireCheck::Read() {
    const CString path = m_files.PathOf(Questionnaire::cFileName);
    try {
        const std::string* const json = m_files.Find(Questionnaire::cFileName);
        if (json == nullptr) throw InputError({path, 1, 1}, "there is no such file");
        NamedText file(*json, path);
        const JsonSource source(file);
        const JsonReader in(source, &m_faults);
        ModelReader reader(in);
        reader.Read();
        read_norms(reader, in);
        if (m_faults.empty()) reader.CheckNames();
        const bool isModelGood = m_faults.empty();
        read_graphs(reader, in);
        m_model = reader.Model();
        read_templates(reader, in, isModelGood);
    } catch (const InputError& fault) {
        m_faults.push_back(fault);
    }
}

void QuestionnaireCheck::read_norms(ModelReader& reader, const JsonReader& in) {
    auto& norms = reader.Model().norms;
    if (!norms || norms->file.empty()) return;
    const JsonValue* const fileName = reader.NormsPlace().Find("file");
    in.Attempt([&] {
        NamedText file(need(norms->file, *fileName, in), m_files.PathOf(norms->file));
        m_norms = NormTable::Read(file);
    });
    if (!m_norms) return;
    std::vector<CString> columns;
    for (const NormColumn& column : m_norms->GetColumns()) columns.push_back(column.name.text);
    if (norms->scores.empty()) {
        norms->scores = columns;
    } else if (const JsonValue* const scores = reader.NormsPlace().Find("scores")) {
        const std::vector<std::string_view> known(columns.begin(), columns.end());
        for (const JsonMember& score : scores->members) {
            const CString name{std::string_view(score.value.text)};
            if (std::find(columns.begin(), columns.end(), name) != columns.end()) continue;
            in.Attempt([&] {
                in.Fail(score.value, "the norms have no column " + inQuotes(score.value.text) +
                                         nameHint(score.value.text, known));
            });
        }
    }
    in.Attempt([&] { check_norm_keys(reader, in); });
    in.Attempt([&] { check_norm_scales(reader, in); });
}

void QuestionnaireCheck::check_norm_keys(ModelReader& reader, const JsonReader& in) {
    const NormSource& source = *reader.Model().norms;
    const std::vector<NormName> columns = m_norms->GetKeys();
    const auto isMapped = [&](const CString& name) {
        return std::any_of(source.keys.begin(), source.keys.end(),
                           [&](const NormSource::Key& key) { return key.name == name; });
    };
    for (const NormName& column : columns) {
        if (isScaleKey(column.text) || isMapped(column.text)) continue;
        m_faults.emplace_back(column.place, "the norms depend on " +
                                                CString(inQuotes(column.text.View())) +
                                                ": name its field in 'keys' of 'norms'");
    }
    const JsonValue* const keys = reader.NormsPlace().Find("keys");
    for (std::size_t i = 0; keys != nullptr && i < source.keys.size(); ++i) {
        const NormSource::Key& key = source.keys[i];
        if (!holds(columns, key.name) || isScaleKey(key.name)) {
            in.Attempt([&] {
                in.Fail(*keys, "the norms have no key " + inQuotes(key.name.View()) +
                                   nameHint(key.name.View(), namesOf(columns)));
            });
            continue;
        }
        for (const NormName& column : columns) {
            if (column.text != key.name) continue;
            check_key_values(reader.Model().fields[key.field], column);
        }
    }
    const bool hasAge = source.ageField || source.birthField;
    if (m_norms->HasAges() && !hasAge) {
        in.Fail(reader.NormsPlace(), "the norms depend on age: name its fields in 'age'");
    }
    if (!m_norms->HasAges() && hasAge) {
        in.Fail(*reader.NormsPlace().Find("age"), "the norms don't depend on age");
    }
}

/// What the norms have for a key must be among the choices of its field.
void QuestionnaireCheck::check_key_values(const Field& field, const NormName& column) {
    if (field.type != Field::Type::Choice) return;
    for (const NormName& value : m_norms->GetValues(column.text.View())) {
        const bool isKnown =
            std::any_of(field.choices.begin(), field.choices.end(),
                        [&](const Choice& choice) { return choice.code == value.text; });
        if (isKnown) continue;
        m_faults.emplace_back(value.place, CString(inQuotes(value.text.View())) +
                                               " is no code of the field " +
                                               CString(inQuotes(field.id.View())));
    }
}

void QuestionnaireCheck::check_norm_scales(ModelReader& reader, const JsonReader& in) {
    const QuestionnaireModel& model = reader.Model();
    const std::vector<NormName> columns = m_norms->GetKeys();
    const auto key = std::find_if(columns.begin(), columns.end(),
                                  [](const NormName& name) { return isScaleKey(name.text); });
    if (key == columns.end()) {
        in.Fail(*reader.NormsPlace().Find("file"),
                "no key of the norms is named 'scale': add a column with the ids of the scales in "
                "front of 'raw'");
    }
    const std::vector<NormName> scales = m_norms->GetValues(key->text.View());
    for (std::size_t i = 0; i < model.scales.size(); ++i) {
        const Scale& scale = model.scales[i];
        if (holds(scales, scale.id) == scale.hasNorms || scale.id.IsEmpty()) continue;
        in.Attempt([&] {
            in.Fail(reader.PlaceOf(NameOwner::Scale, i),
                    scale.hasNorms ? "the norms have no rows of this scale: add them, or say "
                                     "\"norms\": false"
                                   : "the norms have rows of this scale, which says \"norms\": "
                                     "false");
        });
    }
    for (const NormName& name : scales) {
        const bool isKnown = std::any_of(model.scales.begin(), model.scales.end(),
                                         [&](const Scale& scale) { return scale.id == name.text; });
        if (isKnown) continue;
        m_faults.emplace_back(name.place, "unknown scale " + CString(inQuotes(name.text.View())));
    }
}

void QuestionnaireCheck::read_graphs(ModelReader& reader, const JsonReader& in) {
    const std::string& name = reader.Model().graphFile;
    if (name.empty()) return;
    in.Attempt([&] {
        NamedText file(need(name, reader.GraphsPlace(), in), m_files.PathOf(name));
        m_graphs = GraphFile::Read(file);
    });
}

void QuestionnaireCheck::read_templates(ModelReader& reader, const JsonReader& in,
                                        bool isModelGood) {
    std::set<CString> made;
    if (isModelGood) {
        for (const MadeName& name : madeNames(m_model)) made.insert(name.name);
    }
    const auto isGraph = [this](std::string_view name) {
        // A graph file with a fault has told it.
        return m_graphs ? m_graphs->Has(name) : !m_model.graphFile.empty();
    };
    const auto isMade = [&made](std::string_view name) { return made.contains(CString(name)); };
    TemplateCheck templates(m_files, m_faults, isGraph, isMade);
    const auto read = [&](const std::string& name, const JsonValue& place) {
        in.Attempt([&] { templates.Read(name, need(name, place, in)); });
    };
    for (std::size_t i = 0; i < m_model.reports.size(); ++i) {
        const std::string& name = m_model.reports[i].file;
        if (!name.empty()) read(name, reader.ReportPlace(i));
    }
    if (!m_model.derivedFile.empty()) read(m_model.derivedFile, reader.DerivedPlace());
    if (!isModelGood) return;
    templates.ReadNamed();
    if (!m_faults.empty()) return;
    made.insert(templates.MadeVariables().begin(), templates.MadeVariables().end());
    const std::vector<std::string_view> known(made.begin(), made.end());
    templates.CheckVariables(known);
    if (!m_graphs) return;
    const std::vector<InputError> faults = m_graphs->FindUnknownVariables(known);
    m_faults.insert(m_faults.end(), faults.begin(), faults.end());
}

/// The bytes of a file that the value at `place` names; it must be there.
const std::string& QuestionnaireCheck::need(const std::string& name, const JsonValue& place,
                                            const JsonReader& in) {
    const std::string* const text = m_files.Find(name);
    if (text == nullptr) in.Fail(place, "there is no file " + inQuotes(name));
    return *text;
}

}  // namespace tessalink::detail
