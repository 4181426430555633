#include "graphs/file/detail/GraphReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/base/NumberText.h"
#include "report/PlainText.h"
#include "report/VariablesFile.h"

namespace tessalink::detail {

namespace {

constexpr char cReference = '@';
constexpr const char* cReferenceForms =
    "invalid reference: write @Name for a variable, @{Name} before a letter, @{Name:1} for one "
    "decimal, @@ for @";
constexpr int cMaxDecimals = 15;

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

/// A number that is not known.
bool isNan(const VariantVar& variable) {
    return variable.IsDouble() && std::isnan(variable.GetAsDouble());
}

/// Without the escapes that keep plain text from being RTF.
CString plainText(const VariantVar& variable, int decimals) {
    if (isNan(variable)) return {};
    return decimals >= 0 && variable.IsNumber() ? formatDouble(variable.GetAsDouble(), 0, decimals)
                                                : unescapeText(variable.GetAsStr().View());
}

CString labelText(const VariantVar& variable, int decimals) {
    CString text = plainText(variable, decimals);
    text.Replace("\\", "\\\\");
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

std::vector<std::string_view> colorNames() {
    std::vector<std::string_view> names;
    for (const NamedColor& color : cColors) names.push_back(color.name);
    return names;
}

}  // namespace

std::string noVariable(std::string_view name, std::span<const std::string_view> known) {
    const std::string_view meant = nearestName(name, known);
    return "there is no variable " + inQuotes(name) +
           (meant.empty() ? "" : "; did you mean " + inQuotes(meant) + "?");
}

const VariantVar& GraphReader::Variable(const JsonValue& value, std::string_view name) const {
    if (const VariantVar* variable = m_variables->Find(name)) return *variable;
    std::vector<std::string_view> names;
    for (POSITION position = m_variables->GetStartPosition(); position;) {
        names.push_back(m_variables->GetNextPair(position)->key.View());
    }
    Fail(value, noVariable(name, names));
}

std::optional<double> GraphReader::number_of(const JsonValue& value) const {
    if (!value.Is(JsonValue::Kind::Text)) return JsonReader::number_of(value);
    const std::string_view name = soleReference(value.text);
    if (name.empty()) Fail(value, "must be a number, or a variable as \"@Score\"");
    if (!HasVariables()) {
        note(value, name);
        return std::nullopt;
    }
    const VariantVar& variable = Variable(value, name);
    if (!variable.IsNumber() || !std::isfinite(variable.GetAsDouble())) {
        Fail(value, "the variable " + inQuotes(name) + " is not a number");
    }
    return variable.GetAsDouble();
}

bool GraphReader::IsMissing(const JsonValue& value) const {
    if (!value.Is(JsonValue::Kind::Text) || !HasVariables()) return false;
    const std::string_view name = soleReference(value.text);
    if (name.empty()) return false;
    const VariantVar& variable = Variable(value, name);
    return isNan(variable) || (variable.IsString() && variable.Text().empty());
}

CString GraphReader::Literal(const JsonValue& value) const {
    Expect(value, JsonValue::Kind::Text);
    return Source().TextOf(value);
}

std::optional<CString> GraphReader::Text(const JsonValue& value) const {
    return Expanded(value, plainText);
}

std::optional<CString> GraphReader::Label(const JsonValue& value) const {
    return Expanded(value, labelText);
}

std::optional<CString> GraphReader::Expanded(const JsonValue& value, TextOf textOf) const {
    const CString text = Literal(value);
    CString result;
    bool isOpen = false;
    for (std::string_view rest = text.View(); !rest.empty();) {
        const std::size_t plain = std::min(rest.find(cReference), rest.size());
        result += rest.substr(0, plain);
        rest.remove_prefix(plain);
        if (!rest.empty()) {
            const Reference reference = referenceAt(rest.substr(1));
            if (reference.length == 0) Fail(value, cReferenceForms);
            rest.remove_prefix(reference.length);
            if (reference.name.empty()) {
                result += cReference;
            } else if (HasVariables()) {
                result += textOf(Variable(value, reference.name), reference.decimals);
            } else {
                note(value, reference.name);
                isOpen = true;
            }
        }
        if (result.View().size() > cMaxGraphText) {
            Fail(value, "the text is longer than " + std::to_string(cMaxGraphText) + " characters");
        }
    }
    return isOpen ? std::nullopt : std::optional(result);
}

std::optional<COLORREF> GraphReader::Color(const JsonValue& value) const {
    const std::string_view name = soleReference(value.text);
    if (!name.empty() && !HasVariables()) {
        note(value, name);
        return std::nullopt;
    }
    if (name.empty() ? value.Is(JsonValue::Kind::Number) : !Variable(value, name).IsString()) {
        const auto index = Whole(value, {0, static_cast<double>(m_palette.size()) - 1});
        return m_palette[static_cast<std::size_t>(*index)];
    }
    const auto text = Text(value);
    if (!text) return std::nullopt;
    if (const auto color = hexColor(text->View())) return color;
    const auto named = std::find_if(std::begin(cColors), std::end(cColors),
                                    [&](const NamedColor& c) { return text->View() == c.name; });
    if (named != std::end(cColors)) return named->color;
    Fail(value, inQuotes(text->View()) +
                    " is not a color: write \"#RRGGBB\", a number in the palette, or a name" +
                    nameHint(text->View(), colorNames()));
}

}  // namespace tessalink::detail
