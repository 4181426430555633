#pragma once

#include "platform/windows/CWnd.h"

/// Lets the user move a rectangle with the mouse: an outline follows until the button is released;
/// Escape gives up.
class TESSALINK_API CRectTracker {
public:
    /// A rectangle in a window's client area.
    explicit CRectTracker(const RECT& rect) : m_rect(rect) {}

    /// Follows the mouse, which was pressed at a point of the window's client area. Returns nonzero
    /// when the rectangle lies elsewhere afterwards.
    BOOL Track(CWnd* window, CPoint point);

    CRect m_rect;  ///< the rectangle, where it was dragged to
};
