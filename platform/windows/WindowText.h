#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/base/Types.h"

class CWnd;

/// Replaces every "%1" in the window's text by the argument. Without a window: nothing.
TESSALINK_API void ReplaceWindowText(CWnd* window, CString argument);
/// The same with the string of this number in the host's table; an unknown one is empty.
TESSALINK_API void ReplaceWindowText(CWnd* window, unsigned int resourceId);
