#pragma once

#include "graphs/bar/BarGraphic.h"
#include "platform/graphics/Colors.h"

/// A symbol at one score, in the middle of the bar.
class TESSALINK_API BarPointGraphic : public BarGraphic {
public:
    /// The symbols that there are.
    enum Symbol : int {
        Circle,
        Square,
        Triangle,  ///< point up
        Diamond,
        HollowCircle,
        HollowSquare,
        HollowTriangle,
        HollowDiamond
    };

    static constexpr int cDefaultSize = 15;              ///< height of the symbol in design units
    static constexpr COLORREF cDefaultColor = 0x800000;  ///< a dark blue
    static constexpr int cDefaultLineSize = 2;           ///< width of the outline in design units

    /// `size` is the height of the symbol in design units, at most that of the bar; `lineSize` the
    /// width of its outline.
    explicit BarPointGraphic(double value = 0, int size = cDefaultSize,
                             COLORREF color = cDefaultColor, Symbol symbol = Diamond,
                             int lineSize = cDefaultLineSize)
        : m_value(value), m_size(size), m_lineSize(lineSize), m_color(color), m_symbol(symbol) {}

    /// A score beyond the plotted range of the scale is drawn at its end, not-a-number nowhere.
    void Draw(CDC* dc, double xScale, double yScale, const CRect& box) override;

    /// The score that is marked.
    double GetValue() const { return m_value; }
    /// Changes the score that is marked.
    void SetValue(double value) { m_value = value; }
    /// The height of the symbol in design units.
    int GetSize() const { return m_size; }
    /// Changes the height of the symbol, in design units.
    void SetSize(int size) { m_size = size; }
    /// The color of the symbol.
    COLORREF GetColor() const { return m_color; }
    /// Changes the color of the symbol.
    void SetColor(COLORREF color) { m_color = color; }
    /// The symbol.
    Symbol GetSymbol() const { return m_symbol; }
    /// A number of no symbol draws nothing.
    void SetSymbol(Symbol symbol) { m_symbol = symbol; }

protected:
    /// Draws the symbol around a point; the radii are in device units.
    virtual void draw_symbol(CDC* dc, int x, int y, double xScale, int rx, int ry);

private:
    double m_value;
    int m_size;
    int m_lineSize;
    COLORREF m_color;
    Symbol m_symbol;
};
