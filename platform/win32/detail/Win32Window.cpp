#include "platform/win32/detail/Win32Window.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/win32/detail/PlatformText.h"
#include "platform/win32/detail/Screens.h"
#include "platform/win32/detail/SystemCalls.h"
#include "platform/win32/detail/Win32Accessible.h"

namespace tessalink::detail {

namespace {

constexpr UINT cScaleChangedAfterParent = 0x02E3;
constexpr UINT cScaleChanged = 0x02E0;
constexpr UINT cObjectAsked = 0x003D;
// An update of more pieces is painted as the rectangle around them.
constexpr DWORD cMostPieces = 32;
constexpr UINT cOnlyOrder = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
constexpr UINT cOnlyPlace = SWP_NOZORDER | SWP_NOACTIVATE;

HWND handleOfNative(NativeWindow* native) {
    auto* const own = dynamic_cast<Win32Native*>(native);
    return own != nullptr ? own->Handle() : nullptr;
}

DWORD childStyle(const WindowSetup& setup) {
    DWORD style = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
    style |= setup.style & (WS_GROUP | WS_DISABLED);
    if (isTabEntry(*setup.owner)) style |= WS_TABSTOP;
    return style;
}

}  // namespace

// Creation.

Win32Window::Win32Window(const WindowSetup& setup)
    : m_owner(*setup.owner),
      m_link(std::make_shared<Win32Window*>(this)),
      m_isPopup((setup.style & WS_POPUP) != 0),
      m_isTopLevel(setup.parent == nullptr || m_isPopup),
      m_hasBorder((setup.style & WS_BORDER) == WS_BORDER) {
    create(setup);
}

void Win32Window::create(const WindowSetup& setup) {
    const HWND parent = handleOfNative(setup.parent);
    if (!m_isTopLevel) {
        m_style = childStyle(setup);
        // The platform's Tab looks for stops in windows that are none themselves.
        if ((m_style & WS_TABSTOP) == 0 && !setup.isEdit) m_extendedStyle = WS_EX_CONTROLPARENT;
    } else if (m_isPopup) {
        m_style = WS_POPUP | WS_CLIPCHILDREN;
        m_extendedStyle = WS_EX_TOPMOST | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW;
    } else {
        m_style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | (setup.style & WS_DISABLED);
        m_extendedStyle = WS_EX_CONTROLPARENT;
    }
    if (!m_isTopLevel && parent == nullptr) return;
    m_scale = m_isTopLevel ? scaleAt(setup.rect.TopLeft()) : Scale(dpiOfWindow(parent));
    if (setup.isEdit) {
        m_fieldStyle = setup.style;
        m_handle = create_field(parent);
        if (m_handle == nullptr) return;
        m_edit = std::make_unique<Win32Edit>(m_owner, m_handle, m_base, setup.style);
        m_edit->SetText(setup.text);
    } else {
        const std::wstring title = m_isTopLevel ? toPlatform(setup.text.View()) : L"";
        ::CreateWindowExW(m_extendedStyle, windows().WindowClass(), title.c_str(), m_style, 0, 0, 0,
                          0, parent, nullptr, windows().Module(), this);
    }
    if (m_handle == nullptr) return;
    rescale();
    const CPoint corner = setup.rect.TopLeft();
    const bool isOpened = m_isTopLevel && !m_isPopup;
    const int title = windows().Metric(SM_CYCAPTION);
    place(isOpened ? placedWithin(setup.rect, roomAt(corner), title) : setup.rect);
}

HWND Win32Window::create_field(HWND parent) {
    const bool isLow = m_edit && !m_edit->IsLow();
    const HWND field =
        ::CreateWindowExW(0, L"EDIT", L"", m_style | Win32Edit::PlatformStyle(m_fieldStyle, isLow),
                          0, 0, 0, 0, parent, nullptr, windows().Module(), nullptr);
    if (field == nullptr) return nullptr;
    windows().Register(field, *this);
    m_base = reinterpret_cast<WNDPROC>(::SetWindowLongPtrW(
        field, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Win32Window::Procedure)));
    return field;
}

void Win32Window::fit_field() {
    const CRect pixels = m_scale.Edges(windowPlace(m_owner));
    if (!m_edit || !m_edit->NeedsOther(pixels.Height())) return;
    const HWND before = m_handle;
    const bool isVisible =
        (::GetWindowLongW(before, GWL_STYLE) & static_cast<LONG>(WS_VISIBLE)) != 0;
    const bool isEnabled = ::IsWindowEnabled(before) != 0;
    const bool hasFocus = ::GetFocus() == before;
    const HWND field = create_field(::GetParent(before));
    if (field == nullptr) return;
    m_edit->MoveTo(field, m_base);
    m_handle = field;
    ::EnableWindow(field, isEnabled ? TRUE : FALSE);
    ::SetWindowPos(field, before, 0, 0, 0, 0, cOnlyOrder | (isVisible ? SWP_SHOWWINDOW : 0));
    if (hasFocus) windows().GiveFocus(field);
    windows().Forget(before);
    ::SetWindowLongPtrW(before, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_base));
    ::DestroyWindow(before);
}

Win32Window::~Win32Window() {
    *m_link = nullptr;
    if (m_handle == nullptr) return;
    drop_focus();
    windows().Forget(m_handle);
    forgetAccessible(m_handle);
    if (m_base != nullptr) {
        ::SetWindowLongPtrW(m_handle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_base));
    }
    ::DestroyWindow(m_handle);
}

// The platform's window goes, without a call of ours.
void Win32Window::lost() {
    const HWND handle = std::exchange(m_handle, nullptr);
    *m_link = nullptr;
    windows().Forget(handle);
    forgetAccessible(handle);
    m_edit.reset();
    windowLost(m_owner);
}

// Messages.

LRESULT CALLBACK Win32Window::Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        const auto& created = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
        if (auto* const window = static_cast<Win32Window*>(created.lpCreateParams)) {
            window->m_handle = handle;
            windows().Register(handle, *window);
        }
    }
    Win32Window* const window = windows().WindowOf(handle);
    if (window == nullptr) return ::DefWindowProcW(handle, message, wParam, lParam);
    const Received received = {message, wParam, lParam};
    const Reaction reaction = reaction_to(message);
    if (reaction == nullptr) return window->by_default(received);
    const WindowLink link = window->m_link;
    const std::optional<LRESULT> answer = (window->*reaction)(received);
    if (answer) return *answer;
    return *link != nullptr ? window->by_default(received) : 0;
}

LRESULT Win32Window::by_default(const Received& received) const {
    return m_base != nullptr
               ? ::CallWindowProcW(m_base, m_handle, received.message, received.wParam,
                                   received.lParam)
               : ::DefWindowProcW(m_handle, received.message, received.wParam, received.lParam);
}

struct Win32Window::Entry {
    UINT message;
    Reaction reaction;
};

Win32Window::Reaction Win32Window::reaction_to(UINT message) {
    static constexpr Entry cEntries[] = {
        {WM_NCCALCSIZE, &Win32Window::frame_sized},
        {WM_NCPAINT, &Win32Window::frame_painted},
        {WM_PAINT, &Win32Window::paint},
        {WM_ERASEBKGND, &Win32Window::erase},
        {WM_WINDOWPOSCHANGED, &Win32Window::moved},
        {WM_ACTIVATE, &Win32Window::activated},
        {WM_MOUSEACTIVATE, &Win32Window::mouse_activates},
        {WM_CLOSE, &Win32Window::close_asked},
        {cScaleChanged, &Win32Window::scale_changed},
        {cScaleChangedAfterParent, &Win32Window::scale_changed},
        {WM_KEYDOWN, &Win32Window::key_pressed},
        {WM_KEYUP, &Win32Window::key_released},
        {WM_CHAR, &Win32Window::character},
        {WM_GETDLGCODE, &Win32Window::dialog_code},
        {WM_SETFOCUS, &Win32Window::focus_came},
        {WM_KILLFOCUS, &Win32Window::focus_left},
        {WM_MOUSEMOVE, &Win32Window::mouse},
        {WM_LBUTTONDOWN, &Win32Window::mouse},
        {WM_LBUTTONUP, &Win32Window::mouse},
        {WM_LBUTTONDBLCLK, &Win32Window::mouse},
        {WM_RBUTTONDOWN, &Win32Window::mouse},
        {WM_RBUTTONUP, &Win32Window::mouse},
        {WM_RBUTTONDBLCLK, &Win32Window::mouse},
        {WM_MBUTTONDOWN, &Win32Window::mouse},
        {WM_MBUTTONUP, &Win32Window::mouse},
        {WM_MBUTTONDBLCLK, &Win32Window::mouse},
        {WM_MOUSEWHEEL, &Win32Window::wheel},
        {WM_CONTEXTMENU, &Win32Window::menu},
        {WM_SETCURSOR, &Win32Window::cursor},
        {WM_CAPTURECHANGED, &Win32Window::capture_left},
        {WM_HSCROLL, &Win32Window::scrolled},
        {WM_VSCROLL, &Win32Window::scrolled},
        {WM_COMMAND, &Win32Window::child_told},
        {WM_CTLCOLOREDIT, &Win32Window::child_told},
        {WM_CTLCOLORSTATIC, &Win32Window::child_told},
        {WM_PASTE, &Win32Window::pasted},
        {cObjectAsked, &Win32Window::object_asked},
        {cCallFunction, &Win32Window::function_called},
        {WM_NCDESTROY, &Win32Window::destroyed},
    };
    const auto* const found =
        std::find_if(std::begin(cEntries), std::end(cEntries),
                     [message](const Entry& entry) { return entry.message == message; });
    return found != std::end(cEntries) ? found->reaction : nullptr;
}

std::optional<LRESULT> Win32Window::destroyed(const Received& received) {
    const LRESULT answer = by_default(received);
    lost();
    return answer;
}

std::optional<LRESULT> Win32Window::close_asked(const Received&) {
    m_owner.SendMessage(WM_CLOSE);
    return 0;
}

// Place and state.

void Win32Window::rescale() {
    m_scale = Scale(dpiOfWindow(m_handle));
    if (m_font && m_edit) m_edit->SetFont(*m_font, m_scale);
}

void Win32Window::Move(const CRect& rect) {
    if (m_handle != nullptr) place(rect);
}

// A window on the screen has its place with its title bar, and its size without.
void Win32Window::place(const CRect& rect) {
    fit_field();
    CRect pixels = m_scale.Edges(rect);
    if (m_isTopLevel) {
        const CPoint corner = screenPixel(rect.TopLeft());
        CRect outer(CPoint(), CSize(m_scale.Edge(rect.Width()), m_scale.Edge(rect.Height())));
        if (!m_isPopup) addFrame(outer, m_style, m_extendedStyle, m_scale.Dpi());
        pixels = CRect(corner, outer.Size());
    }
    constexpr UINT cFlags = cOnlyPlace | SWP_FRAMECHANGED;
    ::SetWindowPos(m_handle, nullptr, pixels.left, pixels.top, pixels.Width(), pixels.Height(),
                   cFlags);
    if (m_edit) m_edit->LayOut();
}

std::optional<LRESULT> Win32Window::moved(const Received& received) {
    const LRESULT answer = by_default(received);
    if (!m_isTopLevel || m_isPopup || ::IsIconic(m_handle) != 0) return answer;
    RECT outer = {};
    RECT client = {};
    ::GetWindowRect(m_handle, &outer);
    ::GetClientRect(m_handle, &client);
    const CSize size(m_scale.UnitEdge(client.right), m_scale.UnitEdge(client.bottom));
    const CRect rect(screenUnits({outer.left, outer.top}), size);
    if (rect != windowPlace(m_owner)) windowMoved(m_owner, rect);
    return answer;
}

// The client area is what the library says. Fields have scroll bars of their own.
std::optional<LRESULT> Win32Window::frame_sized(const Received& received) {
    if (m_isTopLevel && !m_isPopup) return std::nullopt;
    CRect rect(*reinterpret_cast<RECT*>(received.lParam));
    const CPoint start = m_isTopLevel ? CPoint() : windowPlace(m_owner).TopLeft();
    CRect client = clientArea(m_owner);
    if (m_edit) client = CRect(CPoint(), windowPlace(m_owner).Size());
    if (m_edit && m_hasBorder) client.DeflateRect(1, 1);
    client.OffsetRect(start);
    CRect pixels = m_scale.Edges(client);
    pixels.OffsetRect(rect.TopLeft() - m_scale.Edges(CRect(start, start)).TopLeft());
    *reinterpret_cast<RECT*>(received.lParam) = pixels;
    return m_edit ? by_default(received) : 0;
}

// Scroll bars are the platform's, the border is ours.
std::optional<LRESULT> Win32Window::frame_painted(const Received& received) {
    if (m_isTopLevel || !m_hasBorder) return std::nullopt;
    const LRESULT answer = by_default(received);
    RECT outer = {};
    ::GetWindowRect(m_handle, &outer);
    const bool isFocusedField = m_edit && ::GetFocus() == m_handle;
    const HDC context = ::GetWindowDC(m_handle);
    const CRect whole(CPoint(), CRect(outer).Size());
    CRect inside = whole;
    const int width = m_scale.Length(1);
    inside.DeflateRect(width, width);
    const GdiHandle<HBRUSH> brush(
        ::CreateSolidBrush(windows().Color(isFocusedField ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW)));
    const Region frame = Region(whole).Minus(Region(inside));
    for (const RECT& edge : frame.Rects()) ::FillRect(context, &edge, brush.get());
    ::ReleaseDC(m_handle, context);
    return answer;
}

void Win32Window::Show(bool show) {
    if (m_handle == nullptr) return;
    const bool isActivated = m_isTopLevel && !m_isPopup;
    const int shown = isActivated ? SW_SHOW : SW_SHOWNA;
    if (!show) drop_focus();
    ::ShowWindow(m_handle, show ? shown : SW_HIDE);
}

// The platform would lead the focus of what is hidden elsewhere by itself.
void Win32Window::drop_focus() {
    const HWND focus = ::GetFocus();
    if (focus == m_handle || ::IsChild(m_handle, focus) != 0) windows().DropFocus();
}

void Win32Window::Enable(bool enable) {
    if (m_handle == nullptr) return;
    if (!enable) drop_focus();
    ::EnableWindow(m_handle, enable ? TRUE : FALSE);
}

void Win32Window::Raise() {
    if (m_handle != nullptr) ::SetWindowPos(m_handle, HWND_TOP, 0, 0, 0, 0, cOnlyOrder);
}

void Win32Window::PlaceAfter(NativeWindow* sibling) {
    const HWND before = handleOfNative(sibling);
    if (m_handle == nullptr) return;
    ::SetWindowPos(m_handle, before != nullptr ? before : HWND_TOP, 0, 0, 0, 0, cOnlyOrder);
}

void Win32Window::SetText(const CString& text) {
    if (m_edit) {
        m_edit->SetText(text);
    } else if (m_handle != nullptr && m_isTopLevel) {
        ::SetWindowTextW(m_handle, toPlatform(text.View()).c_str());
    }
}

void Win32Window::SetFont(const LOGFONTA& font) {
    m_font = font;
    if (!m_edit) return;
    m_edit->SetFont(font, m_scale);
    place(windowPlace(m_owner));
}

CPoint Win32Window::ClientOrigin() const {
    POINT origin = {};
    if (m_handle == nullptr) return {};
    ::ClientToScreen(m_handle, &origin);
    return screenUnits(origin);
}

std::optional<LRESULT> Win32Window::scale_changed(const Received& received) {
    if (received.message == cScaleChanged && received.lParam != 0) {
        const CRect wanted(*reinterpret_cast<const RECT*>(received.lParam));
        rescale();
        ::SetWindowPos(m_handle, nullptr, wanted.left, wanted.top, wanted.Width(), wanted.Height(),
                       cOnlyPlace);
    }
    windows().ScaleChanged();
    return 0;
}

void Win32Window::SettingsChanged() {
    if (m_handle == nullptr) return;
    rescale();
    place(windowPlace(m_owner));
    repaint_all();
}

void Win32Window::repaint_all() {
    ::RedrawWindow(m_handle, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ERASE);
}

// Four bars in front of everything.
void Win32Window::ShowOutline(const CRect& rect) {
    if (m_handle == nullptr) return;
    const CRect pixels = m_scale.Edges(rect);
    const int width = m_scale.Length(1);
    const std::array<CRect, 4> bars = {
        {{pixels.left, pixels.top, pixels.right, pixels.top + width},
         {pixels.left, pixels.bottom - width, pixels.right, pixels.bottom},
         {pixels.left, pixels.top, pixels.left + width, pixels.bottom},
         {pixels.right - width, pixels.top, pixels.right, pixels.bottom}}};
    for (std::size_t i = 0; i < bars.size(); ++i) {
        HWND& bar = m_outline[i];
        if (bar == nullptr) {
            bar = ::CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_CLIPSIBLINGS | SS_BLACKRECT, 0,
                                    0, 0, 0, m_handle, nullptr, windows().Module(), nullptr);
        }
        const UINT shown = rect.IsRectEmpty() ? SWP_HIDEWINDOW : SWP_SHOWWINDOW;
        ::SetWindowPos(bar, HWND_TOP, bars[i].left, bars[i].top, bars[i].Width(), bars[i].Height(),
                       SWP_NOACTIVATE | shown);
        ::UpdateWindow(bar);
    }
}

// Painting.

void Win32Window::RequestPaint(const CRect& rect) {
    if (m_handle == nullptr) return;
    if (m_edit) return repaint_all();
    const CRect pixels = m_scale.Edges(rect);
    ::InvalidateRect(m_handle, pixels, FALSE);
}

void Win32Window::PaintNow() {
    if (m_handle == nullptr || m_isPainting) return;
    ::RedrawWindow(m_handle, nullptr, nullptr, RDW_UPDATENOW | RDW_NOCHILDREN);
}

void Win32Window::Scroll(int dx, int dy) {
    if (m_handle == nullptr || m_edit) return;
    const bool isWhole =
        (dx * m_scale.Dpi()) % cUnitsPerInch == 0 && (dy * m_scale.Dpi()) % cUnitsPerInch == 0;
    if (!isWhole) return repaint_all();
    ::ScrollWindowEx(m_handle, m_scale.Edge(dx), m_scale.Edge(dy), nullptr, nullptr, nullptr,
                     nullptr, SW_INVALIDATE);
}

std::optional<LRESULT> Win32Window::erase(const Received&) {
    if (m_edit) return std::nullopt;
    return 1;
}

// What is invalid, as units.
Region Win32Window::invalid_units() const {
    const GdiHandle<HRGN> invalid(::CreateRectRgn(0, 0, 0, 0));
    ::GetUpdateRgn(m_handle, invalid.get(), FALSE);
    std::vector<BYTE> bytes(::GetRegionData(invalid.get(), 0, nullptr));
    const CRect client(CPoint(), clientArea(m_owner).Size());
    if (bytes.size() < sizeof(RGNDATAHEADER)) return {};
    ::GetRegionData(invalid.get(), static_cast<DWORD>(bytes.size()),
                    reinterpret_cast<RGNDATA*>(bytes.data()));
    RGNDATAHEADER header;
    std::memcpy(&header, bytes.data(), sizeof(header));
    if (header.nCount > cMostPieces) {
        return Region(m_scale.UnitsAround(header.rcBound)).And(Region(client));
    }
    Region units;
    for (DWORD i = 0; i < header.nCount; ++i) {
        RECT piece;
        std::memcpy(&piece, bytes.data() + sizeof(header) + i * sizeof(piece), sizeof(piece));
        units = units.Or(Region(m_scale.UnitsAround(piece)));
    }
    return units.And(Region(client));
}

std::optional<LRESULT> Win32Window::paint(const Received&) {
    if (m_edit) return std::nullopt;
    const Region units = invalid_units();
    const WindowLink link = m_link;
    const HWND handle = m_handle;
    PAINTSTRUCT told;
    const HDC screen = ::BeginPaint(handle, &told);
    const bool before = std::exchange(m_isPainting, true);
    if (screen != nullptr && !units.IsEmpty()) paint_area(screen, told.rcPaint, units);
    if (*link != nullptr) m_isPainting = before;
    ::EndPaint(handle, &told);
    return 0;
}

void Win32Window::paint_area(HDC screen, const CRect& pixels, const Region& units) {
    const int dpi = m_scale.Dpi();
    BackBuffer& buffer = windows().Buffer();
    const HDC memory = buffer.Begin(screen, pixels.Size());
    if (memory == nullptr) {
        DcDevice device(screen, dpi);
        return paintWindow(m_owner, device, units);
    }
    ::SetViewportOrgEx(memory, -pixels.left, -pixels.top, nullptr);
    {
        DcDevice device(memory, dpi);
        paintWindow(m_owner, device, units);
    }
    ::SetViewportOrgEx(memory, 0, 0, nullptr);
    ::BitBlt(screen, pixels.left, pixels.top, pixels.Width(), pixels.Height(), memory, 0, 0,
             SRCCOPY);
    buffer.End();
}

// Fields.

void Win32Window::FieldChanged() {
    if (m_edit && !m_edit->IsSilent()) editChanged(m_owner);
}

LRESULT Win32Window::FieldColors(HDC context) {
    const WindowLink link = m_link;
    const std::optional<EditColors> colors = editColors(m_owner);
    if (!colors || *link == nullptr || !m_edit) {
        return reinterpret_cast<LRESULT>(::GetSysColorBrush(COLOR_WINDOW));
    }
    return reinterpret_cast<LRESULT>(m_edit->Ground(context, colors->text, colors->ground));
}

std::optional<LRESULT> Win32Window::child_told(const Received& received) {
    return windows().ChildTold(received.message, received.wParam, received.lParam);
}

// By the menu of the field, or by other programs.
std::optional<LRESULT> Win32Window::pasted(const Received&) {
    if (!m_edit) return std::nullopt;
    m_owner.SendMessage(WM_PASTE);
    return 0;
}

// Accessibility.

std::optional<LRESULT> Win32Window::object_asked(const Received& received) {
    return accessibleObject(*this, received.wParam, received.lParam);
}

std::optional<LRESULT> Win32Window::function_called(const Received& received) {
    if (!carriesFunction(received.wParam)) return std::nullopt;
    (*reinterpret_cast<const std::function<void(Win32Window&)>*>(received.lParam))(*this);
    return 1;
}

void Win32Window::NotifyAccessible(AccessibleEvent event, int child, const CString& text) {
    // Fields tell of themselves.
    if (m_handle == nullptr || m_edit) return;
    if (event == AccessibleEvent::Focus) {
        Win32Window* const focused = windows().WindowOf(::GetFocus());
        if (focused != nullptr && focused->m_edit) return focused->stand_for(child);
    }
    const bool isAnnouncement = event == AccessibleEvent::Announcement;
    if (isAnnouncement) m_announcement = text;
    // A part is described by it until it tells anything else.
    m_announced = isAnnouncement ? child : cNoAccessibleChild;
    tellAccessible(*this, event, child);
}

void Win32Window::stand_for(int part) {
    if (m_part == part) return;
    m_part = part;
    tellFieldFocus(*this);
}

}  // namespace tessalink::detail
