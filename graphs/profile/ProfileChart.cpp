#include "graphs/profile/ProfileChart.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <string_view>

#include "graphs/common/DeviceUnits.h"
#include "graphs/common/FormattedText.h"
#include "graphs/profile/detail/ProfileSymbol.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

namespace tessalink {

namespace {

/// Fonts are so many units high in the design; what is left of a unit counts as one.
constexpr double cFontDesignHeight = 7.0;
constexpr double cRoundUp = 0.999;
constexpr double cThinLine = 0.5;

/// The characters that an axis needs beside the plot.
constexpr int cAxisCharacters = 5;
/// The characters of a legend's sample line, and of everything in an entry but its name.
constexpr int cSampleCharacters = 3;
constexpr int cEntryCharacters = 5;
constexpr int cPercent = 100;

constexpr char cLessOrEqual = '\xA3';
constexpr char cGreaterOrEqual = '\xB3';

constexpr std::uint32_t cSkyLineId = 65535;

void createFont(CFont& font, int fontHeight, int weight, BYTE italic, bool isSymbol = false) {
    constexpr BYTE cOutPrecision = 4;
    constexpr BYTE cQuality = 2;
    constexpr BYTE cPitchAndFamily = 6;
    font.CreateFont(-fontHeight, 0, 0, 0, weight, italic, 0, 0,
                    isSymbol ? SYMBOL_CHARSET : ANSI_CHARSET, cOutPrecision, 0, cQuality,
                    cPitchAndFamily, isSymbol ? "Symbol" : "Times New Roman");
}

constexpr int clampBetween(int value, int a, int b) {
    return std::clamp(value, std::min(a, b), std::max(a, b));
}

/// Calls `visit` for the scores base, base + step ... that are above `above` and below `limit`, or
/// at it when it is included. No step, or one downward, has none.
template <class Visit>
void forEachStep(int base, int step, int above, int limit, bool included, Visit visit) {
    if (step <= 0) return;
    const std::int64_t end = std::int64_t{limit} + (included ? 1 : 0);
    std::int64_t score = base;
    if (score <= above) score += ((above - score) / step + 1) * step;
    for (int n = 0; score < end && n < ProfileChart::cMaxTicks; ++n, score += step) {
        visit(static_cast<int>(score));
    }
}

/// The breaks, passed one after the other.
class BreakCursor {
public:
    explicit BreakCursor(const CArray<unsigned, unsigned>& breaks) : m_breaks(breaks) {}

    /// Whether the next break follows this scale; then it is passed.
    bool Passes(int scale) {
        if (m_next >= m_breaks.GetSize()) return false;
        if (m_breaks[m_next] != static_cast<unsigned>(scale)) return false;
        ++m_next;
        return true;
    }

private:
    const CArray<unsigned, unsigned>& m_breaks;
    int m_next = 0;
};

}  // namespace

ProfileChart::~ProfileChart() = default;

void ProfileChart::construct(int yMin, int yMax, int majorStep, int minorStep, int leftAxis,
                             int rightAxis, int designWidth, int designHeight) {
    SetYRange(yMin, yMax, majorStep, minorStep, yMin, yMin);
    m_leftAxis = leftAxis;
    m_rightAxis = rightAxis;
    SetDesignSize(designWidth, designHeight);
}

void ProfileChart::SetYRange(int min, int max, int majorStep, int minorStep, int majorBase,
                             int minorBase) {
    m_yMin = m_labelStart = min;
    m_yMax = m_labelEnd = max;
    m_majorStep = majorStep;
    m_minorStep = minorStep;
    m_majorBase = majorBase != 0 ? majorBase : min;
    m_minorBase = minorBase != 0 ? minorBase : min;
}

void ProfileChart::clear_chart() {
    m_scaleCount = 0;
    m_numbered = false;
    for (auto& row : m_legendRows) row.reset();
    m_breaks.RemoveAll();
    m_horzLines.RemoveAll();
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
    if (!m_numbered && has_row(0)) return m_legendRows[0]->GetAt(scale);
    CString number;
    number.Format("%d", scale);
    return number;
}

std::size_t ProfileChart::checked_profile(int index) const {
    if (index < 0 || index >= GetProfileCount()) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

// Profiles.

bool ProfileChart::IsScore(const ProfileInfo& profile, int scaleIndex) const {
    if (!profile.HasValue(scaleIndex)) return false;
    const double value = profile.GetValue(scaleIndex);
    return value != m_missingValue && !std::isnan(value);
}

ProfileInfo* ProfileChart::add_profile(const char* name, double* values, COLORREF color,
                                       std::uint32_t id) {
    std::unique_ptr<double[]> owned(values);
    try {
        const int count = m_scaleCount > 0 ? m_scaleCount : ProfileInfo::cUnknownCount;
        const int symbol = get_symbol();
        auto profile = std::make_unique<ProfileInfo>(name, nullptr, count, color, id, symbol);
        m_profiles.push_back(std::move(profile));
        m_profiles.back()->SetValues(owned.release(), count);
        ++m_symbolUse[static_cast<std::size_t>(symbol)];
        return m_profiles.back().get();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

int ProfileChart::UpdateProfile(std::uint32_t id, const char* name, double* values) {
    std::unique_ptr<double[]> owned(values);
    int index = 0;
    if (!find_profile_location(id, index)) return 0;
    ProfileInfo& profile = *m_profiles[static_cast<std::size_t>(index)];
    if (name != nullptr) profile.SetName(name);
    if (values != nullptr) {
        profile.SetValues(owned.release(),
                          m_scaleCount > 0 ? m_scaleCount : ProfileInfo::cUnknownCount);
    }
    return 1;
}

void ProfileChart::RemoveProfile(std::uint32_t id) {
    int index = 0;
    if (!find_profile_location(id, index)) return;
    const auto place = m_profiles.begin() + index;
    --m_symbolUse[static_cast<std::size_t>((*place)->GetSymbol())];
    m_profiles.erase(place);
}

void ProfileChart::RemoveProfiles() {
    m_profiles.clear();
    m_symbolUse.fill(0);
}

void ProfileChart::AddSkyLine(double* values, COLORREF color) {
    std::unique_ptr<double[]> owned(values);
    const int count = m_scaleCount > 0 ? m_scaleCount : ProfileInfo::cUnknownCount;
    m_skyLine = std::make_unique<ProfileInfo>("SkyLine", nullptr, count, color, cSkyLineId, 0);
    m_skyLine->SetValues(owned.release(), count);
    m_skyLineShown = 1;
}

bool ProfileChart::find_profile_location(std::uint32_t id, int& index) const {
    const auto found = std::find_if(m_profiles.begin(), m_profiles.end(),
                                    [id](const auto& profile) { return profile->GetId() == id; });
    if (found == m_profiles.end()) return false;
    index = static_cast<int>(found - m_profiles.begin());
    return true;
}

int ProfileChart::get_symbol() const {
    return static_cast<int>(std::min_element(m_symbolUse.begin(), m_symbolUse.end()) -
                            m_symbolUse.begin());
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
    return toInt(m_plotBottom - (score - m_yMin) * m_yScale);
}

int ProfileChart::dev_y_in_plot(double score) const {
    return clampBetween(dev_y(score), dev_y(m_yMax), dev_y(m_yMin));
}

int ProfileChart::line_width() const {
    return toInt(m_scaleFactor * cThinLine + cRoundUp);
}

int ProfileChart::symbol_size() const {
    return (((m_charWidth * 3) >> 3) + 1) & ~1;
}

int ProfileChart::row_count() const {
    return 1 + (has_row(1) ? 1 : 0) + (has_row(2) ? 1 : 0) + (has_row(3) ? 1 : 0);
}

void ProfileChart::recalc_layout(CDC* dc, CRect& rect) {
    m_xMin = 0;
    m_xMax = wrapAdd(m_scaleCount, 1);
    const CSize letter = dc->GetTextExtent("M", 1);
    m_charWidth = letter.cx;
    m_charHeight = letter.cy;
    m_plotLeft = rect.left + (m_leftAxis != 0 ? cAxisCharacters * m_charWidth : 0);
    m_plotRight = rect.right - (m_rightAxis != 0 ? cAxisCharacters * m_charWidth : 0);
    const int rows = row_count();
    const int gap = (m_charHeight + 3) >> 2;
    const int tick = (m_charWidth + 1) >> 1;
    m_plotBottom =
        rect.bottom - ((m_charHeight + gap) * rows + gap + tick) - (rows == 1 ? m_charHeight : 0);
    const int top = rect.top + (m_yLegend.IsEmpty() ? 0 : m_charHeight);
    const int columns = m_axis == ScaleAxis::Points ? m_xMax - m_xMin : std::max(m_scaleCount, 1);
    m_xScale = static_cast<double>(m_plotRight - m_plotLeft) / columns;
    const double range = static_cast<double>(m_yMax) - m_yMin;
    m_yScale = range == 0 ? 0 : (static_cast<double>(m_plotBottom) - top) / range;
}

// Drawing.

void ProfileChart::Draw(CDC* dc, CRect rect) {
    if (dc == nullptr) return;
    const RestoredState restored(*dc);
    dc->SetBkColor(cWhite);
    const double wide = static_cast<double>(rect.Width()) / m_designWidth;
    const double high = static_cast<double>(rect.Height()) / m_designHeight;
    m_scaleFactor = high < wide ? high : wide;
    dc->Rectangle(rect.left, rect.top, rect.right, rect.bottom);
    rect.DeflateRect(1, 1);
    m_fontHeight = toInt(m_scaleFactor * cFontDesignHeight + cRoundUp);
    if (!std::isfinite(m_scaleFactor) || m_fontHeight <= 0) return;
    CFont font;
    createFont(font, m_fontHeight, FW_NORMAL, 0);
    const Selected selected(*dc, &font);
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
    if (m_bandsShown == 0) return;
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
    CPen pen(PS_SOLID, toInt(m_scaleFactor + cRoundUp), cBlack);
    const Selected selected(*dc, &pen);
    dc->MoveTo(x, dev_y(m_yMin));
    dc->LineTo(x, dev_y(m_yMax));
    draw_score_ticks(dc, x, left);
    draw_score_labels(dc, x, left);
    if (!m_yLegend.IsEmpty()) draw_y_legend(dc, x, left);
}

void ProfileChart::draw_y_legend(CDC* dc, int x, bool isLeft) {
    CFont italic;
    CFont bold;
    createFont(italic, m_fontHeight, FW_NORMAL, 1);
    createFont(bold, m_fontHeight, FW_BOLD, 0);
    const int width = m_yLegend.Find('\\') < 0
                          ? static_cast<int>(dc->GetTextExtent(m_yLegend).cx)
                          : CalcFormattedWidth(dc, m_yLegend, nullptr, &italic, &bold);
    // A title that is wider than the room beside the plot goes on above it.
    const int room = (cAxisCharacters - 1) * m_charWidth - m_charWidth / 2;
    const int inward = std::max(0, width - room);
    dc->SetTextAlign((isLeft ? TA_RIGHT : TA_LEFT) | TA_TOP);
    PrintFormatted(dc, isLeft ? x - m_charWidth + inward : x + m_charWidth - inward,
                   dev_y(m_yMax) - m_charHeight - m_fontHeight, m_yLegend, nullptr, &italic, &bold);
}

void ProfileChart::draw_score_ticks(CDC* dc, int x, bool isLeft) {
    const auto draw = [&](int score, int length) {
        const int y = dev_y(score);
        dc->MoveTo(isLeft ? x - length : x, y);
        dc->LineTo(isLeft ? x : x + length, y);
    };
    if (m_majorStep != 0) {
        const int length = (m_charWidth + 1) >> 1;
        draw(m_labelStart, length);
        draw(m_labelEnd, length);
        forEachStep(m_majorBase, m_majorStep, m_labelStart, m_labelEnd, false,
                    [&](int score) { draw(score, length); });
    }
    if (m_scaleFactor > 1.0) {
        forEachStep(m_minorBase, m_minorStep, m_labelStart, m_labelEnd, true,
                    [&](int score) { draw(score, (m_charHeight + 3) >> 2); });
    }
}

void ProfileChart::draw_score_labels(CDC* dc, int x, bool isLeft) {
    const int away = m_charWidth;  // the tick and as much again
    const int labelX = isLeft ? x - away : x + away;
    CFont symbols;
    createFont(symbols, m_fontHeight, FW_NORMAL, 0, true);
    draw_end_label(dc, labelX, isLeft, m_labelStart, cLessOrEqual, symbols);
    draw_end_label(dc, labelX, isLeft, m_labelEnd, cGreaterOrEqual, symbols);
    dc->SetTextAlign((isLeft ? TA_RIGHT : TA_LEFT) | TA_TOP);
    forEachStep(m_majorBase, m_majorStep, m_labelStart, m_labelEnd, false, [&](int score) {
        CString text;
        text.Format("%d", score);
        dc->TextOut(labelX, label_top(score), text);
    });
}

void ProfileChart::draw_end_label(CDC* dc, int x, bool isLeft, int score, char sign,
                                  CFont& symbols) {
    CString text;
    text.Format(" %d", score);
    TEXTMETRIC metrics;
    dc->GetTextMetrics(&metrics);
    const int baseLine = label_top(score) + metrics.tmAscent;
    const auto drawSign = [&](int signX) {
        const Selected selected(*dc, &symbols);
        const int width = dc->GetTextExtent(&sign, 1).cx;
        dc->TextOut(signX, baseLine, &sign, 1);
        return width;
    };
    dc->SetTextAlign((isLeft ? TA_RIGHT : TA_LEFT) | TA_BASELINE);
    if (isLeft) {
        dc->TextOut(x, baseLine, text);
        drawSign(x - dc->GetTextExtent(text).cx);
    } else {
        dc->TextOut(x + drawSign(x), baseLine, text);
    }
}

void ProfileChart::draw_x_axis(CDC* dc) {
    CPen pen(PS_SOLID, toInt(m_scaleFactor + cRoundUp), cBlack);
    const Selected selected(*dc, &pen);
    for (const int score : {m_yMax, m_yMin}) {
        dc->MoveTo(dev_x(m_xMin), dev_y(score));
        dc->LineTo(dev_x(m_xMax), dev_y(score));
    }
    if (m_scaleCount > 0) draw_scale_rows(dc);
}

void ProfileChart::draw_scale_rows(CDC* dc) {
    CFont italic;
    CFont normal;
    CFont bold;
    createFont(italic, m_fontHeight, FW_NORMAL, 1);
    createFont(normal, m_fontHeight, FW_NORMAL, 0);
    createFont(bold, m_fontHeight, FW_BOLD, 0);
    draw_first_row(dc, &normal, &italic, &bold);
    const int gap = (m_charHeight + 3) >> 2;
    int y = dev_y(m_yMin) + m_charHeight + 2 * gap + ((m_charWidth + 1) >> 1);
    for (std::size_t row = 1; row < m_legendRows.size() && m_legendRows[row]; ++row) {
        draw_x_legend(dc, m_legendRows[row].get(), y, &normal, &italic, &bold);
        y += m_charHeight + gap;
    }
}

void ProfileChart::draw_first_row(CDC* dc, CFont* normal, CFont* italic, CFont* bold) {
    const int bottom = dev_y(m_yMin);
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
    if (m_breaks.IsEmpty()) return;
    CPen pen(PS_SOLID, line_width(), cBlack);
    const Selected selected(*dc, &pen);
    for (int i = 0; i < m_breaks.GetSize(); ++i) {
        const int x = dev_x(m_breaks[i] + 0.5);
        dc->MoveTo(x, dev_y(m_yMin));
        dc->LineTo(x, dev_y(m_yMax));
    }
}

void ProfileChart::draw_horz_lines(CDC* dc) {
    if (m_horzLines.IsEmpty()) return;
    CPen pen(PS_DASH, 1, cBlack);
    const Selected selected(*dc, &pen);
    for (int i = 0; i < m_horzLines.GetSize(); ++i) {
        const int y = dev_y(static_cast<int>(m_horzLines[i]));
        dc->MoveTo(dev_x(m_xMin), y);
        dc->LineTo(dev_x(m_xMax), y);
    }
}

void ProfileChart::draw_sky_line(CDC* dc) {
    if (!m_skyLine || m_skyLineShown == 0) return;
    CPen pen(PS_SOLID, line_width(), m_skyLine->GetColor());
    const Selected selected(*dc, &pen);
    const int top = dev_y(m_labelEnd);
    const int bottom = dev_y(m_labelStart);
    BreakCursor breaks(m_breaks);
    bool connected = false;
    int previous = 0;
    for (int scale = 1; scale <= m_scaleCount && m_skyLine->HasValue(scale - 1); ++scale) {
        const int y = clampBetween(dev_y(m_skyLine->GetValue(scale - 1)), top, bottom);
        const int left = dev_x(scale - 0.5);
        dc->MoveTo(left, connected ? previous : y);
        if (connected) dc->LineTo(left, y);
        dc->LineTo(dev_x(scale + 0.5), y);
        connected = !breaks.Passes(scale);
        previous = y;
    }
}

void ProfileChart::draw_data_series(CDC* dc) {
    const int size = symbol_size();
    for (const auto& profile : m_profiles) draw_profile(dc, *profile, size);
}

void ProfileChart::draw_profile(CDC* dc, ProfileInfo& profile, int size) {
    CPen pen(PS_SOLID, line_width(), profile.GetColor());
    CBrush brush(profile.GetColor());
    const Selected selectedPen(*dc, &pen);
    const Selected selectedBrush(*dc, &brush);
    DashedPath path(profile.GetLineStyle(), m_scaleFactor);
    BreakCursor breaks(m_breaks);
    bool connected = false;
    for (int scale = 1; scale <= m_scaleCount; ++scale) {
        const bool isScore = IsScore(profile, scale - 1);
        if (isScore) {
            const CPoint point(dev_x(scale), dev_y_in_plot(profile.GetValue(scale - 1)));
            plot_data(dc, point.x, point.y, size, scale - 1, &profile);
            if (connected) {
                path.LineTo(*dc, point);
            } else {
                path.MoveTo(point);
            }
        }
        connected = !breaks.Passes(scale) && isScore;
    }
}

void ProfileChart::plot_data(CDC* dc, int x, int y, int size, int, ProfileInfo* profile) {
    draw_symbol(dc, x, y, size, profile->GetSymbol());
}

void ProfileChart::draw_symbol(CDC* dc, int x, int y, int size, int symbol) {
    drawProfileSymbol(*dc, x, y, size, symbol);
}

// The legend of the profiles.

int ProfileChart::legend_entry_count() const {
    return GetProfileCount();
}

CString ProfileChart::legend_entry_name(int index) const {
    return GetProfile(index).GetName();
}

bool ProfileChart::legend_is_drawn() const {
    return m_legend != ProfileLegend::None && legend_entry_count() > 0;
}

void ProfileChart::calc_legend_rect(CDC* dc) {
    const auto part = [](int length, int percent) {
        return static_cast<int>(std::int64_t{length} * percent / cPercent);
    };
    int widest = 0;
    const int count = legend_entry_count();
    for (int i = 0; i < count; ++i) {
        const int width = dc->GetTextExtent(legend_entry_name(i)).cx;
        widest = std::max(widest, width);
    }
    const int left = dev_x(m_xMin);
    const int top = dev_y(m_yMax);
    m_legendRect.left = wrapAdd(left, part(wrapSub(dev_x(m_xMax), left), m_legendX));
    m_legendRect.top = wrapAdd(top, part(wrapSub(dev_y(m_yMin), top), m_legendY));
    m_legendRect.right = wrapSum(m_legendRect.left, cEntryCharacters * m_charWidth, widest);
    m_legendRect.bottom = wrapAdd(m_legendRect.top, wrapMul(count + 1, m_charHeight));
}

void ProfileChart::draw_line_legends(CDC* dc) {
    if (!legend_is_drawn()) return;
    calc_legend_rect(dc);
    draw_legend_column(dc);
}

void ProfileChart::draw_legend_column(CDC* dc) {
    const RestoredState restored(*dc);
    dc->SelectStockObject(NULL_PEN);
    dc->SelectStockObject(HOLLOW_BRUSH);
    dc->SetTextAlign(TA_LEFT | TA_TOP);
    const int left = wrapAdd(m_legendRect.left, legend_symbol_size());
    int y = wrapAdd(m_legendRect.top, m_charHeight / 2);
    for (int i = 0; i < legend_entry_count(); ++i, y = wrapAdd(y, m_charHeight)) {
        draw_legend_sample(dc, i, left, y);
        dc->TextOut(wrapAdd(left, (cSampleCharacters + 1) * m_charWidth),
                    wrapSub(y, m_charHeight / 2), legend_entry_name(i));
    }
}

void ProfileChart::draw_legend_sample(CDC* dc, int index, int left, int y) {
    const ProfileInfo& profile = GetProfile(index);
    CPen pen(PS_SOLID, line_width(), profile.GetColor());
    CBrush brush(profile.GetColor());
    const Selected selectedPen(*dc, &pen);
    const Selected selectedBrush(*dc, &brush);
    const int length = cSampleCharacters * m_charWidth;
    DashedPath path(profile.GetLineStyle(), m_scaleFactor);
    path.MoveTo({left, y});
    path.LineTo(*dc, {wrapAdd(left, length), y});
    if (profile.GetPointType() == ProfilePointType::LineOnly) return;
    draw_symbol(dc, wrapAdd(left, length / 2), y, legend_symbol_size(), profile.GetSymbol());
}

}  // namespace tessalink
