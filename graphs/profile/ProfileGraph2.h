#pragma once

#include "graphs/profile/ProfileChart.h"

/// A profile graph whose scales stand in the middle of cells that share the width of the plot, with
/// values beside the points on request and a legend inside or below the plot.
class TESSALINK_API ProfileGraph2 : public tessalink::ProfileChart {
public:
    /// Symbol 0, SymbolAndValue 1, LineOnly 2.
    using PointType = tessalink::ProfilePointType;
    /// None 0, Inside 1, Below 2.
    using LegendType = tessalink::ProfileLegend;

    /// As that of ProfileGraph.
    ProfileGraph2(int yMin, int yMax, int majorStep, int minorStep, int leftAxis, int rightAxis,
                  int designWidth, int designHeight);
    ~ProfileGraph2() override;

    /// Takes over the row of texts under the plot: its heading, then one text for each scale.
    void SetXLegend(CStringArray* row);
    /// Removes the row: so many scales show their numbers instead of texts.
    void SetXLegendPoints(int count);
    /// Appends a profile. `values`, one for each scale, is taken over. `lineStyle` is the pen style
    /// of the lines (PS_SOLID to PS_DASHDOTDOT), `decimals` how many the values beside the points
    /// have. Returns 0 when there is no memory.
    int AddProfile(const char* name, double* values, COLORREF color, std::uint32_t id,
                   PointType type, int lineStyle, int decimals) {
        return add_profile(name, values, color, id, type, lineStyle, decimals);
    }
    /// Where the legend stands.
    void ShowLegend(LegendType type) { m_legend = type; }
    /// Percent; 100 at start.
    void SetPointScale(int percent) { m_pointScale = percent; }
    /// Whether profiles of the type SymbolAndValue show values; on at start.
    void ShowPointTexts(int show) { m_pointTextsShown = show; }
    /// Removes everything that was added.
    void Clear() { clear_chart(); }

protected:
    /// Writes the value above or below the point: where the profile's lines are not, or on the
    /// other side when only there no other point is. Where both lines would meet it, since the plot
    /// ends on the other side, it is set aside, behind the steeper one. A value that lies off the
    /// plot has an arrow behind it.
    void draw_point_text(CDC* dc, int x, int y, int size, int scaleIndex,
                         ProfileInfo* profile) override;

private:
    struct ValuePlace {
        POINT at{};
        UINT align;
    };
    void set_aside(CDC& dc, ValuePlace& place, POINT point, int scaleIndex, ProfileInfo& profile,
                   const CString& label) const;
    /// Whether a point of another profile lies where a line of text would, from `top` down.
    bool is_taken(int scaleIndex, int top, const ProfileInfo* own) const;
};
