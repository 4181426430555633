#pragma once

#include <functional>
#include <optional>

#include "platform/windows/Accessible.h"
#include "platform/windows/Messages.h"

struct IRawElementProviderSimple;

namespace tessalink::detail {

class Win32Window;

// The answer to a question for a window's object (WM_GETOBJECT): what is drawn in it and is no
// window itself is told to UI Automation as the window describes it. Nothing for questions of other
// kinds.
std::optional<LRESULT> accessibleObject(Win32Window& window, WPARAM wParam, LPARAM lParam);

// A provider for a window, counted for the caller.
IRawElementProviderSimple* makeProvider(HWND window);

// Tells assistive technology of an event in a window, or in one of its parts.
void tellAccessible(Win32Window& window, AccessibleEvent event, int child);

// The focus is in a field that stands for another part now: it is called as the window describes
// itself.
void tellFieldFocus(Win32Window& window);

// The window is gone: nobody asks for it any more.
void forgetAccessible(HWND window);

// Questions come by any thread; they are answered in that of the window. What a function is sent
// by.
inline constexpr UINT cCallFunction = WM_APP + 3;
bool carriesFunction(WPARAM wParam);
bool callInWindow(HWND window, const std::function<void(Win32Window&)>& function);

}  // namespace tessalink::detail
