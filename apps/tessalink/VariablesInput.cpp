#include "apps/tessalink/VariablesInput.h"

#include "apps/tessalink/Messages.h"

namespace tessalink::cli {

CString readVariables(const VariablesSource& source, VarTable& variables, VariablePlaces* places) {
    if (source.path.empty()) return {};
    const auto file = openInput(source.path);
    const auto doubt = tessalink::readVariables(
        *file, variables, places, source.encoding.value_or(VariablesEncoding::Windows1252));
    if (doubt && !source.encoding) {
        printAt(*doubt, "warning",
                "read as Windows-1252, but this looks like UTF-8: add --encoding utf-8, or "
                "--encoding windows-1252 if it is right");
    }
    return file->GetGivenPath();
}

}  // namespace tessalink::cli
