#include "platform/win32/detail/Win32Input.h"

#include "platform/win32/detail/PlatformText.h"

namespace tessalink::detail {

KeyCharacters charactersOf(wchar_t unit) {
    KeyCharacters result;
    // The first half of a character outside the first plane says it already.
    if (unit >= 0xDC00 && unit <= 0xDFFF) return result;
    const auto text = fromPlatform(std::wstring_view(&unit, 1));
    result.isRefused = !text;
    if (text) result.characters = text->View();
    return result;
}

KeyCharacters takeCharacters(HWND window) {
    KeyCharacters result;
    MSG made;
    while (::PeekMessageW(&made, window, WM_CHAR, WM_DEADCHAR, PM_REMOVE | PM_NOYIELD) != 0) {
        if (made.message != WM_CHAR) continue;
        const KeyCharacters one = charactersOf(static_cast<wchar_t>(made.wParam));
        result.characters += one.characters;
        result.isRefused = result.isRefused || one.isRefused;
    }
    if (result.isRefused) result.characters.clear();
    return result;
}

bool isKeyOfHost(UINT key) {
    return key == VK_TAB && ::GetKeyState(VK_CONTROL) < 0;
}

UINT mouseMessage(UINT message) {
    switch (message) {
        case WM_MOUSEMOVE:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONUP:
        case WM_MBUTTONDOWN:
        case WM_MBUTTONUP:
            return message;
        case WM_RBUTTONDBLCLK:
            return WM_RBUTTONDOWN;
        case WM_MBUTTONDBLCLK:
            return WM_MBUTTONDOWN;
        default:
            return 0;
    }
}

}  // namespace tessalink::detail
