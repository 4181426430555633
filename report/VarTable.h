#pragma once

#include <concepts>
#include <cstddef>
#include <string_view>
#include <utility>

#include "platform/base/CMap.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "report/VariantVar.h"

namespace tessalink {

/// An integer type that does not become an int by itself.
template <class NUMBER>
concept LargeInteger = std::integral<NUMBER> && !std::same_as<decltype(+NUMBER()), int>;

}  // namespace tessalink

/// The variables of one report: a map from name to value. Names are case-sensitive. The table owns
/// copies of its values. No operation reports an error: a missing name reads as 0, 0.0, an empty
/// text or null, and any type is converted to the one asked for.
///
/// Any text may be a name, but a template reaches only words of letters, digits and "_" that start
/// with no digit: as "@Name" those of up to 32 characters (FileScanner::cMaxCommandWord) that are
/// no keyword in any case (a variable "Text" or "ID" can't be written: "@Text" is a command), as a
/// bare name in an expression those of up to 4,095 (FileScanner::cMaxName), where a text function
/// (TEXT, CAP, COMMA_LIST, EVAL) goes before a variable of its name.
///
/// Texts are in the program's code page and go into the report as they are, RTF markup included:
/// give what people typed through tessalink::escapeText (report/PlainText.h), which makes it plain
/// text in RTF.
///
/// GetStartPosition and GetNextAssoc visit the variables in the order of the table's entries, which
/// stays the same as long as the table is not changed.
class TESSALINK_API VarTable : public CMap<CString, const char*, VariantVar, const VariantVar&> {
    DECLARE_SERIAL(VarTable)

public:
    /// Store a value of that type under the name, over an older value of any type. A null text is
    /// an empty one; a pointer is not owned.
    void AddVar(const char* name, const char* value) { store(name, VariantVar(value)); }
    void AddVar(const char* name, const CString& value) { store(name, VariantVar(value)); }
    void AddVar(const char* name, int value) { store(name, VariantVar(value)); }
    void AddVar(const char* name, double value) { store(name, VariantVar(value)); }
    void AddVar(const char* name, CObject* value) { store(name, VariantVar(value)); }
    /// A std::string, too.
    void AddVar(const char* name, std::string_view value) { AddVar(name, CString(value)); }
    /// A number of another integer type (long, unsigned, std::size_t, ...): an int where it is one,
    /// beyond 32 bits a double.
    template <tessalink::LargeInteger NUMBER>
    void AddVar(const char* name, NUMBER value) {
        if (std::in_range<int>(value)) {
            AddVar(name, static_cast<int>(value));
        } else {
            AddVar(name, static_cast<double>(value));
        }
    }
    /// Text or pointer? Say "" for an empty text, static_cast<CObject*>(nullptr) for a null
    /// pointer.
    void AddVar(const char* name, std::nullptr_t) = delete;

    /// The same as AddVar: a name that does not exist is created.
    void SetValue(const char* name, const char* value) { AddVar(name, value); }
    void SetValue(const char* name, const CString& value) { AddVar(name, value); }
    void SetValue(const char* name, int value) { AddVar(name, value); }
    void SetValue(const char* name, double value) { AddVar(name, value); }
    void SetValue(const char* name, CObject* value) { AddVar(name, value); }
    void SetValue(const char* name, std::string_view value) { AddVar(name, value); }
    template <tessalink::LargeInteger NUMBER>
    void SetValue(const char* name, NUMBER value) {
        AddVar(name, value);
    }
    void SetValue(const char* name, std::nullptr_t) = delete;

    /// The value converted, see VariantVar; 0, 0.0, an empty text or null if the name is missing.
    int GetInt(const char* name) const;
    /// The value as a double.
    double GetDouble(const char* name) const;
    /// The value as a text.
    CString GetStr(const char* name) const;
    /// The pointer; null for other types.
    CObject* GetPtr(const char* name) const;
    /// A copy of the variable, or an empty one.
    VariantVar GetVar(const char* name) const;
    /// Nonzero when the name is in the table, an empty value included.
    int Exists(const char* name) const { return Find(view(name)) != nullptr; }

    /// The variable in place, or null; valid until it is removed.
    const VariantVar* Find(std::string_view name) const;
    const VariantVar* Find(const tessalink::HashedText& name) const;

    /// Stores the number of variables, then each name and value; loading adds them to the table,
    /// a later value of a name replacing an earlier one. Archive faults pass through: what was
    /// loaded before the fault stays.
    void Serialize(CArchive& archive) override { CMap::Serialize(archive); }

private:
    static std::string_view view(const char* name) { return name ? name : std::string_view(); }
    void store(const char* name, const VariantVar& value) { SetAt(name, value); }
};
