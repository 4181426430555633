#include "graphs/common/DashedPath.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include "platform/base/NumberText.h"

namespace tessalink {

namespace {

/// More dashes than these in one line are a solid line to every eye.
constexpr double cMaxDashes = 10'000;

/// By pen style, in units of a dot.
constexpr std::array<std::array<double, 6>, 5> cPatterns = {
    {{}, {5, 3}, {1, 2}, {5, 2, 1, 2}, {5, 2, 1, 2, 1, 2}}};

/// Dash, gap, dash ...; empty for a solid line.
std::vector<double> patternOf(int style, double unit) {
    std::vector<double> lengths;
    if (style <= 0 || style >= static_cast<int>(cPatterns.size())) return lengths;
    for (const double length : cPatterns[static_cast<std::size_t>(style)]) {
        if (length > 0) lengths.push_back(length * unit);
    }
    return lengths;
}

void drawDash(CDC& dc, POINT from, POINT to) {
    dc.MoveTo(from);
    dc.LineTo(to);
}

}  // namespace

DashedPath::DashedPath(int style, double unit)
    : DashedPath(patternOf(style, std::max(unit, 1.0))) {}

DashedPath DashedPath::Fitted(int style, double unit, double length) {
    const std::vector<double> pattern = patternOf(style, 1);
    if (pattern.empty()) return DashedPath(pattern);
    // Twice, but for the gap behind.
    const double twice = 2 * std::accumulate(pattern.begin(), pattern.end(), 0.0) - pattern.back();
    return DashedPath(patternOf(style, std::min(std::max(unit, 1.0), length / twice)));
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
    if (length == 0) return;
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
