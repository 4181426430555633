#pragma once

#include <QPagedPaintDevice>
#include <memory>

#include "platform/graphics/DrawingDevice.h"

namespace tessalink::detail {

// A device that measures like the printer or PDF writer and draws nothing.
std::shared_ptr<DrawingDevice> referenceOf(const QPagedPaintDevice& printer);

// The same for the user's default printer; null when there is none.
std::shared_ptr<DrawingDevice> defaultPrinter();

}  // namespace tessalink::detail
