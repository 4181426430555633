#include "platform/win32/detail/Win32WindowSystem.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/win32/detail/PlatformText.h"
#include "platform/win32/detail/Screens.h"
#include "platform/win32/detail/SystemCalls.h"
#include "platform/win32/detail/Win32Colors.h"
#include "platform/win32/detail/Win32Window.h"
#include "platform/windows/SystemParts.h"

namespace tessalink::detail {

namespace {

constexpr UINT cDispatchPosted = WM_APP + 1;
constexpr UINT cSettingsChanged = WM_APP + 2;
constexpr const wchar_t* cWindowClass = L"TessalinkWindow";
constexpr const wchar_t* cListenerClass = L"TessalinkListener";

DeviceCaps screenCaps() {
    const WindowContext screen(nullptr);
    DeviceCaps caps = capsOf(screen.Get());
    caps.dpiX = caps.dpiY = cUnitsPerInch;
    return caps;
}

ATOM registerClass(HINSTANCE module, const wchar_t* name, WNDPROC procedure) {
    WNDCLASSEXW described = {};
    described.cbSize = sizeof(described);
    described.style = CS_DBLCLKS;
    described.lpfnWndProc = procedure;
    described.hInstance = module;
    described.lpszClassName = name;
    return ::RegisterClassExW(&described);
}

// The dialog around a host's window, as the platform's own Tab sees it.
HWND dialogAround(HWND host) {
    const auto isInner = [](HWND window) {
        return (::GetWindowLongW(window, GWL_STYLE) & static_cast<LONG>(WS_CHILD)) != 0 &&
               (::GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_CONTROLPARENT) != 0;
    };
    while (isInner(host)) host = ::GetParent(host);
    return host;
}

// A measure of the system in units.
int metricNow(int index) {
    switch (index) {
        case SM_CXSCREEN:
            return screenAt({0, 0}).Width();
        case SM_CYSCREEN:
            return screenAt({0, 0}).Height();
        case SM_CXBORDER:
        case SM_CYBORDER:
            return 1;
        default: {
            const int dpi = dpiOfProcess();
            return Scale(dpi).UnitEdge(metricForDpi(index, dpi));
        }
    }
}

class OpenClipboard {
public:
    explicit OpenClipboard(HWND owner) : m_isOpen(::OpenClipboard(owner) != 0) {}
    ~OpenClipboard() {
        if (m_isOpen) ::CloseClipboard();
    }
    OpenClipboard(const OpenClipboard&) = delete;
    OpenClipboard& operator=(const OpenClipboard&) = delete;

    std::wstring Text() const {
        const HANDLE data = m_isOpen ? ::GetClipboardData(CF_UNICODETEXT) : nullptr;
        const auto* const text =
            data != nullptr ? static_cast<const wchar_t*>(::GlobalLock(data)) : nullptr;
        const std::wstring found = text != nullptr ? text : L"";
        if (text != nullptr) ::GlobalUnlock(data);
        return found;
    }

private:
    bool m_isOpen;
};

}  // namespace

Win32Native* win32Native(const CWnd& window) {
    return dynamic_cast<Win32Native*>(nativeOf(window));
}

Win32WindowSystem::Win32WindowSystem() : m_screen(screenCaps()) {}

Win32WindowSystem& Win32WindowSystem::Get() {
    // Not destroyed: windows may end after it otherwise.
    static auto* const system = new Win32WindowSystem;
    return *system;
}

HINSTANCE Win32WindowSystem::Module() const {
    HMODULE module = nullptr;
    ::GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&Win32WindowSystem::listen), &module);
    return module;
}

const wchar_t* Win32WindowSystem::WindowClass() {
    static const ATOM registered = registerClass(Module(), cWindowClass, &Win32Window::Procedure);
    return registered != 0 ? cWindowClass : nullptr;
}

void Win32WindowSystem::Start() {
    m_colors.clear();
    m_metrics.clear();
    if (m_listener != nullptr && ::IsWindow(m_listener) != 0) return;
    static const ATOM registered =
        registerClass(Module(), cListenerClass, &Win32WindowSystem::listen);
    // Not one for messages alone, which hears nothing of settings. It is never shown.
    m_listener = registered != 0
                     ? ::CreateWindowExW(WS_EX_TOOLWINDOW, cListenerClass, L"", WS_POPUP, 0, 0, 0,
                                         0, nullptr, nullptr, Module(), nullptr)
                     : nullptr;
}

std::unique_ptr<NativeWindow> Win32WindowSystem::CreateNative(const WindowSetup& setup) {
    auto window = std::make_unique<Win32Window>(setup);
    if (window->Handle() == nullptr) return nullptr;
    return window;
}

Win32Window* Win32WindowSystem::WindowOf(HWND handle) const {
    const auto found = m_windows.find(handle);
    return found != m_windows.end() ? found->second : nullptr;
}

// Focus.

void Win32WindowSystem::DropFocus() {
    const HWND focus = ::GetFocus();
    if (WindowOf(focus) == nullptr) return;
    // Keys go on to the window on the screen around it.
    GiveFocus(::GetAncestor(focus, GA_ROOT));
}

void Win32WindowSystem::GiveFocus(HWND handle) {
    const bool before = std::exchange(m_ignoresFocus, true);
    ::SetFocus(handle);
    m_ignoresFocus = before;
}

bool Win32WindowSystem::MoveOn(HWND host, const CWnd& from, bool isBack) {
    const Win32Native* const native = win32Native(tabEntryOf(from));
    const HWND entry = native != nullptr ? native->Handle() : nullptr;
    if (entry == nullptr) return false;
    const HWND next = ::GetNextDlgTabItem(dialogAround(host), entry, isBack ? TRUE : FALSE);
    const HWND focus = ::GetFocus();
    if (next == nullptr || (next == entry && focus == entry)) return false;
    const std::optional<bool> before = std::exchange(m_tab, isBack);
    ::SetFocus(next);
    m_tab = before;
    if (WindowOf(::GetFocus()) == nullptr) focusMoved(nullptr);
    return true;
}

std::optional<bool> Win32WindowSystem::TabDirection() const {
    if (m_tab) return m_tab;
    if (::GetKeyState(VK_TAB) >= 0) return std::nullopt;
    return ::GetKeyState(VK_SHIFT) < 0;
}

// The system.

COLORREF Win32WindowSystem::Color(int index) const {
    const auto known = m_colors.find(index);
    if (known != m_colors.end()) return known->second;
    return m_colors.insert({index, platformColor(index)}).first->second;
}

int Win32WindowSystem::Metric(int index) const {
    const auto known = m_metrics.find(index);
    if (known != m_metrics.end()) return known->second;
    return m_metrics.insert({index, metricNow(index)}).first->second;
}

CRect Win32WindowSystem::ScreenAt(CPoint point) const {
    return screenAt(point);
}

int Win32WindowSystem::WheelLines() const {
    UINT lines = 0;
    ::SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    return static_cast<int>(lines);
}

bool Win32WindowSystem::IsKeyDown(int key) const {
    return ::GetKeyState(key) < 0;
}

CPoint Win32WindowSystem::CursorPosition() const {
    POINT place = {};
    ::GetCursorPos(&place);
    return screenUnits(place);
}

bool Win32WindowSystem::ClipboardText(CString& text) const {
    const auto found = fromPlatform(OpenClipboard(m_listener).Text());
    text = found.value_or(CString());
    return !text.IsEmpty();
}

// Timers and messages.

void Win32WindowSystem::StartTimer(int number, UINT period) {
    ::SetTimer(m_listener, static_cast<UINT_PTR>(number), period, nullptr);
}

void Win32WindowSystem::StopTimer(int number) {
    ::KillTimer(m_listener, static_cast<UINT_PTR>(number));
}

void Win32WindowSystem::WakeUp() {
    if (!std::exchange(m_isWoken, true)) ::PostMessageW(m_listener, cDispatchPosted, 0, 0);
}

void Win32WindowSystem::settings_changed_soon() {
    m_colors.clear();
    m_metrics.clear();
    if (!std::exchange(m_settingsChange, true)) {
        ::PostMessageW(m_listener, cSettingsChanged, 0, 0);
    }
}

void Win32WindowSystem::settings_changed() {
    m_settingsChange = false;
    std::vector<HWND> handles;
    handles.reserve(m_windows.size());
    for (const auto& [handle, window] : m_windows) handles.push_back(handle);
    for (const HWND handle : handles) {
        if (Win32Window* const window = WindowOf(handle)) window->SettingsChanged();
    }
    settingsChanged();
}

void Win32WindowSystem::ScaleChanged() {
    settings_changed_soon();
}

LRESULT CALLBACK Win32WindowSystem::listen(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    Win32WindowSystem& system = Get();
    switch (message) {
        case cDispatchPosted:
            system.m_isWoken = false;
            dispatchPosted();
            return 0;
        case cSettingsChanged:
            system.settings_changed();
            return 0;
        case WM_TIMER:
            timerElapsed(static_cast<int>(wParam));
            return 0;
        case WM_SETTINGCHANGE:
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
        case WM_DISPLAYCHANGE:
            system.settings_changed_soon();
            break;
        default:
            break;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}

std::optional<LRESULT> Win32WindowSystem::ChildTold(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isColor = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORSTATIC;
    if (!isColor && message != WM_COMMAND) return std::nullopt;
    Win32Window* const child = WindowOf(reinterpret_cast<HWND>(lParam));
    if (child == nullptr || child->Edit() == nullptr) return std::nullopt;
    if (isColor) return child->FieldColors(reinterpret_cast<HDC>(wParam));
    if (HIWORD(wParam) == EN_CHANGE) child->FieldChanged();
    return 0;
}

bool Win32WindowSystem::RunUntil(const std::function<bool()>& isDone) {
    while (!isDone()) {
        MSG message;
        if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
            // For the host's loop, too.
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
    return true;
}

}  // namespace tessalink::detail
