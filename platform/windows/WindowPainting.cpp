// What windows paint, and their scroll bars.
#include <algorithm>
#include <utility>

#include "platform/windows/detail/WindowCore.h"
#include "platform/windows/detail/WindowState.h"

using tessalink::Region;
using tessalink::WindowCore;

void CWnd::Invalidate(BOOL erase) {
    InvalidateRect(nullptr, erase);
}

void CWnd::InvalidateRect(const RECT* rect, BOOL erase) {
    if (!native()) return;
    CRect client;
    GetClientRect(&client);
    CRect area = client;
    if (rect != nullptr && !area.IntersectRect(rect, &client)) return;
    if (area.IsRectEmpty()) return;
    m_core->update = m_core->update.Or(Region(area));
    m_core->isUpdateErased = m_core->isUpdateErased || erase != 0;
    m_core->native->RequestPaint(area);
}

void CWnd::ValidateRect(const RECT* rect) {
    if (!m_core) return;
    m_core->update = rect != nullptr ? m_core->update.Minus(Region(*rect)) : Region();
}

BOOL CWnd::GetUpdateRect(RECT* rect) const {
    const CRect bounds = m_core ? m_core->update.Bounds() : CRect();
    if (rect != nullptr) *rect = bounds;
    return bounds.IsRectEmpty() ? 0 : 1;
}

void CWnd::UpdateWindow() {
    if (m_core && !m_core->update.IsEmpty() && IsWindowVisible() != 0) m_core->native->PaintNow();
}

void CWnd::ScrollWindow(int dx, int dy) {
    if (!m_core || (dx == 0 && dy == 0)) return;
    CRect client;
    GetClientRect(&client);
    m_core->update.Offset(dx, dy);
    m_core->update = m_core->update.And(Region(client));
    m_core->native->Scroll(dx, dy);
    CRect kept = client;
    kept.OffsetRect(dx, dy);
    const Region shown = Region(client).Minus(Region(kept));
    for (const RECT& rect : shown.Rects()) InvalidateRect(&rect);
}

// Scroll bars.

int CWnd::SetScrollInfo(int bar, const SCROLLINFO* info, BOOL) {
    if (!m_core || bar < SB_HORZ || bar > SB_VERT) return 0;
    SCROLLINFO& own = m_core->scroll[static_cast<std::size_t>(bar)];
    if ((info->fMask & SIF_RANGE) != 0) {
        own.nMin = info->nMin;
        own.nMax = std::max(info->nMax, info->nMin);
    }
    if ((info->fMask & SIF_PAGE) != 0) own.nPage = info->nPage;
    if ((info->fMask & SIF_POS) != 0) own.nPos = info->nPos;
    const std::int64_t last = std::int64_t{own.nMax} - (own.nPage > 0 ? own.nPage - 1 : 0);
    own.nPos = static_cast<int>(
        std::clamp<std::int64_t>(own.nPos, own.nMin, std::max<std::int64_t>(own.nMin, last)));
    const int position = own.nPos;
    m_core->native->SetScrollBar(bar, m_core->ShowsBar(bar), own);
    tessalink::clientMayHaveChanged(*this);
    return position;
}

BOOL CWnd::GetScrollInfo(int bar, SCROLLINFO* info) const {
    if (!m_core || bar < SB_HORZ || bar > SB_VERT) return 0;
    *info = m_core->scroll[static_cast<std::size_t>(bar)];
    info->fMask = SIF_ALL;
    return 1;
}

int CWnd::SetScrollPos(int bar, int position, BOOL redraw) {
    const int before = GetScrollPos(bar);
    SCROLLINFO info{};
    info.fMask = SIF_POS;
    info.nPos = position;
    SetScrollInfo(bar, &info, redraw);
    return before;
}

int CWnd::GetScrollPos(int bar) const {
    SCROLLINFO info{};
    return GetScrollInfo(bar, &info) != 0 ? info.nPos : 0;
}

void CWnd::SetScrollRange(int bar, int min, int max, BOOL redraw) {
    SCROLLINFO info{};
    info.fMask = SIF_RANGE;
    info.nMin = min;
    info.nMax = max;
    SetScrollInfo(bar, &info, redraw);
}

void CWnd::GetScrollRange(int bar, int* min, int* max) const {
    SCROLLINFO info{};
    GetScrollInfo(bar, &info);
    *min = info.nMin;
    *max = info.nMax;
}

// Device contexts.

CPaintDC::CPaintDC(CWnd* window) {
    WindowCore* core = WindowCore::Of(*window);
    if (core == nullptr) return;
    const Region area = std::exchange(core->update, Region());
    const bool erases = std::exchange(core->isUpdateErased, false);
    core->isPaintTaken = true;
    if (core->paintDevice == nullptr) return;
    AttachDevice(core->paintDevice);
    SetViewportOrg(core->paintOrigin);
    CRgn clip;
    clip.Assign(area);
    clip.OffsetRgn(core->paintOrigin.x, core->paintOrigin.y);
    SelectClipRgn(&clip);
    if (erases)
        window->SendMessage(WM_ERASEBKGND, 0, reinterpret_cast<LPARAM>(static_cast<CDC*>(this)));
}

CClientDC::CClientDC(CWnd*) {
    AttachDevice(&tessalink::windowSystem().Screen());
}
