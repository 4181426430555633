#pragma once

#include <array>
#include <vector>

#include "platform/graphics/Geometry.h"

namespace tessalink {

/// Which places of an area are taken. Asking and taking cost the same however much is taken: a
/// cell of the area that holds much counts as wholly taken.
class LabelGrid {
public:
    explicit LabelGrid(const CRect& area) : m_area(area) {}

    /// Whether the place lies in the area and overlaps nothing that is taken.
    bool IsFree(const CRect& place) const;
    void Take(const CRect& place);

private:
    static constexpr std::size_t cCells = 48;  ///< along each side
    static constexpr std::size_t cMaxInCell = 48;

    struct Span {
        std::size_t first = 0;
        std::size_t end = 0;
    };
    static Span cells(int from, int to, int start, int length);
    template <class Visit>
    bool visit(const CRect& place, Visit visit) const;

    CRect m_area;
    std::array<std::vector<CRect>, cCells * cCells> m_cells;
};

}  // namespace tessalink
