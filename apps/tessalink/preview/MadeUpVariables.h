#pragma once

#include <vector>

#include "apps/tessalink/TemplateUses.h"
#include "report/VarTable.h"

namespace tessalink::cli {

/// The value of every number that is made up: the middle of most scales.
inline constexpr int cMadeUpNumber = 50;

/// A variable that a host has to fill in.
struct NeededVariable {
    CString name;
    bool isNumber = false;
};

/// What a template needs from its host: what it reads or gives a value to and does not define, and
/// what its graphs name.
std::vector<NeededVariable> neededVariables(const TemplateUses& uses,
                                            const std::vector<CString>& ofGraphs);

/// Fills in what is needed and not there: numbers, and texts that are the variable's own name.
/// Returns the names.
std::vector<CString> makeUpVariables(const std::vector<NeededVariable>& needed,
                                     VarTable& variables);

}  // namespace tessalink::cli
