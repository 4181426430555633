#include "dataentry/ColoredItemUI.h"

#include <algorithm>

#include "dataentry/DataEntryCtl.h"
#include "platform/graphics/DCScope.h"
#include "platform/windows/ControlFont.h"

using tessalink::RestoredState;

namespace {

constexpr int cFocusedLabelPercent = 120;

}  // namespace

IMPLEMENT_DYNAMIC(ColoredItemUI, DataEntryItemUI)

void ColoredItemUI::colors_changed() {
    if (m_item != nullptr) Invalidate(1);
    // Its other items are part of the form's picture.
    if (m_container != nullptr) m_container->Invalidate(1);
    for (int i = 0; i < GetChildCount(); ++i) GetChild(i)->Invalidate(1);
}

void ColoredItemUI::SetFocusColors(COLORREF text, COLORREF background) {
    m_focusText = text;
    m_focusBackground = background;
    colors_changed();
}

void ColoredItemUI::SetLabelColors(COLORREF text, COLORREF background) {
    m_labelText = text;
    m_labelBackground = background;
    colors_changed();
}

void ColoredItemUI::SetTextColors(COLORREF text, COLORREF background) {
    m_text = text;
    m_textBackground = background;
    colors_changed();
}

void ColoredItemUI::SetReadOnlyColor(COLORREF text) {
    m_readOnlyText = text;
    colors_changed();
}

void ColoredItemUI::create_fonts(int height) {
    tessalink::createControlFont(m_boldFont, height, FW_BOLD, CLIP_CHARACTER_PRECIS);
    tessalink::createControlFont(m_normalFont, height, FW_LIGHT, CLIP_CHARACTER_PRECIS);
}

int ColoredItemUI::centered(const CString& label, int height, int lineHeight) {
    return std::max(0, (height - CountLabelLines(label) * lineHeight) / 2);
}

void ColoredItemUI::draw_label(CDC& dc, const CString& label, CRect area, bool focused, int top,
                               int lineHeight) const {
    const RestoredState restored(dc);
    const COLORREF background =
        focused ? AdjustColor(m_labelBackground, cFocusedLabelPercent) : m_labelBackground;
    dc.SelectObject(&m_boldFont);
    dc.SetTextColor(m_labelText);
    dc.SetTextAlign(TA_RIGHT | TA_TOP);
    PaintLabel(&dc, area.right - m_labelMargin, area.top + top, area, label, background,
               lineHeight);
    if (!focused) return;
    area.right = area.left + std::max(m_halfWidth / 2, 2);
    dc.FillSolidRect(&area, m_labelText);
}

void ColoredItemUI::draw_frame(CDC& dc, const CRect& frame, CPen& pen) {
    const RestoredState restored(dc);
    dc.SetBkMode(TRANSPARENT);
    dc.SelectStockObject(HOLLOW_BRUSH);
    dc.SelectObject(&pen);
    dc.Rectangle(&frame);
}

void ColoredItemUI::draw_field_frame(CDC& dc, const DataEntryItem& item, const CRect& box,
                                     int baseline) const {
    const bool isReadOnly = item.IsReadOnly() != 0;
    CPen frame(isReadOnly ? PS_DOT : PS_SOLID, 1, m_readOnlyText);
    draw_frame(dc, box, frame);
    if (baseline < 0) return;
    CPen line(PS_DOT, 1, value_color(item));
    const RestoredState restored(dc);
    dc.SetBkMode(TRANSPARENT);
    dc.SelectObject(&line);
    dc.MoveTo(box.left + m_halfWidth, baseline);
    dc.LineTo(box.right - m_halfWidth, baseline);
}
