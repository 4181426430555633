#pragma once

#include "platform/windows/CWnd.h"

// What all windows share: focus, capture, timers and posted messages.
namespace tessalink {

// The focus leaves the window and what is in it.
void leaveFocus(CWnd& window);
// The window has no parent.
void rememberRoot(CWnd& window);
// The window is destroyed: its timers end, its messages are dropped, and it has no capture.
void forgetWindow(CWnd& window);
void postMessage(CWnd& window, UINT message, WPARAM wParam, LPARAM lParam);
// Sends WM_SIZE when the client area has another size than it was told.
void clientMayHaveChanged(CWnd& window);
// The default handler of a key has been reached: nobody has used it.
void inputNotUsed();

}  // namespace tessalink
