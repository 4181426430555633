#include <utility>

#include "platform/windows/CWnd.h"
#include "platform/windows/detail/WindowCore.h"
#include "platform/windows/detail/WindowState.h"

// What windows do with their messages.

namespace {

// A message that is being handled, and the one inside whose handling it was sent.
class HandledMessage {
public:
    HandledMessage(const CWnd& window, UINT message, WPARAM wParam, LPARAM lParam)
        : window(window), message(message), wParam(wParam), lParam(lParam) {
        innermost = this;
    }
    ~HandledMessage() { innermost = outer; }
    HandledMessage(const HandledMessage&) = delete;
    HandledMessage& operator=(const HandledMessage&) = delete;

    static inline const HandledMessage* innermost = nullptr;

    const CWnd& window;
    const UINT message;
    const WPARAM wParam;
    const LPARAM lParam;
    const HandledMessage* const outer = innermost;
};

}  // namespace

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_core) return 0;
    const HandledMessage handled(*this, message, wParam, lParam);
    return WindowProc(message, wParam, lParam);
}

LRESULT CWnd::Default() {
    const HandledMessage* handled = HandledMessage::innermost;
    while (handled != nullptr && &handled->window != this) handled = handled->outer;
    if (!m_core || handled == nullptr) return 0;
    return DefWindowProc(handled->message, handled->wParam, handled->lParam);
}

// Of the base class's handlers those that do something.
LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto window = [wParam] { return FromHandle(reinterpret_cast<HWND>(wParam)); };
    switch (message) {
        case WM_CLOSE:
            DestroyWindow();
            return 0;
        case WM_SYSCOLORCHANGE:
            CWnd::OnSysColorChange();
            return 0;
        case WM_PAINT:
            CWnd::OnPaint();
            return 0;
        case WM_ERASEBKGND:
            return CWnd::OnEraseBkgnd(reinterpret_cast<CDC*>(lParam));
        case WM_KEYDOWN:
        case WM_CHAR:
            tessalink::inputNotUsed();
            return 0;
        case WM_SETFONT:
            CWnd::OnSetFont(reinterpret_cast<CFont*>(lParam));
            return 0;
        case WM_SETCURSOR:
            return CWnd::OnSetCursor(window(), LOWORD(static_cast<WPARAM>(lParam)),
                                     HIWORD(static_cast<WPARAM>(lParam)));
        case WM_CONTEXTMENU:
            CWnd::OnContextMenu(window(), pointOf(lParam));
            return 0;
        case WM_LBUTTONDBLCLK:
            CWnd::OnLButtonDblClk(static_cast<UINT>(wParam), pointOf(lParam));
            return 0;
        case WM_MOUSEWHEEL:
            return CWnd::OnMouseWheel(LOWORD(wParam), static_cast<short>(HIWORD(wParam)),
                                      pointOf(lParam));
        default:
            return 0;
    }
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_core) return 0;
    tessalink::postMessage(*this, message, wParam, lParam);
    return 1;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto window = [](WPARAM handle) { return FromHandle(reinterpret_cast<HWND>(handle)); };
    const UINT repeat = LOWORD(static_cast<WPARAM>(lParam));
    const UINT flags = HIWORD(static_cast<WPARAM>(lParam));
    switch (message) {
        case WM_CREATE:
            return OnCreate(reinterpret_cast<CREATESTRUCT*>(lParam));
        case WM_DESTROY:
            OnDestroy();
            return 0;
        case WM_SIZE:
            OnSize(static_cast<UINT>(wParam), pointOf(lParam).x, pointOf(lParam).y);
            return 0;
        case WM_SHOWWINDOW:
            OnShowWindow(static_cast<BOOL>(wParam));
            return 0;
        case WM_ENABLE:
            OnEnable(static_cast<BOOL>(wParam));
            return 0;
        case WM_SYSCOLORCHANGE:
            OnSysColorChange();
            return 0;
        case WM_PAINT:
            OnPaint();
            return 0;
        case WM_ERASEBKGND:
            return OnEraseBkgnd(reinterpret_cast<CDC*>(lParam));
        case WM_SETFOCUS:
            OnSetFocus(window(wParam));
            return 0;
        case WM_KILLFOCUS:
            OnKillFocus(window(wParam));
            return 0;
        case WM_GETDLGCODE:
            return OnGetDlgCode();
        case WM_KEYDOWN:
            OnKeyDown(static_cast<UINT>(wParam), repeat, flags);
            return 0;
        case WM_KEYUP:
            OnKeyUp(static_cast<UINT>(wParam), repeat, flags);
            return 0;
        case WM_CHAR:
            OnChar(static_cast<UINT>(wParam), repeat, flags);
            return 0;
        default:
            return dispatch_control(message, wParam, lParam);
    }
}

LRESULT CWnd::dispatch_control(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto window = [](WPARAM handle) { return FromHandle(reinterpret_cast<HWND>(handle)); };
    switch (message) {
        case WM_TIMER:
            OnTimer(wParam);
            return 0;
        case WM_HSCROLL:
            OnHScroll(LOWORD(wParam), thumbOf(wParam), window(static_cast<WPARAM>(lParam)));
            return 0;
        case WM_VSCROLL:
            OnVScroll(LOWORD(wParam), thumbOf(wParam), window(static_cast<WPARAM>(lParam)));
            return 0;
        case WM_NOTIFY: {
            LRESULT result = 0;
            OnNotify(wParam, lParam, &result);
            return result;
        }
        case WM_COMMAND:
            return OnCommand(wParam, lParam);
        case WM_CTLCOLOR:
            OnCtlColor(reinterpret_cast<CDC*>(wParam), FromHandle(reinterpret_cast<HWND>(lParam)),
                       0);
            return 0;
        case WM_SETFONT:
            OnSetFont(reinterpret_cast<CFont*>(lParam));
            return 0;
        case WM_SETCURSOR:
            return OnSetCursor(window(wParam), LOWORD(static_cast<WPARAM>(lParam)),
                               HIWORD(static_cast<WPARAM>(lParam)));
        case WM_CONTEXTMENU:
            OnContextMenu(window(wParam), pointOf(lParam));
            return 0;
        default:
            return dispatch_mouse(message, wParam, lParam);
    }
}

LRESULT CWnd::dispatch_mouse(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto flags = static_cast<UINT>(wParam);
    const CPoint point = pointOf(lParam);
    switch (message) {
        case WM_MOUSEMOVE:
            OnMouseMove(flags, point);
            return 0;
        case WM_LBUTTONDOWN:
            OnLButtonDown(flags, point);
            return 0;
        case WM_LBUTTONUP:
            OnLButtonUp(flags, point);
            return 0;
        case WM_LBUTTONDBLCLK:
            OnLButtonDblClk(flags, point);
            return 0;
        case WM_MBUTTONDOWN:
            OnMButtonDown(flags, point);
            return 0;
        case WM_RBUTTONDOWN:
            OnRButtonDown(flags, point);
            return 0;
        case WM_MOUSEWHEEL:
            return OnMouseWheel(LOWORD(wParam), static_cast<short>(HIWORD(wParam)), point);
        default:
            return DefWindowProc(message, wParam, lParam);
    }
}

int CWnd::OnCreate(CREATESTRUCT*) {
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
    dc->FillSolidRect(&client, GetSysColor(COLOR_BTNFACE));
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
    if (m_core) m_core->native->SetCursor(IDC_ARROW);
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
