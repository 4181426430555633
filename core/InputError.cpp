#include "core/InputError.h"

namespace tessalink {

IMPLEMENT_DYNAMIC(InputError, CException)

}  // namespace tessalink
