// What windows do with their messages by themselves: the handlers of the base class.
#include "platform/windows/CWnd.h"
#include "platform/windows/detail/WindowCore.h"
#include "platform/windows/detail/WindowState.h"

int CWnd::OnCreate(CREATESTRUCTA*) {
    return 0;
}
void CWnd::OnDestroy() {}
void CWnd::OnSize(UINT, int, int) {}
void CWnd::OnShowWindow(BOOL) {}
void CWnd::OnEnable(BOOL) {}

void CWnd::OnPaint() {
    CPaintDC dc(this);
}

BOOL CWnd::OnEraseBkgnd(CDC* dc) {
    CRect client;
    GetClientRect(&client);
    dc->FillSolidRect(&client, tessalink::GetSysColor(COLOR_BTNFACE));
    return 1;
}

void CWnd::OnSetFocus(CWnd*) {}
void CWnd::OnKillFocus(CWnd*) {}

UINT CWnd::OnGetDlgCode() {
    return 0;
}

void CWnd::OnKeyDown(UINT, UINT, UINT) {
    tessalink::inputNotUsed();
}
void CWnd::OnKeyUp(UINT, UINT, UINT) {}
void CWnd::OnChar(UINT, UINT, UINT) {
    tessalink::inputNotUsed();
}
void CWnd::OnLButtonDown(UINT, CPoint) {}
void CWnd::OnLButtonUp(UINT, CPoint) {}

void CWnd::OnLButtonDblClk(UINT flags, CPoint point) {
    OnLButtonDown(flags, point);
}

void CWnd::OnMButtonDown(UINT, CPoint) {}
void CWnd::OnRButtonDown(UINT, CPoint) {}
void CWnd::OnMouseMove(UINT, CPoint) {}

BOOL CWnd::OnMouseWheel(UINT flags, short delta, CPoint point) {
    CWnd* parent = GetParent();
    if (parent == nullptr) return 0;
    const UINT turned = static_cast<std::uint16_t>(delta);
    return static_cast<BOOL>(parent->SendMessage(WM_MOUSEWHEEL, MAKEWPARAM(flags, turned),
                                                 MAKELPARAM(point.x, point.y)));
}

BOOL CWnd::OnSetCursor(CWnd*, UINT, UINT) {
    if (m_core) m_core->native->SetCursor(tessalink::cArrowCursor);
    return 0;
}

void CWnd::OnContextMenu(CWnd* window, CPoint point) {
    CWnd* parent = GetParent();
    if (parent == nullptr || window == nullptr) return;
    parent->SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window->GetSafeHwnd()),
                        MAKELPARAM(point.x, point.y));
}

void CWnd::OnTimer(UINT_PTR) {}
void CWnd::OnHScroll(UINT, UINT, CWnd*) {}
void CWnd::OnVScroll(UINT, UINT, CWnd*) {}

BOOL CWnd::OnNotify(WPARAM, LPARAM, LRESULT*) {
    return 0;
}

BOOL CWnd::OnCommand(WPARAM, LPARAM) {
    return 0;
}

void CWnd::OnSysColorChange() {
    Invalidate(1);
}

void CWnd::OnCtlColor(CDC*, CWnd*, UINT) {}

void CWnd::OnSetFont(CFont* font) {
    if (!m_core) return;
    m_core->font = font;
    if (font != nullptr) m_core->native->SetFont(font->Get());
}
