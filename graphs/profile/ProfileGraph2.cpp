#include "graphs/profile/ProfileGraph2.h"

#include <algorithm>
#include <cstdlib>

#include "graphs/common/DeviceUnits.h"
#include "platform/graphics/DCScope.h"

using tessalink::RestoredState;
using tessalink::wrapSum;

namespace {

constexpr int cSampleCharacters = 3;
constexpr int cMaxDecimals = 9;
/// Among more profiles the values beside the points do not make room for other points.
constexpr std::size_t cMaxProfilesWithRoom = 64;

int compare(double a, double b) {
    return a < b ? -1 : a > b ? 1 : 0;
}

}  // namespace

ProfileGraph2::ProfileGraph2(int yMin, int yMax, int majorStep, int minorStep, int leftAxis,
                             int rightAxis, int designWidth, int designHeight)
    : ProfileChart(ScaleAxis::Cells) {
    construct(yMin, yMax, majorStep, minorStep, leftAxis, rightAxis, designWidth, designHeight);
}

ProfileGraph2::~ProfileGraph2() {
    Clear();
}

void ProfileGraph2::SetXLegend(CStringArray* row) {
    set_legend_rows({row, nullptr, nullptr, nullptr});
}

void ProfileGraph2::SetXLegendPoints(int count) {
    set_legend_rows({});
    set_numbered_scales(count);
}

int ProfileGraph2::AddProfile(const char* name, double* values, COLORREF color, std::uint32_t id,
                              PointType type, int lineStyle, int decimals) {
    ProfileInfo* profile = add_profile(name, values, color, id);
    if (profile == nullptr) return 0;
    profile->SetPointType(type);
    profile->SetLineStyle(lineStyle);
    profile->SetDecimals(decimals);
    return 1;
}

int ProfileGraph2::symbol_size() const {
    const std::int64_t size = ProfileChart::symbol_size();
    return tessalink::toInt(static_cast<double>(size * m_pointScale / cFullPointScale)) & ~1;
}

void ProfileGraph2::plot_data(CDC* dc, int x, int y, int size, int scaleIndex,
                              ProfileInfo* profile) {
    if (profile->GetPointType() == PointType::LineOnly) return;
    draw_symbol(dc, x, y, size, profile->GetSymbol());
    if (profile->GetPointType() == PointType::SymbolAndValue) {
        draw_point_text(dc, x, y, size, scaleIndex, profile);
    }
}

bool ProfileGraph2::break_between(int scaleIndex, int neighbour) const {
    const auto scale = static_cast<unsigned>(std::min(scaleIndex, neighbour) + 1);
    const unsigned* first = m_breaks.GetData();
    return std::find(first, first + m_breaks.GetSize(), scale) != first + m_breaks.GetSize();
}

ProfileGraph2::Slope ProfileGraph2::slope_to(const ProfileInfo& profile, int scaleIndex,
                                             int neighbour) const {
    if (neighbour < 0 || neighbour >= m_scaleCount || !IsScore(profile, neighbour)) return {};
    if (break_between(scaleIndex, neighbour)) return {};
    const auto inRange = [this](double score) {
        return std::clamp<double>(score, std::min(m_yMin, m_yMax), std::max(m_yMin, m_yMax));
    };
    return {true,
            compare(inRange(profile.GetValue(neighbour)), inRange(profile.GetValue(scaleIndex)))};
}

void ProfileGraph2::draw_point_text(CDC* dc, int x, int y, int size, int scaleIndex,
                                    ProfileInfo* profile) {
    if (m_pointTextsShown == 0) return;
    const Slope before = slope_to(*profile, scaleIndex, scaleIndex - 1);
    const Slope after = slope_to(*profile, scaleIndex, scaleIndex + 1);
    const int up = (before.exists && before.direction > 0) + (after.exists && after.direction > 0);
    const int down =
        (before.exists && before.direction < 0) + (after.exists && after.direction < 0);
    const int away = std::abs(size) + m_charHeight / 4;
    const int above = wrapSum(y, -away, -m_charHeight);
    const int below = wrapSum(y, away);
    // A line that rises on one side only leaves the other side above the point free.
    bool isBelow = up > down || above < dev_y(m_yMax);
    if (is_taken(scaleIndex, isBelow ? below : above, profile) &&
        !is_taken(scaleIndex, isBelow ? above : below, profile)) {
        isBelow = !isBelow;
    }
    const RestoredState restored(*dc);
    dc->SetBkMode(TRANSPARENT);
    UINT align = TA_CENTER;
    if (up == 1 && down == 1) align = (before.direction > 0) != isBelow ? TA_LEFT : TA_RIGHT;
    dc->SetTextAlign(align | TA_TOP);
    dc->TextOut(x, isBelow ? below : above,
                tessalink::formatDouble(profile->GetValue(scaleIndex), 0,
                                        std::clamp(profile->GetDecimals(), 0, cMaxDecimals)));
}

bool ProfileGraph2::is_taken(int scaleIndex, int top, const ProfileInfo* own) const {
    if (m_profiles.size() > cMaxProfilesWithRoom) return false;
    return std::any_of(m_profiles.begin(), m_profiles.end(), [&](const auto& other) {
        if (other.get() == own || !IsScore(*other, scaleIndex)) return false;
        const int y = dev_y_in_plot(other->GetValue(scaleIndex));
        return y > top - m_charHeight / 2 && y < top + m_charHeight + m_charHeight / 2;
    });
}

// The legend below the plot.

template <class Visit>
int ProfileGraph2::flow_entries(const CDC& dc, int width, Visit visit) const {
    const int fixed = (cSampleCharacters + 1) * m_charWidth + legend_symbol_size();
    int row = 0;
    int left = 0;
    for (int i = 0; i < legend_entry_count(); ++i) {
        const int entry = fixed + dc.GetTextExtent(legend_entry_name(i)).cx;
        if (left > 0 && left > width - entry) {
            ++row;
            left = 0;
        }
        visit(i, left, row);
        left += entry + m_charWidth;
    }
    return row + 1;
}

void ProfileGraph2::recalc_layout(CDC* dc, CRect& rect) {
    if (m_legend == LegendType::Below && legend_is_drawn()) {
        const CSize letter = dc->GetTextExtent("M", 1);
        m_charWidth = letter.cx;
        m_charHeight = letter.cy;
        const int rows = flow_entries(*dc, rect.Width() - 2 * m_charWidth, [](int, int, int) {});
        m_legendArea = rect;
        m_legendArea.DeflateRect(m_charWidth, 0);
        m_legendArea.top = wrapSum(rect.bottom, -rows * m_charHeight, -m_charHeight / 2);
        rect.bottom = m_legendArea.top;
    }
    ProfileChart::recalc_layout(dc, rect);
}

void ProfileGraph2::calc_legend_rect(CDC* dc) {
    if (m_legend == LegendType::Below) {
        m_legendRect = m_legendArea;
    } else {
        ProfileChart::calc_legend_rect(dc);
    }
}

void ProfileGraph2::draw_line_legends(CDC* dc) {
    if (m_legend != LegendType::Below || !legend_is_drawn()) {
        ProfileChart::draw_line_legends(dc);
        return;
    }
    calc_legend_rect(dc);
    const RestoredState restored(*dc);
    dc->SetTextAlign(TA_LEFT | TA_TOP);
    flow_entries(*dc, m_legendRect.Width(), [&](int i, int left, int row) {
        const int x = wrapSum(m_legendRect.left, left, legend_symbol_size());
        const int y = wrapSum(m_legendRect.top, row * m_charHeight);
        draw_legend_sample(dc, i, x, y + m_charHeight / 2);
        dc->TextOut(x + (cSampleCharacters + 1) * m_charWidth, y, legend_entry_name(i));
    });
}
