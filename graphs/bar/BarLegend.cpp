#include "graphs/bar/BarLegend.h"

#include <algorithm>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/GraphFont.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::Selected;
using tessalink::toDevice;

BarLegend::BarLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                     COLORREF descColor, int leftMargin, int rightMargin, int topMargin,
                     int bottomMargin, int descFontSize, const char* descTypeface)
    : BarSection(leftMargin, rightMargin, topMargin, bottomMargin),
      m_scale(scale),
      m_descColor(descColor),
      m_descFontSize(descFontSize),
      m_descTypeface(descTypeface) {
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

int BarLegend::GetDesignHeight() const {
    const int lines = std::max(m_leftDescLines, m_rightDescLines);
    return GetTopMargin() + GetBottomMargin() +
           std::max(lines == 0 ? 0 : m_descFontSize * lines, get_design_body_height());
}

void BarLegend::Draw(CDC* dc, double xScale, double yScale, const CRect& rect) {
    if (dc == nullptr) return;
    const tessalink::RestoredState restored(*dc);
    const int left = toDevice((GetLeftMargin() + GetLeftTextWidth()) * xScale);
    const int right = toDevice((GetRightMargin() + GetRightTextWidth()) * xScale);
    {
        const tessalink::RestoredState ofDescriptions(*dc);
        draw_descriptions(*dc, xScale, yScale, rect);
    }
    draw_legend_body(dc, xScale, yScale,
                     CRect(rect.left + left, rect.top + toDevice(GetTopMargin() * yScale),
                           rect.right - right, rect.bottom - toDevice(GetBottomMargin() * yScale)));
}

void BarLegend::draw_descriptions(CDC& dc, double xScale, double yScale, const CRect& rect) {
    const int left = toDevice((GetLeftMargin() + GetLeftTextWidth()) * xScale);
    const int right = toDevice((GetRightMargin() + GetRightTextWidth()) * xScale);
    const int topMargin = toDevice(GetTopMargin() * yScale);
    const int room = rect.Height() - toDevice(GetBottomMargin() * yScale) - topMargin;
    const int lineHeight = toDevice(m_descFontSize * yScale);
    const auto top = [&](int lines, std::uint16_t alignment) {
        const int left = room - lines * lineHeight;
        return rect.top + topMargin +
               ((alignment & cMiddle) != 0   ? halved(left)
                : (alignment & cBottom) != 0 ? left
                                             : 0);
    };
    CFont font;
    create_font(lineHeight, font);
    const Selected selected(dc, &font);
    const int gap = dc.GetTextExtent("M", 1).cx;
    dc.SetTextColor(m_descColor);
    draw_left_desc(&dc, xScale,
                   CRect(rect.left, top(m_leftDescLines, m_leftAlignment), rect.left + left - gap,
                         rect.bottom));
    draw_right_desc(&dc, xScale,
                    CRect(rect.right - right + gap, top(m_rightDescLines, m_rightAlignment),
                          rect.right, rect.bottom));
}

void BarLegend::create_font(int height, CFont& font) {
    constexpr BYTE pitchAndFamily = 4;
    tessalink::createGraphFont(font, height, m_descTypeface, OUT_DEFAULT_PRECIS, DEFAULT_QUALITY,
                               pitchAndFamily);
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

void BarLegend::print_multi_lines(CDC* dc, int x, int y, CString text) {
    KOVGraphUtilities::PrintMultipleLines(dc, x, y, text);
}
