#include "graphs/profile/windows/ProfileGraphCtl3.h"

IMPLEMENT_DYNAMIC(ProfileGraphCtl3, CWnd)

void ProfileGraphCtl3::OnMButtonDown(UINT flags, CPoint point) {
    const tessalink::WindowGuard alive(*this);
    handle_mouse_down();
    if (alive) ProfileGraphWindow::OnMButtonDown(flags, point);
}

void ProfileGraphCtl3::OnRButtonDown(UINT flags, CPoint point) {
    const tessalink::WindowGuard alive(*this);
    handle_mouse_down();
    if (alive) ProfileGraphWindow::OnRButtonDown(flags, point);
}

double ProfileGraphCtl3::drawn_score(ProfileInfo* profile, int scaleIndex) const {
    return get_y_disp_val(scaleIndex + 1, profile);
}
