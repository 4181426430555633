#include "graphs/bar/BarRangeLegend.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::Selected;
using tessalink::toDevice;
using tessalink::wrapAdd;
using tessalink::wrapMul;
using tessalink::wrapSub;

BarRangeLegend::BarRangeLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                               COLORREF bodyColor, COLORREF descColor, int leftMargin,
                               int rightMargin, int topMargin, int bottomMargin, int descFontSize,
                               int bodyFontSize, const char* descTypeface, const char* bodyTypeface)
    : BarBodyLegend(scale, leftDesc, rightDesc, bodyColor, descColor, leftMargin, rightMargin,
                    topMargin, bottomMargin, descFontSize, bodyFontSize, descTypeface,
                    bodyTypeface),
      m_lineColor(bodyColor) {}

int BarRangeLegend::AddRange(double from, double to, const char* text) {
    m_ranges.push_back({from, to, text});
    m_maxLines = std::max(m_maxLines, KOVGraphUtilities::CountLines(text));
    return GetRangeCount() - 1;
}

void BarRangeLegend::GetRangeInfo(int index, double& from, double& to, CString& text) const {
    const Range& range = m_ranges[checked(index)];
    from = range.from;
    to = range.to;
    text = range.text;
}

void BarRangeLegend::RemoveRangeAt(int index) {
    m_ranges.erase(m_ranges.begin() + static_cast<std::ptrdiff_t>(checked(index)));
    set_max_lines();
}

void BarRangeLegend::Clear() {
    m_ranges.clear();
    set_max_lines();
}

std::size_t BarRangeLegend::checked(int index) const {
    if (index < 0 || index >= GetRangeCount()) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

void BarRangeLegend::set_max_lines() {
    m_maxLines = 0;
    for (const Range& range : m_ranges) {
        m_maxLines = std::max(m_maxLines, KOVGraphUtilities::CountLines(range.text));
    }
}

int BarRangeLegend::bracket_height() const {
    return m_ranges.empty() ? 0 : halved(GetBodyFontSize());
}

int BarRangeLegend::get_design_body_height() const {
    return wrapAdd(bracket_height(), wrapMul(m_maxLines, GetBodyFontSize()));
}

void BarRangeLegend::draw_legend_body(CDC* dc, double xScale, double yScale, const CRect& body) {
    CFont font;
    create_body_font(toDevice(GetBodyFontSize() * yScale), font);
    const tessalink::RestoredState restored(*dc);
    dc->SelectObject(&font);
    dc->SetTextColor(GetBodyColor());
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    draw_ranges(dc, xScale, yScale, body);
}

void BarRangeLegend::draw_ranges(CDC* dc, double xScale, double yScale, const CRect& body) {
    CPen pen(PS_SOLID, std::max(toDevice(m_lineSize * xScale), 1), m_lineColor);
    const Selected selected(*dc, &pen);
    const int height = toDevice(bracket_height() * yScale);
    const int lineHeight = toDevice(GetBodyFontSize() * yScale);
    const bool up = m_directionUp != 0;
    const int bracketTop = up ? body.top : wrapAdd(body.top, wrapMul(m_maxLines, lineHeight));
    const CRect bracket(body.left, bracketTop, body.right, wrapAdd(bracketTop, height));
    for (const Range& range : m_ranges) {
        if (std::isnan(range.from) || std::isnan(range.to)) continue;
        const int from = GetScale()->PixXUnrestricted(range.from, body);
        const int to = GetScale()->PixXUnrestricted(range.to, body);
        draw_bracket(*dc, std::min(from, to), std::max(from, to), bracket);
        // Downward, all texts end where the brackets begin.
        const int block = wrapMul(KOVGraphUtilities::CountLines(range.text), lineHeight);
        print_multi_lines(dc, wrapAdd(from, halved(wrapSub(to, from))),
                          up ? bracket.bottom : wrapSub(bracket.top, block), range.text);
    }
}

void BarRangeLegend::draw_bracket(CDC& dc, int left, int right, const CRect& bracket) const {
    const int middle = wrapAdd(bracket.top, halved(bracket.Height()));
    const int open = m_directionUp != 0 ? bracket.top : bracket.bottom;
    const std::array<POINT, 4> corners = {
        {{left, open}, {left, middle}, {right, middle}, {right, open}}};
    dc.Polyline(corners.data(), static_cast<int>(corners.size()));
}
