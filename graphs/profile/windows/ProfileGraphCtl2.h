#pragma once

#include "graphs/profile/windows/ProfileGraphCtlBase.h"

/// A window with a ProfileGraph2. The middle and the right button activate it, too.
class TESSALINK_API ProfileGraphCtl2 : public tessalink::ProfileGraphWindow<ProfileGraph2> {
    DECLARE_DYNAMIC(ProfileGraphCtl2)

public:
    using ProfileGraphWindow::ProfileGraphWindow;

    void OnMButtonDown(UINT flags, CPoint point) override;
    void OnRButtonDown(UINT flags, CPoint point) override;
};
