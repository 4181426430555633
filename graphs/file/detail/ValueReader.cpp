#include "graphs/file/detail/ValueReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numeric>

#include "platform/base/NumberText.h"
#include "report/VariablesFile.h"

namespace tessalink::detail {

namespace {

constexpr char cReference = '@';
constexpr const char* cReferenceForms =
    "write @Name for a variable, @{Name} before a letter, @{Name:1} for one decimal, @@ for @";
constexpr int cMaxDecimals = 15;

/// What a kind is called, with its article.
constexpr std::array<const char*, 6> cKindNames = {"null",   "true or false", "a number",
                                                   "a text", "a list",        "an object"};

std::string nameOf(JsonValue::Kind kind) {
    return cKindNames[static_cast<std::size_t>(kind)];
}

struct NamedColor {
    std::string_view name;
    COLORREF color;
};
constexpr NamedColor cColors[] = {
    {"black", 0x000000},     {"white", 0xFFFFFF},    {"gray", 0x808080},
    {"grey", 0x808080},      {"silver", 0xC0C0C0},   {"lightgray", 0xD3D3D3},
    {"lightgrey", 0xD3D3D3}, {"darkgray", 0x404040}, {"darkgrey", 0x404040},
    {"red", 0x0000FF},       {"maroon", 0x000080},   {"orange", 0x00A5FF},
    {"yellow", 0x00FFFF},    {"olive", 0x008080},    {"lime", 0x00FF00},
    {"green", 0x008000},     {"teal", 0x808000},     {"aqua", 0xFFFF00},
    {"blue", 0xFF0000},      {"navy", 0x800000},     {"lightblue", 0xE6D8AD},
    {"purple", 0x800080},    {"fuchsia", 0xFF00FF},  {"brown", 0x2A2AA5},
};

/// A number as a message shows it.
std::string shown(double number) {
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

/// How many characters must be typed, dropped or replaced to make one text of the other.
std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char ch : a) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (ch == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

/// The name of a text that is nothing but a reference; empty for any other.
std::string_view soleReference(std::string_view text) {
    if (!text.starts_with(cReference)) return {};
    text.remove_prefix(1);
    if (text.starts_with('{') && text.ends_with('}')) text = text.substr(1, text.size() - 2);
    return isVariableName(text) ? text : std::string_view();
}

/// A reference within a text.
struct Reference {
    std::string_view name;   ///< empty: "@@"
    int decimals = -1;       ///< -1: as the variable says
    std::size_t length = 0;  ///< in the text, "@" included; 0: none
};

/// "{Name}" or "{Name:1}" after an "@".
Reference bracedReference(std::string_view text) {
    const std::size_t end = text.find('}');
    if (end == std::string_view::npos) return {};
    const std::string_view inner = text.substr(1, end - 1);
    const std::size_t colon = std::min(inner.find(':'), inner.size());
    Reference reference = {inner.substr(0, colon), -1, end + 2};
    if (colon < inner.size()) {
        const char* const last = inner.data() + inner.size();
        const auto number = std::from_chars(inner.data() + colon + 1, last, reference.decimals);
        const bool isGood = number.ec == std::errc() && number.ptr == last &&
                            reference.decimals >= 0 && reference.decimals <= cMaxDecimals;
        if (!isGood) return {};
    }
    return isVariableName(reference.name) ? reference : Reference();
}

/// The reference that a text starts with, after its "@"; of length 0 when it is wrong.
Reference referenceAt(std::string_view text) {
    if (text.starts_with(cReference)) return {{}, -1, 2};
    if (text.starts_with('{')) return bracedReference(text);
    std::size_t length = 0;
    while (length < text.size() && isVariableName(text.substr(0, length + 1))) ++length;
    return {text.substr(0, length), -1, length == 0 ? 0 : length + 1};
}

/// The text of a variable; in a label its backslashes print.
CString textOf(const VariantVar& variable, int decimals, TextForm form) {
    CString text = decimals >= 0 && variable.IsNumber()
                       ? formatDouble(variable.GetAsDouble(), 0, decimals)
                       : variable.GetAsStr();
    if (form == TextForm::Label) text.Replace("\\", "\\\\");
    return text;
}

std::optional<COLORREF> hexColor(std::string_view text) {
    constexpr std::size_t length = 7;  // "#RRGGBB"
    constexpr int hexadecimal = 16;
    std::uint32_t code = 0;
    if (text.size() != length || text.front() != '#') return std::nullopt;
    const char* const last = text.data() + length;
    const auto number = std::from_chars(text.data() + 1, last, code, hexadecimal);
    if (number.ec != std::errc() || number.ptr != last) return std::nullopt;
    constexpr unsigned byteBits = 8;
    constexpr std::uint32_t byteMask = 0xFF;
    return RGB(code >> (2 * byteBits), code >> byteBits & byteMask, code & byteMask);
}

template <class Names>
std::vector<std::string_view> namesOf(const Names& entries) {
    std::vector<std::string_view> names;
    for (const auto& entry : entries) names.push_back(entry.name);
    return names;
}

}  // namespace

std::string_view nearest(std::string_view name, std::span<const std::string_view> candidates) {
    constexpr std::size_t longest = 100;  // of a name that is worth the comparison
    constexpr std::size_t lettersPerError = 3;
    std::string_view best;
    if (name.size() > longest) return best;
    std::size_t least = 1 + std::max<std::size_t>(1, name.size() / lettersPerError);
    for (const std::string_view candidate : candidates) {
        if (candidate.size() > longest) continue;
        const std::size_t distance = editDistance(name, candidate);
        if (distance < least) {
            least = distance;
            best = candidate;
        }
    }
    return best;
}

std::string hintAt(std::string_view name, std::span<const std::string_view> candidates) {
    constexpr std::size_t mostListed = 40;
    if (const std::string_view meant = nearest(name, candidates); !meant.empty()) {
        return "; did you mean " + quoted(meant) + "?";
    }
    if (candidates.empty()) return "; there are none";
    std::string hint = "; there are ";
    for (std::size_t i = 0; i < std::min(candidates.size(), mostListed); ++i) {
        hint += i == 0 ? "" : ", ";
        hint += candidates[i];
    }
    return hint + (candidates.size() > mostListed ? " ..." : "");
}

void ValueReader::ExpectObjectOr(const char* other, const JsonValue& value) const {
    if (value.Is(JsonValue::Kind::Object)) return;
    m_source.Fail(value, std::string("this must be ") + other + " or an object, and is " +
                             nameOf(value.kind));
}

void ValueReader::Expect(const JsonValue& value, JsonValue::Kind kind) const {
    if (value.Is(kind)) return;
    m_source.Fail(value, "this must be " + nameOf(kind) + ", and is " + nameOf(value.kind));
}

const std::vector<JsonMember>& ValueReader::Members(const JsonValue& value, JsonValue::Kind kind,
                                                    std::size_t limit) const {
    Expect(value, kind);
    if (value.members.size() > limit) {
        m_source.Fail(value.members[limit].value,
                      "too many: there may be " + std::to_string(limit) + " here");
    }
    return value.members;
}

void ValueReader::CheckKeys(const JsonValue& object, std::span<const std::string_view> keys) const {
    Expect(object, JsonValue::Kind::Object);
    for (const JsonMember& member : object.members) {
        if (std::find(keys.begin(), keys.end(), member.key) != keys.end()) continue;
        m_source.FailAtKey(member, "no key has this name" + hintAt(member.key, keys));
    }
}

const VariantVar& ValueReader::Variable(const JsonValue& value, std::string_view name) const {
    if (const VariantVar* variable = m_variables->Find(name)) return *variable;
    std::vector<std::string_view> names;
    for (POSITION position = m_variables->GetStartPosition(); position;) {
        names.push_back(m_variables->GetNextPair(position)->key.View());
    }
    const std::string_view meant = nearest(name, names);
    m_source.Fail(value, "there is no variable " + quoted(name) +
                             (meant.empty() ? "" : "; did you mean " + quoted(meant) + "?"));
}

double ValueReader::VariableNumber(const JsonValue& value, std::string_view name) const {
    const VariantVar& variable = Variable(value, name);
    if (variable.IsNumber() && std::isfinite(variable.GetAsDouble())) return variable.GetAsDouble();
    m_source.Fail(value, "the variable " + quoted(name) + " is no number");
}

std::optional<double> ValueReader::Number(const JsonValue& value, const Bounds& bounds) const {
    double number = value.number;
    if (value.Is(JsonValue::Kind::Text)) {
        const std::string_view name = soleReference(value.text);
        if (name.empty()) {
            m_source.Fail(value, "this must be a number, or a variable as \"@Score\"");
        }
        if (!m_variables) return std::nullopt;
        number = VariableNumber(value, name);
    } else {
        Expect(value, JsonValue::Kind::Number);
    }
    if (number < bounds.low || number > bounds.high) {
        m_source.Fail(value, shown(number) + " is not from " + shown(bounds.low) + " to " +
                                 shown(bounds.high));
    }
    return number;
}

std::optional<int> ValueReader::Whole(const JsonValue& value, const Bounds& bounds) const {
    const std::optional<double> number = Number(value, bounds);
    if (!number) return std::nullopt;
    if (*number != std::trunc(*number))
        m_source.Fail(value, shown(*number) + " is no whole number");
    return toInt(*number);
}

std::optional<CString> ValueReader::Text(const JsonValue& value, TextForm form) const {
    Expect(value, JsonValue::Kind::Text);
    CString text = m_source.TextOf(value);
    if (form == TextForm::Literal) return text;
    return Expanded(value, text, form);
}

std::optional<CString> ValueReader::Expanded(const JsonValue& value, const CString& text,
                                             TextForm form) const {
    CString result;
    bool isOpen = false;
    for (std::string_view rest = text.View(); !rest.empty();) {
        const std::size_t plain = std::min(rest.find(cReference), rest.size());
        result += rest.substr(0, plain);
        rest.remove_prefix(plain);
        if (!rest.empty()) {
            const Reference reference = referenceAt(rest.substr(1));
            if (reference.length == 0) m_source.Fail(value, cReferenceForms);
            rest.remove_prefix(reference.length);
            if (reference.name.empty()) {
                result += cReference;
            } else if (m_variables) {
                result += textOf(Variable(value, reference.name), reference.decimals, form);
            } else {
                isOpen = true;
            }
        }
        if (result.View().size() > cMaxGraphText) {
            m_source.Fail(
                value, "the text is longer than " + std::to_string(cMaxGraphText) + " characters");
        }
    }
    return isOpen ? std::nullopt : std::optional(result);
}

std::optional<COLORREF> ValueReader::Color(const JsonValue& value) const {
    if (value.Is(JsonValue::Kind::Number) || !soleReference(value.text).empty()) {
        if (value.Is(JsonValue::Kind::Text) && !m_variables) return std::nullopt;
        const bool isText = value.Is(JsonValue::Kind::Text) &&
                            Variable(value, soleReference(value.text)).IsString();
        if (!isText) {
            const auto index = Whole(value, {0, static_cast<double>(m_palette.size()) - 1});
            return m_palette[static_cast<std::size_t>(*index)];
        }
    }
    const auto text = Text(value, TextForm::Plain);
    if (!text) return std::nullopt;
    if (const auto color = hexColor(text->View())) return color;
    const auto named = std::find_if(std::begin(cColors), std::end(cColors),
                                    [&](const NamedColor& c) { return text->View() == c.name; });
    if (named != std::end(cColors)) return named->color;
    m_source.Fail(value, quoted(text->View()) +
                             " is no color: write \"#RRGGBB\", a number in the palette, or a name" +
                             hintAt(text->View(), namesOf(cColors)));
}

bool ValueReader::Flag(const JsonValue& value) const {
    Expect(value, JsonValue::Kind::Boolean);
    return value.isTrue;
}

std::optional<std::uint16_t> ValueReader::Words(const JsonValue& value,
                                                std::span<const Word> words) const {
    const auto text = Text(value, TextForm::Plain);
    if (!text) return std::nullopt;
    unsigned bits = 0;
    std::vector<int> groups;
    for (std::string_view rest = text->View(); !rest.empty() || groups.empty();) {
        const std::string_view name = rest.substr(0, rest.find(' '));
        const auto word =
            std::find_if(words.begin(), words.end(), [&](const Word& w) { return w.name == name; });
        if (word == words.end()) {
            m_source.Fail(value, quoted(name) + " can't stand here" + hintAt(name, namesOf(words)));
        }
        if (std::find(groups.begin(), groups.end(), word->group) != groups.end()) {
            m_source.Fail(value, quoted(name) + " contradicts the word before it");
        }
        groups.push_back(word->group);
        bits |= word->value;
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
    }
    return static_cast<std::uint16_t>(bits);
}

}  // namespace tessalink::detail
