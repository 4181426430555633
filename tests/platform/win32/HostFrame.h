#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <utility>

#include "platform/graphics/Geometry.h"

namespace tessalink::test {

/// While it lives, keys are down for the calling thread, and all others up.
class KeyState {
public:
    KeyState(std::initializer_list<std::pair<UINT, bool>> keys);
    ~KeyState();
    KeyState(const KeyState&) = delete;
    KeyState& operator=(const KeyState&) = delete;

private:
    BYTE m_before[256];
};

/// A window of a host on the screen, with controls of the platform, that knows nothing of the
/// library, and its loop.
class HostFrame {
public:
    explicit HostFrame(CSize size);
    ~HostFrame();
    HostFrame(const HostFrame&) = delete;
    HostFrame& operator=(const HostFrame&) = delete;

    HWND Handle() const { return m_window; }
    /// A control with a tab stop, and a window in which others lie.
    HWND AddControl(const wchar_t* className, const CRect& place);
    HWND AddHolder(const CRect& place);

    /// Gets the messages of the window and of its holders first; true for those that it has used.
    std::function<bool(UINT message, WPARAM wParam, LPARAM lParam)> reaction;
    /// What the last notification was answered with.
    LRESULT answer = 0;

    void Post(UINT message) const { ::PostMessageW(m_window, message, 0, 0); }
    /// Until no message is left; with the keys of dialogs.
    void Pump() const { PumpAll(m_window); }
    static void PumpAll(HWND dialog);

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window = nullptr;
};

/// What assistive technology hears a window say.
std::string spokenOf(HWND window);

}  // namespace tessalink::test
