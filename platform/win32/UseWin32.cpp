#include "platform/win32/UseWin32.h"

#include "platform/base/HostServices.h"
#include "platform/win32/Win32Printing.h"
#include "platform/win32/detail/PlatformText.h"
#include "platform/win32/detail/SystemCalls.h"
#include "platform/win32/detail/Win32WindowSystem.h"
#include "platform/windows/SystemParts.h"
#include "platform/windows/WindowSystem.h"

namespace tessalink {

namespace {

constexpr UINT cButtonsMask = 0x0F;
constexpr UINT cIconMask = 0xF0;
constexpr LPARAM cHeldBit = LPARAM{1} << 30;
constexpr std::size_t cTitleRoom = 260;

// The keys of a message with one button, which the platform's loop asks us about first.
class MessageKeys {
public:
    MessageKeys()
        : m_hook(::SetWindowsHookExW(WH_MSGFILTER, filter, nullptr, ::GetCurrentThreadId())),
          m_outer(innermost) {
        innermost = this;
    }
    ~MessageKeys() {
        ::UnhookWindowsHookEx(m_hook);
        innermost = m_outer;
    }
    MessageKeys(const MessageKeys&) = delete;
    MessageKeys& operator=(const MessageKeys&) = delete;

private:
    static LRESULT CALLBACK filter(int code, WPARAM wParam, LPARAM lParam) {
        const auto& input = *reinterpret_cast<const MSG*>(lParam);
        const bool isKey = code == MSGF_DIALOGBOX && input.message == WM_KEYDOWN;
        if (isKey && innermost->keeps(input)) return 1;
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
    bool keeps(const MSG& input) {
        const auto kind =
            input.wParam == VK_RETURN ? TypedAhead::Key::Return
            : ::MapVirtualKeyW(static_cast<UINT>(input.wParam), MAPVK_VK_TO_CHAR) > VK_SPACE
                ? TypedAhead::Key::Text
                : TypedAhead::Key::Other;
        return m_typed.Keeps(kind, (input.lParam & cHeldBit) != 0);
    }

    static inline MessageKeys* innermost = nullptr;

    HHOOK m_hook;
    MessageKeys* m_outer;
    TypedAhead m_typed;
};

// That of the window that the message belongs to.
std::wstring titleFor(HWND window) {
    std::wstring title(cTitleRoom, L'\0');
    const HWND root = window != nullptr ? ::GetAncestor(window, GA_ROOTOWNER) : nullptr;
    const int length =
        root != nullptr ? ::GetWindowTextW(root, title.data(), static_cast<int>(cTitleRoom)) : 0;
    title.resize(static_cast<std::size_t>(length));
    return title;
}

int showMessage(const char* text, UINT flags) {
    const HWND before = ::GetActiveWindow();
    // Who keys from paper does not see it.
    if ((flags & cIconMask) != 0) MessageBeep(flags & cIconMask);
    std::optional<MessageKeys> keys;
    if ((flags & cButtonsMask) == MB_OK) keys.emplace();
    const int answer = ::MessageBoxW(before, detail::toPlatform(text).c_str(),
                                     titleFor(before).c_str(), flags & (cButtonsMask | cIconMask));
    return answer != 0 ? answer : IDCANCEL;
}

}  // namespace

void useWin32() {
    HostServices services = hostServices();
    services.messageBox = showMessage;
    services.beep = [](UINT type) { ::MessageBeep(type); };
    services.defaultPrinter = applicationPrinter;
    setHostServices(std::move(services));
    detail::Win32WindowSystem::Get().Start();
    setWindowSystem(&detail::Win32WindowSystem::Get());
}

void scalePerMonitor() {
    detail::allowScalePerMonitor();
}

}  // namespace tessalink
