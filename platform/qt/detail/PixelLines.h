#pragma once

#include <QRect>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/graphics/LogicalObjects.h"

namespace tessalink::detail {

// The lengths in pixels of what a pen of one unit draws and leaves out in turns; empty when it is
// solid.
std::span<const int> dashesOf(const LOGPEN& pen);

// Gathers the pixels of lines of one unit as rectangles one pixel high or wide.
class PixelLines {
public:
    // Pixels outside the rectangle are left out.
    PixelLines(const RECT& visible, std::span<const int> dashes);

    // The line without its last pixel. Dashes go on where the line before has ended. Of two pixels
    // that are equally near to the line the left or upper one is taken, whatever the direction.
    void Add(POINT from, POINT to);
    // One pixel, which goes on as well.
    void Add(POINT pixel);

    // The pixels of dashes, and those between dashes.
    const std::vector<QRect>& Ink() const { return m_ink; }
    const std::vector<QRect>& Gaps() const { return m_gaps; }

private:
    struct Phase {
        bool isInk;
        std::int64_t left;  // pixels until it changes
    };

    Phase phase_at(std::int64_t pixel) const;
    void add_run(const QRect& run, bool isInk) { (isInk ? m_ink : m_gaps).push_back(run); }

    RECT m_visible{};
    std::span<const int> m_dashes;
    std::int64_t m_period = 0;
    std::int64_t m_drawn = 0;  // pixels so far
    std::vector<QRect> m_ink;
    std::vector<QRect> m_gaps;
};

}  // namespace tessalink::detail
