#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "platform/windows/WindowSystem.h"

namespace tessalink::test {

/// The windows of a system with a clock that a test works.
class ClockedSystem final : public WindowSystem {
public:
    explicit ClockedSystem(WindowSystem& system) : m_system(system) {}

    std::unique_ptr<NativeWindow> CreateNative(const WindowSetup& setup) override {
        return m_system.CreateNative(setup);
    }
    void DropFocus() override { m_system.DropFocus(); }
    COLORREF Color(int index) const override { return m_system.Color(index); }
    int Metric(int index) const override { return m_system.Metric(index); }
    int WheelLines() const override { return m_system.WheelLines(); }
    bool IsKeyDown(int key) const override { return m_system.IsKeyDown(key); }
    CPoint CursorPosition() const override { return m_cursor.value_or(m_system.CursorPosition()); }
    void PlaceCursor(CPoint point) { m_cursor = point; }
    bool ClipboardText(CString& text) const override { return m_system.ClipboardText(text); }
    void StartTimer(int number, UINT period) override {
        m_timers[number] = {period, m_now + period};
    }
    void StopTimer(int number) override { m_timers.erase(number); }
    void WakeUp() override { m_system.WakeUp(); }
    bool RunUntil(const std::function<bool()>& isDone) override {
        return m_system.RunUntil(isDone);
    }
    DrawingDevice& Screen() override { return m_system.Screen(); }

    void Advance(UINT milliseconds) {
        const std::uint64_t end = m_now + milliseconds;
        for (;;) {
            auto next = m_timers.begin();
            for (auto timer = next; timer != m_timers.end(); ++timer) {
                if (timer->second.due < next->second.due) next = timer;
            }
            if (next == m_timers.end() || next->second.due > end) break;
            m_now = next->second.due;
            next->second.due += next->second.period;
            timerElapsed(next->first);
        }
        m_now = end;
    }

private:
    struct Timer {
        UINT period;
        std::uint64_t due;
    };

    WindowSystem& m_system;
    std::optional<CPoint> m_cursor;
    std::map<int, Timer> m_timers;
    std::uint64_t m_now = 0;
};

}  // namespace tessalink::test
