#include <algorithm>
#include <cstdlib>

#include "dataentry/DataEntryCtl.h"
#include "dataentry/detail/RaisedCounter.h"
#include "platform/windows/detail/InputCodes.h"

using tessalink::cWheelNotch;

// How a form is laid out and scrolled.

using tessalink::RaisedCounter;

namespace {

constexpr int cDefaultWheelLines = 3;
/// A scroll bar that comes or goes changes the size of the form and so the layout, which may want
/// the other bar. After so many layouts inside each other no bar that shows is taken away.
constexpr int cMaxLayouts = 4;

}  // namespace

struct DataEntryCtl::Axis {
    int bar;
    DWORD style;
    UINT message;
    LONG POINT::*position;
    LONG SIZE::*size;
    int (DataEntryLayoutMgr::*scrolls)() const;
    int (DataEntryLayoutMgr::*itemAfterScroll)(DataEntryCtl*, int, int);

    static const Axis cHorizontal;
    static const Axis cVertical;
};

const DataEntryCtl::Axis DataEntryCtl::Axis::cHorizontal = {
    SB_HORZ,
    WS_HSCROLL,
    WM_HSCROLL,
    &POINT::x,
    &SIZE::cx,
    &DataEntryLayoutMgr::HorizontalScrolling,
    &DataEntryLayoutMgr::GetItemAfterHorzScroll};
const DataEntryCtl::Axis DataEntryCtl::Axis::cVertical = {
    SB_VERT,
    WS_VSCROLL,
    WM_VSCROLL,
    &POINT::y,
    &SIZE::cy,
    &DataEntryLayoutMgr::VerticalScrolling,
    &DataEntryLayoutMgr::GetItemAfterVertScroll};

// Layout and scroll bars.

void DataEntryCtl::RecalcLayout() {
    if (GetSafeHwnd() == nullptr || !m_layoutMgr) return;
    const RaisedCounter layouts(*this, m_layouts);
    CRect client;
    GetClientRect(&client);
    m_client = client.Size();
    m_extent = CSize();
    CClientDC dc(this);
    m_layoutMgr->RecalcLayout(this, &dc, client);
    set_scroll_bars();
    // Of layouts inside each other only the outermost scrolls: it is the last to end.
    if (m_layouts > 1) return;
    const auto inRange = [](int position, int extent, int size) {
        return std::clamp(position, 0, std::max(extent - size, 0));
    };
    scroll_to(CPoint(inRange(m_scroll.x, m_extent.cx, m_client.cx),
                     inRange(m_scroll.y, m_extent.cy, m_client.cy)));
    if (m_client != client.Size()) scroll_curr_into_view();
    move_attached();
}

void DataEntryCtl::set_scroll_bars() {
    for (const Axis* axis : {&Axis::cHorizontal, &Axis::cVertical}) {
        const bool scrolls = (m_layoutMgr.get()->*axis->scrolls)() != 0;
        if (scrolls) ModifyStyle(0, axis->style);
        SCROLLINFO before{};
        if (GetScrollInfo(axis->bar, &before) == 0) continue;
        const int page = m_client.*axis->size;
        const bool isShown = before.nMax > static_cast<int>(before.nPage);
        const int least = m_layouts > cMaxLayouts && isShown ? page + 1 : 0;
        SCROLLINFO info{};
        info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
        info.nMin = 0;
        info.nMax = scrolls ? std::max<int>(m_extent.*axis->size, least) : 0;
        info.nPage = static_cast<UINT>(page);
        info.nPos = m_scroll.*axis->position;
        SetScrollInfo(axis->bar, &info);
    }
}

void DataEntryCtl::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    if (width == m_client.cx && height == m_client.cy) return;
    RecalcLayout();
    if (m_layouts == 0) scroll_curr_into_view();
    Invalidate(1);
}

void DataEntryCtl::scroll_curr_into_view() {
    if (m_current < 0) return;
    const CRect place = GetItemLoc(m_current);
    const auto least = [](int position, int start, int end, int size) {
        if (start < position || end - start > size) return start;
        return end > position + size ? end - size : position;
    };
    scroll_to(CPoint(least(m_scroll.x, place.left, place.right, m_client.cx),
                     least(m_scroll.y, place.top, place.bottom, m_client.cy)));
}

void DataEntryCtl::scroll_to(CPoint position) {
    const int dx = m_scroll.x - position.x;
    const int dy = m_scroll.y - position.y;
    if (dx == 0 && dy == 0) return;
    m_scroll = position;
    if (dx != 0) SetScrollPos(SB_HORZ, position.x);
    if (dy != 0) SetScrollPos(SB_VERT, position.y);
    ScrollWindow(dx, dy);
    move_attached();
}

void DataEntryCtl::move_attached() {
    if (!m_isAttached || m_current < 0) return;
    GetItemUI(m_current)->FollowItem(window_rect(m_current));
}

int DataEntryCtl::page(UINT key) {
    for (const Axis* axis : {&Axis::cVertical, &Axis::cHorizontal}) {
        const bool scrolls = (m_layoutMgr.get()->*axis->scrolls)() != 0;
        if (!scrolls || m_extent.*axis->size < m_client.*axis->size) continue;
        PostMessage(axis->message, key == VK_PRIOR ? SB_PAGEUP : SB_PAGEDOWN, 0);
        return 1;
    }
    return 0;
}

BOOL DataEntryCtl::OnMouseWheel(UINT, short delta, CPoint point) {
    if (!m_layoutMgr) return 0;
    const bool horizontal = m_layoutMgr->HorizontalScrolling() != 0;
    const bool vertical = m_layoutMgr->VerticalScrolling() != 0;
    if (!horizontal && !vertical) return 0;
    int lines = 0;
    if (tessalink::SystemParametersInfo(SPI_GETWHEELSCROLLLINES, 0, &lines, 0) == 0 || lines == 0) {
        lines = cDefaultWheelLines;
    }
    CRect window;
    GetWindowRect(&window);
    const bool overBar = horizontal && m_extent.cx > m_client.cx &&
                         point.y >= window.bottom - tessalink::GetSystemMetrics(SM_CYHSCROLL) &&
                         point.y < window.bottom;
    const UINT message = vertical && !overBar ? WM_VSCROLL : WM_HSCROLL;
    const int count = std::abs(static_cast<int>(delta)) * lines / cWheelNotch;
    for (int i = 0; i < count; ++i) {
        PostMessage(message, delta < 0 ? SB_LINEDOWN : SB_LINEUP, 0);
    }
    return 1;
}

// Scrolling.

int DataEntryCtl::new_position(const Axis& axis, UINT code, UINT thumb) const {
    const int position = m_scroll.*axis.position;
    const int size = m_client.*axis.size;
    const int end = m_extent.*axis.size - size;
    const auto back = [&](int step) { return position == 0 ? 0 : std::max(position - step, 0); };
    const auto on = [&](int step) {
        return position >= end ? position : std::min(position + step, end);
    };
    switch (code) {
        case SB_LINEUP:
            return back(size >> 2);
        case SB_LINEDOWN:
            return on(size >> 2);
        case SB_PAGEUP:
            return back(size);
        case SB_PAGEDOWN:
            return on(size);
        case SB_THUMBPOSITION:
            return std::clamp(static_cast<int>(thumb), 0, std::max(end, 0));
        case SB_TOP:
            return 0;
        case SB_BOTTOM:
            return std::max(end, 0);
        default:
            return position;
    }
}

void DataEntryCtl::scroll(const Axis& axis, UINT code, UINT thumb) {
    const tessalink::WindowGuard alive(*this);
    if (m_current >= 0 && (!m_isAttached || !m_hasFocus)) set_focus(true);
    if (!alive) return;
    const int before = m_scroll.*axis.position;
    const int now = new_position(axis, code, thumb);
    if (now == before) return;
    CPoint position = m_scroll;
    position.*axis.position = now;
    scroll_to(position);
    choose_visible_item(axis, now > before);
}

void DataEntryCtl::choose_visible_item(const Axis& axis, bool forward) {
    if (m_current < 0 || !m_layoutMgr) return;
    const int index = (m_layoutMgr.get()->*axis.itemAfterScroll)(this, m_current, forward ? 1 : 0);
    if (index < 0 || index == m_current || !commit()) return;
    const tessalink::WindowGuard alive(*this);
    {
        const RaisedCounter busy(*this, m_busy);
        set_curr_item(index);
    }
    if (alive) set_focus(true);
}

void DataEntryCtl::OnVScroll(UINT code, UINT position, CWnd* bar) {
    if (bar != nullptr) {
        CWnd::OnVScroll(code, position, bar);
    } else {
        scroll(Axis::cVertical, code, position);
    }
}

void DataEntryCtl::OnHScroll(UINT code, UINT position, CWnd* bar) {
    if (bar != nullptr) {
        CWnd::OnHScroll(code, position, bar);
    } else {
        scroll(Axis::cHorizontal, code, position);
    }
}
