#include "graphs/profile/detail/LabelGrid.h"

#include <algorithm>

namespace tessalink {

LabelGrid::Span LabelGrid::cells(int from, int to, int start, int length) {
    if (length <= 0) return {};
    const auto cell = [&](int at) {
        const auto offset = static_cast<std::int64_t>(at) - start;
        const auto cells = static_cast<std::int64_t>(cCells);
        return static_cast<std::size_t>(
            std::clamp<std::int64_t>(offset * cells / length, 0, cells - 1));
    };
    return {cell(from), cell(to - 1) + 1};
}

/// Visits the numbers of the cells that the place touches until a visit says false.
template <class Visit>
bool LabelGrid::visit(const CRect& place, Visit visit) const {
    const Span columns = cells(place.left, place.right, m_area.left, m_area.Width());
    const Span rows = cells(place.top, place.bottom, m_area.top, m_area.Height());
    for (std::size_t row = rows.first; row < rows.end; ++row) {
        for (std::size_t column = columns.first; column < columns.end; ++column) {
            if (!visit(row * cCells + column)) return false;
        }
    }
    return true;
}

bool LabelGrid::IsFree(const CRect& place) const {
    if (place.left < m_area.left || place.top < m_area.top || place.right > m_area.right ||
        place.bottom > m_area.bottom) {
        return false;
    }
    return visit(place, [&](std::size_t index) {
        const std::vector<CRect>& taken = m_cells[index];
        const auto overlaps = [&](const CRect& other) {
            return CRect().IntersectRect(&place, &other);
        };
        return taken.size() < cMaxInCell && std::none_of(taken.begin(), taken.end(), overlaps);
    });
}

void LabelGrid::Take(const CRect& place) {
    CRect inside;
    if (!inside.IntersectRect(&place, &m_area)) return;
    visit(inside, [&](std::size_t index) {
        if (m_cells[index].size() < cMaxInCell) m_cells[index].push_back(inside);
        return true;
    });
}

}  // namespace tessalink
