#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "json/JsonReader.h"
#include "platform/base/CString.h"
#include "platform/graphics/Colors.h"
#include "report/VarTable.h"

namespace tessalink::detail {

/// The longest text, references to variables replaced, in bytes.
inline constexpr std::size_t cMaxGraphText = 32767;

/// A variable that a value names.
struct NamedVariable {
    const JsonValue* value = nullptr;
    std::string name;
};

/// Reads values of a graph file, in which variables of a report stand for numbers, colors and parts
/// of texts. Without variables, whatever names one has no value.
class GraphReader : public JsonReader {
public:
    GraphReader(const JsonSource& source, const VarTable* variables)
        : JsonReader(source), m_variables(variables) {}

    bool HasVariables() const { return m_variables != nullptr; }
    /// The variables that the values read so far name; noted when there are no variables.
    const std::vector<NamedVariable>& Named() const { return m_named; }
    /// The colors that numbers stand for; at least one.
    void SetPalette(std::vector<COLORREF> palette) { m_palette = std::move(palette); }
    /// The palette's colors, over and over.
    COLORREF PaletteColor(std::size_t index) const { return m_palette[index % m_palette.size()]; }

    /// Whether the value is a variable that has none, an empty text, as of a scale without score.
    bool IsMissing(const JsonValue& value) const;
    /// A text with the texts of its variables.
    std::optional<CString> Text(const JsonValue& value) const override;
    /// The same for a text that is printed: backslashes of variables switch no fonts.
    std::optional<CString> Label(const JsonValue& value) const;
    /// A text as it stands.
    CString Literal(const JsonValue& value) const;
    std::optional<COLORREF> Color(const JsonValue& value) const;

protected:
    std::optional<double> number_of(const JsonValue& value) const override;

private:
    using TextOf = CString (*)(const VariantVar& variable, int decimals);

    const VariantVar& Variable(const JsonValue& value, std::string_view name) const;
    std::optional<CString> Expanded(const JsonValue& value, TextOf textOf) const;

    void note(const JsonValue& value, std::string_view name) const {
        m_named.push_back({&value, std::string(name)});
    }

    const VarTable* m_variables;
    mutable std::vector<NamedVariable> m_named;
    std::vector<COLORREF> m_palette;
};

/// "there is no variable 'Wory'; did you mean 'Worry'?"
std::string noVariable(std::string_view name, std::span<const std::string_view> known);

}  // namespace tessalink::detail
