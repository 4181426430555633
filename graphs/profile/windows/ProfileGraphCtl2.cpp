#include "graphs/profile/windows/ProfileGraphCtl2.h"

IMPLEMENT_DYNAMIC(ProfileGraphCtl2, CWnd)

void ProfileGraphCtl2::OnMButtonDown(UINT flags, CPoint point) {
    const tessalink::WindowGuard alive(*this);
    handle_mouse_down();
    if (alive) ProfileGraphWindow::OnMButtonDown(flags, point);
}

void ProfileGraphCtl2::OnRButtonDown(UINT flags, CPoint point) {
    const tessalink::WindowGuard alive(*this);
    handle_mouse_down();
    if (alive) ProfileGraphWindow::OnRButtonDown(flags, point);
}
