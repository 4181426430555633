#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/graphics/DrawingDevice.h"

namespace tessalink {

/// The largest SVG text that is written, in bytes.
inline constexpr std::uint64_t cMaxSvg = std::uint64_t{1} << 30;

/// The sheet of an SVG picture. Texts are Windows-1252.
struct SvgSheet {
    int width = 0;   ///< in units; what lies outside does not show
    int height = 0;  ///< in units
    /// Units per inch. At 96 a unit is a pixel; otherwise the size is in millimetres.
    int dpi = 96;
    std::string_view title = {};        ///< what the picture is called; empty for none
    std::string_view description = {};  ///< and what it shows, for those who can't see it
};

/// Writes what is drawn as SVG 1.1: the same bytes on every machine. Lines of one unit cover whole
/// pixels, and every character stands where the built-in measures place it, whatever font the
/// viewer has. Symbol text becomes Unicode. Memory is that of the text.
class TESSALINK_API SvgDevice final : public DrawingDevice {
public:
    explicit SvgDevice(const SvgSheet& sheet);
    ~SvgDevice() override;

    /// Ends the picture and returns its text; empty when it has become larger than cMaxSvg. Drawing
    /// afterwards does nothing.
    std::string Finish();

    const DeviceCaps& Caps() const override;
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
    class Writer;

    std::unique_ptr<Writer> m_writer;
};

/// Stores the text of a picture under the name, wholly or not at all. Returns nonzero on success.
TESSALINK_API BOOL saveSvg(std::string_view svg, const char* fileName);

}  // namespace tessalink
