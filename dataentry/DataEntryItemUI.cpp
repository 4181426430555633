#include "dataentry/DataEntryItemUI.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "dataentry/DataEntryCtl.h"
#include "platform/graphics/DCScope.h"
#include "platform/windows/WindowSystem.h"

IMPLEMENT_DYNAMIC(DataEntryItemUI, CWnd)

BOOL DataEntryItemUI::Create(const RECT& rect, UINT id, CWnd* parent) {
    return CWnd::Create(nullptr, "", WS_CHILD | WS_GROUP | WS_TABSTOP, rect, parent, id);
}

bool DataEntryItemUI::make_window() {
    return GetSafeHwnd() != nullptr || Create(CRect(), static_cast<UINT>(-1), m_container) != 0;
}

BOOL DataEntryItemUI::Attach(DataEntryItem* item, const CRect& rect, int focused) {
    if (!make_window()) return 0;
    if (m_item != nullptr && m_item != item) Detach(0);
    m_item = item;
    m_itemRect = rect;
    m_focused = focused != 0;
    MoveWindow(rect, 0);
    if (IsWindowVisible() != 0) {
        Invalidate(1);
    } else {
        ShowWindow(SW_SHOW);
    }
    UpdateWindow();
    return 1;
}

void DataEntryItemUI::Detach(int repaint) {
    if (m_item == nullptr) return;
    if (m_focused && repaint != 0) {
        Invalidate(1);
        UpdateWindow();
    }
    m_focused = false;
    m_item = nullptr;
    m_itemRect = CRect();
    ShowWindow(SW_HIDE);
}

void DataEntryItemUI::FollowItem(const CRect& rect) {
    if (m_item == nullptr) return;
    m_itemRect = rect;
    MoveWindow(rect);
}

int DataEntryItemUI::OnContextMenu() {
    return 0;
}

void DataEntryItemUI::Paint(DataEntryItem* item, const CRect& rect, int focused) {
    if (item == nullptr || m_container == nullptr) return;
    if (CDC* dc = m_container->PaintDC()) {
        const tessalink::SavedState saved(*dc);
        dc->IntersectClipRect(rect);
        const StandIn standIn(*this, *item, rect, focused != 0);
        draw_item(*dc, *item, rect, focused != 0);
    } else {
        m_container->InvalidateRect(rect);
        m_container->UpdateWindow();
    }
}

DataEntryItemUI::StandIn::StandIn(DataEntryItemUI& itemUI, DataEntryItem& item, const CRect& rect,
                                  bool focused)
    : m_interface(itemUI),
      m_item(std::exchange(itemUI.m_item, &item)),
      m_rect(std::exchange(itemUI.m_itemRect, rect)),
      m_focused(std::exchange(itemUI.m_focused, focused)) {}

DataEntryItemUI::StandIn::~StandIn() {
    m_interface.m_item = m_item;
    m_interface.m_itemRect = m_rect;
    m_interface.m_focused = m_focused;
}

void DataEntryItemUI::draw_item(CDC& dc, DataEntryItem& item, const CRect& place, bool) {
    const bool isInForm = m_container != nullptr && &dc == m_container->PaintDC();
    if (!isInForm) {
        CRect area = place;
        dc.FillSolidRect(&area, tessalink::GetSysColor(COLOR_BTNFACE));
        dc.SetTextColor(tessalink::GetSysColor(COLOR_BTNTEXT));
        dc.DrawText(item.GetLabel(), &area, DT_NOPREFIX);
    } else if (make_window()) {
        CRect area;
        dc.GetClipBox(&area);
        tessalink::paintWithin(*this, *m_container, place, area);
    }
}

void DataEntryItemUI::OnDataChanged() {
    if (m_container != nullptr) m_container->OnDataChanged(m_item);
}

void DataEntryItemUI::tell_changed(const DataEntryItem* item) {
    if (item == m_item) {
        OnDataChanged();
    } else if (m_container != nullptr) {
        m_container->OnDataChanged(item);
    }
}

int DataEntryItemUI::OnDataChanging() {
    return m_container == nullptr ? 1 : m_container->OnDataChanging(m_item);
}

bool DataEntryItemUI::OnClick(CPoint) {
    return false;
}

int DataEntryItemUI::item_index() const {
    return m_container->IndexOf(m_item);
}

int DataEntryItemUI::CountLabelLines() const {
    return m_item == nullptr ? 0 : CountLabelLines(m_item->GetLabel());
}

int DataEntryItemUI::CountLabelLines(const CString& label) {
    const std::string_view text = label.View();
    return static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
}

COLORREF DataEntryItemUI::AdjustColor(COLORREF color, int percent) {
    const double p = percent / 100.0;
    const auto channel = [p](BYTE c) {
        const int adjusted = tessalink::toInt(c * p + 255 - 255 * p);
        return static_cast<BYTE>(std::max(adjusted, 0));
    };
    return RGB(channel(GetRValue(color)), channel(GetGValue(color)), channel(GetBValue(color)));
}

void DataEntryItemUI::PaintLabel(CDC* dc, int x, int y, const CRect& rect, const CString& text,
                                 COLORREF background, int lineHeight) {
    if (text.Find('\n') < 0) {
        dc->SetBkColor(background);
        dc->ExtTextOut(x, y, ETO_CLIPPED | ETO_OPAQUE, &rect, text, nullptr);
        return;
    }
    CBrush brush(background);
    dc->FillRect(&rect, &brush);
    const int mode = dc->SetBkMode(TRANSPARENT);
    for (std::string_view rest = text.View();; y += lineHeight) {
        const std::size_t end = rest.find('\n');
        std::string_view line = rest.substr(0, end);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        dc->ExtTextOut(x, y, ETO_CLIPPED, &rect, line.data(), static_cast<UINT>(line.size()),
                       nullptr);
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    dc->SetBkMode(mode);
}

// Messages.

UINT DataEntryItemUI::OnGetDlgCode() {
    return DLGC_WANTALLKEYS;
}

void DataEntryItemUI::OnPaint() {
    CPaintDC dc(this);
    if (m_item == nullptr) return;
    CRect client;
    GetClientRect(&client);
    draw_item(dc, *m_item, client, m_focused);
}

BOOL DataEntryItemUI::OnEraseBkgnd(CDC*) {
    return 1;  // painting covers everything
}

void DataEntryItemUI::OnLButtonDown(UINT flags, CPoint point) {
    if (m_item == nullptr || m_container == nullptr) {
        CWnd::OnLButtonDown(flags, point);
        return;
    }
    const tessalink::WindowGuard alive(*this);
    const bool isDone = OnClick(point);
    if (!alive || m_item == nullptr) return;
    // A click that chooses brings the focus, too.
    if (!isDone || !m_focused) m_container->SetCurrItem(item_index());
}

void DataEntryItemUI::OnChar(UINT ch, UINT repeat, UINT flags) {
    if (m_container != nullptr && m_container->HandleChar(ch, repeat, flags) != 0) return;
    CWnd::OnChar(ch, repeat, flags);
}

void DataEntryItemUI::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    if (key == VK_TAB && m_container != nullptr) {
        m_container->HandleTab();
        return;
    }
    if (m_container != nullptr && m_container->HandleKeyDown(key, repeat, flags) != 0) return;
    CWnd::OnKeyDown(key, repeat, flags);
}

BOOL DataEntryItemUI::OnMouseWheel(UINT flags, short delta, CPoint point) {
    if (m_container != nullptr) m_container->OnMouseWheel(flags, delta, point);
    return 1;
}

void DataEntryItemUI::OnSetFocus(CWnd* old) {
    CWnd::OnSetFocus(old);
    if (IgnoreFocus() || m_focused || m_item == nullptr) return;
    m_focused = true;
    Invalidate(1);
}

void DataEntryItemUI::OnKillFocus(CWnd* next) {
    CWnd::OnKillFocus(next);
    if (m_item == nullptr || next == m_container || Holds(next)) return;
    m_focused = false;
    Invalidate(1);
    UpdateWindow();
    if (m_container != nullptr) m_container->OnKillFocus(next);
}
