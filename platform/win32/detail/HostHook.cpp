#include "platform/win32/detail/HostHook.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tessalink::detail {

namespace {

// The procedure of a window before ours. It stays there after the last listener has gone when the
// host's own procedures call ours.
constexpr const wchar_t* cBefore = L"TessalinkProcedureBefore";

std::vector<HostHook*>& hooks() {
    static std::vector<HostHook*> all;
    return all;
}

bool isOwnMessage = false;

}  // namespace

HostHook::OwnMessage::OwnMessage() : m_before(std::exchange(isOwnMessage, true)) {}

HostHook::OwnMessage::~OwnMessage() {
    isOwnMessage = m_before;
}

HostHook::HostHook(HWND window, HostListener& listener) : m_window(window), m_listener(listener) {
    hooks().push_back(this);
    if (::GetPropW(window, cBefore) != nullptr) return;
    const LONG_PTR before = ::GetWindowLongPtrW(window, GWLP_WNDPROC);
    ::SetPropW(window, cBefore, reinterpret_cast<HANDLE>(before));
    ::SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&HostHook::hear));
}

HostHook::~HostHook() {
    std::erase(hooks(), this);
    if (m_window == nullptr) return;
    const bool isHeard = std::any_of(hooks().begin(), hooks().end(), [this](const HostHook* hook) {
        return hook->m_window == m_window;
    });
    const bool isFirst =
        ::GetWindowLongPtrW(m_window, GWLP_WNDPROC) == reinterpret_cast<LONG_PTR>(&HostHook::hear);
    if (isHeard || !isFirst) return;
    const HANDLE before = ::RemovePropW(m_window, cBefore);
    ::SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before));
}

LRESULT CALLBACK HostHook::hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto before = reinterpret_cast<WNDPROC>(::GetPropW(window, cBefore));
    if (message == WM_NCDESTROY) {
        ::RemovePropW(window, cBefore);
        for (HostHook* const hook : hooks()) {
            if (hook->m_window == window) hook->m_window = nullptr;
        }
    } else if (!std::exchange(isOwnMessage, false)) {
        // Listeners may end while they hear.
        const std::vector<HostHook*> all = hooks();
        for (HostHook* const hook : all) {
            const bool isThere = std::find(hooks().begin(), hooks().end(), hook) != hooks().end();
            if (!isThere || hook->m_window != window) continue;
            const std::optional<LRESULT> answer = hook->m_listener.Heard(message, wParam, lParam);
            if (answer) return *answer;
        }
    }
    return before != nullptr ? ::CallWindowProcW(before, window, message, wParam, lParam)
                             : ::DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace tessalink::detail
