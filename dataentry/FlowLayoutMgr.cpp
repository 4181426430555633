#include "dataentry/FlowLayoutMgr.h"

#include <algorithm>

#include "dataentry/DataEntryCtl.h"
#include "platform/windows/Messages.h"

namespace {

/// A rectangle by where it lies along the flow and across it.
CRect flowRect(bool inRows, int along, int across, int alongEnd, int acrossEnd) {
    return inRows ? CRect(along, across, alongEnd, acrossEnd)
                  : CRect(across, along, acrossEnd, alongEnd);
}

}  // namespace

int FlowLayoutMgr::NavigateOnKeyDown(DataEntryCtl* form, UINT key, UINT repeat, UINT flags,
                                     int& item) {
    const bool inRows = VerticalScrolling() != 0;
    const bool back = key == (inRows ? VK_LEFT : VK_UP);
    const bool on = key == (inRows ? VK_RIGHT : VK_DOWN);
    if (form->GetItemCount() == 0 || (!back && !on)) {
        return DataEntryLayoutMgr::NavigateOnKeyDown(form, key, repeat, flags, item);
    }
    item += on ? 1 : -1;
    return 1;
}

void FlowLayoutMgr::RecalcLayout(DataEntryCtl* form, CDC* dc, const CRect& area) {
    const bool inRows = HorizontalScrolling() == 0;
    const int room = inRows ? area.Width() : area.Height();
    const CSize preset = inRows ? CSize(area.Width(), 0) : CSize(0, area.Height());
    const int count = form->GetItemCount();
    int along = 0;
    int across = 0;
    int largest = 0;
    int start = 0;
    const auto endRow = [&](int end) {
        across += largest;
        for (int i = start; i < end; ++i) {
            CRect rect = form->GetItemLoc(i);
            (inRows ? rect.bottom : rect.right) = across;
            form->SetItemLoc(i, rect);
        }
        largest = 0;
        start = end;
        along = 0;
    };
    for (int i = 0; i < count; ++i) {
        const CSize size = measured(form, dc, i, preset);
        const int length = inRows ? size.cx : size.cy;
        const int depth = inRows ? size.cy : size.cx;
        if (along + length > room) endRow(i);
        form->SetItemLoc(i, flowRect(inRows, along, across, along + length, across + depth));
        along += length;
        largest = std::max(largest, depth);
    }
    endRow(count);
}
