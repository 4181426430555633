#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <vector>

#include "responselists/ColumnListCtl.h"
#include "responselists/XNumberEdit.h"

/// A list for keying in one whole number for each of a few named entries, for instance a raw score
/// for each scale. One edit box travels to the current cell. A number outside the range of its
/// entry is refused with a message when it is committed: by Return, by going to another cell, or
/// when the focus leaves, then without a message: the number stays in the box, marked, and the
/// message comes when the focus is back. Escape brings the entry's number back.
///
/// In a second pass (BeginVerification) a number is compared when Return keeps it or it is left; an
/// empty box that is left otherwise than by Return is passed over. At a difference the entry shows
/// both numbers beside its emptied box until one of them is keyed again.
///
/// The parent is told of every change that the user makes (LISTCTL_NOTIFICATION): first the value,
/// then the other entry. An index out of range raises CInvalidArgException.
class TESSALINK_API NumberListCtl : public ColumnListCtl {
    DECLARE_DYNAMIC(NumberListCtl)

public:
    static constexpr int cDefaultTextLen = 5;  ///< the most characters of a number at start
    static constexpr int cLongestText = 1000;  ///< the most that may be set
    /// So many characters of the box are read.
    static constexpr int cMaxReadLen = 20;
    static constexpr UINT cEditId = 1000;  ///< the id of the edit box, as a window
    /// What every edit box is filled with.
    static constexpr COLORREF cEditColor = cWhite;

    /// As SetLegend.
    NumberListCtl(int count, const char** names, int* ranges);
    ~NumberListCtl() override;

    /// Replaces the list by one of so many entries, all 0. The arrays are not copied and must
    /// outlive the list: the names, and a minimum and a maximum for each entry, or null for no
    /// ranges. Returns 1; with a negative count or without names 0, and the list is empty.
    int SetLegend(int count, const char** names, int* ranges);
    /// Removes all entries.
    void Clear();
    /// The number of an entry.
    int GetItem(int index) const { return static_cast<int>(m_values[checked(index)]); }
    /// What was being typed for the entry is lost.
    void SetItem(int index, int value);
    int SetReadOnly(int readOnly) override;
    /// The user can't change the entry any more. An index of 65,536 and more counts by its low
    /// 16 bits.
    void SetReadOnlyItem(int index);
    /// The most characters of a number, 1 to 1,000; 5 at start.
    void SetMaxTextLen(int length);
    /// The most characters of a number.
    int GetMaxTextLen() const { return m_maxTextLen; }

    /// Keeps the number in the box. One that is out of range, or differs in a second pass, is told;
    /// it has the focus then, to be typed over.
    bool CommitEntry() override;

    /// What the edit box tells the list.

    /// Goes to the next entry that can be changed; without one, keeps the number.
    virtual void OnReturn();
    /// Shows the entry's number again; false when it was shown already.
    bool OnCancel();
    /// It has got the focus.
    void OnEditSetFocus();
    /// It has lost the focus to `next`, or to none of the library's.
    void OnEditKillFocus(CWnd* next);

    int OnCreate(CREATESTRUCTA* create) override;
    UINT OnGetDlgCode() override;
    void OnCtlColor(CDC* dc, CWnd* window, UINT type) override;
    void OnLButtonDown(UINT flags, CPoint point) override;
    void OnSetFocus(CWnd* old) override;
    void OnKillFocus(CWnd* next) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    tessalink::AccessibleElement AccessibleChild(int index) const override;

protected:
    NumberListCtl();

    void measure_cells(CDC& dc) override;
    void draw_cell(CDC& dc, int index, const CRect& rect) override;
    void cells_moved() override;
    void set_curr_cell(int index) override;
    CString cell_name(int index) const override;
    int cell_value(int index) const override { return GetItem(index); }
    CString cell_reading(int, int value) const override { return text_of(value); }
    bool cell_is_keyed(int index) const override;
    void keep_value(int index, int value) override;
    void pass_changed() override { load_edit(); }
    void value_differs() override;
    /// Keeps the number in the box; 0 when it is refused.
    int update_curr_from_edit(int showMessage);
    /// Whether a number is in the range of the current entry; otherwise 0, with a message if
    /// wanted.
    int validate_edit(int value, int showMessage);
    bool cell_is_read_only(int index) const override;
    /// Whether the user can't change the current entry now.
    bool curr_cell_is_read_only() const { return cell_is_read_only(m_current); }
    /// Makes the edit box.
    virtual XNumberEdit* create_edit() { return new XNumberEdit(*this); }
    /// What a number shows as, and what a text of the box stands for.
    virtual CString text_of(int number) const;
    /// The number that a text of the box stands for.
    virtual std::uint32_t value_of(const CString& text) const;
    /// Whether a number needs no check of its range.
    virtual bool is_exempt(std::uint32_t) const { return false; }
    /// What entries hold at start.
    virtual std::uint32_t start_value() const { return 0; }
    /// The edit box shows the current entry as it is.
    void load_edit();

    std::vector<std::uint32_t> m_values;  ///< one for each entry

private:
    std::size_t checked(int index) const;
    CRect edit_rect(int index) const;
    void reset();
    bool has_edit() const;
    void fill_edit();
    void show_edit();
    void hide_edit();
    void set_refused(bool isRefused);
    void gain_focus();
    void lose_focus();
    int next_editable() const;
    int widest_name(CDC& dc);
    void draw_difference(CDC& dc, const CRect& room, int index) const;
    CString shown_text(int index) const;
    bool is_typing() const;
    static bool is_committing();
    bool keep(int value);
    void show_refused();

    const char** m_names = nullptr;
    const int* m_ranges = nullptr;
    std::unique_ptr<XNumberEdit> m_edit;
    bool m_editIsShown = false;
    bool m_hasFocus = false;
    bool m_isRefused = false;  ///< what is in the box was refused when the focus left
    bool m_isReturn = false;   ///< Return keeps an empty text, too
    int m_maxTextLen = cDefaultTextLen;
    std::set<std::uint16_t> m_readOnly;
    int m_legendWidth = 0;  ///< 0: to be measured
    int m_editWidth = 0;
    mutable CFont m_font;
    mutable CFont m_boldFont;
};

/// A number list whose current entry a program may choose.
class TESSALINK_API NumberListCtl2 : public NumberListCtl {
    DECLARE_DYNAMIC(NumberListCtl2)

public:
    /// As that of NumberListCtl.
    NumberListCtl2(int count, const char** names, int* ranges);

    /// Makes an entry current and shows it.
    void SetCurrItem(int index);

protected:
    /// Makes the edit box.
    XNumberEdit* create_edit() override { return new XNumberEdit2(*this); }
};

/// A number list whose entries may be missing: they show nothing and hold the missing-value code,
/// as all do at start. An empty text is missing, whatever the range.
class TESSALINK_API NumberListCtl3 : public NumberListCtl {
    DECLARE_DYNAMIC(NumberListCtl3)

public:
    /// As that of NumberListCtl, with the missing-value code.
    NumberListCtl3(int count, const char** names, int* ranges, unsigned int missingValue);
    ~NumberListCtl3() override;

    /// Entries that are missing get the new code. What was being typed is lost.
    void SetMissingValue(unsigned int value);
    /// The missing-value code.
    unsigned int GetMissingValue() const { return m_missing; }
    /// Makes an entry missing.
    void SetItemMissing(int index) { SetItem(index, static_cast<int>(m_missing)); }

protected:
    /// Makes the edit box.
    XNumberEdit* create_edit() override { return new XNumberEdit3(*this); }
    CString text_of(int number) const override;
    std::uint32_t value_of(const CString& text) const override;
    bool is_exempt(std::uint32_t value) const override { return value == m_missing; }
    std::uint32_t start_value() const override { return m_missing; }

private:
    std::uint32_t m_missing;
};
