#pragma once

#include "graphs/bar/BarTextLegend.h"

/// Texts at scores, each centered under its score, if wanted with a short line up to the scale.
class TESSALINK_API BarSimpleLegend : public BarTextLegend {
public:
    /// As BarValueLegend; no texts, and no lines. The lines have the color of the body.
    BarSimpleLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                    COLORREF bodyColor, COLORREF descColor, int leftMargin, int rightMargin,
                    int topMargin, int bottomMargin, int descFontSize, int bodyFontSize,
                    const char* descTypeface, const char* bodyTypeface);

    /// Adds a text, which may have several lines, and returns its index. One at not-a-number has
    /// room, but is not drawn.
    int AddText(double value, const char* text) { return add_label(value, value, text); }
    /// An index out of range raises CInvalidArgException.
    void GetTextInfo(int index, double& value, CString& text) const;
    /// Removes a text; an index out of range raises CInvalidArgException.
    void RemoveTextAt(int index) { remove_label_at(index); }
    /// How many texts there are.
    int GetTextCount() const { return label_count(); }

    /// Whether lines lead from the top of the body to the texts.
    int GetUseLine() const { return m_useLine; }
    /// Nonzero for lines that lead from the top of the body to the texts.
    void SetUseLine(int use) { m_useLine = use; }
    /// PS_SOLID to PS_DASHDOTDOT; dashes are short enough for every line to show several.
    UINT GetLineStyle() const { return m_lineStyle; }
    /// Changes the style of the lines.
    void SetLineStyle(UINT style) { m_lineStyle = style; }

protected:
    int get_design_body_height() const override;
    void draw_labels(CDC* dc, double xScale, double yScale, const CRect& body) override;
    /// Draws the lines and texts.
    virtual void draw_texts(CDC* dc, double xScale, double yScale, const CRect& body);

private:
    int line_height() const;

    int m_useLine = 0;
    UINT m_lineStyle = PS_SOLID;
};
