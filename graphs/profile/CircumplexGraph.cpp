#include "graphs/profile/CircumplexGraph.h"

#include <algorithm>
#include <cmath>

#include "platform/base/CInvalidArgException.h"

using namespace tessalink;

namespace {

constexpr int cTextLines = 3;

}  // namespace

CircumplexGraph::CircumplexGraph(int xMin, int xMax, int yMin, int yMax, int labelStep,
                                 int gridDotStep, int titleSize, int subtitleSize, int axisTextSize,
                                 int quadrantTextSize1, int quadrantTextSize2,
                                 int quadrantTextSize3, int labelSize, int legendTextSize)
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
      m_legendTextSize(legendTextSize) {
    constexpr double maxSymbolSize = 0.08;
    design().maxSymbolSize = maxSymbolSize;
}

CircumplexGraph::~CircumplexGraph() = default;

// Texts and sizes.

CircumplexGraph& CircumplexGraph::set_text(int text, const char* line) {
    m_texts[static_cast<std::size_t>(text)] = line;
    return *this;
}

CircumplexGraph& CircumplexGraph::set_lines(int text, const char* line1, const char* line2,
                                            const char* line3) {
    return set_text(text, line1).set_text(text + 1, line2).set_text(text + 2, line3);
}

CircumplexGraph& CircumplexGraph::SetTitle(const char* line1, const char* line2,
                                           const char* line3) {
    return set_lines(TitleText, line1, line2, line3);
}

CircumplexGraph& CircumplexGraph::SetNAxisText(const char* text) {
    return set_text(NorthText, text);
}

CircumplexGraph& CircumplexGraph::SetSAxisText(const char* text) {
    return set_text(SouthText, text);
}

CircumplexGraph& CircumplexGraph::SetEAxisText(const char* text) {
    return set_text(EastText, text);
}

CircumplexGraph& CircumplexGraph::SetWAxisText(const char* text) {
    return set_text(WestText, text);
}

CircumplexGraph& CircumplexGraph::SetNWText(const char* line1, const char* line2,
                                            const char* line3) {
    return set_lines(NorthWestText, line1, line2, line3);
}

CircumplexGraph& CircumplexGraph::SetNEText(const char* line1, const char* line2,
                                            const char* line3) {
    return set_lines(NorthEastText, line1, line2, line3);
}

CircumplexGraph& CircumplexGraph::SetSWText(const char* line1, const char* line2,
                                            const char* line3) {
    return set_lines(SouthWestText, line1, line2, line3);
}

CircumplexGraph& CircumplexGraph::SetSEText(const char* line1, const char* line2,
                                            const char* line3) {
    return set_lines(SouthEastText, line1, line2, line3);
}

CString CircumplexGraph::GetTitle() const {
    CString title;
    for (int line = TitleText; line < TitleText + cTextLines; ++line) {
        if (!has_text(line)) continue;
        if (!title.IsEmpty()) title += ' ';
        title += load_text(line);
    }
    return title;
}

CString CircumplexGraph::load_text(int text) const {
    return m_texts[static_cast<std::size_t>(text)];
}

bool CircumplexGraph::has_text(int text) const {
    return !m_texts[static_cast<std::size_t>(text)].IsEmpty();
}

CircumplexGraph& CircumplexGraph::SetDesignSize(double width, double height) {
    design().width = width;
    design().height = height;
    return *this;
}

CircumplexGraph& CircumplexGraph::SetPadding(double top, double bottom) {
    design().topPadding = top;
    design().bottomPadding = bottom;
    return *this;
}

CircumplexGraph& CircumplexGraph::SetStyleMargins(double horizontal, double vertical) {
    design().styleMarginH = horizontal;
    design().styleMarginV = vertical;
    return *this;
}

CircumplexGraph& CircumplexGraph::SetAdvancedOptions(double designWidth, double designHeight,
                                                     double styleMarginH, double styleMarginV,
                                                     double legendWidth, double topPadding,
                                                     double bottomPadding, double maxPlotSize,
                                                     double sideMargin, double maxSymbolSize) {
    SetDesignSize(designWidth, designHeight);
    SetStyleMargins(styleMarginH, styleMarginV);
    SetPadding(topPadding, bottomPadding);
    m_legendWidth = legendWidth;
    design().maxPlotSize = maxPlotSize;
    design().sideMargin = sideMargin;
    design().maxSymbolSize = maxSymbolSize;
    update_legend_column();
    return *this;
}

CircumplexGraph& CircumplexGraph::SetLegendPlacement(int placement) {
    m_legendPlacement = placement;
    update_legend_column();
    return *this;
}

void CircumplexGraph::update_legend_column() {
    design().legendColumn = m_legendPlacement == LegendRight ? m_legendWidth : 0;
}

Planar CircumplexGraph::GetCenter() const {
    return {(static_cast<double>(GetXMin()) + GetXMax()) / 2,
            (static_cast<double>(GetYMin()) + GetYMax()) / 2};
}

// Points.

void CircumplexGraph::AddPoint(double x, double y, int id, const char* label, std::uint32_t color,
                               SymbolType symbol, PointLegend legend) {
    if (symbol == AnySymbol) symbol = get_symbol();
    m_points.push_back({x, y, id, label, color, symbol, legend});
}

void CircumplexGraph::AddPoint(double x, double y, int id, std::uint32_t color, SymbolType symbol) {
    AddPoint(x, y, id, "", color, symbol, NoName);
}

void CircumplexGraph::AddPoint(const Polar& place, int id, const char* label, std::uint32_t color,
                               SymbolType symbol, PointLegend legend) {
    const Planar offset = toPlanar(place);
    const Planar middle = GetCenter();
    AddPoint(middle.x + offset.x, middle.y + offset.y, id, label, color, symbol, legend);
}

BOOL CircumplexGraph::find_point(int id, int& index) const {
    const auto found = std::find_if(m_points.begin(), m_points.end(),
                                    [&](const point_info& point) { return point.id == id; });
    if (found == m_points.end()) return 0;
    index = static_cast<int>(found - m_points.begin());
    return 1;
}

BOOL CircumplexGraph::UpdatePoint(int id, double x, double y) {
    int index = 0;
    if (find_point(id, index) == 0) return 0;
    point_info& point = m_points[static_cast<std::size_t>(index)];
    point.x = x;
    point.y = y;
    return 1;
}

BOOL CircumplexGraph::RemovePoint(int id) {
    int index = 0;
    if (find_point(id, index) == 0) return 0;
    m_points.erase(m_points.begin() + index);
    return 1;
}

const CircumplexGraph::point_info& CircumplexGraph::GetPoint(int index) const {
    if (index < 0 || index >= GetPointCount()) AfxThrowInvalidArgException();
    return m_points[static_cast<std::size_t>(index)];
}

CircumplexGraph::SymbolType CircumplexGraph::get_symbol() {
    const auto least = std::min_element(m_symbolUse.begin(), m_symbolUse.end());
    ++*least;
    return static_cast<SymbolType>(least - m_symbolUse.begin() + 1);
}

void CircumplexGraph::AddConnection(std::span<const int> ids, std::uint32_t color, int penStyle,
                                    bool closed) {
    m_connections.push_back({{ids.begin(), ids.end()}, color, penStyle, closed});
}

bool CircumplexGraph::AddSector(double fromAngle, double toAngle, const char* text) {
    if (GetSectorCount() >= cMaxSectors) return false;
    if (!std::isfinite(fromAngle) || !std::isfinite(toAngle)) return false;
    m_sectors.push_back({fromAngle, toAngle, text});
    return true;
}

bool CircumplexGraph::AddArc(double fromAngle, double toAngle, double innerRadius,
                             double outerRadius, std::uint32_t color, bool filled) {
    for (const double value : {fromAngle, toAngle, innerRadius, outerRadius}) {
        if (!std::isfinite(value)) return false;
    }
    m_arcs.push_back({fromAngle, toAngle, innerRadius, outerRadius, color, filled});
    return true;
}
