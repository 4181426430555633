#include "graphs/profile/ProfileInfo.h"

namespace tessalink {

IMPLEMENT_DYNAMIC(ProfileInfo, CObject)

}  // namespace tessalink
