#include "dataentry/SingleColLayoutMgr.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "dataentry/DataEntryCtl.h"

void SingleColLayoutMgr::RecalcLayout(DataEntryCtl* form, CDC* dc, const CRect& area) {
    const int count = form->GetItemCount();
    std::vector<std::uint16_t> heights;
    heights.reserve(static_cast<std::size_t>(count));
    int width = area.Width();
    for (int i = 0; i < count; ++i) {
        const CSize size = measured(form, dc, i, CSize(0, 0));
        heights.push_back(static_cast<std::uint16_t>(size.cy));
        width = std::max<int>(width, size.cx);
    }
    int y = 0;
    for (int i = 0; i < count; ++i) {
        const int bottom = y + heights[static_cast<std::size_t>(i)];
        form->SetItemLoc(i, CRect(0, y, width, bottom));
        y = bottom;
    }
}
