// Points of circumplex graphs: their symbols, names and connections.
#include <algorithm>
#include <climits>
#include <cmath>
#include <unordered_map>

#include "graphs/common/DashedPath.h"
#include "graphs/common/DeviceUnits.h"
#include "graphs/common/MarkShape.h"
#include "graphs/profile/CircumplexGraph.h"
#include "graphs/profile/detail/ChartLabel.h"
#include "graphs/profile/detail/NamePlaces.h"
#include "platform/graphics/DCScope.h"

using namespace tessalink;

namespace {

/// A point of a font, in inches.
constexpr double cPoint = 0.013888888888888888;

/// From the number of a hollow symbol to its shape.
constexpr int cHollowOffset = CircumplexGraph::Ring - static_cast<int>(MarkShape::Disc);

bool isBeside(const CircumplexGraph::point_info& point) {
    return (point.legend & CircumplexGraph::NameBeside) != 0 && !point.label.IsEmpty();
}

}  // namespace

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

CircumplexGraph::SymbolSizes CircumplexGraph::symbol_sizes(double size) {
    SymbolSizes sizes;
    int halfWidth = 0;
    int halfHeight = 0;
    get_symbol_sizes(size, halfWidth, halfHeight, sizes.pen, sizes.nameOffset);
    sizes.half = {halfWidth, halfHeight};
    return sizes;
}

void CircumplexGraph::draw_symbol(CDC* dc, int x, int y, int penWidth, int rx, int ry,
                                  SymbolType symbol, std::uint32_t color) {
    if (symbol < Cross || symbol > cSymbols) return;
    const bool isHollow = symbol >= Ring;
    CPen pen(PS_SOLID, penWidth, color);
    CBrush brush(color);
    const Selected line(*dc, &pen);
    const Selected filling(*dc, &brush);
    const auto shape = static_cast<MarkShape>(isHollow ? symbol - cHollowOffset : symbol - Cross);
    drawMark(*dc, x, y, rx, ry, shape, isHollow);
}

void CircumplexGraph::draw_point_symbol(CDC* dc, POINT place, const SymbolSizes& sizes,
                                        const point_info& point) {
    // The outlines of small symbols would fill them in the pen of the others.
    const int pen = point.symbol >= Ring ? std::max(line_width(), (sizes.pen + 1) / 2) : sizes.pen;
    draw_symbol(dc, place.x, place.y, pen, sizes.half.cx, sizes.half.cy, point.symbol, point.color);
}

void CircumplexGraph::draw_points(CDC* dc) {
    std::vector<Placed> places;
    places.reserve(m_points.size());
    for (const point_info& point : m_points) places.push_back(place_of(point));
    draw_connections(*dc, places);
    const SymbolSizes sizes = symbol_sizes(design().maxSymbolSize);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i].isShown) draw_point_symbol(dc, places[i].place, sizes, m_points[i]);
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
        if (connection.closed && !corners.empty()) corners.push_back(corners.front());
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

void CircumplexGraph::draw_names(CDC& dc, std::span<const Placed> places) {
    if (std::none_of(m_points.begin(), m_points.end(), isBeside)) return;
    const SymbolSizes sizes = symbol_sizes(design().maxSymbolSize);
    const double toHorizontal = horz_pixels_per_inch() / vert_pixels_per_inch();
    CRect sheet = rect();
    sheet.right = std::min(sheet.right, sheet.left + sheet_width());
    NamePlaces names(sheet, {center(),
                             radii(),
                             {toDevice(sizes.nameOffset * toHorizontal), sizes.nameOffset},
                             {log_in_to_dev_h(cPoint), log_in_to_dev_v(cPoint)}});
    for (const CRect& place : taken()) names.Take(place);
    // The polygons are larger by a fifth, and half of the pen lies outside.
    const CSize half(sizes.half.cx * 6 / 5 + sizes.pen / 2 + 1,
                     sizes.half.cy * 6 / 5 + sizes.pen / 2 + 1);
    for (const Placed& placed : places) {
        if (!placed.isShown) continue;
        names.Take({placed.place.x - half.cx, placed.place.y - half.cy, placed.place.x + half.cx,
                    placed.place.y + half.cy});
    }
    LabelFonts fonts(dc, font_height(m_legendTextSize), GetTypeface());
    const RestoredState state(dc);
    dc.SetBkMode(TRANSPARENT);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!places[i].isShown || !isBeside(m_points[i])) continue;
        const LabelLines label = wrapLabel(fonts, m_points[i].label, INT_MAX);
        const int height = fonts.Height() * static_cast<int>(label.lines.size());
        const CRect place = names.Find(places[i].place, {label.width, height});
        fonts.Print(place.left, place.top, label);
        names.Take(place);
    }
}
