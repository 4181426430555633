#pragma once

#include "graphs/profile/detail/LabelGrid.h"
#include "platform/graphics/Geometry.h"

namespace tessalink {

/// Finds places for the names of points in a circle, where they cover nothing that is taken.
class NamePlaces {
public:
    /// The circle's middle and half axes, and what is to be left free.
    struct Circle {
        CPoint middle;
        CSize radii;
        CSize offset;  ///< from the middle of a symbol to its name
        CSize rimGap;  ///< between a name and the rim
    };

    NamePlaces(const CRect& sheet, const Circle& circle) : m_grid(sheet), m_circle(circle) {}

    void Take(const CRect& place) { m_grid.Take(place); }
    /// A place for a name of this size at a point: rather on the side away from the middle, near,
    /// and not over the rim. Where all are taken, the first that would have been tried.
    CRect Find(POINT point, CSize size) const;

private:
    struct Direction;
    CRect at(POINT point, const Direction& direction, double distance, CSize size) const;
    bool meets_rim(CRect place) const;

    LabelGrid m_grid;
    Circle m_circle;
};

}  // namespace tessalink
