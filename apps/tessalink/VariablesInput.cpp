#include "apps/tessalink/VariablesInput.h"

#include "apps/tessalink/Messages.h"
#include "platform/base/CodePage.h"

namespace tessalink::cli {

CString readVariables(const VariablesSource& source, VarTable& variables, VariablePlaces* places) {
    if (source.path.empty()) return {};
    const auto file = openInput(source.path);
    const auto doubt = tessalink::readVariables(
        *file, variables, places, source.encoding.value_or(VariablesEncoding::CodePage));
    if (doubt && !source.encoding) {
        printAt(*doubt, "warning",
                CString("read as " + codePageName() +
                        ", but this looks like UTF-8: add --encoding utf-8, or --encoding " +
                        codePageWord() + " if it is right"));
    }
    return file->GetGivenPath();
}

}  // namespace tessalink::cli
