// The edit box of number lists: where it stands, what it shows, and who has the focus.
#include <utility>

#include "responselists/NumberListCtl.h"

namespace {

/// Asks again for a number that was refused while the focus was elsewhere.
constexpr UINT cAskAgain = WM_USER + 1;

}  // namespace

int NumberListCtl::OnCreate(CREATESTRUCTA* create) {
    if (ColumnListCtl::OnCreate(create) != 0) return -1;
    m_editIsShown = m_hasFocus = m_isRefused = m_isReturn = false;
    m_edit.reset(create_edit());
    m_edit->Create(WS_CHILD | WS_BORDER | ES_AUTOHSCROLL, CRect(), this, cEditId);
    m_edit->SetLimitText(static_cast<UINT>(m_maxTextLen));
    m_edit->SetFont(&m_font);
    return 0;
}

void NumberListCtl::cells_moved() {
    if (has_edit() && m_current >= 0) m_edit->MoveWindow(edit_rect(m_current));
}

bool NumberListCtl::has_edit() const {
    return m_edit && m_edit->GetSafeHwnd() != nullptr;
}

void NumberListCtl::load_edit() {
    if (!has_edit()) return;
    set_refused(false);
    if (m_current < 0) {
        hide_edit();
        return;
    }
    fill_edit();
    if (GetFocus() == this) {
        show_edit();
    } else if (!m_hasFocus) {
        hide_edit();
    }
}

void NumberListCtl::fill_edit() {
    m_edit->MoveWindow(edit_rect(m_current));
    m_edit->SetReadOnly(curr_cell_is_read_only() ? 1 : 0);
    m_edit->SetWindowText(shown_text(m_current));
    m_edit->SetSel(0, -1);
}

void NumberListCtl::hide_edit() {
    m_editIsShown = false;
    const tessalink::WindowGuard alive(*this);
    if (GetFocus() == m_edit.get()) SetFocus();
    if (alive && has_edit()) m_edit->ShowWindow(SW_HIDE);
}

void NumberListCtl::set_refused(bool isRefused) {
    if (std::exchange(m_isRefused, isRefused) != isRefused) repaint_cell(m_current);
}

void NumberListCtl::show_edit() {
    if (!has_edit() || m_current < 0) return;
    if (!m_editIsShown) {
        m_editIsShown = true;
        if (!m_isRefused) fill_edit();
        m_edit->ShowWindow(SW_SHOW);
    }
    m_edit->SetFocus();
}

void NumberListCtl::OnSetFocus(CWnd* old) {
    ColumnListCtl::OnSetFocus(old);
    if (m_current < 0) {
        gain_focus();
    } else {
        show_edit();
    }
}

void NumberListCtl::OnKillFocus(CWnd* next) {
    ColumnListCtl::OnKillFocus(next);
    if (next == nullptr || next != m_edit.get()) lose_focus();
}

// The list and its edit box have the focus in common.
void NumberListCtl::gain_focus() {
    repaint_cell(m_current);
    if (!std::exchange(m_hasFocus, true)) notify(NM_SETFOCUS, m_current, 0);
}

void NumberListCtl::lose_focus() {
    repaint_cell(m_current);
    if (std::exchange(m_hasFocus, false)) notify(NM_KILLFOCUS, -1, 0);
}

void NumberListCtl::OnEditSetFocus() {
    const tessalink::WindowGuard alive(*this);
    // What was left there is typed over.
    if (!m_hasFocus) m_edit->SetSel(0, -1);
    gain_focus();
    if (alive && m_isRefused) PostMessage(cAskAgain);
}

void NumberListCtl::OnEditKillFocus(CWnd* next) {
    if (next == this) return;
    const tessalink::WindowGuard alive(*this);
    // While a commit is under way the box waits for what comes of it.
    if (!is_committing()) {
        if (is_typing()) update_curr_from_edit(0);
        if (alive && !m_isRefused && GetFocus() != m_edit.get()) hide_edit();
    }
    const CWnd* focus = alive ? GetFocus() : nullptr;
    if (alive && focus != this && focus != m_edit.get()) lose_focus();
}

LRESULT NumberListCtl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != cAskAgain) return ColumnListCtl::WindowProc(message, wParam, lParam);
    // The focus may have left again meanwhile, or the number was asked for already.
    if (m_isRefused && m_hasFocus) update_curr_from_edit(1);
    return 0;
}

bool NumberListCtl::OnCancel() {
    if (m_current < 0 || !m_editIsShown) return false;
    CString typed;
    m_edit->GetWindowText(typed);
    if (typed == shown_text(m_current)) return false;
    load_edit();
    return true;
}

// A refused number can be typed over.
void NumberListCtl::show_refused() {
    if (!has_edit()) return;
    m_edit->SetSel(0, -1);
    show_edit();
}

// The entry has to be keyed once more.
void NumberListCtl::value_differs() {
    m_edit->SetWindowText("");
}

// What an entry shows: in a second pass nothing before it was keyed again.
CString NumberListCtl::shown_text(int index) const {
    return is_settled(index) || !IsVerifying() ? text_of(GetItem(index)) : CString();
}

// Readable in the current cell. What can't be edited has the ground of the cell.
void NumberListCtl::OnCtlColor(CDC* dc, CWnd*, UINT) {
    const bool isReadOnly = m_current >= 0 && curr_cell_is_read_only();
    dc->SetTextColor(cell_text(true));
    dc->SetBkColor(isReadOnly ? cell_background(true) : cEditColor);
}
