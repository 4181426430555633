#pragma once

#include <cstddef>
#include <vector>

#include "graphs/bar/BarBodyLegend.h"

/// Texts at scores, each centred under its score, if wanted with a short line up to the scale.
class TESSALINK_API BarSimpleLegend : public BarBodyLegend {
public:
    static constexpr int cDefaultLineSize = 2;

    /// As BarValueLegend; no texts, and no lines. The lines have the colour of the body.
    BarSimpleLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                    COLORREF bodyColor, COLORREF descColor, int leftMargin, int rightMargin,
                    int topMargin, int bottomMargin, int descFontSize, int bodyFontSize,
                    const char* descTypeface, const char* bodyTypeface);

    /// Adds a text, which may have several lines, and returns its index. One at not-a-number has
    /// room, but is not drawn.
    int AddText(double value, const char* text);
    /// An index out of range raises CInvalidArgException.
    void GetTextInfo(int index, double& value, CString& text) const;
    void RemoveTextAt(int index);
    void Clear();
    int GetTextCount() const { return static_cast<int>(m_texts.size()); }

    /// Whether lines lead from the top of the body to the texts.
    int GetUseLine() const { return m_useLine; }
    void SetUseLine(int use) { m_useLine = use; }
    COLORREF GetLineColor() const { return m_lineColor; }
    void SetLineColor(COLORREF color) { m_lineColor = color; }
    /// The width in design units.
    int GetLineSize() const { return m_lineSize; }
    void SetLineSize(int size) { m_lineSize = size; }
    /// PS_SOLID, PS_DASH ...; dashes need a line that is one device unit wide.
    UINT GetLineStyle() const { return m_lineStyle; }
    void SetLineStyle(UINT style) { m_lineStyle = style; }

protected:
    int get_design_body_height() const override;
    void draw_legend_body(CDC* dc, double xScale, double yScale, const CRect& body) override;
    virtual void draw_texts(CDC* dc, double xScale, double yScale, const CRect& body);
    /// Counts the lines of the highest text anew, after a text has gone.
    virtual void set_max_lines();

private:
    struct Text {
        double value;
        CString text;
    };

    std::size_t checked(int index) const;
    int line_height() const;

    std::vector<Text> m_texts;
    int m_maxLines = 0;
    int m_useLine = 0;
    COLORREF m_lineColor;
    int m_lineSize = cDefaultLineSize;
    UINT m_lineStyle = PS_SOLID;
};
