#include <algorithm>
#include <utility>

#include "dataentry/DataEntryCtl.h"
#include "dataentry/detail/RaisedCounter.h"

// The current item of a form: what makes an item current, the focus and the keys.

using tessalink::RaisedCounter;

bool DataEntryCtl::commit() {
    return !m_isAttached || m_current < 0 || GetItemUI(m_current)->Commit();
}

bool DataEntryCtl::CommitEntry() {
    // What the parent is being asked about is not decided yet.
    if (m_isAsking) return false;
    return !m_isAttached || m_current < 0 || GetItemUI(m_current)->CommitEntry();
}

void DataEntryCtl::SetCurrItem(int index) {
    checked(index);
    const tessalink::WindowGuard alive(*this);
    const int before = m_current;
    if (index != m_current && !commit()) return;
    // The parent may have gone elsewhere while it was told of a change.
    if (!alive || m_current != before) return;
    {
        const RaisedCounter busy(*this, m_busy);
        set_curr_item(index);
        if (alive) scroll_curr_into_view();
    }
    // No longer counted as busy: the parent may send the focus elsewhere when it is told.
    if (alive) set_focus(true);
}

void DataEntryCtl::set_curr_item(int index) {
    if (index == m_current) return;
    const int before = std::exchange(m_current, index);
    DataEntryItemUI* old = before >= 0 ? GetItemUI(before) : nullptr;
    if (GetSafeHwnd() == nullptr) return;
    DataEntryItemUI* now = GetItemUI(index);
    const tessalink::WindowGuard alive(*this);
    const bool wasFocused = old != nullptr && old->IsFocused();
    m_isAttached = wasFocused && now->Attach(GetItem(index), window_rect(index), 1) != 0;
    if (!alive) return;
    if (old != nullptr && (old != now || !wasFocused)) old->Detach(1);
    if (alive && before >= 0) InvalidateRect(window_rect(before));
}

void DataEntryCtl::set_focus(bool notifies) {
    if (GetSafeHwnd() == nullptr || !TakesInput()) return;
    const tessalink::WindowGuard alive(*this);
    const bool had = std::exchange(m_hasFocus, true);
    if (m_current < 0) {
        if (notifies && !had) notify(NM_SETFOCUS, m_current, nullptr);
        return;
    }
    DataEntryItemUI* itemUI = GetItemUI(m_current);
    // Attaching it anew would drop what is being typed.
    const bool isThere = m_isAttached && itemUI->IsFocused() &&
                         itemUI->GetCurrItem() == GetItem(m_current) && itemUI->Holds(GetFocus());
    if (!isThere) {
        const RaisedCounter busy(*this, m_busy);
        m_isAttached = itemUI->Attach(GetItem(m_current), window_rect(m_current), 1) != 0;
        if (m_isAttached) itemUI->SetFocus();
        if (!alive) return;
    }
    if (notifies) notify(had ? DATAENTRY_MOVED : NM_SETFOCUS, m_current, nullptr);
    if (alive && m_current >= 0) {
        NotifyAccessible(tessalink::AccessibleEvent::Focus, m_current);
    }
}

void DataEntryCtl::do_navigate(int target) {
    int code = 0;
    const int last = GetItemCount() - 1;
    if (target < 0) {
        code = DATAENTRY_BEFORE_FIRST;
    } else if (target > last) {
        code = DATAENTRY_PAST_LAST;
    }
    target = std::clamp(target, 0, last);
    const tessalink::WindowGuard alive(*this);
    if (target != m_current) SetCurrItem(target);
    if (alive && code != 0) notify(code, m_current, GetItem(m_current));
}

int DataEntryCtl::AdvanceToNext() {
    if (!m_autoAdvance || m_current < 0) return 0;
    for (int i = m_current + 1; i < GetItemCount(); ++i) {
        if (GetItem(i)->IsReadOnly() != 0) continue;
        SetCurrItem(i);
        return 1;
    }
    notify(DATAENTRY_PAST_LAST, m_current, GetItem(m_current));
    return 0;
}

int DataEntryCtl::HandleChar(UINT ch, UINT repeat, UINT flags) {
    if (m_items.empty() || !m_layoutMgr) return 0;
    int target = m_current;
    if (m_layoutMgr->NavigateOnChar(this, ch, repeat, flags, target) == 0) return 0;
    do_navigate(target);
    return 1;
}

int DataEntryCtl::HandleKeyDown(UINT key, UINT repeat, UINT flags) {
    if (m_items.empty() || !m_layoutMgr) return 0;
    int target = m_current;
    if (m_layoutMgr->NavigateOnKeyDown(this, key, repeat, flags, target) != 0) {
        do_navigate(target);
        return 1;
    }
    return key == VK_PRIOR || key == VK_NEXT ? page(key) : 0;
}

// Focus.

UINT DataEntryCtl::OnGetDlgCode() {
    return DLGC_WANTALLKEYS;
}

void DataEntryCtl::OnSetFocus(CWnd* old) {
    CWnd::OnSetFocus(old);
    if (m_busy == 0) set_focus(true);
}

void DataEntryCtl::OnKillFocus(CWnd* next) {
    CWnd::OnKillFocus(next);
    if (m_busy > 0 || !m_hasFocus || Holds(next)) return;
    m_hasFocus = false;
    notify(NM_KILLFOCUS, -1, nullptr);
}

void DataEntryCtl::LeaveForm() {
    CWnd* parent = GetParent();
    if (parent == nullptr) return;
    const tessalink::WindowGuard alive(*this);
    parent->SetFocus();
    if (!alive || GetFocus() != parent) return;
    const bool isBack = IsKeyDown(VK_SHIFT);
    if (FocusNextControl(isBack) || !alive) return;
    // No other control waits: what is keyed next still belongs to the form.
    EnterByTab(isBack);
    if (alive) SetFocus();
}

void DataEntryCtl::HandleTab() {
    const int target = m_current + (IsKeyDown(VK_SHIFT) ? -1 : 1);
    if (m_tabMoves && m_current >= 0 && target >= 0 && target < GetItemCount()) {
        SetCurrItem(target);
    } else {
        LeaveForm();
    }
}

void DataEntryCtl::EnterByTab(bool previous) {
    if (!m_tabMoves || m_current < 0 || GetSafeHwnd() == nullptr) return;
    const tessalink::WindowGuard alive(*this);
    const RaisedCounter busy(*this, m_busy);
    set_curr_item(previous ? GetItemCount() - 1 : 0);
    if (alive) scroll_curr_into_view();
}

void DataEntryCtl::OnChar(UINT ch, UINT repeat, UINT flags) {
    if (HandleChar(ch, repeat, flags) == 0) CWnd::OnChar(ch, repeat, flags);
}

void DataEntryCtl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key == VK_TAB) {
        HandleTab();
    } else if (HandleKeyDown(key, repeat, flags) == 0) {
        CWnd::OnKeyDown(key, repeat, flags);
    }
}
