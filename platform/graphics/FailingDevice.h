#pragma once

#include <cstddef>
#include <limits>

#include "platform/base/CException.h"
#include "platform/graphics/DrawingDevice.h"

namespace tessalink {

/// Passes on to another device until one primitive fails: for tests of what draws.
///
/// What a drawing step promises when its device throws: the exception passes through, objects that
/// were selected and states that were changed for the step are those from before it, nothing leaks,
/// and drawing may go on. Saved states of the context stay saved: who calls SaveDC restores it.
class TESSALINK_API FailingDevice : public DrawingDevice {
public:
    /// What the failing primitive raises.
    class Fault : public CException {
    public:
        /// The message of every such fault.
        const char* what() const noexcept override { return "The device failed"; }
    };
    /// Throw raises a Fault at one primitive; Drop loses that one and all that follow.
    enum class Failure { Throw, Drop };

    /// The primitive `failing`, counted from 1, fails. The other device must outlive this one.
    FailingDevice(DrawingDevice& device, std::size_t failing, Failure failure = Failure::Throw)
        : m_device(device), m_failing(failing), m_failure(failure) {}

    /// How many primitives have come.
    std::size_t Count() const { return m_count; }

    const DeviceCaps& Caps() const override { return m_device.Caps(); }
    const TextMetricsSource& TextMetrics() const override { return m_device.TextMetrics(); }
    void DrawLine(const Paint& paint, POINT from, POINT to) override {
        if (passes()) m_device.DrawLine(paint, from, to);
    }
    void DrawPolyline(const Paint& paint, std::span<const POINT> points) override {
        if (passes()) m_device.DrawPolyline(paint, points);
    }
    void DrawPolygon(const Paint& paint, std::span<const POINT> points) override {
        if (passes()) m_device.DrawPolygon(paint, points);
    }
    void DrawRectangle(const Paint& paint, const RECT& rect) override {
        if (passes()) m_device.DrawRectangle(paint, rect);
    }
    void DrawEllipse(const Paint& paint, const RECT& rect) override {
        if (passes()) m_device.DrawEllipse(paint, rect);
    }
    void FillRectangle(const Paint& paint, const RECT& rect) override {
        if (passes()) m_device.FillRectangle(paint, rect);
    }
    void FillRegion(const Paint& paint, const Region& region) override {
        if (passes()) m_device.FillRegion(paint, region);
    }
    void SetPixel(const Paint& paint, POINT point, COLORREF color) override {
        if (passes()) m_device.SetPixel(paint, point, color);
    }
    void DrawText(const TextRun& run) override {
        if (passes()) m_device.DrawText(run);
    }
    void SaveState() override { m_device.SaveState(); }
    void RestoreState(int levels) override { m_device.RestoreState(levels); }

private:
    bool passes() {
        ++m_count;
        if (m_failure == Failure::Drop) return m_count < m_failing;
        if (m_count == m_failing) throw Fault();
        return true;
    }

    DrawingDevice& m_device;
    std::size_t m_failing;
    Failure m_failure;
    std::size_t m_count = 0;
};

}  // namespace tessalink
