#pragma once

#include "platform/graphics/DrawingDevice.h"

namespace tessalink {

/// Draws nothing; it measures like others. The base of devices that are interested in few calls.
class TESSALINK_API NullDevice : public DrawingDevice {
public:
    NullDevice();
    /// Measures like a device of this size and resolution.
    explicit NullDevice(const DeviceCaps& caps) : m_caps(caps) {}

    const DeviceCaps& Caps() const override { return m_caps; }
    void DrawLine(const Paint&, POINT, POINT) override {}
    void DrawPolyline(const Paint&, std::span<const POINT>) override {}
    void DrawPolygon(const Paint&, std::span<const POINT>) override {}
    void DrawRectangle(const Paint&, const RECT&) override {}
    void DrawEllipse(const Paint&, const RECT&) override {}
    void FillRectangle(const Paint&, const RECT&) override {}
    void FillRegion(const Paint&, const Region&) override {}
    void SetPixel(const Paint&, POINT, COLORREF) override {}
    void DrawText(const TextRun&) override {}

private:
    DeviceCaps m_caps;
};

/// A screen of 96 units per inch and known size, 1,920 by 1,440 units and 508 by 381 millimeters:
/// what pictures are recorded against where no printer is.
TESSALINK_API const DeviceCaps& fixedScreen();

}  // namespace tessalink
