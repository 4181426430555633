#pragma once

#include <vector>

#include "dataentry/DataEntryItem.h"
#include "platform/graphics/CDC.h"
#include "platform/windows/CWnd.h"

class DataEntryCtl;

/// Shows and edits the items of one kind in a form: a single child window that the form moves onto
/// whichever item is current ("attaches"), and draws the others with. Before a changed value is
/// kept, the form is asked.
///
/// The application creates it and hands it to the form with its first item (DataEntryCtl::AddItem);
/// the form owns it from then on.
///
/// An interface of a host's own needs OnMeasureItem, and OnPaint or draw_item to draw its items.
class TESSALINK_API DataEntryItemUI : public CWnd {
    DECLARE_DYNAMIC(DataEntryItemUI)

public:
    DataEntryItemUI() = default;
    ~DataEntryItemUI() override = default;

    /// Sets what an item needs, in pixels.
    virtual void OnMeasureItem(const DataEntryItem* item, CDC* dc, CSize& size) = 0;
    /// Creates the hidden window. Returns nonzero on success.
    virtual BOOL Create(const RECT& rect, UINT id, CWnd* parent);
    /// Moves the window onto an item, in place of the one before, and shows it. `rect` is the
    /// item's place in the form's client area. Creates the window when there is none; returns 0
    /// when that fails.
    virtual BOOL Attach(DataEntryItem* item, const CRect& rect, int focused);
    /// Hides the window and forgets the item.
    virtual void Detach(int repaint);
    /// The menu of a context click; returns whether there is one. There is none here.
    virtual int OnContextMenu();
    /// Draws an item into the form while that is painted, or else has it painted there; nothing is
    /// moved, shown or focused. GetCurrItem, GetItemRect and IsFocused are those of the item
    /// meanwhile.
    virtual void Paint(DataEntryItem* item, const CRect& rect, int focused);
    /// Tells the form that the attached item has changed.
    virtual void OnDataChanged();
    /// Asks the form whether the attached item may change; nonzero means that it may.
    virtual int OnDataChanging();

    /// The form, which sets itself when the interface is added.
    void SetContainer(DataEntryCtl* container) { m_container = container; }
    /// The form that it belongs to; null before it is added.
    DataEntryCtl* GetContainer() const { return m_container; }
    /// The attached item, or null.
    DataEntryItem* GetCurrItem() const { return m_item; }
    /// The place of that item in the form's client area.
    const CRect& GetItemRect() const { return m_itemRect; }
    /// Whether that item is shown with the focus.
    bool IsFocused() const { return m_focused; }

    /// The attached item has moved, or got another size.
    void FollowItem(const CRect& rect);
    /// While it is locked, the interface ignores focus that comes. Locks count.
    void LockFocus() { ++m_focusLocks; }
    /// Ends one lock.
    void UnlockFocus() { --m_focusLocks; }
    /// Whether it is locked.
    bool IgnoreFocus() const { return m_focusLocks > 0; }

    /// Keeps what is being typed, with the form's consent; false when that was refused.
    virtual bool Commit() { return true; }
    bool CommitEntry() override { return Commit(); }
    /// Shows the attached item's value again, which something else has changed.
    virtual void ShowValue() {}
    /// Does to the item what a click at a point of the window does; false when that is nothing.
    virtual bool OnClick(CPoint point);
    /// What kind of field its items are, for the platform's accessibility interface.
    virtual tessalink::AccessibleRole Role() const {
        return tessalink::AccessibleRole::EditableText;
    }
    /// The responses of an item that is shown at a place, and the one that the keyboard has led to
    /// in the current item; none for fields, and -1.
    virtual std::vector<tessalink::AccessibleChoice> Choices(const DataEntryItem*,
                                                             const CRect&) const {
        return {};
    }
    /// See Choices.
    virtual int FocusedChoice() const { return -1; }
    /// The value as text, for the same; empty without one.
    virtual CString ValueText(DataEntryItem*) { return {}; }

    /// The lines of the attached item's label; 0 without an item.
    int CountLabelLines() const;
    static int CountLabelLines(const CString& label);
    /// Each channel c becomes c * p + 255 - 255 * p, p being the percent / 100: above 100 the
    /// color is darker.
    static COLORREF AdjustColor(COLORREF color, int percent);
    /// Draws a label at (x, y) in the context's alignment over the background, inside the
    /// rectangle.
    static void PaintLabel(CDC* dc, int x, int y, const CRect& rect, const CString& text,
                           COLORREF background, int lineHeight);

    UINT OnGetDlgCode() override;
    void OnPaint() override;
    BOOL OnEraseBkgnd(CDC* dc) override;
    void OnLButtonDown(UINT flags, CPoint point) override;
    void OnChar(UINT ch, UINT repeat, UINT flags) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point) override;
    void OnSetFocus(CWnd* old) override;
    void OnKillFocus(CWnd* next) override;
    using CWnd::Create;
    using CWnd::OnContextMenu;

protected:
    friend class DataEntryCtl;

    /// While it lives, the interface answers for another item, as if it were attached to that one.
    class StandIn {
    public:
        /// For another item at the place of the attached one.
        StandIn(DataEntryItemUI& itemUI, DataEntryItem& item)
            : StandIn(itemUI, item, itemUI.m_itemRect, itemUI.m_focused) {}
        /// For another item at another place.
        StandIn(DataEntryItemUI& itemUI, DataEntryItem& item, const CRect& rect, bool focused);
        ~StandIn();
        StandIn(const StandIn&) = delete;
        StandIn& operator=(const StandIn&) = delete;

    private:
        DataEntryItemUI& m_interface;
        DataEntryItem* m_item;
        CRect m_rect;
        bool m_focused;
    };

    /// Tells the form that an item has changed: by OnDataChanged, unless the parent has gone to
    /// another item meanwhile.
    void tell_changed(const DataEntryItem* item);
    /// Draws the item that GetCurrItem tells at a place of any device context. Here OnPaint draws
    /// it, as if the window stood at that place of the form, and where a derived class has no
    /// OnPaint, only the label is shown.
    virtual void draw_item(CDC& dc, DataEntryItem& item, const CRect& place, bool focused);
    /// The index of the attached item in the form.
    int item_index() const;
    /// Creates the window where there is none; false when that fails.
    bool make_window();

    DataEntryCtl* m_container = nullptr;  ///< the form; null before the interface is added
    DataEntryItem* m_item = nullptr;      ///< the attached item, or null
    CRect m_itemRect;                     ///< its place in the form's client area
    bool m_focused = false;               ///< whether it is shown with the focus
    int m_focusLocks = 0;                 ///< how many locks there are
};
