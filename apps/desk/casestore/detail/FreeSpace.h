#pragma once

#include "apps/desk/casestore/detail/Database.h"

namespace tessalink::desk::detail {

/// Overwrites what no table uses in the pages of the file. SQLite does so with what it deletes, but
/// leaves copies where it has moved rows from page to page. The log must be empty; afterwards it
/// may have pages again, without such copies but of the whole file.
void clearFreeSpace(Database& database);

}  // namespace tessalink::desk::detail
