#include "questionnaire/detail/ImportBuilder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "platform/base/NearestLetter.h"
#include "platform/base/Utf8.h"
#include "platform/base/Windows1252.h"
#include "questionnaire/detail/VariableNames.h"
#include "report/VariablesFile.h"

namespace tessalink::detail {

namespace {

/// With the longest ending, "_Missing" or "_Label", a name is still one of a variable.
constexpr std::size_t cMaxId = cMaxVariableName - 8;
constexpr std::size_t cMaxIdentity = 64;
constexpr int cNumberOfFields = 1000000000;
constexpr std::array<const char*, 7> cEndings = {
    "", cValueSuffix, cLabelSuffix, cTextSuffix, cCodeSuffix, cYearSuffix, cMonthSuffix};

/// Names of characters in HTML that questionnaires have.
struct Entity {
    std::string_view name;
    std::string_view text;
};
constexpr Entity cEntities[] = {{"&amp;", "&"},   {"&lt;", "<"},  {"&gt;", ">"},
                                {"&quot;", "\""}, {"&#39;", "'"}, {"&nbsp;", " "}};

bool isBlank(char ch) {
    return ch == ' ' || ch == '\t' || ch == '\r' || ch == '\n';
}

bool isLetterOfName(char ch) {
    return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || (ch >= '0' && ch <= '9') ||
           ch == '_';
}

char small(char ch) {
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
}

/// The length of an HTML tag at the start of a text; 0 when there is none.
std::size_t tagLength(std::string_view text) {
    if (text.size() < 3 || text[0] != '<') return 0;
    const bool isTag = text[1] == '/' || text[1] == '!' || small(text[1]) != text[1] ||
                       (text[1] >= 'a' && text[1] <= 'z');
    const std::size_t end = text.find('>');
    return isTag && end != std::string_view::npos ? end + 1 : 0;
}

/// Without tags; entities become what they name, and white space single blanks.
std::string withoutHtml(std::string_view text) {
    std::string plain;
    const auto addBlank = [&plain] {
        if (!plain.empty() && plain.back() != ' ') plain += ' ';
    };
    while (!text.empty()) {
        const auto* const entity =
            std::find_if(std::begin(cEntities), std::end(cEntities),
                         [text](const Entity& e) { return text.starts_with(e.name); });
        if (const std::size_t tag = tagLength(text)) {
            addBlank();
            text.remove_prefix(tag);
        } else if (entity != std::end(cEntities)) {
            plain += entity->text;
            text.remove_prefix(entity->name.size());
        } else if (isBlank(text.front())) {
            addBlank();
            text.remove_prefix(1);
        } else {
            plain += text.front();
            text.remove_prefix(1);
        }
    }
    while (!plain.empty() && plain.back() == ' ') plain.pop_back();
    return plain;
}

bool isSame(const Choice& a, const Choice& b) {
    return a.code == b.code && a.label == b.label && a.value == b.value && a.system == b.system;
}

}  // namespace

std::optional<double> numberOf(std::string_view text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    const bool isGood = error == std::errc() && last == end && std::isfinite(number) &&
                        std::abs(number) <= cNumberOfFields;
    return isGood ? std::optional(number) : std::nullopt;
}

bool takeCodesAsValues(std::vector<Choice>& choices) {
    for (const Choice& choice : choices) {
        if (!numberOf(choice.code.View())) return false;
    }
    for (Choice& choice : choices) choice.value = numberOf(choice.code.View());
    return true;
}

ImportedQuestionnaire ImportBuilder::Take() {
    return std::move(m_result);
}

void ImportBuilder::Note(std::string text) {
    m_result.notes.push_back({m_place, std::move(text)});
}

CString ImportBuilder::Text(std::string_view utf8) {
    const std::string plain = withoutHtml(utf8);
    std::string text;
    bool isWhole = true;
    for (std::string_view rest = plain; !rest.empty();) {
        const char32_t character = takeUtf8(rest).value_or(cReplacementCharacter);
        const auto letter = fromUnicode(character);
        isWhole = isWhole && letter.has_value();
        text += letter.value_or(nearestLetter(character));
    }
    if (!isWhole) Note("has letters that reports lack: the nearest ones stand for them");
    return CString(std::move(text));
}

/// Takes a name and all that variables are called after it; false when one of them is taken.
bool ImportBuilder::take_names(const std::string& name) {
    std::vector<std::string> names;
    for (const char* ending : cEndings) {
        std::string made = name + ending;
        std::transform(made.begin(), made.end(), made.begin(), small);
        if (m_names.contains(made)) return false;
        names.push_back(std::move(made));
    }
    m_names.insert(names.begin(), names.end());
    return true;
}

CString ImportBuilder::Name(std::string_view wanted) {
    std::string name;
    for (const char ch : wanted) name += isLetterOfName(ch) ? ch : '_';
    const std::size_t first = name.find_first_not_of('_');
    name.erase(0, first == std::string::npos ? name.size() : first);
    if (name.empty() || (name[0] >= '0' && name[0] <= '9')) name.insert(0, "I");
    name.resize(std::min(name.size(), cMaxId));
    const auto isGood = [this](const std::string& id) {
        return isVariableName(id) && !isCommandName(id) && take_names(id);
    };
    std::string id = name;
    for (int number = 2; !isGood(id); ++number) {
        const std::string ending = "_" + std::to_string(number);
        id = name.substr(0, cMaxId - ending.size()) + ending;
    }
    if (id != wanted) Note("is called " + id + " here, as names of variables must be");
    return id.c_str();
}

CString ImportBuilder::Identity(std::string_view name) {
    std::string id;
    for (const char ch : name.substr(0, cMaxIdentity)) {
        id += isLetterOfName(ch) || ch == '-' || ch == '.' ? ch : '-';
    }
    return id.empty() ? "imported" : id.c_str();
}

ResponseSet& ImportBuilder::add_set() {
    ResponseSet& set = m_result.model.responseSets.emplace_back();
    set.id = CString(("answers" + std::to_string(m_result.model.responseSets.size())).c_str());
    return set;
}

std::size_t ImportBuilder::Choices(const std::vector<Choice>& choices) {
    const std::vector<ResponseSet>& sets = m_result.model.responseSets;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        const std::vector<Choice>& known = sets[i].choices;
        if (std::equal(known.begin(), known.end(), choices.begin(), choices.end(), isSame)) {
            return i;
        }
    }
    add_set().choices = choices;
    return sets.size() - 1;
}

std::size_t ImportBuilder::Whole(int lowest, int highest) {
    const std::vector<ResponseSet>& sets = m_result.model.responseSets;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        if (!sets[i].HasChoices() && sets[i].lowest == lowest && sets[i].highest == highest) {
            return i;
        }
    }
    ResponseSet& set = add_set();
    set.lowest = lowest;
    set.highest = highest;
    return sets.size() - 1;
}

void ImportBuilder::AddItem(const CString& id, const CString& text, std::size_t set,
                            const std::string& linkId) {
    m_result.model.items.push_back({id, linkId, text, set});
}

Field& ImportBuilder::AddField(Field::Type type, const CString& id, const CString& label,
                               const std::string& linkId) {
    constexpr std::size_t usualLength = 255;
    Field& field = m_result.model.fields.emplace_back();
    field.id = id;
    field.linkId = linkId;
    field.label = label;
    field.type = type;
    if (type == Field::Type::Text) field.maxLength = usualLength;
    return field;
}

void ImportBuilder::AddNumber(bool isWhole, const CString& id, const CString& label,
                              std::optional<double> low, std::optional<double> high,
                              const std::string& linkId) {
    const bool isGood = !low || !high || *low < *high;
    if (!isGood) Note("has no numbers between its ends: all may be given");
    Field& field =
        AddField(isWhole ? Field::Type::Integer : Field::Type::Decimal, id, label, linkId);
    field.lowest = isGood ? low.value_or(-cNumberOfFields) : -cNumberOfFields;
    field.highest = isGood ? high.value_or(cNumberOfFields) : cNumberOfFields;
    if (field.lowest >= field.highest) field.lowest = -cNumberOfFields;
    if (isWhole) {
        field.lowest = std::ceil(field.lowest);
        field.highest = std::floor(field.highest);
    }
}

}  // namespace tessalink::detail
