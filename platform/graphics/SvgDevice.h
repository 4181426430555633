#pragma once

#include "platform/graphics/PictureDevice.h"

namespace tessalink {

/// Writes what is drawn as SVG 1.1. At 96 units per inch a unit is a pixel; otherwise the size is
/// in millimeters. Symbol text becomes Unicode.
class TESSALINK_API SvgDevice final : public PictureDevice {
public:
    /// An empty picture on this sheet.
    explicit SvgDevice(const PictureSheet& sheet);
};

}  // namespace tessalink
