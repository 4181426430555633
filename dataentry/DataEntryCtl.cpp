#include "dataentry/DataEntryCtl.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <utility>

#include "dataentry/detail/NeighbourIndex.h"
#include "platform/base/CInvalidArgException.h"

namespace {

constexpr int cWheelNotch = 120;
constexpr int cDefaultWheelLines = 3;
/// An item keeps the low bits of its index only.
constexpr int cIndexStep = 0x10000;
/// Scroll bars that come and go change the size and so the layout. After so many layouts inside
/// each other they only come.
constexpr int cMaxLayouts = 4;

}  // namespace

IMPLEMENT_DYNAMIC(DataEntryCtl, CWnd)

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

/// Counts what is under way, as long as the form is there.
class DataEntryCtl::Raised {
public:
    Raised(const DataEntryCtl& form, int& counter) : m_alive(form), m_counter(counter) {
        ++m_counter;
    }
    ~Raised() {
        if (m_alive) --m_counter;
    }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    tessalink::WindowGuard m_alive;
    int& m_counter;
};

DataEntryCtl::DataEntryCtl(DataEntryLayoutMgr* layoutMgr)
    : m_layoutMgr(layoutMgr), m_neighbours(std::make_unique<tessalink::NeighbourIndex>()) {}

DataEntryCtl::~DataEntryCtl() {
    DestroyWindow();
}

// Creation.

BOOL DataEntryCtl::Create(const RECT& rect, UINT id, CWnd* parent) {
    DWORD style = WS_CHILD | WS_VISIBLE | WS_BORDER | WS_GROUP | WS_TABSTOP;
    if (m_layoutMgr && m_layoutMgr->HorizontalScrolling() != 0) style |= WS_HSCROLL;
    if (m_layoutMgr && m_layoutMgr->VerticalScrolling() != 0) style |= WS_VSCROLL;
    return CWnd::Create(nullptr, "Items", style, rect, parent, id);
}

BOOL DataEntryCtl::SubclassDlgItem(UINT id, CWnd* parent) {
    if (!m_layoutMgr || CWnd::SubclassDlgItem(id, parent) == 0) return 0;
    set_up();
    return 1;
}

int DataEntryCtl::OnCreate(CREATESTRUCT* create) {
    if (!m_layoutMgr || CWnd::OnCreate(create) != 0) return -1;
    m_id = GetDlgCtrlID();
    RecalcLayout();
    return 0;
}

void DataEntryCtl::OnDestroy() {
    m_hasFocus = false;
    m_isAttached = false;
    // What is still being typed was refused; nobody is asked about it again.
    for (const auto& interface : m_interfaces) interface->Detach(0);
    CWnd::OnDestroy();
}

int DataEntryCtl::AddItem(DataEntryItem* item, DataEntryItemUI* interface) {
    std::unique_ptr<DataEntryItem> ownedItem(item);
    const auto known = std::find_if(m_interfaces.begin(), m_interfaces.end(),
                                    [interface](const auto& ui) { return ui.get() == interface; });
    const auto uiIndex = static_cast<int>(known - m_interfaces.begin());
    std::unique_ptr<DataEntryItemUI> ownedUi(known == m_interfaces.end() ? interface : nullptr);
    if (item == nullptr || interface == nullptr) return 0;
    try {
        m_items.reserve(m_items.size() + 1 > m_items.capacity() ? m_items.size() * 2 + 1
                                                                : m_items.capacity());
        m_interfaces.reserve(m_interfaces.size() + 1);
        m_places.emplace_back();
    } catch (const std::bad_alloc&) {
        return 0;
    }
    if (ownedUi) {
        ownedUi->SetContainer(this);
        m_interfaces.push_back(std::move(ownedUi));
    }
    item->SetInterfaceIdx(uiIndex);
    item->SetIndex(static_cast<unsigned short>(GetItemCount()));
    m_items.push_back(std::move(ownedItem));
    m_neighbours->Forget();
    const bool isFirst = std::exchange(m_current, std::max(m_current, 0)) < 0;
    set_up();
    if (isFirst && m_hasFocus) set_focus(true);
    return 1;
}

void DataEntryCtl::set_up() {
    if (GetSafeHwnd() == nullptr) return;
    RecalcLayout();
    Invalidate(1);
}

void DataEntryCtl::SetLayoutMgr(DataEntryLayoutMgr* layoutMgr) {
    if (layoutMgr != m_layoutMgr.get()) m_layoutMgr.reset(layoutMgr);
    if (m_layoutMgr) set_up();
}

// Items.

std::size_t DataEntryCtl::checked(int index) const {
    if (index < 0 || index >= GetItemCount()) AfxThrowInvalidArgException();
    return static_cast<std::size_t>(index);
}

DataEntryItemUI* DataEntryCtl::GetItemUI(int index) const {
    const int interface = GetItem(index)->GetInterfaceIdx();
    if (interface >= static_cast<int>(m_interfaces.size())) AfxThrowInvalidArgException();
    return m_interfaces[static_cast<std::size_t>(interface)].get();
}

int DataEntryCtl::IndexOf(const DataEntryItem* item) const {
    if (item == nullptr) return -1;
    for (int i = item->GetIndex(); i < GetItemCount(); i += cIndexStep) {
        if (GetItem(i) == item) return i;
    }
    return -1;
}

void DataEntryCtl::SetItemLoc(int index, const CRect& place) {
    m_places[checked(index)] = place;
    m_extent.cx = std::max(m_extent.cx, place.right);
    m_extent.cy = std::max(m_extent.cy, place.bottom);
    m_neighbours->Forget();
}

int DataEntryCtl::ClosestItem(int index, tessalink::Side side) const {
    checked(index);
    return m_neighbours->Closest(m_places, index, side);
}

CRect DataEntryCtl::window_rect(int index) const {
    CRect rect = GetItemLoc(index);
    rect.OffsetRect(-m_scroll.x, -m_scroll.y);
    return rect;
}

CRect DataEntryCtl::GetVisibleArea() const {
    return CRect(m_scroll, m_client);
}

int DataEntryCtl::ItemIsVisible(int index) const {
    const CRect rect = window_rect(index);
    return rect.left < m_client.cx && rect.right >= 1 && rect.top < m_client.cy && rect.bottom >= 1;
}

int DataEntryCtl::ItemIsFullyVisible(int index) const {
    const CRect rect = window_rect(index);
    const auto isInside = [](int start, int end, int size) {
        return start >= 0 && start < size && end >= 1 && end <= size;
    };
    return isInside(rect.left, rect.right, m_client.cx) &&
           isInside(rect.top, rect.bottom, m_client.cy);
}

int DataEntryCtl::SetReadOnly(int readOnly) {
    const tessalink::WindowGuard alive(*this);
    const int was = m_isReadOnly ? 1 : 0;
    commit();
    if (!alive) return was;
    m_isReadOnly = readOnly != 0;
    for (const auto& item : m_items) item->SetReadOnly(readOnly);
    if (m_current >= 0) value_shown_again(m_current);
    if (GetSafeHwnd() != nullptr) Invalidate(1);
    return was;
}

int DataEntryCtl::SetReadOnlyItem(int index, int readOnly) {
    DataEntryItem* item = GetItem(index);
    const tessalink::WindowGuard alive(*this);
    if (index == m_current) commit();
    if (!alive) return 0;
    const int was = item->SetReadOnly(readOnly);
    if ((was != 0) == (readOnly != 0)) return was;
    NotifyAccessible(tessalink::AccessibleEvent::StateChanged, index);
    value_shown_again(index);
    return was;
}

void DataEntryCtl::SetBkgndColor(COLORREF color) {
    m_background = color;
    if (GetSafeHwnd() != nullptr) Invalidate(1);
}

// Layout and scroll bars.

void DataEntryCtl::RecalcLayout() {
    if (GetSafeHwnd() == nullptr || !m_layoutMgr) return;
    const Raised layouts(*this, m_layouts);
    CRect client;
    GetClientRect(&client);
    m_client = client.Size();
    m_extent = CSize();
    CClientDC dc(this);
    m_layoutMgr->RecalcLayout(this, &dc, client);
    set_scroll_bars();
    // What is shown follows from the last of several layouts alone.
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
        SCROLLINFO before;
        if (GetScrollInfo(axis->bar, &before) == 0) continue;
        const int page = m_client.*axis->size;
        const bool isShown = before.nMax > static_cast<int>(before.nPage);
        const int least = m_layouts > cMaxLayouts && isShown ? page + 1 : 0;
        SCROLLINFO info;
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

// The current item.

int DataEntryCtl::commit() {
    return m_isAttached && m_current >= 0 ? GetItemUI(m_current)->Commit() : 1;
}

bool DataEntryCtl::CommitEntry() {
    return commit() != 0;
}

void DataEntryCtl::SetCurrItem(int index) {
    checked(index);
    const tessalink::WindowGuard alive(*this);
    const int before = m_current;
    if (index != m_current && commit() == 0) return;
    // The parent may have gone elsewhere while it was told of a change.
    if (!alive || m_current != before) return;
    {
        const Raised busy(*this, m_busy);
        set_curr_item(index);
        if (alive) scroll_curr_into_view();
    }
    // The parent may send the focus elsewhere when it is told, and that is no part of this.
    if (alive) set_focus(true);
}

void DataEntryCtl::set_curr_item(int index) {
    if (index == m_current) return;
    const int before = std::exchange(m_current, index);
    DataEntryItemUI* old = before >= 0 ? GetItemUI(before) : nullptr;
    if (GetSafeHwnd() == nullptr) return;
    DataEntryItemUI* now = GetItemUI(index);
    const tessalink::WindowGuard alive(*this);
    const bool wasFocused = old != nullptr && old->IsFocused();
    m_isAttached = wasFocused && now->Attach(GetItem(index), window_rect(index), 1) != 0;
    if (!alive) return;
    if (old != nullptr && (old != now || !wasFocused)) old->Detach(1);
    if (alive && before >= 0) InvalidateRect(window_rect(before));
}

void DataEntryCtl::set_focus(bool notifies) {
    if (GetSafeHwnd() == nullptr || !TakesInput()) return;
    const tessalink::WindowGuard alive(*this);
    const bool had = std::exchange(m_hasFocus, true);
    if (m_current < 0) {
        if (notifies && !had) notify(NM_SETFOCUS, m_current, nullptr);
        return;
    }
    DataEntryItemUI* interface = GetItemUI(m_current);
    // What is being typed is not disturbed.
    const bool isThere = m_isAttached && interface->IsFocused() &&
                         interface->GetCurrItem() == GetItem(m_current) &&
                         interface->Holds(GetFocus());
    if (!isThere) {
        const Raised busy(*this, m_busy);
        m_isAttached = interface->Attach(GetItem(m_current), window_rect(m_current), 1) != 0;
        if (m_isAttached) interface->SetFocus();
        if (!alive) return;
    }
    if (notifies) notify(had ? DATAENTRY_MOVED : NM_SETFOCUS, m_current, nullptr);
    if (alive && m_current >= 0) {
        NotifyAccessible(tessalink::AccessibleEvent::Focus, m_current);
    }
}

void DataEntryCtl::do_navigate(int target) {
    int code = 0;
    const int last = GetItemCount() - 1;
    if (target < 0) {
        code = DATAENTRY_BEFORE_FIRST;
    } else if (target > last) {
        code = DATAENTRY_PAST_LAST;
    }
    target = std::clamp(target, 0, last);
    const tessalink::WindowGuard alive(*this);
    if (target != m_current) SetCurrItem(target);
    if (alive && code != 0) notify(code, m_current, GetItem(m_current));
}

int DataEntryCtl::AdvanceToNext() {
    if (!m_autoAdvance || m_current < 0) return 0;
    for (int i = m_current + 1; i < GetItemCount(); ++i) {
        if (GetItem(i)->IsReadOnly() != 0) continue;
        SetCurrItem(i);
        return 1;
    }
    notify(DATAENTRY_PAST_LAST, m_current, GetItem(m_current));
    return 0;
}

int DataEntryCtl::HandleChar(UINT ch, UINT repeat, UINT flags) {
    if (m_items.empty() || !m_layoutMgr) return 0;
    int target = m_current;
    if (m_layoutMgr->NavigateOnChar(this, ch, repeat, flags, target) == 0) return 0;
    do_navigate(target);
    return 1;
}

int DataEntryCtl::HandleKeyDown(UINT key, UINT repeat, UINT flags) {
    if (m_items.empty() || !m_layoutMgr) return 0;
    int target = m_current;
    if (m_layoutMgr->NavigateOnKeyDown(this, key, repeat, flags, target) != 0) {
        do_navigate(target);
        return 1;
    }
    return key == VK_PRIOR || key == VK_NEXT ? page(key) : 0;
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

// What the parent is told.

LRESULT DataEntryCtl::notify(int code, int index, const DataEntryItem* item) {
    CWnd* parent = GetParent();
    if (parent == nullptr) return 0;
    DATAENTRYCTL_NOTIFICATION notification;
    notification.hdr.hwndFrom = GetSafeHwnd();
    notification.hdr.idFrom = static_cast<UINT_PTR>(m_id);
    notification.hdr.code = code;
    notification.itemIndex = index;
    notification.item = const_cast<DataEntryItem*>(item);
    return parent->SendMessage(WM_NOTIFY, static_cast<WPARAM>(m_id),
                               reinterpret_cast<LPARAM>(&notification));
}

int DataEntryCtl::OnDataChanging(const DataEntryItem* item) {
    return notify(DATAENTRY_CHANGING, IndexOf(item), item) == 0 ? 1 : 0;
}

void DataEntryCtl::OnDataChanged(const DataEntryItem* item) {
    const tessalink::WindowGuard alive(*this);
    const bool was = std::exchange(m_isReporting, true);
    const int index = IndexOf(item);
    notify(DATAENTRY_CHANGED, index, item);
    if (!alive) return;
    m_isReporting = was;
    if (index >= 0) NotifyAccessible(tessalink::AccessibleEvent::ValueChanged, index);
}

void DataEntryCtl::OnDataChanged(int index) {
    if (m_isReporting && index == m_current) return;
    checked(index);
    NotifyAccessible(tessalink::AccessibleEvent::ValueChanged, index);
    value_shown_again(index);
}

void DataEntryCtl::OnDataChanged() {
    if (GetSafeHwnd() == nullptr) return;
    if (m_isAttached && m_current >= 0 && !m_isReporting) GetItemUI(m_current)->ShowValue();
    Invalidate(1);
    UpdateWindow();
}

void DataEntryCtl::value_shown_again(int index) {
    if (GetSafeHwnd() == nullptr) return;
    if (m_isAttached && index == m_current) GetItemUI(index)->ShowValue();
    InvalidateRect(window_rect(index));
    UpdateWindow();
}

// Focus.

UINT DataEntryCtl::OnGetDlgCode() {
    return DLGC_WANTALLKEYS;
}

void DataEntryCtl::OnSetFocus(CWnd* old) {
    CWnd::OnSetFocus(old);
    if (m_busy == 0) set_focus(true);
}

void DataEntryCtl::OnKillFocus(CWnd* next) {
    CWnd::OnKillFocus(next);
    if (m_busy > 0 || !m_hasFocus || Holds(next)) return;
    m_hasFocus = false;
    notify(NM_KILLFOCUS, -1, nullptr);
}

void DataEntryCtl::LeaveForm() {
    CWnd* parent = GetParent();
    if (parent == nullptr) return;
    const tessalink::WindowGuard alive(*this);
    parent->SetFocus();
    if (!alive || GetFocus() != parent) return;
    // Where no other control waits, what is keyed next still belongs to the form.
    if (!FocusNextControl(IsKeyDown(VK_SHIFT)) && alive) SetFocus();
}

void DataEntryCtl::OnChar(UINT ch, UINT repeat, UINT flags) {
    if (HandleChar(ch, repeat, flags) == 0) CWnd::OnChar(ch, repeat, flags);
}

void DataEntryCtl::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key == VK_TAB) {
        LeaveForm();
    } else if (HandleKeyDown(key, repeat, flags) == 0) {
        CWnd::OnKeyDown(key, repeat, flags);
    }
}

// Painting.

BOOL DataEntryCtl::OnEraseBkgnd(CDC*) {
    return 1;  // painting covers everything
}

void DataEntryCtl::OnPaint() {
    CPaintDC dc(this);
    CRect area;
    dc.GetClipBox(&area);
    dc.FillSolidRect(&area, m_background);
    CDC* before = std::exchange(m_paintDC, &dc);
    CRect shown = area;
    shown.OffsetRect(m_scroll.x, m_scroll.y);
    for (const int i : m_neighbours->Touching(m_places, shown)) {
        // The current item has its interface's window over it.
        if (i == m_current && m_isAttached) continue;
        GetItemUI(i)->Paint(GetItem(i), window_rect(i), i == m_current && m_hasFocus);
    }
    m_paintDC = before;
}

// Mouse.

int DataEntryCtl::item_at(CPoint point) const {
    const std::vector<int> hits = m_neighbours->Touching(m_places, CRect(point, CSize(1, 1)));
    return hits.empty() ? -1 : hits.front();
}

void DataEntryCtl::OnLButtonDown(UINT flags, CPoint point) {
    CWnd::OnLButtonDown(flags, point);
    const int index = item_at(CPoint(point.x + m_scroll.x, point.y + m_scroll.y));
    if (index < 0) return;
    const tessalink::WindowGuard alive(*this);
    if (notify(DATAENTRY_CLICKED, index, GetItem(index)) != 0) {
        if (alive) set_focus(false);
        return;
    }
    if (!alive) return;
    const CRect before = window_rect(index);
    SetCurrItem(index);
    if (!alive || m_current != index) return;
    GetItemUI(index)->OnClick(CPoint(point.x - before.left, point.y - before.top));
}

BOOL DataEntryCtl::OnMouseWheel(UINT, short delta, CPoint point) {
    if (!m_layoutMgr) return 0;
    const bool horizontal = m_layoutMgr->HorizontalScrolling() != 0;
    const bool vertical = m_layoutMgr->VerticalScrolling() != 0;
    if (!horizontal && !vertical) return 0;
    int lines = 0;
    if (SystemParametersInfo(SPI_GETWHEELSCROLLLINES, 0, &lines, 0) == 0 || lines == 0) {
        lines = cDefaultWheelLines;
    }
    CRect window;
    GetWindowRect(&window);
    const bool overBar = horizontal && m_extent.cx > m_client.cx &&
                         point.y >= window.bottom - GetSystemMetrics(SM_CYHSCROLL) &&
                         point.y < window.bottom;
    const UINT message = vertical && !overBar ? WM_VSCROLL : WM_HSCROLL;
    const int count = std::abs(static_cast<int>(delta)) * lines / cWheelNotch;
    for (int i = 0; i < count; ++i) {
        PostMessage(message, delta < 0 ? SB_LINEDOWN : SB_LINEUP, 0);
    }
    return 1;
}

void DataEntryCtl::OnContextMenu(CWnd* window, CPoint point) {
    CPoint client = point;
    ScreenToClient(&client);
    const int index = item_at(CPoint(client.x + m_scroll.x, client.y + m_scroll.y));
    if (index < 0 || GetItemUI(index)->OnContextMenu() == 0) CWnd::OnContextMenu(window, point);
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
    if (index < 0 || index == m_current || commit() == 0) return;
    const tessalink::WindowGuard alive(*this);
    {
        const Raised busy(*this, m_busy);
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

// Accessibility.

tessalink::AccessibleElement DataEntryCtl::Accessible() const {
    tessalink::AccessibleElement element = CWnd::Accessible();
    element.role = tessalink::AccessibleRole::Form;
    return element;
}

tessalink::AccessibleElement DataEntryCtl::AccessibleChild(int index) const {
    DataEntryItem* item = GetItem(index);
    const DataEntryItemUI* interface = GetItemUI(index);
    tessalink::AccessibleElement element;
    element.role = interface->Role();
    element.name = item->GetLabel();
    element.value = interface->ValueText(item);
    element.isReadOnly = item->IsReadOnly() != 0;
    element.isRequired = item->IsRequired() != 0;
    element.isFocused = m_hasFocus && index == m_current;
    element.rect = window_rect(index);
    element.choices = interface->Choices(item, element.rect);
    if (element.isFocused) element.focusedChoice = interface->FocusedChoice();
    return element;
}

int DataEntryCtl::AccessibleChildAt(CPoint point) const {
    return item_at(CPoint(point.x + m_scroll.x, point.y + m_scroll.y));
}

void DataEntryCtl::ChooseAccessibleChoice(int index, int choice) {
    const tessalink::WindowGuard alive(*this);
    SetCurrItem(index);
    if (!alive || m_current != index) return;
    const auto choices =
        GetItemUI(index)->Choices(GetItem(index), CRect(CPoint(), GetItemSize(index)));
    if (choice < 0 || choice >= static_cast<int>(choices.size())) return;
    GetItemUI(index)->OnClick(choices[static_cast<std::size_t>(choice)].rect.CenterPoint());
}
