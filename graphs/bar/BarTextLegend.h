#pragma once

#include <deque>

#include "graphs/bar/BarBodyLegend.h"

/// What the legends share that are filled with texts at places of the scale: the texts, and the
/// lines that lead to them.
class TESSALINK_API BarTextLegend : public BarBodyLegend {
public:
    static constexpr int cDefaultLineSize = 2;  ///< width of lines in design units

    /// Removes all texts.
    void Clear();

    /// The color of the lines.
    COLORREF GetLineColor() const { return m_lineColor; }
    /// Changes the color of the lines.
    void SetLineColor(COLORREF color) { m_lineColor = color; }
    /// The width in design units.
    int GetLineSize() const { return m_lineSize; }
    /// Changes the width of the lines, in design units.
    void SetLineSize(int size) { m_lineSize = size; }

protected:
    /// A text, and the scores that it stands for.
    struct Label {
        double from;   ///< one end, or the score of the text
        double to;     ///< the other end, or the score of the text
        CString text;  ///< line feeds make lines
    };

    /// As BarValueLegend; no texts. The lines have the color of the body.
    BarTextLegend(BarScale* scale, const char* leftDesc, const char* rightDesc, COLORREF bodyColor,
                  COLORREF descColor, int leftMargin, int rightMargin, int topMargin,
                  int bottomMargin, int descFontSize, int bodyFontSize, const char* descTypeface,
                  const char* bodyTypeface);

    /// How many texts there are.
    int label_count() const { return static_cast<int>(m_labels.size()); }
    /// The texts, in the order in which they were added.
    const std::deque<Label>& labels() const { return m_labels; }
    /// An index out of range raises CInvalidArgException, here and below.
    const Label& label_at(int index) const;
    /// Returns the index of the new label.
    int add_label(double from, double to, const char* text);
    /// Removes a text.
    void remove_label_at(int index);

    /// The lines of the highest text.
    int max_lines() const { return m_maxLines; }
    /// Counts those anew, after a text has gone.
    virtual void set_max_lines();

    /// Sets font, color and alignment of the body, and calls draw_labels.
    void draw_legend_body(CDC* dc, double xScale, double yScale, const CRect& body) override;
    /// Draws what draw_legend_body has set font, color and alignment for: centered texts.
    virtual void draw_labels(CDC* dc, double xScale, double yScale, const CRect& body) = 0;
    /// The width of the lines on the device.
    int line_width(double xScale) const;

private:
    std::deque<Label> m_labels;
    int m_maxLines = 0;
    COLORREF m_lineColor;
    int m_lineSize = cDefaultLineSize;
};
