#include "responselists/ColumnListCtl.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/graphics/DCScope.h"

namespace {

constexpr COLORREF cCurrentCell = RGB(255, 255, 192);
constexpr int cBarWidth = 3;
constexpr int cWheelNotch = 120;

}  // namespace

IMPLEMENT_DYNAMIC(ColumnListCtl, CWnd)

BOOL ColumnListCtl::Create(const RECT& rect, UINT id, CWnd* parent) {
    m_id = static_cast<int>(id);
    return CWnd::Create(nullptr, "",
                        WS_CHILD | WS_VISIBLE | WS_BORDER | WS_GROUP | WS_TABSTOP | WS_HSCROLL,
                        rect, parent, id);
}

BOOL ColumnListCtl::SubclassDlgItem(UINT id, CWnd* parent) {
    if (CWnd::SubclassDlgItem(id, parent) == 0) return 0;
    m_id = static_cast<int>(id);
    ModifyStyle(0, WS_HSCROLL);
    RecalcLayout();
    Invalidate();
    return 1;
}

int ColumnListCtl::OnCreate(CREATESTRUCT* create) {
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
    const int was = IsReadOnly();
    m_isReadOnly = readOnly != 0;
    Invalidate();
    return was;
}

// Layout.

void ColumnListCtl::set_count(int count) {
    m_count = count;
    m_current = count > 0 ? 0 : -1;
    m_firstColumn = 0;
    RecalcLayout();
    Invalidate();
    NotifyAccessible(tessalink::AccessibleEvent::ChildrenChanged);
}

void ColumnListCtl::RecalcLayout() {
    if (GetSafeHwnd() == nullptr) return;
    CRect client;
    GetClientRect(&client);
    CClientDC dc(this);
    m_halfWidth = (dc.GetTextExtent("m", 1).cx + 1) >> 1;
    measure_cells(dc);
    m_cellWidth = std::max(m_cellWidth, 1);
    m_rowHeight = std::max(m_rowHeight, 1);
    m_rows = std::max(client.Height() / m_rowHeight, 1);
    m_columns = (m_count + m_rows - 1) / m_rows;
    m_visibleColumns = client.Width() / m_cellWidth;
    m_firstColumn = std::clamp(m_firstColumn, 0, last_first_column());
    SCROLLINFO info;
    info.fMask = SIF_ALL;
    info.nMax = m_columns;
    info.nPage = static_cast<UINT>(std::max(m_visibleColumns, 1));
    info.nPos = m_firstColumn;
    SetScrollInfo(SB_HORZ, &info);
    cells_moved();
}

int ColumnListCtl::last_first_column() const {
    return std::max(m_columns - std::max(m_visibleColumns, 1), 0);
}

CRect ColumnListCtl::GetItemRect(int index) const {
    if (index < 0 || index >= m_count) return {};
    return CRect(
        CPoint((index / m_rows - m_firstColumn) * m_cellWidth, index % m_rows * m_rowHeight),
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
    const tessalink::WindowGuard alive(*this);
    notify(LIST_CURRENT_CHANGED, index, 0);
    if (alive) NotifyAccessible(tessalink::AccessibleEvent::Focus, m_current);
}

void ColumnListCtl::repaint_cell(int index) {
    const CRect rect = GetItemRect(index);
    if (!rect.IsRectEmpty()) InvalidateRect(rect);
}

void ColumnListCtl::scroll_into_view(int index) {
    if (index < 0) return;
    const int column = index / m_rows;
    const int visible = std::max(m_visibleColumns, 1);
    if (column < m_firstColumn) {
        scroll_to(column);
    } else if (column >= m_firstColumn + visible) {
        scroll_to(column - visible + 1);
    }
}

void ColumnListCtl::scroll_to(int column) {
    column = std::clamp(column, 0, last_first_column());
    if (column == m_firstColumn) return;
    const int dx = (m_firstColumn - column) * m_cellWidth;
    m_firstColumn = column;
    SetScrollPos(SB_HORZ, column);
    ScrollWindow(dx, 0);
    cells_moved();
}

void ColumnListCtl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    const std::int64_t page = std::int64_t{m_rows} * std::max(m_visibleColumns, 1);
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
    const tessalink::WindowGuard alive(*this);
    set_curr_cell(static_cast<int>(std::clamp<std::int64_t>(target(), 0, m_count - 1)));
    if (alive) scroll_into_view(m_current);
}

void ColumnListCtl::OnHScroll(UINT code, UINT position, CWnd* bar) {
    if (bar != nullptr) {
        CWnd::OnHScroll(code, position, bar);
        return;
    }
    const int page = std::max(m_visibleColumns, 1);
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
    LISTCTL_NOTIFICATION notification;
    notification.hdr = {GetSafeHwnd(), static_cast<UINT_PTR>(m_id), code};
    notification.itemIndex = index;
    notification.value = value;
    return parent->SendMessage(WM_NOTIFY, static_cast<WPARAM>(m_id),
                               reinterpret_cast<LPARAM>(&notification));
}

void ColumnListCtl::notify_focus(int code, int index) {
    notify(code, index, 0);
}

// Painting.

BOOL ColumnListCtl::OnEraseBkgnd(CDC*) {
    return 1;  // painting covers everything
}

void ColumnListCtl::OnPaint() {
    CPaintDC dc(this);
    CRect area;
    dc.GetClipBox(&area);
    dc.FillSolidRect(&area, GetSysColor(COLOR_WINDOW));
    const int firstRow = std::max(area.top, 0) / m_rowHeight;
    const int endRow = std::min(m_rows, (area.bottom + m_rowHeight - 1) / m_rowHeight);
    const int firstColumn = std::max(area.left, 0) / m_cellWidth + m_firstColumn;
    const int endColumn =
        std::min(m_columns, (area.right + m_cellWidth - 1) / m_cellWidth + m_firstColumn);
    for (int column = firstColumn; column < endColumn; ++column) {
        for (int row = firstRow; row < endRow; ++row) {
            const int index = column * m_rows + row;
            if (index < m_count) draw_cell(dc, index, GetItemRect(index));
        }
    }
}

COLORREF ColumnListCtl::cell_background(bool isCurrent) const {
    return isCurrent ? cCurrentCell : GetSysColor(COLOR_WINDOW);
}

COLORREF ColumnListCtl::cell_text(bool isCurrent) const {
    if (isCurrent) return cBlack;
    return GetSysColor(m_isReadOnly ? COLOR_GRAYTEXT : COLOR_WINDOWTEXT);
}

void ColumnListCtl::draw_background(CDC& dc, const CRect& rect, bool isCurrent) const {
    dc.FillSolidRect(&rect, cell_background(isCurrent));
    if (!isCurrent) return;
    CBrush frame(cBlack);
    dc.FrameRect(&rect, &frame);
    const CRect bar(rect.left, rect.top, rect.left + cBarWidth, rect.bottom);
    dc.FillRect(&bar, &frame);
}

tessalink::AccessibleElement ColumnListCtl::Accessible() const {
    tessalink::AccessibleElement element = CWnd::Accessible();
    element.role = tessalink::AccessibleRole::List;
    element.isReadOnly = m_isReadOnly;
    return element;
}
