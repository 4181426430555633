#pragma once

#include <optional>

#include "platform/windows/CWnd.h"

/// What the systems that show windows have in common, beside WindowSystem.h.
namespace tessalink {

/// Turns of a wheel, as the system tells them: small ones add up to the least that windows react
/// to.
class TESSALINK_API WheelTurns {
public:
    /// What is told of a turn, by the number of lines that a notch scrolls; 0 for nothing yet.
    short Told(int delta, int lines);

private:
    int m_left = 0;  ///< what has been turned and not yet told
};

/// Keeps a message on the screen while somebody keys on who does not see it.
class TESSALINK_API TypedAhead {
public:
    /// The kinds of keys that matter here.
    enum class Key { Return, Text, Other };

    /// Whether a key is kept from the message: characters, and a Return after them or one that is
    /// held down. The bell has rung then.
    bool Keeps(Key key, bool isHeld);

private:
    bool m_any = false;
};

/// Whether Tab may lead to the window: tab stops in tab stops belong to these.
TESSALINK_API bool isTabEntry(const CWnd& window);
/// The window by which the system's focus enters another one: the outermost with a tab stop around
/// it, or else the one right in the host's window.
TESSALINK_API const CWnd& tabEntryOf(const CWnd& window);

/// The place for a new window in a room on the screen: all of it and of its title bar if they fit,
/// or else the left top corner.
TESSALINK_API CRect placedWithin(const CRect& window, const CRect& room, int titleHeight);

/// The colors of an edit box's text and ground, which its parent may have chosen; nothing when the
/// window has ended meanwhile.
struct EditColors {
    COLORREF text;    ///< of the text
    COLORREF ground;  ///< behind it
};
/// Asks the parent of an edit box for its colors (CWnd::OnCtlColor).
TESSALINK_API std::optional<EditColors> editColors(CWnd& edit);

/// The colors of a system, which may have none that fit: moved towards black or white until they
/// are legible.
struct BaseColors {
    COLORREF window;         ///< of fields
    COLORREF windowText;     ///< in fields
    COLORREF highlight;      ///< of what is selected
    COLORREF highlightText;  ///< of text in that
    COLORREF face;           ///< of dialogs
    COLORREF faceText;       ///< of text in dialogs
    COLORREF grayText;       ///< of text that can't be used
    COLORREF shadow;         ///< where the theme is light
    COLORREF tip;            ///< of tips
    COLORREF tipText;        ///< of text in tips
};
/// The color with a number (COLOR_...).
TESSALINK_API COLORREF legibleColor(const BaseColors& colors, int index);

/// What a window tells assistive technology of a part, or of itself; an empty element when either
/// is gone.
TESSALINK_API AccessibleElement accessibleElement(const CWnd* window, int child);
/// Its description: readers speak names, descriptions and the values of texts only, so other values
/// and the states that systems have no words for stand there.
TESSALINK_API CString accessibleDescription(const AccessibleElement& element);
/// The window, this one or one around it, and its part that has the focus; null without one.
struct FocusedPart {
    const CWnd* window;  ///< the window; null without one
    int part;            ///< cNoAccessibleChild for the window itself
};
/// Looks from a window with the focus to the outside.
TESSALINK_API FocusedPart focusedPart(const CWnd& focused);

}  // namespace tessalink
