#include "platform/qt/detail/QtWindowSystem.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QEventLoop>
#include <QKeyEvent>
#include <QScreen>
#include <QStyle>
#include <QTimerEvent>
#include <algorithm>
#include <utility>

#include "platform/qt/PainterDevice.h"
#include "platform/qt/detail/QtAccessible.h"
#include "platform/qt/detail/QtColors.h"
#include "platform/qt/detail/QtText.h"
#include "platform/qt/detail/QtWindow.h"
#include "platform/windows/SystemParts.h"

namespace tessalink::detail {

namespace {

const QEvent::Type cDispatchPosted = static_cast<QEvent::Type>(QEvent::registerEventType());
const QEvent::Type cSettingsChanged = static_cast<QEvent::Type>(QEvent::registerEventType());
const QEvent::Type cTellFocus = static_cast<QEvent::Type>(QEvent::registerEventType());

void postOnce(QObject& target, QEvent::Type type, bool& isPosted) {
    if (!std::exchange(isPosted, true)) QCoreApplication::postEvent(&target, new QEvent(type));
}

// What windows measure texts with: the measures that they are painted with.
class Measures final : public NullDevice {
public:
    using NullDevice::NullDevice;
    const TextMetricsSource& TextMetrics() const override { return toolkitTextMetrics(); }
};

bool takesTab(const QWidget& widget, const QWidget& entry) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() &&
           widget.isVisibleTo(widget.window()) && widget.focusProxy() == nullptr &&
           !entry.isAncestorOf(&widget);
}

}  // namespace

QtNative* toolkitNative(const CWnd& window) {
    return dynamic_cast<QtNative*>(nativeOf(window));
}

QtWindowSystem::QtWindowSystem() : m_screen(fixedScreen()) {}

QtWindowSystem& QtWindowSystem::Get() {
    // Not destroyed: windows may end after it otherwise.
    static auto* const system = new QtWindowSystem;
    return *system;
}

void QtWindowSystem::Start() {
    if (m_application == QCoreApplication::instance()) return;
    m_application = QCoreApplication::instance();
    m_application->installEventFilter(this);
    m_colors.clear();
    m_hasQuit = false;
    describeWindows();
}

std::unique_ptr<NativeWindow> QtWindowSystem::CreateNative(const WindowSetup& setup) {
    return std::make_unique<QtWindow>(setup);
}

// Focus.

QtWindow* QtWindowSystem::WindowOf(const QWidget* client) const {
    const auto found = m_windows.find(client);
    return found != m_windows.end() ? found->second : nullptr;
}

QtWindow* QtWindowSystem::Focused() const {
    return WindowOf(QApplication::focusWidget());
}

QWidget* QtWindowSystem::EntryOf(const CWnd& window) {
    const QtNative* const native = toolkitNative(tabEntryOf(window));
    return native != nullptr ? native->Client() : nullptr;
}

void QtWindowSystem::DropFocus() {
    if (Focused() == nullptr) return;
    const bool before = std::exchange(m_ignoresFocus, true);
    QApplication::focusWidget()->clearFocus();
    m_ignoresFocus = before;
}

bool QtWindowSystem::MoveOn(const CWnd& from, bool isBack) {
    QWidget* const entry = EntryOf(from);
    if (entry == nullptr) return false;
    const auto next = [isBack](const QWidget* widget) {
        return isBack ? widget->previousInFocusChain() : widget->nextInFocusChain();
    };
    QWidget* target = next(entry);
    while (target != entry && !takesTab(*target, *entry)) target = next(target);
    if (target == entry && Focused() != nullptr && Focused()->Client() == entry) return false;
    target->setFocus(isBack ? Qt::BacktabFocusReason : Qt::TabFocusReason);
    if (Focused() == nullptr) focusMoved(nullptr);
    return true;
}

// The system.

COLORREF QtWindowSystem::Color(int index) const {
    const auto known = m_colors.find(index);
    if (known != m_colors.end()) return known->second;
    return m_colors.insert({index, systemColor(QApplication::palette(), index)}).first->second;
}

int QtWindowSystem::Metric(int index) const {
    const QScreen* const screen = QApplication::primaryScreen();
    const QSize size = screen != nullptr ? screen->size() : QSize();
    const QStyle* const style = QApplication::style();
    switch (index) {
        case SM_CXSCREEN:
            return size.width();
        case SM_CYSCREEN:
            return size.height();
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
            return style->pixelMetric(QStyle::PM_ScrollBarExtent);
        case SM_CXBORDER:
        case SM_CYBORDER:
            return 1;
        case SM_CYMENU:
            return style->pixelMetric(QStyle::PM_TitleBarHeight);
        default:
            return 0;
    }
}

CRect QtWindowSystem::ScreenAt(CPoint point) const {
    const QScreen* const screen = QApplication::screenAt(QPoint(point.x, point.y));
    if (screen == nullptr) return WindowSystem::ScreenAt(point);
    const QRect place = screen->geometry();
    return CRect(CPoint(place.left(), place.top()), CSize(place.width(), place.height()));
}

int QtWindowSystem::WheelLines() const {
    return QApplication::wheelScrollLines();
}

QtWindowSystem::InputScope::InputScope(Qt::KeyboardModifiers modifiers, QKeyEvent* key)
    : m_modifiersBefore(std::exchange(Get().m_modifiers, modifiers)),
      m_keyBefore(std::exchange(Get().m_key, key)) {}

QtWindowSystem::InputScope::~InputScope() {
    Get().m_modifiers = m_modifiersBefore;
    Get().m_key = m_keyBefore;
}

Qt::KeyboardModifiers QtWindowSystem::Modifiers() const {
    return m_modifiers.value_or(QApplication::keyboardModifiers());
}

bool QtWindowSystem::IsKeyDown(int key) const {
    switch (static_cast<UINT>(key)) {
        case VK_SHIFT:
            return Modifiers().testFlag(Qt::ShiftModifier);
        case VK_CONTROL:
            return Modifiers().testFlag(Qt::ControlModifier);
        case VK_MENU:
            return Modifiers().testFlag(Qt::AltModifier);
        default:
            return false;
    }
}

CPoint QtWindowSystem::CursorPosition() const {
    const QPoint place = QCursor::pos();
    return {place.x(), place.y()};
}

bool QtWindowSystem::ClipboardText(CString& text) const {
    const auto found = fromQString(m_pasted ? *m_pasted : QApplication::clipboard()->text());
    text = found.value_or(CString());
    return !text.IsEmpty();
}

// Timers and messages.

void QtWindowSystem::StartTimer(int number, UINT period) {
    const int timer = startTimer(static_cast<int>(std::clamp(period, 1U, 0x7FFFFFFFU)));
    m_timers[timer] = number;
    m_numbers[number] = timer;
}

void QtWindowSystem::StopTimer(int number) {
    const auto timer = m_numbers.find(number);
    if (timer == m_numbers.end()) return;
    killTimer(timer->second);
    m_timers.erase(timer->second);
    m_numbers.erase(timer);
}

void QtWindowSystem::timerEvent(QTimerEvent* event) {
    const auto timer = m_timers.find(event->timerId());
    if (timer != m_timers.end()) timerElapsed(timer->second);
}

void QtWindowSystem::WakeUp() {
    postOnce(*this, cDispatchPosted, m_isWoken);
}

void QtWindowSystem::TellFocusSoon() {
    if (QAccessible::isActive()) postOnce(*this, cTellFocus, m_tellsFocus);
}

void QtWindowSystem::settings_changed_soon() {
    m_colors.clear();
    postOnce(*this, cSettingsChanged, m_settingsChange);
}

void QtWindowSystem::customEvent(QEvent* event) {
    if (event->type() == cDispatchPosted) {
        m_isWoken = false;
        dispatchPosted();
    } else if (event->type() == cTellFocus) {
        m_tellsFocus = false;
        if (const QtWindow* const focused = Focused()) tellFocus(focused->Owner());
    } else if (event->type() == cSettingsChanged) {
        m_settingsChange = false;
        std::vector<QtWindow*> windows;
        windows.reserve(m_windows.size());
        for (const auto& [client, window] : m_windows) windows.push_back(window);
        for (QtWindow* window : windows) window->SettingsChanged();
        settingsChanged();
    }
}

bool QtWindowSystem::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
        m_heldKey.See(*static_cast<QKeyEvent*>(event));
    }
    if (object == m_application) {
        switch (event->type()) {
            case QEvent::ApplicationPaletteChange:
            case QEvent::ApplicationFontChange:
            case QEvent::StyleChange:
                settings_changed_soon();
                break;
            case QEvent::Quit:
                m_hasQuit = true;
                break;
            default:
                break;
        }
    }
    return QObject::eventFilter(object, event);
}

bool QtWindowSystem::RunUntil(const std::function<bool()>& isDone) {
    QEventLoop loop;
    m_hasQuit = false;
    while (!isDone()) {
        if (m_hasQuit) return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

}  // namespace tessalink::detail
