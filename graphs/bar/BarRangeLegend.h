#pragma once

#include "graphs/bar/BarTextLegend.h"

/// Ranges of scores with texts: a bracket from one score to the other and the text in its middle.
/// Upward, the bracket opens toward the scale above and the text lies below it; downward, the text
/// comes first and the bracket opens toward a scale below.
class TESSALINK_API BarRangeLegend : public BarTextLegend {
public:
    /// As BarValueLegend; no ranges, upward. The brackets have the color of the body.
    BarRangeLegend(BarScale* scale, const char* leftDesc, const char* rightDesc, COLORREF bodyColor,
                   COLORREF descColor, int leftMargin, int rightMargin, int topMargin,
                   int bottomMargin, int descFontSize, int bodyFontSize, const char* descTypeface,
                   const char* bodyTypeface);

    /// Adds a range, whose text may have several lines, and returns its index. One with an end that
    /// is not a number has room, but is not drawn.
    int AddRange(double from, double to, const char* text) { return add_label(from, to, text); }
    /// An index out of range raises CInvalidArgException.
    void GetRangeInfo(int index, double& from, double& to, CString& text) const;
    /// Removes a range; an index out of range raises CInvalidArgException.
    void RemoveRangeAt(int index) { remove_label_at(index); }
    /// How many ranges there are.
    int GetRangeCount() const { return label_count(); }

    /// Nonzero for brackets that open toward the scale above.
    void SetDirectionUp(int up) { m_directionUp = up; }
    /// Whether brackets open toward the scale above.
    int DirectionIsUp() const { return m_directionUp; }

protected:
    int get_design_body_height() const override;
    void draw_labels(CDC* dc, double xScale, double yScale, const CRect& body) override;
    /// Draws the brackets and texts.
    virtual void draw_ranges(CDC* dc, double xScale, double yScale, const CRect& body);

private:
    int bracket_height() const;
    void draw_bracket(CDC& dc, int left, int right, const CRect& bracket) const;

    int m_directionUp = 1;
};
