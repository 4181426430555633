#pragma once

#include <QRect>
#include <span>
#include <vector>

#include "platform/graphics/Geometry.h"

namespace tessalink::detail {

// A place between pixels.
struct Place {
    double x;
    double y;
};

// The pixels whose center lies inside the polygon, row by row, those of visible rows. Without
// winding what two contours enclose is outside. The pixels are those of Region::OfPolygon.
std::vector<QRect> pixelsOfPolygon(std::span<const Place> corners, bool isWinding,
                                   const RECT& visible);

// The pixels whose center is no farther from a line than half its width, row by row.
std::vector<QRect> pixelsOfWideLine(std::span<const Place> points, bool isClosed, double width,
                                    const RECT& visible);

// Corners of an ellipse that look round, clockwise from the right.
std::vector<Place> cornersOfEllipse(const Place& center, double halfWidth, double halfHeight);

}  // namespace tessalink::detail
