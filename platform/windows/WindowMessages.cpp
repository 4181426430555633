// How messages come to windows, and to which handlers they go.
#include <algorithm>
#include <iterator>

#include "platform/windows/CWnd.h"
#include "platform/windows/detail/WindowCore.h"
#include "platform/windows/detail/WindowState.h"

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

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_core) return 0;
    tessalink::postMessage(*this, message, wParam, lParam);
    return 1;
}

namespace {

/// What becomes of a message: the handler that it calls, and what windows do with it by themselves,
/// that is the base class's handler where it does something. Null for nothing.
struct Dispatch {
    using Function = LRESULT (*)(CWnd& window, WPARAM wParam, LPARAM lParam);

    UINT message;
    Function handler;
    Function byDefault;
};

CWnd* windowOf(WPARAM handle) {
    return CWnd::FromHandle(reinterpret_cast<HWND>(handle));
}

CWnd* windowOf(LPARAM handle) {
    return windowOf(static_cast<WPARAM>(handle));
}

UINT lowWord(LPARAM value) {
    return LOWORD(static_cast<WPARAM>(value));
}

UINT highWord(LPARAM value) {
    return HIWORD(static_cast<WPARAM>(value));
}

// Handlers by what they are told.

template <void (CWnd::*handler)()>
LRESULT tell(CWnd& window, WPARAM, LPARAM) {
    (window.*handler)();
    return 0;
}

template <void (CWnd::*handler)(BOOL)>
LRESULT tellState(CWnd& window, WPARAM wParam, LPARAM) {
    (window.*handler)(static_cast<BOOL>(wParam));
    return 0;
}

template <void (CWnd::*handler)(CWnd*)>
LRESULT tellFocus(CWnd& window, WPARAM wParam, LPARAM) {
    (window.*handler)(windowOf(wParam));
    return 0;
}

template <void (CWnd::*handler)(UINT key, UINT repeat, UINT flags)>
LRESULT tellKey(CWnd& window, WPARAM wParam, LPARAM lParam) {
    (window.*handler)(static_cast<UINT>(wParam), lowWord(lParam), highWord(lParam));
    return 0;
}

template <void (CWnd::*handler)(UINT flags, CPoint point)>
LRESULT tellMouse(CWnd& window, WPARAM wParam, LPARAM lParam) {
    (window.*handler)(static_cast<UINT>(wParam), pointOf(lParam));
    return 0;
}

template <void (CWnd::*handler)(UINT code, UINT position, CWnd* bar)>
LRESULT tellScroll(CWnd& window, WPARAM wParam, LPARAM lParam) {
    (window.*handler)(LOWORD(wParam), thumbOf(wParam), windowOf(lParam));
    return 0;
}

// Messages that are told in a way of their own: `isDefault` asks for the base class's handler.

LRESULT create(CWnd& window, WPARAM, LPARAM lParam) {
    return window.OnCreate(reinterpret_cast<CREATESTRUCTA*>(lParam));
}

LRESULT size(CWnd& window, WPARAM wParam, LPARAM lParam) {
    const CPoint corner = pointOf(lParam);
    window.OnSize(static_cast<UINT>(wParam), corner.x, corner.y);
    return 0;
}

LRESULT close(CWnd& window, WPARAM, LPARAM) {
    window.DestroyWindow();
    return 0;
}

LRESULT paint(CWnd& window, WPARAM, LPARAM) {
    window.CWnd::OnPaint();
    return 0;
}

LRESULT notUsed(CWnd&, WPARAM, LPARAM) {
    tessalink::inputNotUsed();
    return 0;
}

template <bool isDefault>
LRESULT eraseBackground(CWnd& window, WPARAM, LPARAM lParam) {
    auto* dc = reinterpret_cast<CDC*>(lParam);
    return isDefault ? window.CWnd::OnEraseBkgnd(dc) : window.OnEraseBkgnd(dc);
}

template <bool isDefault>
LRESULT colorsChange(CWnd& window, WPARAM, LPARAM) {
    isDefault ? window.CWnd::OnSysColorChange() : window.OnSysColorChange();
    return 0;
}

template <bool isDefault>
LRESULT setFont(CWnd& window, WPARAM, LPARAM lParam) {
    auto* font = reinterpret_cast<CFont*>(lParam);
    isDefault ? window.CWnd::OnSetFont(font) : window.OnSetFont(font);
    return 0;
}

template <bool isDefault>
LRESULT setCursor(CWnd& window, WPARAM wParam, LPARAM lParam) {
    CWnd* below = windowOf(wParam);
    const UINT hitTest = lowWord(lParam);
    const UINT message = highWord(lParam);
    return isDefault ? window.CWnd::OnSetCursor(below, hitTest, message)
                     : window.OnSetCursor(below, hitTest, message);
}

template <bool isDefault>
LRESULT contextMenu(CWnd& window, WPARAM wParam, LPARAM lParam) {
    CWnd* clicked = windowOf(wParam);
    isDefault ? window.CWnd::OnContextMenu(clicked, pointOf(lParam))
              : window.OnContextMenu(clicked, pointOf(lParam));
    return 0;
}

LRESULT doubleClick(CWnd& window, WPARAM wParam, LPARAM lParam) {
    window.CWnd::OnLButtonDblClk(static_cast<UINT>(wParam), pointOf(lParam));
    return 0;
}

template <bool isDefault>
LRESULT turnWheel(CWnd& window, WPARAM wParam, LPARAM lParam) {
    const UINT flags = LOWORD(wParam);
    const auto delta = static_cast<short>(HIWORD(wParam));
    return isDefault ? window.CWnd::OnMouseWheel(flags, delta, pointOf(lParam))
                     : window.OnMouseWheel(flags, delta, pointOf(lParam));
}

LRESULT timer(CWnd& window, WPARAM wParam, LPARAM) {
    window.OnTimer(wParam);
    return 0;
}

LRESULT notify(CWnd& window, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    window.OnNotify(wParam, lParam, &result);
    return result;
}

LRESULT command(CWnd& window, WPARAM wParam, LPARAM lParam) {
    return window.OnCommand(wParam, lParam);
}

LRESULT childColor(CWnd& window, WPARAM wParam, LPARAM lParam) {
    window.OnCtlColor(reinterpret_cast<CDC*>(wParam), windowOf(lParam), 0);
    return 0;
}

constexpr Dispatch cDispatch[] = {
    // Life, place and state.
    {WM_CREATE, create, nullptr},
    {WM_DESTROY, tell<&CWnd::OnDestroy>, nullptr},
    {WM_CLOSE, nullptr, close},
    {WM_SIZE, size, nullptr},
    {WM_SHOWWINDOW, tellState<&CWnd::OnShowWindow>, nullptr},
    {WM_ENABLE, tellState<&CWnd::OnEnable>, nullptr},
    // Looks.
    {WM_PAINT, tell<&CWnd::OnPaint>, paint},
    {WM_ERASEBKGND, eraseBackground<false>, eraseBackground<true>},
    {WM_SYSCOLORCHANGE, colorsChange<false>, colorsChange<true>},
    {WM_SETFONT, setFont<false>, setFont<true>},
    {WM_CTLCOLOR, childColor, nullptr},
    // The keyboard.
    {WM_SETFOCUS, tellFocus<&CWnd::OnSetFocus>, nullptr},
    {WM_KILLFOCUS, tellFocus<&CWnd::OnKillFocus>, nullptr},
    {WM_GETDLGCODE, [](CWnd& window, WPARAM, LPARAM) -> LRESULT { return window.OnGetDlgCode(); },
     nullptr},
    {WM_KEYDOWN, tellKey<&CWnd::OnKeyDown>, notUsed},
    {WM_KEYUP, tellKey<&CWnd::OnKeyUp>, nullptr},
    {WM_CHAR, tellKey<&CWnd::OnChar>, notUsed},
    // The mouse.
    {WM_MOUSEMOVE, tellMouse<&CWnd::OnMouseMove>, nullptr},
    {WM_LBUTTONDOWN, tellMouse<&CWnd::OnLButtonDown>, nullptr},
    {WM_LBUTTONUP, tellMouse<&CWnd::OnLButtonUp>, nullptr},
    {WM_LBUTTONDBLCLK, tellMouse<&CWnd::OnLButtonDblClk>, doubleClick},
    {WM_MBUTTONDOWN, tellMouse<&CWnd::OnMButtonDown>, nullptr},
    {WM_RBUTTONDOWN, tellMouse<&CWnd::OnRButtonDown>, nullptr},
    {WM_MOUSEWHEEL, turnWheel<false>, turnWheel<true>},
    {WM_SETCURSOR, setCursor<false>, setCursor<true>},
    {WM_CONTEXTMENU, contextMenu<false>, contextMenu<true>},
    // Clock, scroll bars and child windows.
    {WM_TIMER, timer, nullptr},
    {WM_HSCROLL, tellScroll<&CWnd::OnHScroll>, nullptr},
    {WM_VSCROLL, tellScroll<&CWnd::OnVScroll>, nullptr},
    {WM_NOTIFY, notify, nullptr},
    {WM_COMMAND, command, nullptr},
};

const Dispatch* dispatchOf(UINT message) {
    const auto found =
        std::find_if(std::begin(cDispatch), std::end(cDispatch),
                     [message](const Dispatch& dispatch) { return dispatch.message == message; });
    return found != std::end(cDispatch) ? found : nullptr;
}

}  // namespace

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const Dispatch* dispatch = dispatchOf(message);
    const bool isHandled = dispatch != nullptr && dispatch->handler != nullptr;
    return isHandled ? dispatch->handler(*this, wParam, lParam)
                     : DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const Dispatch* dispatch = dispatchOf(message);
    const bool isHandled = dispatch != nullptr && dispatch->byDefault != nullptr;
    return isHandled ? dispatch->byDefault(*this, wParam, lParam) : 0;
}
