#pragma once

#include <map>
#include <memory>
#include <optional>
#include <unordered_map>

#include "platform/graphics/NullDevice.h"
#include "platform/win32/DcDevice.h"
#include "platform/win32/detail/BackBuffer.h"
#include "platform/windows/WindowSystem.h"

namespace tessalink::detail {

class Win32Window;

// A native window that is one of the platform's: one of ours, or one of the host.
class Win32Native : public NativeWindow {
public:
    // Null when it is gone.
    virtual HWND Handle() const = 0;
};

// The native window of an object, if it is one of the platform's.
Win32Native* win32Native(const CWnd& window);

// Windows of the platform, for one thread.
class Win32WindowSystem final : public WindowSystem {
public:
    static Win32WindowSystem& Get();
    // Takes the calling thread for the one that has the windows.
    void Start();

    std::unique_ptr<NativeWindow> CreateNative(const WindowSetup& setup) override;
    void DropFocus() override;
    COLORREF Color(int index) const override;
    int Metric(int index) const override;
    CRect ScreenAt(CPoint point) const override;
    int WheelLines() const override;
    bool IsKeyDown(int key) const override;
    CPoint CursorPosition() const override;
    bool ClipboardText(CString& text) const override;
    void StartTimer(int number, UINT period) override;
    void StopTimer(int number) override;
    void WakeUp() override;
    bool RunUntil(const std::function<bool()>& isDone) override;
    DrawingDevice& Screen() override { return m_screen; }

    // The class of our windows, and the module that has it.
    const wchar_t* WindowClass();
    HINSTANCE Module() const;

    void Register(HWND handle, Win32Window& window) { m_windows[handle] = &window; }
    void Forget(HWND handle) { m_windows.erase(handle); }
    // The window of a handle; null for others.
    Win32Window* WindowOf(HWND handle) const;
    bool IgnoresFocus() const { return m_ignoresFocus; }
    // Without a word to our windows.
    void GiveFocus(HWND handle);

    // Moves the platform's focus on from a window in a host's window, as Tab does, or back. Returns
    // false when nothing else takes the focus.
    bool MoveOn(HWND host, const CWnd& from, bool isBack);
    // Whether Tab brings the focus just now, and if so back.
    std::optional<bool> TabDirection() const;

    BackBuffer& Buffer() { return m_buffer; }
    // The windows have another scale.
    void ScaleChanged();

    // Messages that children send to their parent, whoever that is: changes and colors of our edit
    // fields. Nothing for others.
    std::optional<LRESULT> ChildTold(UINT message, WPARAM wParam, LPARAM lParam);

private:
    // What windows measure texts with: the measures that they are painted with.
    class Measures final : public NullDevice {
    public:
        using NullDevice::NullDevice;
        const TextMetricsSource& TextMetrics() const override { return platformTextMetrics(); }
    };

    Win32WindowSystem();

    static LRESULT CALLBACK listen(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void settings_changed_soon();
    void settings_changed();

    std::unordered_map<HWND, Win32Window*> m_windows;
    // Until settings change: windows ask for them with every key.
    mutable std::map<int, COLORREF> m_colors;
    mutable std::map<int, int> m_metrics;
    BackBuffer m_buffer;
    HWND m_listener = nullptr;  // has the timers, and hears of settings
    std::optional<bool> m_tab;
    bool m_ignoresFocus = false;
    bool m_isWoken = false;
    bool m_settingsChange = false;
    Measures m_screen;
};

inline Win32WindowSystem& windows() {
    return Win32WindowSystem::Get();
}

}  // namespace tessalink::detail
