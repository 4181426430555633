#include "platform/qt/detail/QtWindow.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/base/HostServices.h"
#include "platform/graphics/CDC.h"
#include "platform/qt/PainterDevice.h"
#include "platform/qt/detail/Canvas.h"
#include "platform/qt/detail/QtAccessible.h"
#include "platform/qt/detail/QtEdit.h"
#include "platform/qt/detail/QtFonts.h"
#include "platform/qt/detail/QtInput.h"
#include "platform/qt/detail/QtShapes.h"
#include "platform/qt/detail/QtText.h"

namespace tessalink::detail {

namespace {

CRect toRect(const QRect& rect) {
    return CRect(CPoint(rect.left(), rect.top()), CSize(rect.width(), rect.height()));
}

CPoint toPoint(const QPointF& point) {
    return {static_cast<int>(std::floor(point.x())), static_cast<int>(std::floor(point.y()))};
}

Region toRegion(const QRegion& region) {
    std::vector<RECT> rects;
    rects.reserve(static_cast<std::size_t>(region.rectCount()));
    for (const QRect& rect : region) rects.push_back(toRect(rect));
    return Region::OfBands(std::move(rects)).value_or(Region(toRect(region.boundingRect())));
}

// The outer widget.
class Frame final : public QWidget {
public:
    Frame(QWidget* parent, Qt::WindowFlags flags, WindowLink link, DWORD style)
        : QWidget(parent, flags),
          m_link(std::move(link)),
          m_hasBorder((style & WS_BORDER) == WS_BORDER) {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }
    ~Frame() override {
        if (*m_link != nullptr) (*m_link)->Lost();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), toQColor(GetSysColor(COLOR_BTNFACE)));
        if (!m_hasBorder) return;
        const QtWindow* const window = *m_link;
        const bool isFocusedEdit = window != nullptr && window->Client()->hasFocus() &&
                                   nativeOf(window->Owner())->Edit() != nullptr;
        const QColor color =
            toQColor(GetSysColor(isFocusedEdit ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW));
        const int x = GetSystemMetrics(SM_CXBORDER);
        const int y = GetSystemMetrics(SM_CYBORDER);
        const bool isReadOnly =
            window != nullptr && window->Client()->property("readOnly").toBool();
        QBrush brush(color, isReadOnly ? Qt::Dense4Pattern : Qt::SolidPattern);
        painter.fillRect(0, 0, width(), y, brush);
        painter.fillRect(0, height() - y, width(), y, brush);
        painter.fillRect(0, 0, x, height(), brush);
        painter.fillRect(width() - x, 0, x, height(), brush);
    }
    void resizeEvent(QResizeEvent*) override {
        if (*m_link != nullptr) (*m_link)->FrameMoved();
    }
    void moveEvent(QMoveEvent*) override {
        if (*m_link != nullptr) (*m_link)->FrameMoved();
    }
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        if (*m_link != nullptr) (*m_link)->CloseAsked();
    }
    // Windows pass the focus on themselves.
    bool focusNextPrevChild(bool) override { return false; }

private:
    WindowLink m_link;
    bool m_hasBorder;
};

// What a window paints.
class ClientWidget final : public QWidget {
public:
    ClientWidget(QWidget* frame, WindowLink link) : QWidget(frame), m_link(std::move(link)) {
        setAttribute(Qt::WA_OpaquePaintEvent);
        setAttribute(Qt::WA_InputMethodEnabled);
        setMouseTracking(true);
    }

protected:
    bool event(QEvent* event) override {
        return overridesShortcut(m_link, *event) || QWidget::event(event);
    }
    void keyPressEvent(QKeyEvent* event) override { pass(&QtWindow::KeyPressed, event); }
    void keyReleaseEvent(QKeyEvent* event) override { pass(&QtWindow::KeyReleased, event); }
    void inputMethodEvent(QInputMethodEvent* event) override {
        pass(&QtWindow::TextComposed, event);
    }
    void mousePressEvent(QMouseEvent* event) override { pass(&QtWindow::MouseUsed, event); }
    void mouseReleaseEvent(QMouseEvent* event) override { pass(&QtWindow::MouseUsed, event); }
    void mouseDoubleClickEvent(QMouseEvent* event) override { pass(&QtWindow::MouseUsed, event); }
    void mouseMoveEvent(QMouseEvent* event) override { pass(&QtWindow::MouseUsed, event); }
    void wheelEvent(QWheelEvent* event) override { pass(&QtWindow::WheelTurned, event); }
    void contextMenuEvent(QContextMenuEvent* event) override { pass(&QtWindow::MenuAsked, event); }
    void paintEvent(QPaintEvent* event) override { pass(&QtWindow::Painted, event); }
    void focusInEvent(QFocusEvent* event) override {
        if (*m_link != nullptr) (*m_link)->FocusCame(event->reason());
    }
    void focusOutEvent(QFocusEvent* event) override {
        if (*m_link != nullptr) (*m_link)->FocusLeft(event->reason());
    }
    bool focusNextPrevChild(bool) override { return false; }

private:
    template <class Handed, class Event>
    void pass(void (QtWindow::*handler)(Handed&), Event* event) {
        if (*m_link != nullptr) {
            ((*m_link)->*handler)(*event);
        } else {
            event->ignore();
        }
    }

    WindowLink m_link;
};

// A scroll bar; the wheel belongs to the window.
class Bar final : public QScrollBar {
public:
    Bar(Qt::Orientation orientation, QWidget* frame, WindowLink link)
        : QScrollBar(orientation, frame), m_link(std::move(link)) {
        setFocusPolicy(Qt::NoFocus);
        hide();
    }

protected:
    void wheelEvent(QWheelEvent* event) override {
        if (*m_link != nullptr) (*m_link)->WheelTurned(*event);
    }

private:
    WindowLink m_link;
};

Qt::WindowFlags flagsOf(DWORD style) {
    if ((style & WS_POPUP) == 0) return Qt::Window;
    return Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus;
}

// The place for a new window: all of it and of its title bar on the screen if there is room, or
// else the left top corner.
CRect onScreen(const CRect& rect) {
    const QScreen* screen = QApplication::screenAt(QPoint(rect.left, rect.top));
    if (screen == nullptr) screen = QApplication::primaryScreen();
    if (screen == nullptr) return rect;
    return placedWithin(rect, toRect(screen->availableGeometry()),
                        QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight));
}

}  // namespace

bool overridesShortcut(const WindowLink& link, QEvent& event) {
    const bool isOurs = event.type() == QEvent::ShortcutOverride && *link != nullptr &&
                        (*link)->Client()->hasFocus() &&
                        (*link)->GoesBeforeShortcuts(static_cast<QKeyEvent&>(event));
    if (isOurs) event.accept();
    return isOurs;
}

QtWindow::QtWindow(const WindowSetup& setup)
    : m_owner(*setup.owner),
      m_link(std::make_shared<QtWindow*>(this)),
      m_isTopLevel(setup.parent == nullptr || (setup.style & WS_POPUP) != 0) {
    make_frame(setup);
    Qt::FocusPolicy policy = isTabEntry(m_owner) ? Qt::TabFocus : Qt::NoFocus;
    if (setup.isEdit) {
        m_edit = QtEdit::Make(m_frame, m_link, setup.style);
        m_client = &m_edit->Widget();
        m_edit->SetText(setup.text);
        policy = isTabEntry(m_owner) ? Qt::StrongFocus : Qt::ClickFocus;
    } else {
        m_client = new ClientWidget(m_frame, m_link);
    }
    m_client->setFocusPolicy(policy);
    QtWindowSystem::Get().Register(*m_client, *this);
    m_frame->setEnabled((setup.style & WS_DISABLED) == 0);
    const bool isOpened = m_isTopLevel && (setup.style & WS_POPUP) == 0;
    place_frame(isOpened ? onScreen(setup.rect) : setup.rect);
    LayOut();
}

void QtWindow::make_frame(const WindowSetup& setup) {
    const auto* const parent = dynamic_cast<QtNative*>(setup.parent);
    QWidget* const outside = parent != nullptr ? parent->Client() : nullptr;
    const Qt::WindowFlags flags = m_isTopLevel ? flagsOf(setup.style) : Qt::WindowFlags();
    m_frame = new Frame(outside, flags, m_link, setup.style);
    if (m_isTopLevel) {
        m_frame->setWindowTitle(toQString(setup.text.View()));
        m_frame->setAttribute(Qt::WA_ShowWithoutActivating, (setup.style & WS_POPUP) != 0);
    }
    // It stays so when its parent is shown.
    m_frame->hide();
}

QtWindow::~QtWindow() {
    *m_link = nullptr;
    if (m_frame == nullptr) return;
    if (m_client->hasFocus()) QtWindowSystem::Get().DropFocus();
    QtWindowSystem::Get().Forget(m_client);
    m_frame->hide();
    m_frame->deleteLater();
}

void QtWindow::Lost() {
    *m_link = nullptr;
    QtWindowSystem::Get().Forget(m_client);
    m_frame = nullptr;
    m_client = nullptr;
    m_bars = {nullptr, nullptr};
    m_edit.reset();
    windowLost(m_owner);
}

// Place and state.

void QtWindow::Move(const CRect& rect) {
    if (m_frame == nullptr) return;
    place_frame(rect);
    LayOut();
}

// A window on the screen has its place with its title bar, and its size without.
void QtWindow::place_frame(const CRect& rect) {
    m_frame->move(rect.left, rect.top);
    m_frame->resize(rect.Width(), rect.Height());
}

void QtWindow::FrameMoved() {
    const CRect rect = toRect(QRect(m_frame->pos(), m_frame->size()));
    const WindowLink link = m_link;
    if (m_isTopLevel && rect != windowPlace(m_owner)) windowMoved(m_owner, rect);
    if (*link != nullptr) LayOut();
}

void QtWindow::LayOut() {
    if (m_frame == nullptr) return;
    const CRect client = clientArea(m_owner);
    m_client->setGeometry(toQRect(client));
    if (m_bars[SB_VERT] != nullptr) {
        m_bars[SB_VERT]->setGeometry(client.right, client.top, GetSystemMetrics(SM_CXVSCROLL),
                                     client.Height());
    }
    if (m_bars[SB_HORZ] != nullptr) {
        m_bars[SB_HORZ]->setGeometry(client.left, client.bottom, client.Width(),
                                     GetSystemMetrics(SM_CYHSCROLL));
    }
}

void QtWindow::Show(bool show) {
    if (m_frame == nullptr) return;
    const WindowLink link = m_link;
    if (show) color_edit();
    if (*link != nullptr) m_frame->setVisible(show);
}

void QtWindow::Enable(bool enable) {
    if (m_frame != nullptr) m_frame->setEnabled(enable);
}

void QtWindow::Raise() {
    if (m_frame != nullptr) m_frame->raise();
}

void QtWindow::PlaceAfter(NativeWindow* sibling) {
    if (m_frame == nullptr) return;
    const auto* const front = dynamic_cast<QtNative*>(sibling);
    if (front != nullptr && front->Client() != nullptr) {
        m_frame->stackUnder(front->Outer());
        QWidget::setTabOrder(front->Client(), m_client);
    } else {
        m_frame->raise();
        if (QWidget* const parent = m_frame->parentWidget()) QWidget::setTabOrder(parent, m_client);
    }
}

void QtWindow::SetCursor(int shape) {
    if (m_client != nullptr && !m_edit) m_client->setCursor(cursorShape(shape));
}

void QtWindow::SetText(const CString& text) {
    if (m_edit) {
        m_edit->SetText(text);
    } else if (m_frame != nullptr && m_isTopLevel) {
        m_frame->setWindowTitle(toQString(text.View()));
    }
}

void QtWindow::SetFont(const LOGFONTA& font) {
    if (!m_edit) return;
    const int lineHeight = SizedFont(qtMetrics(font), font).Height();
    m_edit->SetFont(widgetFont(font), lineHeight);
}

void QtWindow::color_edit() {
    if (!m_edit) return;
    const WindowLink link = m_link;
    const std::optional<EditColors> colors = editColors(m_owner);
    if (colors && *link != nullptr && m_edit) {
        m_edit->SetColors(toQColor(colors->text), toQColor(colors->ground));
    }
}

void QtWindow::SettingsChanged() {
    LayOut();
    if (m_frame != nullptr) m_frame->update();
    color_edit();
}

CPoint QtWindow::ClientOrigin() const {
    return m_client != nullptr ? toPoint(m_client->mapToGlobal(QPointF())) : CPoint();
}

void QtWindow::ShowOutline(const CRect& rect) {
    if (m_client == nullptr) return;
    if (m_outline == nullptr) m_outline = new QRubberBand(QRubberBand::Rectangle, m_client);
    m_outline->setGeometry(toQRect(rect));
    m_outline->setVisible(!rect.IsRectEmpty());
}

void QtWindow::CloseAsked() {
    m_owner.SendMessage(WM_CLOSE);
}

NativeEdit* QtWindow::Edit() {
    return m_edit.get();
}

// Painting.

void QtWindow::RequestPaint(const CRect& rect) {
    if (m_client == nullptr) return;
    if (!m_edit) {
        m_client->update(toQRect(rect));
        return;
    }
    // Fields paint themselves; what may have changed are their colors and their frame.
    const WindowLink link = m_link;
    if (m_frame->isVisible()) color_edit();
    if (*link != nullptr && m_frame != nullptr) m_frame->update();
}

void QtWindow::PaintNow() {
    if (m_client == nullptr || m_edit || m_isPainting) return;
    m_client->repaint(toQRegion(invalidRegion(m_owner)));
}

void QtWindow::Scroll(int dx, int dy) {
    if (m_client == nullptr || m_edit) return;
    m_client->scroll(dx, dy, m_client->rect());
    // What lies in the window has moved along as a picture, and stays where it is.
    for (QObject* const object : m_client->children()) {
        auto* const child = qobject_cast<QWidget*>(object);
        if (child == nullptr || child->isWindow() || !child->isVisible()) continue;
        m_client->update(child->geometry().translated(dx, dy));
        child->update();
        for (QWidget* const inner : child->findChildren<QWidget*>()) inner->update();
    }
}

void QtWindow::Painted(QPaintEvent& event) {
    const WindowLink link = m_link;
    m_isPainting = true;
    {
        QPainter painter(m_client);
        PainterDevice device(painter);
        paintWindow(m_owner, device, toRegion(event.region()));
    }
    if (*link != nullptr) m_isPainting = false;
}

// Keyboard.

void QtWindow::KeyPressed(QKeyEvent& event) {
    // A key that a window inside has left to its dialog comes to those around it, too.
    if (isKeyOfHost(event) || CWnd::GetFocus() != &m_owner) {
        event.ignore();
        return;
    }
    Qt::KeyboardModifiers modifiers = event.modifiers();
    if (event.key() == Qt::Key_Backtab) modifiers |= Qt::ShiftModifier;
    const QtWindowSystem::InputScope scope(modifiers, &event);
    const KeyInput input = keyInputOf(event);
    if (input.isRefused) tessalink::MessageBeep(MB_OK);
    const bool isUsed =
        keyPressed(m_owner, input.key, input.characters, static_cast<UINT>(event.count()),
                   QtWindowSystem::Get().IsKeyHeld());
    event.setAccepted(isUsed || input.isRefused);
}

bool QtWindow::GoesBeforeShortcuts(const QKeyEvent& event) const {
    constexpr UINT cAny = DLGC_WANTALLKEYS | DLGC_WANTCHARS | DLGC_WANTARROWS;
    const auto code = static_cast<UINT>(m_owner.SendMessage(WM_GETDLGCODE));
    if (event.key() == Qt::Key_Escape) return (code & DLGC_WANTALLKEYS) != 0;
    return (code & cAny) != 0 && isPlainKey(event);
}

void QtWindow::KeyReleased(QKeyEvent& event) {
    event.ignore();
    if (CWnd::GetFocus() != &m_owner) return;
    const QtWindowSystem::InputScope scope(event.modifiers());
    m_owner.SendMessage(WM_KEYUP, keyInputOf(event).key, event.count());
}

void QtWindow::TextComposed(const QInputMethodEvent& event) {
    const std::optional<CString> text = fromQString(event.commitString());
    const WindowLink link = m_link;
    if (m_edit) {
        // The field shows what is being composed.
        QInputMethodEvent rest(text ? event.preeditString() : QString(), event.attributes());
        rest.setCommitString({}, event.replacementStart(), event.replacementLength());
        m_edit->BaseCompose(rest);
    }
    if (!text) tessalink::MessageBeep(MB_OK);
    if (text && *link != nullptr) charactersTyped(m_owner, text->View());
}

// Focus. That of our windows decides; the toolkit's follows it, and leads it when the user moves
// it.

void QtWindow::TakeFocus() {
    if (m_client != nullptr) m_client->setFocus(Qt::OtherFocusReason);
}

void QtWindow::FocusCame(Qt::FocusReason reason) {
    // Of the window itself the toolkit tells last, even if it has passed the focus on meanwhile.
    QtWindowSystem::Get().TellFocusSoon();
    if (m_edit) {
        m_part.reset();
        describeField(*m_client, m_owner.Accessible());
        m_frame->update();
    }
    if (QtWindowSystem::Get().IgnoresFocus() || CWnd::GetFocus() == &m_owner) return;
    const WindowLink link = m_link;
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) {
        m_owner.EnterByTab(reason == Qt::BacktabFocusReason);
    }
    if (*link != nullptr) focusMoved(&m_owner);
}

void QtWindow::FocusLeft(Qt::FocusReason reason) {
    if (m_edit) m_frame->update();
    const QtWindowSystem& system = QtWindowSystem::Get();
    if (system.IgnoresFocus() || CWnd::GetFocus() != &m_owner) return;
    // Menus come back. The window that has the focus now tells it itself.
    if (reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason) return;
    if (system.Focused() != nullptr) return;
    const QPointer<QWidget> entry =
        reason == Qt::ActiveWindowFocusReason ? QtWindowSystem::EntryOf(m_owner) : nullptr;
    focusMoved(nullptr);
    // Where the focus comes back to with the window; the field may be hidden then.
    if (entry != nullptr && CWnd::GetFocus() == nullptr && !entry->isActiveWindow()) {
        entry->setFocus();
    }
}

// Mouse.

void QtWindow::Capture(bool capture) {
    if (m_client == nullptr) return;
    if (capture) {
        m_client->grabMouse();
    } else {
        m_client->releaseMouse();
    }
}

void QtWindow::MouseUsed(QMouseEvent& event) {
    const UINT message = event.type() == QEvent::MouseMove ? WM_MOUSEMOVE : mouseMessage(event);
    event.setAccepted(message != 0);
    if (message == 0) return;
    const QtWindowSystem::InputScope scope(event.modifiers());
    mouseUsed(m_owner, message, mouseFlags(event.buttons(), event.modifiers()),
              toPoint(event.position()));
}

void QtWindow::WheelTurned(QWheelEvent& event) {
    const int delta = event.angleDelta().y();
    event.setAccepted(delta != 0);
    if (delta == 0) return;
    const short told = m_wheel.Told(delta, QApplication::wheelScrollLines());
    if (told == 0) return;
    const QtWindowSystem::InputScope scope(event.modifiers());
    const WPARAM wParam = MAKEWPARAM(mouseFlags(event.buttons(), event.modifiers()),
                                     static_cast<std::uint16_t>(told));
    event.setAccepted(mouseUsed(m_owner, WM_MOUSEWHEEL, wParam, toPoint(event.globalPosition())) !=
                      0);
}

void QtWindow::MenuAsked(QContextMenuEvent& event) {
    event.accept();
    m_owner.SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_owner.GetSafeHwnd()),
                        MAKELPARAM(event.globalX(), event.globalY()));
}

// Scroll bars.

void QtWindow::make_bar(int bar) {
    const auto orientation = bar == SB_VERT ? Qt::Vertical : Qt::Horizontal;
    auto* const made = new Bar(orientation, m_frame, m_link);
    m_bars[static_cast<std::size_t>(bar)] = made;
    const WindowLink link = m_link;
    QObject::connect(made, &QScrollBar::actionTriggered, made, [link, bar](int action) {
        if (*link != nullptr) (*link)->bar_acted(bar, action);
    });
    QObject::connect(made, &QScrollBar::sliderReleased, made, [link, made, bar] {
        if (*link == nullptr) return;
        QtWindow& window = **link;
        if (window.scroll(bar, SB_THUMBPOSITION, made->sliderPosition()) &&
            window.scroll(bar, SB_ENDSCROLL, 0)) {
            window.show_position(bar);
        }
    });
    // The bar's own menu sets the value.
    QObject::connect(made, &QScrollBar::valueChanged, made, [link, made, bar](int value) {
        if (*link == nullptr || (*link)->m_isMovingBar || made->isSliderDown()) return;
        if ((*link)->scroll(bar, SB_THUMBPOSITION, value)) (*link)->show_position(bar);
    });
}

bool QtWindow::scroll(int bar, UINT code, int position) {
    const WindowLink link = m_link;
    m_owner.SendMessage(bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL, scrollParam(code, position));
    return *link != nullptr;
}

void QtWindow::bar_acted(int bar, int action) {
    struct Request {
        int action;
        UINT code;
    };
    constexpr Request cRequests[] = {
        {QAbstractSlider::SliderSingleStepSub, SB_LINEUP},
        {QAbstractSlider::SliderSingleStepAdd, SB_LINEDOWN},
        {QAbstractSlider::SliderPageStepSub, SB_PAGEUP},
        {QAbstractSlider::SliderPageStepAdd, SB_PAGEDOWN},
        {QAbstractSlider::SliderToMinimum, SB_TOP},
        {QAbstractSlider::SliderToMaximum, SB_BOTTOM},
        {QAbstractSlider::SliderMove, SB_THUMBTRACK},
    };
    const auto* const request =
        std::find_if(std::begin(cRequests), std::end(cRequests),
                     [action](const Request& known) { return known.action == action; });
    if (request == std::end(cRequests)) return;
    const QScrollBar* const widget = m_bars[static_cast<std::size_t>(bar)];
    if (scroll(bar, request->code, widget->sliderPosition()) && !widget->isSliderDown()) {
        show_position(bar);
    }
}

void QtWindow::show_position(int bar) {
    QScrollBar* const widget = m_bars[static_cast<std::size_t>(bar)];
    const bool before = std::exchange(m_isMovingBar, true);
    widget->setValue(m_owner.GetScrollPos(bar));
    m_isMovingBar = before;
}

void QtWindow::SetScrollBar(int bar, bool isShown, const SCROLLINFO& info) {
    if (m_frame == nullptr || m_edit) return;
    QScrollBar*& widget = m_bars[static_cast<std::size_t>(bar)];
    if (widget == nullptr && isShown) make_bar(bar);
    if (widget == nullptr) return;
    const int page = static_cast<int>(std::min<UINT>(info.nPage, 0x7FFFFFFFU));
    const bool before = std::exchange(m_isMovingBar, true);
    widget->setRange(info.nMin, std::max(info.nMin, info.nMax - std::max(page - 1, 0)));
    widget->setPageStep(std::max(page, 1));
    if (!widget->isSliderDown()) widget->setValue(info.nPos);
    m_isMovingBar = before;
    widget->setVisible(isShown);
    LayOut();
}

// Accessibility.

void QtWindow::NotifyAccessible(AccessibleEvent event, int child, const CString& text) {
    // Fields tell of themselves.
    if (m_client == nullptr || m_edit) return;
    QtWindow* const focused = QtWindowSystem::Get().Focused();
    if (event == AccessibleEvent::Focus && focused != nullptr && focused->m_edit) {
        return focused->stand_for(child);
    }
    const bool isAnnouncement = event == AccessibleEvent::Announcement;
    if (isAnnouncement) m_announcement = text;
    // A part is described by it until it tells anything else.
    m_announced = isAnnouncement ? child : cNoAccessibleChild;
    tellAccessible(*this, event, child);
}

void QtWindow::stand_for(int part) {
    const AccessibleElement element = m_owner.Accessible();
    const bool isKnown = m_part
                             ? *m_part == part
                             : m_client->accessibleName() == toFieldText(element.name).simplified();
    m_part = part;
    if (isKnown) return;
    describeField(*m_client, element);
    tellFocus(m_owner);
}

}  // namespace tessalink::detail
