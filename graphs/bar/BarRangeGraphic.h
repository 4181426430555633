#pragma once

#include "graphs/bar/BarGraphic.h"
#include "platform/graphics/Colors.h"

/// A bar from one score to another, for instance a confidence interval.
class TESSALINK_API BarRangeGraphic : public BarGraphic {
public:
    /// The height as a part of that of the scale's bar, when nothing is said.
    static constexpr double cDefaultHeightFraction = 0.6;

    /// `lineSize` is the width of the border in design units; 0 is one device unit, and a negative
    /// size draws no border.
    BarRangeGraphic(double from, double to, COLORREF fillColor, COLORREF borderColor, int lineSize)
        : m_from(from),
          m_to(to),
          m_fillColor(fillColor),
          m_borderColor(borderColor),
          m_lineSize(lineSize) {}

    /// The range is cut to that of the scale; nothing is drawn when nothing is left, or
    /// an end is not a number.
    void Draw(CDC* dc, double xScale, double yScale, const CRect& box) override;

    /// The score at one end.
    double GetFromValue() const { return m_from; }
    /// Changes the score at one end.
    void SetFromValue(double value) { m_from = value; }
    /// The score at the other end.
    double GetToValue() const { return m_to; }
    /// Changes the score at the other end.
    void SetToValue(double value) { m_to = value; }
    /// The color of the bar.
    COLORREF GetFillColor() const { return m_fillColor; }
    /// Changes the color of the bar.
    void SetFillColor(COLORREF color) { m_fillColor = color; }
    /// The color of the border.
    COLORREF GetBorderColor() const { return m_borderColor; }
    /// Changes the color of the border.
    void SetBorderColor(COLORREF color) { m_borderColor = color; }
    /// The width of the border in design units; negative for none.
    int GetLineSize() const { return m_lineSize; }
    /// Changes the width of the border, in design units.
    void SetLineSize(int size) { m_lineSize = size; }
    /// The height as a part of that of the scale's bar.
    double GetHeightFraction() const { return m_heightFraction; }
    /// Changes the height, as a part of that of the scale's bar.
    void SetHeightFraction(double fraction) { m_heightFraction = fraction; }

protected:
    /// Draws the bar into a rectangle of device units.
    virtual void draw_bar(CDC* dc, double xScale, const CRect& rect);

private:
    double m_from;
    double m_to;
    COLORREF m_fillColor;
    COLORREF m_borderColor;
    int m_lineSize;
    double m_heightFraction = cDefaultHeightFraction;
};
