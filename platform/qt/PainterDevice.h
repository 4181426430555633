#pragma once

#include <memory>

#include "platform/base/Export.h"
#include "platform/graphics/DrawingDevice.h"

class QPainter;

namespace tessalink::detail {
class Canvas;
}

namespace tessalink {

/// Draws by a painter of the toolkit: on a widget, an image, a PDF writer or a printer.
///
/// On screens and images every pixel of lines and shapes is decided here, by the rules of
/// DrawingDevice and without smoothing, so that pictures are the same on every machine. Wide pens
/// are round at ends and corners. On printers and in PDF everything stays lines and curves: a unit
/// is then the square around the place where a screen would have a pixel. Texts are drawn with
/// unhinted glyphs at the places that the device context has found, smoothed.
///
/// One unit is one unit of the painter as it is handed over: a painter that is scaled draws bigger
/// pixels. So do widgets on a screen of 150 or 200 percent, but for round and slanted edges, which
/// are smoothed there. Faces of the classic desktop are shown by
/// metric-compatible ones (Arial by Liberation Sans); a face that is not installed by the one that
/// measures it. A QGuiApplication must exist.
class TESSALINK_API PainterDevice final : public DrawingDevice {
public:
    /// The painter must be active and stay so; nobody else may use it as long as the device lives.
    /// What it clips stays clipped. Afterwards it is as it was.
    explicit PainterDevice(QPainter& painter);
    ~PainterDevice() override;

    /// Of the painter's device. Widgets have 96 units per inch.
    const DeviceCaps& Caps() const override { return m_caps; }
    /// Arial, Times New Roman, Symbol and what stands for them by the built-in measures; other
    /// faces that are installed by their own, not hinted.
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
    DeviceCaps m_caps;
    std::unique_ptr<detail::Canvas> m_canvas;
};

/// The measures that PainterDevice uses, for other devices.
TESSALINK_API const TextMetricsSource& toolkitTextMetrics();

}  // namespace tessalink
