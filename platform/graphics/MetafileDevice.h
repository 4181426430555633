#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/graphics/DrawingDevice.h"

namespace tessalink {

/// Records what is drawn as an enhanced metafile. Every run of text stands on its base line with
/// the position of each character, backgrounds are rectangles of their own, and what a record needs
/// is set before it: every reader places the picture alike.
class TESSALINK_API MetafileDevice final : public DrawingDevice {
public:
    /// Records as a device of these capabilities and measures would draw; `reference` must stay
    /// until the recording has ended. The frame is in hundredths of a millimeter; without one it is
    /// that of what is drawn. The description is two texts, application and picture, each with a
    /// NUL.
    explicit MetafileDevice(const DrawingDevice& reference,
                            const std::optional<RECT>& frame = std::nullopt,
                            std::string_view description = {});
    ~MetafileDevice() override;

    /// Ends the recording, closes what is open, and returns the metafile; empty when it has become
    /// larger than cMaxMetafile. Drawing afterwards does nothing.
    std::vector<BYTE> Finish();

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
    void SaveState() override;
    void RestoreState(int levels) override;

private:
    class Recorder;

    std::unique_ptr<Recorder> m_recorder;
};

}  // namespace tessalink
