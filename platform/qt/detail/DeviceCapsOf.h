#pragma once

#include <QPaintDevice>

#include "platform/graphics/DrawingDevice.h"

namespace tessalink::detail {

// The size and resolution of a paint device; see PainterDevice::Caps.
DeviceCaps capsOf(const QPaintDevice& device);

}  // namespace tessalink::detail
