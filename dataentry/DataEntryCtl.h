#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "dataentry/DataEntryItem.h"
#include "dataentry/DataEntryItemUI.h"
#include "dataentry/DataEntryLayoutMgr.h"
#include "dataentry/SystemColor.h"
#include "platform/windows/CWnd.h"

namespace tessalink {
class NeighbourIndex;
enum class Side : int;
}  // namespace tessalink

/// What a form tells its parent by WM_NOTIFY.
struct DATAENTRYCTL_NOTIFICATION {
    /// Who tells, and what: DATAENTRY_... or NM_...
    NMHDR hdr{};
    std::int32_t itemIndex;  ///< -1 when none
    DataEntryItem* item;     ///< the item concerned, or null
};

/// The codes. Those of gaining and losing the focus are NM_SETFOCUS (the current item's index) and
/// NM_KILLFOCUS (-1).
/// A value is about to change; the item has the new one. Nonzero refuses: it gets the old one back.
/// A list uses the same number for "has changed" (LIST_VALUE_CHANGED): a parent of both tells them
/// apart by `hdr.idFrom`.
inline constexpr int DATAENTRY_CHANGING = 1;
/// A value has changed.
inline constexpr int DATAENTRY_CHANGED = 2;
/// The user clicked an item. Nonzero refuses to go there.
inline constexpr int DATAENTRY_CLICKED = 3;
/// The focus moved to the current item while the form had the focus; no item is given.
inline constexpr int DATAENTRY_MOVED = 4;
/// Navigation went before the first item; that one is current.
inline constexpr int DATAENTRY_BEFORE_FIRST = 5;
/// Navigation went past the last item; that one is current.
inline constexpr int DATAENTRY_PAST_LAST = 6;

/// A data-entry form: a scrollable child window with items, which are drawn and edited by a few
/// interfaces and placed by a layout manager. One item is current; keys, clicks and committed
/// entries make others current. The parent is told of every change and may refuse it.
///
/// All keys belong to the form as long as it has the focus: Return and Escape do not reach the
/// dialog around it, also where they do nothing here. A dialog asks CommitEntry before it closes.
///
/// The form owns its layout manager, items and interfaces. An index out of range raises
/// CInvalidArgException.
class TESSALINK_API DataEntryCtl : public CWnd {
    DECLARE_DYNAMIC(DataEntryCtl)

public:
    /// Takes the manager over; null for one that is set later, before the window is created.
    explicit DataEntryCtl(DataEntryLayoutMgr* layoutMgr);
    ~DataEntryCtl() override;

    /// Creates the window, with the scroll bars that the manager asks for. Returns nonzero on
    /// success; there is none without a layout manager.
    virtual BOOL Create(const RECT& rect, UINT id, CWnd* parent);
    /// Goes to the next item that is not read-only, if auto-advance is on. Returns 0 when it does
    /// not; without such an item the parent is told.
    virtual int AdvanceToNext();
    /// What interfaces offer the form first; nonzero when it has used it.
    virtual int HandleChar(UINT ch, UINT repeat, UINT flags);
    /// The same for a key.
    virtual int HandleKeyDown(UINT key, UINT repeat, UINT flags);

protected:
    /// Tells the parent that a value has changed.
    virtual void OnDataChanged(const DataEntryItem* item);

public:
    /// Draws everything anew: values have changed.
    virtual void OnDataChanged();
    /// Draws an item anew: its value has changed.
    virtual void OnDataChanged(int index);
    /// Places all items for the size of the window.
    virtual void RecalcLayout();
    /// Makes an item current, scrolls it into view and gives it the focus. What was typed into the
    /// item before is kept first; when that is refused, the item before stays current.
    virtual void SetCurrItem(int index);

protected:
    /// Asks the parent whether a value may change; nonzero when it accepts. The item has the new
    /// value. A form that checks its values itself overrides it and returns 0 to refuse.
    virtual int OnDataChanging(const DataEntryItem* item);
    /// Scrolls as little as shows all of the current item.
    virtual void scroll_curr_into_view();

public:
    /// Keeps what is being typed into the current item. Returns false when the parent refuses it or
    /// is being asked right now, and once when it was refused as the focus left and nothing was
    /// keyed since: the button that asks may be what the focus went to.
    bool CommitEntry() override;
    /// Whether Tab and Shift+Tab go from item to item and leave the form at its ends; coming in,
    /// they start at its first and its last item. Off at first: they leave the form from every item
    /// and come back to the current one.
    void TabMoves(bool moves) { m_tabMoves = moves; }
    void EnterByTab(bool previous) override;
    /// Takes over the place of a dialog's placeholder window.
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    /// Adds an item, with its interface, at the end. The form owns both from then on. Returns 1, or
    /// 0 without memory; both are deleted then.
    int AddItem(DataEntryItem* item, DataEntryItemUI* itemUI);
    /// An item; it stays the form's.
    DataEntryItem* GetItem(int index) const { return m_items[checked(index)].get(); }
    /// The interface of an item; it stays the form's.
    DataEntryItemUI* GetItemUI(int index) const;
    /// How many items there are.
    int GetItemCount() const { return static_cast<int>(m_items.size()); }
    /// -1 before there are items.
    int GetCurrItemIdx() const { return m_current; }
    /// The place of an item in the form, whatever is scrolled.
    CRect GetItemLoc(int index) const { return m_places[checked(index)]; }
    /// The size of an item in pixels.
    CSize GetItemSize(int index) const { return GetItemLoc(index).Size(); }
    /// The size of a window that shows all items where they lie now, with its border and with room
    /// for the scroll bars, which are not needed then: what a dialog makes room for, once the
    /// window exists.
    CSize GetFullSize() const;
    /// For layout managers.
    void SetItemLoc(int index, const CRect& place);
    /// The part of the form that shows.
    CRect GetVisibleArea() const;
    /// Whether any of the item shows.
    int ItemIsVisible(int index) const;
    /// Whether all of the item shows.
    int ItemIsFullyVisible(int index) const;
    /// Nonzero when an entry that is complete goes on to the next item.
    int GetAutoAdvance() const { return m_autoAdvance ? 1 : 0; }
    /// Whether an entry that is complete goes on to the next item.
    void SetAutoAdvance(int advance) { m_autoAdvance = advance != 0; }
    /// Deletes the manager before and places the items anew.
    void SetLayoutMgr(DataEntryLayoutMgr* layoutMgr);
    /// The color between items.
    void SetBkgndColor(COLORREF color);
    /// Makes all items read-only, or none; returns what was set before. What is being typed is kept
    /// first.
    int SetReadOnly(int readOnly);
    /// The same for one item.
    int SetReadOnlyItem(int index, int readOnly);

    // For interfaces and layout managers.

    /// The index of an item of the form, or -1.
    int IndexOf(const DataEntryItem* item) const;
    /// The nearest item on a side, or -1; with `isFarther`, of those alone whose middle lies
    /// farther out that way.
    int ClosestItem(int index, tessalink::Side side, bool isFarther = false) const;
    /// What Tab does in an item, and Shift+Tab while Shift is held: see TabMoves.
    void HandleTab();
    /// Leaves the form: the parent gets the focus and, if it keeps it, the next control of the
    /// dialog; the form gets it back where there is none.
    void LeaveForm();
    /// What the form is being painted on; null at other times.
    CDC* PaintDC() const { return m_paintDC; }

    int OnCreate(CREATESTRUCTA* create) override;
    void OnDestroy() override;
    UINT OnGetDlgCode() override;
    void OnPaint() override;
    BOOL OnEraseBkgnd(CDC* dc) override;
    void OnSize(UINT type, int width, int height) override;
    void OnSetFocus(CWnd* old) override;
    void OnKillFocus(CWnd* next) override;
    void OnChar(UINT ch, UINT repeat, UINT flags) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnLButtonDown(UINT flags, CPoint point) override;
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point) override;
    void OnHScroll(UINT code, UINT position, CWnd* bar) override;
    void OnVScroll(UINT code, UINT position, CWnd* bar) override;
    void OnContextMenu(CWnd* window, CPoint point) override;
    tessalink::AccessibleElement Accessible() const override;
    int AccessibleChildCount() const override { return GetItemCount(); }
    tessalink::AccessibleElement AccessibleChild(int index) const override;
    int AccessibleChildAt(CPoint point) const override;
    int AccessibleFocusChild() const override { return m_hasFocus ? m_current : -1; }
    void ChooseAccessibleChild(int index) override { SetCurrItem(index); }
    void ChooseAccessibleChoice(int index, int choice) override;
    using CWnd::Create;

protected:
    friend class DataEntryItemUI;

    /// Makes an item current, without asking and without the focus.
    void set_curr_item(int index);
    /// Brings the focus to the current item; with `notifies` the parent is told.
    void set_focus(bool notifies);
    /// Goes to an item; -1 and the number of items tell the parent that an end was passed.
    void do_navigate(int target);
    /// Tells the parent, and returns its answer.
    LRESULT notify(int code, int index, const DataEntryItem* item);

private:
    /// One direction that the form scrolls in.
    struct Axis;

    std::size_t checked(int index) const;
    CRect window_rect(int index) const;
    int item_at(CPoint point) const;
    void set_up();
    void set_scroll_bars();
    int new_position(const Axis& axis, UINT code, UINT thumb) const;
    void scroll(const Axis& axis, UINT code, UINT thumb);
    void scroll_to(CPoint position);
    void move_attached();
    void choose_visible_item(const Axis& axis, bool forward);
    int page(UINT key);
    bool commit();
    void value_shown_again(int index);

    tessalink::SystemColor m_background{COLOR_BTNFACE};
    std::unique_ptr<DataEntryLayoutMgr> m_layoutMgr;
    int m_id = -1;
    bool m_isReadOnly = false;
    std::vector<std::unique_ptr<DataEntryItemUI>> m_interfaces;
    std::vector<std::unique_ptr<DataEntryItem>> m_items;
    std::vector<CRect> m_places;
    std::unique_ptr<tessalink::NeighbourIndex> m_neighbours;
    CPoint m_scroll;
    int m_current = -1;
    CSize m_client;
    CSize m_extent;
    bool m_hasFocus = false;
    bool m_isAttached = false;
    int m_busy = 0;     ///< the focus is being moved by the form itself
    int m_layouts = 0;  ///< under way
    bool m_autoAdvance = true;
    bool m_tabMoves = false;
    bool m_isAsking = false;     ///< the parent, whether a value may change
    bool m_isReporting = false;  ///< to the parent that one has changed
    CDC* m_paintDC = nullptr;
};
