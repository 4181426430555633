#include "graphs/profile/ProfileGraph.h"

ProfileGraph::ProfileGraph(int yMin, int yMax, int majorStep, int minorStep, int leftAxis,
                           int rightAxis, int designWidth, int designHeight)
    : ProfileChart(ScaleAxis::Points) {
    constructor(yMin, yMax, majorStep, minorStep, leftAxis, rightAxis, designWidth, designHeight);
}

ProfileGraph::~ProfileGraph() {
    Clear();
}

void ProfileGraph::constructor(int yMin, int yMax, int majorStep, int minorStep, int leftAxis,
                               int rightAxis, int designWidth, int designHeight) {
    construct(yMin, yMax, majorStep, minorStep, leftAxis, rightAxis, designWidth, designHeight);
}

void ProfileGraph::SetXLegend(CStringArray* row1, CStringArray* row2, CStringArray* row3,
                              CStringArray* row4) {
    set_legend_rows({row1, row2, row3, row4});
}

int ProfileGraph::AddProfile(const char* name, double* values, COLORREF color, std::uint32_t id) {
    return add_profile(name, values, color, id) != nullptr ? 1 : 0;
}

void ProfileGraph::ShowLegend(int show) {
    m_legend = show != 0 ? tessalink::ProfileLegend::Inside : tessalink::ProfileLegend::None;
}
