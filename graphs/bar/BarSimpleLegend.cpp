#include "graphs/bar/BarSimpleLegend.h"

#include <cmath>

#include "graphs/common/DeviceUnits.h"
#include "platform/graphics/DCScope.h"

BarSimpleLegend::BarSimpleLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                                 COLORREF bodyColor, COLORREF descColor, int leftMargin,
                                 int rightMargin, int topMargin, int bottomMargin, int descFontSize,
                                 int bodyFontSize, const char* descTypeface,
                                 const char* bodyTypeface)
    : BarTextLegend(scale, leftDesc, rightDesc, bodyColor, descColor, leftMargin, rightMargin,
                    topMargin, bottomMargin, descFontSize, bodyFontSize, descTypeface,
                    bodyTypeface) {}

void BarSimpleLegend::GetTextInfo(int index, double& value, CString& text) const {
    const Label& label = label_at(index);
    value = label.from;
    text = label.text;
}

int BarSimpleLegend::line_height() const {
    return m_useLine != 0 ? tessalink::halved(GetBodyFontSize()) : 0;
}

int BarSimpleLegend::get_design_body_height() const {
    return line_height() + max_lines() * GetBodyFontSize();
}

void BarSimpleLegend::draw_labels(CDC* dc, double xScale, double yScale, const CRect& body) {
    draw_texts(dc, xScale, yScale, body);
}

void BarSimpleLegend::draw_texts(CDC* dc, double xScale, double yScale, const CRect& body) {
    CPen pen(m_lineStyle, line_width(xScale), GetLineColor());
    const tessalink::Selected selected(*dc, &pen);
    const int top = body.top + tessalink::toDevice(line_height() * yScale);
    for (const Label& label : labels()) {
        if (std::isnan(label.from)) continue;
        const int x = GetScale()->PixXUnrestricted(label.from, body);
        if (m_useLine != 0) {
            dc->MoveTo(x, body.top);
            dc->LineTo(x, top);
        }
        print_multi_lines(dc, x, top, label.text);
    }
}
