#include "graphs/bar/BarBodyLegend.h"

#include "graphs/common/GraphFont.h"

BarBodyLegend::BarBodyLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                             COLORREF bodyColor, COLORREF descColor, int leftMargin,
                             int rightMargin, int topMargin, int bottomMargin, int descFontSize,
                             int bodyFontSize, const char* descTypeface, const char* bodyTypeface)
    : BarLegend(scale, leftDesc, rightDesc, descColor, leftMargin, rightMargin, topMargin,
                bottomMargin, descFontSize, descTypeface),
      m_bodyColor(bodyColor),
      m_bodyFontSize(bodyFontSize),
      m_bodyTypeface(bodyTypeface) {}

void BarBodyLegend::create_body_font(int height, CFont& font) {
    tessalink::createBarFont(font, height, m_bodyTypeface);
}
