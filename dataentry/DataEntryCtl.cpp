#include "dataentry/DataEntryCtl.h"

#include <algorithm>
#include <new>
#include <utility>

#include "dataentry/detail/NeighbourIndex.h"
#include "platform/base/CInvalidArgException.h"

namespace {

/// An item keeps the low bits of its index only.
constexpr int cIndexStep = 0x10000;

}  // namespace

IMPLEMENT_DYNAMIC(DataEntryCtl, CWnd)

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

int DataEntryCtl::OnCreate(CREATESTRUCTA* create) {
    if (!m_layoutMgr || CWnd::OnCreate(create) != 0) return -1;
    m_id = GetDlgCtrlID();
    RecalcLayout();
    return 0;
}

void DataEntryCtl::OnDestroy() {
    m_hasFocus = false;
    m_isAttached = false;
    // What is still being typed was refused when the focus left; nobody is asked about it again.
    for (const auto& itemUI : m_interfaces) itemUI->Detach(0);
    CWnd::OnDestroy();
}

int DataEntryCtl::AddItem(DataEntryItem* item, DataEntryItemUI* itemUI) {
    std::unique_ptr<DataEntryItem> ownedItem(item);
    const auto known = std::find_if(m_interfaces.begin(), m_interfaces.end(),
                                    [itemUI](const auto& ui) { return ui.get() == itemUI; });
    const auto uiIndex = static_cast<int>(known - m_interfaces.begin());
    std::unique_ptr<DataEntryItemUI> ownedUi(known == m_interfaces.end() ? itemUI : nullptr);
    if (item == nullptr || itemUI == nullptr) return 0;
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
    const int itemUI = GetItem(index)->GetInterfaceIdx();
    if (itemUI >= static_cast<int>(m_interfaces.size())) AfxThrowInvalidArgException();
    return m_interfaces[static_cast<std::size_t>(itemUI)].get();
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

CSize DataEntryCtl::GetFullSize() const {
    const DWORD style = GetStyle();
    const auto room = [style](DWORD part, int metric) {
        return (style & part) != 0 ? tessalink::GetSystemMetrics(metric) : 0;
    };
    // A bar that shows stays until there is room beside it.
    return {m_extent.cx + 2 * room(WS_BORDER, SM_CXBORDER) + room(WS_VSCROLL, SM_CXVSCROLL),
            m_extent.cy + 2 * room(WS_BORDER, SM_CYBORDER) + room(WS_HSCROLL, SM_CYHSCROLL)};
}

int DataEntryCtl::ClosestItem(int index, tessalink::Side side, bool isFarther) const {
    checked(index);
    return m_neighbours->Closest(m_places, index, side, isFarther);
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

// What the parent is told.

LRESULT DataEntryCtl::notify(int code, int index, const DataEntryItem* item) {
    CWnd* parent = GetParent();
    if (parent == nullptr) return 0;
    DATAENTRYCTL_NOTIFICATION notification{};
    notification.hdr.hwndFrom = GetSafeHwnd();
    notification.hdr.idFrom = static_cast<UINT_PTR>(m_id);
    notification.hdr.code = code;
    notification.itemIndex = index;
    notification.item = const_cast<DataEntryItem*>(item);
    return parent->SendMessage(WM_NOTIFY, static_cast<WPARAM>(m_id),
                               reinterpret_cast<LPARAM>(&notification));
}

int DataEntryCtl::OnDataChanging(const DataEntryItem* item) {
    const tessalink::WindowGuard alive(*this);
    const bool was = std::exchange(m_isAsking, true);
    const LRESULT refused = notify(DATAENTRY_CHANGING, IndexOf(item), item);
    if (alive) m_isAsking = was;
    return refused == 0 ? 1 : 0;
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

void DataEntryCtl::OnContextMenu(CWnd* window, CPoint point) {
    CPoint client = point;
    ScreenToClient(&client);
    const int index = item_at(CPoint(client.x + m_scroll.x, client.y + m_scroll.y));
    if (index < 0 || GetItemUI(index)->OnContextMenu() == 0) CWnd::OnContextMenu(window, point);
}
