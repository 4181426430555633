#include "tests/platform/win32/HostFrame.h"

#include <algorithm>
#include <iterator>

#include "platform/win32/detail/AutomationPatterns.h"
#include "platform/win32/detail/ComPointer.h"
#include "platform/win32/detail/PlatformText.h"
#include "platform/win32/detail/Win32Accessible.h"

namespace tessalink::test {

namespace {

constexpr const wchar_t* cClass = L"TessalinkTestHost";
constexpr BYTE cDown = 0x80;

}  // namespace

KeyState::KeyState(std::initializer_list<std::pair<UINT, bool>> keys) {
    ::GetKeyboardState(m_before);
    BYTE state[256] = {};
    for (const auto& [key, isDown] : keys) state[key & 0xFF] = isDown ? cDown : 0;
    ::SetKeyboardState(state);
}

KeyState::~KeyState() {
    BYTE none[256] = {};
    ::SetKeyboardState(none);
}

HostFrame::HostFrame(CSize size) {
    static const bool isRegistered = [] {
        WNDCLASSW described = {};
        described.lpfnWndProc = &HostFrame::Procedure;
        described.hInstance = ::GetModuleHandleW(nullptr);
        described.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        described.lpszClassName = cClass;
        return ::RegisterClassW(&described) != 0;
    }();
    if (!isRegistered) return;
    m_window =
        ::CreateWindowExW(WS_EX_CONTROLPARENT, cClass, L"Host", WS_POPUP | WS_CLIPCHILDREN, 0, 0,
                          size.cx, size.cy, nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
    ::SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ::ShowWindow(m_window, SW_SHOW);
    ::SetForegroundWindow(m_window);
}

HostFrame::~HostFrame() {
    reaction = nullptr;
    ::SetWindowLongPtrW(m_window, GWLP_USERDATA, 0);
    ::DestroyWindow(m_window);
}

HWND HostFrame::AddControl(const wchar_t* className, const CRect& place) {
    return ::CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, place.left,
                             place.top, place.Width(), place.Height(), m_window, nullptr,
                             ::GetModuleHandleW(nullptr), nullptr);
}

HWND HostFrame::AddHolder(const CRect& place) {
    const HWND holder =
        ::CreateWindowExW(WS_EX_CONTROLPARENT, cClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                          place.left, place.top, place.Width(), place.Height(), m_window, nullptr,
                          ::GetModuleHandleW(nullptr), nullptr);
    ::SetWindowLongPtrW(holder, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    return holder;
}

LRESULT CALLBACK HostFrame::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const frame = reinterpret_cast<HostFrame*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    const bool isUsed =
        frame != nullptr && frame->reaction && frame->reaction(message, wParam, lParam);
    return isUsed ? frame->answer : ::DefWindowProcW(window, message, wParam, lParam);
}

void HostFrame::PumpAll(HWND dialog) {
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
        if (dialog != nullptr && ::IsDialogMessageW(dialog, &message) != 0) continue;
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    }
}

std::string spokenOf(HWND window) {
    const detail::ComPointer<IRawElementProviderSimple> provider(detail::makeProvider(window));
    VARIANT value;
    provider->GetPropertyValue(UIA_HelpTextPropertyId, &value);
    const std::string text =
        value.vt == VT_BSTR
            ? std::string(detail::fromPlatform(value.bstrVal).value_or(CString()).GetString())
            : "";
    ::VariantClear(&value);
    return text;
}

}  // namespace tessalink::test
