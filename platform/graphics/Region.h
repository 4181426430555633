#pragma once

#include <optional>
#include <span>
#include <vector>

#include "platform/base/Export.h"
#include "platform/graphics/Geometry.h"

namespace tessalink {

/// A set of device units as rectangles that don't overlap, sorted from top to bottom and then from
/// left to right; rectangles beside one another have the same top and bottom. A plain value.
class TESSALINK_API Region {
public:
    Region() = default;
    /// One rectangle; empty when it is.
    explicit Region(const RECT& rect);
    /// What Polygon fills, by the alternating rule. A point is the center of its unit, so that
    /// filled polygons meet their outline; a unit belongs to the polygon when its center lies
    /// inside, or on a left or upper edge.
    static Region OfPolygon(std::span<const POINT> points);
    /// Rectangles that are sorted already and have the form that is told above; nothing when they
    /// have not. What is farther away than a device can be is cut off, as everywhere here.
    static std::optional<Region> OfBands(std::vector<RECT> rects);
    /// What Ellipse fills without a pen.
    static Region OfEllipse(const RECT& rect);

    /// The corners, when the region is a polygon as it was made; otherwise empty. FillRgn draws
    /// that polygon instead of rectangles without number.
    std::span<const POINT> Corners() const { return m_corners; }

    /// Whether no unit belongs to it.
    bool IsEmpty() const { return m_rects.empty(); }
    /// The smallest rectangle around it; all 0 when empty.
    CRect Bounds() const;
    /// The rectangles, as told above; valid until the region changes.
    std::span<const RECT> Rects() const { return m_rects; }
    /// Whether the unit belongs to it.
    bool Contains(const POINT& point) const;

    /// What both have.
    Region And(const Region& other) const;
    /// What either has.
    Region Or(const Region& other) const;
    /// What this one has without the other.
    Region Minus(const Region& other) const;
    /// Moves the region.
    void Offset(int dx, int dy);

    /// Whether both have the same units.
    bool operator==(const Region& other) const { return m_rects == other.m_rects; }

private:
    std::vector<RECT> m_rects;
    std::vector<POINT> m_corners;
};

}  // namespace tessalink
