#include "platform/windows/CWnd.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "platform/windows/detail/WindowCore.h"
#include "platform/windows/detail/WindowState.h"

using tessalink::NativeWindow;
using tessalink::Region;
using tessalink::WindowCore;
using tessalink::WindowGuard;

namespace {

constexpr const char* cEditClass = "EDIT";

bool isEditClass(const char* className) {
    return className != nullptr && CString(className).CompareNoCase(cEditClass) == 0;
}

void removeFrom(std::vector<CWnd*>& windows, const CWnd* window) {
    windows.erase(std::remove(windows.begin(), windows.end(), window), windows.end());
}

void collectTabStops(const CWnd& window, std::vector<CWnd*>& stops) {
    for (CWnd* child : WindowCore::Of(window)->children) {
        const WindowCore& core = *WindowCore::Of(*child);
        if (!core.HasStyle(WS_VISIBLE) || core.HasStyle(WS_DISABLED)) continue;
        if (core.HasStyle(WS_TABSTOP)) {
            stops.push_back(child);
        } else {
            collectTabStops(*child, stops);
        }
    }
}

}  // namespace

IMPLEMENT_DYNAMIC(CWnd, CObject)

WindowGuard::WindowGuard(const CWnd& window) : m_token(window.m_token) {}

CWnd::CWnd() : m_token(std::make_shared<const char>('\0')) {}

CWnd::~CWnd() {
    m_token.reset();
    CWnd::DestroyWindow();
}

CRect WindowCore::Client() const {
    CRect client(CPoint(), rect.Size());
    if (HasStyle(WS_BORDER)) {
        client.DeflateRect(GetSystemMetrics(SM_CXBORDER), GetSystemMetrics(SM_CYBORDER));
    }
    if (ShowsBar(SB_VERT)) client.right -= GetSystemMetrics(SM_CXVSCROLL);
    if (ShowsBar(SB_HORZ)) client.bottom -= GetSystemMetrics(SM_CYHSCROLL);
    client.right = std::max(client.right, client.left);
    client.bottom = std::max(client.bottom, client.top);
    return client;
}

NativeWindow* CWnd::native() const {
    return m_core ? m_core->native.get() : nullptr;
}

// Creation.

BOOL CWnd::Create(const char* className, const char* name, DWORD style, const RECT& rect,
                  CWnd* parent, UINT id) {
    if (m_core || (parent != nullptr && !parent->m_core)) return 0;
    m_core = std::make_unique<WindowCore>(*this);
    m_core->parent = parent;
    m_core->id = id;
    m_core->style = style;
    m_core->rect = CRect(rect);
    m_core->text = name != nullptr ? name : "";
    m_core->clientSize = m_core->Client().Size();
    if (parent != nullptr) {
        parent->m_core->children.push_back(this);
    } else {
        tessalink::rememberRoot(*this);
    }
    tessalink::WindowSetup setup;
    setup.owner = this;
    setup.parent = parent != nullptr ? parent->native() : nullptr;
    setup.isEdit = isEditClass(className);
    setup.style = style;
    setup.rect = m_core->rect;
    setup.text = m_core->text;
    m_core->native = tessalink::windowSystem().CreateNative(setup);
    CREATESTRUCT create{m_core->text, style, m_core->rect};
    const WindowGuard alive(*this);
    const bool refused =
        !m_core->native || SendMessage(WM_CREATE, 0, reinterpret_cast<LPARAM>(&create)) != 0;
    if (!alive || !m_core) return 0;
    if (refused) {
        DestroyWindow();
        return 0;
    }
    SendMessage(WM_SIZE, 0, MAKELPARAM(m_core->clientSize.cx, m_core->clientSize.cy));
    if (!alive || !m_core) return 0;
    Invalidate(1);
    if ((style & WS_VISIBLE) != 0) m_core->native->Show(true);
    return 1;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    CWnd* placeholder = parent != nullptr ? parent->GetDlgItem(id) : nullptr;
    if (placeholder == nullptr || m_core) return 0;
    const char* className = placeholder->native()->Edit() != nullptr ? cEditClass : nullptr;
    const CString text = placeholder->window_text();
    const DWORD style = placeholder->GetStyle();
    const CRect rect = placeholder->m_core->rect;
    const std::vector<CWnd*>& siblings = parent->m_core->children;
    const auto place = std::find(siblings.begin(), siblings.end(), placeholder);
    const CWnd* const before = place != siblings.begin() ? *std::prev(place) : &wndTop;
    const WindowGuard parentAlive(*parent);
    placeholder->DestroyWindow();
    if (!parentAlive || Create(className, text, style, rect, parent, id) == 0) return 0;
    // It takes the place of the old one in the order of Tab.
    place_after(before);
    return 1;
}

BOOL CWnd::DestroyWindow() {
    if (!m_core || m_core->isBeingDestroyed) return 0;
    m_core->isBeingDestroyed = true;
    const WindowGuard alive(*this);
    const bool isObjectAlive = static_cast<bool>(alive);
    tessalink::leaveFocus(*this);
    if (isObjectAlive) {
        SendMessage(WM_DESTROY);
        if (!alive) return 1;
    }
    while (!m_core->children.empty()) {
        CWnd* child = m_core->children.back();
        const WindowGuard childAlive(*child);
        child->DestroyWindow();
        if (isObjectAlive && !alive) return 1;
        if (!childAlive) continue;
        removeFrom(m_core->children, child);
        // It is being destroyed already, and will end after its parent.
        if (child->m_core) child->m_core->parent = nullptr;
    }
    if (m_core->parent != nullptr && m_core->parent->m_core) {
        removeFrom(m_core->parent->m_core->children, this);
    }
    tessalink::forgetWindow(*this);
    m_core.reset();
    if (isObjectAlive) PostNcDestroy();
    return 1;
}

CWnd* CWnd::FromHandle(HWND window) {
    return window != nullptr ? window->owner : nullptr;
}

// The tree.

CWnd* CWnd::GetParent() const {
    return m_core ? m_core->parent : nullptr;
}

CWnd* CWnd::GetParentFrame() const {
    for (CWnd* window = GetParent(); window != nullptr; window = window->GetParent()) {
        if (window->is_frame()) return window;
    }
    return nullptr;
}

CWnd* CWnd::GetDlgItem(UINT id) const {
    if (!m_core) return nullptr;
    const auto found = std::find_if(m_core->children.begin(), m_core->children.end(),
                                    [id](const CWnd* child) { return child->m_core->id == id; });
    return found != m_core->children.end() ? *found : nullptr;
}

int CWnd::GetDlgCtrlID() const {
    return m_core ? static_cast<int>(m_core->id) : 0;
}

CWnd* CWnd::GetNextDlgTabItem(const CWnd* from, BOOL previous) const {
    if (!m_core) return nullptr;
    std::vector<CWnd*> stops;
    collectTabStops(*this, stops);
    if (stops.empty()) return nullptr;
    const auto holds = [from](const CWnd* stop) { return stop->Holds(from); };
    const auto found = std::find_if(stops.begin(), stops.end(), holds);
    const auto count = static_cast<std::ptrdiff_t>(stops.size());
    if (found == stops.end()) return previous != 0 ? stops.back() : stops.front();
    const std::ptrdiff_t next = found - stops.begin() + (previous != 0 ? count - 1 : 1);
    return stops[static_cast<std::size_t>(next % count)];
}

bool CWnd::FocusNextControl(bool previous) {
    CWnd* dialog = this;
    while (dialog->GetParent() != nullptr && (dialog->GetStyle() & WS_CHILD) != 0) {
        dialog = dialog->GetParent();
    }
    if (dialog->native() != nullptr && dialog->native()->PassFocusOn(*this, previous)) return true;
    CWnd* next = dialog->GetNextDlgTabItem(this, previous ? 1 : 0);
    if (next == nullptr || next->Holds(this)) return false;
    const WindowGuard alive(*next);
    next->EnterByTab(previous);
    if (alive) next->SetFocus();
    return true;
}

void CWnd::EnterByTab(bool) {}

bool CWnd::CommitEntry() {
    std::vector<std::pair<CWnd*, WindowGuard>> inside;
    for (int i = 0; i < GetChildCount(); ++i) inside.emplace_back(GetChild(i), *GetChild(i));
    return std::all_of(inside.begin(), inside.end(), [](const auto& child) {
        return !child.second || child.first->CommitEntry();
    });
}

BOOL CWnd::IsChild(const CWnd* window) const {
    if (!m_core || window == nullptr) return 0;
    do {
        window = window->GetParent();
    } while (window != nullptr && window != this);
    return window == this;
}

int CWnd::GetChildCount() const {
    return m_core ? static_cast<int>(m_core->children.size()) : 0;
}

CWnd* CWnd::GetChild(int index) const {
    if (index < 0 || index >= GetChildCount()) return nullptr;
    return m_core->children[static_cast<std::size_t>(index)];
}

// Style, state and place.

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
    removeFrom(order, this);
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

// Text and font.

CString CWnd::window_text() const {
    return m_core ? m_core->text : CString();
}

void CWnd::SetWindowText(const char* text) {
    if (!m_core) return;
    m_core->text = text;
    m_core->native->SetText(m_core->text);
    NotifyAccessible(tessalink::AccessibleEvent::ValueChanged);
}

void CWnd::SetFont(CFont* font) {
    SendMessage(WM_SETFONT, 0, reinterpret_cast<LPARAM>(font));
}

CFont* CWnd::GetFont() const {
    return m_core ? m_core->font : nullptr;
}

// Painting.

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
    SCROLLINFO info;
    info.fMask = SIF_POS;
    info.nPos = position;
    SetScrollInfo(bar, &info, redraw);
    return before;
}

int CWnd::GetScrollPos(int bar) const {
    SCROLLINFO info;
    return GetScrollInfo(bar, &info) != 0 ? info.nPos : 0;
}

void CWnd::SetScrollRange(int bar, int min, int max, BOOL redraw) {
    SCROLLINFO info;
    info.fMask = SIF_RANGE;
    info.nMin = min;
    info.nMax = max;
    SetScrollInfo(bar, &info, redraw);
}

void CWnd::GetScrollRange(int bar, int* min, int* max) const {
    SCROLLINFO info;
    GetScrollInfo(bar, &info);
    *min = info.nMin;
    *max = info.nMax;
}

// Accessibility.

tessalink::AccessibleElement CWnd::Accessible() const {
    tessalink::AccessibleElement element;
    element.name = window_text();
    element.isDisabled = IsWindowEnabled() == 0;
    element.isFocused = GetFocus() == this;
    GetClientRect(&element.rect);
    return element;
}

tessalink::AccessibleElement CWnd::AccessibleChild(int) const {
    return {};
}

int CWnd::AccessibleChildAt(CPoint point) const {
    for (int i = 0; i < AccessibleChildCount(); ++i) {
        if (AccessibleChild(i).rect.PtInRect(point)) return i;
    }
    return tessalink::cNoAccessibleChild;
}

void CWnd::NotifyAccessible(tessalink::AccessibleEvent event, int child, const CString& text) {
    if (m_core) m_core->native->NotifyAccessible(event, child, text);
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
