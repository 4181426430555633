#pragma once

#include "platform/base/CString.h"
#include "platform/graphics/Geometry.h"

// What assistive technology is told of windows, and of the parts of a window that are no windows
// themselves.
namespace tessalink {

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

enum class AccessibleEvent {
    Focus,           ///< the focus has moved to the part
    ValueChanged,    ///< its value has changed
    StateChanged,    ///< its states have
    Announcement,    ///< its text is to be spoken
    ChildrenChanged  ///< the window has other parts than before
};

/// A window, or a part of it.
struct AccessibleElement {
    AccessibleRole role = AccessibleRole::Client;
    CString name;
    CString value;
    CString description;
    bool isReadOnly = false;
    bool isRequired = false;
    bool isInvalid = false;
    bool isDisabled = false;
    bool isFocused = false;
    CRect rect;  ///< in the window's client area; of a window: all of it
};

/// The parts of a window that names no child.
inline constexpr int cNoAccessibleChild = -1;

}  // namespace tessalink
