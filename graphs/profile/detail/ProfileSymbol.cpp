#include "graphs/profile/detail/ProfileSymbol.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "graphs/common/DeviceUnits.h"
#include "platform/graphics/DCScope.h"

namespace tessalink {

namespace {

constexpr int cFilledSymbols = 4;
/// The half width of a triangle of even sides, by its height above the middle.
constexpr double cTriangleWidth = 0.8660254;
/// More dashes than these in one line are a solid line to every eye.
constexpr double cMaxDashes = 10'000;

/// By pen style, in units of a dot.
constexpr std::array<std::array<double, 6>, 5> cPatterns = {
    {{}, {5, 3}, {1, 2}, {5, 2, 1, 2}, {5, 2, 1, 2, 1, 2}}};

void drawPolygon(CDC& dc, std::initializer_list<POINT> points) {
    dc.Polygon(points.begin(), static_cast<int>(points.size()));
}

void drawDash(CDC& dc, POINT from, POINT to) {
    dc.MoveTo(from);
    dc.LineTo(to);
}

void drawShape(CDC& dc, int x, int y, int r, int shape) {
    const int d = wrapMul(12, r) / 10;
    const int below = wrapAdd(y, d / 2);
    const int left = wrapSub(x, r);
    const int top = wrapSub(y, r);
    switch (shape) {
        case 0:
            dc.Ellipse(left, top, wrapAdd(x, r), wrapAdd(y, r));
            break;
        case 1:
            dc.Rectangle(left, top, wrapAdd(x, r), wrapAdd(y, r));
            break;
        case 2: {
            const int w = toDevice(d * cTriangleWidth);
            drawPolygon(dc, {{x, wrapSub(y, d)}, {wrapAdd(x, w), below}, {wrapSub(x, w), below}});
            break;
        }
        default:
            drawPolygon(
                dc,
                {{x, wrapSub(y, d)}, {wrapAdd(x, d), y}, {x, wrapAdd(y, d)}, {wrapSub(x, d), y}});
    }
}

}  // namespace

void drawProfileSymbol(CDC& dc, int x, int y, int size, int symbol) {
    if (symbol < cFilledSymbols) {
        drawShape(dc, x, y, size, symbol);
        return;
    }
    const Selected hollow(dc, static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH)));
    drawShape(dc, x, y, size, symbol - cFilledSymbols);
}

DashedPath::DashedPath(int style, double unit) {
    if (style <= 0 || style >= static_cast<int>(cPatterns.size())) return;
    for (const double length : cPatterns[static_cast<std::size_t>(style)]) {
        if (length > 0) m_lengths.push_back(length * std::max(unit, 1.0));
    }
}

void DashedPath::MoveTo(POINT point) {
    m_from = point;
    m_piece = 0;
    m_left = m_lengths.empty() ? 0 : m_lengths.front();
}

void DashedPath::LineTo(CDC& dc, POINT point) {
    if (m_lengths.empty()) {
        drawDash(dc, m_from, point);
    } else {
        draw_dashes(dc, point);
    }
    m_from = point;
}

void DashedPath::draw_dashes(CDC& dc, POINT end) {
    const double dx = static_cast<double>(end.x) - m_from.x;
    const double dy = static_cast<double>(end.y) - m_from.y;
    const double length = std::hypot(dx, dy);
    if (length > cMaxDashes * m_lengths.front()) {
        drawDash(dc, m_from, end);
        return;
    }
    const auto at = [&](double along) {
        return POINT{toInt(std::floor(m_from.x + dx * along / length + 0.5)),
                     toInt(std::floor(m_from.y + dy * along / length + 0.5))};
    };
    double along = 0;
    while (length - along > m_left) {
        if (m_piece % 2 == 0) drawDash(dc, at(along), at(along + m_left));
        along += m_left;
        m_piece = (m_piece + 1) % m_lengths.size();
        m_left = m_lengths[m_piece];
    }
    if (m_piece % 2 == 0) drawDash(dc, at(along), end);
    m_left -= length - along;
}

}  // namespace tessalink
