#include "dataentry/TextDataEntryUI.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "dataentry/DataEntryCtl.h"
#include "dataentry/SimpleTextEditCtl.h"
#include "platform/graphics/DCScope.h"

using tessalink::RestoredState;

namespace {

constexpr int cDefaultLabelLetters = 7;
constexpr int cDefaultWidthChars = 10;
/// By how much an edit box is larger than its text, and where the text starts in it.
constexpr int cEditFrame = 6;
constexpr int cEditMargin = 3;

constexpr int cUnbroken = 0;
constexpr int cNoLine = -1;

int widthOf(const CDC& dc, std::string_view text) {
    return dc.GetTextExtent(text.data(), static_cast<int>(text.size())).cx;
}

/// How much of a line fits in a width: whole words with the blanks after them, or a part of the
/// first word; one character at least.
std::size_t fittingLength(const CDC& dc, std::string_view line, int width) {
    std::size_t fits = 0;
    while (fits < line.size()) {
        const std::size_t word = std::min(line.find(' ', fits), line.size());
        if (widthOf(dc, line.substr(0, word)) > width) break;
        fits = std::min(line.find_first_not_of(' ', word), line.size());
    }
    if (fits > 0) return fits;
    for (fits = 1; fits < line.size() && widthOf(dc, line.substr(0, fits + 1)) <= width;) ++fits;
    return std::min(fits, line.size());
}

/// The lines of a text as an edit box shows them, broken at the width if one is given.
std::vector<std::string_view> linesOf(const CDC& dc, std::string_view text, int width) {
    std::vector<std::string_view> lines;
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::string_view line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        do {
            const std::size_t length =
                width == cUnbroken ? line.size() : fittingLength(dc, line, width);
            lines.push_back(line.substr(0, length));
            line.remove_prefix(length);
        } while (!line.empty());
        start = end + 1;
    }
    return lines;
}

/// A line as it is shown in a width: with a mark at its end when it is too wide or, as `goesOn`
/// says, more lines follow than there is room for. Lines that were broken to the width are not too
/// wide, whatever blanks they end with.
std::string cutOff(const CDC& dc, std::string_view line, int width, bool goesOn, bool isBroken) {
    constexpr char cMore = '\x85';
    const bool isTooWide = !isBroken && widthOf(dc, line) > width;
    if (!isTooWide && !goesOn) return std::string(line);
    const int room = width - widthOf(dc, std::string_view(&cMore, 1));
    std::size_t fits = 0;
    for (std::size_t end = line.size(); fits < end;) {
        const std::size_t middle = (fits + end + 1) / 2;
        if (widthOf(dc, line.substr(0, middle)) <= room) {
            fits = middle;
        } else {
            end = middle - 1;
        }
    }
    return std::string(line.substr(0, fits)) + cMore;
}

/// Whether a commit is under way anywhere in the process.
bool isCommittingText = false;

}  // namespace

IMPLEMENT_DYNAMIC(TextDataEntryUI, ColoredItemUI)

/// While it lives, the interface commits.
class TextDataEntryUI::CommitScope {
public:
    explicit CommitScope(TextDataEntryUI& itemUI) : m_interface(itemUI), m_alive(itemUI) {
        isCommittingText = itemUI.m_isCommitting = true;
    }
    ~CommitScope() {
        isCommittingText = false;
        if (m_alive) m_interface.m_isCommitting = false;
    }
    CommitScope(const CommitScope&) = delete;
    CommitScope& operator=(const CommitScope&) = delete;

private:
    TextDataEntryUI& m_interface;
    tessalink::WindowGuard m_alive;
};

/// An item's old text brings back its value, but not the digits that are not shown. Those of the
/// library's own items are kept besides.
class TextDataEntryUI::KeptValue {
public:
    KeptValue(TextDataEntryUI& itemUI, DataEntryItem& item, const CString& shown)
        : m_interface(itemUI), m_item(item), m_isNull(item.IsNull()), m_shown(shown) {
        if (const auto* whole = DYNAMIC_DOWNCAST(IntegerDataEntryItem, &item)) {
            m_value = whole->GetValue();
        } else if (const auto* number = DYNAMIC_DOWNCAST(FloatDataEntryItem, &item)) {
            m_value = number->GetValue();
        } else if (const auto* text = DYNAMIC_DOWNCAST(TextDataEntryItem, &item)) {
            m_value = text->GetValue();
        }
    }

    void Restore() const {
        if (m_isNull != 0) {
            m_item.SetNull(1);
        } else {
            m_interface.set_item_text_value(m_shown, &m_item);
        }
        if (const int* whole = std::get_if<int>(&m_value)) {
            static_cast<IntegerDataEntryItem&>(m_item).SetValue(*whole);
        } else if (const double* number = std::get_if<double>(&m_value)) {
            static_cast<FloatDataEntryItem&>(m_item).SetValue(*number);
        } else if (const CString* text = std::get_if<CString>(&m_value)) {
            static_cast<TextDataEntryItem&>(m_item).SetValue(*text);
        }
        // Of the base class: the others change the value as well.
        m_item.DataEntryItem::SetNull(m_isNull);
    }

private:
    TextDataEntryUI& m_interface;
    DataEntryItem& m_item;
    int m_isNull;
    CString m_shown;
    std::variant<std::monostate, int, double, CString> m_value;
};

TextDataEntryUI::TextDataEntryUI(int labelWidth, int maxChars, int lines, int widthChars)
    : m_labelPixels(labelWidth), m_maxChars(maxChars), m_lines(lines), m_widthChars(widthChars) {}

TextDataEntryUI::~TextDataEntryUI() = default;

void TextDataEntryUI::initialize(CDC* dc) {
    create_fonts(dc->GetTextExtent("M", 1).cy);
    const tessalink::Selected bold(*dc, &m_boldFont);
    const CSize letter = dc->GetTextExtent("M", 1);
    m_halfWidth = (letter.cx + 1) >> 1;
    m_labelGap = 2 * m_halfWidth;
    m_labelMargin = m_halfWidth;
    m_labelWidth =
        (m_labelPixels != 0 ? m_labelPixels : cDefaultLabelLetters * letter.cx) + m_halfWidth;
    m_lineHeight = letter.cy;
    const int textHeight = std::max(m_lines, 1) * letter.cy;
    m_editHeight = textHeight + cEditFrame;
    m_minItemHeight = textHeight + cEditFrame + letter.cy / 2;
    const int width = (m_widthChars != 0 ? m_widthChars : cDefaultWidthChars) * letter.cx;
    m_editWidth = width + cEditFrame;
    m_itemWidth = width + m_labelWidth + cEditFrame + m_labelGap;
    if (!m_edit) m_edit.reset(create_edit_box());
    m_initialized = true;
}

void TextDataEntryUI::OnMeasureItem(const DataEntryItem* item, CDC* dc, CSize& size) {
    if (!m_initialized) initialize(dc);
    // GetLabel makes the label of an item that has none. Items are never constant themselves.
    const int lines = CountLabelLines(const_cast<DataEntryItem*>(item)->GetLabel());
    size.cx = m_itemWidth;
    size.cy = std::max(m_minItemHeight, lines * m_lineHeight + m_lineHeight / 2 + cEditFrame);
}

int TextDataEntryUI::OnCreate(CREATESTRUCTA* create) {
    if (ColoredItemUI::OnCreate(create) != 0) return -1;
    if (!m_initialized) {
        CClientDC dc(this);
        initialize(&dc);
    }
    return 0;
}

// The edit box.

CEdit* TextDataEntryUI::create_edit_box() {
    return new SimpleTextEditCtl(*this);
}

void TextDataEntryUI::create_edit_wnd() {
    const DWORD kind = m_lines < 1 ? ES_AUTOHSCROLL : ES_MULTILINE | ES_AUTOVSCROLL;
    m_edit->Create(WS_CHILD | WS_BORDER | ES_WANTRETURN | kind | extra_edit_style(), CRect(), this,
                   cEditId);
    if (m_maxChars > 0) m_edit->SetLimitText(static_cast<UINT>(m_maxChars));
    m_edit->SetFont(&m_normalFont);
}

CRect TextDataEntryUI::edit_rect(const CRect& place) const {
    const int height = place.Height();
    const int top = std::max(0, (height - m_editHeight) >> 1);
    const int bottom = std::min(top + m_editHeight, height);
    const int left = m_labelWidth + m_halfWidth;
    const int end = place.Width() - m_halfWidth;
    const bool fits = m_widthChars != 0 && left + m_editWidth <= end;
    CRect rect(left, top, fits ? left + m_editWidth : end, bottom);
    rect.OffsetRect(place.left, place.top);
    return rect;
}

void TextDataEntryUI::display_edit_box() {
    if (m_edit->GetSafeHwnd() == nullptr) create_edit_wnd();
    if (m_edit->GetSafeHwnd() == nullptr || m_item == nullptr) return;
    m_edit->MoveWindow(edit_rect(CRect(CPoint(), m_itemRect.Size())));
    m_edit->SetReadOnly(m_item->IsReadOnly());
    update_edit_box();
    m_edit->ShowWindow(SW_SHOW);
    m_edit->UpdateWindow();
    m_editIsShown = true;
    m_edit->SetFocus();
}

void TextDataEntryUI::update_edit_box() {
    if (m_item == nullptr || m_edit->GetSafeHwnd() == nullptr) return;
    m_loaded = get_curr_item_text_value();
    m_edit->SetWindowText(m_loaded);
    m_edit->GetWindowText(m_shown);
    // All is selected, so that typing replaces it.
    m_edit->SetSel(0, -1);
    m_edit->ScrollCaret();
}

void TextDataEntryUI::remove_edit_box() {
    m_editIsShown = false;
    if (m_edit != nullptr && m_edit->GetSafeHwnd() != nullptr) m_edit->ShowWindow(SW_HIDE);
}

void TextDataEntryUI::ShowValue() {
    if (m_editIsShown) {
        m_edit->SetReadOnly(m_item->IsReadOnly());
        // What is being typed stays as long as the value does.
        if (is_as_loaded() || m_loaded != get_curr_item_text_value()) update_edit_box();
        m_edit->Invalidate(1);
    }
    Invalidate(1);
}

void TextDataEntryUI::Detach(int repaint) {
    if (m_item != nullptr && m_focused) remove_edit_box();
    m_wasRefused = false;
    ColoredItemUI::Detach(repaint);
}

void TextDataEntryUI::OnSetFocus(CWnd* old) {
    ColoredItemUI::OnSetFocus(old);
    if (!IgnoreFocus() && m_focused && m_item != nullptr) display_edit_box();
}

void TextDataEntryUI::OnCtlColor(CDC* dc, CWnd*, UINT) {
    const bool isReadOnly = m_item != nullptr && m_item->IsReadOnly() != 0;
    dc->SetTextColor(isReadOnly ? m_readOnlyText : m_focusText);
    dc->SetBkColor(isReadOnly ? m_textBackground : m_focusBackground);
}

void TextDataEntryUI::OnSize(UINT type, int width, int height) {
    ColoredItemUI::OnSize(type, width, height);
    if (m_editIsShown) m_edit->MoveWindow(edit_rect(CRect(0, 0, width, height)));
}

BOOL TextDataEntryUI::OnCommand(WPARAM wParam, LPARAM lParam) {
    const bool isLeft = LOWORD(wParam) == cEditId && HIWORD(wParam) == EN_KILLFOCUS;
    if (!isLeft) return ColoredItemUI::OnCommand(wParam, lParam);
    if (m_editIsShown && m_item != nullptr) edit_left();
    return 1;
}

void TextDataEntryUI::edit_left() {
    m_leftInCommit = isCommittingText;
    if (isCommittingText) return;
    const tessalink::WindowGuard alive(*this);
    const bool isKept = update_curr_from_edit() != 0;
    if (!alive) return;
    m_wasRefused = !isKept;
    if (isKept) leave_if_unfocused(GetFocus());
}

bool TextDataEntryUI::is_as_loaded() const {
    CString typed;
    m_edit->GetWindowText(typed);
    return typed == m_shown;
}

void TextDataEntryUI::OnEditKey(UINT key, UINT repeat, UINT flags) {
    SendMessage(WM_KEYDOWN, key, MAKELPARAM(static_cast<int>(repeat), static_cast<int>(flags)));
}

void TextDataEntryUI::leave_if_unfocused(CWnd* focus) {
    if (!m_editIsShown || m_item == nullptr) return;
    if (Holds(focus)) return;
    remove_edit_box();
    DataEntryItemUI::OnKillFocus(focus);
}

void TextDataEntryUI::OnReturn() {
    const tessalink::WindowGuard alive(*this);
    if (update_curr_from_edit() != 0 && alive && m_container != nullptr) {
        m_container->AdvanceToNext();
    }
}

void TextDataEntryUI::OnCancel() {
    if (m_item != nullptr) update_edit_box();
}

void TextDataEntryUI::OnTab() {
    if (m_container != nullptr) m_container->HandleTab();
}

bool TextDataEntryUI::Commit() {
    // While the parent is told of a change, it may go to another item.
    return !m_editIsShown || m_isCommitting || update_curr_from_edit() != 0;
}

bool TextDataEntryUI::CommitEntry() {
    const bool wasRefused = std::exchange(m_wasRefused, false);
    return !(wasRefused && m_editIsShown && is_as_loaded()) && Commit();
}

int TextDataEntryUI::update_curr_from_edit() {
    if (m_item == nullptr || m_item->IsReadOnly() != 0 || !m_editIsShown) return 1;
    if (isCommittingText) return 0;
    m_wasRefused = false;
    DataEntryItem& item = *m_item;
    const tessalink::WindowGuard alive(*this);
    {
        const CommitScope scope(*this);
        CString typed;
        m_edit->GetWindowText(typed);
        const CString now = get_curr_item_text_value();
        // A field may show a text otherwise than it was given it: that is no change.
        if (typed == now || (typed == m_shown && now == m_loaded)) return 1;
        const KeptValue before(*this, item, now);
        set_item_text_value(typed, &item);
        const int accepted = OnDataChanging();
        if (!alive) return 0;
        if (accepted != 0) {
            tell_changed(&item);
            if (!alive) return 0;
            if (m_item != &item) return 1;
            update_edit_box();
            if (std::exchange(m_leftInCommit, false)) leave_if_unfocused(GetFocus());
            return alive ? 1 : 0;
        }
        before.Restore();
        if (m_item == &item) update_edit_box();
    }
    if (m_container != nullptr) m_container->SetCurrItem(m_container->IndexOf(&item));
    return 0;
}

// Values.

CString TextDataEntryUI::get_curr_item_text_value() {
    const auto* text = DYNAMIC_DOWNCAST(TextDataEntryItem, m_item);
    return text == nullptr || text->IsNull() != 0 ? CString() : text->GetValue();
}

CString TextDataEntryUI::text_of(DataEntryItem& item) {
    const StandIn standIn(*this, item);
    return get_curr_item_text_value();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts override this signature
void TextDataEntryUI::set_item_text_value(CString text, DataEntryItem* item) {
    CString trimmed = text;
    trimmed.Trim();
    if (trimmed.IsEmpty()) {
        item->SetNull(1);
    } else {
        store_text(text, *item);
    }
}

void TextDataEntryUI::store_text(const CString& text, DataEntryItem& item) {
    auto* target = DYNAMIC_DOWNCAST(TextDataEntryItem, &item);
    if (target == nullptr) return;
    target->SetNull(0);
    target->SetValue(text);
}

tessalink::AccessibleRole TextDataEntryUI::Role() const {
    return tessalink::AccessibleRole::EditableText;
}

CString TextDataEntryUI::ValueText(DataEntryItem* item) {
    return text_of(*item);
}

// Drawing.

void TextDataEntryUI::draw_item(CDC& dc, DataEntryItem& item, const CRect& place, bool focused) {
    if (!m_initialized) initialize(&dc);
    const RestoredState restored(dc);
    const CString label = item.GetLabel();
    draw_label(dc, label, CRect(place.left, place.top, place.left + m_labelWidth, place.bottom),
               focused, centered(label, place.Height(), m_lineHeight), m_lineHeight);
    draw_value(dc, item, place);
}

void TextDataEntryUI::draw_value(CDC& dc, const DataEntryItem& item, const CRect& place) {
    const CRect area(place.left + m_labelWidth, place.top, place.right, place.bottom);
    dc.SelectObject(&m_normalFont);
    dc.SetTextColor(value_color(item));
    dc.SetBkColor(m_textBackground);
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    dc.ExtTextOut(area.left, area.top, ETO_OPAQUE, &area, "", 0, nullptr);
    const CRect box = edit_rect(place);
    CString text = get_curr_item_text_value();
    draw_field_frame(dc, item, box, text.IsEmpty() ? box.top + m_lineHeight + 1 : cNoLine);
    if (m_lines <= 1) {
        text.Replace("\r\n", " ");
        text.Replace('\n', ' ');
    }
    draw_lines(dc, text, box);
}

void TextDataEntryUI::draw_lines(CDC& dc, const CString& text, const CRect& box) const {
    CRect inside = box;
    inside.DeflateRect(1, 1);
    const CPoint start(box.left + cEditMargin, box.top + cEditMargin);
    const int broken = box.Width() - 2 * cEditMargin;
    const int width = m_lines > 1 ? broken : inside.right - start.x;
    const auto lines = linesOf(dc, text.View(), m_lines > 1 ? broken : cUnbroken);
    const int fitting = std::max<int>((inside.bottom - start.y) / m_lineHeight, 1);
    const auto count = std::min(lines.size(), static_cast<std::size_t>(fitting));
    for (std::size_t i = 0; i < count; ++i) {
        const bool goesOn = i + 1 == count && count < lines.size();
        const std::string line = cutOff(dc, lines[i], width, goesOn, m_lines > 1);
        dc.ExtTextOut(start.x, start.y + static_cast<int>(i) * m_lineHeight, ETO_CLIPPED, &inside,
                      line.data(), static_cast<UINT>(line.size()), nullptr);
    }
}
