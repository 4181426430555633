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

    /// Changes the text; the selection goes to its start.
    virtual void SetText(const CString& text) = 0;
    /// The text.
    virtual CString Text() const = 0;
    /// Selects from one position to another.
    virtual void Select(int start, int end) = 0;
    /// The selection; both are the caret's when nothing is selected.
    virtual void Selection(int& start, int& end) const = 0;
    virtual void Replace(
        const CString& text) = 0;  ///< the selection; as one step that can be undone
    /// Whether the user can't change the text.
    virtual void SetReadOnly(bool readOnly) = 0;
    virtual void SetLimit(int characters) = 0;   ///< 0: none
    virtual int LineOf(int position) const = 0;  ///< -1: of the caret
    /// How many lines there are.
    virtual int LineCount() const = 0;
    /// Where a line starts; -1 when there is none.
    virtual int LineStart(int line) const = 0;
    /// Scrolls until the caret shows.
    virtual void ScrollCaret() = 0;
    /// Moves the selection to the clipboard.
    virtual void Cut() = 0;
    /// Copies the selection to the clipboard.
    virtual void Copy() = 0;
    /// Replaces the selection by the text of the clipboard, if the edit box agrees.
    virtual void Paste() = 0;
    /// Takes the last change of the user back.
    virtual void Undo() = 0;
    /// What the field does with a key by itself.
    virtual void DefaultKey(UINT key) = 0;
    /// What the field does with a character by itself.
    virtual void DefaultChar(UINT ch) = 0;
};

/// One window. All rectangles are in pixels at 96 per inch.
class TESSALINK_API NativeWindow {
public:
    virtual ~NativeWindow() = default;

    virtual void Move(const CRect& rect) = 0;  ///< in the parent's client area
    /// Shows or hides the window.
    virtual void Show(bool show) = 0;
    /// Whether the window takes input.
    virtual void Enable(bool enable) = 0;
    /// Brings the window in front of its siblings.
    virtual void Raise() = 0;
    /// Behind a sibling and next after it for Tab; with null in front of all and first for Tab.
    virtual void PlaceAfter(NativeWindow* sibling) = 0;
    /// Something became invalid: paint soon. PaintNow does it at once.
    virtual void RequestPaint(const CRect& rect) = 0;
    /// Paints at once what is invalid.
    virtual void PaintNow() = 0;
    /// Moves what is shown.
    virtual void Scroll(int dx, int dy) = 0;
    /// The focus goes to the window.
    virtual void TakeFocus() = 0;
    /// Whether the window gets all of the mouse.
    virtual void Capture(bool capture) = 0;
    /// The shape of the cursor over the window.
    virtual void SetCursor(int shape) = 0;
    /// The text of an edit box, or the title of a frame.
    virtual void SetText(const CString& text) = 0;
    /// The font in which the window shows its text.
    virtual void SetFont(const LOGFONTA& font) = 0;
    /// Shows or hides a scroll bar, SB_HORZ or SB_VERT, with this range and position.
    virtual void SetScrollBar(int bar, bool isShown, const SCROLLINFO& info) = 0;
    /// Where the client area lies on the screen.
    virtual CPoint ClientOrigin() const = 0;
    /// A frame over everything, in the client area; an empty one hides it.
    virtual void ShowOutline(const CRect& rect) = 0;
    /// Hands what CWnd::NotifyAccessible tells to assistive technology.
    virtual void NotifyAccessible(AccessibleEvent event, int child, const CString& text) = 0;
    /// Leads the focus on from a window inside, as Tab does, or back as Shift+Tab, in an order of
    /// its own. False when it has none, or nothing else takes the focus.
    virtual bool PassFocusOn(CWnd&, bool) { return false; }
    /// The edit field of an edit box; null for other windows.
    virtual NativeEdit* Edit() { return nullptr; }
};

/// How a window is made. Its parent exists; null stands for the screen.
struct WindowSetup {
    CWnd* owner = nullptr;           ///< the object of the window
    NativeWindow* parent = nullptr;  ///< the window around it
    bool isEdit = false;             ///< whether it is an edit box
    /// WS_... and ES_...
    DWORD style = 0;
    CRect rect;    ///< its place in its parent, or on the screen
    CString text;  ///< its text or title
};

/// What shows windows: a toolkit, the platform, or nobody. The library calls it; what it has to
/// tell goes to the functions below.
class TESSALINK_API WindowSystem {
public:
    virtual ~WindowSystem() = default;

    /// Makes the system's half of a window; null when that fails.
    virtual std::unique_ptr<NativeWindow> CreateNative(const WindowSetup& setup) = 0;
    /// Nobody has the focus.
    virtual void DropFocus() = 0;
    /// A color of the system (COLOR_...).
    virtual COLORREF Color(int index) const = 0;
    /// A measure of the system (SM_...).
    virtual int Metric(int index) const = 0;
    /// The screen at a point; without another answer the one that metrics tell of.
    virtual CRect ScreenAt(CPoint) const {
        return {0, 0, Metric(SM_CXSCREEN), Metric(SM_CYSCREEN)};
    }
    /// How many lines a notch of the wheel scrolls.
    virtual int WheelLines() const = 0;
    /// Whether a key is down (VK_...).
    virtual bool IsKeyDown(int key) const = 0;
    /// Where the mouse is on the screen.
    virtual CPoint CursorPosition() const = 0;
    /// The text of the clipboard; false when there is none or it has a character that the code page
    /// lacks.
    virtual bool ClipboardText(CString& text) const = 0;
    /// Timers are numbered by the library; timerElapsed is called each time one has run.
    virtual void StartTimer(int number, UINT period) = 0;
    /// Ends a timer.
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
/// The window system in use.
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
/// The system has dropped the window.
TESSALINK_API void windowLost(CWnd& window);
/// A timer has run.
TESSALINK_API void timerElapsed(int number);
/// Dispatches posted messages, in their order.
TESSALINK_API void dispatchPosted();
/// The text of an edit box has changed.
TESSALINK_API void editChanged(CWnd& window);
/// Colors, fonts or settings of the system have changed: all windows get WM_SYSCOLORCHANGE, and
/// those whose frame has another width now, WM_SIZE.
TESSALINK_API void settingsChanged();

/// While it lives, input goes to a function first, which returns whether it has used it.
class TESSALINK_API InputHook {
public:
    /// Gets input before the window does; true when it has used it.
    using Function = std::function<bool(CWnd& window, UINT message, WPARAM wParam, CPoint point)>;

    /// From now on the function gets all input first.
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
