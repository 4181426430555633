#include "graphs/profile/windows/ProfileGraphCtl.h"

IMPLEMENT_DYNAMIC(ProfileGraphCtl, CWnd)
