#pragma once

#include "graphs/bar/BarLegend.h"

/// What the legends with texts in their body share: color and font of those.
class TESSALINK_API BarBodyLegend : public BarLegend {
public:
    COLORREF GetBodyColor() const { return m_bodyColor; }
    void SetBodyColor(COLORREF color) { m_bodyColor = color; }
    /// The line height in design units.
    int GetBodyFontSize() const { return m_bodyFontSize; }
    void SetBodyFontSize(int size) { m_bodyFontSize = size; }
    CString GetBodyTypeface() const { return m_bodyTypeface; }
    void SetBodyTypeface(const char* typeface) { m_bodyTypeface = typeface; }

protected:
    BarBodyLegend(BarScale* scale, const char* leftDesc, const char* rightDesc, COLORREF bodyColor,
                  COLORREF descColor, int leftMargin, int rightMargin, int topMargin,
                  int bottomMargin, int descFontSize, int bodyFontSize, const char* descTypeface,
                  const char* bodyTypeface);

    void create_body_font(int height, CFont& font) override;

private:
    COLORREF m_bodyColor;
    int m_bodyFontSize;
    CString m_bodyTypeface;
};
