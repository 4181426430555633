#include "dataentry/ChoiceItemUI.h"

#include <algorithm>
#include <string_view>

#include "dataentry/DataEntryCtl.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/DCScope.h"

using tessalink::RestoredState;
using tessalink::Selected;

namespace {

/// The label is as wide as this text when no width is given, and a choice as high.
constexpr const char* cWidestChoiceNumber = " 999:";
constexpr int cMaxBits = 32;

}  // namespace

IMPLEMENT_DYNAMIC(ChoiceItemUI, ColoredItemUI)

ChoiceItemUI::ChoiceItemUI(const char* responseSet, int labelWidth, bool singleChoice)
    : m_singleChoice(singleChoice), m_labelPixels(labelWidth) {
    parse_rsp_set(responseSet);
}

int ChoiceItemUI::parse_rsp_set(const char* responseSet) {
    constexpr std::string_view cGroup = "[]";
    std::string_view rest = responseSet != nullptr ? responseSet : "";
    if (rest.empty() || rest.front() != '[') return 0;
    int group = 0;
    while (!rest.empty() && rest.front() == '[') {
        if (rest.substr(0, cGroup.size()) == cGroup) {
            rest.remove_prefix(cGroup.size());
            ++group;
            continue;
        }
        const auto response = tessalink::readResponse(rest);
        if (!response) return 0;
        const int place = static_cast<int>(m_choices.size());
        const int bit = place < cMaxBits ? static_cast<int>(1U << place) : 0;
        Choice choice;
        choice.caption = response->caption;
        choice.keys = response->keys;
        choice.value = response->value.value_or(m_singleChoice ? place : bit);
        choice.group = group;
        m_choices.push_back(std::move(choice));
    }
    return 1;
}

// Layout.

int ChoiceItemUI::OnCreate(CREATESTRUCTA* create) {
    if (ColoredItemUI::OnCreate(create) != 0) return -1;
    CClientDC dc(this);
    prepare(dc);
    return 0;
}

int ChoiceItemUI::mark_width() const {
    return m_boxSide + m_halfWidth;
}

void ChoiceItemUI::prepare(CDC& dc) {
    if (!std::exchange(m_initialized, true)) initialize(&dc);
}

void ChoiceItemUI::initialize(CDC* dc) {
    const CSize number = dc->GetTextExtent(cWidestChoiceNumber);
    m_height = number.cy;
    m_halfWidth = (dc->GetTextExtent("m", 1).cx + 1) >> 1;
    m_labelWidth = (m_labelPixels != 0 ? m_labelPixels : number.cx) + m_halfWidth;
    const int dpiY = std::max(dc->GetDeviceCaps(LOGPIXELSY), 1);
    m_boxSide = m_height * dc->GetDeviceCaps(LOGPIXELSX) / dpiY;
    create_fonts(m_height);
    m_labelMargin = label_margin(*dc);
    m_labelEdge = m_labelWidth - m_halfWidth + m_labelMargin;
    const Selected font(*dc, &m_normalFont);
    for (Choice& choice : m_choices) {
        choice.width = 2 * m_halfWidth + mark_width() + dc->GetTextExtent(choice.caption).cx;
    }
    place_choices();
    m_totalWidth = first_x();
    m_totalHeight = line_top(0) + m_height / 4 + m_height;
    for (const Choice& choice : m_choices) {
        m_totalWidth = std::max(m_totalWidth, choice.x + choice.width + m_halfWidth);
        m_totalHeight = std::max(m_totalHeight, choice.y + m_height / 4 + m_height);
    }
}

// The labels of texts, which may stand above and below, end half a wide bold letter after their
// width; so do these when a width was given.
int ChoiceItemUI::label_margin(CDC& dc) const {
    if (m_labelPixels == 0) return m_halfWidth;
    const Selected font(dc, &m_boldFont);
    return (dc.GetTextExtent("M", 1).cx + 1) >> 1;
}

void ChoiceItemUI::place_choices() {
    const Choice* previous = nullptr;
    for (Choice& choice : m_choices) {
        const bool newLine = previous != nullptr && previous->group != choice.group;
        choice.x = previous == nullptr || newLine ? first_x() : previous->x + previous->width;
        choice.y = newLine               ? line_top(choice.group)
                   : previous != nullptr ? previous->y
                                         : line_top(0);
        previous = &choice;
    }
}

void ChoiceItemUI::OnMeasureItem(const DataEntryItem* item, CDC* dc, CSize& size) {
    prepare(*dc);
    const int lines = CountLabelLines(const_cast<DataEntryItem*>(item)->GetLabel());
    size.cx = m_totalWidth;
    size.cy = std::max(m_totalHeight, lines * m_height + m_height / 2);
}

// Choosing.

bool ChoiceItemUI::is_chosen(const DataEntryItem& item, const Choice& choice) const {
    const auto* number = DYNAMIC_DOWNCAST(IntegerDataEntryItem, &item);
    if (number == nullptr || item.IsNull() != 0) return false;
    return m_singleChoice ? number->GetValue() == choice.value
                          : (number->GetValue() & choice.value) != 0;
}

int ChoiceItemUI::change(IntegerDataEntryItem& item, const Choice& choice) const {
    if (m_singleChoice) return item.SetValue(choice.value);
    const int value = item.GetValue();
    const int changed = (value & choice.value) != 0 ? value & ~choice.value : value | choice.value;
    if (changed == 0) {
        item.SetNull(1);
    } else {
        item.SetValue(changed);
    }
    return value;
}

int ChoiceItemUI::set_curr_cell_value_index(int index) {
    auto* item = DYNAMIC_DOWNCAST(IntegerDataEntryItem, m_item);
    if (item == nullptr || item->IsReadOnly() != 0) return 0;
    if (index < 0 || index >= static_cast<int>(m_choices.size())) AfxThrowInvalidArgException();
    const Choice& choice = m_choices[static_cast<std::size_t>(index)];
    if (m_singleChoice && is_chosen(*item, choice)) return 1;
    const tessalink::WindowGuard alive(*this);
    const int wasNull = item->IsNull();
    const int before = change(*item, choice);
    const int accepted = OnDataChanging();
    if (!alive) return 0;
    if (accepted == 0) {
        item->SetValue(before);
        item->DataEntryItem::SetNull(wasNull);
        Invalidate(1);
        return 0;
    }
    tell_changed(item);
    if (alive) Invalidate(1);
    return 1;
}

int ChoiceItemUI::choice_for(char key) const {
    const auto found = std::find_if(m_choices.begin(), m_choices.end(),
                                    [key](const Choice& c) { return c.keys.Find(key) >= 0; });
    return found == m_choices.end() ? -1 : static_cast<int>(found - m_choices.begin());
}

void ChoiceItemUI::OnChar(UINT ch, UINT repeat, UINT flags) {
    int index = -1;
    if (m_item != nullptr && m_item->IsReadOnly() == 0) {
        index = choice_for(static_cast<char>(ch));
        if (index < 0 && ch == ' ') index = m_cursor;
    }
    if (index < 0) {
        ColoredItemUI::OnChar(ch, repeat, flags);
        return;
    }
    const tessalink::WindowGuard alive(*this);
    const bool chosen = set_curr_cell_value_index(index) != 0;
    if (chosen && alive && m_singleChoice && m_container != nullptr) m_container->AdvanceToNext();
}

void ChoiceItemUI::move_cursor(int step) {
    const int count = static_cast<int>(m_choices.size());
    if (count == 0) return;
    m_cursor = m_cursor < 0 ? (step > 0 ? 0 : count - 1) : (m_cursor + step + count) % count;
    Invalidate(1);
    if (m_container == nullptr) return;
    m_container->NotifyAccessible(tessalink::AccessibleEvent::Focus, item_index());
}

void ChoiceItemUI::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (IsKeyDown(VK_CONTROL) && (key == VK_LEFT || key == VK_RIGHT)) {
        move_cursor(key == VK_RIGHT ? 1 : -1);
    } else {
        ColoredItemUI::OnKeyDown(key, repeat, flags);
    }
}

BOOL ChoiceItemUI::Attach(DataEntryItem* item, const CRect& rect, int focused) {
    if (item != m_item) m_cursor = -1;
    return ColoredItemUI::Attach(item, rect, focused);
}

bool ChoiceItemUI::OnClick(CPoint point) {
    const int half = m_height / 2;
    if (point.y < half || point.y > m_totalHeight - half || point.x < first_x() ||
        point.x > m_totalWidth - m_halfWidth) {
        return false;
    }
    for (std::size_t i = 0; i < m_choices.size(); ++i) {
        if (cell_of(m_choices[i], CRect()).PtInRect(point))
            return set_curr_cell_value_index(static_cast<int>(i)) != 0;
    }
    return false;
}

tessalink::AccessibleRole ChoiceItemUI::Role() const {
    return m_singleChoice ? tessalink::AccessibleRole::RadioGroup
                          : tessalink::AccessibleRole::CheckGroup;
}

std::vector<tessalink::AccessibleChoice> ChoiceItemUI::Choices(const DataEntryItem* item,
                                                               const CRect& place) const {
    std::vector<tessalink::AccessibleChoice> choices;
    choices.reserve(m_choices.size());
    for (const Choice& choice : m_choices)
        choices.push_back({choice.caption, is_chosen(*item, choice), cell_of(choice, place)});
    return choices;
}

CRect ChoiceItemUI::cell_of(const Choice& choice, const CRect& place) const {
    return CRect(CPoint(place.left + choice.x, place.top + choice.y),
                 CSize(choice.width, m_height));
}

CString ChoiceItemUI::ValueText(DataEntryItem* item) {
    CString text;
    for (const Choice& choice : m_choices) {
        if (!is_chosen(*item, choice)) continue;
        if (!text.IsEmpty()) text += ", ";
        text += choice.caption;
    }
    return text;
}

// Drawing.

void ChoiceItemUI::draw_read_only_frame(CDC& dc, const CRect& place) const {
    CRect frame(place.left + m_labelEdge, place.top, place.left + m_totalWidth,
                place.top + m_totalHeight);
    frame.DeflateRect(m_halfWidth / 2, 1);
    CPen dotted(PS_DOT, 1, m_readOnlyText);
    draw_frame(dc, frame, dotted);
}

void ChoiceItemUI::draw_item(CDC& dc, DataEntryItem& item, const CRect& place, bool focused) {
    prepare(dc);
    const RestoredState restored(dc);
    const CString label = item.GetLabel();
    // Beside the first choices, which stand at the top.
    draw_label(dc, label, CRect(place.left, place.top, place.left + m_labelEdge, place.bottom),
               focused, std::min(line_top(0), centered(label, place.Height(), m_height)), m_height);
    const CRect area(place.left + m_labelEdge, place.top, place.right, place.bottom);
    dc.FillSolidRect(&area, m_textBackground);
    if (item.IsReadOnly() != 0) draw_read_only_frame(dc, place);
    dc.SelectObject(&m_normalFont);
    dc.SetTextColor(value_color(item));
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    for (std::size_t i = 0; i < m_choices.size(); ++i) {
        const Choice& choice = m_choices[i];
        const CRect cell = cell_of(choice, place);
        draw_choice(dc, choice, cell, is_chosen(item, choice), item.IsReadOnly() != 0);
        if (!focused || static_cast<int>(i) != m_cursor) continue;
        CRect caption(cell.left + caption_x(), cell.top,
                      cell.right - 2 * m_halfWidth - mark_width() + caption_x(), cell.bottom);
        caption.InflateRect(m_halfWidth / 2, 1);
        CPen dotted(PS_DOT, 1, dc.GetTextColor());
        draw_frame(dc, caption, dotted);
    }
}
