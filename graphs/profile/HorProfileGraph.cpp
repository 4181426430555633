#include "graphs/profile/HorProfileGraph.h"

#include <algorithm>

#include "graphs/common/DashedPath.h"
#include "graphs/profile/ProfileFont.h"
#include "graphs/profile/detail/ChartLabel.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using tessalink::LabelFonts;
using tessalink::RestoredState;
using tessalink::Selected;
using tessalink::toInt;

namespace {

/// The part of the width that texts left of the plot take at most.
constexpr double cTextPart = 0.6;
/// Widths are not quite in proportion to the heights of fonts.
constexpr int cTries = 4;

/// Of the symbol font.
constexpr char cArrowLeft = '\xAC';
constexpr char cArrowRight = '\xAE';

CString bold(const CString& text) {
    return "\\b" + text;
}

/// The height of font, not above `height`, in which the text is no wider than allowed.
int fittedHeight(CDC& dc, const CString& text, int height, const char* face, int maxWidth) {
    for (int i = 0; i < cTries && height > 1; ++i) {
        const int width = LabelFonts(dc, height, face).Width(text);
        if (width <= maxWidth) break;
        height = std::clamp(toInt(static_cast<double>(height) * maxWidth / width), 1, height - 1);
    }
    return height;
}

/// Intervals of a line of labels.
class LabelLine {
public:
    explicit LabelLine(int gap) : m_gap(gap) {}

    /// Takes an interval unless it overlaps another or comes too near.
    bool Take(int left, int width) {
        const int right = left + width;
        const auto isNear = [&](const Interval& other) {
            return left < other.right + m_gap && other.left < right + m_gap;
        };
        if (std::any_of(m_taken.begin(), m_taken.end(), isNear)) return false;
        m_taken.push_back({left, right});
        return true;
    }

private:
    struct Interval {
        int left;
        int right;
    };

    int m_gap;
    std::vector<Interval> m_taken;
};

}  // namespace

HorProfileGraph::HorProfileGraph(int xMin, int xMax, int majorStep, int minorStep, int designWidth,
                                 int designHeight) {
    SetXRange(xMin, xMax, majorStep, minorStep, 0, 0);
    SetDesignSize(designWidth, designHeight);
}

HorProfileGraph::~HorProfileGraph() = default;

int HorProfileGraph::AddRow(const CString& name) {
    m_rowOfScale.push_back(GetRowCount());
    m_rows.push_back({name, false});
    return ++m_scaleCount;
}

void HorProfileGraph::AddHeaderRow(const CString& text) {
    m_rows.push_back({text, true});
}

void HorProfileGraph::AddScoreCol(const CString& heading, CStringArray* texts) {
    std::unique_ptr<CStringArray> owned(texts);
    m_columns.push_back({heading, std::move(owned), 0, 0});
}

void HorProfileGraph::Clear() {
    m_scaleCount = 0;
    m_rows.clear();
    m_rowOfScale.clear();
    m_columns.clear();
    m_referenceLines.RemoveAll();
    m_bands.RemoveAll();
    RemoveProfiles();
}

CString HorProfileGraph::GetScaleText(int scale) const {
    if (scale < 1 || scale > m_scaleCount) AfxThrowInvalidArgException();
    const int row = m_rowOfScale[static_cast<std::size_t>(scale) - 1];
    return m_rows[static_cast<std::size_t>(row)].text;
}

const CString& HorProfileGraph::column_text(const Column& column, int scaleIndex) const {
    if (!column.texts) AfxThrowInvalidArgException();
    return std::as_const(*column.texts).GetAt(scaleIndex);
}

// Layout.

bool HorProfileGraph::has_title_line() const {
    return !m_xLegend.IsEmpty() || (!m_columns.empty() && !m_columnsHeading.IsEmpty());
}

void HorProfileGraph::recalc_layout(CDC* dc, CRect& rect) {
    measure_letter(dc);
    rect.DeflateRect(m_charWidth / 2, m_charHeight / 4);
    take_legend_room(dc, rect);
    m_titleTop = rect.top;
    m_textLeft = rect.left;
    const int axisHeight = m_charHeight + tick_length();
    m_plot.top = rect.top + (has_title_line() ? m_charHeight : 0) + axisHeight;
    m_plot.bottom = std::max(rect.bottom - axisHeight, m_plot.top);
    m_rowHeight = m_rows.empty() ? 0 : m_plot.Height() / static_cast<double>(m_rows.size());
    m_textHeight = m_rows.empty() ? m_charHeight : std::clamp(toInt(m_rowHeight), 1, m_charHeight);
    fit_texts(dc, toInt(rect.Width() * cTextPart));

    CFont symbols;
    createSymbolFont(symbols, m_fontHeight);
    const int widest =
        std::max(end_label(dc, true, symbols).width, end_label(dc, false, symbols).width);
    const int beside = std::max(m_charWidth, widest / 2);
    m_plot.right = rect.right - beside;
    m_plot.left = std::min(rect.left + m_textWidth + m_charWidth / 2 + beside, m_plot.right);
    const double range = static_cast<double>(m_scores.max) - m_scores.min;
    m_xScale = range == 0 ? 0 : m_plot.Width() / range;
}

void HorProfileGraph::fit_texts(CDC* dc, int maxWidth) {
    for (int i = 0; i < cTries; ++i) {
        measure_texts(dc);
        if (m_textWidth <= maxWidth || m_textHeight == 1) return;
        const double smaller = static_cast<double>(m_textHeight) * maxWidth / m_textWidth;
        m_textHeight = std::clamp(toInt(smaller), 1, m_textHeight - 1);
    }
    measure_texts(dc);
}

void HorProfileGraph::measure_texts(CDC* dc) {
    LabelFonts fonts(*dc, m_textHeight, m_typeface);
    m_nameWidth = 0;
    int headers = 0;
    for (const Row& row : m_rows) {
        int& widest = row.isHeader ? headers : m_nameWidth;
        widest = std::max(widest, fonts.Width(row.isHeader ? bold(row.text) : row.text));
    }
    m_nameWidth += indent();
    m_columnsWidth = 0;
    for (Column& column : m_columns) {
        column.textWidth = 0;
        for (int i = 0; i < m_scaleCount; ++i) {
            column.textWidth = std::max(column.textWidth, fonts.Width(column_text(column, i)));
        }
        column.width = std::max(column.textWidth, fonts.Width(column.heading));
        m_columnsWidth += column.width + m_charWidth;
    }
    const int heading = m_columns.empty() ? 0 : fonts.Width(m_columnsHeading) + m_charWidth;
    m_columnsHeadRoom = std::max(0, heading - m_columnsWidth);
    m_textWidth = std::max(m_nameWidth + m_columnsWidth + m_columnsHeadRoom, headers);
}

int HorProfileGraph::dev_x(double score) const {
    return toInt(m_plot.left + (score - m_scores.min) * m_xScale);
}

int HorProfileGraph::dev_x_in_plot(double score) const {
    return std::clamp<int>(dev_x(score), m_plot.left, m_plot.right);
}

int HorProfileGraph::row_middle(int row) const {
    return toInt(m_plot.top + (row + 0.5) * m_rowHeight);
}

CPoint HorProfileGraph::score_place(int scaleIndex, double score) const {
    return {dev_x_in_plot(score), row_middle(m_rowOfScale[static_cast<std::size_t>(scaleIndex)])};
}

std::vector<bool> HorProfileGraph::line_ends() const {
    std::vector<bool> ends(m_rowOfScale.size());
    for (std::size_t i = 1; i < ends.size(); ++i) {
        ends[i - 1] = m_rowOfScale[i] != m_rowOfScale[i - 1] + 1;
    }
    return ends;
}

// Drawing.

void HorProfileGraph::draw_contents(CDC* dc, CRect& rect) {
    recalc_layout(dc, rect);
    draw_bands(dc);
    draw_rows(dc);
    draw_x_axis(dc);
    draw_vert_lines(dc);
    draw_data_series(dc);
    draw_line_legends(dc);
}

void HorProfileGraph::draw_bands(CDC* dc) {
    if (m_bandsShown == 0) return;
    for (int i = 0; i < m_bands.GetSize(); ++i) {
        const BandInfo& band = m_bands[i];
        CBrush brush(band.color);
        CRect rect(dev_x_in_plot(band.from), m_plot.top, dev_x_in_plot(band.to), m_plot.bottom);
        rect.NormalizeRect();
        dc->FillRect(&rect, &brush);
    }
}

void HorProfileGraph::draw_rows(CDC* dc) {
    const RestoredState restored(*dc);
    CPen pen(PS_SOLID, line_width(), cBlack);
    const Selected selected(*dc, &pen);
    dc->SetTextAlign(TA_LEFT | TA_TOP);
    {
        LabelFonts fonts(*dc, m_textHeight, m_typeface);
        for (int i = 0; i < GetRowCount(); ++i) {
            const Row& row = m_rows[static_cast<std::size_t>(i)];
            const int top = row_middle(i) - m_textHeight / 2;
            if (!row.isHeader) {
                fonts.Print(m_textLeft + indent(), top, row.text);
                continue;
            }
            fonts.Print(m_textLeft, top, bold(row.text));
            if (i == 0) continue;
            const int above = toInt(m_plot.top + i * m_rowHeight);
            dc->MoveTo(m_textLeft, above);
            dc->LineTo(m_plot.right, above);
        }
    }
    draw_columns(dc);
    draw_title(dc);
}

void HorProfileGraph::draw_columns(CDC* dc) {
    LabelFonts fonts(*dc, m_textHeight, m_typeface);
    const int headingTop = m_plot.top - tick_length() - m_textHeight;
    int left = m_textLeft + m_nameWidth + m_columnsHeadRoom / 2;
    for (const Column& column : m_columns) {
        left += m_charWidth;
        fonts.Print(left + (column.width - fonts.Width(column.heading)) / 2, headingTop,
                    column.heading);
        const int right = left + (column.width + column.textWidth) / 2;
        for (int i = 0; i < m_scaleCount; ++i) {
            const CString& text = column_text(column, i);
            const int middle = row_middle(m_rowOfScale[static_cast<std::size_t>(i)]);
            fonts.Print(right - fonts.Width(text), middle - m_textHeight / 2, text);
        }
        left += column.width;
    }
    if (m_columns.empty()) return;
    // Columns, the first without its gap, and the heading over them have one middle.
    const int width = m_columnsWidth + m_columnsHeadRoom + m_charWidth;
    fonts.Print(m_textLeft + m_nameWidth + (width - fonts.Width(m_columnsHeading)) / 2, m_titleTop,
                m_columnsHeading);
}

void HorProfileGraph::draw_title(CDC* dc) {
    if (m_xLegend.IsEmpty()) return;
    const int height = fittedHeight(*dc, m_xLegend, m_charHeight, m_typeface, m_plot.Width());
    LabelFonts fonts(*dc, height, m_typeface);
    fonts.Print(m_plot.left + (m_plot.Width() - fonts.Width(m_xLegend)) / 2, m_titleTop, m_xLegend);
}

void HorProfileGraph::draw_x_axis(CDC* dc) {
    const RestoredState restored(*dc);
    CPen pen(PS_SOLID, axis_width(), cBlack);
    const Selected selected(*dc, &pen);
    const POINT corners[] = {{m_plot.left, m_plot.top},
                             {m_plot.right, m_plot.top},
                             {m_plot.right, m_plot.bottom},
                             {m_plot.left, m_plot.bottom},
                             {m_plot.left, m_plot.top}};
    dc->Polyline(corners, static_cast<int>(std::size(corners)));
    for (const int row : m_rowOfScale) {
        const int y = row_middle(row);
        dc->MoveTo(m_plot.left - ((m_charWidth + 1) >> 1), y);
        dc->LineTo(m_plot.left, y);
    }
    draw_ticks(dc);
    draw_labels(dc, m_plot.top - tick_length() - m_charHeight);
    draw_labels(dc, m_plot.bottom + tick_length());
}

void HorProfileGraph::draw_ticks(CDC* dc) {
    const auto draw = [&](int score, int length) {
        const int x = dev_x(score);
        if (x < m_plot.left || x > m_plot.right) return;
        dc->MoveTo(x, m_plot.top - length);
        dc->LineTo(x, m_plot.top);
        dc->MoveTo(x, m_plot.bottom);
        dc->LineTo(x, m_plot.bottom + length);
    };
    if (m_scores.majorStep != 0) {
        draw(m_scores.labelStart, tick_length());
        draw(m_scores.labelEnd, tick_length());
        m_scores.ForEachMajor([&](int score) { draw(score, tick_length()); });
    }
    if (m_scaleFactor > 1.0) {
        m_scores.ForEachMinor([&](int score) { draw(score, (tick_length() + 1) >> 1); });
    }
}

void HorProfileGraph::draw_labels(CDC* dc, int top) {
    CFont symbols;
    createSymbolFont(symbols, m_fontHeight);
    LabelLine line(m_charWidth / 2);
    for (const bool isLower : {true, false}) {
        const EndLabel label = end_label(dc, isLower, symbols);
        const int middle = dev_x_in_plot(isLower ? m_scores.labelStart : m_scores.labelEnd);
        const int left = middle - label.width / 2;
        if (line.Take(left, label.width)) draw_end_label(dc, left, top, label, symbols);
    }
    dc->SetTextAlign(TA_LEFT | TA_TOP);
    m_scores.ForEachMajor([&](int score) {
        CString text;
        text.Format("%d", score);
        const int width = dc->GetTextExtent(text).cx;
        const int middle = dev_x(score);
        const int left = middle - width / 2;
        if (middle < m_plot.left || middle > m_plot.right || !line.Take(left, width)) return;
        dc->TextOut(left, top, text);
    });
}

void HorProfileGraph::draw_vert_lines(CDC* dc) {
    CPen pen(PS_SOLID, line_width(), cBlack);
    const Selected selected(*dc, &pen);
    tessalink::DashedPath path(PS_DASH, m_scaleFactor);
    for (int i = 0; i < m_referenceLines.GetSize(); ++i) {
        const int x = dev_x(GetReferenceLine(i));
        if (x < m_plot.left || x > m_plot.right) continue;
        path.MoveTo({x, m_plot.top});
        path.LineTo(*dc, {x, m_plot.bottom});
    }
}

void HorProfileGraph::draw_point_text(CDC* dc, int x, int y, int size, int scaleIndex,
                                      ProfileInfo* profile) {
    if (m_pointTextsShown == 0) return;
    const Slope above = slope_to(*profile, scaleIndex, scaleIndex - 1);
    const Slope below = slope_to(*profile, scaleIndex, scaleIndex + 1);
    const CString text = point_label(*profile, scaleIndex, cArrowLeft, cArrowRight);
    const RestoredState restored(*dc);
    dc->SetBkMode(TRANSPARENT);
    dc->SetTextAlign(TA_LEFT | TA_TOP);
    LabelFonts fonts(*dc, m_textHeight, m_typeface);
    const int away = std::abs(size) + m_charWidth / 4;
    const int width = fonts.Width(text);
    const int right = x + away;
    const int left = x - away - width;
    // Lines to higher scores leave the other side free.
    const int rightward = m_scores.max < m_scores.min ? -1 : 1;
    const auto leadsRight = [&](const Slope& slope) {
        return slope.exists ? slope.direction * rightward : 0;
    };
    bool isLeft = leadsRight(above) + leadsRight(below) > 0;
    if (isLeft ? left < m_plot.left : right + width > m_plot.right) isLeft = !isLeft;
    // Where lines leave on both sides, one upward and one downward, a corner of each side is free.
    int top = y - m_textHeight / 2;
    if (leadsRight(above) * leadsRight(below) < 0) {
        const bool isLineAbove = leadsRight(above) == (isLeft ? -1 : 1);
        top = isLineAbove ? y : y - m_textHeight;
    }
    fonts.Print(isLeft ? left : right, top, text);
}
