#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "graphs/bar/BarGraphic.h"
#include "graphs/bar/BarSection.h"
#include "platform/base/CString.h"

/// The section with the measuring bar: a box from one score to another with ticks, a description on
/// either side, and marks at scores, which it owns. The box is filled with the brush that the
/// context has.
class TESSALINK_API BarScale : public BarSection {
public:
    static constexpr int cDefaultLineSize = 2;  ///< width of lines in design units

    /// `scaleMin` and `scaleMax` are the scores at the ends of the box, which must differ; text
    /// widths are what the descriptions have room for, 0 for none. Ticks are drawn from `tickStart`
    /// to `tickEnd`, cut to the plotted range as it is given here, in steps of `majTick` and
    /// `minTick`, where 0 and less draw none. `fontSize` is the line height of the descriptions; a
    /// `barHeight` of 0 is one and a half of it. Marks are held within `minPlotVal` and
    /// `maxPlotVal`, which are cut to the scale.
    BarScale(int scaleMin, int scaleMax, const char* leftDesc, const char* rightDesc,
             int leftTextWidth, int rightTextWidth, int majTick, int minTick, int tickStart,
             int tickEnd, int leftMargin, int rightMargin, int topMargin, int bottomMargin,
             int fontSize, int barHeight, int minPlotVal, int maxPlotVal);
    ~BarScale() override;
    BarScale(const BarScale&) = delete;
    BarScale& operator=(const BarScale&) = delete;

    /// The bar or the lines of the higher description, and the margins.
    int GetDesignHeight() const override;
    void Draw(CDC* dc, double xScale, double yScale, const CRect& rect) override;

    /// Where a score lies on a device on which the box has this place; a score beyond the plotted
    /// range lies at its end. Everything on the scale is placed by these two.
    virtual int PixX(double value, const CRect& box) const;
    /// The same for any score, inside the box or not.
    virtual int PixXUnrestricted(double value, const CRect& box) const;

    /// Takes the mark over and returns its index; null is no mark, and -1.
    virtual int AddGraphic(BarGraphic* graphic);
    /// Deletes all marks, in their order.
    virtual void Clear();
    /// An index out of range raises CInvalidArgException, here and below.
    virtual void RemoveGraphicAt(int index);
    /// The mark at an index; it stays the scale's.
    BarGraphic* GetGraphic(int index) const;
    /// How many marks there are.
    int GetGraphicCount() const { return static_cast<int>(m_graphics.size()); }

    /// The score at the left end of the box.
    int GetScaleMin() const { return m_scaleMin; }
    /// The score at the right end of the box.
    int GetScaleMax() const { return m_scaleMax; }
    /// The text left of the box.
    CString GetLeftDesc() const { return m_leftDesc; }
    /// The text right of the box.
    CString GetRightDesc() const { return m_rightDesc; }
    /// Line feeds make lines.
    void SetLeftDesc(const char* text);
    /// Line feeds make lines.
    void SetRightDesc(const char* text);
    /// The room for the left text, in design units.
    int GetLeftTextWidth() const { return m_leftTextWidth; }
    /// The room for the right text, in design units.
    int GetRightTextWidth() const { return m_rightTextWidth; }
    /// The step of the major ticks; 0 and less for none.
    int GetMajTick() const { return m_majTick; }
    /// The step of the minor ticks; 0 and less for none.
    int GetMinTick() const { return m_minTick; }
    /// The score that ticks start at.
    int GetTickStart() const { return m_tickStart; }
    /// The score that ticks end at.
    int GetTickEnd() const { return m_tickEnd; }
    /// The line height of the descriptions, in design units.
    int GetFontSize() const { return m_fontSize; }
    /// The height of the box, in design units.
    int GetBarHeight() const { return m_barHeight; }
    /// The lowest score that marks are drawn at.
    int GetMinPlotVal() const { return m_minPlotVal; }
    /// The highest score that marks are drawn at.
    int GetMaxPlotVal() const { return m_maxPlotVal; }
    /// The face of the descriptions.
    CString GetTypeface() const { return m_typeface; }
    /// Changes the face of the descriptions.
    void SetTypeface(const char* typeface) { m_typeface = typeface; }
    /// The width of the lines in design units; minor ticks are half as wide.
    int GetLineSize() const { return m_lineSize; }
    /// Changes the width of the lines, in design units.
    void SetLineSize(int size) { m_lineSize = size; }
    /// The color of the box's outline.
    COLORREF GetBoxColor() const { return m_boxColor; }
    /// Changes the color of the box's outline.
    void SetBoxColor(COLORREF color) { m_boxColor = color; }
    /// The color of minor ticks.
    COLORREF GetMinTickColor() const { return m_minTickColor; }
    /// Changes the color of minor ticks.
    void SetMinTickColor(COLORREF color) { m_minTickColor = color; }
    /// The color of major ticks.
    COLORREF GetMajTickColor() const { return m_majTickColor; }
    /// Changes the color of major ticks.
    void SetMajTickColor(COLORREF color) { m_majTickColor = color; }
    /// The color of the descriptions.
    COLORREF GetDescColor() const { return m_descColor; }
    /// Changes the color of the descriptions.
    void SetDescColor(COLORREF color) { m_descColor = color; }

protected:
    /// The first step of Draw: computes the widths of lines. Widths of lines are those of the
    /// device. What is drawn from draw_bar on finds the font of the descriptions selected, if there
    /// are any, and their color set.
    virtual void calc_line_sizes(double xScale);
    /// Creates the font of the descriptions, as high as told, in device units.
    virtual void create_font(int height, CFont& font);
    /// Draws the box, its ticks and what else lies below the marks.
    virtual void draw_bar(CDC* dc, double xScale, const CRect& box);
    /// Draws the marks, in their order.
    virtual void draw_graphics(CDC* dc, double xScale, double yScale, const CRect& box);
    /// Prints a description, which may have several lines.
    virtual void print_multi_lines(CDC* dc, int x, int y, CString text);

private:
    friend class BarLegend;  ///< notices by m_life when its scale is gone

    std::size_t checked(int index) const;
    /// Creates the font, which stays selected, if there is anything to print beside the box.
    void draw_descriptions(CDC& dc, CFont& font, const CRect& box, double yScale,
                           const CRect& rect);
    void draw_ticks(CDC& dc, int step, int width, COLORREF color, const CRect& box);

    int m_scaleMin;
    int m_scaleMax;
    CString m_leftDesc;
    CString m_rightDesc;
    int m_leftDescLines = 0;
    int m_rightDescLines = 0;
    int m_leftTextWidth;
    int m_rightTextWidth;
    int m_majTick;
    int m_minTick;
    int m_tickStart;
    int m_tickEnd;
    int m_fontSize;
    int m_barHeight;
    int m_minPlotVal;
    int m_maxPlotVal;
    CString m_typeface = "Arial";
    int m_lineSize = cDefaultLineSize;
    int m_boxLineWidth = 1;
    int m_majTickLineWidth = 1;
    int m_minTickLineWidth = 1;
    COLORREF m_boxColor = cBlack;
    COLORREF m_minTickColor = cBlack;
    COLORREF m_majTickColor = cBlack;
    COLORREF m_descColor = cBlack;
    std::vector<std::unique_ptr<BarGraphic>> m_graphics;
    std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
};
