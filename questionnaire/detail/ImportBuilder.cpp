#include "questionnaire/detail/ImportBuilder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "platform/base/CodePage.h"
#include "platform/base/NearestLetter.h"
#include "platform/base/Utf8.h"
#include "questionnaire/detail/FieldText.h"
#include "questionnaire/detail/ModelLimits.h"
#include "questionnaire/detail/VariableNames.h"
#include "report/VariablesFile.h"

namespace tessalink::detail {

namespace {

constexpr std::array<const char*, 9> cEndings = {"",           cValueSuffix, cLabelSuffix,
                                                 cTextSuffix,  cCodeSuffix,  cYearSuffix,
                                                 cMonthSuffix, cDaySuffix,   cMissingSuffix};
/// With the longest of these endings, a name is still one of a variable.
constexpr std::size_t cMaxId = cMaxVariableName - std::string_view(cMissingSuffix).size();
/// "_10000", behind a name that is taken.
constexpr std::size_t cMaxEnding = 6;
/// What every questionnaire makes.
constexpr std::array<const char*, 4> cTaken = {cQuestionnaireId, cQuestionnaireTitle,
                                               cQuestionnaireVersion, cRespondentId};
/// Names and labels of questions of the person's sex.
constexpr std::array<std::string_view, 2> cSexWords = {"sex", "gender"};

bool isLetterOfName(char ch) {
    return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || (ch >= '0' && ch <= '9') ||
           ch == '_';
}

/// A name of letters, digits and "_" that starts with a letter.
std::string lettersOf(std::string_view wanted) {
    std::string name;
    for (const char ch : wanted) name += isLetterOfName(ch) ? ch : '_';
    name.erase(0, std::min(name.find_first_not_of('_'), name.size()));
    if (name.empty() || (name[0] >= '0' && name[0] <= '9')) name.insert(0, "I");
    return name.substr(0, cMaxId);
}

bool isSame(const Choice& a, const Choice& b) {
    return a.code == b.code && a.label == b.label && a.value == b.value && a.system == b.system;
}

bool isSameSet(const ResponseSet& set, const std::vector<Choice>& choices, int lowest,
               int highest) {
    return set.lowest == lowest && set.highest == highest &&
           std::equal(set.choices.begin(), set.choices.end(), choices.begin(), choices.end(),
                      isSame);
}

}  // namespace

std::optional<double> numberOf(std::string_view text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    const bool isGood = error == std::errc() && last == end && std::isfinite(number) &&
                        std::abs(number) <= cMaxValue;
    return isGood ? std::optional(number) : std::nullopt;
}

bool asksForSex(std::string_view name, std::string_view label) {
    const std::string small[] = {lowered(name), lowered(label)};
    return std::find_first_of(cSexWords.begin(), cSexWords.end(), std::begin(small),
                              std::end(small)) != cSexWords.end();
}

bool takeCodesAsValues(std::vector<Choice>& choices) {
    for (const Choice& choice : choices) {
        if (!numberOf(choice.code.View())) return false;
    }
    for (Choice& choice : choices) choice.value = numberOf(choice.code.View());
    return true;
}

bool hasEqualCodes(const std::vector<Choice>& choices) {
    std::set<CString> codes;
    for (const Choice& choice : choices) codes.insert(choice.code);
    return codes.size() < choices.size();
}

ImportBuilder::ImportBuilder(Names names) : m_names(names) {
    for (const char* name : cTaken) m_taken.insert(lowered(name));
}

void ImportBuilder::Start(std::string name, std::function<TextPlace()> place) {
    m_name = std::move(name);
    m_place = std::move(place);
}

void ImportBuilder::Note(const std::string& text) {
    std::vector<ImportNote>& notes = m_result.notes;
    const bool isKnown = !notes.empty() && notes.back().name == m_name && notes.back().text == text;
    if (!isKnown) notes.push_back({m_place(), m_name, text});
}

CString ImportBuilder::NoItem(const char* what) const {
    std::string message = std::string("no ") + what + " can be an item";
    if (!m_result.notes.empty()) {
        const ImportNote& note = m_result.notes.front();
        message += "; " + note.name + ": " + note.text;
    }
    return CString(fromUtf8(message).text);
}

CString ImportBuilder::Text(std::string_view utf8) {
    std::string text;
    bool isWhole = true;
    while (!utf8.empty()) {
        const char32_t character = takeUtf8(utf8).value_or(cReplacementCharacter);
        const auto letter = fromUnicode(character);
        isWhole = isWhole && letter.has_value();
        text += letter.value_or(nearestLetter(character));
    }
    if (!isWhole) Note("has letters that reports lack: the nearest ones stand for them");
    return CString(std::move(text));
}

CString ImportBuilder::Identity(std::string_view name) {
    std::string id;
    for (const char ch : name.substr(0, cMaxIdentity)) {
        id += isLetterOfName(ch) || ch == '-' || ch == '.' ? ch : '-';
    }
    return id.empty() ? "imported" : id.c_str();
}

/// Takes a name and all that variables are called after it; false when one of them is taken.
bool ImportBuilder::take_names(const std::string& id) {
    std::vector<std::string> names;
    names.reserve(cEndings.size());
    for (const char* ending : cEndings) names.push_back(lowered(id + ending));
    const auto isTaken = [this](const std::string& name) { return m_taken.contains(name); };
    if (std::any_of(names.begin(), names.end(), isTaken)) return false;
    m_taken.insert(names.begin(), names.end());
    return true;
}

CString ImportBuilder::make_id(const std::string& name) {
    const std::string letters = lettersOf(name);
    const auto isGood = [this](const std::string& id) {
        return isVariableName(id) && !isCommandName(id) && take_names(id);
    };
    std::string id = letters;
    // Counted on, so that thousands of long names with the same start are soon done.
    auto& number =
        m_numbers.try_emplace(lowered(letters.substr(0, cMaxId - cMaxEnding)), 1).first->second;
    while (!isGood(id)) {
        const std::string ending = "_" + std::to_string(++number);
        id = letters.substr(0, cMaxId - ending.size()) + ending;
    }
    if (id != name) {
        Note("is called " + id + " here, as names of variables must be");
        if (m_names == Names::Columns) m_result.columnNames[name] = id;
    }
    return id.c_str();
}

/// Kept where the id is another.
std::string ImportBuilder::link_of(const std::string& name, const CString& id) const {
    return m_names == Names::Columns || id.View() == name ? std::string() : name;
}

bool ImportBuilder::has_room(std::size_t count, std::size_t limit, const char* what) {
    if (count <= limit) return true;
    Note("stays behind: there can be at most " + std::to_string(limit) + " " + what);
    return false;
}

/// The response set with these choices or, without any, these numbers; null when there is no room.
ResponseSet* ImportBuilder::set_of(const std::vector<Choice>& choices, int lowest, int highest) {
    std::vector<ResponseSet>& sets = m_result.model.responseSets;
    const auto known = std::find_if(sets.begin(), sets.end(), [&](const ResponseSet& set) {
        return isSameSet(set, choices, lowest, highest);
    });
    if (known != sets.end()) return &*known;
    if (!has_room(choices.size(), cMaxChoices, "choices") ||
        !has_room(sets.size() + 1, cMaxSets, "response sets")) {
        return nullptr;
    }
    ResponseSet& set = sets.emplace_back();
    set.id = CString(("answers" + std::to_string(sets.size())).c_str());
    set.choices = choices;
    set.lowest = lowest;
    set.highest = highest;
    return &set;
}

void ImportBuilder::add_item(const std::string& name, const CString& text, const ResponseSet* set) {
    std::vector<Item>& items = m_result.model.items;
    if (set == nullptr || !has_room(items.size() + 1, cMaxItems, "items")) return;
    const auto position = static_cast<std::size_t>(set - m_result.model.responseSets.data());
    const CString id = make_id(name);
    items.push_back({id, link_of(name, id), text, position});
}

void ImportBuilder::AddItem(const std::string& name, const CString& text,
                            const std::vector<Choice>& choices) {
    add_item(name, text, set_of(choices, 0, 0));
}

void ImportBuilder::AddWhole(const std::string& name, const CString& text,
                             const NumberRange& range) {
    const double low = std::ceil(range.low.value_or(0));
    const double high = std::floor(range.high.value_or(0));
    if (low >= high) return AddNumber(true, name, text, range);
    add_item(name, text, set_of({}, static_cast<int>(low), static_cast<int>(high)));
}

Field* ImportBuilder::add_field(Field::Type type, const std::string& name, const CString& label) {
    std::vector<Field>& fields = m_result.model.fields;
    if (!has_room(fields.size() + 1, cMaxFields, "entries of the form")) return nullptr;
    const CString id = make_id(name);
    Field& field = fields.emplace_back();
    field.id = id;
    field.linkId = link_of(name, id);
    field.label = label;
    field.type = type;
    return &field;
}

void ImportBuilder::AddText(const std::string& name, const CString& label, std::size_t maxLength) {
    constexpr std::size_t most = cMaxLength;
    if (Field* const field = add_field(Field::Type::Text, name, label)) {
        field->maxLength = std::clamp(maxLength, std::size_t{1}, most);
    }
}

void ImportBuilder::AddDate(const std::string& name, const CString& label) {
    add_field(Field::Type::Date, name, label);
}

void ImportBuilder::AddTime(const std::string& name, const CString& label) {
    add_field(Field::Type::Time, name, label);
}

void ImportBuilder::AddChoice(const std::string& name, const CString& label,
                              const std::vector<Choice>& choices) {
    if (!has_room(choices.size(), cMaxChoices, "choices")) return;
    if (Field* const field = add_field(Field::Type::Choice, name, label)) field->choices = choices;
}

/// A range that a questionnaire takes, whole where it must be.
NumberRange ImportBuilder::allowed(const NumberRange& range, bool isWhole) {
    NumberRange result = {std::max(range.low.value_or(-cMaxValue), -cMaxValue),
                          std::min(range.high.value_or(cMaxValue), cMaxValue)};
    if (isWhole) result = {std::ceil(*result.low), std::floor(*result.high)};
    if (*result.low < *result.high) return result;
    Note("has no numbers between its ends: all may be given");
    return {-cMaxValue, cMaxValue};
}

void ImportBuilder::AddNumber(bool isWhole, const std::string& name, const CString& label,
                              const NumberRange& range) {
    const NumberRange ends = allowed(range, isWhole);
    Field* const field =
        add_field(isWhole ? Field::Type::Integer : Field::Type::Decimal, name, label);
    if (field == nullptr) return;
    field->lowest = *ends.low;
    field->highest = *ends.high;
}

}  // namespace tessalink::detail
