#include "graphs/bar/BarValueLegend.h"

#include <cstdint>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/FormattedText.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"

BarValueLegend::BarValueLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                               COLORREF bodyColor, COLORREF descColor, int leftMargin,
                               int rightMargin, int topMargin, int bottomMargin, int descFontSize,
                               int bodyFontSize, const char* descTypeface, const char* bodyTypeface)
    : BarBodyLegend(scale, leftDesc, rightDesc, bodyColor, descColor, leftMargin, rightMargin,
                    topMargin, bottomMargin, descFontSize, bodyFontSize, descTypeface,
                    bodyTypeface) {
    if (scale == nullptr) return;
    m_firstLabelPos = m_labelCalcStart = scale->GetTickStart();
    m_lastLabelPos = scale->GetTickEnd();
    m_labelDelta = scale->GetMajTick();
}

CString BarValueLegend::format_value(int value) {
    return tessalink::formatInt(value, 0, -1);
}

void BarValueLegend::draw_end_label(CDC& dc, int score, const CRect& body) {
    dc.TextOut(GetScale()->PixXUnrestricted(score, body), body.top, format_value(score));
}

void BarValueLegend::draw_legend_body(CDC* dc, double, double yScale, const CRect& body) {
    CFont font;
    create_body_font(tessalink::toDevice(GetBodyFontSize() * yScale), font);
    const tessalink::RestoredState restored(*dc);
    dc->SelectObject(&font);
    dc->SetTextColor(GetBodyColor());
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    draw_end_label(*dc, m_firstLabelPos, body);
    draw_end_label(*dc, m_lastLabelPos, body);
    if (m_labelDelta <= 0) return;
    std::int64_t score = m_labelCalcStart;
    if (score <= m_firstLabelPos) {
        score += (m_firstLabelPos - score) / m_labelDelta * m_labelDelta + m_labelDelta;
    }
    for (; score < m_lastLabelPos; score += m_labelDelta) {
        const int value = static_cast<int>(score);
        PrintFormatted(dc, GetScale()->PixXUnrestricted(value, body), body.top, format_value(value),
                       nullptr, nullptr, nullptr);
    }
}
