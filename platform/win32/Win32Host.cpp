#include "platform/win32/Win32Host.h"

#include <utility>

#include "platform/win32/CInvalidWindowException.h"
#include "platform/win32/detail/HostHook.h"
#include "platform/win32/detail/Scale.h"
#include "platform/win32/detail/Screens.h"
#include "platform/win32/detail/SystemCalls.h"
#include "platform/win32/detail/Win32Window.h"
#include "platform/windows/HostOwned.h"

namespace tessalink {

namespace {

using detail::Scale;
using detail::Win32WindowSystem;

// A window of the host. What it lacks as a window of ours, it leaves to the host.
class HostNative final : public HostOwned<detail::Win32Native>, private detail::HostListener {
public:
    HostNative(CWnd& owner, HWND window) : m_owner(owner), m_hook(window, *this) {}

    void TakeFocus() override {
        if (Handle() != nullptr) ::SetFocus(Handle());
    }
    CPoint ClientOrigin() const override {
        POINT origin = {};
        if (Handle() == nullptr) return {};
        ::ClientToScreen(Handle(), &origin);
        return detail::screenUnits(origin);
    }
    bool PassFocusOn(CWnd& from, bool previous) override {
        return Handle() != nullptr && Win32WindowSystem::Get().MoveOn(Handle(), from, previous);
    }

    HWND Handle() const override { return m_hook.Window(); }

private:
    std::optional<LRESULT> Heard(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_SIZE) {
            windowMoved(m_owner, sizeOf(Handle()));
        } else if (message == WM_DESTROY) {
            windowLost(m_owner);
        } else {
            return Win32WindowSystem::Get().ChildTold(message, wParam, lParam);
        }
        return std::nullopt;
    }

public:
    static CRect sizeOf(HWND window) {
        RECT client = {};
        ::GetClientRect(window, &client);
        const Scale scale(detail::dpiOfWindow(window));
        return {0, 0, scale.UnitEdge(client.right), scale.UnitEdge(client.bottom)};
    }

private:
    CWnd& m_owner;
    detail::HostHook m_hook;
};

bool isOwnWindow(HWND window) {
    return ::IsWindow(window) != 0 &&
           ::GetWindowThreadProcessId(window, nullptr) == ::GetCurrentThreadId();
}

// While it lives, a record of a notification has the platform's window in place of ours.
class PlatformSender {
public:
    explicit PlatformSender(LPARAM record)
        : m_header(*reinterpret_cast<NMHDR*>(record)), m_own(m_header.hwndFrom) {
        const CWnd* const sender = CWnd::FromHandle(m_own);
        m_header.hwndFrom = sender != nullptr ? platformWindow(*sender) : nullptr;
    }
    ~PlatformSender() { m_header.hwndFrom = m_own; }
    PlatformSender(const PlatformSender&) = delete;
    PlatformSender& operator=(const PlatformSender&) = delete;

private:
    NMHDR& m_header;
    HWND m_own;
};

}  // namespace

HostWindow::HostWindow(HWND window, Handler handler) : HostParent(std::move(handler)) {
    if (!isOwnWindow(window)) throw CInvalidWindowException(window);
    adoptNative(*this, std::make_unique<HostNative>(*this, window), HostNative::sizeOf(window));
}

LRESULT HostWindow::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isNotification = message == WM_NOTIFY || message == WM_COMMAND;
    return isNotification && !HasHandler() ? notify(message, wParam, lParam)
                                           : HostParent::WindowProc(message, wParam, lParam);
}

LRESULT HostWindow::notify(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND host = platformWindow(*this);
    if (host == nullptr) return 0;
    if (message == WM_NOTIFY) {
        const PlatformSender sender(lParam);
        return ::SendMessageW(host, message, wParam, lParam);
    }
    const CWnd* const sender = CWnd::FromHandle(reinterpret_cast<HWND>(lParam));
    const HWND from = sender != nullptr ? platformWindow(*sender) : nullptr;
    const detail::HostHook::OwnMessage own;
    return ::SendMessageW(host, message, wParam, reinterpret_cast<LPARAM>(from));
}

bool commitEntries(HWND window) {
    return HostParent::CommitAll([window](const HostParent& parent) {
        const HWND host = platformWindow(parent);
        return host != nullptr && (host == window || ::IsChild(window, host) != 0);
    });
}

HWND platformWindow(const CWnd& window) {
    const detail::Win32Native* const native = detail::win32Native(window);
    return native != nullptr ? native->Handle() : nullptr;
}

CWnd* windowFromPlatform(HWND window) {
    const detail::Win32Window* const known = Win32WindowSystem::Get().WindowOf(window);
    return known != nullptr ? &known->Owner() : nullptr;
}

}  // namespace tessalink
