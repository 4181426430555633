#pragma once

#include "platform/windows/HostParent.h"

/// Windows of the library in windows of a host. useWin32() comes first (platform/win32/UseWin32.h).
namespace tessalink {

/// Any window of the platform, a dialog too, as the parent of windows of the library:
///
///     tessalink::HostWindow host(dialog);
///     form.Create(CRect(10, 10, 400, 300), 1, &host);
///
/// The window stays the host's: it is not moved, painted or destroyed, and keeps its messages.
/// Windows in it lie where their rectangles say, in units of 96 per inch from the left top corner
/// of its client area; they show with it and are destroyed with it, their objects are not. Tab
/// leads from the host's own controls to windows that have a tab stop, and on from these, in the
/// order of the dialog.
///
/// Without a handler the window gets WM_NOTIFY and WM_COMMAND itself, as from any other control:
/// `hwndFrom` and the handle of WM_COMMAND are the platform's then. Messages go to its procedure at
/// the time; the host may show a message box while it answers.
class TESSALINK_API HostWindow : public HostParent {
public:
    /// A handle that is no window of this thread raises CInvalidWindowException.
    explicit HostWindow(HWND window, Handler handler = {});

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT notify(UINT message, WPARAM wParam, LPARAM lParam);
};

/// Keeps what is being typed in all windows of the library that lie in a window, at any depth.
/// Returns false when one of them is refused what stands in its box; it has the focus then. For a
/// dialog's OK:
///
///     case IDOK:
///         if (tessalink::commitEntries(dialog)) EndDialog(dialog, IDOK);
TESSALINK_API bool commitEntries(HWND window);

/// The platform's window of a window; for HostWindow the host's. Null for a window that does not
/// exist or is none of the platform's. It is the library's, and may be ordered or asked for its
/// place, not destroyed.
TESSALINK_API HWND platformWindow(const CWnd& window);

/// The window of the library that a window of the platform is; null for others, those of hosts too.
TESSALINK_API CWnd* windowFromPlatform(HWND window);

}  // namespace tessalink
