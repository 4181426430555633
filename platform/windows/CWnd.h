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
    /// Watches over a window; many may watch over one.
    explicit WindowGuard(const CWnd& window);
    /// Whether the window object still exists.
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

    /// Creates the window. The class name is "EDIT" for edit boxes and null otherwise. Returns
    /// nonzero on success; OnCreate may refuse with -1. WM_SIZE follows.
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
    /// Destroys the window and those inside it; nonzero when there was one. The object stays.
    BOOL DestroyWindow();
    /// The window as notifications name it; null without one.
    HWND GetSafeHwnd() const { return tessalink::handleOf(m_core.get()); }
    /// The object of a window; null for null.
    static CWnd* FromHandle(HWND window);

    /// The window around this one; null without one. Its children are in the order of creation,
    /// which Tab follows.
    CWnd* GetParent() const;
    /// The nearest frame window around this one, or null.
    CWnd* GetParentFrame() const;
    /// The child with an id; null when there is none.
    CWnd* GetDlgItem(UINT id) const;
    /// The id that the window was created with.
    int GetDlgCtrlID() const;
    /// The next window with a tab stop that is shown and enabled, or the one before, among all
    /// descendants; after the last follows the first. Null when there is none.
    CWnd* GetNextDlgTabItem(const CWnd* from, BOOL previous = 0) const;
    /// Whether `window` lies in this one, at any depth.
    BOOL IsChild(const CWnd* window) const;
    /// The same, or it is this one itself.
    bool Holds(const CWnd* window) const { return window == this || IsChild(window) != 0; }
    /// How many children there are.
    int GetChildCount() const;
    /// A child by its place in their order, from 0; null when there is none.
    CWnd* GetChild(int index) const;

    /// The style that the window was created with, as it is now (WS_...).
    DWORD GetStyle() const;
    /// Clears and sets bits of the style; nonzero when that changed something.
    BOOL ModifyStyle(DWORD remove, DWORD add);
    /// SW_HIDE hides the window, other commands show it. Nonzero when it was shown before.
    BOOL ShowWindow(int command);
    /// Whether it and all its parents are shown.
    BOOL IsWindowVisible() const;
    /// Whether the window takes input; nonzero when it did not before.
    BOOL EnableWindow(BOOL enable = 1);
    /// Whether it takes input itself, whatever its parents do.
    BOOL IsWindowEnabled() const;
    /// Whether it and all its parents are enabled.
    bool TakesInput() const;
    /// Gives the window another place and size, in its parent's client area.
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
    static const CWnd wndBottom;     ///< behind all siblings
    static const CWnd wndTopMost;    ///< the same as wndTop
    static const CWnd wndNoTopMost;  ///< the same as wndTop
    /// Brings the window in front of its siblings.
    void BringWindowToTop();
    /// The client area: what is inside frame and scroll bars, from (0, 0).
    void GetClientRect(RECT* rect) const;
    void GetWindowRect(RECT* rect) const;  ///< on the screen
    /// A point of the client area becomes one of the screen.
    void ClientToScreen(POINT* point) const;
    /// A point of the screen becomes one of the client area.
    void ScreenToClient(POINT* point) const;

    /// Gives the window the focus, if it takes input; returns the window that had it.
    CWnd* SetFocus();
    /// The window that has the focus; null for none.
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
    /// The window gets all of the mouse, wherever that is. Returns the one that had it.
    CWnd* SetCapture();
    /// The window that gets all of the mouse; null for none.
    static CWnd* GetCapture();

    /// Changes the text of an edit box, or the title of a frame.
    void SetWindowText(const char* text);
    /// The text of an edit box, or the title of a frame.
    void GetWindowText(CString& text) const { text = window_text(); }
    /// The number of characters of that.
    int GetWindowTextLength() const { return window_text().GetLength(); }
    /// The font in which the window shows its text; null for the system's. It must outlive its use.
    void SetFont(CFont* font);
    /// The font that was set; null for none.
    CFont* GetFont() const;

    /// Has the window painted anew: what is invalid is painted when the window system comes to it,
    /// or by UpdateWindow.
    void Invalidate(BOOL erase = 1);
    /// The same for an area of the client area; null for all of it.
    void InvalidateRect(const RECT* rect, BOOL erase = 1);
    /// The same for an area of the client area.
    void InvalidateRect(const RECT& rect) { InvalidateRect(&rect); }
    /// The area needs no painting any more; null for all of it.
    void ValidateRect(const RECT* rect);
    /// The smallest rectangle around what is invalid; nonzero when there is any.
    BOOL GetUpdateRect(RECT* rect) const;
    /// Paints what is invalid now.
    void UpdateWindow();
    /// Moves what is shown, and what is invalid; what comes into view becomes invalid. Child
    /// windows stay where they are.
    void ScrollWindow(int dx, int dy);

    /// Changes what a scroll bar shows, and returns its position. A bar is shown when the window
    /// has its style and the range is larger than the page. The position is kept between the start
    /// of the range and its end less the page, plus one.
    int SetScrollInfo(int bar, const SCROLLINFO* info, BOOL redraw = 1);
    /// All that SetScrollInfo takes, of the bar SB_HORZ or SB_VERT; nonzero on success.
    BOOL GetScrollInfo(int bar, SCROLLINFO* info) const;
    /// Sets the position alone; returns the one before.
    int SetScrollPos(int bar, int position, BOOL redraw = 1);
    /// The position; 0 without a window.
    int GetScrollPos(int bar) const;
    /// Sets the ends of the range alone.
    void SetScrollRange(int bar, int min, int max, BOOL redraw = 1);
    /// The ends of the range.
    void GetScrollRange(int bar, int* min, int* max) const;

    /// Starts a timer, in milliseconds, which repeats until it is killed; returns its id, or 0
    /// without a window.
    UINT_PTR SetTimer(UINT_PTR id, UINT period);
    /// Ends a timer; nonzero when there was one.
    BOOL KillTimer(UINT_PTR id);

    /// Sends a message and returns its result. Posted messages are dispatched later, in their
    /// order; those to a window that is gone are dropped.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// Posts a message; nonzero when there is a window.
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    /// What assistive technology is told of the window. Parts that are no windows are numbered
    /// from 0.
    virtual tessalink::AccessibleElement Accessible() const;
    /// How many parts the window has.
    virtual int AccessibleChildCount() const { return 0; }
    /// A part, by its number.
    virtual tessalink::AccessibleElement AccessibleChild(int index) const;
    /// The part at a point of the client area; cNoAccessibleChild without one.
    virtual int AccessibleChildAt(CPoint point) const;
    /// The part that has the focus; cNoAccessibleChild without one.
    virtual int AccessibleFocusChild() const { return tessalink::cNoAccessibleChild; }
    /// As if the user went to a part.
    virtual void ChooseAccessibleChild(int) {}
    /// As a click on a choice of a part.
    virtual void ChooseAccessibleChoice(int child, int) { ChooseAccessibleChild(child); }
    /// Tells assistive technology that something has changed, or with Announcement a text.
    void NotifyAccessible(tessalink::AccessibleEvent event,
                          int child = tessalink::cNoAccessibleChild, const CString& text = {});

    /// Gets every message, and calls the handler for it. The handlers of this class do what windows
    /// do by default.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// The window was created: 0 goes on, -1 drops it.
    virtual int OnCreate(CREATESTRUCTA* create);
    /// The window is about to go; it is still there.
    virtual void OnDestroy();
    /// The last that a destroyed window gets; its object may delete itself here. The end of an
    /// object does not call it.
    virtual void PostNcDestroy() {}
    /// The client area has another size. `type` is 0.
    virtual void OnSize(UINT type, int width, int height);
    /// The window is about to be shown or hidden.
    virtual void OnShowWindow(BOOL show);
    /// The window takes input now, or no more.
    virtual void OnEnable(BOOL enable);
    /// Paints what is invalid, by a CPaintDC. The base paints nothing.
    virtual void OnPaint();
    /// Fills the background before OnPaint; nonzero when that is done. The base fills it with the
    /// color of dialogs.
    virtual BOOL OnEraseBkgnd(CDC* dc);
    /// The window has got the focus, from `old` or from none of the library's.
    virtual void OnSetFocus(CWnd* old);
    /// The window is losing the focus, to `next` or to none of the library's.
    virtual void OnKillFocus(CWnd* next);
    /// Which keys the window wants for itself, DLGC_... together; none here.
    virtual UINT OnGetDlgCode();
    /// A key was pressed (VK_...); `flags` says whether it is held down.
    virtual void OnKeyDown(UINT key, UINT repeat, UINT flags);
    /// A key was released.
    virtual void OnKeyUp(UINT key, UINT repeat, UINT flags);
    /// A character was keyed, in the code page.
    virtual void OnChar(UINT ch, UINT repeat, UINT flags);
    /// The left button was pressed at a point of the client area.
    virtual void OnLButtonDown(UINT flags, CPoint point);
    /// The left button was released.
    virtual void OnLButtonUp(UINT flags, CPoint point);
    /// The left button was pressed twice. The base takes it for a press.
    virtual void OnLButtonDblClk(UINT flags, CPoint point);
    /// The middle button was pressed.
    virtual void OnMButtonDown(UINT flags, CPoint point);
    /// The right button was pressed.
    virtual void OnRButtonDown(UINT flags, CPoint point);
    /// The mouse was moved.
    virtual void OnMouseMove(UINT flags, CPoint point);
    /// `point` is on the screen. Nonzero when it was used; otherwise the parent gets it.
    virtual BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
    /// The mouse is over the window, or over one inside it: sets the shape of the cursor. Nonzero
    /// when it did; the base sets the arrow.
    virtual BOOL OnSetCursor(CWnd* window, UINT hitTest, UINT message);
    virtual void OnContextMenu(CWnd* window, CPoint point);  ///< on the screen
    /// A timer of this window has run.
    virtual void OnTimer(UINT_PTR id);
    /// `bar` is null for the window's own bars.
    virtual void OnHScroll(UINT code, UINT position, CWnd* bar);
    /// The same for the vertical bar.
    virtual void OnVScroll(UINT code, UINT position, CWnd* bar);
    /// A control inside sends WM_NOTIFY; nonzero when it was used, with the answer in `*result`.
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// A control inside sends WM_COMMAND; nonzero when it was used.
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    /// Sets the text and background colors in which a child edit box shows its text.
    virtual void OnCtlColor(CDC* dc, CWnd* window, UINT type);
    /// The system has other colors: the base has everything painted anew.
    virtual void OnSysColorChange();
    /// The font is set: the base keeps it.
    virtual void OnSetFont(CFont* font);

protected:
    /// What the window does by itself with a message that no handler wants: that of the base
    /// handlers of its kind.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// The same with the message that is being handled, from within its handler; 0 at other times.
    LRESULT Default();
    /// What GetWindowText gives.
    virtual CString window_text() const;
    /// Whether GetParentFrame finds this window.
    virtual bool is_frame() const { return false; }
    /// The system's half of the window; null without one.
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
    /// Begins to paint the window, in its OnPaint.
    explicit CPaintDC(CWnd* window);
};

/// Measures texts as a window draws them. What is drawn does not show: windows are painted in
/// OnPaint.
class TESSALINK_API CClientDC : public CDC {
public:
    /// Measures for this window.
    explicit CClientDC(CWnd* window);
};

namespace tessalink {

/// The system's colors (COLOR_...), measures (SM_...) and settings, and its keyboard and mouse.
TESSALINK_API COLORREF GetSysColor(int index);
/// A measure of the system (SM_...).
TESSALINK_API int GetSystemMetrics(int index);
/// A setting of the system: SPI_GETWHEELSCROLLLINES alone. Nonzero on success.
TESSALINK_API BOOL SystemParametersInfo(UINT action, UINT, void* value, UINT);
/// Negative when the key is down.
TESSALINK_API short GetKeyState(int key);
/// Where the mouse is on the screen; nonzero on success.
TESSALINK_API BOOL GetCursorPos(POINT* point);
TESSALINK_API void SetCursor(int shape);  // IDC_..., or cArrowCursor and its like
/// The same by a name of the platform's, which is a number as a pointer.
inline void SetCursor(const char* shape) {
    SetCursor(static_cast<int>(reinterpret_cast<std::uintptr_t>(shape)));
}
/// The mouse belongs to the window below it again; nonzero on success.
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

/// Whether a key is down (VK_...).
inline bool IsKeyDown(UINT key) {
    return tessalink::GetKeyState(static_cast<int>(key)) < 0;
}

/// The window that message boxes and frames belong to; null for none.
TESSALINK_API CWnd* AfxGetMainWnd();
/// Sets that window; it must outlive its use.
TESSALINK_API void AfxSetMainWnd(CWnd* window);

namespace tessalink {

/// The text of the clipboard; false when there is none or it has a character that the code page
/// lacks.
TESSALINK_API bool clipboardText(CString& text);

}  // namespace tessalink
