#include "questionnaire/detail/QuestionnaireCheck.h"

#include <algorithm>

#include "json/NameHint.h"
#include "platform/files/CMemFile.h"
#include "questionnaire/detail/NamedText.h"
#include "report/TemplateChecker.h"
#include "report/VarTable.h"

namespace tessalink::detail {

namespace {

constexpr const char* cScaleKey = "scale";

bool isScaleKey(const CString& name) {
    return name.CompareNoCase(cScaleKey) == 0;
}

std::vector<std::string_view> namesOf(const std::vector<NormName>& names) {
    std::vector<std::string_view> result;
    for (const NormName& name : names) result.push_back(name.text.View());
    return result;
}

bool holds(const std::vector<NormName>& names, const CString& name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const NormName& known) { return known.text == name; });
}

}  // namespace

/// Reads one template and notes what it uses.
class QuestionnaireCheck::Checker : public TemplateChecker {
public:
    Checker(CFile& file, CFile& output, VarTable& definitions, int scrambled,
            QuestionnaireCheck& check)
        : TemplateChecker(file, output, definitions, scrambled), m_check(check) {}

    struct Use {
        CString name;
        TextPlace place;
    };
    std::vector<Use> calls;
    std::vector<Use> includes;

protected:
    void note_read(const CString& name, const TemplateChecker& at) override {
        m_check.m_read.push_back({name, at.token_place()});
    }
    void note_define(const CString& name, const TemplateChecker& /*at*/) override {
        m_check.m_made.insert(name);
    }
    void note_assign(const CString& name, const TemplateChecker& /*at*/) override {
        m_check.m_made.insert(name);
    }
    void note_call(const CString& name, const TemplateChecker& at) override {
        calls.push_back({name, at.token_place()});
    }
    void note_include(const CString& name, bool isConstant, const TemplateChecker& at) override {
        if (isConstant) includes.push_back({name, at.statement_place()});
    }

private:
    QuestionnaireCheck& m_check;
};

void QuestionnaireCheck::Read(const std::string& json) {
    try {
        NamedText file(json, m_files.PathOf(Questionnaire::cFileName));
        const JsonSource source(file);
        const JsonReader in(source, &m_faults);
        ModelReader reader(in);
        reader.Read();
        read_norms(reader, in);
        if (m_faults.empty()) reader.CheckNames();
        read_graphs(reader, in);
        m_model = reader.Model();
        for (std::size_t i = 0; i < m_model.reports.size(); ++i) {
            if (!m_model.reports[i].file.empty()) {
                read_template(m_model.reports[i].file, reader.ReportPlace(i), in);
            }
        }
        if (!m_model.derivedFile.empty()) {
            read_template(m_model.derivedFile, reader.DerivedPlace(), in);
        }
        if (m_faults.empty()) check_variables();
    } catch (const InputError& fault) {
        m_faults.push_back(fault);
    }
}

void QuestionnaireCheck::read_norms(ModelReader& reader, const JsonReader& in) {
    auto& norms = reader.Model().norms;
    if (!norms || norms->file.empty()) return;
    const JsonValue* const fileName = reader.NormsPlace().Find("file");
    in.Attempt([&] {
        const std::string* const text = m_files.Find(norms->file);
        if (text == nullptr) in.Fail(*fileName, "there is no file " + quoted(norms->file));
        NamedText file(*text, m_files.PathOf(norms->file));
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
                in.Fail(score.value, "the norms have no column " + quoted(score.value.text) +
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
                                                CString(quoted(column.text.View())) +
                                                ": name its field in 'keys' of 'norms'");
    }
    const JsonValue* const keys = reader.NormsPlace().Find("keys");
    for (std::size_t i = 0; keys != nullptr && i < source.keys.size(); ++i) {
        const NormSource::Key& key = source.keys[i];
        if (!holds(columns, key.name) || isScaleKey(key.name)) {
            in.Attempt([&] {
                in.Fail(*keys, "the norms have no key " + quoted(key.name.View()) +
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
        m_faults.emplace_back(value.place, CString(quoted(value.text.View())) +
                                               " is no code of the field " +
                                               CString(quoted(field.id.View())));
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
        m_faults.emplace_back(name.place, "unknown scale " + CString(quoted(name.text.View())));
    }
}

void QuestionnaireCheck::read_graphs(ModelReader& reader, const JsonReader& in) {
    const std::string& name = reader.Model().graphFile;
    if (name.empty()) return;
    in.Attempt([&] {
        const std::string* const text = m_files.Find(name);
        if (text == nullptr) in.Fail(reader.GraphsPlace(), "there is no file " + quoted(name));
        NamedText file(*text, m_files.PathOf(name));
        m_graphs = GraphFile::Read(file);
    });
}

void QuestionnaireCheck::read_template(const std::string& name, const JsonValue& place,
                                       const JsonReader& in) {
    in.Attempt([&] {
        const std::string* const text = m_files.Find(name);
        if (text == nullptr) in.Fail(place, "there is no file " + quoted(name));
        check_template(name, *text, isScrambledName(name));
    });
}

/// Checks a template and, once each, the includes that constants name.
void QuestionnaireCheck::check_template(const std::string& name, const std::string& text,
                                        bool isScrambled) {
    if (!m_checked.insert(name).second) return;
    NamedText file(text, m_files.PathOf(name));
    CMemFile output;
    VarTable definitions;
    Checker checker(file, output, definitions, isScrambled ? 1 : 0, *this);
    ParseException fault;
    if (!checker.Parse(&fault)) m_faults.emplace_back(fault.GetPlace(), fault.what());
    for (const Checker::Use& call : checker.calls) {
        if (m_graphs && m_graphs->Has(call.name.View())) continue;
        if (!m_graphs && !m_model.graphFile.empty()) continue;  // its own fault is told
        m_faults.emplace_back(call.place, "there is no graph " + CString(quoted(call.name.View())));
    }
    for (const Checker::Use& include : checker.includes) {
        const IncludedFile part = findInclude(
            include.name.View(), [&](const std::string& wanted) { return m_files.Find(wanted); });
        if (part.text == nullptr || part.isDoubled) {
            m_faults.emplace_back(
                include.place,
                part.isDoubled ? "Include '" + include.name +
                                     "' is there twice, scrambled and plain: remove one!"
                               : "Include '" + include.name + "' is not there, and neither is " +
                                     CString(std::string_view(part.name)) + "!");
            continue;
        }
        check_template(part.name, *part.text, part.isScrambled);
    }
}

/// Variables that neither the questionnaire nor a template makes.
void QuestionnaireCheck::check_variables() {
    std::vector<std::string_view> names;
    const std::vector<MadeName> made = madeNames(m_model);
    for (const MadeName& name : made) m_made.insert(name.name);
    for (const CString& name : m_made) names.push_back(name.View());
    std::set<CString> told;
    for (const VariableRead& read : m_read) {
        if (m_made.contains(read.name) || !told.insert(read.name).second) continue;
        m_faults.emplace_back(read.place, "unknown variable " + CString(quoted(read.name.View())) +
                                              CString(nameHint(read.name.View(), names)));
    }
}

}  // namespace tessalink::detail
