#pragma once

#include <memory>

#include "dataentry/ColoredItemUI.h"
#include "platform/windows/CEdit.h"

/// Shows items as texts beside their labels and edits the current one in an edit box. This class
/// itself serves TextDataEntryItem; the derived ones other types.
///
/// What is typed becomes the item's value when Return is pressed, when another item becomes current
/// or when the focus leaves, and only if the form agrees. Blanks around it do not count when it is
/// asked whether there is a value; a text is stored as it was typed.
class TESSALINK_API TextDataEntryUI : public ColoredItemUI {
    DECLARE_DYNAMIC(TextDataEntryUI)

public:
    static constexpr UINT cEditId = 1000;  ///< the id of the edit box, as a window

    /// `labelWidth` in pixels (0: seven wide letters), at most `maxChars` characters (0: as many as
    /// an edit box takes), `lines` of text (below 1: an edit box for a single line) and a box for
    /// `widthChars` characters (0: for ten).
    explicit TextDataEntryUI(int labelWidth = 0, int maxChars = 0, int lines = 1,
                             int widthChars = 0);
    ~TextDataEntryUI() override;

    void OnMeasureItem(const DataEntryItem* item, CDC* dc, CSize& size) override;
    void Detach(int repaint) override;
    bool Commit() override;
    bool CommitEntry() override;
    void ShowValue() override;
    tessalink::AccessibleRole Role() const override;
    CString ValueText(DataEntryItem* item) override;

    /// Shows the item's value again, and drops what was typed.
    virtual void OnCancel();
    /// Keeps what was typed and goes to the next item.
    virtual void OnReturn();
    /// Leaves the form, or goes to the next item of one in which Tab moves
    /// (DataEntryCtl::TabMoves).
    virtual void OnTab();

    int OnCreate(CREATESTRUCTA* create) override;
    void OnSetFocus(CWnd* old) override;
    /// The edit box has the colors of the focus; of a read-only item, that of its text.
    void OnCtlColor(CDC* dc, CWnd* window, UINT type) override;
    void OnSize(UINT type, int width, int height) override;
    /// Keeps what was typed when the edit box has lost the focus, whatever its class is.
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
    /// A key of the edit box that the form may use.
    void OnEditKey(UINT key, UINT repeat, UINT flags);

protected:
    /// Computes sizes and makes fonts and edit box, once.
    virtual void initialize(CDC* dc);
    /// Puts the edit box over the value and gives it the focus.
    virtual void display_edit_box();
    /// The attached item's value as text; empty when it has none. What is drawn comes from here,
    /// too: the interface stands in for each item then.
    virtual CString get_curr_item_text_value();
    /// Stores a text as the value of an item: blanks alone make it null.
    virtual void set_item_text_value(CString text, DataEntryItem* item);
    /// Loads the value into the edit box, all of it selected.
    virtual void update_edit_box();
    /// Keeps what was typed; 0 when that was refused or is being done already.
    virtual int update_curr_from_edit();
    /// Takes the edit box away from the value.
    virtual void remove_edit_box();
    /// A new edit box, not yet a window. The keys that lead out of it are those of
    /// SimpleTextEditCtl; a box of another class keeps what is typed when the focus leaves it.
    virtual CEdit* create_edit_box();
    /// Makes the window of the edit box.
    virtual void create_edit_wnd();

    /// The value of any item as text.
    CString text_of(DataEntryItem& item);
    /// Stores a text that is more than blanks; those around it are still there.
    virtual void store_text(const CString& text, DataEntryItem& item);
    /// Style bits of the edit box besides those of its kind.
    virtual DWORD extra_edit_style() const { return 0; }
    void draw_item(CDC& dc, DataEntryItem& item, const CRect& place, bool focused) override;

    /// Where the edit box lies in an item.
    CRect edit_rect(const CRect& place) const;

    std::unique_ptr<CEdit> m_edit;  ///< null before it is needed
    bool m_editIsShown = false;     ///< whether it stands over a value

private:
    class CommitScope;
    /// Everything of an item that a refused change must bring back.
    class KeptValue;

    bool is_as_loaded() const;
    void edit_left();
    void leave_if_unfocused(CWnd* focus);
    void draw_value(CDC& dc, const DataEntryItem& item, const CRect& place);
    void draw_lines(CDC& dc, const CString& text, const CRect& box) const;

    int m_labelPixels;
    int m_maxChars;
    int m_lines;
    int m_widthChars;
    bool m_initialized = false;
    bool m_isCommitting = false;
    bool m_leftInCommit = false;  ///< the focus went while the parent was asked
    bool m_wasRefused = false;    ///< what was typed, when the focus left last
    CString m_loaded;             ///< what the edit box was given last,
    CString m_shown;              ///< and what it made of it
    int m_labelWidth = 0;
    int m_editWidth = 0;
    int m_editHeight = 0;
    int m_lineHeight = 0;
    int m_itemWidth = 0;
    int m_minItemHeight = 0;
    int m_labelGap = 0;
};
