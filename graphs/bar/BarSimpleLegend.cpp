#include "graphs/bar/BarSimpleLegend.h"

#include <algorithm>
#include <cmath>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::Selected;
using tessalink::toDevice;

BarSimpleLegend::BarSimpleLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                                 COLORREF bodyColor, COLORREF descColor, int leftMargin,
                                 int rightMargin, int topMargin, int bottomMargin, int descFontSize,
                                 int bodyFontSize, const char* descTypeface,
                                 const char* bodyTypeface)
    : BarBodyLegend(scale, leftDesc, rightDesc, bodyColor, descColor, leftMargin, rightMargin,
                    topMargin, bottomMargin, descFontSize, bodyFontSize, descTypeface,
                    bodyTypeface),
      m_lineColor(bodyColor) {}

int BarSimpleLegend::AddText(double value, const char* text) {
    m_texts.push_back({value, text});
    m_maxLines = std::max(m_maxLines, KOVGraphUtilities::CountLines(text));
    return GetTextCount() - 1;
}

void BarSimpleLegend::GetTextInfo(int index, double& value, CString& text) const {
    const Text& info = m_texts[checked(index)];
    value = info.value;
    text = info.text;
}

void BarSimpleLegend::RemoveTextAt(int index) {
    m_texts.erase(m_texts.begin() + static_cast<std::ptrdiff_t>(checked(index)));
    set_max_lines();
}

void BarSimpleLegend::Clear() {
    m_texts.clear();
    set_max_lines();
}

std::size_t BarSimpleLegend::checked(int index) const {
    if (index < 0 || index >= GetTextCount()) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

void BarSimpleLegend::set_max_lines() {
    m_maxLines = 0;
    for (const Text& text : m_texts) {
        m_maxLines = std::max(m_maxLines, KOVGraphUtilities::CountLines(text.text));
    }
}

int BarSimpleLegend::line_height() const {
    return m_useLine != 0 ? halved(GetBodyFontSize()) : 0;
}

int BarSimpleLegend::get_design_body_height() const {
    return tessalink::wrapAdd(line_height(), tessalink::wrapMul(m_maxLines, GetBodyFontSize()));
}

void BarSimpleLegend::draw_legend_body(CDC* dc, double xScale, double yScale, const CRect& body) {
    CFont font;
    create_body_font(toDevice(GetBodyFontSize() * yScale), font);
    const tessalink::RestoredState restored(*dc);
    dc->SelectObject(&font);
    dc->SetTextColor(GetBodyColor());
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    draw_texts(dc, xScale, yScale, body);
}

void BarSimpleLegend::draw_texts(CDC* dc, double xScale, double yScale, const CRect& body) {
    CPen pen(m_lineStyle, std::max(toDevice(m_lineSize * xScale), 1), m_lineColor);
    const Selected selected(*dc, &pen);
    const int top = tessalink::wrapAdd(body.top, toDevice(line_height() * yScale));
    for (const Text& text : m_texts) {
        if (std::isnan(text.value)) continue;
        const int x = GetScale()->PixXUnrestricted(text.value, body);
        if (m_useLine != 0) {
            dc->MoveTo(x, body.top);
            dc->LineTo(x, top);
        }
        print_multi_lines(dc, x, top, text.text);
    }
}
