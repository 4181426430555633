#include "responselists/ItemListCtl.h"

#include <algorithm>
#include <utility>

#include "platform/base/CInvalidArgException.h"
#include "platform/windows/detail/InputCodes.h"

using tessalink::cFirstPrintable;

IMPLEMENT_DYNAMIC(ItemListCtl, ColumnListCtl)

ItemListCtl::ItemListCtl() = default;

ItemListCtl::ItemListCtl(int count, const char* definition, int defaultResponse) {
    SetLegend(count, definition, defaultResponse);
}

ItemListCtl::~ItemListCtl() {
    DestroyWindow();
}

void ItemListCtl::Clear() {
    reset();
    tell_counts();
}

void ItemListCtl::reset() {
    m_sets.clear();
    m_answers.clear();
    m_undo.clear();
    m_answered = 0;
    set_count(0);
}

int ItemListCtl::SetLegend(int count, const char* definition, int defaultResponse) {
    if (count < 0 || definition == nullptr) return 0;
    reset();
    if (!parse_def_str(definition, count) || !is_default(defaultResponse)) {
        Clear();
        return 0;
    }
    m_answers.assign(static_cast<std::size_t>(count), cNoResponse);
    for (int i = 0; defaultResponse >= 0 && i < count; ++i) {
        const ResponseList* responses = responses_of(i);
        if (responses == nullptr) continue;
        store(i, (*responses)[static_cast<std::size_t>(defaultResponse)].value);
    }
    set_count(count);
    tell_counts();
    return 1;
}

// Answers.

std::size_t ItemListCtl::checked(int index) const {
    if (index < 0 || index >= static_cast<int>(m_answers.size())) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

void ItemListCtl::store(int index, std::uint16_t value) {
    const std::uint16_t before = std::exchange(m_answers[checked(index)], value);
    m_answered += (value != cNoResponse ? 1 : 0) - (before != cNoResponse ? 1 : 0);
}

void ItemListCtl::SetItem(int index, std::uint16_t value) {
    const int answered = m_answered;
    store(index, value);
    repaint_cell(index);
    if (m_answered != answered) tell_counts();
}

void ItemListCtl::keep_value(int index, int value) {
    if (GetItem(index) == value) return;
    const int answered = m_answered;
    store(index, static_cast<std::uint16_t>(value));
    repaint_cell(index);
    const SameList same(*this);
    notify(LIST_VALUE_CHANGED, index, value);
    if (!same) return;
    NotifyAccessible(tessalink::AccessibleEvent::ValueChanged, index);
    if (m_answered != answered) tell_counts();
}

void ItemListCtl::ReportCounts(bool report) {
    m_reportsCounts = report;
    tell_counts();
}

void ItemListCtl::tell_counts() {
    CWnd* parent = GetParent();
    if (!m_reportsCounts || parent == nullptr) return;
    ITEMLIST_COUNTS_NOTIFICATION counts{};
    counts.hdr.hwndFrom = GetSafeHwnd();
    counts.hdr.idFrom = static_cast<UINT_PTR>(m_id);
    counts.hdr.code = ITEMLIST_COUNTS;
    counts.answered = m_answered;
    counts.missing = GetMissingCount();
    counts.total = m_count;
    parent->SendMessage(WM_NOTIFY, static_cast<WPARAM>(m_id), reinterpret_cast<LPARAM>(&counts));
}

bool ItemListCtl::set_curr_cell_value_index(int response) {
    const int item = m_current;
    const std::uint16_t value = (*responses_of(item))[static_cast<std::size_t>(response)].value;
    m_isStopped = false;
    if (IsVerifying()) return verify(value);
    if (m_undo.size() >= cMaxUndo) m_undo.erase(m_undo.begin(), m_undo.begin() + cMaxUndo / 2);
    m_undo.push_back({item, GetItem(item)});
    keep_value(item, value);
    return true;
}

bool ItemListCtl::Undo() {
    if (m_undo.empty() || m_isReadOnly) return false;
    const Undone last = m_undo.back();
    m_undo.pop_back();
    const SameList same(*this);
    keep_value(last.item, last.before);
    if (same) go_to(last.item);
    return true;
}

void ItemListCtl::advance_to_next_cell() {
    go_to(m_current + 1);
}

// Input.

UINT ItemListCtl::OnGetDlgCode() {
    return DLGC_WANTARROWS | DLGC_WANTCHARS;
}

// Whether keys wait for the backspace. Of a difference that the user has left nothing is known.
bool ItemListCtl::is_stopped() const {
    return m_isStopped && is_open(m_current);
}

// The response of the current item that a character selects, or -1.
int ItemListCtl::response_of_key(UINT ch) const {
    const ResponseList* responses = responses_of(m_current);
    if (responses == nullptr) return -1;
    const auto found = std::find_if(
        responses->begin(), responses->end(),
        [ch](const Response& response) { return response.keys.Find(static_cast<char>(ch)) >= 0; });
    return found != responses->end() ? static_cast<int>(found - responses->begin()) : -1;
}

void ItemListCtl::OnChar(UINT ch, UINT, UINT flags) {
    // A key that is held down would answer the items behind this one.
    if (m_current < 0 || m_isReadOnly || (flags & KF_REPEAT) != 0) return;
    const bool isPrintable = ch >= cFirstPrintable;
    const int response = is_stopped() ? -1 : response_of_key(ch);
    if (response < 0) {
        if (isPrintable && (m_usesBells || is_stopped())) tessalink::MessageBeep(MB_ICONHAND);
        return;
    }
    const SameList same(*this);
    const bool isFirstPass = !IsVerifying();
    const bool goesOn = set_curr_cell_value_index(response);
    if (!same) return;
    m_isStopped = !goesOn;
    if (!goesOn) {
        ShowCurrItem();
        return;
    }
    if (m_usesBells && isFirstPass && m_current == m_count - 1)
        tessalink::MessageBeep(MB_ICONASTERISK);
    advance_to_next_cell();
}

void ItemListCtl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key == VK_BACK && is_stopped()) {
        m_isStopped = false;
    } else if (key != VK_BACK || !Undo()) {
        ColumnListCtl::OnKeyDown(key, repeat, flags);
    }
}

void ItemListCtl::OnLButtonDown(UINT flags, CPoint point) {
    ColumnListCtl::OnLButtonDown(flags, point);
    const SameList same(*this);
    SetFocus();
    const int index = same ? ItemAt(point) : -1;
    if (index < 0) return;
    const int response = response_at(index, point.x - GetItemRect(index).left);
    set_curr_cell(index);
    if (!same || m_current != index) return;
    if (response >= 0 && !m_isReadOnly) set_curr_cell_value_index(response);
    if (same) scroll_into_view(m_current);
}

// In a second pass the second click of two would confirm what the first one has said.
void ItemListCtl::OnLButtonDblClk(UINT flags, CPoint point) {
    if (!IsVerifying()) ColumnListCtl::OnLButtonDblClk(flags, point);
}

void ItemListCtl::OnSetFocus(CWnd* old) {
    ColumnListCtl::OnSetFocus(old);
    repaint_cell(m_current);
    notify(NM_SETFOCUS, m_current, 0);
}

void ItemListCtl::OnKillFocus(CWnd* next) {
    ColumnListCtl::OnKillFocus(next);
    repaint_cell(m_current);
    notify(NM_KILLFOCUS, -1, 0);
}
