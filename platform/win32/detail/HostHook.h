#pragma once

#include <optional>

#include "platform/base/Types.h"

namespace tessalink::detail {

// Who hears what messages a window of the host gets, before it gets them.
class HostListener {
public:
    virtual std::optional<LRESULT> Heard(UINT message, WPARAM wParam, LPARAM lParam) = 0;

protected:
    ~HostListener() = default;
};

// Listens at a window of the host as long as it lives. Several may listen at one window, and the
// host may put procedures of its own before ours meanwhile.
class HostHook {
public:
    HostHook(HWND window, HostListener& listener);
    ~HostHook();
    HostHook(const HostHook&) = delete;
    HostHook& operator=(const HostHook&) = delete;

    // Null when it is gone.
    HWND Window() const { return m_window; }

    // While it lives, a message of ours goes to the host without being heard.
    class OwnMessage {
    public:
        OwnMessage();
        ~OwnMessage();
        OwnMessage(const OwnMessage&) = delete;
        OwnMessage& operator=(const OwnMessage&) = delete;

    private:
        bool m_before;
    };

private:
    static LRESULT CALLBACK hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window;
    HostListener& m_listener;
};

}  // namespace tessalink::detail
