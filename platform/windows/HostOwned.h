#pragma once

#include "platform/windows/WindowSystem.h"

namespace tessalink {

/// A window of the host, which we fill but do not own: what only the host decides does nothing.
/// `Native` is the window of one system.
template <class Native>
class HostOwned : public Native {
public:
    void Move(const CRect&) override {}
    void Show(bool) override {}
    void Enable(bool) override {}
    void Raise() override {}
    void PlaceAfter(NativeWindow*) override {}
    void RequestPaint(const CRect&) override {}
    void PaintNow() override {}
    void Scroll(int, int) override {}
    void Capture(bool) override {}
    void SetCursor(int) override {}
    void SetText(const CString&) override {}
    void SetFont(const LOGFONTA&) override {}
    void SetScrollBar(int, bool, const SCROLLINFO&) override {}
    void ShowOutline(const CRect&) override {}
    void NotifyAccessible(AccessibleEvent, int, const CString&) override {}
};

}  // namespace tessalink
