#pragma once

#include <bit>
#include <cstdint>
#include <string_view>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/base/NumberText.h"

class CArchive;

/// The value of one report variable: nothing, a 32-bit integer, a double, text, or a pointer to an
/// object that the variable does not own. It converts to whatever is asked for; no operation
/// reports an error.
class TESSALINK_API VariantVar : public CObject {
    DECLARE_SERIAL(VariantVar)

public:
    /// What a variable holds.
    enum Type : std::int32_t { vtEmpty = 0, vtInt = 1, vtDouble = 2, vtString = 3, vtPtr = 4 };

    VariantVar() = default;
    /// An integer.
    VariantVar(int value);
    /// A double.
    VariantVar(double value);
    /// A text; null is an empty one.
    VariantVar(const char* value);
    /// A text.
    VariantVar(const CString& value);
    /// A pointer, which is not owned.
    VariantVar(CObject* value);
    /// The same value.
    VariantVar(const VariantVar& other);
    ~VariantVar() override = default;

    VariantVar& operator=(int value);             ///< the variable becomes an integer
    VariantVar& operator=(double value);          ///< the variable becomes a double
    VariantVar& operator=(const CString& value);  ///< the variable becomes a text
    /// The variable becomes a text; null is an empty one.
    VariantVar& operator=(const char* value);
    VariantVar& operator=(const VariantVar& other);  ///< the variable takes over type and value

    /// Takes the value away.
    void SetEmpty();

    /// Nonzero when the value is of the type: IsEmpty and IsUndefined mean the same, and a number
    /// is an int or a double.
    int IsEmpty() const { return m_type == vtEmpty; }
    /// The same as IsEmpty.
    int IsUndefined() const { return m_type == vtEmpty; }
    /// Nonzero for an integer.
    int IsInt() const { return m_type == vtInt; }
    /// Nonzero for a double.
    int IsDouble() const { return m_type == vtDouble; }
    /// Nonzero for an integer and a double.
    int IsNumber() const { return IsInt() || IsDouble(); }
    /// Nonzero for a text.
    int IsString() const { return m_type == vtString; }
    /// Nonzero for a pointer.
    int IsPtr() const { return m_type == vtPtr; }
    /// What the variable holds.
    Type GetType() const { return m_type; }
    /// The text of a vtString in place, valid until the variable changes; empty for all others.
    std::string_view Text() const { return IsString() ? m_string.View() : std::string_view(); }

    /// An integer as it is, the low 32 bits of a pointer, a double truncated toward zero and
    /// saturated (0 for a NaN), the leading digits of a text (as atoi reads them, saturated; 0 if
    /// there are none), 0 if empty.
    int GetAsInt() const { return IsInt() ? int_bits() : convert_to_int(); }
    /// A number as it is, the leading number of a text (as atof reads it), 0.0 otherwise.
    double GetAsDouble() const {
        return IsDouble() ? std::bit_cast<double>(m_bits) : convert_to_double();
    }
    /// The pointer, or null if it is none.
    CObject* GetAsPtr() const;
    /// The text; an integer in decimal; a double always with two decimals; a pointer as 0x and
    /// eight hexadecimal digits; an empty text if empty.
    CString GetAsStr() const;
    /// The value in a field of `width` characters, as C's printf does it with "%W.Df" for a double,
    /// "%W.Dd" for an integer (`decimals` is then the least number of digits), and "%Ws" for the
    /// rest. A negative width aligns to the left; a width smaller than the text never cuts it.
    CString GetAsStr(int decimals, int width) const;

    /// GetAsInt.
    operator int() const { return GetAsInt(); }
    /// GetAsDouble.
    operator double() const { return GetAsDouble(); }
    /// GetAsStr.
    operator CString() const { return GetAsStr(); }
    /// GetAsPtr.
    operator CObject*() const { return GetAsPtr(); }

    /// Changes the variable in place; nonzero on success. A pointer does not become a double;
    /// vtEmpty and vtPtr convert nothing and tell whether the variable is of that type already; a
    /// code above 4 changes nothing and succeeds.
    int ConvertTo(Type type);

    /// Stores or loads the value: one byte of type, then the text in the archive's string form, or
    /// the eight bytes of the numeric value (of a pointer its low 32 bits; it loads as null), or
    /// nothing if empty. Archive faults pass through.
    void Serialize(CArchive& archive) override;

private:
    void set_number(Type type);
    int int_bits() const { return static_cast<int>(static_cast<std::uint32_t>(m_bits)); }
    int convert_to_int() const;
    double convert_to_double() const;

    Type m_type = vtEmpty;
    CString m_string;
    std::uint64_t m_bits = 0;  ///< the integer or pointer bits, or the bits of the double
};

/// A value has no stream form of its own: call Serialize, or store what GetAsInt, GetAsDouble or
/// GetAsStr gives.
CArchive& operator<<(CArchive& archive, const VariantVar& value) = delete;

namespace tessalink {

/// The text of GetAsStr, made without allocating: for writing a variable into a report.
class TESSALINK_API VariantText {
public:
    /// `value` must not change while the text is in use.
    explicit VariantText(const VariantVar& value);
    VariantText(const VariantText&) = delete;
    VariantText& operator=(const VariantText&) = delete;

    /// The text; valid as long as this object and the variable.
    std::string_view View() const { return m_view; }

private:
    char m_buffer[cMaxDoubleText];
    std::string_view m_view;
};

}  // namespace tessalink
