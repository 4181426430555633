#include "platform/windows/HeadlessSystem.h"

#include <algorithm>
#include <cctype>

#include "platform/windows/detail/HeadlessEdit.h"

namespace tessalink {

namespace {

struct KeyText {
    UINT key;
    std::string_view text;
};

constexpr KeyText cKeyTexts[] = {
    {VK_RETURN, "\r"}, {VK_TAB, "\t"}, {VK_ESCAPE, "\x1b"}, {VK_BACK, "\b"}};

constexpr int cScrollBarSize = 17;
constexpr int cMenuHeight = 20;

// Whether a window is seen at a point of the screen: children end where their parents do.
bool isSeenAt(const CWnd& window, CPoint point) {
    CRect rect;
    window.GetWindowRect(&rect);
    if (window.IsWindowVisible() == 0 || !rect.PtInRect(point)) return false;
    const CWnd* parent = window.GetParent();
    if (parent == nullptr || (window.GetStyle() & WS_POPUP) != 0) return true;
    CRect client;
    parent->GetClientRect(&client);
    CPoint inside = point;
    parent->ScreenToClient(&inside);
    return client.PtInRect(inside) && isSeenAt(*parent, point);
}

}  // namespace

class HeadlessWindow final : public NativeWindow {
public:
    HeadlessWindow(HeadlessSystem& system, const WindowSetup& setup)
        : m_system(system), m_owner(*setup.owner) {
        m_system.m_windows.push_back(&m_owner);
        if (setup.isEdit) m_edit = std::make_unique<HeadlessEdit>(system, m_owner, setup.style);
        if (m_edit) m_edit->SetText(setup.text);
        if (setup.parent == nullptr) m_topLeft = setup.rect.TopLeft();
    }
    ~HeadlessWindow() override {
        auto& windows = m_system.m_windows;
        windows.erase(std::remove(windows.begin(), windows.end(), &m_owner), windows.end());
    }

    void Move(const CRect& rect) override { m_topLeft = rect.TopLeft(); }
    void Show(bool) override {}
    void Enable(bool) override {}
    void Raise() override { raised(); }
    void PlaceAfter(NativeWindow* sibling) override {
        const auto own = raised();
        auto& windows = m_system.m_windows;
        if (sibling == nullptr) return;
        const auto* const front = &static_cast<HeadlessWindow*>(sibling)->m_owner;
        std::rotate(std::find(windows.begin(), own, front), own, windows.end());
    }
    void RequestPaint(const CRect&) override {}
    void PaintNow() override { m_system.paint(m_owner, m_system.m_screen); }
    void Scroll(int, int) override {}
    void TakeFocus() override {}
    void Capture(bool) override {}
    void SetCursor(int) override {}
    void SetText(const CString& text) override {
        if (m_edit) m_edit->SetText(text);
    }
    void SetFont(const LOGFONTA&) override {}
    void SetScrollBar(int, bool, const SCROLLINFO&) override {}
    CPoint ClientOrigin() const override {
        CPoint origin = m_topLeft;
        if (const CWnd* parent = m_owner.GetParent()) {
            const CRect place = windowPlace(m_owner);
            origin = nativeOf(*parent)->ClientOrigin();
            origin.Offset(place.left, place.top);
        }
        const CRect client = clientArea(m_owner);
        origin.Offset(client.left, client.top);
        return origin;
    }
    void ShowOutline(const CRect& rect) override { m_outline = rect; }
    void NotifyAccessible(AccessibleEvent event, int child, const CString& text) override {
        m_system.m_told.push_back({&m_owner, event, child, text});
    }
    NativeEdit* Edit() override { return m_edit.get(); }

private:
    // Moves the window, with what is in it, to the front, and returns where it starts there.
    std::vector<CWnd*>::iterator raised() {
        auto& windows = m_system.m_windows;
        return std::stable_partition(windows.begin(), windows.end(),
                                     [this](const CWnd* window) { return !m_owner.Holds(window); });
    }

    HeadlessSystem& m_system;
    CWnd& m_owner;
    CPoint m_topLeft;
    CRect m_outline;
    std::unique_ptr<HeadlessEdit> m_edit;
};

HeadlessSystem::HeadlessSystem()
    : m_colors{{COLOR_WINDOW, cWhite},
               {COLOR_WINDOWTEXT, cBlack},
               {COLOR_HIGHLIGHT, RGB(0, 90, 180)},
               {COLOR_HIGHLIGHTTEXT, cWhite},
               {COLOR_BTNFACE, RGB(240, 240, 240)},
               {COLOR_BTNSHADOW, RGB(105, 105, 105)},
               {COLOR_GRAYTEXT, RGB(100, 100, 100)},
               {COLOR_BTNTEXT, cBlack},
               {COLOR_BTNHIGHLIGHT, cWhite},
               {COLOR_INFOTEXT, cBlack},
               {COLOR_INFOBK, RGB(255, 255, 225)}},
      m_screen(fixedScreen()) {}

HeadlessSystem::~HeadlessSystem() = default;

HeadlessSystem& HeadlessSystem::Default() {
    static HeadlessSystem system;
    return system;
}

std::unique_ptr<NativeWindow> HeadlessSystem::CreateNative(const WindowSetup& setup) {
    return std::make_unique<HeadlessWindow>(*this, setup);
}

// The keyboard.

void HeadlessSystem::PressKey(UINT key, std::string_view characters) {
    CWnd* window = CWnd::GetFocus();
    if (window == nullptr) return;
    for (const KeyText& known : cKeyTexts) {
        if (known.key == key && characters.empty()) characters = known.text;
    }
    keyPressed(*window, key, characters);
}

void HeadlessSystem::Type(std::string_view text) {
    for (const char& ch : text) {
        // The codes of other characters are those of the arrows and their like.
        const auto code = static_cast<unsigned char>(ch);
        const bool isKey = std::isalnum(code) != 0 || code == VK_SPACE;
        PressKey(isKey ? static_cast<UINT>(std::toupper(code)) : 0, std::string_view(&ch, 1));
    }
}

void HeadlessSystem::HoldKey(UINT key, bool down) {
    if (down) {
        m_keys.insert(static_cast<int>(key));
    } else {
        m_keys.erase(static_cast<int>(key));
    }
}

bool HeadlessSystem::IsKeyDown(int key) const {
    return m_keys.count(key) != 0;
}

// The mouse.

CWnd* HeadlessSystem::WindowAt(CPoint point) const {
    CWnd* found = nullptr;
    for (CWnd* window : m_windows) {
        if (!isSeenAt(*window, point)) continue;
        // Deeper ones are in front; of siblings, those made or raised last.
        if (found == nullptr || window->IsChild(found) == 0) found = window;
    }
    return found;
}

UINT HeadlessSystem::mouse_flags() const {
    return m_buttons | (IsKeyDown(VK_SHIFT) ? MK_SHIFT : 0) |
           (IsKeyDown(VK_CONTROL) ? MK_CONTROL : 0);
}

CWnd* HeadlessSystem::mouse_target(CPoint point) const {
    CWnd* target = WindowAt(point);
    for (CWnd* window = target; window != nullptr; window = window->GetParent()) {
        if (window->IsWindowEnabled() == 0) target = window->GetParent();
    }
    return target;
}

void HeadlessSystem::send_mouse(UINT message, CPoint point) {
    m_cursor = point;
    CWnd* window = CWnd::GetCapture();
    if (window == nullptr) window = mouse_target(point);
    if (window == nullptr) return;
    window->ScreenToClient(&point);
    mouseUsed(*window, message, mouse_flags(), point);
}

void HeadlessSystem::Press(CPoint point, UINT message) {
    m_buttons |= message == WM_LBUTTONDOWN ? MK_LBUTTON : MK_RBUTTON;
    send_mouse(message, point);
}

void HeadlessSystem::Release(CPoint point, UINT message) {
    m_buttons = 0;
    send_mouse(message, point);
}

void HeadlessSystem::Click(CPoint point) {
    Press(point);
    Release(point);
}

void HeadlessSystem::MoveMouse(CPoint point) {
    send_mouse(WM_MOUSEMOVE, point);
}

void HeadlessSystem::Turn(CPoint point, short delta) {
    m_cursor = point;
    CWnd* window = mouse_target(point);
    if (window == nullptr) return;
    mouseUsed(*window, WM_MOUSEWHEEL,
              MAKEWPARAM(mouse_flags(), static_cast<UINT>(static_cast<std::uint16_t>(delta))),
              point);
}

// Time and messages.

void HeadlessSystem::Pump() {
    do {
        while (m_hasPosted) {
            m_hasPosted = false;
            dispatchPosted();
        }
    } while (paint_invalid() || m_hasPosted);
}

void HeadlessSystem::StartTimer(int number, UINT period) {
    m_timers[number] = {std::max(period, 1U), m_now + std::max(period, 1U)};
}

void HeadlessSystem::StopTimer(int number) {
    m_timers.erase(number);
}

void HeadlessSystem::Advance(UINT milliseconds) {
    const std::uint64_t end = m_now + milliseconds;
    for (;;) {
        const auto next = std::min_element(
            m_timers.begin(), m_timers.end(),
            [](const auto& a, const auto& b) { return a.second.due < b.second.due; });
        if (next == m_timers.end() || next->second.due > end) break;
        m_now = next->second.due;
        next->second.due += next->second.period;
        timerElapsed(next->first);
    }
    m_now = end;
}

bool HeadlessSystem::RunUntil(const std::function<bool()>& isDone) {
    while (!isDone()) {
        if (m_steps.empty()) return false;
        const std::function<void()> step = std::move(m_steps.front());
        m_steps.pop_front();
        step();
    }
    return true;
}

// Painting.

void HeadlessSystem::paint(CWnd& window, DrawingDevice& device) {
    const Region area = invalidRegion(window);
    if (area.IsEmpty()) return;
    ++m_paintCount;
    for (const CRect rect : area.Rects()) {
        m_paintedArea += std::int64_t{rect.Width()} * rect.Height();
    }
    paintWindow(window, device, area);
}

bool HeadlessSystem::paint_invalid() {
    const std::vector<CWnd*> windows = m_windows;
    bool any = false;
    for (CWnd* window : windows) {
        const bool exists =
            std::find(m_windows.begin(), m_windows.end(), window) != m_windows.end();
        if (!exists || window->IsWindowVisible() == 0) continue;
        if (window->GetUpdateRect(nullptr) == 0) continue;
        paint(*window, m_screen);
        any = true;
    }
    return any;
}

void HeadlessSystem::PaintAll(CWnd& window, DrawingDevice& device, CPoint origin) {
    CRect client;
    window.GetClientRect(&client);
    paintWindow(window, device, Region(client), origin);
    for (int i = 0; i < window.GetChildCount(); ++i) {
        CWnd* child = window.GetChild(i);
        if (child->IsWindowVisible() == 0) continue;
        const CPoint place = windowPlace(*child).TopLeft();
        const CPoint inside = clientArea(*child).TopLeft();
        PaintAll(*child, device,
                 CPoint(origin.x + place.x + inside.x, origin.y + place.y + inside.y));
    }
}

// The system.

COLORREF HeadlessSystem::Color(int index) const {
    const auto found = m_colors.find(index);
    return found != m_colors.end() ? found->second : cBlack;
}

int HeadlessSystem::Metric(int index) const {
    switch (index) {
        case SM_CXSCREEN:
            return fixedScreen().width;
        case SM_CYSCREEN:
            return fixedScreen().height;
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
            return cScrollBarSize;
        case SM_CXBORDER:
        case SM_CYBORDER:
            return 1;
        case SM_CYMENU:
            return cMenuHeight;
        default:
            return 0;
    }
}

bool HeadlessSystem::ClipboardText(CString& text) const {
    text = m_clipboard;
    return !text.IsEmpty();
}

}  // namespace tessalink
