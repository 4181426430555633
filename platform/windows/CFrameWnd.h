#pragma once

#include "platform/windows/CWnd.h"

/// A frame window: what GetParentFrame finds.
class TESSALINK_API CFrameWnd : public CWnd {
    DECLARE_DYNAMIC(CFrameWnd)

public:
    /// Creates the frame on the screen or, as a child frame, in a window.
    BOOL Create(const char* title, const RECT& rect, CWnd* parent = nullptr, DWORD style = 0);
    using CWnd::Create;

protected:
    /// True.
    bool is_frame() const override { return true; }
};

/// The frame of a document window, inside a CMDIFrameWnd.
class TESSALINK_API CMDIChildWnd : public CFrameWnd {
    DECLARE_DYNAMIC(CMDIChildWnd)
};

/// A frame that holds document windows, of which one is active.
class TESSALINK_API CMDIFrameWnd : public CFrameWnd {
    DECLARE_DYNAMIC(CMDIFrameWnd)

public:
    /// The active document window; null when there is none.
    CMDIChildWnd* MDIGetActive() const;
    /// Makes a document window the active one; it comes to the top.
    void MDIActivate(CWnd* child);

    /// WM_MDIACTIVATE makes the window that its first parameter names the active one.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    CMDIChildWnd* child_of(HWND window) const;

    HWND m_active = nullptr;
};
