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
    bool isRefused = false;  // it makes a character that is not in Windows-1252
};

KeyInput keyInputOf(const QKeyEvent& event);
// The toolkit's key for a code; 0 when there is none.
Qt::Key toolkitKey(UINT key);
// Whether a key press means typing or moving, which a shortcut of the host must not take away.
bool isPlainKey(const QKeyEvent& event);

// MK_... of buttons and keys that are held.
UINT mouseFlags(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
// The message of a press, release or double click; 0 for other buttons.
UINT mouseMessage(const QMouseEvent& event);
Qt::CursorShape cursorShape(int shape);

}  // namespace tessalink::detail
