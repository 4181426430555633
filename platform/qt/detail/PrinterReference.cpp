#include "platform/qt/detail/PrinterReference.h"

#include <QPrinter>
#include <QPrinterInfo>

#include "platform/graphics/NullDevice.h"
#include "platform/qt/PainterDevice.h"
#include "platform/qt/detail/DeviceCapsOf.h"

namespace tessalink::detail {

namespace {

class PrinterReference final : public NullDevice {
public:
    using NullDevice::NullDevice;
    const TextMetricsSource& TextMetrics() const override { return toolkitTextMetrics(); }
};

}  // namespace

std::shared_ptr<DrawingDevice> referenceOf(const QPagedPaintDevice& printer) {
    return std::make_shared<PrinterReference>(capsOf(printer));
}

std::shared_ptr<DrawingDevice> defaultPrinter() {
    const QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) return nullptr;
    const QPrinter printer(info, QPrinter::HighResolution);
    return printer.isValid() ? referenceOf(printer) : nullptr;
}

}  // namespace tessalink::detail
