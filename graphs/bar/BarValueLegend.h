#pragma once

#include "graphs/bar/BarBodyLegend.h"

/// Labels the scores of a scale: one at either end, and further ones in steps between them.
class TESSALINK_API BarValueLegend : public BarBodyLegend {
public:
    /// The labels are taken from the scale's major ticks at this moment. The color of the body
    /// comes before that of the descriptions.
    BarValueLegend(BarScale* scale, const char* leftDesc, const char* rightDesc, COLORREF bodyColor,
                   COLORREF descColor, int leftMargin, int rightMargin, int topMargin,
                   int bottomMargin, int descFontSize, int bodyFontSize, const char* descTypeface,
                   const char* bodyTypeface);

    /// The score of the label at the lower end.
    int GetFirstLabelPos() const { return m_firstLabelPos; }
    /// Changes the score of the label at the lower end.
    void SetFirstLabelPos(int score) { m_firstLabelPos = score; }
    /// The score of the label at the upper end.
    int GetLastLabelPos() const { return m_lastLabelPos; }
    /// Changes the score of the label at the upper end.
    void SetLastLabelPos(int score) { m_lastLabelPos = score; }
    /// Where the steps start; the first label that counts lies above the one at the lower end.
    int GetLabelCalcStart() const { return m_labelCalcStart; }
    /// Changes where the steps start.
    void SetLabelCalcStart(int score) { m_labelCalcStart = score; }
    /// The step; 0 and less make no labels between the ends.
    int GetLabelDelta() const { return m_labelDelta; }
    /// Changes the step.
    void SetLabelDelta(int delta) { m_labelDelta = delta; }

protected:
    int get_design_body_height() const override { return GetBodyFontSize(); }
    /// Draws the labels, each centered under its score.
    void draw_legend_body(CDC* dc, double xScale, double yScale, const CRect& body) override;
    /// The text of a label: the score in decimal.
    virtual CString format_value(int value);

private:
    void draw_end_label(CDC& dc, int score, const CRect& body);

    int m_firstLabelPos = 0;
    int m_lastLabelPos = 0;
    int m_labelCalcStart = 0;
    int m_labelDelta = 0;
};
