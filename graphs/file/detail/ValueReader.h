#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "graphs/file/detail/GraphSource.h"
#include "platform/base/CString.h"
#include "platform/graphics/Colors.h"
#include "report/VarTable.h"

namespace tessalink::detail {

/// The longest text, references to variables replaced, in bytes.
inline constexpr std::size_t cMaxGraphText = 32767;

/// Both ends are good.
struct Bounds {
    double low = 0;
    double high = 0;
};

/// How a text is read: as it stands; with references to variables; the same as a label, in which
/// the backslashes of variables switch no fonts.
enum class TextForm { Literal, Plain, Label };

/// A word that a field takes; of one group there can be only one.
struct Word {
    std::string_view name;
    std::uint16_t value = 0;
    int group = 0;
};

/// The candidate that differs least from a mistyped name; empty when all differ much.
std::string_view nearest(std::string_view name, std::span<const std::string_view> candidates);
/// A hint at the nearest candidate, or a list of all, as the end of a message.
std::string hintAt(std::string_view name, std::span<const std::string_view> candidates);

/// Reads values of a graph file. Every fault is an InputError with the value's place. Without
/// variables whatever names one is left open: the result is nothing.
class ValueReader {
public:
    ValueReader(const GraphSource& source, const VarTable* variables)
        : m_source(source), m_variables(variables) {}

    bool HasVariables() const { return m_variables != nullptr; }
    const GraphSource& Source() const { return m_source; }
    /// The colours that numbers stand for.
    void SetPalette(std::vector<COLORREF> palette) { m_palette = std::move(palette); }

    void Expect(const JsonValue& value, JsonValue::Kind kind) const;
    /// The same where an object may stand for what is `other`, as "a text".
    void ExpectObjectOr(const char* other, const JsonValue& value) const;
    /// The members of a list or object, of which there are not more than `limit`.
    const std::vector<JsonMember>& Members(const JsonValue& value, JsonValue::Kind kind,
                                           std::size_t limit) const;
    /// A key that is none of these is a fault.
    void CheckKeys(const JsonValue& object, std::span<const std::string_view> keys) const;

    std::optional<double> Number(const JsonValue& value, const Bounds& bounds) const;
    std::optional<int> Whole(const JsonValue& value, const Bounds& bounds) const;
    std::optional<CString> Text(const JsonValue& value, TextForm form) const;
    std::optional<COLORREF> Color(const JsonValue& value) const;
    bool Flag(const JsonValue& value) const;
    std::optional<std::uint16_t> Words(const JsonValue& value, std::span<const Word> words) const;

private:
    const VariantVar& Variable(const JsonValue& value, std::string_view name) const;
    double VariableNumber(const JsonValue& value, std::string_view name) const;
    std::optional<CString> Expanded(const JsonValue& value, const CString& text,
                                    TextForm form) const;

    const GraphSource& m_source;
    const VarTable* m_variables;
    std::vector<COLORREF> m_palette;
};

/// What a key of an object that is read into a T means.
template <class T>
struct Field {
    using Member =
        std::variant<std::optional<int> T::*, std::optional<double> T::*, std::optional<bool> T::*,
                     std::optional<COLORREF> T::*, std::optional<std::uint16_t> T::*,
                     std::optional<CString> T::*, const JsonValue * T::*>;

    std::string_view key;
    Member member;                    ///< a JsonValue is read by whoever has the T
    Bounds bounds = {};               ///< of a number
    TextForm form = TextForm::Label;  ///< of a text
    std::span<const Word> words = {};
    bool isRequired = false;
};

/// Stores a value in the member of its type.
template <class T>
struct FieldStore {
    const ValueReader& in;
    const JsonValue& value;
    const Field<T>& field;
    T& result;

    void operator()(std::optional<int> T::*member) const {
        result.*member = in.Whole(value, field.bounds);
    }
    void operator()(std::optional<double> T::*member) const {
        result.*member = in.Number(value, field.bounds);
    }
    void operator()(std::optional<bool> T::*member) const { result.*member = in.Flag(value); }
    void operator()(std::optional<COLORREF> T::*member) const { result.*member = in.Color(value); }
    void operator()(std::optional<std::uint16_t> T::*member) const {
        result.*member = in.Words(value, field.words);
    }
    void operator()(std::optional<CString> T::*member) const {
        result.*member = in.Text(value, field.form);
    }
    void operator()(const JsonValue* T::*member) const { result.*member = &value; }
};

/// Inlined, GCC 12 warns of members in records that have none of their type.
template <class T>
[[gnu::noinline]] void storeField(const ValueReader& in, const JsonValue& value,
                                  const Field<T>& field, T& result) {
    std::visit(FieldStore<T>{in, value, field, result}, field.member);
}

/// Reads an object by the table of its keys.
template <class T>
T readFields(const ValueReader& in, const JsonValue& object, std::span<const Field<T>> fields) {
    std::vector<std::string_view> keys;
    for (const Field<T>& field : fields) keys.push_back(field.key);
    in.CheckKeys(object, keys);
    T result;
    for (const Field<T>& field : fields) {
        if (const JsonValue* value = object.Find(field.key)) {
            storeField(in, *value, field, result);
        } else if (field.isRequired) {
            in.Source().Fail(object, quoted(field.key) + " is missing");
        }
    }
    return result;
}

}  // namespace tessalink::detail
