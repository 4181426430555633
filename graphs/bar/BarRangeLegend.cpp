#include "graphs/bar/BarRangeLegend.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "platform/graphics/DCScope.h"

using tessalink::halved;
using tessalink::Selected;
using tessalink::toDevice;

BarRangeLegend::BarRangeLegend(BarScale* scale, const char* leftDesc, const char* rightDesc,
                               COLORREF bodyColor, COLORREF descColor, int leftMargin,
                               int rightMargin, int topMargin, int bottomMargin, int descFontSize,
                               int bodyFontSize, const char* descTypeface, const char* bodyTypeface)
    : BarTextLegend(scale, leftDesc, rightDesc, bodyColor, descColor, leftMargin, rightMargin,
                    topMargin, bottomMargin, descFontSize, bodyFontSize, descTypeface,
                    bodyTypeface) {}

void BarRangeLegend::GetRangeInfo(int index, double& from, double& to, CString& text) const {
    const Label& range = label_at(index);
    from = range.from;
    to = range.to;
    text = range.text;
}

int BarRangeLegend::bracket_height() const {
    return label_count() == 0 ? 0 : halved(GetBodyFontSize());
}

int BarRangeLegend::get_design_body_height() const {
    return bracket_height() + max_lines() * GetBodyFontSize();
}

void BarRangeLegend::draw_labels(CDC* dc, double xScale, double yScale, const CRect& body) {
    draw_ranges(dc, xScale, yScale, body);
}

void BarRangeLegend::draw_ranges(CDC* dc, double xScale, double yScale, const CRect& body) {
    CPen pen(PS_SOLID, line_width(xScale), GetLineColor());
    const Selected selected(*dc, &pen);
    const int height = toDevice(bracket_height() * yScale);
    const int lineHeight = toDevice(GetBodyFontSize() * yScale);
    const bool up = m_directionUp != 0;
    const int bracketTop = up ? body.top : body.top + max_lines() * lineHeight;
    const CRect bracket(body.left, bracketTop, body.right, bracketTop + height);
    for (const Label& range : labels()) {
        if (std::isnan(range.from) || std::isnan(range.to)) continue;
        const int from = GetScale()->PixXUnrestricted(range.from, body);
        const int to = GetScale()->PixXUnrestricted(range.to, body);
        draw_bracket(*dc, std::min(from, to), std::max(from, to), bracket);
        // Downward, all texts end where the brackets begin.
        const int block = KOVGraphUtilities::CountLines(range.text) * lineHeight;
        print_multi_lines(dc, from + halved(to - from), up ? bracket.bottom : bracket.top - block,
                          range.text);
    }
}

void BarRangeLegend::draw_bracket(CDC& dc, int left, int right, const CRect& bracket) const {
    const int middle = bracket.top + halved(bracket.Height());
    const int open = m_directionUp != 0 ? bracket.top : bracket.bottom;
    // Lines exclude their end: back from there, so that both legs are as long.
    const std::array<POINT, 5> corners = {
        {{left, open}, {left, middle}, {right, middle}, {right, open}, {right, middle}}};
    dc.Polyline(corners.data(), static_cast<int>(corners.size()));
}
