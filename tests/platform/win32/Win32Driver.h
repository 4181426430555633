#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/win32/UseWin32.h"
#include "platform/win32/Win32Host.h"
#include "platform/windows/TipWindow.h"
#include "tests/platform/win32/HostFrame.h"
#include "tests/support/ClockedSystem.h"
#include "tests/support/InputDriver.h"

namespace tessalink::test {

/// The driver of the platform's windows: its own messages of keys and the mouse are posted to the
/// windows that a user would reach, and go the way of a host's loop.
class Win32Driver : public InputDriver {
public:
    Win32Driver() {
        useWin32();
        m_platform = &windowSystem();
        m_clocked = std::make_unique<ClockedSystem>(*m_platform);
        setWindowSystem(&*m_clocked);
        m_frame = std::make_unique<HostFrame>(cSize);
        m_frame->reaction = [this](UINT message, WPARAM, LPARAM) {
            if (message != cNextStep) return false;
            Next();
            return true;
        };
        const CRect room(0, cControl, cSize.cx, cSize.cy);
        m_before = m_frame->AddControl(L"EDIT", CRect(0, 0, 100, cControl));
        m_holder = m_frame->AddHolder(room);
        m_after = m_frame->AddControl(L"EDIT", CRect(200, 0, 300, cControl));
        m_host =
            std::make_unique<HostWindow>(m_holder, [this](UINT message, WPARAM, LPARAM record) {
                return message == WM_NOTIFY ? HostWindow::Answer(Told(record))
                                            : HostWindow::cNotHandled;
            });
        ::SetFocus(m_before);
        Win32Driver::Pump();
    }
    ~Win32Driver() override {
        m_host.reset();
        m_frame.reset();
        Win32Driver::Pump();
        setWindowSystem(m_platform);
    }
    bool IsReady() const { return ::GetFocus() == m_before; }

    CWnd& Host() override { return *m_host; }
    void PressKey(UINT key, Held held) override {
        const KeyState state({{VK_CONTROL, held.ctrl}, {VK_SHIFT, held.shift}, {key, true}});
        PostKey(key, false);
        Pump();
    }
    void Type(char ch) override { TypeKey(ch, false); }
    void Repeat(char ch) override { TypeKey(ch, true); }
    void Click(CPoint point, bool isSecond) override {
        const HWND target = Reached(point);
        PostMouse(target, isSecond ? WM_LBUTTONDBLCLK : WM_LBUTTONDOWN, MK_LBUTTON, point);
        PostMouse(target, WM_LBUTTONUP, 0, point);
        Pump();
    }
    void Press(CPoint point) override {
        // Before the steps that are queued, which have been posted already.
        const HWND target = Reached(point);
        ::SendMessageW(target, WM_LBUTTONDOWN, MK_LBUTTON, PlaceIn(target, point));
        Pump();
    }
    void Release(CPoint point) override {
        PostMouse(Reached(point), WM_LBUTTONUP, 0, point);
        Pump();
    }
    void Turn(CPoint point, int delta) override {
        ::PostMessageW(Reached(point), WM_MOUSEWHEEL,
                       MAKEWPARAM(0, static_cast<WORD>(static_cast<short>(delta))),
                       MAKELPARAM(point.x, point.y));
        Pump();
    }
    void MoveMouse(CPoint point) override {
        m_clocked->PlaceCursor(point);
        PostMouse(Reached(point), WM_MOUSEMOVE, 0, point);
        Pump();
    }
    bool Reaches(const CWnd& window, CPoint point) override {
        return Reached(point) == platformWindow(window);
    }
    bool IsOnTip(CPoint point) override {
        return DYNAMIC_DOWNCAST(TipWindow, windowFromPlatform(Reached(point))) != nullptr;
    }
    void Queue(std::function<void()> step) override {
        m_steps.push_back(std::move(step));
        if (m_steps.size() == 1) m_frame->Post(cNextStep);
    }
    std::string TipText(CPoint) override {
        std::string text;
        ::EnumThreadWindows(
            ::GetCurrentThreadId(),
            [](HWND window, LPARAM found) {
                const auto* const tip = DYNAMIC_DOWNCAST(TipWindow, windowFromPlatform(window));
                if (tip != nullptr && ::IsWindowVisible(window) != 0) {
                    *reinterpret_cast<std::string*>(found) = tip->GetText();
                }
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&text));
        return text;
    }
    std::string Spoken(const CWnd& window) override { return spokenOf(platformWindow(window)); }
    void Scroll(CWnd& window, int bar, UINT code, int position) override {
        ::SendMessageW(platformWindow(window), bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL,
                       MAKEWPARAM(code, static_cast<UINT>(position)), 0);
    }
    void Resize(CWnd& window, CSize size) override {
        ::SetWindowPos(m_holder, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
        window.MoveWindow(CRect(CPoint(), size));
        Pump();
    }
    void Leave() override {
        ::SetFocus(m_after);
        Pump();
    }
    void Enter(CWnd& window, bool isBack) override {
        ::SetFocus(isBack ? m_after : m_before);
        PressKey(VK_TAB, {false, isBack});
        // A window without room is no stop for the platform's Tab.
        if (window.IsChild(CWnd::GetFocus()) != 0) return;
        window.EnterByTab(isBack);
        window.SetFocus();
    }
    void Pump() override { m_frame == nullptr ? HostFrame::PumpAll(nullptr) : m_frame->Pump(); }
    void Rest(UINT milliseconds) override { m_clocked->Advance(milliseconds); }

    HostFrame& Frame() { return *m_frame; }
    HWND Before() const { return m_before; }
    HWND After() const { return m_after; }

private:
    static constexpr CSize cSize{1000, 760};
    static constexpr int cControl = 24;
    static constexpr UINT cNextStep = WM_APP + 10;
    static constexpr LPARAM cHeldBit = LPARAM{1} << 30;

    static void PostKey(UINT key, bool isHeld) {
        const LPARAM code = static_cast<LPARAM>(::MapVirtualKeyW(key, MAPVK_VK_TO_VSC)) << 16;
        const HWND focus = ::GetFocus();
        ::PostMessageW(focus, WM_KEYDOWN, key, 1 | code | (isHeld ? cHeldBit : 0));
        if (!isHeld) ::PostMessageW(focus, WM_KEYUP, key, 1 | code | cHeldBit | (cHeldBit << 1));
    }
    void TypeKey(char ch, bool isHeld) {
        const SHORT found = ::VkKeyScanA(ch);
        const UINT key = LOBYTE(found);
        const bool isShifted = (HIBYTE(found) & 1) != 0;
        if (found == -1) {
            ::PostMessageW(::GetFocus(), WM_CHAR, static_cast<unsigned char>(ch), 1);
            return Pump();
        }
        const KeyState state({{VK_SHIFT, isShifted}, {key, true}});
        PostKey(key, isHeld);
        Pump();
    }
    static LPARAM PlaceIn(HWND target, CPoint point) {
        POINT place = point;
        ::ScreenToClient(target, &place);
        return MAKELPARAM(place.x, place.y);
    }
    static void PostMouse(HWND target, UINT message, WPARAM buttons, CPoint point) {
        ::PostMessageW(target, message, buttons, PlaceIn(target, point));
    }
    /// The window at a point of the screen, or the one that has the mouse.
    HWND Reached(CPoint point) const {
        const HWND captured = ::GetCapture();
        if (captured != nullptr) return captured;
        const HWND found = ::WindowFromPoint(point);
        return found != nullptr ? found : m_frame->Handle();
    }
    void Next() {
        m_steps.front()();
        m_steps.pop_front();
        if (!m_steps.empty()) m_frame->Post(cNextStep);
    }

    WindowSystem* m_platform = nullptr;
    std::unique_ptr<ClockedSystem> m_clocked;
    std::deque<std::function<void()>> m_steps;
    std::unique_ptr<HostFrame> m_frame;
    HWND m_before = nullptr;
    HWND m_holder = nullptr;
    HWND m_after = nullptr;
    std::unique_ptr<HostWindow> m_host;
};

}  // namespace tessalink::test
