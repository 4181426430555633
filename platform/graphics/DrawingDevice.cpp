#include "platform/graphics/DrawingDevice.h"

namespace tessalink {

const TextMetricsSource& DrawingDevice::TextMetrics() const {
    static const TextMetricsSource builtIn;
    return builtIn;
}

void DrawingDevice::SaveState() {}

void DrawingDevice::RestoreState(int) {}

}  // namespace tessalink
