#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string_view>
#include <vector>

#include "platform/graphics/NullDevice.h"
#include "platform/windows/WindowSystem.h"

namespace tessalink {

/// Windows that nobody sees, with a keyboard, a mouse and a clock that a program works: for tests,
/// and where no toolkit is. Everything happens at once, in the caller's thread; posted messages and
/// painting wait for Pump.
class TESSALINK_API HeadlessSystem : public WindowSystem {
public:
    HeadlessSystem();
    ~HeadlessSystem() override;

    /// The one that is used when no other system is set.
    static HeadlessSystem& Default();

    /// Presses a key. It goes to the window that has the focus, with the characters that they make;
    /// without any given, Return, Tab, Escape and the backspace make theirs.
    void PressKey(UINT key, std::string_view characters = {});
    /// Every character with its key.
    void Type(std::string_view text);
    /// Holds a key down while others are pressed, or lets it go.
    void HoldKey(UINT key, bool down);

    /// Presses and releases the left button. Points are on the screen; the front window there gets
    /// it, or the one that has the capture, or the first one around it that is enabled.
    void Click(CPoint point);
    /// Presses a button: WM_LBUTTONDOWN, WM_MBUTTONDOWN or WM_RBUTTONDOWN.
    void Press(CPoint point, UINT message = WM_LBUTTONDOWN);
    /// Releases a button.
    void Release(CPoint point, UINT message = WM_LBUTTONUP);
    /// Moves the mouse.
    void MoveMouse(CPoint point);
    /// Turns the wheel; a notch away from the user is a delta of 120.
    void Turn(CPoint point, short delta);
    /// The front window at a point; null without one.
    CWnd* WindowAt(CPoint point) const;

    /// Dispatches posted messages and paints what is invalid, until nothing is left.
    void Pump();
    /// Lets time pass: timers run when they are due.
    void Advance(UINT milliseconds);
    /// Input for RunUntil, step by step.
    void Queue(std::function<void()> step) { m_steps.push_back(std::move(step)); }

    /// Paints a window and what is in it on a device.
    void PaintAll(CWnd& window, DrawingDevice& device, CPoint origin = {});

    /// What windows have told assistive technology.
    struct Told {
        const CWnd* window;     ///< the window, which may be gone meanwhile
        AccessibleEvent event;  ///< what it told
        int child;              ///< the part that it is about; cNoAccessibleChild for the window
        CString text;           ///< what is to be spoken
    };
    /// All of it, in order; to be emptied by who reads it.
    std::vector<Told>& ToldEvents() { return m_told; }
    /// How many windows have painted themselves, and how many units of them.
    int PaintCount() const { return m_paintCount; }
    /// How many units were painted.
    std::int64_t PaintedArea() const { return m_paintedArea; }
    /// Puts a text on the clipboard.
    void SetClipboard(const CString& text) { m_clipboard = text; }
    /// Gives the system another color.
    void SetColor(int index, COLORREF color) { m_colors[index] = color; }
    /// How many lines a notch of the wheel scrolls.
    void SetWheelLines(int lines) { m_wheelLines = lines; }

    std::unique_ptr<NativeWindow> CreateNative(const WindowSetup& setup) override;
    void DropFocus() override {}
    COLORREF Color(int index) const override;
    int Metric(int index) const override;
    int WheelLines() const override { return m_wheelLines; }
    bool IsKeyDown(int key) const override;
    CPoint CursorPosition() const override { return m_cursor; }
    bool ClipboardText(CString& text) const override;
    void StartTimer(int number, UINT period) override;
    void StopTimer(int number) override;
    void WakeUp() override { m_hasPosted = true; }
    bool RunUntil(const std::function<bool()>& isDone) override;
    DrawingDevice& Screen() override { return m_screen; }

private:
    friend class HeadlessWindow;

    struct Timer {
        UINT period;
        std::uint64_t due;
    };

    CWnd* mouse_target(CPoint point) const;
    void send_mouse(UINT message, CPoint point);
    UINT mouse_flags() const;
    void paint(CWnd& window, DrawingDevice& device);
    bool paint_invalid();

    std::vector<CWnd*> m_windows;  ///< all of them, those made last at the end
    std::map<int, COLORREF> m_colors;
    std::set<int> m_keys;
    std::map<int, Timer> m_timers;
    std::uint64_t m_now = 0;
    CPoint m_cursor;
    UINT m_buttons = 0;
    int m_wheelLines = 3;
    CString m_clipboard;
    bool m_hasPosted = false;
    std::deque<std::function<void()>> m_steps;
    std::vector<Told> m_told;
    int m_paintCount = 0;
    std::int64_t m_paintedArea = 0;
    NullDevice m_screen;
};

}  // namespace tessalink
