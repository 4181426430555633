#pragma once

#include "graphs/bar/BarScale.h"

/// A bar scale whose box is filled with a color of its own.
class TESSALINK_API BarScale2 : public BarScale {
public:
    /// As BarScale; the box is white.
    using BarScale::BarScale;
    ~BarScale2() override;

    COLORREF GetBoxFillColor() const { return m_boxFillColor; }
    void SetBoxFillColor(COLORREF color) { m_boxFillColor = color; }

protected:
    void draw_bar(CDC* dc, double xScale, const CRect& box) override;

private:
    COLORREF m_boxFillColor = cWhite;
};
