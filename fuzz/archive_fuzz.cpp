// Any bytes as an archive of variables: what is loaded is stored and loaded again the same.
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/detail/require.h"
#include "platform/files/CArchive.h"
#include "platform/files/CMemFile.h"
#include "report/VarTable.h"

namespace {

bool load(CObject& object, std::string_view bytes) {
    CMemFile file(bytes);
    CArchive archive(&file, CArchive::load);
    try {
        object.Serialize(archive);
        return true;
    } catch (const CArchiveException&) {
        return false;
    }
}

std::string store(CObject& object) {
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    object.Serialize(archive);
    archive.Close();
    return std::string(file.View());
}

void useAll(const VariantVar& value) {
    VariantVar copy = value;
    (void)copy.GetAsInt();
    (void)copy.GetAsDouble();
    (void)copy.GetAsStr(3, 20);
    for (int type = 0; type < 6; ++type) {
        copy = value;
        copy.ConvertTo(static_cast<VariantVar::Type>(type));
        (void)copy.GetAsStr();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tessalink::fuzz::require;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    VarTable table;
    load(table, bytes);
    for (POSITION position = table.GetStartPosition(); position;) {
        CString name;
        VariantVar value;
        table.GetNextAssoc(position, name, value);
        useAll(value);
    }
    const std::string stored = store(table);
    VarTable again;
    require(load(again, stored), "what was stored can be loaded");
    require(again.GetCount() == table.GetCount(), "with all variables");
    for (POSITION position = table.GetStartPosition(); position;) {
        CString name;
        VariantVar value;
        table.GetNextAssoc(position, name, value);
        VariantVar other = again.GetVar(name);
        require(store(other) == store(value), "each as it was");
    }
    VariantVar one;
    if (load(one, bytes)) {
        VariantVar other;
        require(load(other, store(one)) && store(other) == store(one), "and so a single value");
    }
    return 0;
}
