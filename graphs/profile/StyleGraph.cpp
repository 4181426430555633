#include "graphs/profile/StyleGraph.h"

StyleGraph::StyleGraph(int tag1, int tag2, UINT title1, UINT title2, UINT title3, UINT north,
                       UINT south, UINT east, UINT west, UINT northWest1, UINT northWest2,
                       UINT northWest3, UINT northEast1, UINT northEast2, UINT northEast3,
                       UINT southWest1, UINT southWest2, UINT southWest3, UINT southEast1,
                       UINT southEast2, UINT southEast3, int xMin, int xMax, int yMin, int yMax,
                       int labelStep, int gridDotStep, int titleSize, int subtitleSize,
                       int axisTextSize, int quadrantTextSize1, int quadrantTextSize2,
                       int quadrantTextSize3, int labelSize)
    : CircleChart({xMin,
                   xMax,
                   yMin,
                   yMax,
                   labelStep,
                   gridDotStep,
                   titleSize,
                   subtitleSize,
                   axisTextSize,
                   {quadrantTextSize1, quadrantTextSize2, quadrantTextSize3},
                   labelSize}),
      m_tag1(tag1),
      m_tag2(tag2),
      m_texts{title1,     title2,     title3,     north,      south,      east,       west,
              northWest1, northWest2, northWest3, northEast1, northEast2, northEast3, southWest1,
              southWest2, southWest3, southEast1, southEast2, southEast3} {}

StyleGraph::~StyleGraph() = default;

CString StyleGraph::load_text(int text) const {
    CString loaded;
    loaded.LoadString(m_texts[static_cast<std::size_t>(text)]);
    return loaded;
}

bool StyleGraph::has_text(int text) const {
    return m_texts[static_cast<std::size_t>(text)] != 0;
}
