#pragma once

#include <cstddef>
#include <vector>

#include "graphs/bar/BarBodyLegend.h"

/// Ranges of scores with texts: a bracket from one score to the other and the text in its middle.
/// Upward, the bracket opens toward the scale above and the text lies below it; downward, the text
/// comes first and the bracket opens toward a scale below.
class TESSALINK_API BarRangeLegend : public BarBodyLegend {
public:
    static constexpr int cDefaultLineSize = 2;

    /// As BarValueLegend; no ranges, upward. The brackets have the colour of the body.
    BarRangeLegend(BarScale* scale, const char* leftDesc, const char* rightDesc, COLORREF bodyColor,
                   COLORREF descColor, int leftMargin, int rightMargin, int topMargin,
                   int bottomMargin, int descFontSize, int bodyFontSize, const char* descTypeface,
                   const char* bodyTypeface);

    /// Adds a range, whose text may have several lines, and returns its index. One with an end that
    /// is not a number has room, but is not drawn.
    int AddRange(double from, double to, const char* text);
    /// An index out of range raises CInvalidArgException.
    void GetRangeInfo(int index, double& from, double& to, CString& text) const;
    void RemoveRangeAt(int index);
    void Clear();
    int GetRangeCount() const { return static_cast<int>(m_ranges.size()); }

    void SetDirectionUp(int up) { m_directionUp = up; }
    int DirectionIsUp() const { return m_directionUp; }
    COLORREF GetLineColor() const { return m_lineColor; }
    void SetLineColor(COLORREF color) { m_lineColor = color; }
    /// The width in design units.
    int GetLineSize() const { return m_lineSize; }
    void SetLineSize(int size) { m_lineSize = size; }

protected:
    int get_design_body_height() const override;
    void draw_legend_body(CDC* dc, double xScale, double yScale, const CRect& body) override;
    virtual void draw_ranges(CDC* dc, double xScale, double yScale, const CRect& body);
    /// Counts the lines of the highest text anew, after a range has gone.
    virtual void set_max_lines();

private:
    struct Range {
        double from;
        double to;
        CString text;
    };

    std::size_t checked(int index) const;
    int bracket_height() const;
    void draw_bracket(CDC& dc, int left, int right, const CRect& bracket) const;

    std::vector<Range> m_ranges;
    int m_maxLines = 0;
    int m_directionUp = 1;
    COLORREF m_lineColor;
    int m_lineSize = cDefaultLineSize;
};
