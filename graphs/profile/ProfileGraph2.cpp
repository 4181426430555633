#include "graphs/profile/ProfileGraph2.h"

#include <algorithm>
#include <cstdlib>

#include "platform/graphics/DCScope.h"

using tessalink::RestoredState;

namespace {

/// Among more profiles the values beside the points do not make room for other points.
constexpr std::size_t cMaxProfilesWithRoom = 64;

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

void ProfileGraph2::draw_point_text(CDC* dc, int x, int y, int size, int scaleIndex,
                                    ProfileInfo* profile) {
    if (m_pointTextsShown == 0) return;
    const Slope before = slope_to(*profile, scaleIndex, scaleIndex - 1);
    const Slope after = slope_to(*profile, scaleIndex, scaleIndex + 1);
    const int away = std::abs(size) + m_charHeight / 4;
    const int above = y - away - m_charHeight;
    const int below = y + away;
    const bool fitsAbove = above >= dev_y(m_scores.max);
    const bool fitsBelow = below + m_charHeight <= dev_y(m_scores.min);
    // A line that rises on one side only leaves the other side above the point free.
    bool isBelow = before.IsUp() + after.IsUp() > before.IsDown() + after.IsDown();
    if (!(isBelow ? fitsBelow : fitsAbove)) isBelow = !isBelow;
    if ((isBelow ? fitsAbove : fitsBelow) &&
        is_taken(scaleIndex, isBelow ? below : above, profile) &&
        !is_taken(scaleIndex, isBelow ? above : below, profile)) {
        isBelow = !isBelow;
    }
    const RestoredState restored(*dc);
    dc->SetBkMode(TRANSPARENT);
    const bool meetsBefore = isBelow ? before.IsDown() : before.IsUp();
    const bool meetsAfter = isBelow ? after.IsDown() : after.IsUp();
    const UINT align = meetsBefore == meetsAfter ? TA_CENTER : meetsBefore ? TA_LEFT : TA_RIGHT;
    dc->SetTextAlign(align | TA_TOP);
    dc->TextOut(x, isBelow ? below : above, point_text(*profile, scaleIndex));
}

bool ProfileGraph2::is_taken(int scaleIndex, int top, const ProfileInfo* own) const {
    if (m_profiles.size() > cMaxProfilesWithRoom) return false;
    return std::any_of(m_profiles.begin(), m_profiles.end(), [&](const auto& other) {
        if (other.get() == own || !IsScore(*other, scaleIndex)) return false;
        const int y = dev_y_in_plot(other->GetValue(scaleIndex));
        return y > top - m_charHeight / 2 && y < top + m_charHeight + m_charHeight / 2;
    });
}
