#pragma once

#include "platform/windows/Accessible.h"

class CWnd;
class QWidget;

namespace tessalink::detail {

class QtWindow;

// From now on assistive technology sees our windows, and their parts that are no windows, as the
// windows describe themselves.
void describeWindows();
// Tells it of an event in a window, or in one of its parts.
void tellAccessible(QtWindow& window, AccessibleEvent event, int child);

// Calls a field of the toolkit as its window describes itself. It serves one part after another,
// and readers speak only of what is new to them: they see a new object from now on.
void describeField(QWidget& field, const AccessibleElement& element);
// Tells it that the focus is in a window: in a field, or else in the part of the window, or of one
// around it, that has the focus.
void tellFocus(const CWnd& focused);

}  // namespace tessalink::detail
