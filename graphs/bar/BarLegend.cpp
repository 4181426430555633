#include "graphs/bar/BarLegend.h"

#include <algorithm>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/GraphFont.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::toDevice;

BarLegend::BarLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                     COLORREF descColor, int leftMargin, int rightMargin, int topMargin,
                     int bottomMargin, int descFontSize, const char* descTypeface)
    : BarSection(leftMargin, rightMargin, topMargin, bottomMargin),
      m_scale(scale),
      m_descColor(descColor),
      m_descFontSize(descFontSize),
      m_descTypeface(descTypeface) {
    if (scale != nullptr) m_scaleLife = scale->m_life;
    BarLegend::SetLeftDesc(leftDesc);
    BarLegend::SetRightDesc(rightDesc);
}

void BarLegend::SetLeftDesc(const char* text) {
    m_leftDesc = text;
    m_leftDescLines = KOVGraphUtilities::CountLines(text);
}

void BarLegend::SetRightDesc(const char* text) {
    m_rightDesc = text;
    m_rightDescLines = KOVGraphUtilities::CountLines(text);
}

int BarLegend::GetLeftTextWidth() const {
    const BarScale* const scale = GetScale();
    return scale != nullptr ? scale->GetLeftTextWidth() : 0;
}

int BarLegend::GetRightTextWidth() const {
    const BarScale* const scale = GetScale();
    return scale != nullptr ? scale->GetRightTextWidth() : 0;
}

int BarLegend::GetDesignHeight() const {
    const int lines = std::max(m_leftDescLines, m_rightDescLines);
    return GetTopMargin() + GetBottomMargin() +
           std::max(m_descFontSize * lines, get_design_body_height());
}

void BarLegend::Draw(CDC* dc, double xScale, double yScale, const CRect& rect) {
    if (dc == nullptr || GetScale() == nullptr) return;
    CRect body = rect;
    body.DeflateRect(toDevice((GetLeftMargin() + GetLeftTextWidth()) * xScale),
                     toDevice(GetTopMargin() * yScale),
                     toDevice((GetRightMargin() + GetRightTextWidth()) * xScale),
                     toDevice(GetBottomMargin() * yScale));
    draw_descriptions(*dc, xScale, yScale, rect, body);
    const tessalink::RestoredState restored(*dc);
    draw_legend_body(dc, xScale, yScale, body);
}

void BarLegend::draw_descriptions(CDC& dc, double xScale, double yScale, const CRect& rect,
                                  const CRect& body) {
    const int lineHeight = toDevice(m_descFontSize * yScale);
    const auto top = [&](int lines, std::uint16_t alignment) {
        const int rest = body.Height() - lines * lineHeight;
        return body.top + ((alignment & cMiddle) != 0   ? halved(rest)
                           : (alignment & cBottom) != 0 ? rest
                                                        : 0);
    };
    CFont font;
    create_font(lineHeight, font);
    const tessalink::RestoredState restored(dc);
    dc.SelectObject(&font);
    const int gap = dc.GetTextExtent("M", 1).cx;
    dc.SetTextColor(m_descColor);
    draw_left_desc(
        &dc, xScale,
        CRect(rect.left, top(m_leftDescLines, m_leftAlignment), body.left - gap, rect.bottom));
    draw_right_desc(
        &dc, xScale,
        CRect(body.right + gap, top(m_rightDescLines, m_rightAlignment), rect.right, rect.bottom));
}

void BarLegend::create_font(int height, CFont& font) {
    tessalink::createBarFont(font, height, m_descTypeface);
}

void BarLegend::draw_left_desc(CDC* dc, double xScale, const CRect& column) {
    if (m_leftDescLines == 0 || GetLeftTextWidth() == 0) return;
    int x = column.left + toDevice(GetLeftMargin() * xScale);
    UINT align = TA_LEFT;
    if ((m_leftAlignment & cRight) != 0) {
        x = column.right;
        align = TA_RIGHT;
    } else if ((m_leftAlignment & cCenter) != 0) {
        x = column.left + halved(column.Width());
        align = TA_CENTER;
    }
    const UINT before = dc->SetTextAlign(align);
    print_multi_lines(dc, x, column.top, m_leftDesc);
    dc->SetTextAlign(before);
}

void BarLegend::draw_right_desc(CDC* dc, double xScale, const CRect& column) {
    if (m_rightDescLines == 0 || GetRightTextWidth() == 0) return;
    int x = column.left;
    UINT align = TA_LEFT;
    if ((m_rightAlignment & cRight) != 0) {
        x = column.right - toDevice(GetRightMargin() * xScale);
        align = TA_RIGHT;
    } else if ((m_rightAlignment & cCenter) != 0) {
        x = column.left + halved(column.Width());
        align = TA_CENTER;
    }
    const UINT before = dc->SetTextAlign(align);
    print_multi_lines(dc, x, column.top, m_rightDesc);
    dc->SetTextAlign(before);
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts override this signature
void BarLegend::print_multi_lines(CDC* dc, int x, int y, CString text) {
    KOVGraphUtilities::PrintMultipleLines(dc, x, y, text);
}
