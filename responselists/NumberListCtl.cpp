#include "responselists/NumberListCtl.h"

#include <algorithm>
#include <utility>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/NumberText.h"

namespace {

/// Whether a commit is under way anywhere in the process.
bool isCommittingNumber = false;

class CommitScope {
public:
    CommitScope() { isCommittingNumber = true; }
    ~CommitScope() { isCommittingNumber = false; }
    CommitScope(const CommitScope&) = delete;
    CommitScope& operator=(const CommitScope&) = delete;
};

}  // namespace

IMPLEMENT_DYNAMIC(NumberListCtl, ColumnListCtl)

NumberListCtl::NumberListCtl() = default;

NumberListCtl::NumberListCtl(int count, const char** names, int* ranges) {
    SetLegend(count, names, ranges);
}

NumberListCtl::~NumberListCtl() {
    DestroyWindow();
}

// NOLINTNEXTLINE(readability-non-const-parameter): hosts know this signature
int NumberListCtl::SetLegend(int count, const char** names, int* ranges) {
    reset();
    if (count < 0 || names == nullptr) {
        Clear();
        return 0;
    }
    m_names = names;
    m_ranges = ranges;
    m_values.assign(static_cast<std::size_t>(count), start_value());
    set_count(count);
    load_edit();
    return 1;
}

void NumberListCtl::Clear() {
    reset();
    set_count(0);
    load_edit();
}

void NumberListCtl::reset() {
    m_values.clear();
    m_readOnly.clear();
    m_names = nullptr;
    m_ranges = nullptr;
    m_isRefused = false;
    m_legendWidth = 0;
    m_count = 0;
    m_current = -1;
}

std::size_t NumberListCtl::checked(int index) const {
    if (index < 0 || index >= static_cast<int>(m_values.size())) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

CString NumberListCtl::cell_name(int index) const {
    const char* text = m_names[index];
    return text != nullptr ? text : "";
}

void NumberListCtl::SetItem(int index, int value) {
    m_values[checked(index)] = static_cast<std::uint32_t>(value);
    repaint_cell(index);
    if (index == m_current) load_edit();
}

int NumberListCtl::SetReadOnly(int readOnly) {
    const bool was = m_isReadOnly;
    ColumnListCtl::SetReadOnly(readOnly);
    if (was != m_isReadOnly) load_edit();
    return was ? 1 : 0;
}

void NumberListCtl::SetReadOnlyItem(int index) {
    m_readOnly.insert(static_cast<std::uint16_t>(index));
    repaint_cell(index);
    if (index == m_current) load_edit();
}

bool NumberListCtl::cell_is_keyed(int index) const {
    return m_readOnly.count(static_cast<std::uint16_t>(index)) == 0;
}

bool NumberListCtl::cell_is_read_only(int index) const {
    return m_isReadOnly || !cell_is_keyed(index);
}

void NumberListCtl::SetMaxTextLen(int length) {
    m_maxTextLen = std::clamp(length, 1, cLongestText);
    if (has_edit()) m_edit->SetLimitText(static_cast<UINT>(m_maxTextLen));
    RecalcLayout();
    scroll_into_view(m_current);
    Invalidate();
}

CString NumberListCtl::text_of(int number) const {
    return tessalink::formatInt(number, 0, -1);
}

std::uint32_t NumberListCtl::value_of(const CString& text) const {
    return static_cast<std::uint32_t>(tessalink::readInt(text.View()));
}

// Moving and committing.

UINT NumberListCtl::OnGetDlgCode() {
    return DLGC_WANTARROWS;
}

void NumberListCtl::set_curr_cell(int index) {
    index = std::max(std::min(index, m_count - 1), 0);
    if (index == m_current || m_count == 0) return;
    const SameList same(*this);
    if (is_typing() && update_curr_from_edit(1) == 0) return;
    const int before = std::exchange(m_current, index);
    repaint_cell(before);
    repaint_cell(index);
    load_edit();
    if (!same) return;
    notify(LIST_CURRENT_CHANGED, index, 0);
    if (same) NotifyAccessible(tessalink::AccessibleEvent::Focus, m_current);
}

int NumberListCtl::next_editable() const {
    for (int i = m_current + 1; i < m_count; ++i) {
        if (!cell_is_read_only(i)) return i;
    }
    return m_current;
}

void NumberListCtl::OnReturn() {
    if (m_current < 0) return;
    const SameList same(*this);
    const tessalink::WindowGuard alive(*this);
    const int target = next_editable();
    m_isReturn = true;
    if (target == m_current && is_typing()) {
        if (update_curr_from_edit(1) != 0 && same) load_edit();
    }
    if (same) go_to(target);
    if (alive) m_isReturn = false;
}

bool NumberListCtl::is_committing() {
    return isCommittingNumber;
}

// Whether the edit box holds what may have to be kept.
bool NumberListCtl::is_typing() const {
    return m_editIsShown && m_current >= 0 && !curr_cell_is_read_only();
}

bool NumberListCtl::CommitEntry() {
    if (!is_typing()) return true;
    const SameList same(*this);
    const bool isKept = update_curr_from_edit(1) != 0;
    if (!same) return true;  // nothing is typed any more
    if (!isKept) show_refused();
    return isKept;
}

int NumberListCtl::update_curr_from_edit(int showMessage) {
    if (isCommittingNumber) return 0;
    const CommitScope scope;
    CString text;
    m_edit->GetWindowText(text);
    const std::uint32_t value = value_of(text.Left(cMaxReadLen));
    const bool hadFocus = m_hasFocus;
    const SameList same(*this);
    set_refused(false);
    if (IsVerifying() && text.IsEmpty() && !(m_isReturn && is_exempt(value))) {
        if (m_isReturn) tessalink::MessageBeep(MB_ICONHAND);
        return m_isReturn ? 0 : 1;  // the entry is passed over
    }
    const bool isOther = value != m_values[checked(m_current)];
    if (isOther && m_ranges != nullptr && !is_exempt(value) &&
        validate_edit(static_cast<int>(value), showMessage) == 0) {
        if (same && showMessage == 0) set_refused(true);
        if (same && showMessage != 0 && hadFocus) show_refused();
        return 0;
    }
    return keep(static_cast<int>(value)) ? 1 : 0;
}

// Keeps a number that is in its range; false when it differs from the first pass, or when the list
// is not the same any more.
bool NumberListCtl::keep(int value) {
    const SameList same(*this);
    const bool isOther = value != GetItem(m_current);
    if (!IsVerifying()) {
        if (isOther) keep_value(m_current, value);
    } else if (isOther || !is_settled(m_current) || is_open(m_current)) {
        if (!verify(value)) return false;
    }
    return static_cast<bool>(same);
}

void NumberListCtl::keep_value(int index, int value) {
    m_values[checked(index)] = static_cast<std::uint32_t>(value);
    repaint_cell(index);
    const SameList same(*this);
    notify(LIST_VALUE_CHANGED, index, value);
    if (same) NotifyAccessible(tessalink::AccessibleEvent::ValueChanged, index);
}

int NumberListCtl::validate_edit(int value, int showMessage) {
    const int* range = m_ranges + 2 * static_cast<std::ptrdiff_t>(m_current);
    const bool isBelow = value < range[0];
    if (!isBelow && value <= range[1]) return 1;
    if (showMessage != 0) {
        CString message;
        message.Format("%s The %s value is %d!", cell_name(m_current).GetString(),
                       isBelow ? "minimum" : "maximum", isBelow ? range[0] : range[1]);
        AfxMessageBox(message, MB_OK | MB_ICONEXCLAMATION);
    }
    return 0;
}

void NumberListCtl::OnLButtonDown(UINT flags, CPoint point) {
    ColumnListCtl::OnLButtonDown(flags, point);
    const SameList same(*this);
    SetFocus();
    const int index = same ? ItemAt(point) : -1;
    if (index >= 0) go_to(index);
}
