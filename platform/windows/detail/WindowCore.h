#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "platform/graphics/Region.h"
#include "platform/windows/CWnd.h"
#include "platform/windows/WindowSystem.h"

namespace tessalink {

// What a window object has while its window exists.
struct WindowCore {
    explicit WindowCore(CWnd& window) : owner(&window) {}

    CWnd* owner;
    CWnd* parent = nullptr;
    std::vector<CWnd*> children;
    UINT id = 0;
    DWORD style = 0;
    CRect rect;        // in the parent's client area
    CSize clientSize;  // as WM_SIZE told it last
    CString text;
    CFont* font = nullptr;
    std::array<SCROLLINFO, 2> scroll{};  // SB_HORZ, SB_VERT
    Region update;
    bool isUpdateErased = false;
    DrawingDevice* paintDevice = nullptr;  // while it is painted
    CPoint paintOrigin;                    // of the client area on that
    bool isPaintTaken = false;             // a device context has taken what was to be painted
    bool isBeingDestroyed = false;
    bool isLost = false;  // its native window is gone
    std::unique_ptr<NativeWindow> native;

    bool HasStyle(DWORD bits) const { return (style & bits) == bits; }
    bool HasBar(int bar) const { return HasStyle(bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL); }
    bool ShowsBar(int bar) const {
        const SCROLLINFO& info = scroll[static_cast<std::size_t>(bar)];
        return HasBar(bar) && std::int64_t{info.nMax} - info.nMin > std::int64_t{info.nPage};
    }
    CRect Client() const;  // in the window's rectangle

    static WindowCore* Of(const CWnd& window) { return window.m_core.get(); }
    static std::unique_ptr<WindowCore>& Slot(CWnd& window) { return window.m_core; }
};

}  // namespace tessalink
