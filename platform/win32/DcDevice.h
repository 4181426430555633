#pragma once

#include <memory>
#include <optional>

#include "platform/base/Export.h"
#include "platform/graphics/DrawingDevice.h"

namespace tessalink {

/// Draws on a device context of the platform: a window, a memory bitmap, a printer or a metafile
/// that is being recorded.
///
/// What is drawn follows the platform's own rules, which are those of DrawingDevice. On a screen of
/// more than 96 pixels per inch a unit is a square of several pixels, and the edges of units lie at
/// rounded pixels, so that what meets does so at every scale. Texts are drawn in the platform's
/// fonts, each character where the device context of the library has found its place.
class TESSALINK_API DcDevice final : public DrawingDevice {
public:
    /// The context must live as long as the device, and nobody else may draw on it meanwhile; its
    /// origin stays, and what it clips stays clipped. Afterwards it is as it was. `dpi` is the
    /// number of pixels for 96 units; 0 makes every pixel a unit. A handle that is no device
    /// context raises CInvalidArgException.
    explicit DcDevice(HDC context, int dpi = 0);
    /// On a bitmap in memory, whose size and resolution the platform does not tell: every pixel is
    /// a unit, of which `dpi` make an inch.
    DcDevice(HDC context, int width, int height, int dpi);
    ~DcDevice() override;

    /// Screens, and bitmaps for these, have 96 units per inch when `dpi` was given.
    const DeviceCaps& Caps() const override;
    const TextMetricsSource& TextMetrics() const override;
    void DrawLine(const Paint& paint, POINT from, POINT to) override;
    void DrawPolyline(const Paint& paint, std::span<const POINT> points) override;
    void DrawPolygon(const Paint& paint, std::span<const POINT> points) override;
    void DrawRectangle(const Paint& paint, const RECT& rect) override;
    void DrawEllipse(const Paint& paint, const RECT& rect) override;
    void FillRectangle(const Paint& paint, const RECT& rect) override;
    void FillRegion(const Paint& paint, const Region& region) override;
    void SetPixel(const Paint& paint, POINT point, COLORREF color) override;
    void DrawText(const TextRun& run) override;

private:
    class Context;

    /// Asked for when somebody needs it: the platform takes longer for it than for a line of text.
    mutable std::optional<DeviceCaps> m_caps;
    std::unique_ptr<Context> m_context;
};

/// The size and resolution of a device context of the platform.
TESSALINK_API DeviceCaps capsOf(HDC context);

/// The measures that DcDevice uses, for other devices: Arial, Times New Roman, Symbol and what
/// stands for them by the built-in measures; other faces that are installed by their own. Any
/// thread may ask; the measures stay.
TESSALINK_API const TextMetricsSource& platformTextMetrics();

}  // namespace tessalink
