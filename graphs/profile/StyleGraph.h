#pragma once

#include <array>

#include "graphs/profile/CircleChart.h"

/// The circle of a circumplex graph with its rings, grid, numbers, side and quadrant texts and
/// title, but without points: for pictures that explain styles. Its texts are numbers of the host's
/// string table and are loaded whenever they are drawn; its sizes are fixed: a sheet of 5.5 by 5
/// inches (4.5 when there is no title), a plot of at most 3.5 inches with 0.75 left free on each
/// side and 0.5 above and below.
class TESSALINK_API StyleGraph : public tessalink::CircleChart {
public:
    /// `tag1` and `tag2` are the host's: they are kept and mean nothing to the graph. The text
    /// numbers are those of the title's three lines, of the sides north, south, east and west, and
    /// of three lines for each quadrant, north-west, north-east, south-west and south-east; 0 means
    /// that there is no such text. The rest is as for CircumplexGraph.
    StyleGraph(int tag1, int tag2, UINT title1, UINT title2, UINT title3, UINT north, UINT south,
               UINT east, UINT west, UINT northWest1, UINT northWest2, UINT northWest3,
               UINT northEast1, UINT northEast2, UINT northEast3, UINT southWest1, UINT southWest2,
               UINT southWest3, UINT southEast1, UINT southEast2, UINT southEast3, int xMin,
               int xMax, int yMin, int yMax, int labelStep, int gridDotStep, int titleSize,
               int subtitleSize, int axisTextSize, int quadrantTextSize1, int quadrantTextSize2,
               int quadrantTextSize3, int labelSize);
    ~StyleGraph() override;

    /// What the constructor was given.
    int GetTag1() const { return m_tag1; }
    /// What the constructor was given.
    int GetTag2() const { return m_tag2; }

protected:
    CString load_text(int text) const override;
    bool has_text(int text) const override;

private:
    int m_tag1;
    int m_tag2;
    std::array<UINT, cTextCount> m_texts;
};
