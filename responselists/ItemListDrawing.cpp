// What item lists look like, and where their captions stand.
#include <algorithm>

#include "platform/base/NumberText.h"
#include "platform/graphics/DCScope.h"
#include "platform/windows/ControlFont.h"
#include "responselists/ItemListCtl.h"

using tessalink::Selected;

namespace {

constexpr const char* cWidestItemNumber = " 999:";
/// Off the bar of the focus, which lies on the blank before the widest number.
constexpr int cNumberShift = 1;
/// The box around an answer that differs from the first one.
constexpr COLORREF cSecond = RGB(192, 0, 0);

}  // namespace

void ItemListCtl::create_fonts(int height) {
    tessalink::createControlFont(m_font, height, FW_NORMAL);
    tessalink::createControlFont(m_boldFont, height, FW_BOLD);
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
    m_numberWidth = std::max(dc.GetTextExtent(cWidestItemNumber).cx, dc.GetTextExtent(last).cx);
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
    int x = rect.left + m_numberWidth + cNumberShift;
    dc.TextOut(x, y, number_text(index));
    const ResponseList* responses = responses_of(index);
    if (responses == nullptr) return;
    dc.SetTextAlign(TA_LEFT | TA_TOP);
    x = rect.left + m_halfWidth + m_numberWidth;
    const bool isHidden = is_hidden(index);
    const bool isOpen = is_open(index);
    for (const Response& response : *responses) {
        const CRect caption(x, rect.top, x + response.width, rect.bottom);
        if (!isHidden && response.value == GetItem(index)) draw_mark(dc, caption, Mark::Circle);
        if (isOpen && response.value == open_value()) draw_mark(dc, caption, Mark::Box);
        dc.TextOut(x, y, response.caption);
        x += response.width + m_halfWidth;
    }
}

void ItemListCtl::draw_mark(CDC& dc, const CRect& caption, Mark mark) const {
    const bool isCircle = mark == Mark::Circle;
    CPen line(PS_SOLID, std::max(m_rowHeight / 12, 1), isCircle ? dc.GetTextColor() : cSecond);
    const Selected pen(dc, &line);
    const Selected brush(dc, static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH)));
    // A circle touches the captions beside it at half their height at most, where it ends; a box
    // has whole sides and stays within its half of the gap.
    const int room = std::max(isCircle ? m_halfWidth - 2 : m_halfWidth / 2, 1);
    CRect place(caption.left - room, caption.top + 1, caption.right + room, caption.bottom - 1);
    if (isCircle) {
        dc.Ellipse(&place);
    } else {
        place.DeflateRect(0, m_rowHeight / 8);
        dc.Rectangle(&place);
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
