#pragma once

#include "graphs/bar/BarLegend.h"

/// What the legends with texts in their body share: color and font of those.
class TESSALINK_API BarBodyLegend : public BarLegend {
public:
    /// The color of the texts in the body.
    COLORREF GetBodyColor() const { return m_bodyColor; }
    /// Changes the color of the texts in the body.
    void SetBodyColor(COLORREF color) { m_bodyColor = color; }
    /// The line height in design units.
    int GetBodyFontSize() const { return m_bodyFontSize; }
    /// Changes the line height, in design units.
    void SetBodyFontSize(int size) { m_bodyFontSize = size; }
    /// The face of the texts in the body.
    CString GetBodyTypeface() const { return m_bodyTypeface; }
    /// Changes the face of the texts in the body.
    void SetBodyTypeface(const char* typeface) { m_bodyTypeface = typeface; }

protected:
    /// For derived legends. The body comes first: its color before that of the descriptions.
    BarBodyLegend(BarScale* scale, const char* leftDesc, const char* rightDesc, COLORREF bodyColor,
                  COLORREF descColor, int leftMargin, int rightMargin, int topMargin,
                  int bottomMargin, int descFontSize, int bodyFontSize, const char* descTypeface,
                  const char* bodyTypeface);

    /// Creates the font of the body, as high as told, in device units.
    void create_body_font(int height, CFont& font) override;

private:
    COLORREF m_bodyColor;
    int m_bodyFontSize;
    CString m_bodyTypeface;
};
