#include "platform/windows/CFrameWnd.h"

IMPLEMENT_DYNAMIC(CFrameWnd, CWnd)
IMPLEMENT_DYNAMIC(CMDIChildWnd, CFrameWnd)
IMPLEMENT_DYNAMIC(CMDIFrameWnd, CFrameWnd)

BOOL CFrameWnd::Create(const char* title, const RECT& rect, CWnd* parent, DWORD style) {
    const DWORD kind = parent != nullptr ? WS_CHILD : WS_CAPTION;
    return CWnd::Create(nullptr, title, kind | style | WS_VISIBLE, rect, parent, 0);
}

CMDIChildWnd* CMDIFrameWnd::child_of(HWND window) const {
    for (int i = 0; i < GetChildCount(); ++i) {
        auto* child = DYNAMIC_DOWNCAST(CMDIChildWnd, GetChild(i));
        if (child != nullptr && (window == nullptr || child->GetSafeHwnd() == window)) return child;
    }
    return nullptr;
}

CMDIChildWnd* CMDIFrameWnd::MDIGetActive() const {
    CMDIChildWnd* active = m_active != nullptr ? child_of(m_active) : nullptr;
    return active != nullptr ? active : child_of(nullptr);
}

void CMDIFrameWnd::MDIActivate(CWnd* child) {
    if (child == nullptr || child_of(child->GetSafeHwnd()) == nullptr) return;
    m_active = child->GetSafeHwnd();
    child->BringWindowToTop();
}

LRESULT CMDIFrameWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_MDIACTIVATE) return CFrameWnd::WindowProc(message, wParam, lParam);
    MDIActivate(FromHandle(reinterpret_cast<HWND>(wParam)));
    return 0;
}
