#include "graphs/profile/ProfileGraph2.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "graphs/common/FormattedText.h"
#include "graphs/profile/ProfileFont.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"

using tessalink::RestoredState;
using tessalink::toInt;

namespace {

/// Among more profiles the values beside the points do not make room for other points.
constexpr std::size_t cMaxProfilesWithRoom = 64;

/// Of the symbol font.
constexpr char cArrowUp = '\xAD';
constexpr char cArrowDown = '\xAF';

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
    const auto slope = [&](int neighbor) {
        Slope drawn = slope_to(*profile, scaleIndex, neighbor);
        if (m_scores.max < m_scores.min) drawn.direction = -drawn.direction;
        return drawn;
    };
    const Slope before = slope(scaleIndex - 1);
    const Slope after = slope(scaleIndex + 1);
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
    const bool meetsBefore = isBelow ? before.IsDown() : before.IsUp();
    const bool meetsAfter = isBelow ? after.IsDown() : after.IsUp();
    const UINT side = meetsBefore == meetsAfter ? TA_CENTER : meetsBefore ? TA_LEFT : TA_RIGHT;
    ValuePlace place{{x, isBelow ? below : above}, side};
    const CString label = point_label(*profile, scaleIndex, cArrowDown, cArrowUp);
    if (meetsBefore && meetsAfter) set_aside(*dc, place, {x, y}, scaleIndex, *profile, label);
    const RestoredState restored(*dc);
    dc->SetBkMode(TRANSPARENT);
    dc->SetTextAlign(place.align | TA_TOP);
    PrintFormatted(dc, place.at.x, place.at.y, label, nullptr, nullptr, nullptr);
}

void ProfileGraph2::set_aside(CDC& dc, ValuePlace& place, POINT point, int scaleIndex,
                              ProfileInfo& profile, const CString& label) const {
    const auto height = [&](int neighbor) {
        return std::abs(score_place(neighbor, drawn_score(&profile, neighbor)).y - point.y);
    };
    const int before = height(scaleIndex - 1);
    const int after = height(scaleIndex + 1);
    const double slope = std::max(before, after) / m_xScale;
    CFont symbols;
    tessalink::createSymbolFont(symbols, m_fontHeight);
    const int width = CalcFormattedWidth(&dc, label, nullptr, nullptr, nullptr, &symbols);
    const int away =
        std::abs(place.at.y < point.y ? point.y - place.at.y - m_charHeight : place.at.y - point.y);
    const bool isPeak = place.at.y > point.y;
    const int top = isPeak ? std::max<int>(point.y - m_charHeight, dev_y(m_scores.max))
                           : std::min<int>(point.y, dev_y(m_scores.min) - m_charHeight);
    // So far the steeper line has left the height of the value.
    const int passed = isPeak ? top + m_charHeight - point.y : point.y - top;
    const int beside = std::max(away, toInt(std::ceil(passed / slope)));
    // Flat lines, whose values would be far off, pass between the point and its value.
    const bool isCrossed = slope * width / 2 > away;
    if (!isCrossed && beside + width > m_xScale / 2) return;
    const bool isRight = after >= before;
    place = {{isRight ? point.x + beside : point.x - beside, top},
             isRight ? UINT{TA_LEFT} : UINT{TA_RIGHT}};
}

bool ProfileGraph2::is_taken(int scaleIndex, int top, const ProfileInfo* own) const {
    if (m_profiles.size() > cMaxProfilesWithRoom) return false;
    return std::any_of(m_profiles.begin(), m_profiles.end(), [&](const auto& other) {
        if (other.get() == own || !IsScore(*other, scaleIndex)) return false;
        const int y = dev_y_in_plot(other->GetValue(scaleIndex));
        return y > top - m_charHeight / 2 && y < top + m_charHeight + m_charHeight / 2;
    });
}
