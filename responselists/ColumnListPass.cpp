// The second pass of the lists.
#include <vector>

#include "responselists/ColumnListCtl.h"

using tessalink::AccessibleEvent;
using tessalink::KeyingOutcome;

bool ColumnListCtl::BeginVerification(tessalink::DoubleKeying& keying) {
    const SameList same(*this);
    if (!CommitEntry() || !same) return false;
    std::vector<int> values;
    values.reserve(static_cast<std::size_t>(m_count));
    for (int i = 0; i < m_count; ++i) values.push_back(cell_value(i));
    keying.Start(std::move(values));
    m_keying = &keying;
    m_firstLeft = 0;
    Invalidate();
    pass_changed();
    if (same) go_to(0);
    return true;
}

void ColumnListCtl::EndVerification() {
    m_keying = nullptr;
    Invalidate();
    pass_changed();
}

bool ColumnListCtl::is_open(int index) const {
    return m_keying != nullptr && m_keying->OpenItem() == index;
}

bool ColumnListCtl::is_settled(int index) const {
    return m_keying != nullptr && m_keying->IsSettled(index);
}

bool ColumnListCtl::is_hidden(int index) const {
    return m_keying != nullptr && !is_open(index) && !is_settled(index);
}

CString ColumnListCtl::both_values(int index, const char* format) const {
    const auto named = [&](int value) {
        const CString text = cell_reading(index, value);
        return text.IsEmpty() ? CString("none") : text;
    };
    CString both;
    both.Format(format, named(m_keying->FirstAnswer(index)).GetString(),
                named(open_value()).GetString());
    return both;
}

bool ColumnListCtl::verify(int value) {
    const int index = m_current;
    const SameList same(*this);
    const int openBefore = m_keying->OpenItem();
    const KeyingOutcome outcome = m_keying->Key(index, value);
    repaint_cell(index);
    repaint_cell(openBefore);
    if (outcome == KeyingOutcome::Differs) {
        tell_difference(index, value);
        return false;
    }
    if (outcome == KeyingOutcome::Corrected) keep_value(index, value);
    if (same) notify(LIST_SETTLED, index, value);
    if (same) tell_completion();
    return true;
}

void ColumnListCtl::tell_difference(int index, int value) {
    const SameList same(*this);
    tessalink::MessageBeep(MB_ICONEXCLAMATION);  // who keys from paper does not look
    value_differs();
    notify(LIST_DIFFERENCE, index, value);
    if (!same || !is_open(index)) return;
    NotifyAccessible(AccessibleEvent::Announcement, index, AccessibleChild(index).value);
}

// What is settled stays so: the first cell that is left only moves on, and the end is told once.
void ColumnListCtl::tell_completion() {
    if (m_keying == nullptr || m_firstLeft == m_count) return;
    while (m_firstLeft < m_count && (is_settled(m_firstLeft) || !cell_is_keyed(m_firstLeft))) {
        ++m_firstLeft;
    }
    if (m_firstLeft < m_count) return;
    const int corrections = m_keying->CorrectionCount();
    const SameList same(*this);
    tessalink::MessageBeep(MB_ICONASTERISK);
    notify(LIST_PASS_COMPLETE, -1, corrections);
    if (!same) return;
    CString text;
    text.Format("Second pass complete, %d corrected", corrections);
    NotifyAccessible(AccessibleEvent::Announcement, tessalink::cNoAccessibleChild, text);
}
