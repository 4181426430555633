#pragma once

#include <string>
#include <vector>

#include "apps/desk/casestore/CaseStore.h"
#include "apps/desk/casestore/detail/Database.h"

namespace tessalink::desk::detail {

/// Copies all that can be read of a damaged file, row by row, into the tables of a new one. Returns
/// what could not be read, as CaseStore::FindDamage names it.
std::vector<std::string> rescue(CaseStore& from, Database& to);

}  // namespace tessalink::desk::detail
