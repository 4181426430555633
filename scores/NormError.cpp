#include "scores/NormError.h"

namespace tessalink {

IMPLEMENT_DYNAMIC(NormError, CException)

}  // namespace tessalink
