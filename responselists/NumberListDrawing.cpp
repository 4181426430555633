// What number lists look like.
#include <algorithm>

#include "platform/graphics/DCScope.h"
#include "platform/windows/ControlFont.h"
#include "responselists/NumberListCtl.h"

using tessalink::RestoredState;
using tessalink::Selected;

namespace {

constexpr int cFrameRoom = 2;
constexpr COLORREF cRefused = RGB(192, 0, 0);

}  // namespace

void NumberListCtl::measure_cells(CDC& dc) {
    const int height = dc.GetTextExtent("9", 1).cy;
    tessalink::createControlFont(m_font, height, FW_NORMAL);
    tessalink::createControlFont(m_boldFont, height, FW_BOLD);
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
        widest = std::max<int>(widest, dc.GetTextExtent(cell_name(i)).cx);
    }
    return widest;
}

void NumberListCtl::draw_cell(CDC& dc, int index, const CRect& rect) {
    const RestoredState restored(dc);
    const bool isCurrent = index == m_current;
    const bool isReadOnly = cell_is_read_only(index);
    draw_background(dc, rect, isCurrent);
    dc.SetBkMode(TRANSPARENT);
    const COLORREF gray = tessalink::GetSysColor(COLOR_GRAYTEXT);
    dc.SetTextColor(isReadOnly && !isCurrent ? gray : cell_text(isCurrent));
    const int y = rect.top + m_rowHeight / 6;
    dc.SelectObject(isCurrent ? &m_boldFont : &m_font);
    dc.TextOut(rect.left + m_halfWidth, y, cell_name(index));
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

// Both numbers, beside the box and over the end of the name.
void NumberListCtl::draw_difference(CDC& dc, const CRect& room, int index) const {
    const CString both = both_values(index, " %s/%s");
    const CSize size = dc.GetTextExtent(both);
    CRect ground(CPoint(room.right - m_halfWidth / 2 - size.cx, room.top), size);
    dc.FillSolidRect(&ground, cell_background(index == m_current));
    dc.SetTextColor(index == m_current ? cRefused : cell_text(false));
    dc.TextOut(ground.left, ground.top, both);
}

tessalink::AccessibleElement NumberListCtl::AccessibleChild(int index) const {
    tessalink::AccessibleElement element = ColumnListCtl::AccessibleChild(index);
    element.isInvalid = element.isInvalid || (index == m_current && m_isRefused);
    return element;
}

CRect NumberListCtl::edit_rect(int index) const {
    CRect rect = GetItemRect(index);
    rect.left += 2 * m_halfWidth + m_legendWidth;
    // Off the frame of the cell.
    rect.right = rect.left + m_editWidth - cFrameRoom - 1;
    rect.DeflateRect(0, cFrameRoom);
    return rect;
}
