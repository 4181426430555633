#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/InputError.h"
#include "platform/files/CMemFile.h"
#include "report/tidy/TemplateTidier.h"

namespace tessalink::test {

/// What tidying made of a template.
struct Tidied {
    std::string text;
    bool isChanged = false;
    std::vector<TidyFinding> findings;
    std::string fault;  ///< of a template that can't be tidied

    bool IsLeft() const {
        for (const TidyFinding& one : findings) {
            if (one.kind == TidyFinding::Kind::left) return true;
        }
        return false;
    }
};

inline Tidied tidy(std::string_view rtf, const std::vector<std::string>& variables = {}) {
    CMemFile file(rtf);
    file.SetFilePath("test.rtf");
    CMemFile output;
    TemplateTidier tidier(file);
    for (const std::string& name : variables) tidier.AddVariable(name);
    Tidied tidied;
    try {
        tidied.isChanged =
            tidier.Tidy(output, [&](const TidyFinding& one) { tidied.findings.push_back(one); });
    } catch (const InputError& fault) {
        tidied.fault = fault.what();
    }
    tidied.text = std::string(output.View());
    return tidied;
}

}  // namespace tessalink::test
