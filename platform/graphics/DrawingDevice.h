#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/base/Export.h"
#include "platform/graphics/FaceMetrics.h"
#include "platform/graphics/LogicalObjects.h"
#include "platform/graphics/Region.h"

namespace tessalink {

/// The size and resolution of a device.
struct DeviceCaps {
    int dpiX = 96;  ///< units per inch
    int dpiY = 96;
    int width = 0;  ///< in units
    int height = 0;
    int widthMm = 0;
    int heightMm = 0;
    bool isPrinter = false;
};

/// What a primitive is drawn with.
struct Paint {
    LOGPEN pen{};
    LOGBRUSH brush{};
    COLORREF background = cWhite;  ///< between dashes and hatches, when `opaque`
    bool opaque = true;
    int fillMode = ALTERNATE;      ///< or WINDING
    const Region* clip = nullptr;  ///< null: everything shows
};

/// One run of text in one font.
struct TextRun {
    std::string_view text;  ///< in the code page, or the codes of a symbol face
    const LOGFONTA* font = nullptr;
    const SizedFont* sizedFont = nullptr;
    POINT origin{};                  ///< where the first character starts, on the base line
    std::span<const int> positions;  ///< where each character starts, and the end: one more than
                                     /// characters, from 0 on
    COLORREF color = cBlack;
    bool hasBackground = false;  ///< fill this rectangle first
    RECT background{};
    COLORREF backgroundColor = cWhite;
    bool isClipped = false;  ///< and show nothing outside that one
    RECT clipRect{};
    const Region* clip = nullptr;  ///< nor outside this
};

/// What a device context draws on: the narrow waist between the library and a screen, a printer or
/// a file. Everything is resolved and in device units; each call brings the whole state that it
/// needs, valid during the call. Rectangles are normalized and not empty.
///
/// The pixels of a raster device: rectangles and ellipses exclude their right and bottom edge (and
/// one unit more without a pen), lines exclude their end point, a pen width of 0 is one unit.
///
/// A device may throw; FailingDevice tells what that leaves behind.
class TESSALINK_API DrawingDevice {
public:
    virtual ~DrawingDevice() = default;

    virtual const DeviceCaps& Caps() const = 0;
    /// Where texts are measured. Default: by the built-in measures.
    virtual const TextMetricsSource& TextMetrics() const;

    virtual void DrawLine(const Paint& paint, POINT from, POINT to) = 0;
    virtual void DrawPolyline(const Paint& paint, std::span<const POINT> points) = 0;
    virtual void DrawPolygon(const Paint& paint, std::span<const POINT> points) = 0;
    virtual void DrawRectangle(const Paint& paint, const RECT& rect) = 0;
    virtual void DrawEllipse(const Paint& paint, const RECT& rect) = 0;
    /// With the brush alone, and no unit less.
    virtual void FillRectangle(const Paint& paint, const RECT& rect) = 0;
    virtual void FillRegion(const Paint& paint, const Region& region) = 0;
    virtual void SetPixel(const Paint& paint, POINT point, COLORREF color) = 0;
    virtual void DrawText(const TextRun& run) = 0;

    /// The device context has saved its state, or gone back by so many savings. Only a device that
    /// writes down differences needs to know.
    virtual void SaveState();
    virtual void RestoreState(int levels);
};

}  // namespace tessalink
