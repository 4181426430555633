// Sectors and arcs of circumplex graphs.
#include <algorithm>
#include <cmath>
#include <set>

#include "graphs/profile/CircumplexGraph.h"
#include "platform/graphics/DCScope.h"

using namespace tessalink;

namespace {

/// An arc has a corner at every degree.
constexpr double cDegreesPerCorner = 1;

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
            if (arc.filled != filled) continue;
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
    if (!arc.filled || x_scale() == 0 || y_scale() == 0) return false;
    const Polar place = data_place(x, y);
    const double off = data_rounding();
    const auto [least, most] = std::minmax({std::abs(arc.innerRadius), std::abs(arc.outerRadius)});
    if (place.length < least - off || place.length > most + off) return false;
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
