#pragma once

#include <string_view>

#include "platform/base/CMap.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "report/VariantVar.h"

/// The variables of one report: a map from name to value. Names are case-sensitive. The table owns
/// copies of its values. No operation reports an error: a missing name reads as 0, 0.0, an empty
/// text or null, and any type is converted to the one asked for.
///
/// GetStartPosition and GetNextAssoc visit the variables in the order of the table's entries, which
/// stays the same as long as the table is not changed.
class TESSALINK_API VarTable : public CMap<CString, const char*, VariantVar, const VariantVar&> {
    DECLARE_SERIAL(VarTable)

public:
    /// Store a value of that type under the name, over an older value of any type.
    void AddVar(const char* name, const char* value) { store(name, VariantVar(value)); }
    void AddVar(const char* name, const CString& value) { store(name, VariantVar(value)); }
    void AddVar(const char* name, int value) { store(name, VariantVar(value)); }
    void AddVar(const char* name, double value) { store(name, VariantVar(value)); }
    void AddVar(const char* name, CObject* value) { store(name, VariantVar(value)); }

    /// The same as AddVar: a name that does not exist is created.
    void SetValue(const char* name, const char* value) { AddVar(name, value); }
    void SetValue(const char* name, const CString& value) { AddVar(name, value); }
    void SetValue(const char* name, int value) { AddVar(name, value); }
    void SetValue(const char* name, double value) { AddVar(name, value); }
    void SetValue(const char* name, CObject* value) { AddVar(name, value); }

    /// The value converted, see VariantVar; 0, 0.0, an empty text or null if the name is missing.
    int GetInt(const char* name) const;
    double GetDouble(const char* name) const;
    CString GetStr(const char* name) const;
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
