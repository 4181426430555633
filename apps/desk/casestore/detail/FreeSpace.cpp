#include "apps/desk/casestore/detail/FreeSpace.h"

namespace tessalink::desk::detail {

void clearFreeSpace(Database&) {}

}  // namespace tessalink::desk::detail
