#pragma once

#include <vector>

#include "platform/base/CString.h"
#include "platform/graphics/Geometry.h"

/// What assistive technology is told of windows, and of the parts of a window that are no windows
/// themselves.
namespace tessalink {

/// What a window or a part of one is.
enum class AccessibleRole {
    Client,  ///< a plain window
    Form,
    List,
    Graph,
    EditableText,
    CheckGroup,
    RadioGroup,
    ListItem,
    GraphPoint,
    Tip,
};

/// What assistive technology is told of.
enum class AccessibleEvent {
    Focus,           ///< the focus has moved to the part
    ValueChanged,    ///< its value has changed
    StateChanged,    ///< whether it is read-only has
    Announcement,    ///< its text is to be spoken
    ChildrenChanged  ///< the window has other parts than before
};

/// A check box or radio button of a group.
struct AccessibleChoice {
    CString name;            ///< its caption
    bool isChecked = false;  ///< whether it is chosen
    CRect rect;              ///< in the window's client area
};

/// A window, or a part of it.
struct AccessibleElement {
    AccessibleRole role = AccessibleRole::Client;  ///< what it is
    CString name;                                  ///< what it is called
    CString value;                                 ///< what it holds, as text
    CString description;                           ///< what else there is to say
    bool isReadOnly = false;                       ///< whether the user can't change it
    bool isRequired = false;                       ///< whether a value is expected
    bool isInvalid = false;                        ///< whether what is keyed is refused
    bool isDisabled = false;                       ///< whether it takes no input
    bool isFocused = false;                        ///< whether it has the focus
    CRect rect;                             ///< in the window's client area; of a window: all of it
    std::vector<AccessibleChoice> choices;  ///< of a group
    int focusedChoice = -1;                 ///< to which of them the keyboard has led; -1: to none
};

/// The parts of a window that names no child.
inline constexpr int cNoAccessibleChild = -1;

}  // namespace tessalink
