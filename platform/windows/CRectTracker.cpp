#include "platform/windows/CRectTracker.h"

#include "platform/windows/WindowSystem.h"

using tessalink::nativeOf;

BOOL CRectTracker::Track(CWnd* window, CPoint point) {
    if (window == nullptr || window->GetSafeHwnd() == nullptr) return 0;
    enum class Outcome { Open, Released, GivenUp };
    Outcome outcome = Outcome::Open;
    CRect moved = m_rect;
    const tessalink::WindowGuard alive(*window);
    const tessalink::InputHook hook([&](CWnd& source, UINT message, WPARAM wParam, CPoint at) {
        if (message == WM_KEYDOWN) {
            if (wParam == VK_ESCAPE) outcome = Outcome::GivenUp;
            return true;
        }
        if (!alive) {
            outcome = Outcome::GivenUp;
            return true;
        }
        source.ClientToScreen(&at);
        window->ScreenToClient(&at);
        moved = m_rect;
        moved.OffsetRect(at.x - point.x, at.y - point.y);
        nativeOf(*window)->ShowOutline(moved);
        if (message == WM_LBUTTONUP) outcome = Outcome::Released;
        return true;
    });
    window->SetCapture();
    tessalink::windowSystem().RunUntil(
        [&] { return outcome != Outcome::Open || !alive || window->GetSafeHwnd() == nullptr; });
    if (!alive || window->GetSafeHwnd() == nullptr) return 0;
    tessalink::ReleaseCapture();
    nativeOf(*window)->ShowOutline(CRect());
    if (outcome != Outcome::Released || moved == m_rect) return 0;
    m_rect = moved;
    return 1;
}
