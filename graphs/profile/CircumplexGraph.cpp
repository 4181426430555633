#include "graphs/profile/CircumplexGraph.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "graphs/common/DeviceUnits.h"
#include "graphs/profile/detail/ChartLabel.h"
#include "graphs/profile/detail/LabelGrid.h"
#include "graphs/profile/detail/MarkShape.h"
#include "graphs/profile/detail/ProfileSymbol.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using namespace tessalink;

namespace {

constexpr double cPoint = 0.013888888888888888;  // in inches
constexpr double cPointsPerInch = 72;
constexpr int cTextLines = 3;

constexpr int cFirstHollow = CircumplexGraph::Ring;
/// From the number of an outline to that of its shape.
constexpr int cHollowOffset = 4;

/// An arc has a corner at every degree.
constexpr double cDegreesPerCorner = 1;

/// In a legend, in inches.
constexpr double cLegendGap = 0.08;
constexpr double cColumnGap = 0.2;
/// The largest symbol in a legend, by the size of its text: none reaches that of the next row.
constexpr double cLegendSymbolPart = 0.75;
constexpr char cEllipsis[] = "\x85";

/// How often, and by how much, the distance of a name from its symbol grows.
constexpr std::array cDistances = {1.0, 1.4, 2.0, 2.8};
/// Distances in the diagonals, by those along the axes.
constexpr double cDiagonal = 0.75;

/// From a point to a name: 1 is wholly on that side, 0 is centered.
struct Direction {
    double x, y;
};
using Directions = std::array<Direction, 16>;
constexpr Directions cDirections = {{{1, 0},
                                     {-1, 0},
                                     {0, -1},
                                     {0, 1},
                                     {1, -1},
                                     {-1, -1},
                                     {1, 1},
                                     {-1, 1},
                                     {1, -0.5},
                                     {1, 0.5},
                                     {-1, -0.5},
                                     {-1, 0.5},
                                     {0.5, -1},
                                     {-0.5, -1},
                                     {0.5, 1},
                                     {-0.5, 1}}};

bool isDiagonal(const Direction& direction) {
    return direction.x * direction.y == 1 || direction.x * direction.y == -1;
}

/// The directions for a name, those that lead away from the middle of the circle first.
Directions outwardFirst(double dx, double dy) {
    std::array<std::pair<double, Direction>, cDirections.size()> ranked;
    std::transform(cDirections.begin(), cDirections.end(), ranked.begin(), [&](const Direction& d) {
        return std::pair((d.x * dx + d.y * dy) / std::hypot(d.x, d.y), d);
    });
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    Directions directions;
    std::transform(ranked.begin(), ranked.end(), directions.begin(),
                   [](const auto& entry) { return entry.second; });
    return directions;
}

bool isBeside(const CircumplexGraph::point_info& point) {
    return (point.legend & CircumplexGraph::NameBeside) != 0 && !point.label.IsEmpty();
}

bool isInLegend(const CircumplexGraph::point_info& point) {
    return (point.legend & CircumplexGraph::NameInLegend) != 0 && !point.label.IsEmpty();
}

/// From a to b, counterclockwise, at most a full turn.
double turnFrom(double from, double to) {
    const double turn = std::fmod(to - from, cFullTurn);
    if (turn == 0) return to == from ? 0 : cFullTurn;
    return turn < 0 ? turn + cFullTurn : turn;
}

void drawLines(CDC& dc, std::span<const POINT> points) {
    dc.Polyline(points.data(), static_cast<int>(points.size()));
}

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
                                    BOOL closed) {
    m_connections.push_back({{ids.begin(), ids.end()}, color, penStyle, closed});
}

BOOL CircumplexGraph::AddSector(double fromAngle, double toAngle, const char* text) {
    if (GetSectorCount() >= cMaxSectors) return 0;
    if (!std::isfinite(fromAngle) || !std::isfinite(toAngle)) return 0;
    m_sectors.push_back({fromAngle, toAngle, text});
    return 1;
}

BOOL CircumplexGraph::AddArc(double fromAngle, double toAngle, double innerRadius,
                             double outerRadius, std::uint32_t color, BOOL filled) {
    for (const double value : {fromAngle, toAngle, innerRadius, outerRadius}) {
        if (!std::isfinite(value)) return 0;
    }
    m_arcs.push_back({fromAngle, toAngle, innerRadius, outerRadius, color, filled});
    return 1;
}

// Sectors and arcs.

std::vector<POINT> CircumplexGraph::arc_points(const arc_info& arc, double radius) const {
    const double turn = turnFrom(arc.from, arc.to);
    const int corners = std::max(1, toInt(std::ceil(turn / cDegreesPerCorner)));
    std::vector<POINT> points;
    points.reserve(static_cast<std::size_t>(corners) + 1);
    for (int i = 0; i <= corners; ++i) {
        points.push_back(polar_point(arc.from + turn * i / corners, radius));
    }
    return points;
}

void CircumplexGraph::draw_arc(CDC& dc, const arc_info& arc) const {
    std::vector<POINT> points = arc_points(arc, arc.outerRadius);
    if (arc.innerRadius == arc.outerRadius) {
        drawLines(dc, points);
        return;
    }
    const std::vector<POINT> inner = arc_points(arc, arc.innerRadius);
    points.insert(points.end(), inner.rbegin(), inner.rend());
    dc.Polygon(points.data(), static_cast<int>(points.size()));
}

void CircumplexGraph::draw_spokes(CDC& dc) const {
    constexpr double beyondRim = 1e300;
    std::set<double> drawn;
    for (const sector_info& sector : m_sectors) {
        for (const double angle : {sector.from, sector.to}) {
            if (!drawn.insert(std::remainder(angle, cFullTurn)).second) continue;
            dc.MoveTo(center());
            dc.LineTo(polar_point(angle, beyondRim));
        }
    }
}

void CircumplexGraph::draw_sectors(CDC* dc) {
    for (const bool filled : {true, false}) {
        for (const arc_info& arc : m_arcs) {
            if ((arc.filled != 0) != filled) continue;
            CPen pen(PS_SOLID, 2 * line_width(), arc.color);
            CBrush brush(arc.color);
            auto* const noPen = static_cast<CPen*>(CGdiObject::FromStock(NULL_PEN));
            auto* const hollow = static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH));
            const Selected outline(*dc, filled ? noPen : &pen);
            const Selected filling(*dc, filled ? &brush : hollow);
            draw_arc(*dc, arc);
        }
        if (!filled) continue;
        CPen pen(PS_SOLID, line_width(), cBlack);
        const Selected line(*dc, &pen);
        draw_spokes(*dc);
    }
}

bool CircumplexGraph::arc_covers(const arc_info& arc, int x, int y) const {
    if (arc.filled == 0 || x_scale() == 0 || y_scale() == 0) return false;
    const Polar place = toPolar({(x - center().x) / x_scale(), (center().y - y) / y_scale()});
    const auto [least, most] = std::minmax({std::abs(arc.innerRadius), std::abs(arc.outerRadius)});
    if (place.length < least || place.length > most) return false;
    const double turn =
        std::fmod(place.angle - std::fmod(arc.from, cFullTurn) + 2 * cFullTurn, cFullTurn);
    return turn <= turnFrom(arc.from, arc.to);
}

void CircumplexGraph::update_bk_color(CDC* dc, int x, int y, int& color) {
    const auto top = std::find_if(m_arcs.rbegin(), m_arcs.rend(),
                                  [&](const arc_info& arc) { return arc_covers(arc, x, y); });
    if (top == m_arcs.rend()) {
        CircleChart::update_bk_color(dc, x, y, color);
        return;
    }
    color = static_cast<int>(top->color);
    dc->SetBkColor(top->color);
}

void CircumplexGraph::draw_axis_text(CDC* dc) {
    take(legend_place());
    CircleChart::draw_axis_text(dc);
    for (const sector_info& sector : m_sectors) {
        const double middle = sector.from + turnFrom(sector.from, sector.to) / 2;
        draw_rim_text(dc, sector.text, middle, settings().axisTextSize);
    }
}

// Drawing of points.

void CircumplexGraph::draw_data(CDC* dc, const CRect&) {
    draw_points(dc);
    draw_legend(dc);
}

CircumplexGraph::Placed CircumplexGraph::place_of(const point_info& point) const {
    if (std::isnan(point.x) || std::isnan(point.y)) return {};
    const CPoint middle = center();
    const CPoint place(dev_x(point.x), dev_y(point.y));
    const double rx = std::max(1, static_cast<int>(radii().cx));
    const double ry = std::max(1, static_cast<int>(radii().cy));
    // By the circle's half axes.
    double dx = (static_cast<double>(place.x) - middle.x) / rx;
    double dy = (static_cast<double>(place.y) - middle.y) / ry;
    if (dx * dx + dy * dy <= 1) return {place, true};
    // Units of the device end too near for directions of points far off.
    const double largest = std::max(std::abs(point.x), std::abs(point.y));
    constexpr double far = 1e6;
    if (largest > far) {
        const Planar data = GetCenter();
        const bool isInfinite = std::isinf(largest);
        const auto part = [&](double value, double from) {
            if (isInfinite) return std::isinf(value) ? std::copysign(1.0, value) : 0.0;
            return value / largest - from / largest;
        };
        dx = part(point.x, data.x) * x_scale() / rx;
        dy = -part(point.y, data.y) * y_scale() / ry;
    }
    if (dx == 0 && dy == 0) return {middle, true};
    const double length = std::hypot(dx, dy);
    return {{toDevice(middle.x + rx * dx / length), toDevice(middle.y + ry * dy / length)}, true};
}

void CircumplexGraph::get_symbol_sizes(double size, int& width, int& height, int& inner,
                                       int& labelOffset) {
    const double half = std::min(size, design().maxSymbolSize) * 0.5;
    width = log_in_to_dev_h(half);
    height = log_in_to_dev_v(half);
    inner = log_in_to_dev_h(half * 0.5);
    if (inner % 2 == 0) ++inner;
    labelOffset = std::max(log_in_to_dev_v(size + cPoint), log_in_to_dev_v(cPoint) + 2 * height);
}

void CircumplexGraph::draw_symbol(CDC* dc, int x, int y, int penWidth, int rx, int ry,
                                  SymbolType symbol, std::uint32_t color) {
    const bool isHollow = symbol >= cFirstHollow && symbol <= cSymbols;
    CPen pen(PS_SOLID, penWidth, color);
    CBrush brush(color);
    auto* const hollow = static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH));
    const Selected line(*dc, &pen);
    const Selected filling(*dc, isHollow ? hollow : &brush);
    if (symbol > cSymbols) return;
    drawMarkShape(*dc, x, y, rx, ry, isHollow ? symbol - cHollowOffset : static_cast<int>(symbol));
}

void CircumplexGraph::draw_points(CDC* dc) {
    std::vector<Placed> places;
    places.reserve(m_points.size());
    for (const point_info& point : m_points) places.push_back(place_of(point));
    draw_connections(*dc, places);
    int width = 0;
    int height = 0;
    int inner = 0;
    int offset = 0;
    get_symbol_sizes(design().maxSymbolSize, width, height, inner, offset);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!places[i].isShown) continue;
        draw_symbol(dc, places[i].place.x, places[i].place.y, inner, width, height,
                    m_points[i].symbol, m_points[i].color);
    }
    draw_names(*dc, places);
}

void CircumplexGraph::draw_connections(CDC& dc, std::span<const Placed> places) {
    if (m_connections.empty()) return;
    std::unordered_map<int, std::size_t> indexes;
    for (std::size_t i = 0; i < m_points.size(); ++i) indexes.emplace(m_points[i].id, i);
    for (const connection_info& connection : m_connections) {
        std::vector<POINT> corners;
        corners.reserve(connection.ids.size() + 1);
        for (const int id : connection.ids) {
            const auto found = indexes.find(id);
            if (found == indexes.end() || !places[found->second].isShown) continue;
            corners.push_back(places[found->second].place);
        }
        if (connection.closed != 0 && !corners.empty()) corners.push_back(corners.front());
        const int width = 2 * line_width();
        CPen pen(PS_SOLID, width, connection.color);
        const Selected line(dc, &pen);
        DashedPath path(connection.penStyle, width);
        for (std::size_t i = 0; i < corners.size(); ++i) {
            if (i == 0) path.MoveTo(corners[i]);
            if (i > 0) path.LineTo(dc, corners[i]);
        }
    }
}

/// Finds places for names, and prints them.
struct CircumplexGraph::Names {
    LabelFonts fonts;
    LabelGrid grid;
    CSize offset;  ///< from a symbol's middle to its name
    CPoint middle;
    CSize radii;
    CSize rimGap;  ///< what is left free between a name and the rim

    /// The place of a name of this size at a point: rather not over the rim.
    CRect Find(POINT point, CSize size) const {
        const auto directions = outwardFirst(point.x - middle.x, point.y - middle.y);
        std::optional<CRect> overRim;
        for (const double distance : cDistances) {
            for (const Direction& direction : directions) {
                const CRect place = At(point, direction, distance, size);
                if (!grid.IsFree(place)) continue;
                if (!MeetsRim(place)) return place;
                if (!overRim) overRim = place;
            }
        }
        return overRim.value_or(At(point, directions[0], 1, size));
    }
    bool MeetsRim(CRect place) const {
        place.InflateRect(rimGap.cx, rimGap.cy);
        const auto distance = [this](double dx, double dy) {
            return std::hypot(dx / radii.cx, dy / radii.cy);
        };
        // Coordinates that don't fit an int come out in the wrong order.
        const auto span = [](double from, double to, double origin) {
            return std::minmax({from - origin, to - origin});
        };
        const auto [left, right] = span(place.left, place.right, middle.x);
        const auto [top, bottom] = span(place.top, place.bottom, middle.y);
        return distance(std::clamp(0.0, left, right), std::clamp(0.0, top, bottom)) < 1 &&
               distance(std::max(-left, right), std::max(-top, bottom)) > 1;
    }
    CRect At(POINT point, const Direction& direction, double distance, CSize size) const {
        const double part = isDiagonal(direction) ? distance * cDiagonal : distance;
        const double x = point.x + direction.x * (offset.cx * part + size.cx / 2.0);
        const double y = point.y + direction.y * (offset.cy * part + size.cy / 2.0);
        return {CPoint(toDevice(x - size.cx / 2.0), toDevice(y - size.cy / 2.0)), size};
    }
};

void CircumplexGraph::draw_names(CDC& dc, std::span<const Placed> places) {
    if (std::none_of(m_points.begin(), m_points.end(), isBeside)) return;
    int width = 0;
    int height = 0;
    int inner = 0;
    int offset = 0;
    get_symbol_sizes(design().maxSymbolSize, width, height, inner, offset);
    const double toHorizontal = horz_pixels_per_inch() / vert_pixels_per_inch();
    CRect sheet = rect();
    sheet.right = std::min(sheet.right, sheet.left + sheet_width());
    Names names{{dc, font_height(m_legendTextSize), cTimes},
                LabelGrid(sheet),
                {toDevice(offset * toHorizontal), offset},
                center(),
                radii(),
                {log_in_to_dev_h(cPoint), log_in_to_dev_v(cPoint)}};
    for (const CRect& place : taken()) names.grid.Take(place);
    // The polygons are larger by a fifth, and half of the pen lies outside.
    const CSize half(width * 6 / 5 + inner / 2 + 1, height * 6 / 5 + inner / 2 + 1);
    for (const Placed& placed : places) {
        if (!placed.isShown) continue;
        names.grid.Take({placed.place.x - half.cx, placed.place.y - half.cy,
                         placed.place.x + half.cx, placed.place.y + half.cy});
    }
    const RestoredState state(dc);
    dc.SetBkMode(TRANSPARENT);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!places[i].isShown || !isBeside(m_points[i])) continue;
        const CString& label = m_points[i].label;
        const CSize size(names.fonts.Width(label), names.fonts.Height());
        const CRect place = names.Find(places[i].place, size);
        names.fonts.Print(place.left, place.top, label);
        names.grid.Take(place);
    }
}

// Legend.

/// The entries, in columns of equal width that are filled row by row.
struct CircumplexGraph::Legend {
    struct Entry {
        const point_info* point;
        LabelLines text;
    };
    std::vector<Entry> entries;
    int symbolWidth = 0;  ///< of a symbol and what is left free beside it
    int cellWidth = 0;
    int columns = 1;
    int lineHeight = 0;
    int rowGap = 0;
    int height = 0;

    int RowHeight(std::size_t first) const {
        std::size_t lines = 1;
        const auto end = std::min(entries.size(), first + static_cast<std::size_t>(columns));
        for (std::size_t i = first; i < end; ++i) {
            lines = std::max(lines, entries[i].text.lines.size());
        }
        return static_cast<int>(lines) * lineHeight + rowGap;
    }
    /// Arranges the entries and leaves out those for which there is no height.
    void Arrange(int width, int gap, int maxHeight) {
        int widest = 0;
        for (const Entry& entry : entries) widest = std::max(widest, entry.text.width);
        cellWidth = symbolWidth + widest + gap;
        columns = std::clamp((width + gap) / std::max(1, cellWidth), 1,
                             std::max(1, static_cast<int>(entries.size())));
        std::size_t first = 0;
        for (; first < entries.size(); first += static_cast<std::size_t>(columns)) {
            const int row = RowHeight(first);
            if (height + row > maxHeight) break;
            height += row;
        }
        if (first >= entries.size()) return;
        entries.resize(first);
        if (!entries.empty()) entries.back() = {nullptr, {{cEllipsis}, 0}};
    }
};

CircumplexGraph::Legend CircumplexGraph::legend_of(CDC& dc) const {
    Legend legend;
    if (m_legendPlacement != LegendRight && m_legendPlacement != LegendBelow) return legend;
    const bool isBelow = m_legendPlacement == LegendBelow;
    LabelFonts fonts(dc, font_height(m_legendTextSize), cTimes);
    const int width = isBelow ? sheet_width() : log_in_to_dev_h(m_legendWidth);
    const int gap = log_in_to_dev_h(cLegendGap);
    legend.lineHeight = fonts.Height();
    legend.rowGap = log_in_to_dev_v(2 * cPoint);
    legend.symbolWidth = log_in_to_dev_h(design().maxSymbolSize) + 2 * gap;
    const int room = std::max(1, width - legend.symbolWidth);
    const int maxHeight =
        isBelow ? toInt(rect().Height() * cMaxLegendPart) : rect().bottom - plot().top;
    std::set<std::tuple<std::string_view, COLORREF, int>> seen;
    for (const point_info& point : m_points) {
        if (!isInLegend(point)) continue;
        if (!seen.emplace(point.label.View(), point.color, point.symbol).second) continue;
        legend.entries.push_back({&point, wrapLabel(fonts, point.label, room)});
        if (legend.entries.size() > cMaxLegendEntries) break;
    }
    legend.Arrange(width, isBelow ? log_in_to_dev_h(cColumnGap) : 0, maxHeight);
    return legend;
}

void CircumplexGraph::reserve_legend(CDC* dc, double& plotHeight) {
    if (m_legendPlacement != LegendBelow) return;
    m_legendHeight = legend_of(*dc).height / vert_pixels_per_inch();
    adjust_plot_height_for_legend(plotHeight);
}

void CircumplexGraph::adjust_plot_height_for_legend(double& plotHeight) {
    plotHeight -= m_legendHeight;
}

/// What lies right of the sheet, or below the plot and its padding; empty without a legend.
CRect CircumplexGraph::legend_place() const {
    CRect place = rect();
    if (m_legendPlacement == LegendRight) {
        place.left += sheet_width();
        place.top = plot().top;
    } else if (m_legendPlacement == LegendBelow && m_legendHeight > 0) {
        place.top = plot().bottom + log_in_to_dev_v(design().bottomPadding);
    } else {
        place.SetRectEmpty();
    }
    return place;
}

void CircumplexGraph::draw_legend(CDC* dc) {
    const Legend legend = legend_of(*dc);
    if (legend.entries.empty()) return;
    const bool isBelow = m_legendPlacement == LegendBelow;
    int width = 0;
    int height = 0;
    int inner = 0;
    int offset = 0;
    get_symbol_sizes(cLegendSymbolPart * m_legendTextSize / cPointsPerInch, width, height, inner,
                     offset);
    LabelFonts fonts(*dc, legend.lineHeight, cTimes);
    const int free = sheet_width() - legend.columns * legend.cellWidth;
    const CRect place = legend_place();
    const int left = place.left + (isBelow ? std::max(0, free / 2) : 0);
    int y = place.top;
    for (std::size_t i = 0; i < legend.entries.size(); ++i) {
        const int column = static_cast<int>(i) % legend.columns;
        if (column == 0 && i > 0)
            y += legend.RowHeight(i - static_cast<std::size_t>(legend.columns));
        const int x = left + column * legend.cellWidth;
        const Legend::Entry& entry = legend.entries[i];
        if (entry.point != nullptr) {
            draw_symbol(dc, x + legend.symbolWidth / 2, y + legend.lineHeight / 2, inner, width,
                        height, entry.point->symbol, entry.point->color);
        }
        int top = y;
        for (const CString& line : entry.text.lines) {
            fonts.Print(x + legend.symbolWidth, top, line);
            top += legend.lineHeight;
        }
    }
}
