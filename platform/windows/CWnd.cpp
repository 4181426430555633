#include "platform/windows/CWnd.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include "platform/windows/detail/WindowCore.h"
#include "platform/windows/detail/WindowState.h"

using tessalink::NativeWindow;
using tessalink::WindowCore;
using tessalink::WindowGuard;

namespace {

constexpr const char* cEditClass = "EDIT";

bool isEditClass(const char* className) {
    return className != nullptr && CString(className).CompareNoCase(cEditClass) == 0;
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
    CREATESTRUCTA create{};
    create.lpszName = m_core->text;
    create.style = static_cast<LONG>(style);
    create.x = rect.left;
    create.y = rect.top;
    create.cx = rect.right - rect.left;
    create.cy = rect.bottom - rect.top;
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
        std::erase(m_core->children, child);
        // It is being destroyed already, and will end after its parent.
        if (child->m_core) child->m_core->parent = nullptr;
    }
    if (m_core->parent != nullptr && m_core->parent->m_core) {
        std::erase(m_core->parent->m_core->children, this);
    }
    tessalink::forgetWindow(*this);
    m_core.reset();
    if (isObjectAlive) PostNcDestroy();
    return 1;
}

CWnd* CWnd::FromHandle(HWND window) {
    return window != nullptr ? reinterpret_cast<WindowCore*>(window)->owner : nullptr;
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
    inside.reserve(static_cast<std::size_t>(GetChildCount()));
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
