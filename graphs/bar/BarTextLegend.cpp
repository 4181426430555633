#include "graphs/bar/BarTextLegend.h"

#include <algorithm>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using tessalink::toDevice;

BarTextLegend::BarTextLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                             COLORREF bodyColor, COLORREF descColor, int leftMargin,
                             int rightMargin, int topMargin, int bottomMargin, int descFontSize,
                             int bodyFontSize, const char* descTypeface, const char* bodyTypeface)
    : BarBodyLegend(scale, leftDesc, rightDesc, bodyColor, descColor, leftMargin, rightMargin,
                    topMargin, bottomMargin, descFontSize, bodyFontSize, descTypeface,
                    bodyTypeface),
      m_lineColor(bodyColor) {}

const BarTextLegend::Label& BarTextLegend::label_at(int index) const {
    if (index < 0 || index >= label_count()) AfxThrowInvalidArgException();
    return m_labels[static_cast<std::size_t>(index)];
}

int BarTextLegend::add_label(double from, double to, const char* text) {
    m_labels.push_back({from, to, text});
    m_maxLines = std::max(m_maxLines, KOVGraphUtilities::CountLines(text));
    return label_count() - 1;
}

void BarTextLegend::remove_label_at(int index) {
    label_at(index);
    m_labels.erase(m_labels.begin() + index);
    set_max_lines();
}

void BarTextLegend::Clear() {
    m_labels.clear();
    set_max_lines();
}

void BarTextLegend::set_max_lines() {
    m_maxLines = 0;
    for (const Label& label : m_labels) {
        m_maxLines = std::max(m_maxLines, KOVGraphUtilities::CountLines(label.text));
    }
}

int BarTextLegend::line_width(double xScale) const {
    return std::max(toDevice(m_lineSize * xScale), 1);
}

void BarTextLegend::draw_legend_body(CDC* dc, double xScale, double yScale, const CRect& body) {
    CFont font;
    create_body_font(toDevice(GetBodyFontSize() * yScale), font);
    const tessalink::RestoredState restored(*dc);
    dc->SelectObject(&font);
    dc->SetTextColor(GetBodyColor());
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    draw_labels(dc, xScale, yScale, body);
}
