#pragma once

#include <QKeyEvent>
#include <QMouseEvent>
#include <string>

#include "platform/windows/Messages.h"

// What the toolkit's events are as messages.
namespace tessalink::detail {

// A key: its code (VK_..., 0 when it has none) and the characters that it makes.
struct KeyInput {
    UINT key = 0;
    std::string characters;
    bool isRefused = false;  // it makes a character that is not in the code page
};

KeyInput keyInputOf(const QKeyEvent& event);
// The toolkit's key for a code; 0 when there is none.
Qt::Key toolkitKey(UINT key);
// Keys with Alt belong to the menus of the host, those with Ctrl and Tab to its pages.
bool isKeyOfHost(const QKeyEvent& event);
// Whether a key press means typing or moving, which a shortcut of the host must not take away.
bool isPlainKey(const QKeyEvent& event);

// MK_... of buttons and keys that are held.
UINT mouseFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
// The message of a press, release or double click; 0 for other buttons.
UINT mouseMessage(const QMouseEvent& event);
Qt::CursorShape cursorShape(int shape);

// Finds out whether a key repeats itself because it is held down. The toolkit does not always: on
// some window systems such a key is released and pressed at the same moment, which it may miss.
class HeldKey {
public:
    // Every press and release, as often as it is delivered.
    void See(const QKeyEvent& event);
    // Whether the last press was one of a key that is held down.
    bool IsRepeat() const { return m_isRepeat; }

private:
    int m_key = 0;
    quint64 m_pressed = 0;  // in milliseconds
    quint64 m_released = 0;
    bool m_isRepeat = false;
};

}  // namespace tessalink::detail
