#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"
#include "platform/windows/TipWindow.h"

namespace tessalink::test {

/// Keys that are held while another one is pressed.
struct Held {
    bool ctrl = false;
    bool shift = false;
};

/// Works windows as a user does, who sees them in a host window with another control beside them.
/// Points are on the screen.
class InputDriver {
public:
    virtual ~InputDriver() = default;

    /// The parent for the window that is worked, and what it answers to WM_NOTIFY.
    virtual CWnd& Host() = 0;
    std::function<LRESULT(const NMHDR&)> answer;

    virtual void PressKey(UINT key, Held held = {}) = 0;
    virtual void Type(char ch) = 0;
    /// A character of a key that is held down.
    virtual void Repeat(char ch) = 0;
    /// A click, or the second one of a double click.
    virtual void Click(CPoint point, bool isSecond = false) = 0;
    virtual void Press(CPoint point) = 0;
    virtual void Release(CPoint point) = 0;
    virtual void Turn(CPoint point, int delta) = 0;
    virtual void MoveMouse(CPoint point) = 0;
    /// Whether the mouse reaches a window, or a hint, at a point.
    virtual bool Reaches(const CWnd& window, CPoint point) = 0;
    virtual bool IsOnTip(CPoint point) = 0;
    /// Input for while a window waits for it, step by step.
    virtual void Queue(std::function<void()> step) = 0;
    /// A request of a scroll bar (SB_...).
    virtual void Scroll(CWnd& window, int bar, UINT code, int position) = 0;
    virtual void Resize(CWnd& window, CSize size) = 0;
    /// The focus goes to the other control, and comes to a window by Tab, or by Shift+Tab.
    virtual void Leave() = 0;
    virtual void Enter(CWnd& window, bool isBack = false) = 0;
    /// The text of the hint that shows, most likely at a point. The window that it belongs to
    /// lives.
    virtual std::string TipText(CPoint point) = 0;
    /// What a window has spoken last.
    virtual std::string Spoken(const CWnd& window) = 0;
    /// Lets messages and painting happen.
    virtual void Pump() = 0;
    /// Lets time pass on a clock that stands still otherwise.
    virtual void Rest(UINT milliseconds) = 0;

protected:
    LRESULT Told(LPARAM record) const {
        return answer ? answer(*reinterpret_cast<const NMHDR*>(record)) : 0;
    }
};

/// The driver of windows that nobody sees.
class HeadlessDriver : public InputDriver {
public:
    HeadlessDriver() : m_host(*this) {
        m_host.Create("Host", CRect(0, 0, 1000, 800));
        m_other.Create(nullptr, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(900, 700, 990, 790),
                       &m_host, 99);
    }
    ~HeadlessDriver() override { m_host.DestroyWindow(); }

    CWnd& Host() override { return m_host; }
    void PressKey(UINT key, Held held) override {
        Hold(held, true);
        Windows().PressKey(key, key == VK_RETURN && held.ctrl ? "\n" : "");
        Hold(held, false);
    }
    void Type(char ch) override { Windows().Type(std::string_view(&ch, 1)); }
    void Repeat(char ch) override {
        keyPressed(*CWnd::GetFocus(), 'X', std::string_view(&ch, 1), 1, true);
    }
    void Click(CPoint point, bool isSecond) override {
        Windows().Press(point, isSecond ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN);
        Windows().Release(point);
    }
    void Press(CPoint point) override { Windows().Press(point); }
    void Release(CPoint point) override { Windows().Release(point); }
    void Turn(CPoint point, int delta) override {
        Windows().Turn(point, static_cast<short>(delta));
    }
    void MoveMouse(CPoint point) override { Windows().MoveMouse(point); }
    bool Reaches(const CWnd& window, CPoint point) override {
        return Windows().WindowAt(point) == &window;
    }
    bool IsOnTip(CPoint point) override {
        return DYNAMIC_DOWNCAST(TipWindow, Windows().WindowAt(point)) != nullptr;
    }
    void Queue(std::function<void()> step) override { Windows().Queue(std::move(step)); }
    std::string TipText(CPoint point) override {
        const auto* tip = DYNAMIC_DOWNCAST(TipWindow, Windows().WindowAt(point));
        if (tip != nullptr) m_tip = tip;
        return m_tip != nullptr && m_tip->IsWindowVisible() != 0 ? m_tip->GetText().GetString()
                                                                 : "";
    }
    std::string Spoken(const CWnd& window) override {
        for (const auto& told : std::exchange(Windows().ToldEvents(), {})) {
            if (told.window == &window && !told.text.IsEmpty()) m_spoken = told.text;
        }
        return m_spoken;
    }
    void Scroll(CWnd& window, int bar, UINT code, int position) override {
        window.SendMessage(bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL,
                           MAKEWPARAM(code, static_cast<UINT>(position)));
    }
    void Resize(CWnd& window, CSize size) override { window.MoveWindow(CRect(CPoint(), size)); }
    void Leave() override { m_other.SetFocus(); }
    void Enter(CWnd& window, bool isBack) override {
        window.EnterByTab(isBack);
        window.SetFocus();
    }
    void Pump() override { Windows().Pump(); }
    void Rest(UINT milliseconds) override { Windows().Advance(milliseconds); }

private:
    class Frame : public CFrameWnd {
    public:
        explicit Frame(HeadlessDriver& driver) : m_driver(driver) {}
        BOOL OnNotify(WPARAM, LPARAM record, LRESULT* result) override {
            *result = m_driver.Told(record);
            return 1;
        }

    private:
        HeadlessDriver& m_driver;
    };

    static HeadlessSystem& Windows() { return HeadlessSystem::Default(); }
    static void Hold(Held held, bool down) {
        if (held.ctrl) Windows().HoldKey(VK_CONTROL, down);
        if (held.shift) Windows().HoldKey(VK_SHIFT, down);
    }

    const TipWindow* m_tip = nullptr;
    std::string m_spoken;
    Frame m_host;
    CWnd m_other;
};

}  // namespace tessalink::test
