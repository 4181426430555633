#include "responselists/ItemListCtl.h"

#include <algorithm>
#include <utility>

#include "platform/base/CInvalidArgException.h"
#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"

using tessalink::KeyingOutcome;
using tessalink::Selected;

namespace {

constexpr const char* cWidestNumber = " 999:";
constexpr UINT cFirstPrintable = 32;
/// The box around an answer that differs from the first one.
constexpr COLORREF cSecond = RGB(192, 0, 0);

}  // namespace

IMPLEMENT_DYNAMIC(ItemListCtl, ColumnListCtl)
IMPLEMENT_DYNAMIC(ItemListCtl2, ItemListCtl)

ItemListCtl::ItemListCtl() = default;

ItemListCtl::ItemListCtl(int count, const char* definition, int defaultResponse) {
    SetLegend(count, definition, defaultResponse);
}

ItemListCtl::~ItemListCtl() {
    DestroyWindow();
}

// Definition.

bool ItemListCtl::parse_responses(std::string_view& text, ResponseList& responses) {
    while (!text.empty() && text.front() == '[') {
        const auto read = tessalink::readResponse(text);
        if (!read) return false;
        const int value = read->value.value_or(static_cast<int>(responses.size()));
        responses.push_back({read->caption, read->keys, static_cast<std::uint16_t>(value), 0});
    }
    return true;
}

bool ItemListCtl::parse_def_str(std::string_view definition, int) {
    m_sets.emplace_back();
    return parse_responses(definition, m_sets.front()) && definition.empty();
}

const ItemListCtl::ResponseList* ItemListCtl::responses_of(int) const {
    return m_sets.empty() ? nullptr : &m_sets.front();
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
    m_keying = nullptr;
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

// Whether all sets have the response, or none is wanted.
bool ItemListCtl::is_default(int response) const {
    const auto has = [response](const ResponseList& responses) {
        return response < static_cast<int>(responses.size());
    };
    return response < 0 || (!m_sets.empty() && std::all_of(m_sets.begin(), m_sets.end(), has));
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

void ItemListCtl::change(int index, std::uint16_t value) {
    if (GetItem(index) == value) return;
    const int answered = m_answered;
    store(index, value);
    repaint_cell(index);
    const SameList same(*this);
    notify(LIST_VALUE_CHANGED, index, value);
    if (!same) return;
    NotifyAccessible(tessalink::AccessibleEvent::ValueChanged, index);
    if (m_answered != answered) tell_counts();
}

void ItemListCtl::ReportCounts(int report) {
    m_reportsCounts = report != 0;
    tell_counts();
}

void ItemListCtl::tell_counts() {
    CWnd* parent = GetParent();
    if (!m_reportsCounts || parent == nullptr) return;
    ITEMLIST_COUNTS_NOTIFICATION counts;
    counts.hdr = {GetSafeHwnd(), static_cast<UINT_PTR>(m_id), ITEMLIST_COUNTS};
    counts.answered = m_answered;
    counts.missing = GetMissingCount();
    counts.total = m_count;
    parent->SendMessage(WM_NOTIFY, static_cast<WPARAM>(m_id), reinterpret_cast<LPARAM>(&counts));
}

bool ItemListCtl::set_curr_cell_value_index(int response) {
    const int item = m_current;
    const std::uint16_t value = (*responses_of(item))[static_cast<std::size_t>(response)].value;
    if (m_keying != nullptr) return verify(value);
    if (m_undo.size() >= cMaxUndo) m_undo.erase(m_undo.begin(), m_undo.begin() + cMaxUndo / 2);
    m_undo.push_back({item, GetItem(item)});
    change(item, value);
    return true;
}

bool ItemListCtl::verify(std::uint16_t value) {
    const int item = m_current;
    const SameList same(*this);
    const int openBefore = m_keying->OpenItem();
    const KeyingOutcome outcome = m_keying->Key(item, value);
    repaint_cell(item);
    repaint_cell(openBefore);
    m_isStopped = false;
    if (outcome == KeyingOutcome::Corrected) change(item, value);
    if (outcome != KeyingOutcome::Differs) {
        if (same) notify(LIST_SETTLED, item, value);
        return true;
    }
    MessageBeep(MB_ICONEXCLAMATION);  // who keys from paper does not look
    if (same) notify(LIST_DIFFERENCE, item, value);
    if (same && m_keying != nullptr) {
        NotifyAccessible(tessalink::AccessibleEvent::Announcement, item,
                         AccessibleChild(item).value);
    }
    return false;
}

int ItemListCtl::Undo() {
    if (m_undo.empty() || m_isReadOnly || m_keying != nullptr) return 0;
    const Undone last = m_undo.back();
    m_undo.pop_back();
    const SameList same(*this);
    change(last.item, last.before);
    if (same) go_to(last.item);
    return 1;
}

void ItemListCtl::BeginVerification(tessalink::DoubleKeying& keying) {
    keying.Start(std::vector<int>(m_answers.begin(), m_answers.end()));
    m_keying = &keying;
    m_isStopped = false;
    m_undo.clear();
    Invalidate();
    go_to(0);
}

void ItemListCtl::EndVerification() {
    m_keying = nullptr;
    Invalidate();
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
    return m_isStopped && m_keying != nullptr && m_keying->OpenItem() == m_current;
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
        if (isPrintable && (m_usesBells || is_stopped())) MessageBeep(MB_ICONHAND);
        return;
    }
    const SameList same(*this);
    const bool goesOn = set_curr_cell_value_index(response);
    if (!same) return;
    m_isStopped = !goesOn;
    if (!goesOn) {
        ShowCurrItem();
        return;
    }
    if (m_usesBells && m_current == m_count - 1) MessageBeep(MB_ICONASTERISK);
    advance_to_next_cell();
}

void ItemListCtl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key == VK_BACK && is_stopped()) {
        m_isStopped = false;
    } else if (key != VK_BACK || Undo() == 0) {
        ColumnListCtl::OnKeyDown(key, repeat, flags);
    }
}

int ItemListCtl::response_at(int index, int x) const {
    const ResponseList* responses = responses_of(index);
    if (responses == nullptr) return -1;
    int left = m_halfWidth + m_numberWidth;
    for (std::size_t i = 0; i < responses->size(); ++i) {
        const int right = left + (*responses)[i].width + m_halfWidth;
        if (x >= left - m_halfWidth / 2 && x < right - m_halfWidth / 2) return static_cast<int>(i);
        left = right;
    }
    return -1;
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
    if (m_keying == nullptr) ColumnListCtl::OnLButtonDblClk(flags, point);
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

// Drawing.

void ItemListCtl::create_fonts(int height) {
    m_font.DeleteObject();
    m_boldFont.DeleteObject();
    m_font.CreateFont(height, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, OUT_TT_PRECIS,
                      CLIP_DEFAULT_PRECIS, PROOF_QUALITY, VARIABLE_PITCH, "Arial");
    m_boldFont.CreateFont(height, 0, 0, 0, FW_BOLD, 0, 0, 0, ANSI_CHARSET, OUT_TT_PRECIS,
                          CLIP_DEFAULT_PRECIS, PROOF_QUALITY, VARIABLE_PITCH, "Arial");
}

CString ItemListCtl::number_text(int index) const {
    CString text;
    text.Format(" %3d:", tessalink::wrapAdd(index, m_firstNumber));
    return text;
}

void ItemListCtl::measure_cells(CDC& dc) {
    const int height = dc.GetTextExtent("m", 1).cy;
    create_fonts(height);
    const Selected font(dc, &m_boldFont);
    const CString last = number_text(std::max(m_count - 1, 0));
    m_numberWidth = std::max(dc.GetTextExtent(cWidestNumber).cx, dc.GetTextExtent(last).cx);
    int widest = 0;
    for (ResponseList& responses : m_sets) {
        int width = 0;
        for (Response& response : responses) {
            response.width = dc.GetTextExtent(response.caption).cx;
            width += response.width + m_halfWidth;
        }
        widest = std::max(widest, width);
    }
    m_cellWidth = m_halfWidth + m_numberWidth + widest;
    m_rowHeight = (3 * height) >> 1;
}

void ItemListCtl::draw_cell(CDC& dc, int index, const CRect& rect) {
    draw_background(dc, rect, index == m_current);
    draw_item(dc, index, rect);
}

void ItemListCtl::draw_item(CDC& dc, int index, const CRect& rect) {
    const tessalink::RestoredState restored(dc);
    const bool isCurrent = index == m_current;
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(cell_text(isCurrent));
    dc.SelectObject(isCurrent ? &m_boldFont : &m_font);
    dc.SetTextAlign(TA_RIGHT | TA_TOP);
    const int y = rect.top + (m_rowHeight - m_rowHeight * 2 / 3) / 2;
    int x = rect.left + m_numberWidth;
    dc.TextOut(x, y, number_text(index));
    const ResponseList* responses = responses_of(index);
    if (responses == nullptr) return;
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    x = rect.left + m_halfWidth + m_numberWidth;
    const bool isOpen = m_keying != nullptr && m_keying->OpenItem() == index;
    const bool isHidden = m_keying != nullptr && !isOpen && !m_keying->IsSettled(index);
    for (const Response& response : *responses) {
        const CRect caption(x, rect.top, x + response.width, rect.bottom);
        if (!isHidden && response.value == GetItem(index)) draw_mark(dc, caption, Mark::Circle);
        if (isOpen && response.value == m_keying->OpenAnswer()) draw_mark(dc, caption, Mark::Box);
        dc.TextOut(x, y, response.caption);
        x += response.width + m_halfWidth;
    }
}

void ItemListCtl::draw_mark(CDC& dc, const CRect& caption, Mark mark) const {
    const bool isCircle = mark == Mark::Circle;
    CPen line(PS_SOLID, std::max(m_rowHeight / 12, 1), isCircle ? dc.GetTextColor() : cSecond);
    const Selected pen(dc, &line);
    const Selected brush(dc, static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH)));
    // Nearly to the next captions: the circle leaves the letters at both ends alone.
    const int room = std::max(m_halfWidth - 2, 1);
    CRect place(caption.left - room, caption.top + 1, caption.right + room, caption.bottom - 1);
    if (isCircle) {
        dc.Ellipse(&place);
    } else {
        place.DeflateRect(0, m_rowHeight / 8);
        dc.Rectangle(&place);
    }
}

tessalink::AccessibleElement ItemListCtl::AccessibleChild(int index) const {
    tessalink::AccessibleElement element;
    element.role = tessalink::AccessibleRole::ListItem;
    element.name = number_text(index).Trim();
    element.isReadOnly = m_isReadOnly;
    element.isFocused = index == m_current && GetFocus() == this;
    element.rect = GetItemRect(index);
    if (m_keying == nullptr || m_keying->IsSettled(index)) {
        element.value = caption_of(index, GetItem(index));
    } else if (m_keying->OpenItem() == index) {
        element.value.Format("First %s, now %s", spoken_answer(index, GetItem(index)).GetString(),
                             spoken_answer(index, m_keying->OpenAnswer()).GetString());
        element.isInvalid = true;
    }
    return element;
}

// Of the response with this code; empty without one.
CString ItemListCtl::caption_of(int index, int value) const {
    if (const ResponseList* responses = responses_of(index)) {
        for (const Response& response : *responses) {
            if (response.value == value) return response.caption;
        }
    }
    return {};
}

CString ItemListCtl::spoken_answer(int index, int value) const {
    CString caption = caption_of(index, value);
    if (caption.IsEmpty()) caption = "none";
    return caption;
}

// Several response sets.

ItemListCtl2::ItemListCtl2(int count, const char* definition, int defaultResponse) {
    SetLegend(count, definition, defaultResponse);
}

void ItemListCtl2::SetFirstItemNumber(int number) {
    m_firstNumber = number;
    RecalcLayout();
    scroll_into_view(m_current);
    Invalidate();
}

namespace {

// Takes a number off the front; -1 when there is none.
int takeNumber(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_not_of("0123456789"), text.size());
    if (end == 0) return -1;
    const int number = tessalink::readInt(text.substr(0, end));
    text.remove_prefix(end);
    return number;
}

bool takeChar(std::string_view& text, char ch) {
    if (text.empty() || text.front() != ch) return false;
    text.remove_prefix(1);
    return true;
}

}  // namespace

bool ItemListCtl2::assign_items(std::string_view& text, int set) {
    do {
        const int first = takeNumber(text);
        const int last = takeChar(text, '-') ? takeNumber(text) : first;
        if (first < 0 || last < 0) return false;
        const auto count = static_cast<int>(m_setOfItem.size());
        if (first >= count || last >= count) {
            Clear();
            AfxThrowInvalidArgException();
        }
        for (int i = first; i <= last; ++i) m_setOfItem[static_cast<std::size_t>(i)] = set;
    } while (takeChar(text, ','));
    return true;
}

bool ItemListCtl2::parse_def_str(std::string_view definition, int count) {
    m_setOfItem.assign(static_cast<std::size_t>(count), -1);
    if (definition.empty()) return true;
    do {
        m_sets.emplace_back();
        if (definition.empty() || definition.front() != '[') return false;
        if (!parse_responses(definition, m_sets.back())) return false;
        if (!takeChar(definition, ':')) return false;
        if (!assign_items(definition, static_cast<int>(m_sets.size()) - 1)) return false;
    } while (takeChar(definition, ';'));
    return definition.empty();
}

const ItemListCtl::ResponseList* ItemListCtl2::responses_of(int index) const {
    const int set = m_setOfItem[static_cast<std::size_t>(index)];
    return set < 0 ? nullptr : &m_sets[static_cast<std::size_t>(set)];
}
