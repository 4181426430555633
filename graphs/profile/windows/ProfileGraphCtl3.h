#pragma once

#include "graphs/profile/windows/ProfileGraphCtlBase.h"

/// A window with a ProfileGraph3. Derived classes may change its hints and where its points stand
/// (format_hint_text, format_hint_value, get_y_disp_val), and scores at the ends and beyond can
/// have two further signs.
class TESSALINK_API ProfileGraphCtl3 : public tessalink::ProfileGraphWindow<ProfileGraph3> {
    DECLARE_DYNAMIC(ProfileGraphCtl3)

public:
    using ProfileGraphWindow::ProfileGraphWindow;

    /// Whether scores at the ends of the labels and beyond show as "<" and ">" the end, where
    /// neither "<=" nor ">=" is used.
    void UseLt(int use) { set_relation(cLess, use); }
    /// See UseLt.
    void UseGt(int use) { set_relation(cGreater, use); }

    void OnMButtonDown(UINT flags, CPoint point) override;
    void OnRButtonDown(UINT flags, CPoint point) override;

protected:
    /// What get_y_disp_val tells.
    double drawn_score(ProfileInfo* profile, int scaleIndex) const override;
};
