// Any text as a variables file: a fault has its place in the file; what was read comes back from
// what is written.
#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/detail/require.h"
#include "platform/files/CMemFile.h"
#include "report/VariablesFile.h"

namespace {

using tessalink::fuzz::require;

void read(std::string_view text, VarTable& variables) {
    CMemFile file(text);
    try {
        tessalink::readVariables(file, variables);
    } catch (const tessalink::VariablesError& fault) {
        const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
        const tessalink::TextPlace& place = fault.GetPlace();
        require(place.line >= 1 && place.line <= static_cast<std::uint64_t>(lines), "a known line");
        require(place.column >= 1 && place.column <= text.size() + 1, "a column in the line");
        require(*fault.what() != '\0', "a message");
    }
}

bool same(const VariantVar& a, const VariantVar& b) {
    return a.GetType() == b.GetType() && a.Text() == b.Text() && a.GetAsInt() == b.GetAsInt() &&
           std::bit_cast<std::uint64_t>(a.GetAsDouble()) ==
               std::bit_cast<std::uint64_t>(b.GetAsDouble());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VarTable variables;
    read({reinterpret_cast<const char*>(data), size}, variables);
    CMemFile file;
    tessalink::writeVariables(variables, file);
    file.SeekToBegin();
    VarTable again;
    tessalink::readVariables(file, again);
    require(again.GetCount() == variables.GetCount(), "all variables come back");
    for (POSITION position = variables.GetStartPosition(); position;) {
        CString name;
        VariantVar value;
        variables.GetNextAssoc(position, name, value);
        require(same(again.GetVar(name), value), "each as it was");
    }
    return 0;
}
