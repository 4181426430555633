#include "platform/windows/WindowSystem.h"

#include <algorithm>
#include <deque>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "platform/windows/HeadlessSystem.h"
#include "platform/windows/detail/WindowCore.h"
#include "platform/windows/detail/WindowState.h"

namespace tessalink {

namespace {

struct Posted {
    CWnd* window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

struct Timer {
    CWnd* window;
    UINT_PTR id;
};

struct SharedState {
    WindowSystem* system = nullptr;
    CWnd* focus = nullptr;
    bool focusKnows = false;  // it has got WM_SETFOCUS
    CWnd* capture = nullptr;
    CWnd* main = nullptr;
    std::vector<CWnd*> roots;  // windows without a parent
    std::deque<Posted> posted;
    std::map<int, Timer> timers;
    int lastTimer = 0;
    bool inputUsed = true;
    InputHook::Function hook;
};

SharedState& state() {
    static SharedState shared;
    return shared;
}

// Moves the focus and tells both windows; stops when one of them moves it elsewhere.
void moveFocus(CWnd* window) {
    CWnd* old = std::exchange(state().focus, window);
    if (old == window) return;
    const HWND oldHandle = old != nullptr ? old->GetSafeHwnd() : nullptr;
    const HWND newHandle = window != nullptr ? window->GetSafeHwnd() : nullptr;
    std::optional<WindowGuard> oldAlive;
    if (old != nullptr) {
        oldAlive.emplace(*old);
        if (std::exchange(state().focusKnows, false)) {
            old->SendMessage(WM_KILLFOCUS, reinterpret_cast<WPARAM>(newHandle));
        }
    }
    if (window == nullptr || state().focus != window) return;
    state().focusKnows = true;
    const bool knowsOld = oldAlive && *oldAlive && old->GetSafeHwnd() == oldHandle;
    window->SendMessage(WM_SETFOCUS, reinterpret_cast<WPARAM>(knowsOld ? oldHandle : nullptr));
}

// Whether the dialog around a window takes a key, by the window's answer to WM_GETDLGCODE;
// `handled` tells what came of it.
bool dialogTakes(CWnd& window, UINT code, UINT key, bool& handled) {
    if ((code & DLGC_WANTALLKEYS) != 0) return false;
    handled = false;
    if (key == VK_TAB) {
        if ((code & DLGC_WANTTAB) != 0) return false;
        handled = window.FocusNextControl(IsKeyDown(VK_SHIFT));
        return true;
    }
    const bool isArrow = key >= VK_LEFT && key <= VK_DOWN;
    return (isArrow && (code & DLGC_WANTARROWS) == 0) || key == VK_RETURN || key == VK_ESCAPE;
}

// A window and what is in it, parents first.
void collectWindows(CWnd& window, std::vector<std::pair<CWnd*, WindowGuard>>& windows) {
    windows.emplace_back(&window, WindowGuard(window));
    for (CWnd* child : WindowCore::Of(window)->children) collectWindows(*child, windows);
}

// While it lives, a window paints on a device.
class PaintScope {
public:
    PaintScope(CWnd& window, DrawingDevice& device, CPoint origin)
        : m_window(window), m_alive(window) {
        WindowCore& core = *WindowCore::Of(window);
        core.paintDevice = &device;
        core.paintOrigin = origin;
        core.isPaintTaken = false;
    }
    ~PaintScope() {
        WindowCore* core = m_alive ? WindowCore::Of(m_window) : nullptr;
        if (core == nullptr) return;
        core->paintDevice = nullptr;
        // A handler without a device context has painted, too.
        if (!core->isPaintTaken) core->update = Region();
    }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;

private:
    CWnd& m_window;
    WindowGuard m_alive;
};

bool sendInput(CWnd& window, UINT message, UINT value, LPARAM repeat) {
    const bool before = std::exchange(state().inputUsed, true);
    window.SendMessage(message, value, repeat);
    return std::exchange(state().inputUsed, before);
}

}  // namespace

void setWindowSystem(WindowSystem* system) {
    state().system = system;
}

WindowSystem& windowSystem() {
    if (state().system == nullptr) state().system = &HeadlessSystem::Default();
    return *state().system;
}

void leaveFocus(CWnd& window) {
    if (state().focus == nullptr || !window.Holds(state().focus)) return;
    windowSystem().DropFocus();
    moveFocus(nullptr);
}

void rememberRoot(CWnd& window) {
    state().roots.push_back(&window);
}

void forgetWindow(CWnd& window) {
    SharedState& shared = state();
    if (shared.focus == &window) {
        shared.focus = nullptr;
        shared.focusKnows = false;
    }
    if (shared.capture == &window) shared.capture = nullptr;
    if (shared.main == &window) shared.main = nullptr;
    std::erase(shared.roots, &window);
    std::erase_if(shared.posted, [&](const Posted& posted) { return posted.window == &window; });
    for (auto timer = shared.timers.begin(); timer != shared.timers.end();) {
        if (timer->second.window != &window) {
            ++timer;
            continue;
        }
        windowSystem().StopTimer(timer->first);
        timer = shared.timers.erase(timer);
    }
}

void postMessage(CWnd& window, UINT message, WPARAM wParam, LPARAM lParam) {
    state().posted.push_back({&window, message, wParam, lParam});
    windowSystem().WakeUp();
}

void dispatchPosted() {
    // Those posted meanwhile have their turn afterwards.
    for (std::size_t left = state().posted.size(); left > 0 && !state().posted.empty(); --left) {
        const Posted next = state().posted.front();
        state().posted.pop_front();
        next.window->SendMessage(next.message, next.wParam, next.lParam);
    }
    if (!state().posted.empty()) windowSystem().WakeUp();
}

void clientMayHaveChanged(CWnd& window) {
    WindowCore* core = WindowCore::Of(window);
    if (core == nullptr || core->isBeingDestroyed) return;
    const CSize size = core->Client().Size();
    if (size == core->clientSize) return;
    const Region before(CRect(CPoint(), std::exchange(core->clientSize, size)));
    const Region now(CRect(CPoint(), size));
    core->update = core->update.And(now);
    const Region seen = now.Minus(before);
    for (const RECT& rect : seen.Rects()) window.InvalidateRect(&rect);
    window.SendMessage(WM_SIZE, 0, MAKELPARAM(size.cx, size.cy));
}

void inputNotUsed() {
    state().inputUsed = false;
}

// Input.

bool keyPressed(CWnd& window, UINT key, std::string_view characters, UINT repeat, bool isHeld) {
    if (state().hook && state().hook(window, WM_KEYDOWN, key, CPoint())) return true;
    bool handled = false;
    const WindowGuard alive(window);
    const auto code = static_cast<UINT>(window.SendMessage(WM_GETDLGCODE));
    if (!alive) return true;
    if (dialogTakes(window, code, key, handled)) return handled;
    if (!alive || window.GetSafeHwnd() == nullptr) return true;
    const WindowCore* core = WindowCore::Of(window);
    const LPARAM count =
        MAKELPARAM(static_cast<int>(repeat), isHeld ? static_cast<int>(KF_REPEAT) : 0);
    handled = sendInput(window, WM_KEYDOWN, key, count);
    for (const char ch : characters) {
        // A key that has moved the focus makes no characters elsewhere.
        if (!alive || WindowCore::Of(window) != core || state().focus != &window) return true;
        handled = sendInput(window, WM_CHAR, static_cast<unsigned char>(ch), count) || handled;
    }
    return handled || (code & DLGC_WANTALLKEYS) != 0;
}

void charactersTyped(CWnd& window, std::string_view characters) {
    const WindowGuard alive(window);
    for (const char ch : characters) {
        if (!alive || state().focus != &window) return;
        sendInput(window, WM_CHAR, static_cast<unsigned char>(ch), 1);
    }
}

LRESULT mouseUsed(CWnd& window, UINT message, WPARAM wParam, CPoint point) {
    if (state().hook && state().hook(window, message, wParam, point)) return 0;
    const WindowGuard alive(window);
    if (message == WM_MOUSEMOVE) {
        window.SendMessage(WM_SETCURSOR, reinterpret_cast<WPARAM>(window.GetSafeHwnd()),
                           static_cast<LPARAM>(MAKEWPARAM(HTCLIENT, message)));
        if (!alive) return 0;
    }
    return window.SendMessage(message, wParam, MAKELPARAM(point.x, point.y));
}

void focusMoved(CWnd* window) {
    moveFocus(window);
}

InputHook::InputHook(Function function)
    : m_before(std::exchange(state().hook, std::move(function))) {}

InputHook::~InputHook() {
    state().hook = std::move(m_before);
}

// What happens to native windows.

void paintWindow(CWnd& window, DrawingDevice& device, const Region& area, CPoint origin) {
    WindowCore* core = WindowCore::Of(window);
    if (core == nullptr || area.IsEmpty()) return;
    core->update = area;
    core->isUpdateErased = true;
    const PaintScope scope(window, device, origin);
    window.SendMessage(WM_PAINT);
}

void paintWithin(CWnd& window, const CWnd& outer, const CRect& place, const CRect& area) {
    WindowCore* core = WindowCore::Of(window);
    const WindowCore* around = WindowCore::Of(outer);
    CRect shown;
    if (core == nullptr || around == nullptr || around->paintDevice == nullptr ||
        shown.IntersectRect(&area, &place) == 0) {
        return;
    }
    shown.OffsetRect(-place.left, -place.top);
    const CRect rect = std::exchange(core->rect, place);
    const Region update = core->update;
    const WindowGuard alive(window);
    const CPoint origin = around->paintOrigin + CSize(place.left, place.top);
    paintWindow(window, *around->paintDevice, Region(shown), origin);
    if (!alive || WindowCore::Of(window) != core) return;
    core->rect = rect;
    core->update = update;
}

void windowMoved(CWnd& window, const CRect& rect) {
    WindowCore* core = WindowCore::Of(window);
    if (core == nullptr) return;
    core->rect = rect;
    clientMayHaveChanged(window);
}

void windowLost(CWnd& window) {
    if (WindowCore* core = WindowCore::Of(window)) {
        core->isLost = true;
        window.DestroyWindow();
    }
}

void timerElapsed(int number) {
    const auto timer = state().timers.find(number);
    if (timer != state().timers.end()) {
        timer->second.window->SendMessage(WM_TIMER, timer->second.id);
    }
}

void editChanged(CWnd& window) {
    CWnd* parent = window.GetParent();
    if (parent == nullptr) return;
    parent->SendMessage(WM_COMMAND, MAKEWPARAM(static_cast<UINT>(window.GetDlgCtrlID()), EN_CHANGE),
                        reinterpret_cast<LPARAM>(window.GetSafeHwnd()));
}

void settingsChanged() {
    std::vector<std::pair<CWnd*, WindowGuard>> windows;
    for (CWnd* root : state().roots) collectWindows(*root, windows);
    for (const auto& [window, alive] : windows) {
        if (alive) window->SendMessage(WM_SYSCOLORCHANGE);
        if (alive) clientMayHaveChanged(*window);
    }
}

void adoptNative(CWnd& window, std::unique_ptr<NativeWindow> native, const CRect& rect) {
    auto& core = WindowCore::Slot(window);
    if (core) return;
    core = std::make_unique<WindowCore>(window);
    core->native = std::move(native);
    core->rect = rect;
    core->clientSize = rect.Size();
    core->style = WS_VISIBLE;
    rememberRoot(window);
}

NativeWindow* nativeOf(const CWnd& window) {
    const WindowCore* core = WindowCore::Of(window);
    return core != nullptr ? core->native.get() : nullptr;
}

const Region& invalidRegion(const CWnd& window) {
    static const Region none;
    const WindowCore* core = WindowCore::Of(window);
    return core != nullptr ? core->update : none;
}

CRect windowPlace(const CWnd& window) {
    const WindowCore* core = WindowCore::Of(window);
    return core != nullptr ? core->rect : CRect();
}

CRect clientArea(const CWnd& window) {
    const WindowCore* core = WindowCore::Of(window);
    return core != nullptr ? core->Client() : CRect();
}

bool clipboardText(CString& text) {
    return windowSystem().ClipboardText(text);
}

}  // namespace tessalink

using tessalink::state;
using tessalink::windowSystem;

CWnd* CWnd::SetFocus() {
    CWnd* before = state().focus;
    if (!m_core || m_core->isBeingDestroyed || before == this || !TakesInput()) return before;
    const tessalink::WindowGuard alive(*this);
    // The native window follows; what it tells of that is known already.
    tessalink::moveFocus(this);
    if (alive && m_core && state().focus == this) m_core->native->TakeFocus();
    return before;
}

CWnd* CWnd::GetFocus() {
    return state().focus;
}

CWnd* CWnd::SetCapture() {
    CWnd* before = state().capture;
    if (!m_core) return before;
    state().capture = this;
    m_core->native->Capture(true);
    return before;
}

CWnd* CWnd::GetCapture() {
    return state().capture;
}

BOOL tessalink::ReleaseCapture() {
    CWnd* window = std::exchange(state().capture, nullptr);
    if (window != nullptr) tessalink::nativeOf(*window)->Capture(false);
    return 1;
}

UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT period) {
    if (!m_core) return 0;
    KillTimer(id);
    const int number = ++state().lastTimer;
    state().timers.insert({number, {this, id}});
    windowSystem().StartTimer(number, period);
    return id;
}

BOOL CWnd::KillTimer(UINT_PTR id) {
    auto& timers = state().timers;
    const auto timer = std::find_if(timers.begin(), timers.end(), [&](const auto& entry) {
        return entry.second.window == this && entry.second.id == id;
    });
    if (timer == timers.end()) return 0;
    windowSystem().StopTimer(timer->first);
    timers.erase(timer);
    return 1;
}

CWnd* AfxGetMainWnd() {
    return state().main;
}

void AfxSetMainWnd(CWnd* window) {
    state().main = window;
}

COLORREF tessalink::GetSysColor(int index) {
    return windowSystem().Color(index);
}

int tessalink::GetSystemMetrics(int index) {
    return windowSystem().Metric(index);
}

BOOL tessalink::SystemParametersInfo(UINT action, UINT, void* value, UINT) {
    if (action != SPI_GETWHEELSCROLLLINES || value == nullptr) return 0;
    *static_cast<int*>(value) = windowSystem().WheelLines();
    return 1;
}

short tessalink::GetKeyState(int key) {
    return windowSystem().IsKeyDown(key) ? -1 : 0;
}

BOOL tessalink::GetCursorPos(POINT* point) {
    *point = windowSystem().CursorPosition();
    return 1;
}

void tessalink::SetCursor(int shape) {
    if (CWnd* window = CWnd::GetCapture()) tessalink::nativeOf(*window)->SetCursor(shape);
}
