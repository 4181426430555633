#include "dataentry/DataEntryLayoutMgr.h"

#include "dataentry/DataEntryCtl.h"
#include "dataentry/detail/NeighbourIndex.h"
#include "platform/windows/Messages.h"

using tessalink::Side;

namespace {

using Visible = int (DataEntryCtl::*)(int) const;

/// The first visible item from `item` on in steps; -1 without any.
int firstVisible(const DataEntryCtl& form, Visible isVisible, int item, int step) {
    for (; item >= 0 && item < form.GetItemCount(); item += step) {
        if ((form.*isVisible)(item) != 0) return item;
    }
    return -1;
}

int itemAfterScroll(const DataEntryCtl& form, int item, int forward) {
    if (form.ItemIsFullyVisible(item) != 0) return item;
    const int step = forward != 0 ? 1 : -1;
    const int whole = firstVisible(form, &DataEntryCtl::ItemIsFullyVisible, item + step, step);
    return whole >= 0 ? whole : firstVisible(form, &DataEntryCtl::ItemIsVisible, item, step);
}

int firstEditableAfter(const DataEntryCtl& form, int item) {
    for (++item; item < form.GetItemCount(); ++item) {
        if (form.GetItem(item)->IsReadOnly() == 0) return item;
    }
    return -1;
}

}  // namespace

DataEntryLayoutMgr::DataEntryLayoutMgr(int horzScroll, int vertScroll)
    : m_flags(static_cast<std::uint8_t>((horzScroll != 0 ? cHorizontal : 0) |
                                        (vertScroll != 0 ? cVertical : 0))) {}

int DataEntryLayoutMgr::GetItemAfterHorzScroll(DataEntryCtl* form, int item, int forward) {
    return itemAfterScroll(*form, item, forward);
}

int DataEntryLayoutMgr::GetItemAfterVertScroll(DataEntryCtl* form, int item, int forward) {
    return itemAfterScroll(*form, item, forward);
}

int DataEntryLayoutMgr::NavigateOnChar(DataEntryCtl*, UINT, UINT, UINT, int&) {
    return 0;
}

int DataEntryLayoutMgr::NavigateOnKeyDown(DataEntryCtl* form, UINT key, UINT, UINT, int& item) {
    const int count = form->GetItemCount();
    if (count == 0 || key < VK_RETURN || key > VK_DOWN) return 0;
    const bool control = IsKeyDown(VK_CONTROL);
    const auto moveTo = [&item](int target) {
        if (target >= 0) item = target;
        return 1;
    };
    switch (key) {
        case VK_RETURN: {
            const int next = firstEditableAfter(*form, item);
            if (next < 0) return 0;
            return moveTo(next);
        }
        case VK_PRIOR:
            if (item != 0) return 0;
            item = -1;
            return 1;
        case VK_NEXT:
            if (item != count - 1) return 0;
            item = count;
            return 1;
        case VK_END:
            return moveTo(control ? count - 1 : end_of_row(form, item, Side::Right));
        case VK_HOME:
            return moveTo(control ? 0 : end_of_row(form, item, Side::Left));
        case VK_LEFT:
            return moveTo(closest_left(form, item));
        case VK_UP:
            return moveTo(closest_above(form, item));
        case VK_RIGHT:
            return moveTo(closest_right(form, item));
        case VK_DOWN:
            return moveTo(closest_below(form, item));
        default:
            return 0;
    }
}

int DataEntryLayoutMgr::end_of_row(DataEntryCtl* form, int item, Side side) {
    const int direction = side == Side::Right ? 1 : -1;
    const auto reach = [&](int i) {
        const CRect rect = form->GetItemLoc(i);
        return direction * (std::int64_t{rect.left} + rect.right);
    };
    for (;;) {
        int next = side == Side::Right ? closest_right(form, item) : closest_left(form, item);
        // Beside an item without width another may stand at the same place, and lead back.
        if (next >= 0 && reach(next) <= reach(item)) next = form->ClosestItem(item, side, true);
        if (next < 0) return item;
        item = next;
    }
}

int DataEntryLayoutMgr::closest_above(DataEntryCtl* form, int item) {
    return form->ClosestItem(item, Side::Above);
}

int DataEntryLayoutMgr::closest_below(DataEntryCtl* form, int item) {
    return form->ClosestItem(item, Side::Below);
}

int DataEntryLayoutMgr::closest_left(DataEntryCtl* form, int item) {
    return form->ClosestItem(item, Side::Left);
}

int DataEntryLayoutMgr::closest_right(DataEntryCtl* form, int item) {
    return form->ClosestItem(item, Side::Right);
}

CSize DataEntryLayoutMgr::measured(DataEntryCtl* form, CDC* dc, int item, CSize preset) {
    form->GetItemUI(item)->OnMeasureItem(form->GetItem(item), dc, preset);
    return preset;
}
