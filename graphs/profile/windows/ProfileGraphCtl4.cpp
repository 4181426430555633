#include "graphs/profile/windows/ProfileGraphCtl4.h"

#include <algorithm>

#include "graphs/common/FormattedText.h"
#include "graphs/common/KOVGraphUtilities.h"
#include "graphs/common/PlainLabel.h"
#include "graphs/profile/ProfileFont.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"

using tessalink::createProfileFont;
using tessalink::createSymbolFont;
using tessalink::RestoredState;
using tessalink::Selected;

namespace {

constexpr COLORREF cGrid = RGB(208, 208, 208);
/// The sample of an entry and the gap behind it, and the gap behind its name, in characters.
constexpr int cSampleCharacters = 4;

CString intText(int number) {
    return tessalink::formatInt(number, 0, -1);
}

CString doubleText(double number) {
    return tessalink::plainNumber(number);
}

}  // namespace

IMPLEMENT_DYNAMIC(ProfileGraphCtl4, CWnd)

ProfileGraphCtl4::ProfileGraphCtl4(int yMin, int yMax, int majorStep, int minorStep, int leftAxis,
                                   int rightAxis, int designWidth, int designHeight)
    : ProfileGraphWindow(yMin, yMax, majorStep, minorStep, leftAxis, rightAxis, designWidth,
                         designHeight) {
    UseToolTips(0);
    ShowLegend(LegendType::None);  // the bottom legend stands for it
}

// What is set.

void ProfileGraphCtl4::changed() {
    Invalidate();
}

void ProfileGraphCtl4::SetTitle(const CString& title) {
    m_title = title;
    changed();
}

void ProfileGraphCtl4::AddTopLegend(double scale, const char* text, unsigned int color) {
    m_topTexts.push_back({scale, text, color, 0});
    changed();
}

void ProfileGraphCtl4::RemoveTopLegend(int index) {
    if (index < 0 || index >= static_cast<int>(m_topTexts.size())) AfxThrowInvalidArgException();
    m_topTexts.erase(m_topTexts.begin() + index);
    changed();
}

void ProfileGraphCtl4::SetBottomLegendStyle(int contents, int columns) {
    m_bottomContents = contents;
    m_bottomColumns = std::max(columns, 0);
    changed();
}

void ProfileGraphCtl4::SetTwoLineLegend(int twoLines) {
    m_twoLines = twoLines != 0;
    changed();
}

void ProfileGraphCtl4::SetBackgroundTicks(int show) {
    m_backgroundTicks = show != 0;
    changed();
}

void ProfileGraphCtl4::SetAddBottomSpace(int space) {
    m_bottomSpace = space;
    changed();
}

void ProfileGraphCtl4::SetUseGEonYAxis(int use) {
    m_upperSign = use != 0;
    changed();
}

void ProfileGraphCtl4::SetUseLEonYAxis(int use) {
    m_lowerSign = use != 0;
    changed();
}

void ProfileGraphCtl4::SetUseGEandLEonYAxis(int use) {
    SetUseGEonYAxis(use);
    SetUseLEonYAxis(use);
}

template <class Number>
void ProfileGraphCtl4::rewrite(int count, const Number* numbers, CString (*textOf)(Number)) {
    CStringArray* row = m_legendRows[0].get();
    if (row == nullptr || numbers == nullptr) return;
    for (int i = 0; i < std::min(count, m_scaleCount); ++i) {
        row->SetAt(i + 1, textOf(numbers[i]));
    }
    changed();
}

void ProfileGraphCtl4::UpdateXLegends(int count, const int* numbers) {
    rewrite(count, numbers, intText);
}

void ProfileGraphCtl4::UpdateXLegends(int count, const double* numbers) {
    rewrite(count, numbers, doubleText);
}

// Layout.

int ProfileGraphCtl4::count_lines(const char* text) {
    return KOVGraphUtilities::CountLines(text);
}

int ProfileGraphCtl4::calc_title_height(CDC*) const {
    const int lines = count_lines(m_title);
    return lines > 0 ? lines * m_charHeight + m_charHeight / 2 : 0;
}

int ProfileGraphCtl4::calc_top_legend_height(CDC* dc) {
    std::vector<int> rowEnds;
    std::vector<TopText*> texts;
    texts.reserve(m_topTexts.size());
    for (TopText& text : m_topTexts) texts.push_back(&text);
    std::stable_sort(texts.begin(), texts.end(),
                     [](const TopText* a, const TopText* b) { return a->scale < b->scale; });
    for (TopText* text : texts) {
        const int width = dc->GetTextExtent(text->text).cx;
        const int left = dev_x(text->scale) - width / 2;
        const auto free =
            std::find_if(rowEnds.begin(), rowEnds.end(), [left](int end) { return end <= left; });
        text->row = static_cast<int>(free - rowEnds.begin());
        if (free == rowEnds.end()) rowEnds.push_back(0);
        rowEnds[static_cast<std::size_t>(text->row)] = left + width + m_charWidth;
    }
    return static_cast<int>(rowEnds.size()) * m_charHeight;
}

int ProfileGraphCtl4::calc_y_legend_width(CDC* dc) const {
    return m_yLegend.IsEmpty() ? 0 : dc->GetTextExtent(m_yLegend).cx;
}

int ProfileGraphCtl4::calc_y_legend_height(CDC*) const {
    return m_yLegend.IsEmpty() ? 0 : m_charHeight;
}

int ProfileGraphCtl4::first_entry() const {
    return m_bottomContents == cBands ? GetProfileCount() : 0;
}

int ProfileGraphCtl4::end_entry() const {
    if (m_bottomContents == cNoLegend) return 0;
    return m_bottomContents == cProfiles ? GetProfileCount() : legend_entry_count();
}

int ProfileGraphCtl4::entry_width(CDC* dc, int index) const {
    return (cSampleCharacters + 2) * m_charWidth + dc->GetTextExtent(legend_entry_name(index)).cx;
}

void ProfileGraphCtl4::calc_columns(CDC*, int width) {
    m_columnWidths.assign(static_cast<std::size_t>(m_bottomColumns), width / m_bottomColumns);
}

void ProfileGraphCtl4::calc_flow_columns(CDC* dc, int width) {
    const int first = first_entry();
    const int count = end_entry() - first;
    for (int columns = count; columns > 0; --columns) {
        m_columnWidths.assign(static_cast<std::size_t>(columns), 0);
        int sum = 0;
        for (int i = 0; i < count && sum <= width; ++i) {
            int& column = m_columnWidths[static_cast<std::size_t>(i % columns)];
            const int needed = std::max(entry_width(dc, first + i), column);
            sum += needed - column;
            column = needed;
        }
        if (sum <= width) return;
    }
    m_columnWidths.assign(1, width);
}

int ProfileGraphCtl4::calc_bottom_legend_geometry(CDC* dc, int width) {
    m_columnWidths.clear();
    const int count = end_entry() - first_entry();
    if (count <= 0) return 0;
    if (m_bottomColumns > 0) {
        calc_columns(dc, width);
    } else {
        calc_flow_columns(dc, width);
    }
    const int columns = static_cast<int>(m_columnWidths.size());
    return (count + columns - 1) / columns * m_charHeight + m_charHeight / 2;
}

void ProfileGraphCtl4::recalc_layout(CDC* dc, CRect& rect) {
    measure_letter(dc);
    m_titleRect = rect;
    m_titleRect.bottom = rect.top + calc_title_height(dc);
    m_bottomRect = rect;
    m_bottomRect.DeflateRect(m_charWidth, 0);
    m_bottomRect.bottom -= tessalink::toInt(m_bottomSpace * m_scaleFactor);
    m_bottomRect.top = m_bottomRect.bottom - calc_bottom_legend_geometry(dc, m_bottomRect.Width());
    rect.top = m_titleRect.bottom + calc_y_legend_height(dc) / 2;
    rect.bottom = m_bottomRect.top;
    // Where the scales stand is known before the height of the texts above them is.
    CRect plot = rect;
    ProfileGraph3::recalc_layout(dc, plot);
    m_topLegendTop = rect.top + calc_y_legend_height(dc);
    // The heading of the score axis stands beside the texts, and needs as much without them.
    rect.top += std::max(calc_top_legend_height(dc), calc_y_legend_height(dc) / 2);
    ProfileGraph3::recalc_layout(dc, rect);
}

// Drawing.

void ProfileGraphCtl4::on_init_draw(CDC*) {
    m_usedTwoLines = false;
}

void ProfileGraphCtl4::on_before_draw(CDC*, CRect&) {}
void ProfileGraphCtl4::on_end_draw(CDC*, CRect&) {}

void ProfileGraphCtl4::draw_contents(CDC* dc, CRect& rect) {
    on_init_draw(dc);
    on_before_draw(dc, rect);
    recalc_layout(dc, rect);
    draw_title(dc);
    draw_bands(dc);
    draw_background_ticks(dc);
    draw_top_legend(dc);
    draw_legends(dc);
    draw_breaks(dc);
    draw_horz_lines(dc);
    draw_sky_line(dc);
    draw_data_series(dc);
    draw_bottom_legend(dc);
    on_end_draw(dc, rect);
}

void ProfileGraphCtl4::draw_title(CDC* dc) {
    if (m_title.IsEmpty()) return;
    const RestoredState restored(*dc);
    CFont bold;
    createProfileFont(bold, m_fontHeight, m_typeface, FW_BOLD);
    const Selected font(*dc, &bold);
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    KOVGraphUtilities::PrintMultipleLines(dc, (m_titleRect.left + m_titleRect.right) / 2,
                                          m_titleRect.top + m_charHeight / 4, m_title);
}

void ProfileGraphCtl4::draw_top_legend(CDC* dc) {
    const RestoredState restored(*dc);
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    for (const TopText& text : m_topTexts) {
        dc->SetTextColor(text.color);
        dc->TextOut(dev_x(text.scale), m_topLegendTop + text.row * m_charHeight, text.text);
    }
}

void ProfileGraphCtl4::draw_background_ticks(CDC* dc) {
    if (!m_backgroundTicks || is_empty_plot()) return;
    CPen pen(PS_SOLID, line_width(), cGrid);
    const Selected selected(*dc, &pen);
    m_scores.ForEachMajor([&](int score) {
        dc->MoveTo(dev_x(m_xMin), dev_y(score));
        dc->LineTo(dev_x(m_xMax), dev_y(score));
    });
}

void ProfileGraphCtl4::draw_y_axis(CDC* dc, int x, int isLeft) {
    const RestoredState restored(*dc);
    CPen pen(PS_SOLID, axis_width(), cBlack);
    const Selected selected(*dc, &pen);
    dc->MoveTo(x, dev_y(m_scores.min));
    dc->LineTo(x, dev_y(m_scores.max));
    draw_y_axis_ticks(dc, x, isLeft != 0);
    draw_y_axis_labels(dc, x, isLeft != 0);
    if (calc_y_legend_width(dc) > 0) draw_y_legend(dc, x, isLeft != 0);
}

void ProfileGraphCtl4::draw_y_axis_ticks(CDC* dc, int x, bool isLeft) {
    draw_score_ticks(dc, x, isLeft);
}

void ProfileGraphCtl4::draw_y_axis_labels(CDC* dc, int x, bool isLeft) {
    draw_score_labels(dc, x, isLeft);
}

// The fonts of the scale texts and of what their switches select.
struct ProfileGraphCtl4::ScaleFonts {
    ScaleFonts(int height, const CString& face) {
        createProfileFont(normal, height, face);
        createProfileFont(italic, height, face, FW_NORMAL, true);
        createProfileFont(bold, height, face, FW_BOLD);
        createSymbolFont(symbol, height);
    }
    int Width(CDC* dc, const CString& text) {
        return text.Find('\\') < 0 ? dc->GetTextExtent(text).cx
                                   : CalcFormattedWidth(dc, text, &normal, &italic, &bold, &symbol);
    }
    void Print(CDC* dc, int x, int y, const CString& text) {
        PrintFormatted(dc, x, y, text, &normal, &italic, &bold);
    }

    CFont normal;
    CFont italic;
    CFont bold;
    CFont symbol;
};

CString ProfileGraphCtl4::second_line(CDC* dc, ScaleFonts& fonts, CString& text) const {
    int end = text.Find('\n');
    const int room = tessalink::toInt(m_xScale);
    if (end < 0 && fonts.Width(dc, text) > room) {
        // At the last blank that the first line has room for, or else at the first one.
        end = text.Find(' ');
        for (int next = end; next >= 0 && fonts.Width(dc, text.Left(next)) <= room;
             next = text.Find(' ', next + 1)) {
            end = next;
        }
    }
    if (end < 0) return {};
    const CString rest = text.Mid(end + 1);
    text = text.Left(end);
    return rest.IsEmpty() ? rest : tessalink::lastFontSwitch(text) + rest;
}

void ProfileGraphCtl4::draw_scale_text(CDC* dc, ScaleFonts& fonts, int scale, int top) {
    CString text = GetScaleText(scale);
    const CString rest = second_line(dc, fonts, text);
    fonts.Print(dc, dev_x(scale), top, text);
    if (rest.IsEmpty()) return;
    m_usedTwoLines = true;
    fonts.Print(dc, dev_x(scale), top + m_charHeight, rest);
}

void ProfileGraphCtl4::draw_x_axis(CDC* dc) {
    if (!m_twoLines || m_scaleCount == 0) {
        ProfileGraph3::draw_x_axis(dc);
        return;
    }
    const RestoredState restored(*dc);
    CPen pen(PS_SOLID, axis_width(), cBlack);
    const Selected selected(*dc, &pen);
    const int bottom = dev_y(m_scores.min);
    for (const int y : {dev_y(m_scores.max), bottom}) {
        dc->MoveTo(dev_x(m_xMin), y);
        dc->LineTo(dev_x(m_xMax), y);
    }
    ScaleFonts fonts(m_fontHeight, m_typeface);
    const int tick = (m_charWidth + 1) >> 1;
    const int top = bottom + tick + ((m_charHeight + 3) >> 2);
    if (const CStringArray* row = m_legendRows[0].get()) {
        dc->SetTextAlign(TA_RIGHT | TA_TOP);
        fonts.Print(dc, dev_x(0), top, row->GetAt(0));
    }
    dc->SetTextAlign(TA_CENTER | TA_TOP);
    for (int scale = 1; scale <= m_scaleCount; ++scale) {
        dc->MoveTo(dev_x(scale), bottom);
        dc->LineTo(dev_x(scale), bottom + tick);
        draw_scale_text(dc, fonts, scale, top);
    }
}

// The bottom legend.

void ProfileGraphCtl4::draw_bottom_legend(CDC* dc) {
    switch (m_bottomContents) {
        case cProfiles:
            draw_profile_legend(dc);
            break;
        case cBands:
            draw_band_legend(dc);
            break;
        case cProfilesAndBands:
            draw_normal_legend(dc);
            break;
        default:
            break;
    }
}

void ProfileGraphCtl4::draw_normal_legend(CDC* dc) {
    draw_entries(dc, 0, legend_entry_count());
}

void ProfileGraphCtl4::draw_band_legend(CDC* dc) {
    draw_entries(dc, GetProfileCount(), legend_entry_count());
}

void ProfileGraphCtl4::draw_profile_legend(CDC* dc) {
    draw_entries(dc, 0, GetProfileCount());
}

void ProfileGraphCtl4::draw_entries(CDC* dc, int first, int end) {
    if (m_columnWidths.empty()) return;
    const RestoredState restored(*dc);
    dc->SetTextAlign(TA_LEFT | TA_TOP);
    CPoint place = m_bottomRect.TopLeft();
    std::size_t column = 0;
    for (int i = first; i < end; ++i) {
        draw_legend_sample(dc, i, place.x, place.y + m_charHeight / 2);
        dc->TextOut(place.x + cSampleCharacters * m_charWidth, place.y, legend_entry_name(i));
        place.x += m_columnWidths[column];
        if (++column < m_columnWidths.size()) continue;
        column = 0;
        place = CPoint(m_bottomRect.left, place.y + m_charHeight);
    }
}

// The window.

tessalink::AccessibleElement ProfileGraphCtl4::Accessible() const {
    tessalink::AccessibleElement element = ProfileGraphWindow::Accessible();
    if (!m_title.IsEmpty()) element.name = tessalink::plainLabel(m_title);
    return element;
}
