// The style, the state and the place of windows.
#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/windows/detail/WindowCore.h"
#include "platform/windows/detail/WindowState.h"

using tessalink::NativeWindow;
using tessalink::WindowCore;
using tessalink::WindowGuard;

CRect WindowCore::Client() const {
    CRect client(CPoint(), rect.Size());
    if (HasStyle(WS_BORDER)) {
        client.DeflateRect(tessalink::GetSystemMetrics(SM_CXBORDER),
                           tessalink::GetSystemMetrics(SM_CYBORDER));
    }
    if (ShowsBar(SB_VERT)) client.right -= tessalink::GetSystemMetrics(SM_CXVSCROLL);
    if (ShowsBar(SB_HORZ)) client.bottom -= tessalink::GetSystemMetrics(SM_CYHSCROLL);
    client.right = std::max(client.right, client.left);
    client.bottom = std::max(client.bottom, client.top);
    return client;
}

DWORD CWnd::GetStyle() const {
    return m_core ? m_core->style : 0;
}

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add) {
    if (!m_core) return 0;
    const DWORD before = std::exchange(m_core->style, (m_core->style & ~remove) | add);
    if (before == m_core->style) return 0;
    tessalink::clientMayHaveChanged(*this);
    return 1;
}

BOOL CWnd::ShowWindow(int command) {
    if (!m_core) return 0;
    const bool show = command != SW_HIDE;
    const BOOL was = m_core->HasStyle(WS_VISIBLE);
    if (show == (was != 0)) return was;
    const WindowGuard alive(*this);
    if (!show) tessalink::leaveFocus(*this);
    if (!alive || !m_core) return was;
    m_core->style = show ? m_core->style | WS_VISIBLE : m_core->style & ~WS_VISIBLE;
    SendMessage(WM_SHOWWINDOW, show ? 1 : 0);
    if (!alive || !m_core) return was;
    if (show) Invalidate(1);
    m_core->native->Show(show);
    return was;
}

BOOL CWnd::IsWindowVisible() const {
    for (const CWnd* window = this; window != nullptr; window = window->GetParent()) {
        if (!window->m_core || !window->m_core->HasStyle(WS_VISIBLE)) return 0;
    }
    return 1;
}

BOOL CWnd::EnableWindow(BOOL enable) {
    if (!m_core) return 0;
    const BOOL was = m_core->HasStyle(WS_DISABLED);
    if ((enable == 0) == (was != 0)) return was;
    const WindowGuard alive(*this);
    if (enable == 0) tessalink::leaveFocus(*this);
    if (!alive || !m_core) return was;
    m_core->style = enable != 0 ? m_core->style & ~WS_DISABLED : m_core->style | WS_DISABLED;
    m_core->native->Enable(enable != 0);
    SendMessage(WM_ENABLE, enable != 0 ? 1 : 0);
    return was;
}

BOOL CWnd::IsWindowEnabled() const {
    return m_core && !m_core->HasStyle(WS_DISABLED);
}

bool CWnd::TakesInput() const {
    const CWnd* window = this;
    while (window != nullptr && window->IsWindowEnabled() != 0) window = window->GetParent();
    return window == nullptr;
}

void CWnd::MoveWindow(const RECT& rect, BOOL repaint) {
    if (!m_core || (m_core->rect == rect && !m_core->isLost)) return;
    m_core->rect = CRect(rect);
    m_core->native->Move(m_core->rect);
    if (repaint != 0) Invalidate(1);
    tessalink::clientMayHaveChanged(*this);
}

const CWnd CWnd::wndTop;
const CWnd CWnd::wndBottom;
const CWnd CWnd::wndTopMost;
const CWnd CWnd::wndNoTopMost;

BOOL CWnd::place_after(const CWnd* sibling) {
    const CWnd* const fronts[] = {nullptr, &wndTop, &wndTopMost, &wndNoTopMost};
    const bool isFront =
        std::find(std::begin(fronts), std::end(fronts), sibling) != std::end(fronts);
    if (m_core->parent == nullptr) {
        if (isFront) m_core->native->Raise();
        return 1;
    }
    std::vector<CWnd*> order = m_core->parent->m_core->children;
    std::erase(order, this);
    auto place = order.begin();
    if (sibling == &wndBottom) {
        place = order.end();
    } else if (!isFront) {
        place = std::find(order.begin(), order.end(), sibling);
        if (place == order.end()) return 0;
        ++place;
    }
    NativeWindow* const before = place != order.begin() ? (*std::prev(place))->native() : nullptr;
    order.insert(place, this);
    m_core->parent->m_core->children = std::move(order);
    m_core->native->PlaceAfter(before);
    return 1;
}

BOOL CWnd::SetWindowPos(const CWnd* insertAfter, int x, int y, int cx, int cy, UINT flags) {
    if (!m_core) return 0;
    if ((flags & SWP_NOZORDER) == 0 && place_after(insertAfter) == 0) return 0;
    const CRect& rect = m_core->rect;
    const CPoint corner = (flags & SWP_NOMOVE) == 0 ? CPoint(x, y) : rect.TopLeft();
    const CSize size = (flags & SWP_NOSIZE) == 0 ? CSize(cx, cy) : rect.Size();
    const WindowGuard alive(*this);
    MoveWindow(CRect(corner, size), (flags & SWP_NOREDRAW) == 0);
    if (alive && (flags & SWP_SHOWWINDOW) != 0) ShowWindow(SW_SHOW);
    if (alive && (flags & SWP_HIDEWINDOW) != 0) ShowWindow(SW_HIDE);
    return 1;
}

void CWnd::BringWindowToTop() {
    if (m_core) m_core->native->Raise();
}

void CWnd::GetClientRect(RECT* rect) const {
    *rect = m_core ? CRect(CPoint(), m_core->Client().Size()) : CRect();
}

void CWnd::GetWindowRect(RECT* rect) const {
    CRect result;
    if (m_core) {
        const CRect client = m_core->Client();
        result = CRect(CPoint(), m_core->rect.Size());
        result.OffsetRect(-client.left, -client.top);
        result.OffsetRect(m_core->native->ClientOrigin());
    }
    *rect = result;
}

void CWnd::ClientToScreen(POINT* point) const {
    if (!m_core) return;
    const CPoint origin = m_core->native->ClientOrigin();
    point->x += origin.x;
    point->y += origin.y;
}

void CWnd::ScreenToClient(POINT* point) const {
    if (!m_core) return;
    const CPoint origin = m_core->native->ClientOrigin();
    point->x -= origin.x;
    point->y -= origin.y;
}
