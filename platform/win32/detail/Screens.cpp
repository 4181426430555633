#include "platform/win32/detail/Screens.h"

#include <algorithm>
#include <vector>

#include "platform/base/Types.h"
#include "platform/win32/detail/SystemCalls.h"

namespace tessalink::detail {

namespace {

struct Screen {
    CRect pixels;
    CRect room;  // in pixels
    Scale scale;

    CPoint UnitsOf(const POINT& pixel) const {
        return {pixels.left + scale.UnitOf(pixel.x - pixels.left),
                pixels.top + scale.UnitOf(pixel.y - pixels.top)};
    }
    CPoint PixelOf(const POINT& unit) const {
        return {pixels.left + scale.Edge(unit.x - pixels.left),
                pixels.top + scale.Edge(unit.y - pixels.top)};
    }
    CRect Units(const CRect& rect) const {
        return {UnitsOf(rect.TopLeft()), UnitsOf(rect.BottomRight())};
    }
};

Screen screenOf(HMONITOR monitor) {
    MONITORINFO info = {};
    info.cbSize = sizeof(info);
    ::GetMonitorInfoW(monitor, &info);
    return {info.rcMonitor, info.rcWork, Scale(dpiOfMonitor(monitor))};
}

BOOL CALLBACK addScreen(HMONITOR monitor, HDC, RECT*, LPARAM all) {
    reinterpret_cast<std::vector<Screen>*>(all)->push_back(screenOf(monitor));
    return TRUE;
}

std::vector<Screen> allScreens() {
    std::vector<Screen> screens;
    ::EnumDisplayMonitors(nullptr, nullptr, addScreen, reinterpret_cast<LPARAM>(&screens));
    return screens;
}

// The one at a place in units, or else the one that is nearest to the same pixel.
Screen screenOfUnit(const POINT& unit) {
    const std::vector<Screen> screens = allScreens();
    const auto found = std::find_if(screens.begin(), screens.end(), [&](const Screen& screen) {
        return screen.Units(screen.pixels).PtInRect(unit);
    });
    if (found != screens.end()) return *found;
    return screenOf(::MonitorFromPoint(unit, MONITOR_DEFAULTTONEAREST));
}

}  // namespace

CPoint screenUnits(const POINT& pixel) {
    return screenOf(::MonitorFromPoint(pixel, MONITOR_DEFAULTTONEAREST)).UnitsOf(pixel);
}

CPoint screenPixel(const POINT& unit) {
    return screenOfUnit(unit).PixelOf(unit);
}

CRect screenAt(const POINT& unit) {
    const Screen screen = screenOfUnit(unit);
    return screen.Units(screen.pixels);
}

CRect roomAt(const POINT& unit) {
    const Screen screen = screenOfUnit(unit);
    return screen.Units(screen.room);
}

Scale scaleAt(const POINT& unit) {
    return screenOfUnit(unit).scale;
}

}  // namespace tessalink::detail
