#include "responselists/NumberListCtl.h"

#include <algorithm>
#include <utility>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"

using tessalink::RestoredState;
using tessalink::Selected;

namespace {

/// Asks again for a number that was refused while the focus was elsewhere.
constexpr UINT cAskAgain = WM_USER + 1;
constexpr COLORREF cRefused = RGB(192, 0, 0);

/// Whether a commit is under way anywhere in the process.
bool isCommitting = false;

class CommitScope {
public:
    CommitScope() { isCommitting = true; }
    ~CommitScope() { isCommitting = false; }
    CommitScope(const CommitScope&) = delete;
    CommitScope& operator=(const CommitScope&) = delete;
};

}  // namespace

IMPLEMENT_DYNAMIC(NumberListCtl, ColumnListCtl)
IMPLEMENT_DYNAMIC(NumberListCtl2, NumberListCtl)
IMPLEMENT_DYNAMIC(NumberListCtl3, NumberListCtl)

NumberListCtl::NumberListCtl() = default;

NumberListCtl::NumberListCtl(int count, const char** names, int* ranges) {
    SetLegend(count, names, ranges);
}

NumberListCtl::~NumberListCtl() {
    DestroyWindow();
}

int NumberListCtl::SetLegend(int count, const char** names, int* ranges) {
    Clear();
    if (count < 0 || names == nullptr) return 0;
    m_names = names;
    m_ranges = ranges;
    m_values.assign(static_cast<std::size_t>(count), start_value());
    set_count(count);
    load_edit();
    return 1;
}

void NumberListCtl::Clear() {
    m_values.clear();
    m_readOnly.clear();
    m_names = nullptr;
    m_ranges = nullptr;
    m_isRefused = false;
    set_count(0);
}

std::size_t NumberListCtl::checked(int index) const {
    if (index < 0 || index >= static_cast<int>(m_values.size())) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

CString NumberListCtl::name(int index) const {
    const char* text = m_names[index];
    return text != nullptr ? text : "";
}

void NumberListCtl::SetItem(int index, int value) {
    m_values[checked(index)] = static_cast<std::uint32_t>(value);
    repaint_cell(index);
    if (index == m_current) load_edit();
}

void NumberListCtl::SetReadOnlyItem(int index) {
    m_readOnly.insert(static_cast<std::uint16_t>(index));
    repaint_cell(index);
    if (index == m_current) load_edit();
}

bool NumberListCtl::cell_is_read_only(int index) const {
    return m_isReadOnly || m_readOnly.count(static_cast<std::uint16_t>(index)) != 0;
}

void NumberListCtl::SetMaxTextLen(int length) {
    m_maxTextLen = std::max(length, 1);
    if (m_edit && m_edit->GetSafeHwnd() != nullptr) {
        m_edit->SetLimitText(static_cast<UINT>(m_maxTextLen));
    }
    RecalcLayout();
    Invalidate();
}

CString NumberListCtl::value_text(int index) const {
    return tessalink::formatInt(GetItem(index), 0, -1);
}

std::uint32_t NumberListCtl::value_of(const CString& text) const {
    return static_cast<std::uint32_t>(tessalink::readInt(text.View()));
}

// The edit box.

int NumberListCtl::OnCreate(CREATESTRUCT* create) {
    if (ColumnListCtl::OnCreate(create) != 0) return -1;
    m_edit.reset(create_edit());
    m_edit->Create(WS_CHILD | WS_BORDER | ES_AUTOHSCROLL, CRect(), this, cEditId);
    m_edit->SetLimitText(static_cast<UINT>(m_maxTextLen));
    m_edit->SetFont(&m_font);
    return 0;
}

CRect NumberListCtl::edit_rect(int index) const {
    CRect rect = GetItemRect(index);
    rect.left += 2 * m_halfWidth + m_legendWidth;
    rect.right = rect.left + m_editWidth;
    rect.DeflateRect(0, 1);
    return rect;
}

void NumberListCtl::cells_moved() {
    if (!m_edit || m_edit->GetSafeHwnd() == nullptr || m_current < 0) return;
    m_edit->MoveWindow(edit_rect(m_current));
}

void NumberListCtl::load_edit() {
    if (!m_edit || m_edit->GetSafeHwnd() == nullptr) return;
    m_isRefused = false;
    if (m_current < 0) {
        m_edit->ShowWindow(SW_HIDE);
        m_editIsShown = false;
        return;
    }
    m_edit->MoveWindow(edit_rect(m_current));
    m_edit->SetReadOnly(curr_cell_is_read_only() ? 1 : 0);
    m_edit->SetWindowText(value_text(m_current));
    m_edit->SetSel(0, -1);
}

void NumberListCtl::show_edit() {
    if (!m_edit || m_edit->GetSafeHwnd() == nullptr || m_current < 0) return;
    if (!m_editIsShown) {
        m_editIsShown = true;
        if (!m_isRefused) load_edit();
        m_edit->ShowWindow(SW_SHOW);
    }
    m_edit->SetFocus();
}

void NumberListCtl::OnSetFocus(CWnd* old) {
    ColumnListCtl::OnSetFocus(old);
    show_edit();
    if (m_current < 0) notify_focus(NM_SETFOCUS, -1);
}

void NumberListCtl::OnEditSetFocus() {
    repaint_cell(m_current);
    if (std::exchange(m_hasFocus, true)) return;
    const tessalink::WindowGuard alive(*this);
    notify_focus(NM_SETFOCUS, m_current);
    if (alive && m_isRefused) PostMessage(cAskAgain);
}

void NumberListCtl::OnEditKillFocus(CWnd* next) {
    if (next == this) return;
    const tessalink::WindowGuard alive(*this);
    if (m_editIsShown && m_current >= 0 && !curr_cell_is_read_only()) {
        m_isRefused = update_curr_from_edit(0) == 0 && !isCommitting;
    }
    if (!alive) return;
    if (!m_isRefused && !isCommitting) {
        m_editIsShown = false;
        m_edit->ShowWindow(SW_HIDE);
    }
    repaint_cell(m_current);
    m_hasFocus = false;
    notify_focus(NM_KILLFOCUS, -1);
}

LRESULT NumberListCtl::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != cAskAgain) return ColumnListCtl::WindowProc(message, wParam, lParam);
    if (!m_isRefused) return 0;
    m_isRefused = false;
    const tessalink::WindowGuard alive(*this);
    update_curr_from_edit(1);
    if (alive) show_edit();
    return 0;
}

void NumberListCtl::LeaveList() {
    CWnd* parent = GetParent();
    if (parent == nullptr) return;
    CWnd* next = parent->GetNextDlgTabItem(this, IsKeyDown(VK_SHIFT) ? 1 : 0);
    (next != nullptr && next != this ? next : parent)->SetFocus();
}

bool NumberListCtl::OnCancel() {
    if (m_current < 0 || !m_editIsShown) return false;
    CString typed;
    m_edit->GetWindowText(typed);
    if (typed == value_text(m_current)) return false;
    load_edit();
    return true;
}

// Moving and committing.

UINT NumberListCtl::OnGetDlgCode() {
    return DLGC_WANTARROWS;
}

void NumberListCtl::set_curr_cell(int index) {
    index = std::max(std::min(index, m_count - 1), 0);
    if (index == m_current || m_count == 0) return;
    const tessalink::WindowGuard alive(*this);
    if (m_editIsShown && !curr_cell_is_read_only() && update_curr_from_edit(1) == 0) return;
    if (!alive) return;
    const int before = std::exchange(m_current, index);
    repaint_cell(before);
    repaint_cell(index);
    load_edit();
    notify(LIST_CURRENT_CHANGED, index, 0);
    if (alive) NotifyAccessible(tessalink::AccessibleEvent::Focus, m_current);
}

int NumberListCtl::next_editable() const {
    for (int i = m_current + 1; i < m_count; ++i) {
        if (!cell_is_read_only(i)) return i;
    }
    return m_current;
}

void NumberListCtl::OnReturn() {
    if (m_current < 0) return;
    const tessalink::WindowGuard alive(*this);
    const int target = next_editable();
    if (target == m_current) {
        if (m_editIsShown && !curr_cell_is_read_only() && update_curr_from_edit(1) != 0 && alive) {
            load_edit();
        }
        return;
    }
    set_curr_cell(target);
    if (alive) scroll_into_view(m_current);
}

int NumberListCtl::update_curr_from_edit(int showMessage) {
    if (isCommitting) return 0;
    const CommitScope scope;
    CString text;
    m_edit->GetWindowText(text);
    const std::uint32_t value = value_of(text.Left(cMaxReadLen));
    const int index = m_current;
    const tessalink::WindowGuard alive(*this);
    if (value == m_values[checked(index)]) return 1;
    if (m_ranges != nullptr && !is_exempt(value) &&
        validate_edit(static_cast<int>(value), showMessage) == 0) {
        return 0;
    }
    if (!alive || index >= m_count) return 0;
    m_values[checked(index)] = value;
    repaint_cell(index);
    notify(LIST_VALUE_CHANGED, index, static_cast<int>(value));
    if (!alive) return 0;
    NotifyAccessible(tessalink::AccessibleEvent::ValueChanged, index);
    return 1;
}

int NumberListCtl::validate_edit(int value, int showMessage) {
    const int* range = m_ranges + 2 * static_cast<std::ptrdiff_t>(m_current);
    const bool isBelow = value < range[0];
    if (!isBelow && value <= range[1]) return 1;
    if (showMessage != 0) {
        CString message;
        message.Format("%s The %s value is %d!", name(m_current).GetString(),
                       isBelow ? "minimum" : "maximum", isBelow ? range[0] : range[1]);
        AfxMessageBox(message, MB_OK | MB_ICONEXCLAMATION);
    }
    return 0;
}

void NumberListCtl::OnLButtonDown(UINT flags, CPoint point) {
    ColumnListCtl::OnLButtonDown(flags, point);
    const tessalink::WindowGuard alive(*this);
    SetFocus();
    const int index = alive ? ItemAt(point) : -1;
    if (index < 0) return;
    set_curr_cell(index);
    if (alive) scroll_into_view(m_current);
}

// Drawing.

void NumberListCtl::measure_cells(CDC& dc) {
    const int height = dc.GetTextExtent("9", 1).cy;
    for (CFont* font : {&m_font, &m_boldFont}) {
        font->DeleteObject();
        font->CreateFont(height, 0, 0, 0, font == &m_font ? FW_NORMAL : FW_BOLD, 0, 0, 0,
                         ANSI_CHARSET, OUT_TT_PRECIS, CLIP_DEFAULT_PRECIS, PROOF_QUALITY,
                         VARIABLE_PITCH, "Arial");
    }
    const int gap = 2 * m_halfWidth;
    m_legendWidth = gap;
    for (int i = 0; i < m_count; ++i) {
        m_legendWidth = std::max<int>(m_legendWidth, dc.GetTextExtent(name(i)).cx + gap);
    }
    m_editWidth = (m_maxTextLen + 2) * dc.GetTextExtent("9", 1).cx;
    m_rowHeight = (3 * height) >> 1;
    m_cellWidth = gap + m_legendWidth + m_editWidth;
}

void NumberListCtl::draw_cell(CDC& dc, int index, const CRect& rect) {
    const RestoredState restored(dc);
    const bool isCurrent = index == m_current;
    const bool isReadOnly = cell_is_read_only(index);
    draw_background(dc, rect, isCurrent);
    dc.SetBkMode(TRANSPARENT);
    const COLORREF grey = GetSysColor(COLOR_GRAYTEXT);
    dc.SetTextColor(isReadOnly && !isCurrent ? grey : cell_text(isCurrent));
    const int y = rect.top + m_rowHeight / 6;
    dc.SelectObject(isCurrent ? &m_boldFont : &m_font);
    dc.TextOut(rect.left + m_halfWidth, y, name(index));
    const CRect box = edit_rect(index);
    CPen frame(isReadOnly ? PS_DOT : PS_SOLID, 1,
               isCurrent && m_isRefused ? cRefused : dc.GetTextColor());
    const Selected pen(dc, &frame);
    const Selected brush(dc, static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH)));
    dc.Rectangle(&box);
    dc.SelectObject(&m_font);
    dc.TextOut(box.left + m_halfWidth / 2, y, value_text(index));
    if (isCurrent && m_isRefused) dc.TextOut(box.left - m_halfWidth, y, "!", 1);
}

tessalink::AccessibleElement NumberListCtl::AccessibleChild(int index) const {
    tessalink::AccessibleElement element;
    element.role = tessalink::AccessibleRole::ListItem;
    element.name = name(index);
    element.value = value_text(index);
    element.isReadOnly = cell_is_read_only(index);
    element.isInvalid = index == m_current && m_isRefused;
    element.isFocused = index == m_current && IsChild(GetFocus()) != 0;
    element.rect = GetItemRect(index);
    return element;
}

NumberListCtl2::NumberListCtl2(int count, const char** names, int* ranges) {
    SetLegend(count, names, ranges);
}

void NumberListCtl2::SetCurrItem(int index) {
    const tessalink::WindowGuard alive(*this);
    set_curr_cell(index);
    if (alive) scroll_into_view(m_current);
}

NumberListCtl3::NumberListCtl3(int count, const char** names, int* ranges,
                               unsigned int missingValue)
    : m_missing(missingValue) {
    SetLegend(count, names, ranges);
}

void NumberListCtl3::SetMissingValue(unsigned int value) {
    std::replace(m_values.begin(), m_values.end(), m_missing, std::uint32_t{value});
    m_missing = value;
    Invalidate();
}

CString NumberListCtl3::value_text(int index) const {
    return m_values[static_cast<std::size_t>(index)] == m_missing
               ? CString()
               : NumberListCtl::value_text(index);
}

std::uint32_t NumberListCtl3::value_of(const CString& text) const {
    CString trimmed = text;
    return trimmed.Trim().IsEmpty() ? m_missing : NumberListCtl::value_of(text);
}
