#pragma once

#include <cmath>
#include <cstdint>

#include "platform/graphics/Geometry.h"

namespace tessalink::detail {

inline constexpr int cUnitsPerInch = 96;

// From units of 96 per inch to the pixels of a screen and back. Edges of units lie at rounded
// pixels, so that neighbors meet.
class Scale {
public:
    constexpr explicit Scale(int dpi = cUnitsPerInch) : m_dpi(dpi > 0 ? dpi : cUnitsPerInch) {}

    constexpr int Dpi() const { return m_dpi; }
    constexpr bool IsOne() const { return m_dpi == cUnitsPerInch; }
    constexpr double Factor() const { return static_cast<double>(m_dpi) / cUnitsPerInch; }
    // What no screen has is cut off; sums of such places don't overflow.
    constexpr int Edge(int unit) const { return limited(divided(std::int64_t{unit} * m_dpi)); }
    CRect Edges(const RECT& rect) const {
        return {Edge(rect.left), Edge(rect.top), Edge(rect.right), Edge(rect.bottom)};
    }
    // How many pixels a length has, at least one.
    constexpr int Length(int units) const { return units > 0 ? std::max(1, Edge(units)) : 0; }
    // The middle of a unit.
    constexpr int Middle(int unit) const {
        return limited(divided(std::int64_t{unit} * m_dpi + (m_dpi - cUnitsPerInch) / 2));
    }

    // The unit that a pixel lies in, the nearest edge, and all units that pixels lie in.
    constexpr int UnitOf(int pixel) const {
        return static_cast<int>(floored(std::int64_t{pixel} * cUnitsPerInch * 2 + 1, m_dpi * 2));
    }
    constexpr int UnitEdge(int pixel) const {
        return static_cast<int>(
            floored(std::int64_t{pixel} * cUnitsPerInch * 2 + m_dpi, m_dpi * 2));
    }
    CPoint UnitsOf(const POINT& pixel) const { return {UnitOf(pixel.x), UnitOf(pixel.y)}; }
    CRect UnitsAround(const RECT& pixels) const {
        if (IsOne()) return pixels;
        return {UnitOf(pixels.left) - 1, UnitOf(pixels.top) - 1, UnitOf(pixels.right) + 1,
                UnitOf(pixels.bottom) + 1};
    }

private:
    static constexpr int cFarthest = 1 << 26;

    static constexpr std::int64_t floored(std::int64_t value, std::int64_t by) {
        return value >= 0 ? value / by : -((-value + by - 1) / by);
    }
    static constexpr std::int64_t divided(std::int64_t value) {
        return floored(2 * value + cUnitsPerInch, 2 * cUnitsPerInch);
    }
    static constexpr int limited(std::int64_t value) {
        return static_cast<int>(std::clamp<std::int64_t>(value, -cFarthest, cFarthest));
    }

    int m_dpi;
};

}  // namespace tessalink::detail
