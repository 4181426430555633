#pragma once

#include "graphs/profile/windows/ProfileGraphCtlBase.h"

/// A window with a ProfileGraph. Its members are those of ProfileGraphWindow.
class TESSALINK_API ProfileGraphCtl : public tessalink::ProfileGraphWindow<ProfileGraph> {
    DECLARE_DYNAMIC(ProfileGraphCtl)

public:
    using ProfileGraphWindow::ProfileGraphWindow;
};
