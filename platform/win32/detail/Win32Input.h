#pragma once

#include <string>

#include "platform/windows/Messages.h"

// What the platform's input is for our windows.
namespace tessalink::detail {

// The characters of a key, and whether it makes some that are not in the code page.
struct KeyCharacters {
    std::string characters;
    bool isRefused = false;
};

// Takes those that the loop has made of the key that a window is getting, so that the window gets
// them with it.
KeyCharacters takeCharacters(HWND window);
// A character that came without a key; halves of larger ones are refused.
KeyCharacters charactersOf(wchar_t unit);

// Keys with Ctrl and Tab belong to the pages of the host.
bool isKeyOfHost(UINT key);

// The message by which a window knows a press, release or move; 0 for other buttons.
UINT mouseMessage(UINT message);

}  // namespace tessalink::detail
