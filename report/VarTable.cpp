#include "report/VarTable.h"

IMPLEMENT_SERIAL(VarTable, CObject, 0)

int VarTable::GetInt(const char* name) const {
    const VariantVar* variable = Find(view(name));
    return variable ? variable->GetAsInt() : 0;
}

double VarTable::GetDouble(const char* name) const {
    const VariantVar* variable = Find(view(name));
    return variable ? variable->GetAsDouble() : 0.0;
}

CString VarTable::GetStr(const char* name) const {
    const VariantVar* variable = Find(view(name));
    return variable ? variable->GetAsStr() : CString();
}

CObject* VarTable::GetPtr(const char* name) const {
    const VariantVar* variable = Find(view(name));
    return variable ? variable->GetAsPtr() : nullptr;
}

VariantVar VarTable::GetVar(const char* name) const {
    const VariantVar* variable = Find(view(name));
    return variable ? *variable : VariantVar();
}

const VariantVar* VarTable::Find(std::string_view name) const {
    const CPair* pair = CMap::Find(name);
    return pair ? &pair->value : nullptr;
}

const VariantVar* VarTable::Find(const tessalink::HashedText& name) const {
    const CPair* pair = CMap::Find(name);
    return pair ? &pair->value : nullptr;
}
