// The keyboard, the mouse, the focus and the scroll bars of windows.
#include <utility>

#include "platform/win32/Win32Host.h"
#include "platform/win32/detail/Screens.h"
#include "platform/win32/detail/Win32Accessible.h"
#include "platform/win32/detail/Win32Input.h"
#include "platform/win32/detail/Win32Window.h"

namespace tessalink::detail {

namespace {

constexpr LPARAM cHeldBit = LPARAM{1} << 30;

POINT pixelOf(LPARAM value) {
    const auto bits = static_cast<DWORD>(value);
    return {static_cast<short>(LOWORD(bits)), static_cast<short>(HIWORD(bits))};
}

UINT buttonsOf(WPARAM wParam) {
    constexpr UINT cKnown = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON | MK_SHIFT | MK_CONTROL;
    return static_cast<UINT>(LOWORD(wParam)) & cKnown;
}

// Where the thumb is while it is dragged: the message has the low bits only.
int thumbPosition(HWND window, int bar, WPARAM wParam) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_TRACKPOS;
    const UINT told = HIWORD(wParam);
    const bool isKnown = ::GetScrollInfo(window, bar, &info) != 0;
    const UINT low = static_cast<UINT>(info.nTrackPos) & 0xFFFFU;
    return isKnown && low == told ? info.nTrackPos : static_cast<int>(told);
}

}  // namespace

// Keyboard.

std::optional<LRESULT> Win32Window::key_pressed(const Received& received) {
    const auto key = static_cast<UINT>(received.wParam);
    const KeyCharacters made = takeCharacters(m_handle);
    // Keys of other windows come here while none of ours has the focus.
    if (isKeyOfHost(key) || CWnd::GetFocus() != &m_owner) {
        return m_edit ? std::optional<LRESULT>(0) : std::nullopt;
    }
    if (made.isRefused) MessageBeep(MB_OK);
    const bool isHeld = (received.lParam & cHeldBit) != 0;
    const UINT repeat = LOWORD(static_cast<DWORD>(received.lParam));
    const bool isField = m_edit != nullptr;
    const bool isUsed = keyPressed(m_owner, key, made.characters, repeat, isHeld);
    if (isUsed || isField) return 0;
    return std::nullopt;
}

std::optional<LRESULT> Win32Window::key_released(const Received& received) {
    if (CWnd::GetFocus() == &m_owner) {
        m_owner.SendMessage(WM_KEYUP, received.wParam, LOWORD(static_cast<DWORD>(received.lParam)));
    }
    return 0;
}

std::optional<LRESULT> Win32Window::character(const Received& received) {
    const KeyCharacters made = charactersOf(static_cast<wchar_t>(received.wParam));
    if (made.isRefused) MessageBeep(MB_OK);
    if (CWnd::GetFocus() == &m_owner) charactersTyped(m_owner, made.characters);
    return 0;
}

std::optional<LRESULT> Win32Window::dialog_code(const Received&) {
    // While something is dragged, keys belong to that.
    const LRESULT all = CWnd::GetCapture() != nullptr ? DLGC_WANTALLKEYS : 0;
    return m_owner.SendMessage(WM_GETDLGCODE) | all;
}

// Focus. That of our windows decides; the platform's follows it, and leads it when the user moves
// it.

void Win32Window::TakeFocus() {
    if (m_handle != nullptr) ::SetFocus(m_handle);
}

std::optional<LRESULT> Win32Window::focus_came(const Received& received) {
    const WindowLink link = m_link;
    const LRESULT answer = m_edit ? by_default(received) : 0;
    if (*link == nullptr) return answer;
    if (m_edit) {
        m_part.reset();
        ::RedrawWindow(m_handle, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
    }
    if (windows().IgnoresFocus() || CWnd::GetFocus() == &m_owner) return answer;
    if (::IsWindowVisible(m_handle) == 0) {
        // The field that had it before is hidden now.
        const HWND entry = platformWindow(tabEntryOf(m_owner));
        if (entry != nullptr && entry != m_handle) ::SetFocus(entry);
        return answer;
    }
    if (const std::optional<bool> isBack = windows().TabDirection()) m_owner.EnterByTab(*isBack);
    if (*link != nullptr) focusMoved(&m_owner);
    return answer;
}

std::optional<LRESULT> Win32Window::focus_left(const Received& received) {
    const WindowLink link = m_link;
    const LRESULT answer = m_edit ? by_default(received) : 0;
    if (*link == nullptr) return answer;
    if (m_edit) ::RedrawWindow(m_handle, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);
    if (windows().IgnoresFocus() || CWnd::GetFocus() != &m_owner) return answer;
    // The window that has the focus now tells it itself.
    const HWND next = reinterpret_cast<HWND>(received.wParam);
    if (windows().WindowOf(next) != nullptr) return answer;
    focusMoved(nullptr);
    return answer;
}

// The focus comes back to where it was with the window on the screen.
std::optional<LRESULT> Win32Window::activated(const Received& received) {
    if (!m_isTopLevel || m_isPopup) return std::nullopt;
    if (LOWORD(received.wParam) == WA_INACTIVE) {
        const CWnd* const focused = CWnd::GetFocus();
        const bool isInside = focused != nullptr && m_owner.Holds(focused);
        m_focusToRestore = isInside ? platformWindow(tabEntryOf(*focused)) : nullptr;
        return std::nullopt;
    }
    const HWND target = std::exchange(m_focusToRestore, nullptr);
    if (target == nullptr || windows().WindowOf(target) == nullptr) return std::nullopt;
    ::SetFocus(target);
    return 0;
}

std::optional<LRESULT> Win32Window::mouse_activates(const Received&) {
    if (!m_isPopup) return std::nullopt;
    return MA_NOACTIVATE;
}

// Mouse.

void Win32Window::Capture(bool capture) {
    if (capture && m_handle != nullptr) {
        ::SetCapture(m_handle);
    } else if (!capture) {
        ::ReleaseCapture();
    }
}

// The platform has taken the capture away: what is dragged ends where it is.
std::optional<LRESULT> Win32Window::capture_left(const Received& received) {
    const bool isOurs = reinterpret_cast<HWND>(received.lParam) == m_handle;
    if (m_edit || isOurs || CWnd::GetCapture() != &m_owner) return std::nullopt;
    const WindowGuard alive(m_owner);
    mouseUsed(m_owner, WM_LBUTTONUP, 0, m_lastMouse);
    if (alive && CWnd::GetCapture() == &m_owner) ReleaseCapture();
    return 0;
}

void Win32Window::SetCursor(int shape) {
    if (m_edit) return;
    m_cursor = ::LoadCursorW(nullptr, MAKEINTRESOURCEW(shape));
    ::SetCursor(m_cursor);
}

std::optional<LRESULT> Win32Window::cursor(const Received& received) {
    const bool isInside = LOWORD(static_cast<DWORD>(received.lParam)) == HTCLIENT;
    if (m_edit || !isInside || reinterpret_cast<HWND>(received.wParam) != m_handle) {
        return std::nullopt;
    }
    ::SetCursor(m_cursor != nullptr ? m_cursor : ::LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)));
    return TRUE;
}

std::optional<LRESULT> Win32Window::mouse(const Received& received) {
    const UINT message = mouseMessage(received.message);
    if (m_edit || message == 0) return std::nullopt;
    m_lastMouse = m_scale.UnitsOf(pixelOf(received.lParam));
    mouseUsed(m_owner, message, buttonsOf(received.wParam), m_lastMouse);
    // The platform's own makes a request for a menu of it.
    if (received.message == WM_RBUTTONUP) return std::nullopt;
    return 0;
}

std::optional<LRESULT> Win32Window::wheel(const Received& received) {
    const int delta = static_cast<short>(HIWORD(received.wParam));
    const short told = m_wheel.Told(delta, windows().WheelLines());
    if (told == 0) return 0;
    const WPARAM wParam = MAKEWPARAM(buttonsOf(received.wParam), static_cast<WORD>(told));
    const WindowLink link = m_link;
    const bool isUsed =
        mouseUsed(m_owner, WM_MOUSEWHEEL, wParam, screenUnits(pixelOf(received.lParam))) != 0;
    if (isUsed || *link == nullptr) return 0;
    // Our windows around it have had it; it goes on to the host.
    const CWnd* outermost = &m_owner;
    while (outermost->GetParent() != nullptr) outermost = outermost->GetParent();
    const HWND host = platformWindow(*outermost);
    const HWND around = host != nullptr && windows().WindowOf(host) == nullptr ? host : nullptr;
    return around != nullptr
               ? ::SendMessageW(around, WM_MOUSEWHEEL, received.wParam, received.lParam)
               : 0;
}

std::optional<LRESULT> Win32Window::menu(const Received& received) {
    // Fields have a menu of their own.
    if (m_edit) return std::nullopt;
    POINT place = pixelOf(received.lParam);
    if (received.lParam == -1) {
        RECT client = {};
        ::GetClientRect(m_handle, &client);
        place = {client.right / 2, client.bottom / 2};
        ::ClientToScreen(m_handle, &place);
    }
    const CPoint units = screenUnits(place);
    m_owner.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_owner.GetSafeHwnd()),
                        MAKELPARAM(units.x, units.y));
    return 0;
}

// Scroll bars.

void Win32Window::SetScrollBar(int bar, bool isShown, const SCROLLINFO& info) {
    if (m_handle == nullptr || m_edit) return;
    if (isShown) {
        SCROLLINFO set = info;
        set.cbSize = sizeof(set);
        set.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
        ::SetScrollInfo(m_handle, bar, &set, TRUE);
    }
    const DWORD bit = bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL;
    const auto style = static_cast<DWORD>(::GetWindowLongW(m_handle, GWL_STYLE));
    if (((style & bit) != 0) != isShown) ::ShowScrollBar(m_handle, bar, isShown ? TRUE : FALSE);
}

std::optional<LRESULT> Win32Window::scrolled(const Received& received) {
    if (m_edit || received.lParam != 0) return std::nullopt;
    const int bar = received.message == WM_VSCROLL ? SB_VERT : SB_HORZ;
    const UINT code = LOWORD(received.wParam);
    const bool isThumb = code == SB_THUMBTRACK || code == SB_THUMBPOSITION;
    const int position = isThumb ? thumbPosition(m_handle, bar, received.wParam) : 0;
    m_owner.SendMessage(received.message, scrollParam(code, position));
    return 0;
}

}  // namespace tessalink::detail
