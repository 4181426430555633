#include "platform/qt/detail/DeviceCapsOf.h"

#include <QPagedPaintDevice>
#include <algorithm>
#include <cmath>

namespace tessalink::detail {

namespace {

constexpr int cScreenDpi = 96;
constexpr double cMmPerInch = 25.4;

int millimetres(int units, int dpi) {
    return static_cast<int>(std::lround(units * cMmPerInch / dpi));
}

}  // namespace

DeviceCaps capsOf(const QPaintDevice& device) {
    const bool isWidget = device.devType() == QInternal::Widget;
    DeviceCaps caps;
    caps.dpiX = isWidget ? cScreenDpi : std::max(1, device.logicalDpiX());
    caps.dpiY = isWidget ? cScreenDpi : std::max(1, device.logicalDpiY());
    // An image tells its pixels, a widget its units.
    const double ratio = device.devType() == QInternal::Image ? device.devicePixelRatioF() : 1;
    caps.width = static_cast<int>(std::lround(device.width() / ratio));
    caps.height = static_cast<int>(std::lround(device.height() / ratio));
    caps.widthMm = millimetres(caps.width, caps.dpiX);
    caps.heightMm = millimetres(caps.height, caps.dpiY);
    caps.isPrinter = dynamic_cast<const QPagedPaintDevice*>(&device) != nullptr;
    return caps;
}

}  // namespace tessalink::detail
