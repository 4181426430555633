#pragma once

#include "graphs/profile/ProfileChart.h"

/// A score profile: scales side by side, each a column with its text underneath, a score axis, and
/// profiles as lines through one score per scale, with a symbol at each. Its members are those of
/// ProfileChart and these.
class TESSALINK_API ProfileGraph : public tessalink::ProfileChart {
public:
    /// The range of scores, the steps of ticks with and without labels, whether the axes are shown,
    /// and the size that fonts and pens are designed for.
    ProfileGraph(int yMin, int yMax, int majorStep, int minorStep, int leftAxis, int rightAxis,
                 int designWidth, int designHeight);
    ~ProfileGraph() override;

    /// Takes over up to four rows of texts under the plot; any may be null. Element 0 is the row's
    /// heading, element k the text under scale k. The first row tells the number of scales; the
    /// others must not be shorter, or Draw raises CInvalidArgException.
    void SetXLegend(CStringArray* row1, CStringArray* row2, CStringArray* row3, CStringArray* row4);
    /// Appends a profile. `values`, one for each scale, is taken over. Returns 0 when there is
    /// no memory.
    int AddProfile(const char* name, double* values, COLORREF color, std::uint32_t id);
    /// Whether there is a legend, inside the plot.
    void ShowLegend(int show);
    /// Removes everything that was added.
    void Clear() { clear_chart(); }

protected:
    /// What both constructors of a graph do.
    void constructor(int yMin, int yMax, int majorStep, int minorStep, int leftAxis, int rightAxis,
                     int designWidth, int designHeight);
};
