#pragma once

#include <cstdint>

#include "platform/base/Export.h"
#include "platform/base/Types.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/Geometry.h"

class DataEntryCtl;

namespace tessalink {
enum class Side : int;
}

/// Places the items of a form and tells which item the navigation keys lead to. Rectangles are in
/// form coordinates: pixels from the left top corner of the form, whatever is scrolled. A manager
/// keeps nothing of a form and may be copied.
class TESSALINK_API DataEntryLayoutMgr {
public:
    /// Whether a form scrolls that way.
    DataEntryLayoutMgr(int horzScroll, int vertScroll);
    virtual ~DataEntryLayoutMgr() = default;
    DataEntryLayoutMgr(const DataEntryLayoutMgr&) = default;
    DataEntryLayoutMgr& operator=(const DataEntryLayoutMgr&) = default;

    /// The item that becomes current after the form was scrolled, forward or back: the same when it
    /// shows whole, or else the nearest that way that does, or else the nearest, itself included,
    /// of which a part shows; -1 without any.
    virtual int GetItemAfterHorzScroll(DataEntryCtl* form, int item, int forward);
    /// The same after the form was scrolled up or down.
    virtual int GetItemAfterVertScroll(DataEntryCtl* form, int item, int forward);
    /// Whether a character leads to another item, which `item` is set to then. None does here.
    virtual int NavigateOnChar(DataEntryCtl* form, UINT ch, UINT repeat, UINT flags, int& item);
    /// The same for a key. `item` comes in as the current item and may go out as -1 or as the
    /// number of items: the movement has left the form at that end.
    virtual int NavigateOnKeyDown(DataEntryCtl* form, UINT key, UINT repeat, UINT flags, int& item);
    /// Measures all items by their interfaces and sets their rectangles for a client area.
    virtual void RecalcLayout(DataEntryCtl* form, CDC* dc, const CRect& area) = 0;

    /// 1 when a form scrolls horizontally.
    int HorizontalScrolling() const { return (m_flags & cHorizontal) != 0 ? 1 : 0; }
    /// 1 when a form scrolls vertically.
    int VerticalScrolling() const { return (m_flags & cVertical) != 0 ? 1 : 0; }

protected:
    /// The nearest item on that side: of the items beyond the edge the one with the least sum of
    /// the gap and the distance of the centers across it; -1 without any. An index out of range
    /// raises CInvalidArgException.
    virtual int closest_above(DataEntryCtl* form, int item);
    /// The nearest item below, likewise.
    virtual int closest_below(DataEntryCtl* form, int item);
    /// The nearest item on the left, likewise.
    virtual int closest_left(DataEntryCtl* form, int item);
    /// The nearest item on the right, likewise.
    virtual int closest_right(DataEntryCtl* form, int item);

    /// The size of an item; interfaces may leave a part of `preset` as it is.
    static CSize measured(DataEntryCtl* form, CDC* dc, int item, CSize preset);

private:
    static constexpr std::uint8_t cHorizontal = 1;
    static constexpr std::uint8_t cVertical = 2;

    int end_of_row(DataEntryCtl* form, int item, tessalink::Side side);

    std::uint8_t m_flags;
};
