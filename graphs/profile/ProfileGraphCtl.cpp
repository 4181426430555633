#include "graphs/profile/ProfileGraphCtl.h"

IMPLEMENT_DYNAMIC(ProfileGraphCtl, CWnd)
