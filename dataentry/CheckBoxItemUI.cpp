#include "dataentry/CheckBoxItemUI.h"

#include <algorithm>

#include "platform/graphics/DCScope.h"

using tessalink::RestoredState;
using tessalink::Selected;

IMPLEMENT_DYNAMIC(CheckBoxItemUI, ChoiceItemUI)
IMPLEMENT_DYNAMIC(RadioBtnItemUI, CheckBoxItemUI)
IMPLEMENT_DYNAMIC(CheckBoxItemColUI, CheckBoxItemUI)

void CheckBoxItemUI::draw_choice(CDC& dc, const Choice& choice, const CRect& cell, bool chosen,
                                 bool readOnly) const {
    CRect box(cell.left, cell.top, cell.left + m_boxSide, cell.bottom);
    box.DeflateRect(std::max(m_boxSide / 8, 1), std::max(cell.Height() / 8, 1));
    {
        const RestoredState restored(dc);
        CPen pen(PS_SOLID, 1, dc.GetTextColor());
        CBrush brush(readOnly ? m_textBackground : m_focusBackground);
        dc.SelectObject(&pen);
        dc.SelectObject(&brush);
        if (!readOnly) dc.SetTextColor(m_focusText);
        draw_mark(dc, box, chosen);
    }
    dc.TextOut(cell.left + caption_x(), cell.top, choice.caption);
}

void CheckBoxItemUI::draw_mark(CDC& dc, const CRect& box, bool chosen) const {
    dc.Rectangle(&box);
    if (!chosen) return;
    CPen tick(PS_SOLID, std::max(box.Width() / 6, 2), dc.GetTextColor());
    const Selected pen(dc, &tick);
    const int width = box.Width();
    const int height = box.Height();
    const POINT points[] = {{box.left + width / 4, box.top + height / 2},
                            {box.left + width * 2 / 5, box.top + height * 7 / 10},
                            {box.left + width * 3 / 4, box.top + height / 4}};
    dc.Polyline(points, 3);
}

void RadioBtnItemUI::draw_mark(CDC& dc, const CRect& box, bool chosen) const {
    dc.Ellipse(&box);
    if (!chosen) return;
    CRect dot = box;
    dot.DeflateRect(std::max(box.Width() / 4, 2), std::max(box.Height() / 4, 2));
    CBrush filled(dc.GetTextColor());
    const Selected brush(dc, &filled);
    dc.Ellipse(&dot);
}

void CheckBoxItemColUI::place_choices() {
    int y = line_top(0);
    const Choice* previous = nullptr;
    for (Choice& choice : m_choices) {
        if (previous != nullptr && previous->group != choice.group) y += choice_height() / 2;
        choice.x = first_x();
        choice.y = y;
        y += line_top(1) - line_top(0);
        previous = &choice;
    }
}
