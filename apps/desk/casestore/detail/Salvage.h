#pragma once

#include <memory>
#include <span>
#include <string>

#include "apps/desk/casestore/detail/Database.h"

namespace tessalink::desk::detail {

/// A file whose first page, which leads to all others, is destroyed: read into memory with that of
/// a new file, which is the same but for counts. Null when the other pages don't fit to it.
std::unique_ptr<Database> salvage(const std::string& path, std::span<const std::string> steps);

}  // namespace tessalink::desk::detail
