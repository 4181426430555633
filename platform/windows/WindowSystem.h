#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/graphics/DrawingDevice.h"
#include "platform/graphics/Region.h"
#include "platform/windows/CWnd.h"

/// What the windows of the library ask of the system that shows them. A host chooses it with
/// setWindowSystem; without one, the headless system keeps windows that nobody sees.
namespace tessalink {

/// An edit field. Positions count characters from 0 on, -1 is the end; texts are in the code page,
/// lines end in "\r\n".
class TESSALINK_API NativeEdit {
public:
    virtual ~NativeEdit() = default;

    virtual void SetText(const CString& text) = 0;
    virtual CString Text() const = 0;
    virtual void Select(int start, int end) = 0;
    virtual void Selection(int& start, int& end) const = 0;
    virtual void Replace(
        const CString& text) = 0;  ///< the selection; as one step that can be undone
    virtual void SetReadOnly(bool readOnly) = 0;
    virtual void SetLimit(int characters) = 0;   ///< 0: none
    virtual int LineOf(int position) const = 0;  ///< -1: of the caret
    virtual int LineCount() const = 0;
    virtual int LineStart(int line) const = 0;
    virtual void ScrollCaret() = 0;
    virtual void Cut() = 0;
    virtual void Copy() = 0;
    virtual void Paste() = 0;
    virtual void Undo() = 0;
    /// What the field does with a key by itself.
    virtual void DefaultKey(UINT key) = 0;
    virtual void DefaultChar(UINT ch) = 0;
};

/// One window. All rectangles are in pixels at 96 per inch.
class TESSALINK_API NativeWindow {
public:
    virtual ~NativeWindow() = default;

    virtual void Move(const CRect& rect) = 0;  ///< in the parent's client area
    virtual void Show(bool show) = 0;
    virtual void Enable(bool enable) = 0;
    virtual void Raise() = 0;
    /// Behind a sibling and next after it for Tab; with null in front of all and first for Tab.
    virtual void PlaceAfter(NativeWindow* sibling) = 0;
    /// Something became invalid: paint soon. PaintNow does it at once.
    virtual void RequestPaint(const CRect& rect) = 0;
    virtual void PaintNow() = 0;
    virtual void Scroll(int dx, int dy) = 0;
    virtual void TakeFocus() = 0;
    virtual void Capture(bool capture) = 0;
    virtual void SetCursor(int shape) = 0;
    virtual void SetText(const CString& text) = 0;
    virtual void SetFont(const LOGFONTA& font) = 0;
    virtual void SetScrollBar(int bar, bool isShown, const SCROLLINFO& info) = 0;
    /// Where the client area lies on the screen.
    virtual CPoint ClientOrigin() const = 0;
    /// A frame over everything, in the client area; an empty one hides it.
    virtual void ShowOutline(const CRect& rect) = 0;
    virtual void NotifyAccessible(AccessibleEvent event, int child, const CString& text) = 0;
    /// Leads the focus on from a window inside, as Tab does, or back as Shift+Tab, in an order of
    /// its own. False when it has none, or nothing else takes the focus.
    virtual bool PassFocusOn(CWnd&, bool) { return false; }
    /// The edit field of an edit box; null for other windows.
    virtual NativeEdit* Edit() { return nullptr; }
};

/// How a window is made. Its parent exists; null stands for the screen.
struct WindowSetup {
    CWnd* owner = nullptr;
    NativeWindow* parent = nullptr;
    bool isEdit = false;
    DWORD style = 0;
    CRect rect;
    CString text;
};

class TESSALINK_API WindowSystem {
public:
    virtual ~WindowSystem() = default;

    virtual std::unique_ptr<NativeWindow> CreateNative(const WindowSetup& setup) = 0;
    /// Nobody has the focus.
    virtual void DropFocus() = 0;
    virtual COLORREF Color(int index) const = 0;
    virtual int Metric(int index) const = 0;
    /// The screen at a point; without another answer the one that metrics tell of.
    virtual CRect ScreenAt(CPoint) const {
        return {0, 0, Metric(SM_CXSCREEN), Metric(SM_CYSCREEN)};
    }
    virtual int WheelLines() const = 0;
    virtual bool IsKeyDown(int key) const = 0;
    virtual CPoint CursorPosition() const = 0;
    virtual bool ClipboardText(CString& text) const = 0;
    /// Timers are numbered by the library; timerElapsed is called each time one has run.
    virtual void StartTimer(int number, UINT period) = 0;
    virtual void StopTimer(int number) = 0;
    /// Messages have been posted: call dispatchPosted soon.
    virtual void WakeUp() = 0;
    /// Handles input until `isDone` says so; false when there will be no more.
    virtual bool RunUntil(const std::function<bool()>& isDone) = 0;
    /// What windows measure texts with.
    virtual DrawingDevice& Screen() = 0;
};

/// Replaces the window system; null for the headless one. No window may exist. The system must
/// outlive all windows.
TESSALINK_API void setWindowSystem(WindowSystem* system);
TESSALINK_API WindowSystem& windowSystem();

/// What a window system tells the windows. All of these may destroy the window.

/// The user presses a key: the window gets it, and then the characters that it makes
/// (in the code page), unless the dialog keys of its parent take it. A key that is held down
/// repeats itself: `isHeld` is true from the second time on. Returns false when nobody wanted the
/// key and it belongs to the dialog around: a window that answers DLGC_WANTALLKEYS gets all keys,
/// and those that it does not use do nothing.
TESSALINK_API bool keyPressed(CWnd& window, UINT key, std::string_view characters, UINT repeat = 1,
                              bool isHeld = false);
/// The same for characters alone, as an input method makes them.
TESSALINK_API void charactersTyped(CWnd& window, std::string_view characters);
/// A button, a move or, with the delta in the high word of `wParam` and the point on the screen,
/// the wheel. Other points are in the client area.
TESSALINK_API LRESULT mouseUsed(CWnd& window, UINT message, WPARAM wParam, CPoint point);
/// The focus went to a window, or to none, without SetFocus.
TESSALINK_API void focusMoved(CWnd* window);
/// The window paints an area of its client area on a device, where that lies at the origin.
TESSALINK_API void paintWindow(CWnd& window, DrawingDevice& device, const Region& area,
                               CPoint origin = {});
/// While `outer` paints itself: has a window paint an area of it as if it stood at `place` there,
/// whatever its own place and size are. Both are in `outer`'s client area.
TESSALINK_API void paintWithin(CWnd& window, const CWnd& outer, const CRect& place,
                               const CRect& area);
/// The window has another size or place, or is gone, without a call of ours.
TESSALINK_API void windowMoved(CWnd& window, const CRect& rect);
TESSALINK_API void windowLost(CWnd& window);
TESSALINK_API void timerElapsed(int number);
TESSALINK_API void dispatchPosted();
/// The text of an edit box has changed.
TESSALINK_API void editChanged(CWnd& window);
/// Colors, fonts or settings of the system have changed: all windows get WM_SYSCOLORCHANGE, and
/// those whose frame has another width now, WM_SIZE.
TESSALINK_API void settingsChanged();

/// While it lives, input goes to a function first, which returns whether it has used it.
class TESSALINK_API InputHook {
public:
    using Function = std::function<bool(CWnd& window, UINT message, WPARAM wParam, CPoint point)>;

    explicit InputHook(Function function);
    ~InputHook();
    InputHook(const InputHook&) = delete;
    InputHook& operator=(const InputHook&) = delete;

private:
    Function m_before;
};

/// Makes a window that the toolkit owns the window of an object: a parent for windows of ours.
TESSALINK_API void adoptNative(CWnd& window, std::unique_ptr<NativeWindow> native,
                               const CRect& rect);
/// The native window of an object; null without one.
TESSALINK_API NativeWindow* nativeOf(const CWnd& window);
/// What is invalid of a window's client area.
TESSALINK_API const Region& invalidRegion(const CWnd& window);
/// The place of a window in its parent's client area.
TESSALINK_API CRect windowPlace(const CWnd& window);
/// The client area of a window in its own window rectangle.
TESSALINK_API CRect clientArea(const CWnd& window);

}  // namespace tessalink
