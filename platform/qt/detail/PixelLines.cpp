#include "platform/qt/detail/PixelLines.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <numeric>

namespace tessalink::detail {

namespace {

constexpr std::array<int, 2> cDash = {18, 6};
constexpr std::array<int, 2> cDot = {3, 3};
constexpr std::array<int, 4> cDashDot = {9, 6, 3, 6};
constexpr std::array<int, 6> cDashDotDot = {9, 3, 3, 3, 3, 3};

// Lines end here, so that twice the product of two lengths is a number.
constexpr LONG cFarthestPixel = 1 << 29;

std::int64_t limited(LONG value) {
    return std::clamp(value, -cFarthestPixel, cFarthestPixel);
}

// A line along its longer axis: `length` pixels from `start` on, each `step` further.
struct Walk {
    std::int64_t start;
    std::int64_t otherStart;
    std::int64_t length;
    std::int64_t step;
    std::int64_t otherWay;  // how far it goes along the shorter axis

    // Where pixel i is on the shorter axis: rounded, a half downwards.
    std::int64_t OtherAt(std::int64_t i) const {
        const std::int64_t twice = 2 * i * otherWay - length;
        const std::int64_t period = 2 * length;
        const std::int64_t quotient = twice / period;
        const bool roundsUp = twice % period > 0;
        return otherStart + quotient + (roundsUp ? 1 : 0);
    }
    // The pixels between two places on the longer axis, the second excluded.
    std::pair<std::int64_t, std::int64_t> Between(std::int64_t low, std::int64_t high) const {
        const std::int64_t first = step > 0 ? low - start : start - high + 1;
        const std::int64_t last = step > 0 ? high - start : start - low + 1;
        return {std::max<std::int64_t>(first, 0), std::min(last, length)};
    }
};

}  // namespace

std::span<const int> dashesOf(const LOGPEN& pen) {
    if (pen.lopnWidth.x > 1) return {};
    switch (pen.lopnStyle) {
        case PS_DASH:
            return cDash;
        case PS_DOT:
            return cDot;
        case PS_DASHDOT:
            return cDashDot;
        case PS_DASHDOTDOT:
            return cDashDotDot;
        default:
            return {};
    }
}

PixelLines::PixelLines(const RECT& visible, std::span<const int> dashes)
    : m_visible(visible),
      m_dashes(dashes),
      m_period(std::accumulate(dashes.begin(), dashes.end(), std::int64_t{0})) {}

PixelLines::Phase PixelLines::phase_at(std::int64_t pixel) const {
    if (m_dashes.empty()) return {true, std::numeric_limits<std::int64_t>::max()};
    std::int64_t place = (m_drawn + pixel) % m_period;
    std::size_t index = 0;
    for (; place >= m_dashes[index]; ++index) place -= m_dashes[index];
    return {index % 2 == 0, m_dashes[index] - place};
}

void PixelLines::Add(POINT pixel) {
    if (CRect(m_visible).PtInRect(pixel)) add_run({pixel.x, pixel.y, 1, 1}, phase_at(0).isInk);
    ++m_drawn;
}

void PixelLines::Add(POINT from, POINT to) {
    const std::int64_t x = limited(from.x);
    const std::int64_t y = limited(from.y);
    const std::int64_t dx = limited(to.x) - x;
    const std::int64_t dy = limited(to.y) - y;
    const bool isFlat = std::llabs(dx) >= std::llabs(dy);
    const std::int64_t way = isFlat ? dx : dy;
    const Walk walk = {isFlat ? x : y, isFlat ? y : x, std::llabs(way), way < 0 ? -1 : 1,
                       isFlat ? dy : dx};
    const RECT& seen = m_visible;
    const auto [first, last] =
        isFlat ? walk.Between(seen.left, seen.right) : walk.Between(seen.top, seen.bottom);
    for (std::int64_t i = first; i < last;) {
        const Phase phase = phase_at(i);
        const std::int64_t other = walk.OtherAt(i);
        const std::int64_t end = std::min(last, phase.left < last - i ? i + phase.left : last);
        std::int64_t next = walk.otherWay == 0 ? end : i + 1;
        while (next < end && walk.OtherAt(next) == other) ++next;
        const std::int64_t place = walk.start + walk.step * (walk.step > 0 ? i : next - 1);
        const auto low = static_cast<int>(place);
        const auto count = static_cast<int>(next - i);
        const auto across = static_cast<int>(other);
        const bool isSeen = isFlat ? other >= seen.top && other < seen.bottom
                                   : other >= seen.left && other < seen.right;
        if (isSeen) {
            add_run(isFlat ? QRect(low, across, count, 1) : QRect(across, low, 1, count),
                    phase.isInk);
        }
        i = next;
    }
    m_drawn += walk.length;
}

}  // namespace tessalink::detail
