#pragma once

#include "platform/windows/Accessible.h"

class QWidget;

namespace tessalink::detail {

class QtWindow;

// From now on assistive technology sees our windows, and their parts that are no windows, as the
// windows describe themselves.
void describeWindows();
// Tells it of an event in a window, or in one of its parts.
void tellAccessible(QtWindow& window, AccessibleEvent event, int child);

}  // namespace tessalink::detail
