#include "graphs/profile/detail/ProfileSymbol.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "graphs/profile/detail/MarkShape.h"
#include "platform/graphics/DCScope.h"

namespace tessalink {

namespace {

constexpr int cFilledSymbols = 4;
/// The disc among the shapes of marks.
constexpr int cFirstShape = 2;
/// More dashes than these in one line are a solid line to every eye.
constexpr double cMaxDashes = 10'000;

/// By pen style, in units of a dot.
constexpr std::array<std::array<double, 6>, 5> cPatterns = {
    {{}, {5, 3}, {1, 2}, {5, 2, 1, 2}, {5, 2, 1, 2, 1, 2}}};

void drawDash(CDC& dc, POINT from, POINT to) {
    dc.MoveTo(from);
    dc.LineTo(to);
}

}  // namespace

void drawProfileSymbol(CDC& dc, int x, int y, int size, int symbol) {
    if (symbol < cFilledSymbols) {
        drawMarkShape(dc, x, y, size, size, cFirstShape + symbol);
        return;
    }
    const Selected hollow(dc, static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH)));
    drawMarkShape(dc, x, y, size, size, cFirstShape + symbol - cFilledSymbols);
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
