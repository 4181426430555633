#include "graphs/bar/BarSimpleLegend.h"

#include <cmath>

#include "graphs/common/DashedPath.h"
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
    const int width = line_width(xScale);
    const int length = tessalink::toDevice(line_height() * yScale);
    const int top = body.top + length;
    // The dashes are drawn one by one: those of pens are longer than these lines.
    CPen pen(m_lineStyle <= PS_DASHDOTDOT ? UINT{PS_SOLID} : m_lineStyle, width, GetLineColor());
    const tessalink::Selected selected(*dc, &pen);
    auto path = tessalink::DashedPath::Fitted(static_cast<int>(m_lineStyle), width, length);
    for (const Label& label : labels()) {
        if (std::isnan(label.from)) continue;
        const int x = GetScale()->PixXUnrestricted(label.from, body);
        if (m_useLine != 0) {
            path.MoveTo({x, body.top});
            path.LineTo(*dc, {x, top});
        }
        print_multi_lines(dc, x, top, label.text);
    }
}
