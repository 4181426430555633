// The chart that the rows of charts draw: marks on bars with a label each, an axis, a legend.
#pragma once

#include <algorithm>
#include <cstddef>

#include "benchmarks/comparison/programs/Marks.h"
#include "graphs/bar/BarGraph.h"
#include "graphs/bar/BarPointGraphic.h"
#include "graphs/bar/BarScale2.h"
#include "graphs/bar/BarSimpleLegend.h"
#include "graphs/bar/BarValueLegend.h"

namespace charts {

inline constexpr int cMarksOfScale = 24;
inline constexpr int cHighest = 240;
inline constexpr int cTick = 40;
inline constexpr int cWidth = 800;

inline BarScale* addScale(BarGraph& graph, const char* rightDesc, int rightWidth, int tick) {
    auto* const scale = new BarScale2(0, cHighest, "", rightDesc, 0, rightWidth, tick, 0, 0,
                                      cHighest, 10, 10, 2, 0, 12, 16, 0, cHighest);
    graph.AddSection(scale);
    return scale;
}

inline void addMark(BarScale& scale, double value) {
    scale.AddGraphic(new BarPointGraphic(value, 9, marks::cBrushColor, BarPointGraphic::Circle));
}

// Bars with 24 marks each and a label under every mark; at the end the one axis with ticks and
// numbers, and the legend: a mark and what it is.
inline void fill(BarGraph& graph, int marks) {
    for (int i = 0; i < marks; i += cMarksOfScale) {
        const bool isLast = i + cMarksOfScale >= marks;
        BarScale* const scale = addScale(graph, "", 0, isLast ? cTick : 0);
        if (isLast) {
            graph.AddSection(
                new BarValueLegend(scale, "", "", 0, 0, 10, 10, 0, 0, 12, 12, "Arial", "Arial"));
        }
        auto* const labels =
            new BarSimpleLegend(scale, "", "", 0, 0, 10, 10, 0, 0, 10, 10, "Arial", "Arial");
        for (int mark = i; mark < std::min(i + cMarksOfScale, marks); ++mark) {
            const double value = (mark - i) * 10 + 5;
            addMark(*scale, value);
            labels->AddText(value,
                            marks::all()[static_cast<std::size_t>(mark % marks::cCount)].label);
        }
        graph.AddSection(labels);
    }
    addMark(*addScale(graph, "marks", 100, 0), cHighest);
}

// How much of a sheet of that width the graph takes.
inline CRect placeOf(const BarGraph& graph) {
    return {0, 0, cWidth, graph.GetDesignHeight() * cWidth / BarGraph::cDesignWidth};
}

}  // namespace charts
