#include "dataentry/RspListItemUI.h"

#include <algorithm>

#include "platform/graphics/DCScope.h"

using tessalink::RestoredState;

IMPLEMENT_DYNAMIC(RspListItemUI, ChoiceItemUI)

RspListItemUI::RspListItemUI(const char* responseSet, int labelWidth)
    : ChoiceItemUI(responseSet, labelWidth, true) {}

void RspListItemUI::SetCircleColors(COLORREF line, COLORREF background) {
    m_circle = line;
    m_circleBackground = background;
    colors_changed();
}

void RspListItemUI::draw_choice(CDC& dc, const Choice& choice, const CRect& cell, bool chosen,
                                bool readOnly) const {
    const int x = cell.left + caption_x();
    if (chosen) {
        const RestoredState restored(dc);
        CPen pen(PS_SOLID, std::max(cell.Height() / 10, 1), readOnly ? m_readOnlyText : m_circle);
        CBrush brush(readOnly ? m_textBackground : m_circleBackground);
        dc.SelectObject(&pen);
        dc.SelectObject(&brush);
        // Around the caption, and a little into the gaps on both sides.
        dc.Ellipse(cell.left, cell.top - cell.Height() / 8, cell.right,
                   cell.bottom + cell.Height() / 8);
        if (!readOnly) dc.SetTextColor(m_circle);
        dc.TextOut(x, cell.top, choice.caption);
        return;
    }
    dc.TextOut(x, cell.top, choice.caption);
}
