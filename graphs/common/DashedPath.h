#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "platform/base/Export.h"
#include "platform/graphics/CDC.h"

namespace tessalink {

/// Draws lines through points in the context's pen, in dashes and dots of any width: pens have
/// dashes only where they are one unit wide. The pattern goes on around the corners.
class TESSALINK_API DashedPath {
public:
    /// `style` is from PS_SOLID to PS_DASHDOTDOT, others are solid; `unit` is the length of a dot
    /// in device units, of which a dash has five, and at least 1 counts.
    DashedPath(int style, double unit);
    /// The same for a single short line of this length, which is to be seen as dashed: with a unit
    /// that lets its pattern come twice, and below 1 if need be.
    static DashedPath Fitted(int style, double unit, double length);

    /// Starts a line.
    void MoveTo(POINT point);
    /// Draws from the last point to this one.
    void LineTo(CDC& dc, POINT point);

private:
    explicit DashedPath(std::vector<double> lengths) : m_lengths(std::move(lengths)) {}
    void draw_dashes(CDC& dc, POINT end);

    std::vector<double> m_lengths;  ///< dash, gap, dash ...; empty: solid
    POINT m_from{};
    std::size_t m_piece = 0;
    double m_left = 0;  ///< what is left of the piece
};

}  // namespace tessalink
