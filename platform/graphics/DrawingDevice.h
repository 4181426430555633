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
    int dpiX = 96;           ///< units per inch
    int dpiY = 96;           ///< units per inch
    int width = 0;           ///< in units
    int height = 0;          ///< in units
    int widthMm = 0;         ///< in millimeters
    int heightMm = 0;        ///< in millimeters
    bool isPrinter = false;  ///< what is drawn goes to paper
};

/// What a primitive is drawn with.
struct Paint {
    LOGPEN pen{};                  ///< for lines and outlines
    LOGBRUSH brush{};              ///< for what is filled
    COLORREF background = cWhite;  ///< between dashes and hatches, when `opaque`
    bool opaque = true;            ///< whether gaps of dashes and hatches are filled
    int fillMode = ALTERNATE;      ///< or WINDING
    const Region* clip = nullptr;  ///< null: everything shows
};

/// One run of text in one font.
struct TextRun {
    std::string_view text;                 ///< in the code page, or the codes of a symbol face
    const LOGFONTA* font = nullptr;        ///< what was asked for; not null
    const SizedFont* sizedFont = nullptr;  ///< the same font as it is measured; not null
    POINT origin{};                        ///< where the first character starts, on the base line
    std::span<const int> positions;     ///< where each character starts, and the end: one more than
                                        /// characters, from 0 on
    COLORREF color = cBlack;            ///< of the characters
    bool hasBackground = false;         ///< fill this rectangle first
    RECT background{};                  ///< filled first, when `hasBackground`
    COLORREF backgroundColor = cWhite;  ///< the color of that
    bool isClipped = false;             ///< and show nothing outside that one
    RECT clipRect{};                    ///< outside it nothing shows, when `isClipped`
    const Region* clip = nullptr;       ///< nor outside this
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

    /// Size and resolution; they stay the same as long as the device.
    virtual const DeviceCaps& Caps() const = 0;
    /// Where texts are measured. Default: by the built-in measures.
    virtual const TextMetricsSource& TextMetrics() const;

    /// A line with the pen; the end point is left out.
    virtual void DrawLine(const Paint& paint, POINT from, POINT to) = 0;
    /// Lines with the pen from point to point; the last point is left out.
    virtual void DrawPolyline(const Paint& paint, std::span<const POINT> points) = 0;
    /// A closed polygon, filled with the brush and drawn with the pen.
    virtual void DrawPolygon(const Paint& paint, std::span<const POINT> points) = 0;
    /// A rectangle, filled with the brush and drawn with the pen.
    virtual void DrawRectangle(const Paint& paint, const RECT& rect) = 0;
    /// The ellipse in a rectangle, filled with the brush and drawn with the pen.
    virtual void DrawEllipse(const Paint& paint, const RECT& rect) = 0;
    /// With the brush alone, and no unit less.
    virtual void FillRectangle(const Paint& paint, const RECT& rect) = 0;
    /// A region filled with the brush.
    virtual void FillRegion(const Paint& paint, const Region& region) = 0;
    /// One unit in a color.
    virtual void SetPixel(const Paint& paint, POINT point, COLORREF color) = 0;
    /// One run of text.
    virtual void DrawText(const TextRun& run) = 0;

    /// The device context has saved its state, or gone back by so many savings. Only a device that
    /// writes down differences needs to know.
    virtual void SaveState();
    /// The context has gone back by so many saved states, see SaveState.
    virtual void RestoreState(int levels);
};

}  // namespace tessalink
