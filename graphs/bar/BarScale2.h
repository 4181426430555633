#pragma once

#include "graphs/bar/BarScale.h"

/// A bar scale whose box is filled with a color of its own.
class TESSALINK_API BarScale2 : public BarScale {
public:
    /// As BarScale; the box is white.
    using BarScale::BarScale;
    ~BarScale2() override;

    /// The color of the box; white at first.
    COLORREF GetBoxFillColor() const { return m_boxFillColor; }
    /// Changes the color of the box.
    void SetBoxFillColor(COLORREF color) { m_boxFillColor = color; }

protected:
    /// Fills the box with its color, and draws it.
    void draw_bar(CDC* dc, double xScale, const CRect& box) override;

private:
    COLORREF m_boxFillColor = cWhite;
};
