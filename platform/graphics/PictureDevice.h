#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/graphics/DrawingDevice.h"

namespace tessalink {

namespace detail {
class PictureWriter;
}

/// The largest picture that is written, in bytes.
inline constexpr std::uint64_t cMaxPicture = std::uint64_t{1} << 30;

/// The sheet of a picture. Texts are in the code page.
struct PictureSheet {
    int width = 0;                      ///< in units; what lies outside does not show
    int height = 0;                     ///< in units
    int dpi = 96;                       ///< units per inch
    std::string_view title = {};        ///< what the picture is called; empty for none
    std::string_view description = {};  ///< and what it shows, for those who can't see it
    std::string_view language = {};     ///< of both texts, for instance "en-US"; empty: unknown
};

/// Writes what is drawn as a picture of lines, areas and text: the same bytes on every machine.
/// Lines of one unit cover whole units, and every character stands where the built-in measures
/// place it, whatever font the viewer has. Memory is that of the picture.
class TESSALINK_API PictureDevice : public DrawingDevice {
public:
    ~PictureDevice() override;

    /// Ends the picture and returns its bytes; empty when it has become larger than cMaxPicture.
    /// Drawing afterwards does nothing.
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

protected:
    /// For derived devices: `writer` makes their format.
    explicit PictureDevice(std::unique_ptr<detail::PictureWriter> writer);

private:
    std::unique_ptr<detail::PictureWriter> m_writer;
};

/// Stores the bytes of a picture under the name, wholly or not at all. Returns nonzero on success.
TESSALINK_API BOOL savePicture(std::string_view picture, const char* fileName);

}  // namespace tessalink
