#include "graphs/profile/ProfileChart.h"

#include <algorithm>

#include "graphs/common/DashedPath.h"
#include "graphs/common/FormattedText.h"
#include "graphs/profile/ProfileFont.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

namespace tessalink {

namespace {

/// The characters that an axis needs beside the plot.
constexpr int cAxisCharacters = 5;
constexpr std::uint32_t cSkyLineId = 65535;

constexpr int clampBetween(int value, int a, int b) {
    return std::clamp(value, std::min(a, b), std::max(a, b));
}

}  // namespace

ProfileChart::~ProfileChart() = default;

void ProfileChart::construct(int yMin, int yMax, int majorStep, int minorStep, int leftAxis,
                             int rightAxis, int designWidth, int designHeight) {
    SetYRange(yMin, yMax, majorStep, minorStep, 0, 0);
    m_leftAxis = leftAxis;
    m_rightAxis = rightAxis;
    SetDesignSize(designWidth, designHeight);
}

void ProfileChart::clear_chart() {
    m_scaleCount = 0;
    m_numbered = false;
    for (auto& row : m_legendRows) row.reset();
    m_breaks.RemoveAll();
    m_referenceLines.RemoveAll();
    RemoveProfiles();
    m_bands.RemoveAll();
    RemoveSkyLine();
}

void ProfileChart::set_legend_rows(const LegendRows& rows) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (m_legendRows[i].get() != rows[i]) m_legendRows[i].reset(rows[i]);
    }
    set_numbered_scales(rows[0] != nullptr ? rows[0]->GetSize() - 1 : 0);
    m_numbered = false;
}

void ProfileChart::set_numbered_scales(int count) {
    m_numbered = true;
    m_scaleCount = std::max(count, 0);
    if (m_scaleCount == 0) return;
    for (const auto& profile : m_profiles) profile->SettleCount(m_scaleCount);
    if (m_skyLine) m_skyLine->SettleCount(m_scaleCount);
}

CString ProfileChart::GetScaleText(int scale) const {
    if (scale < 1 || scale > m_scaleCount) AfxThrowInvalidArgException();
    if (!m_numbered && has_row(0)) return m_legendRows[0]->GetAt(scale);
    CString number;
    number.Format("%d", scale);
    return number;
}

void ProfileChart::AddSkyLine(double* values, COLORREF color, const char* name) {
    std::unique_ptr<double[]> owned(values);
    const int count = m_scaleCount > 0 ? m_scaleCount : ProfileInfo::cUnknownCount;
    m_skyLineNamed = name != nullptr && *name != '\0';
    m_skyLine = std::make_unique<ProfileInfo>(m_skyLineNamed ? name : "SkyLine", nullptr, count,
                                              color, cSkyLineId, 0);
    m_skyLine->SetValues(owned.release(), count);
    m_skyLine->SetPointType(ProfilePointType::LineOnly);
    m_skyLineShown = 1;
}

// Layout.

int ProfileChart::dev_x(double x) const {
    if (m_axis == ScaleAxis::Points) return toInt((x - m_xMin) * m_xScale + m_plotLeft);
    if (x == m_xMin) return m_plotLeft;
    if (x == m_xMax) {
        return m_scaleCount == 0 ? m_plotRight : toInt((x - m_xMin - 1.0) * m_xScale + m_plotLeft);
    }
    return toInt((x - m_xMin) * m_xScale - m_xScale * 0.5 + m_plotLeft);
}

int ProfileChart::dev_y(double score) const {
    return toInt(m_plotBottom - (score - m_scores.min) * m_yScale);
}

int ProfileChart::dev_y_in_plot(double score) const {
    return clampBetween(dev_y(score), dev_y(m_scores.max), dev_y(m_scores.min));
}

int ProfileChart::row_count() const {
    return 1 + (has_row(1) ? 1 : 0) + (has_row(2) ? 1 : 0) + (has_row(3) ? 1 : 0);
}

void ProfileChart::recalc_layout(CDC* dc, CRect& rect) {
    m_xMin = 0;
    m_xMax = m_scaleCount + 1;
    measure_letter(dc);
    take_legend_room(dc, rect);
    m_plotLeft = rect.left + (m_leftAxis != 0 ? cAxisCharacters * m_charWidth : 0);
    m_plotRight = rect.right - (m_rightAxis != 0 ? cAxisCharacters * m_charWidth : 0);
    const int rows = row_count();
    const int gap = (m_charHeight + 3) >> 2;
    const int tick = (m_charWidth + 1) >> 1;
    m_plotBottom =
        rect.bottom - ((m_charHeight + gap) * rows + gap + tick) - (rows == 1 ? m_charHeight : 0);
    const int top = rect.top + (m_yLegend.IsEmpty() ? 0 : m_charHeight);
    const int columns = m_axis == ScaleAxis::Points ? m_xMax - m_xMin : std::max(m_scaleCount, 1);
    m_xScale = (static_cast<double>(m_plotRight) - m_plotLeft) / columns;
    const double range = static_cast<double>(m_scores.max) - m_scores.min;
    m_yScale = range == 0 ? 0 : (static_cast<double>(m_plotBottom) - top) / range;
}

CRect ProfileChart::plot_rect() const {
    return {dev_x(m_xMin), dev_y(m_scores.max), dev_x(m_xMax), dev_y(m_scores.min)};
}

CPoint ProfileChart::score_place(int scaleIndex, double score) const {
    return {dev_x(scaleIndex + 1.0), dev_y_in_plot(score)};
}

std::vector<bool> ProfileChart::line_ends() const {
    std::vector<bool> ends(static_cast<std::size_t>(m_scaleCount));
    std::size_t next = 0;  // the break that comes first is waited for
    for (int i = 0; i < m_breaks.GetSize(); ++i) {
        const std::size_t scale = m_breaks[i];
        if (scale <= next || scale > ends.size()) break;
        ends[scale - 1] = true;
        next = scale;
    }
    return ends;
}

int ProfileChart::legend_entry_count() const {
    return GetProfileCount() + (is_sky_line(GetProfileCount()) ? 1 : 0);
}

CString ProfileChart::legend_entry_name(int index) const {
    return is_sky_line(index) ? m_skyLine->GetName() : BasicProfileGraph::legend_entry_name(index);
}

void ProfileChart::draw_legend_sample(CDC* dc, int index, int left, int y) {
    draw_sample(dc, is_sky_line(index) ? *m_skyLine : GetProfile(index), left, y);
}

bool ProfileChart::legend_is_drawn() const {
    return !is_empty_plot() && BasicProfileGraph::legend_is_drawn();
}

// Drawing.

void ProfileChart::draw_contents(CDC* dc, CRect& rect) {
    rect.top += m_fontHeight;
    recalc_layout(dc, rect);
    draw_bands(dc);
    draw_legends(dc);
    draw_breaks(dc);
    draw_horz_lines(dc);
    draw_sky_line(dc);
    draw_data_series(dc);
    draw_line_legends(dc);
}

void ProfileChart::draw_bands(CDC* dc) {
    if (m_bandsShown == 0 || is_empty_plot()) return;
    for (int i = 0; i < m_bands.GetSize(); ++i) {
        const BandInfo& band = m_bands[i];
        CBrush brush(band.color);
        const CRect rect(dev_x(m_xMin), dev_y(band.to), dev_x(m_xMax), dev_y(band.from));
        dc->FillRect(&rect, &brush);
    }
}

void ProfileChart::draw_legends(CDC* dc) {
    if (m_leftAxis != 0) draw_y_axis(dc, dev_x(m_xMin), 1);
    if (m_rightAxis != 0) draw_y_axis(dc, dev_x(m_xMax), 0);
    draw_x_axis(dc);
}

void ProfileChart::draw_y_axis(CDC* dc, int x, int isLeft) {
    const bool left = isLeft != 0;
    const RestoredState restored(*dc);
    CPen pen(PS_SOLID, axis_width(), cBlack);
    const Selected selected(*dc, &pen);
    dc->MoveTo(x, dev_y(m_scores.min));
    dc->LineTo(x, dev_y(m_scores.max));
    draw_score_ticks(dc, x, left);
    draw_score_labels(dc, x, left);
    if (!m_yLegend.IsEmpty()) draw_y_legend(dc, x, left);
}

void ProfileChart::draw_y_legend(CDC* dc, int x, bool isLeft) {
    CFont italic;
    CFont bold;
    CFont symbols;
    createProfileFont(italic, m_fontHeight, m_typeface, FW_NORMAL, true);
    createProfileFont(bold, m_fontHeight, m_typeface, FW_BOLD);
    createSymbolFont(symbols, m_fontHeight);
    const int width =
        CalcFormattedWidth(dc, m_yLegend, dc->GetCurrentFont(), &italic, &bold, &symbols);
    // A title that is wider than the room beside the plot goes on above it.
    const int room = (cAxisCharacters - 1) * m_charWidth - m_charWidth / 2;
    const int inward = std::max(0, width - room);
    dc->SetTextAlign((isLeft ? TA_RIGHT : TA_LEFT) | TA_TOP);
    PrintFormatted(dc, isLeft ? x - m_charWidth + inward : x + m_charWidth - inward,
                   dev_y(m_scores.max) - m_charHeight - m_fontHeight, m_yLegend, nullptr, &italic,
                   &bold);
}

void ProfileChart::draw_score_ticks(CDC* dc, int x, bool isLeft) {
    const auto draw = [&](int score, int length) {
        const int y = dev_y(score);
        dc->MoveTo(isLeft ? x - length : x, y);
        dc->LineTo(isLeft ? x : x + length, y);
    };
    if (m_scores.majorStep != 0) {
        const int length = (m_charWidth + 1) >> 1;
        draw(m_scores.labelStart, length);
        draw(m_scores.labelEnd, length);
        m_scores.ForEachMajor([&](int score) { draw(score, length); });
    }
    if (m_scaleFactor > 1.0) {
        m_scores.ForEachMinor([&](int score) { draw(score, (m_charHeight + 3) >> 2); });
    }
}

void ProfileChart::draw_score_labels(CDC* dc, int x, bool isLeft) {
    const int away = m_charWidth;  // the tick and as much again
    const int labelX = isLeft ? x - away : x + away;
    CFont symbols;
    createSymbolFont(symbols, m_fontHeight);
    for (const bool isLower : {true, false}) {
        const EndLabel label = end_label(dc, isLower, symbols);
        draw_end_label(dc, isLeft ? labelX - label.width : labelX,
                       label_top(isLower ? m_scores.labelStart : m_scores.labelEnd), label,
                       symbols);
    }
    dc->SetTextAlign((isLeft ? TA_RIGHT : TA_LEFT) | TA_TOP);
    m_scores.ForEachMajor([&](int score) {
        CString text;
        text.Format("%d", score);
        dc->TextOut(labelX, label_top(score), text);
    });
}

void ProfileChart::draw_x_axis(CDC* dc) {
    const RestoredState restored(*dc);
    CPen pen(PS_SOLID, axis_width(), cBlack);
    const Selected selected(*dc, &pen);
    for (const int score : {m_scores.max, m_scores.min}) {
        dc->MoveTo(dev_x(m_xMin), dev_y(score));
        dc->LineTo(dev_x(m_xMax), dev_y(score));
    }
    if (m_scaleCount > 0) draw_scale_rows(dc);
}

void ProfileChart::draw_scale_rows(CDC* dc) {
    CFont italic;
    CFont normal;
    CFont bold;
    createProfileFont(italic, m_fontHeight, m_typeface, FW_NORMAL, true);
    createProfileFont(normal, m_fontHeight, m_typeface);
    createProfileFont(bold, m_fontHeight, m_typeface, FW_BOLD);
    draw_first_row(dc, &normal, &italic, &bold);
    const int gap = (m_charHeight + 3) >> 2;
    int y = dev_y(m_scores.min) + m_charHeight + 2 * gap + ((m_charWidth + 1) >> 1);
    for (std::size_t row = 1; row < m_legendRows.size() && m_legendRows[row]; ++row) {
        draw_x_legend(dc, m_legendRows[row].get(), y, &normal, &italic, &bold);
        y += m_charHeight + gap;
    }
}

void ProfileChart::draw_first_row(CDC* dc, CFont* normal, CFont* italic, CFont* bold) {
    const int bottom = dev_y(m_scores.min);
    const int tick = (m_charWidth + 1) >> 1;
    const int gap = (m_charHeight + 3) >> 2;
    const bool staggered = !has_row(1);
    if (!m_numbered) {
        dc->SetTextAlign(TA_RIGHT | TA_TOP);
        PrintFormatted(dc, dev_x(0), bottom + tick + gap, m_legendRows[0]->GetAt(0), normal, italic,
                       bold);
    }
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    for (int scale = 1; scale < m_xMax; ++scale) {
        const int x = dev_x(scale);
        const int end = bottom + tick + (staggered && scale % 2 == 0 ? m_charHeight : 0);
        dc->MoveTo(x, bottom);
        dc->LineTo(x, end);
        PrintFormatted(dc, x, end + gap, GetScaleText(scale), normal, italic, bold);
    }
}

void ProfileChart::draw_x_legend(CDC* dc, CStringArray* row, int y, CFont* normal, CFont* italic,
                                 CFont* bold) {
    dc->SetTextAlign(TA_RIGHT | TA_TOP);
    PrintFormatted(dc, dev_x(0), y, row->GetAt(0), normal, italic, bold);
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    for (int scale = 1; scale < m_xMax; ++scale) {
        PrintFormatted(dc, dev_x(scale), y, row->GetAt(scale), normal, italic, bold);
    }
}

void ProfileChart::draw_breaks(CDC* dc) {
    if (m_breaks.IsEmpty() || is_empty_plot()) return;
    CPen pen(PS_SOLID, line_width(), cBlack);
    const Selected selected(*dc, &pen);
    for (int i = 0; i < m_breaks.GetSize(); ++i) {
        const int x = dev_x(m_breaks[i] + 0.5);
        dc->MoveTo(x, dev_y(m_scores.min));
        dc->LineTo(x, dev_y(m_scores.max));
    }
}

void ProfileChart::draw_horz_lines(CDC* dc) {
    if (m_referenceLines.IsEmpty() || is_empty_plot()) return;
    CPen pen(m_horzLinesScaled ? PS_SOLID : PS_DASH, m_horzLinesScaled ? line_width() : 1, cBlack);
    const Selected selected(*dc, &pen);
    DashedPath path(m_horzLinesScaled ? PS_DASH : PS_SOLID, m_scaleFactor);
    for (int i = 0; i < m_referenceLines.GetSize(); ++i) {
        const int y = dev_y(static_cast<int>(m_referenceLines[i]));
        path.MoveTo({dev_x(m_xMin), y});
        path.LineTo(*dc, {dev_x(m_xMax), y});
    }
}

void ProfileChart::draw_sky_line(CDC* dc) {
    if (!m_skyLine || m_skyLineShown == 0) return;
    CPen pen(PS_SOLID, line_width(), m_skyLine->GetColor());
    const Selected selected(*dc, &pen);
    const int top = dev_y(m_scores.labelEnd);
    const int bottom = dev_y(m_scores.labelStart);
    const std::vector<bool> lineEnds = line_ends();
    bool connected = false;
    int previous = 0;
    for (int scale = 1; scale <= m_scaleCount && m_skyLine->HasValue(scale - 1); ++scale) {
        const int y = clampBetween(dev_y(m_skyLine->GetValue(scale - 1)), top, bottom);
        const int left = dev_x(scale - 0.5);
        dc->MoveTo(left, connected ? previous : y);
        if (connected) dc->LineTo(left, y);
        dc->LineTo(dev_x(scale + 0.5), y);
        connected = !lineEnds[static_cast<std::size_t>(scale) - 1];
        previous = y;
    }
}

}  // namespace tessalink
