#pragma once

#include <memory>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"
#include "platform/windows/Accessible.h"
#include "platform/windows/Messages.h"

class CWnd;

namespace tessalink {

class NativeWindow;

/// Tells whether a window object still exists after something that may have deleted it.
class TESSALINK_API WindowGuard {
public:
    explicit WindowGuard(const CWnd& window);
    explicit operator bool() const { return !m_token.expired(); }

private:
    std::weak_ptr<const char> m_token;
};

}  // namespace tessalink

/// A window: a rectangle on the screen, mostly inside another window, that paints itself and gets
/// what the user does as messages. Calls with the meaning of their classic namesakes. Coordinates
/// are pixels at 96 per inch, whatever the scale of the screen; those of a child are relative to
/// its parent's client area.
///
/// Create makes the window of an object and DestroyWindow, or the end of the object, drops it and
/// its child windows, whose objects stay. Calls on an object without window do nothing and return
/// 0, null or an empty rectangle. A window may be destroyed and its object deleted inside any of
/// its own handlers, if these then touch it no more.
///
/// Messages go to WindowProc, which calls the virtual handler; a handler that does not call the
/// base class's swallows the event.
class TESSALINK_API CWnd : public CObject {
    DECLARE_DYNAMIC(CWnd)

public:
    CWnd();
    ~CWnd() override;

    /// Creation. The class name is "EDIT" for edit boxes and null otherwise. Returns nonzero on
    /// success; OnCreate may refuse with -1. WM_SIZE follows.
    BOOL Create(const char* className, const char* name, DWORD style, const RECT& rect,
                CWnd* parent, UINT id);
    /// The same; extended styles have no effect.
    BOOL CreateEx(DWORD, const char* className, const char* name, DWORD style, const RECT& rect,
                  CWnd* parent, UINT id) {
        return Create(className, name, style, rect, parent, id);
    }
    /// Takes the place, id, style, order and text of a child of `parent`, which is destroyed. What
    /// was an edit box stays one.
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    BOOL DestroyWindow();
    HWND GetSafeHwnd() const { return tessalink::handleOf(m_core.get()); }
    /// The object of a window; null for null.
    static CWnd* FromHandle(HWND window);

    /// The tree. Children are in the order of creation, which Tab follows.
    CWnd* GetParent() const;
    /// The nearest frame window around this one, or null.
    CWnd* GetParentFrame() const;
    CWnd* GetDlgItem(UINT id) const;
    int GetDlgCtrlID() const;
    /// The next window with a tab stop that is shown and enabled, or the one before, among all
    /// descendants; after the last follows the first. Null when there is none.
    CWnd* GetNextDlgTabItem(const CWnd* from, BOOL previous = 0) const;
    /// Whether `window` lies in this one, at any depth.
    BOOL IsChild(const CWnd* window) const;
    /// The same, or it is this one itself.
    bool Holds(const CWnd* window) const { return window == this || IsChild(window) != 0; }
    int GetChildCount() const;
    CWnd* GetChild(int index) const;

    /// Style, state and place.
    DWORD GetStyle() const;
    BOOL ModifyStyle(DWORD remove, DWORD add);
    BOOL ShowWindow(int command);
    /// Whether it and all its parents are shown.
    BOOL IsWindowVisible() const;
    BOOL EnableWindow(BOOL enable = 1);
    BOOL IsWindowEnabled() const;
    /// Whether it and all its parents are enabled.
    bool TakesInput() const;
    void MoveWindow(const RECT& rect, BOOL repaint = 1);
    /// What SWP_... in `flags` does not leave out: moves the window, gives it a size and another
    /// place among the children of its parent, shows or hides it. It comes after
    /// the sibling `insertAfter`, behind it on the screen and next to it for Tab; as the first and
    /// in front of all with null or wndTop, as the last with wndBottom. Windows without a parent
    /// only come to the front. Nothing is activated. Returns 0, and does nothing, when
    /// `insertAfter` is no sibling.
    BOOL SetWindowPos(const CWnd* insertAfter, int x, int y, int cx, int cy, UINT flags);
    /// Places for SetWindowPos; no window is on top of all others for good.
    static const CWnd wndTop;
    static const CWnd wndBottom;
    static const CWnd wndTopMost;
    static const CWnd wndNoTopMost;
    void BringWindowToTop();
    void GetClientRect(RECT* rect) const;
    void GetWindowRect(RECT* rect) const;  ///< on the screen
    void ClientToScreen(POINT* point) const;
    void ScreenToClient(POINT* point) const;

    /// Focus and capture.
    CWnd* SetFocus();
    static CWnd* GetFocus();
    /// Gives the focus to the next control with a tab stop in the dialog around this window, or
    /// with `previous` to the one before it. In a widget of a host the host's own controls count,
    /// too. False when there is no other control.
    bool FocusNextControl(bool previous);
    /// Tab is about to bring the focus here, Shift+Tab with `previous`: a window in which Tab has
    /// several stops goes to its first or to its last one. The base does nothing.
    virtual void EnterByTab(bool previous);
    /// Keeps what is being typed in this window and in those inside it. Returns false when that is
    /// refused; the window that refuses has the focus then. For the OK of a dialog.
    virtual bool CommitEntry();
    CWnd* SetCapture();
    static CWnd* GetCapture();

    /// Text and font. The font must outlive its use.
    void SetWindowText(const char* text);
    void GetWindowText(CString& text) const { text = window_text(); }
    int GetWindowTextLength() const { return window_text().GetLength(); }
    void SetFont(CFont* font);
    CFont* GetFont() const;

    /// Painting: what is invalid is painted when the window system comes to it, or by UpdateWindow.
    void Invalidate(BOOL erase = 1);
    void InvalidateRect(const RECT* rect, BOOL erase = 1);
    void InvalidateRect(const RECT& rect) { InvalidateRect(&rect); }
    void ValidateRect(const RECT* rect);
    BOOL GetUpdateRect(RECT* rect) const;
    void UpdateWindow();
    /// Moves what is shown, and what is invalid; what comes into view becomes invalid. Child
    /// windows stay where they are.
    void ScrollWindow(int dx, int dy);

    /// Scroll bars. A bar is shown when the window has its style and the range is larger than the
    /// page. The position is kept between the start of the range and its end less the page, plus
    /// one.
    int SetScrollInfo(int bar, const SCROLLINFO* info, BOOL redraw = 1);
    BOOL GetScrollInfo(int bar, SCROLLINFO* info) const;
    int SetScrollPos(int bar, int position, BOOL redraw = 1);
    int GetScrollPos(int bar) const;
    void SetScrollRange(int bar, int min, int max, BOOL redraw = 1);
    void GetScrollRange(int bar, int* min, int* max) const;

    /// Timers, in milliseconds; they repeat until they are killed.
    UINT_PTR SetTimer(UINT_PTR id, UINT period);
    BOOL KillTimer(UINT_PTR id);

    /// Messages. Posted ones are dispatched later, in their order; those to a window that is gone
    /// are dropped.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    /// For the platform's accessibility interface. Parts that are no windows are numbered from 0.
    virtual tessalink::AccessibleElement Accessible() const;
    virtual int AccessibleChildCount() const { return 0; }
    virtual tessalink::AccessibleElement AccessibleChild(int index) const;
    /// The part at a point of the client area; cNoAccessibleChild without one.
    virtual int AccessibleChildAt(CPoint point) const;
    virtual int AccessibleFocusChild() const { return tessalink::cNoAccessibleChild; }
    virtual void ChooseAccessibleChild(int) {}
    /// As a click on a choice of a part.
    virtual void ChooseAccessibleChoice(int child, int) { ChooseAccessibleChild(child); }
    void NotifyAccessible(tessalink::AccessibleEvent event,
                          int child = tessalink::cNoAccessibleChild, const CString& text = {});

    /// Handlers. Their bases do what windows do by default.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual int OnCreate(CREATESTRUCTA* create);
    virtual void OnDestroy();
    /// The last that a destroyed window gets; its object may delete itself here. The end of an
    /// object does not call it.
    virtual void PostNcDestroy() {}
    virtual void OnSize(UINT type, int width, int height);
    virtual void OnShowWindow(BOOL show);
    virtual void OnEnable(BOOL enable);
    virtual void OnPaint();
    virtual BOOL OnEraseBkgnd(CDC* dc);
    virtual void OnSetFocus(CWnd* old);
    virtual void OnKillFocus(CWnd* next);
    virtual UINT OnGetDlgCode();
    virtual void OnKeyDown(UINT key, UINT repeat, UINT flags);
    virtual void OnKeyUp(UINT key, UINT repeat, UINT flags);
    virtual void OnChar(UINT ch, UINT repeat, UINT flags);
    virtual void OnLButtonDown(UINT flags, CPoint point);
    virtual void OnLButtonUp(UINT flags, CPoint point);
    virtual void OnLButtonDblClk(UINT flags, CPoint point);
    virtual void OnMButtonDown(UINT flags, CPoint point);
    virtual void OnRButtonDown(UINT flags, CPoint point);
    virtual void OnMouseMove(UINT flags, CPoint point);
    /// `point` is on the screen. Nonzero when it was used; otherwise the parent gets it.
    virtual BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    virtual BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message);
    virtual void OnContextMenu(CWnd* window, CPoint point);  ///< on the screen
    virtual void OnTimer(UINT_PTR id);
    /// `bar` is null for the window's own bars.
    virtual void OnHScroll(UINT code, UINT position, CWnd* bar);
    virtual void OnVScroll(UINT code, UINT position, CWnd* bar);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    /// Sets the text and background colors in which a child edit box shows its text.
    virtual void OnCtlColor(CDC* dc, CWnd* window, UINT type);
    /// The system has other colors: the base has everything painted anew.
    virtual void OnSysColorChange();
    virtual void OnSetFont(CFont* font);

protected:
    /// What the window does by itself with a message that no handler wants: that of the base
    /// handlers of its kind.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// The same with the message that is being handled, from within its handler; 0 at other times.
    LRESULT Default();
    virtual CString window_text() const;
    virtual bool is_frame() const { return false; }
    tessalink::NativeWindow* native() const;

private:
    friend class tessalink::WindowGuard;
    friend struct tessalink::WindowCore;

    BOOL place_after(const CWnd* sibling);

    std::unique_ptr<tessalink::WindowCore> m_core;
    std::shared_ptr<const char> m_token;
};

/// Where a window paints: what is invalid, once. It becomes valid.
class TESSALINK_API CPaintDC : public CDC {
public:
    explicit CPaintDC(CWnd* window);
};

/// Measures texts as a window draws them. What is drawn does not show: windows are painted in
/// OnPaint.
class TESSALINK_API CClientDC : public CDC {
public:
    explicit CClientDC(CWnd* window);
};

namespace tessalink {

/// The system's colors (COLOR_...), measures (SM_...) and settings, and its keyboard and mouse.
TESSALINK_API COLORREF GetSysColor(int index);
TESSALINK_API int GetSystemMetrics(int index);
TESSALINK_API BOOL SystemParametersInfo(UINT action, UINT, void* value, UINT);
/// Negative when the key is down.
TESSALINK_API short GetKeyState(int key);
TESSALINK_API BOOL GetCursorPos(POINT* point);
TESSALINK_API void SetCursor(int shape);  // IDC_..., or cArrowCursor and its like
/// The same by a name of the platform's, which is a number as a pointer.
inline void SetCursor(const char* shape) {
    SetCursor(static_cast<int>(reinterpret_cast<std::uintptr_t>(shape)));
}
TESSALINK_API BOOL ReleaseCapture();

}  // namespace tessalink

// Windows has the same names: there ours are those of the namespace alone.
#ifndef _WIN32
using tessalink::GetCursorPos;
using tessalink::GetKeyState;
using tessalink::GetSysColor;
using tessalink::GetSystemMetrics;
using tessalink::ReleaseCapture;
using tessalink::SetCursor;
using tessalink::SystemParametersInfo;
#endif

inline bool IsKeyDown(UINT key) {
    return tessalink::GetKeyState(static_cast<int>(key)) < 0;
}

/// The window that message boxes and frames belong to; null for none.
TESSALINK_API CWnd* AfxGetMainWnd();
TESSALINK_API void AfxSetMainWnd(CWnd* window);

namespace tessalink {

/// The text of the clipboard; false when there is none or it has a character that the code page
/// lacks.
TESSALINK_API bool clipboardText(CString& text);

}  // namespace tessalink
