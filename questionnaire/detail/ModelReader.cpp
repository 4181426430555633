#include "questionnaire/detail/ModelReader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <string>

#include "core/FileText.h"
#include "json/JsonObject.h"
#include "json/NameHint.h"
#include "platform/base/CodePage.h"
#include "questionnaire/detail/ModelLimits.h"
#include "report/VariablesFile.h"

namespace tessalink::detail {

namespace {

constexpr std::size_t cMaxScales = 1000;
constexpr std::size_t cMaxReports = 100;
constexpr std::size_t cMaxPairs = 10000;
constexpr std::size_t cMaxSectors = 360;
constexpr const char* cNoName = "must be a name";
constexpr double cMostPercent = 99.99;
constexpr double cLeastPercent = 1;
constexpr int cDefaultLength = 80;
constexpr JsonBounds cAnyValue = {-cMaxValue, cMaxValue};
constexpr JsonBounds cAnyWhole = {-cMaxValue, cMaxValue};

using Kind = JsonValue::Kind;

constexpr JsonWord cMethods[] = {{"sum", 0}, {"mean", 1}};
constexpr JsonWord cReplacements[] = {{"none", 0}, {"mean", 1}, {"midpoint", 2}};
constexpr JsonWord cIndexKinds[] = {
    {"missing", 0}, {"longestRun", 1}, {"shares", 2}, {"inconsistency", 3}};
constexpr JsonWord cFieldTypes[] = {{"text", 0},   {"integer", 1}, {"decimal", 2},
                                    {"choice", 3}, {"date", 4},    {"time", 5}};

/// A value that a key has when it isn't there, or is faulty: the object's own place.
const JsonValue& placeOf(const JsonValue& object, std::string_view key) {
    const JsonValue* const value = object.Find(key);
    return value != nullptr ? *value : object;
}

struct ChoiceSpec : JsonObject {
    using JsonObject::JsonObject;

    CString code = Text(required("code")).value_or("");
    CString key = Text("key").value_or("");
    CString label = Text(required("label")).value_or("");
    std::optional<double> value = Number("value", cAnyValue);
    std::string system = Utf8("system");
};

struct SetSpec : JsonObject {
    using JsonObject::JsonObject;

    const JsonValue* choices = Value("choices");
    const JsonValue* whole = Value("whole");
};

struct ItemSpec : JsonObject {
    using JsonObject::JsonObject;

    CString id = Text(required("id")).value_or("");
    CString text = Text(required("text")).value_or("");
    const JsonValue* responses = Value(required("responses"));
    std::string linkId = Utf8("linkId");
};

struct ScaleItemSpec : JsonObject {
    using JsonObject::JsonObject;

    const JsonValue* item = Value(required("item"));
    bool isReversed = Flag("reverse").value_or(false);
    double weight = Number("weight", cAnyValue).value_or(1);
};

struct MissingSpec : JsonObject {
    using JsonObject::JsonObject;

    int allowed = Whole(required("allowed"), {0, static_cast<double>(cMaxItems)}).value_or(0);
    std::uint16_t replace = Words("replace", cReplacements).value_or(0);
};

struct ScaleSpec : JsonObject {
    using JsonObject::JsonObject;

    CString id = Text(required("id")).value_or("");
    std::optional<CString> title = Text("title");
    const JsonValue* items = Value(required("items"));
    std::uint16_t method = Words("score", cMethods).value_or(0);
    const JsonValue* missing = Value("missing");
    std::optional<bool> norms = Flag("norms");
    double normFactor = Number("normFactor", {1e-6, cMaxValue}).value_or(1);
};

struct VectorSpec : JsonObject {
    using JsonObject::JsonObject;

    CString id = Text(required("id")).value_or("");
    std::optional<CString> title = Text("title");
    const JsonValue* horizontal = Value(required("horizontal"));
    const JsonValue* vertical = Value(required("vertical"));
    const JsonValue* sectors = Value("sectors");
};

struct IndexSpec : JsonObject {
    using JsonObject::JsonObject;

    CString id = Text(required("id")).value_or("");
    std::optional<std::uint16_t> kind = Words(required("kind"), cIndexKinds);
    const JsonValue* items = Value("items");
    const JsonValue* responses = Value("responses");
    const JsonValue* pairs = Value("pairs");
};

struct PairSpec : JsonObject {
    using JsonObject::JsonObject;

    const JsonValue* items = Value(required("items"));
    bool isReversed = Flag("reverse").value_or(false);
};

struct FieldSpec : JsonObject {
    using JsonObject::JsonObject;

    CString id = Text(required("id")).value_or("");
    CString label = Text(required("label")).value_or("");
    std::string linkId = Utf8("linkId");
    std::optional<Field::Type> type = Words<Field::Type>(required("type"), cFieldTypes);
    const JsonValue* choices = Value("choices");
    std::optional<double> min = Number("min", cAnyValue);
    std::optional<double> max = Number("max", cAnyValue);
    std::optional<int> length = Whole("length", {1, cMaxLength});
};

struct WordsSpec : JsonObject {
    using JsonObject::JsonObject;

    const JsonValue* field = Value(required("field"));
    const JsonValue* words = Value(required("words"));
};

struct AgeSpec : JsonObject {
    using JsonObject::JsonObject;

    const JsonValue* birth = Value(required("birth"));
    const JsonValue* test = Value(required("test"));
};

struct NormsSpec : JsonObject {
    using JsonObject::JsonObject;

    const JsonValue* file = Value(required("file"));
    const JsonValue* scores = Value("scores");
    std::optional<double> confidence = Number("confidence", {cLeastPercent, cMostPercent});
    const JsonValue* keys = Value("keys");
    const JsonValue* age = Value("age");
};

struct ReportSpec : JsonObject {
    using JsonObject::JsonObject;

    CString id = Text(required("id")).value_or("");
    std::optional<CString> title = Text("title");
    const JsonValue* file = Value(required("template"));
};

bool isIdentity(std::string_view id) {
    return !id.empty() && id.size() <= cMaxIdentity &&
           std::all_of(id.begin(), id.end(), [](char ch) {
               return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') ||
                      (ch >= '0' && ch <= '9') || ch == '-' || ch == '.' || ch == '_';
           });
}

}  // namespace

std::vector<std::string_view> NamePlaces::Names() const {
    std::vector<std::string_view> names(m_places.size());
    for (const auto& [name, position] : m_positions) names[position] = name.View();
    return names;
}

struct ModelReader::Root : JsonObject {
    using JsonObject::JsonObject;

    const JsonValue* schema = Value("$schema");
    CString id = Text(required("id")).value_or("");
    CString title = Text(required("title")).value_or("");
    CString version = Text(required("version")).value_or("");
    CString language = Text(required("language")).value_or("");
    CString licence = Text(required("licence")).value_or("");
    CString source = Text(required("source")).value_or("");
    const JsonValue* responseSets = Value("responseSets");
    const JsonValue* items = Value(required("items"));
    const JsonValue* scales = Value("scales");
    const JsonValue* vectors = Value("vectors");
    const JsonValue* indexes = Value("indexes");
    const JsonValue* fields = Value("fields");
    const JsonValue* words = Value("words");
    const JsonValue* norms = Value("norms");
    const JsonValue* graphs = Value("graphs");
    const JsonValue* derived = Value("derived");
    const JsonValue* reports = Value("reports");
};

void ModelReader::Read() {
    m_root = &m_in.Source().Root();
    m_in.Attempt([&] {
        auto root = readObject<Root>(m_in, *m_root);
        m_model.id = root.id;
        m_model.title = root.title;
        m_model.version = root.version;
        m_model.language = root.language;
        m_model.licence = root.licence;
        m_model.source = root.source;
        m_norms = root.norms;
        m_graphs = root.graphs;
        m_derived = root.derived;
        if (m_root->Find("id") != nullptr && !isIdentity(m_model.id.View())) {
            m_in.Attempt(
                [&] { root.Fail("id", "must be 1 to 64 letters, digits, '-', '.' and '_'"); });
        }
        // What others refer to comes first.
        const std::pair<const JsonValue*, void (ModelReader::*)(const JsonValue&)> parts[] = {
            {root.responseSets, &ModelReader::read_sets},
            {root.items, &ModelReader::read_items},
            {root.fields, &ModelReader::read_fields},
            {root.norms, &ModelReader::read_norms},
            {root.scales, &ModelReader::read_scales},
            {root.vectors, &ModelReader::read_vectors},
            {root.indexes, &ModelReader::read_indexes},
            {root.words, &ModelReader::read_words},
            {root.reports, &ModelReader::read_reports}};
        for (const auto& part : parts) {
            if (part.first != nullptr) m_in.Attempt([&] { (this->*part.second)(*part.first); });
        }
        if (m_graphs != nullptr) {
            m_in.Attempt([&] { m_model.graphFile = file_name(*m_graphs); });
        }
        if (m_derived != nullptr) {
            m_in.Attempt([&] { m_model.derivedFile = file_name(*m_derived); });
        }
    });
}

template <class Use>
void ModelReader::each(const JsonValue& values, JsonValue::Kind kind, std::size_t limit, Use use) {
    for (const JsonMember& member : m_in.Members(values, kind, limit)) {
        m_in.Attempt([&] { use(member); });
    }
}

/// A key in the code page.
CString ModelReader::key_text(const JsonMember& member) const {
    CodePageText text = fromUtf8(member.key);
    if (!text.IsWhole()) m_in.Source().FailAtKey(member, notInCodePage());
    return CString(std::move(text.text));
}

/// The position of a name that must be known.
std::size_t ModelReader::named(const NamePlaces& names, const char* what,
                               const JsonValue& name) const {
    m_in.Expect(name, Kind::Text);
    const CodePageText text = fromUtf8(name.text);
    const std::size_t* const position = text.IsWhole() ? names.Find(CString(text.text)) : nullptr;
    if (position != nullptr) return *position;
    m_in.Fail(name, std::string("unknown ") + what + ' ' + inQuotes(name.text) +
                        nameHint(name.text, names.Names()));
}

/// A file in the folder.
std::string ModelReader::file_name(const JsonValue& name) const {
    m_in.Expect(name, Kind::Text);
    const std::string& text = name.text;
    if (text.empty() || text == "." || text == ".." ||
        text.find_first_of("/\\:") != std::string::npos || text.find('\0') != std::string::npos) {
        m_in.Fail(name,
                  inQuotes(text) + " is not the name of a file in the questionnaire's folder");
    }
    return text;
}

std::vector<Choice> ModelReader::read_choices(const JsonValue& choices) const {
    std::vector<Choice> result;
    std::set<CString> codes;
    std::set<char> keys;
    const auto& members = m_in.Members(choices, Kind::List, cMaxChoices);
    if (members.empty()) m_in.Fail(choices, "needs at least one choice");
    for (const JsonMember& member : members) {
        m_in.Attempt([&] {
            const auto spec = readObject<ChoiceSpec>(m_in, member.value);
            if (!codes.insert(spec.code).second) {
                spec.Fail("code", "duplicate code " + inQuotes(spec.code.View()));
            }
            for (const char key : spec.key.View()) {
                if (!keys.insert(key).second) {
                    spec.Fail("key", "duplicate key " + inQuotes(std::string(1, key)));
                }
            }
            result.push_back({spec.code, spec.key, spec.label, spec.value, spec.system});
        });
    }
    return result;
}

void ModelReader::read_sets(const JsonValue& sets) {
    each(sets, Kind::Object, cMaxSets, [&](const JsonMember& member) {
        constexpr double none = std::numeric_limits<double>::quiet_NaN();
        const CString id = key_text(member);
        m_sets.Add(id, member.value);
        ResponseSet& set = m_model.responseSets.emplace_back();
        set.id = id;
        set.min = set.max = none;
        const auto spec = readObject<SetSpec>(m_in, member.value);
        if ((spec.choices == nullptr) == (spec.whole == nullptr)) {
            m_in.Fail(member.value, "must have either 'choices' or 'whole'");
        }
        if (spec.whole != nullptr) {
            const auto& ends = m_in.Members(*spec.whole, Kind::List, 2);
            if (ends.size() != 2)
                m_in.Fail(*spec.whole, "must be the least and the greatest number");
            set.lowest = m_in.Whole(ends[0].value, cAnyWhole).value_or(0);
            set.highest = m_in.Whole(ends[1].value, cAnyWhole).value_or(0);
            if (set.lowest >= set.highest) {
                m_in.Fail(ends[1].value, "must be greater than the least number");
            }
            set.min = set.lowest;
            set.max = set.highest;
            return;
        }
        set.choices = read_choices(*spec.choices);
        const auto hasValue = [](const Choice& choice) { return choice.value.has_value(); };
        if (!std::all_of(set.choices.begin(), set.choices.end(), hasValue)) return;
        for (const Choice& choice : set.choices) {
            set.min = std::fmin(set.min, *choice.value);
            set.max = std::fmax(set.max, *choice.value);
        }
    });
}

void ModelReader::read_items(const JsonValue& items) {
    each(items, Kind::List, cMaxItems, [&](const JsonMember& member) {
        const auto spec = readObject<ItemSpec>(m_in, member.value);
        const bool isNew = m_items.Add(spec.id, placeOf(member.value, "id"));
        Item& item = m_model.items.emplace_back();
        item.id = spec.id;
        item.text = spec.text;
        item.linkId = spec.linkId;
        if (!isNew) spec.Fail("id", "duplicate item " + inQuotes(spec.id.View()));
        if (spec.responses != nullptr) {
            item.responses = named(m_sets, "response set", *spec.responses);
        }
    });
    if (items.members.empty()) m_in.Fail(items, "needs at least one item");
}

ScaleItem ModelReader::read_scale_item(const JsonValue& value) const {
    ScaleItem item;
    if (value.Is(Kind::Text)) {
        item.item = named(m_items, "item", value);
        return item;
    }
    if (!value.Is(Kind::Object)) m_in.FailKind(value, "the id of an item or an object");
    const auto spec = readObject<ScaleItemSpec>(m_in, value);
    item.isReversed = spec.isReversed;
    item.weight = spec.weight;
    if (item.weight == 0) spec.Fail("weight", "must not be 0: leave the item out");
    if (spec.item != nullptr) item.item = named(m_items, "item", *spec.item);
    return item;
}

/// Answers count by their values, so that the set must have them.
void ModelReader::check_set(std::size_t scale, const ScaleItem& item,
                            const JsonValue& place) const {
    if (m_model.items[item.item].responses >= m_model.responseSets.size()) return;
    const ResponseSet& set = m_model.responseSets[m_model.items[item.item].responses];
    if (std::isnan(set.min)) {
        m_in.Fail(place, "the response set " + inQuotes(set.id.View()) +
                             " has no value in some choice: the scale " +
                             inQuotes(m_model.scales[scale].id.View()) + " can't count it");
    }
}

void ModelReader::read_scales(const JsonValue& scales) {
    each(scales, Kind::List, cMaxScales, [&](const JsonMember& member) {
        const auto spec = readObject<ScaleSpec>(m_in, member.value);
        const bool isNew = m_scales.Add(spec.id, placeOf(member.value, "id"));
        const std::size_t index = m_model.scales.size();
        Scale& scale = m_model.scales.emplace_back();
        scale.id = spec.id;
        scale.title = spec.title.value_or(spec.id);
        scale.method = static_cast<Scale::Method>(spec.method);
        scale.hasNorms = spec.norms.value_or(m_norms != nullptr);
        scale.normFactor = spec.normFactor;
        if (scale.hasNorms && m_norms == nullptr) {
            m_in.Attempt([&] { spec.Fail("norms", "the questionnaire has no norms"); });
        }
        if (spec.missing != nullptr) {
            m_in.Attempt([&] {
                const auto missing = readObject<MissingSpec>(m_in, *spec.missing);
                scale.missingAllowed = static_cast<std::size_t>(missing.allowed);
                scale.replacement = static_cast<Scale::Replacement>(missing.replace);
            });
        }
        if (!isNew) {
            m_in.Attempt([&] { spec.Fail("id", "duplicate scale " + inQuotes(spec.id.View())); });
        }
        if (spec.items == nullptr) return;
        std::set<std::size_t> used;
        each(*spec.items, Kind::List, cMaxItems, [&](const JsonMember& entry) {
            const ScaleItem item = read_scale_item(entry.value);
            if (!used.insert(item.item).second) {
                m_in.Fail(entry.value, "the item " + inQuotes(m_model.items[item.item].id.View()) +
                                           " is in this scale already");
            }
            scale.items.push_back(item);
            check_set(index, item, entry.value);
        });
        if (spec.items->members.empty()) m_in.Fail(*spec.items, "needs at least one item");
        if (scale.missingAllowed >= spec.items->members.size()) {
            m_in.Fail(*spec.missing, "'allowed' must be less than the number of items");
        }
    });
}

void ModelReader::read_vectors(const JsonValue& vectors) {
    each(vectors, Kind::List, cMaxScales, [&](const JsonMember& member) {
        const auto spec = readObject<VectorSpec>(m_in, member.value);
        const bool isNew = m_vectors.Add(spec.id, placeOf(member.value, "id"));
        VectorScore& vector = m_model.vectors.emplace_back();
        vector.id = spec.id;
        vector.title = spec.title.value_or(spec.id);
        if (spec.horizontal != nullptr)
            vector.horizontal = named(m_scales, "scale", *spec.horizontal);
        if (spec.vertical != nullptr) vector.vertical = named(m_scales, "scale", *spec.vertical);
        if (spec.id.IsEmpty()) spec.Fail("id", cNoName);
        if (!isNew) spec.Fail("id", "duplicate vector " + inQuotes(spec.id.View()));
        if (spec.sectors == nullptr) return;
        each(*spec.sectors, Kind::List, cMaxSectors, [&](const JsonMember& sector) {
            vector.sectors.push_back(m_in.Text(sector.value).value_or(""));
        });
        if (spec.sectors->members.size() < 2) {
            m_in.Fail(*spec.sectors, "needs at least two sectors");
        }
    });
}

/// Items of a list; all when there is none.
std::vector<std::size_t> ModelReader::read_item_list(const JsonValue* items) const {
    std::vector<std::size_t> result;
    if (items == nullptr) {
        for (std::size_t i = 0; i < m_model.items.size(); ++i) result.push_back(i);
        return result;
    }
    for (const JsonMember& member : m_in.Members(*items, Kind::List, cMaxItems)) {
        m_in.Attempt([&] {
            const std::size_t item = named(m_items, "item", member.value);
            if (std::find(result.begin(), result.end(), item) != result.end()) {
                m_in.Fail(member.value, "duplicate item " + inQuotes(member.value.text));
            }
            result.push_back(item);
        });
    }
    if (result.empty() && items->members.empty()) m_in.Fail(*items, "needs at least one item");
    return result;
}

AnsweringIndex::Pair ModelReader::read_pair(const JsonValue& value) const {
    AnsweringIndex::Pair pair;
    const JsonValue* items = &value;
    if (value.Is(Kind::Object)) {
        const auto spec = readObject<PairSpec>(m_in, value);
        pair.isReversed = spec.isReversed;
        items = spec.items;
    }
    if (items == nullptr) return pair;
    const auto& ends = m_in.Members(*items, Kind::List, 2);
    if (ends.size() != 2) m_in.Fail(*items, "must be a list of two items");
    pair.first = named(m_items, "item", ends[0].value);
    pair.second = named(m_items, "item", ends[1].value);
    if (pair.first == pair.second) m_in.Fail(ends[1].value, "must be another item");
    for (const JsonMember& end : ends) {
        const std::size_t set = m_model.items[named(m_items, "item", end.value)].responses;
        // A set that is not there is a fault of its own.
        if (set < m_model.responseSets.size() && std::isnan(m_model.responseSets[set].min)) {
            m_in.Fail(end.value, "its response set has no value in some choice");
        }
    }
    return pair;
}

void ModelReader::read_indexes(const JsonValue& indexes) {
    using IndexKind = AnsweringIndex::Kind;
    each(indexes, Kind::List, cMaxScales, [&](const JsonMember& member) {
        const auto spec = readObject<IndexSpec>(m_in, member.value);
        const bool isNew = m_indexes.Add(spec.id, placeOf(member.value, "id"));
        AnsweringIndex& index = m_model.indexes.emplace_back();
        index.id = spec.id;
        if (spec.id.IsEmpty()) spec.Fail("id", cNoName);
        if (!isNew) spec.Fail("id", "duplicate index " + inQuotes(spec.id.View()));
        if (!spec.kind) return;
        index.kind = static_cast<IndexKind>(*spec.kind);
        const bool hasPairs = index.kind == IndexKind::Inconsistency;
        const bool hasSet = index.kind == IndexKind::Shares;
        const std::pair<bool, std::pair<const char*, const JsonValue*>> keys[] = {
            {hasPairs, {"pairs", spec.pairs}}, {hasSet, {"responses", spec.responses}}};
        for (const auto& [wanted, key] : keys) {
            const auto& [name, value] = key;
            if (wanted && value == nullptr) spec.Fail("kind", inQuotes(name) + " is missing");
            if (!wanted && value != nullptr) spec.Fail(name, "does not belong to this kind");
        }
        if (hasPairs) {
            if (spec.items != nullptr) spec.Fail("items", "does not belong to this kind");
            each(*spec.pairs, Kind::List, cMaxPairs,
                 [&](const JsonMember& pair) { index.pairs.push_back(read_pair(pair.value)); });
            if (spec.pairs->members.empty()) m_in.Fail(*spec.pairs, "needs at least one pair");
            return;
        }
        index.items = read_item_list(spec.items);
        if (!hasSet) return;
        index.responses = named(m_sets, "response set", *spec.responses);
        if (!m_model.responseSets[index.responses].HasChoices()) {
            m_in.Fail(*spec.responses, "must be a set of choices");
        }
        const auto isOther = [&](std::size_t item) {
            return m_model.items[item].responses != index.responses;
        };
        if (spec.items == nullptr) {
            std::erase_if(index.items, isOther);
            if (index.items.empty()) m_in.Fail(*spec.responses, "no item has this response set");
        } else if (std::any_of(index.items.begin(), index.items.end(), isOther)) {
            m_in.Fail(*spec.items, "has an item of another response set");
        }
    });
}

void ModelReader::read_fields(const JsonValue& fields) {
    each(fields, Kind::List, cMaxFields, [&](const JsonMember& member) {
        const auto spec = readObject<FieldSpec>(m_in, member.value);
        const bool isNew = m_fields.Add(spec.id, placeOf(member.value, "id"));
        Field& field = m_model.fields.emplace_back();
        field.id = spec.id;
        field.label = spec.label;
        field.linkId = spec.linkId;
        if (!isNew) spec.Fail("id", "duplicate field " + inQuotes(spec.id.View()));
        if (!spec.type) return;
        field.type = *spec.type;
        const bool isNumber =
            field.type == Field::Type::Integer || field.type == Field::Type::Decimal;
        const struct {
            const char* key;
            bool isWanted;
            bool isRequired;
        } keys[] = {{"choices", field.type == Field::Type::Choice, true},
                    {"min", isNumber, true},
                    {"max", isNumber, true},
                    {"length", field.type == Field::Type::Text, false}};
        for (const auto& key : keys) {
            const bool isThere = member.value.Find(key.key) != nullptr;
            if (isThere && !key.isWanted) spec.Fail(key.key, "does not belong to this type");
            if (!isThere && key.isRequired && key.isWanted) {
                spec.Fail("type", inQuotes(key.key) + " is missing");
            }
        }
        field.lowest = spec.min.value_or(0);
        field.highest = spec.max.value_or(0);
        field.maxLength = static_cast<std::size_t>(spec.length.value_or(cDefaultLength));
        if (spec.min && spec.max && *spec.min >= *spec.max) {
            spec.Fail("max", "must be greater than 'min'");
        }
        if (field.type == Field::Type::Integer && (field.lowest != std::floor(field.lowest) ||
                                                   field.highest != std::floor(field.highest))) {
            spec.Fail("min", "the ends of an integer must be whole numbers");
        }
        if (spec.choices != nullptr) field.choices = read_choices(*spec.choices);
    });
}

void ModelReader::read_words(const JsonValue& words) {
    const auto spec = readObject<WordsSpec>(m_in, words);
    if (spec.field == nullptr || spec.words == nullptr) return;
    m_model.wordsField = named(m_fields, "field", *spec.field);
    const Field& field = m_model.fields[*m_model.wordsField];
    if (field.type != Field::Type::Choice) m_in.Fail(*spec.field, "must be a field of choices");
    each(*spec.words, Kind::Object, cMaxFields, [&](const JsonMember& member) {
        m_words.Add(CString(std::string_view(member.key)), member.value);
        PersonWord& word = m_model.words.emplace_back();
        word.name = CString(std::string_view(member.key));
        word.words.resize(field.choices.size());
        std::set<std::string> missing = {"otherwise"};
        for (const Choice& choice : field.choices) missing.insert(toUtf8(choice.code.View()));
        each(member.value, Kind::Object, cMaxChoices, [&](const JsonMember& form) {
            const CString text = m_in.Text(form.value).value_or("");
            if (missing.erase(form.key) == 0) {
                m_in.Source().FailAtKey(
                    form, "no choice of " + inQuotes(field.id.View()) + " has this code");
            }
            if (form.key == "otherwise") word.otherwise = text;
            for (std::size_t i = 0; i < field.choices.size(); ++i) {
                if (toUtf8(field.choices[i].code.View()) == form.key) word.words[i] = text;
            }
        });
        for (const std::string& code : missing) {
            m_in.Attempt([&] { m_in.Fail(member.value, inQuotes(code) + " is missing"); });
        }
    });
}

void ModelReader::read_norms(const JsonValue& norms) {
    NormSource& source = m_model.norms.emplace();
    const auto spec = readObject<NormsSpec>(m_in, norms);
    source.confidence = spec.confidence;
    if (spec.file != nullptr) {
        m_in.Attempt([&] { source.file = file_name(*spec.file); });
    }
    if (spec.scores != nullptr) {
        m_in.Attempt([&] {
            each(*spec.scores, Kind::List, cMaxScales, [&](const JsonMember& score) {
                const CString name = m_in.Text(score.value).value_or("");
                if (std::find(source.scores.begin(), source.scores.end(), name) !=
                    source.scores.end()) {
                    m_in.Fail(score.value, "duplicate score " + inQuotes(name.View()));
                }
                source.scores.push_back(name);
            });
            if (spec.scores->members.empty()) m_in.Fail(*spec.scores, "needs at least one score");
        });
    }
    if (spec.keys != nullptr) {
        m_in.Attempt([&] {
            each(*spec.keys, Kind::Object, cMaxFields, [&](const JsonMember& key) {
                source.keys.push_back({key_text(key), named(m_fields, "field", key.value)});
            });
        });
    }
    if (spec.age == nullptr) return;
    const auto fieldOf = [&](const JsonValue& name, std::initializer_list<Field::Type> types,
                             const char* what) {
        const std::size_t field = named(m_fields, "field", name);
        if (std::find(types.begin(), types.end(), m_model.fields[field].type) == types.end()) {
            m_in.Fail(name, std::string("must be a field of the type ") + what);
        }
        return field;
    };
    if (spec.age->Is(Kind::Text)) {
        source.ageField = fieldOf(*spec.age, {Field::Type::Integer, Field::Type::Text},
                                  "integer (years) or text (years:months)");
        return;
    }
    const auto age = readObject<AgeSpec>(m_in, *spec.age);
    if (age.birth != nullptr) source.birthField = fieldOf(*age.birth, {Field::Type::Date}, "date");
    if (age.test != nullptr) source.testField = fieldOf(*age.test, {Field::Type::Date}, "date");
}

void ModelReader::read_reports(const JsonValue& reports) {
    each(reports, Kind::List, cMaxReports, [&](const JsonMember& member) {
        const auto spec = readObject<ReportSpec>(m_in, member.value);
        const bool isNew = m_reports.Add(spec.id, placeOf(member.value, "template"));
        ReportTemplate& report = m_model.reports.emplace_back();
        report.id = spec.id;
        report.title = spec.title.value_or(spec.id);
        if (!isNew) spec.Fail("id", "duplicate report " + inQuotes(spec.id.View()));
        if (!isIdentity(spec.id.View())) {
            spec.Fail("id", "must be 1 to 64 letters, digits, '-', '.' and '_'");
        }
        if (spec.file != nullptr) report.file = file_name(*spec.file);
    });
}

const JsonValue& ModelReader::PlaceOf(NameOwner owner, std::size_t index) const {
    const NamePlaces* const lists[] = {nullptr,    &m_items,  &m_scales, &m_vectors,
                                       &m_indexes, &m_fields, &m_words};
    const NamePlaces* const places = lists[static_cast<std::size_t>(owner)];
    return places == nullptr ? *m_root : places->PlaceOf(index);
}

/// Whether a name is that of a column of tables of responses.
bool ModelReader::is_column(const MadeName& made) const {
    return (made.owner == NameOwner::Item && m_model.items[made.index].id == made.name) ||
           (made.owner == NameOwner::Field && m_model.fields[made.index].id == made.name);
}

/// People write the names of columns in letters of either case.
void ModelReader::check_column(const CString& name, const JsonValue& place,
                               std::map<CString, CString>& columns) const {
    CString small = name;
    small.MakeLower();
    const auto [other, isNew] = columns.try_emplace(small, name);
    if (isNew || other->second == name) return;
    m_in.Fail(place, inQuotes(name.View()) + " differs from " + inQuotes(other->second.View()) +
                         " in small and capital letters alone: choose another id");
}

void ModelReader::CheckNames() const {
    constexpr const char* what[] = {"questionnaire", "item",  "scale", "vector",
                                    "index",         "field", "word"};
    std::map<CString, MadeName> known;
    std::map<CString, CString> columns;  // of tables, by their names in small letters
    for (const MadeName& made : madeNames(m_model)) {
        const JsonValue& place = PlaceOf(made.owner, made.index);
        if (is_column(made)) m_in.Attempt([&] { check_column(made.name, place, columns); });
        m_in.Attempt([&] {
            if (!isVariableName(made.name.View()) || isCommandName(made.name.View())) {
                m_in.Fail(place,
                          "the variable " + inQuotes(made.name.View()) +
                              (isVariableName(made.name.View())
                                   ? " can't be written in a template, where it is a command: "
                                     "choose another id"
                                   : " is not a name: ids make names of up to 32 letters, digits "
                                     "and \"_\", no digit first"));
            }
            const auto [other, isNew] = known.try_emplace(made.name, made);
            if (isNew) return;
            m_in.Fail(place, "the variable " + inQuotes(made.name.View()) + " is made by a " +
                                 what[static_cast<std::size_t>(other->second.owner)] +
                                 " before it already: choose another id");
        });
    }
}

}  // namespace tessalink::detail
