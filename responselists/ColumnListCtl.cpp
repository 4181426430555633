#include "responselists/ColumnListCtl.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/graphics/DCScope.h"
#include "platform/windows/detail/InputCodes.h"

using tessalink::cWheelNotch;

namespace {

constexpr COLORREF cCurrentCell = RGB(255, 255, 192);
/// The left edge of the current cell while the list has the focus.
constexpr int cBarWidth = 3;
/// Cells further away than this many pixels are placed here.
constexpr std::int64_t cFarAway = 1 << 29;

}  // namespace

IMPLEMENT_DYNAMIC(ColumnListCtl, CWnd)

BOOL ColumnListCtl::Create(const RECT& rect, UINT id, CWnd* parent) {
    return CWnd::Create(nullptr, "",
                        WS_CHILD | WS_VISIBLE | WS_BORDER | WS_GROUP | WS_TABSTOP | WS_HSCROLL,
                        rect, parent, id);
}

BOOL ColumnListCtl::SubclassDlgItem(UINT id, CWnd* parent) {
    if (CWnd::SubclassDlgItem(id, parent) == 0) return 0;
    ModifyStyle(0, WS_HSCROLL);
    RecalcLayout();
    Invalidate();
    return 1;
}

int ColumnListCtl::OnCreate(CREATESTRUCTA* create) {
    if (CWnd::OnCreate(create) != 0) return -1;
    RecalcLayout();
    return 0;
}

void ColumnListCtl::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    RecalcLayout();
    if (m_current >= 0) scroll_into_view(m_current);
    Invalidate();
}

int ColumnListCtl::SetReadOnly(int readOnly) {
    const int was = m_isReadOnly ? 1 : 0;
    m_isReadOnly = readOnly != 0;
    Invalidate();
    return was;
}

// Layout.

void ColumnListCtl::set_count(int count) {
    ++m_contents;
    m_keying = nullptr;
    m_count = count;
    m_current = count > 0 ? 0 : -1;
    m_firstColumn = 0;
    RecalcLayout();
    Invalidate();
    NotifyAccessible(tessalink::AccessibleEvent::ChildrenChanged);
}

void ColumnListCtl::RecalcLayout() {
    if (GetSafeHwnd() == nullptr) return;
    m_id = GetDlgCtrlID();
    CRect client;
    GetClientRect(&client);
    CClientDC dc(this);
    m_halfWidth = (dc.GetTextExtent("m", 1).cx + 1) >> 1;
    measure_cells(dc);
    m_cellWidth = std::max(m_cellWidth, 1);
    m_rowHeight = std::max(m_rowHeight, 1);
    // Whether there is a scroll bar follows from the place and the contents, never from what was
    // there before.
    const int barHeight = tessalink::GetSystemMetrics(SM_CYHSCROLL);
    CSize whole = client.Size();
    if (shows_bar()) whole.cy += barHeight;
    fit_columns(whole);
    if (needs_bar()) fit_columns({whole.cx, whole.cy - barHeight});
    m_firstColumn = std::clamp(m_firstColumn, 0, last_first_column());
    SCROLLINFO info{};
    info.fMask = SIF_ALL;
    info.nMax = m_columns;
    info.nPage = static_cast<UINT>(page_columns());
    info.nPos = bar_position();
    SetScrollInfo(SB_HORZ, &info);
    cells_moved();
}

void ColumnListCtl::fit_columns(CSize client) {
    m_rows = std::max(static_cast<int>(client.cy) / m_rowHeight, 1);
    m_columns = m_count / m_rows + (m_count % m_rows != 0 ? 1 : 0);
    m_visibleColumns = static_cast<int>(client.cx) / m_cellWidth;
}

bool ColumnListCtl::needs_bar() const {
    return (GetStyle() & WS_HSCROLL) != 0 && m_columns > page_columns();
}

bool ColumnListCtl::shows_bar() const {
    SCROLLINFO info{};
    return (GetStyle() & WS_HSCROLL) != 0 && GetScrollInfo(SB_HORZ, &info) != 0 &&
           std::int64_t{info.nMax} - info.nMin > std::int64_t{info.nPage};
}

// A column that is cut off counts when no whole one is visible.
int ColumnListCtl::page_columns() const {
    return std::max(m_visibleColumns, 1);
}

int ColumnListCtl::last_first_column() const {
    return std::max(m_columns - page_columns(), 0);
}

// Of the two last places of the bar, between which nothing moves, the end.
int ColumnListCtl::bar_position() const {
    const int last = last_first_column();
    return m_firstColumn < last ? m_firstColumn : last + 1;
}

CRect ColumnListCtl::GetItemRect(int index) const {
    if (index < 0 || index >= m_count) return {};
    const std::int64_t left = (std::int64_t{index / m_rows} - m_firstColumn) * m_cellWidth;
    return CRect(CPoint(static_cast<int>(std::clamp(left, -cFarAway, cFarAway)),
                        index % m_rows * m_rowHeight),
                 CSize(m_cellWidth, m_rowHeight));
}

int ColumnListCtl::ItemAt(CPoint point) const {
    if (point.x < 0 || point.y < 0 || point.y / m_rowHeight >= m_rows) return -1;
    const std::int64_t index =
        (std::int64_t{point.x} / m_cellWidth + m_firstColumn) * m_rows + point.y / m_rowHeight;
    return index < m_count ? static_cast<int>(index) : -1;
}

// The current cell.

void ColumnListCtl::set_curr_cell(int index) {
    index = std::max(std::min(index, m_count - 1), 0);
    if (index == m_current || m_count == 0) return;
    const int before = std::exchange(m_current, index);
    repaint_cell(before);
    repaint_cell(index);
    const SameList same(*this);
    notify(LIST_CURRENT_CHANGED, index, 0);
    if (same) NotifyAccessible(tessalink::AccessibleEvent::Focus, m_current);
}

void ColumnListCtl::go_to(int index) {
    const SameList same(*this);
    set_curr_cell(index);
    if (same) scroll_into_view(m_current);
}

void ColumnListCtl::repaint_cell(int index) {
    const CRect rect = GetItemRect(index);
    if (!rect.IsRectEmpty()) InvalidateRect(rect);
}

void ColumnListCtl::scroll_into_view(int index) {
    if (index < 0) return;
    const int column = index / m_rows;
    if (column < m_firstColumn) {
        scroll_to(column);
    } else if (column >= m_firstColumn + page_columns()) {
        scroll_to(column - page_columns() + 1);
    }
}

void ColumnListCtl::scroll_to(int column) {
    column = std::clamp(column, 0, last_first_column());
    if (column == m_firstColumn) return;
    // Further than all that is visible is as far as that.
    const int farthest = m_visibleColumns + 1;
    const int columns = std::clamp(m_firstColumn - column, -farthest, farthest);
    m_firstColumn = column;
    SetScrollPos(SB_HORZ, bar_position());
    ScrollWindow(columns * m_cellWidth, 0);
    cells_moved();
}

void ColumnListCtl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    const std::int64_t page = std::int64_t{m_rows} * page_columns();
    const auto target = [&]() -> std::int64_t {
        switch (key) {
            case VK_PRIOR:
                return m_current - page;
            case VK_NEXT:
                return m_current + page;
            case VK_END:
                return m_count - 1;
            case VK_HOME:
                return 0;
            case VK_LEFT:
                return std::int64_t{m_current} - m_rows;
            case VK_UP:
                return m_current - 1;
            case VK_RIGHT:
                return std::int64_t{m_current} + m_rows;
            default:
                return m_current + 1;
        }
    };
    if (key < VK_PRIOR || key > VK_DOWN) {
        CWnd::OnKeyDown(key, repeat, flags);
        return;
    }
    if (m_count == 0) return;
    go_to(static_cast<int>(std::clamp<std::int64_t>(target(), 0, m_count - 1)));
}

void ColumnListCtl::OnHScroll(UINT code, UINT position, CWnd* bar) {
    if (bar != nullptr) {
        CWnd::OnHScroll(code, position, bar);
        return;
    }
    const int page = page_columns();
    switch (code) {
        case SB_LINELEFT:
            scroll_to(m_firstColumn - 1);
            break;
        case SB_LINERIGHT:
            scroll_to(m_firstColumn + 1);
            break;
        case SB_PAGELEFT:
            scroll_to(m_firstColumn - page);
            break;
        case SB_PAGERIGHT:
            scroll_to(m_firstColumn + page);
            break;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            scroll_to(static_cast<int>(std::min<UINT>(position, INT32_MAX)));
            break;
        case SB_LEFT:
            scroll_to(0);
            break;
        case SB_RIGHT:
            scroll_to(m_columns);
            break;
        default:
            break;
    }
}

BOOL ColumnListCtl::OnMouseWheel(UINT, short delta, CPoint) {
    const int columns = std::max(std::abs(static_cast<int>(delta)) / cWheelNotch, 1);
    scroll_to(m_firstColumn + (delta < 0 ? columns : -columns));
    return 1;
}

// Notifications.

LRESULT ColumnListCtl::notify(int code, int index, int value) {
    CWnd* parent = GetParent();
    if (parent == nullptr) return 0;
    LISTCTL_NOTIFICATION notification{};
    notification.hdr.hwndFrom = GetSafeHwnd();
    notification.hdr.idFrom = static_cast<UINT_PTR>(m_id);
    notification.hdr.code = code;
    notification.itemIndex = index;
    notification.value = value;
    return parent->SendMessage(WM_NOTIFY, static_cast<WPARAM>(m_id),
                               reinterpret_cast<LPARAM>(&notification));
}

// Painting.

BOOL ColumnListCtl::OnEraseBkgnd(CDC*) {
    return 1;  // painting covers everything
}

void ColumnListCtl::OnPaint() {
    CPaintDC dc(this);
    CRect area;
    dc.GetClipBox(&area);
    dc.FillSolidRect(&area, cell_background(false));
    const int firstRow = std::max<int>(area.top, 0) / m_rowHeight;
    const int endRow = std::min<int>(m_rows, (area.bottom + m_rowHeight - 1) / m_rowHeight);
    const int firstColumn = std::max<int>(area.left, 0) / m_cellWidth + m_firstColumn;
    const int endColumn =
        std::min<int>(m_columns, (area.right + m_cellWidth - 1) / m_cellWidth + m_firstColumn);
    for (int column = firstColumn; column < endColumn; ++column) {
        for (int row = firstRow; row < endRow; ++row) {
            const std::int64_t index = std::int64_t{column} * m_rows + row;
            if (index >= m_count) break;
            const int cell = static_cast<int>(index);
            draw_cell(dc, cell, GetItemRect(cell));
        }
    }
}

COLORREF ColumnListCtl::cell_background(bool isCurrent) const {
    if (m_isReadOnly) return tessalink::GetSysColor(COLOR_BTNFACE);
    return isCurrent ? cCurrentCell : tessalink::GetSysColor(COLOR_WINDOW);
}

COLORREF ColumnListCtl::cell_text(bool isCurrent) const {
    if (m_isReadOnly) return tessalink::GetSysColor(COLOR_GRAYTEXT);
    return isCurrent ? cBlack : tessalink::GetSysColor(COLOR_WINDOWTEXT);
}

void ColumnListCtl::draw_background(CDC& dc, const CRect& rect, bool isCurrent) const {
    dc.FillSolidRect(&rect, cell_background(isCurrent));
    if (!isCurrent) return;
    CPen frame(m_isReadOnly ? PS_DOT : PS_SOLID, 1, cell_text(isCurrent));
    const tessalink::Selected pen(dc, &frame);
    const tessalink::Selected brush(dc, static_cast<CBrush*>(CGdiObject::FromStock(HOLLOW_BRUSH)));
    dc.Rectangle(&rect);
    if (!Holds(GetFocus())) return;
    CRect bar(rect.left, rect.top, rect.left + cBarWidth, rect.bottom);
    // In a color that shows beside the ground of every theme.
    dc.FillSolidRect(&bar, tessalink::GetSysColor(COLOR_HIGHLIGHT));
}

tessalink::AccessibleElement ColumnListCtl::Accessible() const {
    tessalink::AccessibleElement element = CWnd::Accessible();
    element.role = tessalink::AccessibleRole::List;
    element.isReadOnly = m_isReadOnly;
    return element;
}

tessalink::AccessibleElement ColumnListCtl::AccessibleChild(int index) const {
    tessalink::AccessibleElement element;
    element.role = tessalink::AccessibleRole::ListItem;
    element.name = cell_name(index);
    if (is_open(index)) {
        element.value = both_values(index, "First %s, now %s");
    } else if (!is_hidden(index)) {
        element.value = cell_reading(index, cell_value(index));
    }
    element.isReadOnly = cell_is_read_only(index);
    element.isInvalid = is_open(index);
    element.isFocused = index == m_current && Holds(GetFocus());
    element.rect = GetItemRect(index);
    return element;
}
