#pragma once

#include <cstdint>

#include "platform/windows/CWnd.h"
#include "responselists/DoubleKeying.h"

/// What a list tells its parent by WM_NOTIFY. NM_SETFOCUS comes with the current item (-1 in an
/// empty list), NM_KILLFOCUS with item -1.
struct LISTCTL_NOTIFICATION {
    /// Who tells, and what: LIST_... or NM_...
    NMHDR hdr{};
    std::int32_t itemIndex;  ///< from 0
    std::int32_t value;      ///< what the code says
};

/// An item's value has changed: the item, its new value.
inline constexpr int LIST_VALUE_CHANGED = 1;
/// Another item has become current: the item, 0.
inline constexpr int LIST_CURRENT_CHANGED = 2;
/// In a second pass another value was keyed than in the first one: the item, the second value. The
/// bell has sounded.
inline constexpr int LIST_DIFFERENCE = 4;
/// In a second pass an item was settled: the item, the value that it has now.
inline constexpr int LIST_SETTLED = 5;
/// In a second pass the last item that was left has been settled: -1, the number of corrections.
/// The bell has sounded, the pass is still on.
inline constexpr int LIST_PASS_COMPLETE = 6;

/// What the lists of responses and of numbers share: cells that run down columns, which continue to
/// the right and scroll by whole columns; one cell is current, and keys, the mouse and entries make
/// others current. Only what has changed is painted, whatever the number of cells.
///
/// A handler of a notification may destroy the list, delete it or give it other contents: what the
/// user did ends there.
class TESSALINK_API ColumnListCtl : public CWnd {
    DECLARE_DYNAMIC(ColumnListCtl)

public:
    /// Creates the window. Returns nonzero on success.
    virtual BOOL Create(const RECT& rect, UINT id, CWnd* parent);
    /// Takes over the place of a dialog's placeholder window.
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    /// -1 for an empty list.
    int GetCurrItemIdx() const { return m_current; }
    /// How many cells there are.
    int GetItemCount() const { return m_count; }
    /// Scrolls, if it has to, until the current cell is visible.
    void ShowCurrItem() { scroll_into_view(m_current); }
    /// Whether keys and clicks leave all values as they are; returns what was set before.
    virtual int SetReadOnly(int readOnly);
    /// Whether keys and clicks leave all values as they are.
    bool IsReadOnly() const { return m_isReadOnly; }

    /// Starts a second pass at the first cell (verification by double keying): values are hidden
    /// until they are keyed again and compared. At a difference the bell sounds, the cell shows
    /// both values, and whichever of them is keyed then is final. The parent is told of all that
    /// (LIST_DIFFERENCE, LIST_SETTLED), and of the end (LIST_PASS_COMPLETE) when every cell that
    /// can be keyed is settled; the bell sounds there, too. Returns false, and does nothing, when
    /// what is being typed is refused. The object must outlive the pass, which new contents end,
    /// and the program leaves the values alone meanwhile.
    bool BeginVerification(tessalink::DoubleKeying& keying);
    /// Ends a second pass; values show again.
    void EndVerification();
    /// Whether there is a second pass.
    bool IsVerifying() const { return m_keying != nullptr; }

    /// The place of a cell in the client area; empty for an index out of range.
    CRect GetItemRect(int index) const;
    /// The cell at a point of the client area, or -1.
    int ItemAt(CPoint point) const;

    int OnCreate(CREATESTRUCTA* create) override;
    void OnSize(UINT type, int width, int height) override;
    void OnPaint() override;
    BOOL OnEraseBkgnd(CDC* dc) override;
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override;
    void OnHScroll(UINT code, UINT position, CWnd* bar) override;
    BOOL OnMouseWheel(UINT flags, short delta, CPoint point) override;
    tessalink::AccessibleElement Accessible() const override;
    int AccessibleChildCount() const override { return m_count; }
    tessalink::AccessibleElement AccessibleChild(int index) const override;
    int AccessibleChildAt(CPoint point) const override { return ItemAt(point); }
    int AccessibleFocusChild() const override { return m_current; }
    void ChooseAccessibleChild(int index) override { go_to(index); }
    using CWnd::Create;

protected:
    ColumnListCtl() = default;

    /// Tells after a notification whether the list still stands, with the cells that it had before.
    class SameList {
    public:
        /// Remembers the list and its contents.
        explicit SameList(const ColumnListCtl& list)
            : m_list(list), m_alive(list), m_contents(list.m_contents) {}
        /// Whether both are still there.
        explicit operator bool() const { return m_alive && m_list.m_contents == m_contents; }

    private:
        const ColumnListCtl& m_list;
        tessalink::WindowGuard m_alive;
        unsigned m_contents;
    };

    /// What a cell is called, what it holds, and what a value reads there; empty for a missing one.
    virtual CString cell_name(int index) const = 0;
    /// What the cell holds.
    virtual int cell_value(int index) const = 0;
    /// What a value reads in the cell.
    virtual CString cell_reading(int index, int value) const = 0;
    /// Whether the user can't change the cell now, and whether a second pass can come to it.
    virtual bool cell_is_read_only(int) const { return m_isReadOnly; }
    /// Whether a second pass comes to the cell.
    virtual bool cell_is_keyed(int) const { return true; }
    /// Stores what the user has keyed and tells the parent.
    virtual void keep_value(int index, int value) = 0;
    /// A second pass starts or ends.
    virtual void pass_changed() {}
    /// The current cell was keyed otherwise than in the first pass.
    virtual void value_differs() {}

    /// In a second pass: the current cell was keyed again. False at a difference.
    bool verify(int value);
    /// Whether the cell was keyed differently and waits for the final value.
    bool is_open(int index) const;
    /// Whether the cell keeps its value to itself until it is keyed again.
    bool is_hidden(int index) const;
    /// Whether the cell was keyed again and compared.
    bool is_settled(int index) const;
    /// The value that is compared with the first one, while there is a cell that is open.
    int open_value() const { return m_keying->OpenAnswer(); }
    /// Both values of a cell that is open, the first one at the first %s of the format.
    CString both_values(int index, const char* format) const;

    /// Measures the cells and places them in columns.
    virtual void RecalcLayout();
    /// Sets m_cellWidth and m_rowHeight.
    virtual void measure_cells(CDC& dc) = 0;
    /// Draws a cell into its place.
    virtual void draw_cell(CDC& dc, int index, const CRect& rect) = 0;
    /// Makes a cell current, the nearest for an index out of range, and tells the parent.
    virtual void set_curr_cell(int index);

    /// Other contents: so many cells, of which the first becomes current.
    void set_count(int count);
    /// Makes a cell current and shows it.
    void go_to(int index);
    /// Scrolls, if it has to, until a cell is visible.
    void scroll_into_view(int index);
    /// Draws a cell anew.
    void repaint_cell(int index);
    /// Something that stands on a cell has to follow it.
    virtual void cells_moved() {}
    /// Tells the parent, and returns its answer.
    LRESULT notify(int code, int index, int value);
    /// The color of a cell, and of what is written in it.
    COLORREF cell_background(bool isCurrent) const;
    /// The color of what is written in a cell.
    COLORREF cell_text(bool isCurrent) const;
    /// Fills a cell; the current one has a frame besides another color, dotted in a list that is
    /// read-only, and a bar with the focus.
    void draw_background(CDC& dc, const CRect& rect, bool isCurrent) const;

    bool m_isReadOnly = false;  ///< whether keys and clicks change nothing
    int m_id = 0;               ///< of the window
    int m_count = 0;            ///< of cells
    int m_current = -1;         ///< the current cell; -1 in an empty list
    int m_halfWidth = 0;        ///< half the width of "m"
    int m_cellWidth = 1;        ///< in pixels
    int m_rowHeight = 1;        ///< in pixels
    int m_rows = 1;             ///< per column
    int m_columns = 0;          ///< of all cells
    int m_visibleColumns = 0;   ///< those that show whole
    int m_firstColumn = 0;      ///< the leftmost one that shows

private:
    void fit_columns(CSize client);
    bool needs_bar() const;
    bool shows_bar() const;
    void scroll_to(int column);
    int page_columns() const;
    int last_first_column() const;
    int bar_position() const;
    void tell_difference(int index, int value);
    void tell_completion();

    tessalink::DoubleKeying* m_keying = nullptr;  ///< of the second pass that is on
    int m_firstLeft = 0;                          ///< no cell before it is left to a second pass
    unsigned m_contents = 0;                      ///< how often the contents were replaced
};
