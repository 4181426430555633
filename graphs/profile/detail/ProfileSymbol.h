#pragma once

#include <vector>

#include "platform/graphics/CDC.h"

namespace tessalink {

/// The symbols that mark scores: disc, square, triangle and diamond, then their outlines.
inline constexpr int cProfileSymbols = 8;

/// Draws a symbol of the given half size around (x, y) in the context's pen and brush; outlines
/// have no filling. Sizes wrap at 32 bits.
void drawProfileSymbol(CDC& dc, int x, int y, int size, int symbol);

/// Draws lines through points in the context's pen, in dashes and dots of any width: the pattern
/// goes on around the corners.
class DashedPath {
public:
    /// `style` is from PS_SOLID to PS_DASHDOTDOT, others are solid; `unit` is the length of a dot.
    DashedPath(int style, double unit);

    /// Starts a line.
    void MoveTo(POINT point);
    void LineTo(CDC& dc, POINT point);

private:
    void draw_dashes(CDC& dc, POINT end);

    std::vector<double> m_lengths;  ///< dash, gap, dash ...; empty: solid
    POINT m_from;
    std::size_t m_piece = 0;
    double m_left = 0;  ///< what is left of the piece
};

}  // namespace tessalink
