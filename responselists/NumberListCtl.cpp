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
constexpr int cFrameRoom = 2;
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
    m_keying = nullptr;
    m_legendWidth = 0;
    m_count = 0;
    m_current = -1;
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

int NumberListCtl::SetReadOnly(int readOnly) {
    const int was = ColumnListCtl::SetReadOnly(readOnly);
    if (was != IsReadOnly()) load_edit();
    return was;
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

// The edit box.

int NumberListCtl::OnCreate(CREATESTRUCT* create) {
    if (ColumnListCtl::OnCreate(create) != 0) return -1;
    m_editIsShown = m_hasFocus = m_isRefused = m_isReturn = false;
    m_edit.reset(create_edit());
    m_edit->Create(WS_CHILD | WS_BORDER | ES_AUTOHSCROLL, CRect(), this, cEditId);
    m_edit->SetLimitText(static_cast<UINT>(m_maxTextLen));
    m_edit->SetFont(&m_font);
    return 0;
}

CRect NumberListCtl::edit_rect(int index) const {
    CRect rect = GetItemRect(index);
    rect.left += 2 * m_halfWidth + m_legendWidth;
    // Off the frame of the cell.
    rect.right = rect.left + m_editWidth - cFrameRoom - 1;
    rect.DeflateRect(0, cFrameRoom);
    return rect;
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
    if (!isCommitting) {
        if (m_editIsShown && m_current >= 0 && !curr_cell_is_read_only()) update_curr_from_edit(0);
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

bool NumberListCtl::LeaveList() {
    return FocusNextControl(IsKeyDown(VK_SHIFT));
}

bool NumberListCtl::OnCancel() {
    if (m_current < 0 || !m_editIsShown) return false;
    CString typed;
    m_edit->GetWindowText(typed);
    if (typed == shown_text(m_current)) return false;
    load_edit();
    return true;
}

// Moving and committing.

UINT NumberListCtl::OnGetDlgCode() {
    return DLGC_WANTARROWS;
}

// Readable in the current cell. What can't be edited has the ground of the cell.
void NumberListCtl::OnCtlColor(CDC* dc, CWnd*, UINT) {
    const bool isReadOnly = m_current >= 0 && curr_cell_is_read_only();
    dc->SetTextColor(cell_text(true));
    dc->SetBkColor(isReadOnly ? cell_background(true) : cEditColor);
}

void NumberListCtl::set_curr_cell(int index) {
    index = std::max(std::min(index, m_count - 1), 0);
    if (index == m_current || m_count == 0) return;
    const SameList same(*this);
    if (m_editIsShown && !curr_cell_is_read_only() && update_curr_from_edit(1) == 0) return;
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
    if (target == m_current && m_editIsShown && !curr_cell_is_read_only()) {
        if (update_curr_from_edit(1) != 0 && same) load_edit();
    }
    if (same) go_to(target);
    if (alive) m_isReturn = false;
}

int NumberListCtl::update_curr_from_edit(int showMessage) {
    if (isCommitting) return 0;
    const CommitScope scope;
    CString text;
    m_edit->GetWindowText(text);
    const std::uint32_t value = value_of(text.Left(cMaxReadLen));
    const int index = m_current;
    const bool hadFocus = m_hasFocus;
    const SameList same(*this);
    set_refused(false);
    if (m_keying != nullptr && text.IsEmpty() && !(m_isReturn && is_exempt(value))) {
        if (m_isReturn) MessageBeep(MB_ICONHAND);
        return m_isReturn ? 0 : 1;  // the entry is passed over
    }
    if (value == m_values[checked(index)]) return m_keying != nullptr ? verify(value) : 1;
    if (m_ranges != nullptr && !is_exempt(value) &&
        validate_edit(static_cast<int>(value), showMessage) == 0) {
        if (same && showMessage == 0) set_refused(true);
        if (same && showMessage != 0 && hadFocus) retype();
        return 0;
    }
    return m_keying != nullptr ? verify(value) : store(value);
}

// 0 when the list is not the same any more.
int NumberListCtl::store(std::uint32_t value) {
    const int index = m_current;
    const SameList same(*this);
    m_values[checked(index)] = value;
    repaint_cell(index);
    notify(LIST_VALUE_CHANGED, index, static_cast<int>(value));
    if (!same) return 0;
    NotifyAccessible(tessalink::AccessibleEvent::ValueChanged, index);
    return 1;
}

// The second pass.

int NumberListCtl::BeginVerification(tessalink::DoubleKeying& keying) {
    const SameList same(*this);
    const bool isTyped = m_editIsShown && m_current >= 0 && !curr_cell_is_read_only();
    if (isTyped && (update_curr_from_edit(1) == 0 || !same)) return 0;
    keying.Start(std::vector<int>(m_values.begin(), m_values.end()));
    m_keying = &keying;
    Invalidate();
    load_edit();
    go_to(0);
    return 1;
}

void NumberListCtl::EndVerification() {
    m_keying = nullptr;
    Invalidate();
    load_edit();
}

bool NumberListCtl::is_open(int index) const {
    return m_keying != nullptr && m_keying->OpenItem() == index;
}

// What an entry shows: nothing before it was keyed again.
CString NumberListCtl::shown_text(int index) const {
    return m_keying == nullptr || m_keying->IsSettled(index) ? value_text(index) : CString();
}

int NumberListCtl::verify(std::uint32_t value) {
    const int index = m_current;
    const SameList same(*this);
    const auto number = static_cast<int>(value);
    if (m_keying->IsSettled(index) && value == m_values[checked(index)]) return 1;
    const int openBefore = m_keying->OpenItem();
    const auto outcome = m_keying->Key(index, number);
    repaint_cell(index);
    repaint_cell(openBefore);
    if (outcome == tessalink::KeyingOutcome::Differs) return differ(value);
    if (outcome == tessalink::KeyingOutcome::Corrected && store(value) == 0) return 0;
    notify(LIST_SETTLED, index, number);
    return same ? 1 : 0;
}

// The entry has to be keyed once more.
int NumberListCtl::differ(std::uint32_t value) {
    const int index = m_current;
    const SameList same(*this);
    MessageBeep(MB_ICONEXCLAMATION);
    m_edit->SetWindowText("");
    notify(LIST_DIFFERENCE, index, static_cast<int>(value));
    if (same && is_open(index)) {
        NotifyAccessible(tessalink::AccessibleEvent::Announcement, index,
                         AccessibleChild(index).value);
    }
    return 0;
}

// After the message the refused number can be typed over.
void NumberListCtl::retype() {
    if (!has_edit()) return;
    m_edit->SetSel(0, -1);
    show_edit();
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
    const SameList same(*this);
    SetFocus();
    const int index = same ? ItemAt(point) : -1;
    if (index >= 0) go_to(index);
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
    if (m_legendWidth == 0) m_legendWidth = widest_name(dc) + gap;
    m_editWidth = (m_maxTextLen + 2) * dc.GetTextExtent("9", 1).cx;
    m_rowHeight = (3 * height) >> 1;
    m_cellWidth = gap + m_legendWidth + m_editWidth;
}

int NumberListCtl::widest_name(CDC& dc) {
    const Selected font(dc, &m_boldFont);
    int widest = 0;
    for (int i = 0; i < m_count; ++i) {
        widest = std::max<int>(widest, dc.GetTextExtent(name(i)).cx);
    }
    return widest;
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
    dc.TextOut(box.left + m_halfWidth / 2, y, shown_text(index));
    if (is_open(index)) draw_difference(dc, CRect(rect.left, y, box.left, rect.bottom), index);
    if (!isCurrent || !m_isRefused) return;
    dc.SelectObject(&m_boldFont);
    dc.SetTextColor(cRefused);
    dc.TextOut(box.left - m_halfWidth, y, "!", 1);
}

CString NumberListCtl::both_numbers(int index, const char* format) const {
    const auto named = [this](int number) {
        CString text = text_of(number);
        return text.IsEmpty() ? CString("none") : text;
    };
    CString both;
    both.Format(format, named(m_keying->FirstAnswer(index)).GetString(),
                named(m_keying->OpenAnswer()).GetString());
    return both;
}

// Both numbers, beside the box and over the end of the name.
void NumberListCtl::draw_difference(CDC& dc, const CRect& room, int index) const {
    const CString both = both_numbers(index, " %s/%s");
    const CSize size = dc.GetTextExtent(both);
    CRect ground(CPoint(room.right - m_halfWidth / 2 - size.cx, room.top), size);
    dc.FillSolidRect(&ground, cell_background(index == m_current));
    dc.SetTextColor(index == m_current ? cRefused : cell_text(false));
    dc.TextOut(ground.left, ground.top, both);
}

tessalink::AccessibleElement NumberListCtl::AccessibleChild(int index) const {
    tessalink::AccessibleElement element;
    element.role = tessalink::AccessibleRole::ListItem;
    element.name = name(index);
    element.value = shown_text(index);
    if (is_open(index)) element.value = both_numbers(index, "First %s, now %s");
    element.isReadOnly = cell_is_read_only(index);
    element.isInvalid = (index == m_current && m_isRefused) || is_open(index);
    element.isFocused = index == m_current && Holds(GetFocus());
    element.rect = GetItemRect(index);
    return element;
}

NumberListCtl2::NumberListCtl2(int count, const char** names, int* ranges) {
    SetLegend(count, names, ranges);
}

void NumberListCtl2::SetCurrItem(int index) {
    go_to(index);
}

NumberListCtl3::NumberListCtl3(int count, const char** names, int* ranges,
                               unsigned int missingValue)
    : m_missing(missingValue) {
    SetLegend(count, names, ranges);
}

// Here, so that a last commit still knows what is missing.
NumberListCtl3::~NumberListCtl3() {
    DestroyWindow();
}

void NumberListCtl3::SetMissingValue(unsigned int value) {
    std::replace(m_values.begin(), m_values.end(), m_missing, std::uint32_t{value});
    m_missing = value;
    Invalidate();
    load_edit();
}

CString NumberListCtl3::text_of(int number) const {
    return is_exempt(static_cast<std::uint32_t>(number)) ? CString()
                                                         : NumberListCtl::text_of(number);
}

std::uint32_t NumberListCtl3::value_of(const CString& text) const {
    CString trimmed = text;
    return trimmed.Trim().IsEmpty() ? m_missing : NumberListCtl::value_of(text);
}
