#pragma once

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <QWidget>
#include <QtTest>
#include <deque>
#include <map>
#include <memory>

#include "platform/qt/QtHost.h"
#include "platform/qt/UseQt.h"
#include "tests/support/ClockedSystem.h"
#include "tests/support/InputDriver.h"

namespace tessalink::test {

/// The driver of windows in the toolkit: its own events go to the widgets that a user would reach.
class QtDriver : public InputDriver {
public:
    QtDriver() {
        useQt();
        m_toolkit = &windowSystem();
        m_clocked = std::make_unique<ClockedSystem>(*m_toolkit);
        setWindowSystem(&*m_clocked);
        m_window.setGeometry(0, 0, cSize.width(), cSize.height());
        m_before = new QLineEdit(&m_window);
        m_before->setGeometry(0, 0, 100, cControl);
        m_holder = new WindowHolder(
            [this](UINT message, WPARAM, LPARAM record) {
                return message == WM_NOTIFY ? HostWindow::Answer(Told(record))
                                            : HostWindow::cNotHandled;
            },
            &m_window);
        m_holder->setGeometry(0, cControl, cSize.width(), cSize.height() - cControl);
        m_after = new QLineEdit(&m_window);
        m_after->setGeometry(200, 0, 100, cControl);
        m_window.show();
        m_window.activateWindow();
        m_isReady = QTest::qWaitForWindowActive(&m_window);
        m_before->setFocus();
        QtDriver::Pump();
    }
    ~QtDriver() override {
        delete m_holder;
        QtDriver::Pump();
        setWindowSystem(m_toolkit);
    }
    bool IsReady() const { return m_isReady; }

    CWnd& Host() override { return m_holder->Host(); }
    void PressKey(UINT key, Held held) override {
        Qt::KeyboardModifiers modifiers;
        modifiers.setFlag(Qt::ControlModifier, held.ctrl);
        modifiers.setFlag(Qt::ShiftModifier, held.shift);
        const bool isBacktab = key == VK_TAB && held.shift;
        QTest::keyClick(QApplication::focusWidget(), isBacktab ? Qt::Key_Backtab : KeyOf(key),
                        modifiers);
    }
    void Type(char ch) override { QTest::keyClick(QApplication::focusWidget(), ch); }
    void Repeat(char ch) override {
        QKeyEvent held(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QString(QLatin1Char(ch)), true);
        QApplication::sendEvent(QApplication::focusWidget(), &held);
    }
    void Click(CPoint point, bool isSecond) override {
        // By hand: the toolkit's own tester takes a corner for the middle.
        const QPointer<QWidget> target = Reached(point);
        Send(target, isSecond ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, point);
        Send(target, QEvent::MouseButtonRelease, point);
    }
    void Press(CPoint point) override { Send(Reached(point), QEvent::MouseButtonPress, point); }
    void Release(CPoint point) override {
        QWidget* const grabber = QWidget::mouseGrabber();
        Send(grabber != nullptr ? grabber : Reached(point), QEvent::MouseButtonRelease, point);
    }
    void Turn(CPoint point, int delta) override {
        // Only events of the system's own go up to the widgets around by themselves.
        for (QWidget* target = Reached(point); target != nullptr; target = target->parentWidget()) {
            const QPointF place = target->mapFrom(&m_window, QPointF(Inside(point)));
            QWheelEvent event(place, QPointF(point.x, point.y), {}, {0, delta}, {}, {},
                              Qt::NoScrollPhase, false);
            QApplication::sendEvent(target, &event);
            if (event.isAccepted()) return;
        }
    }
    // The pointer moves, and what is below it is told by the toolkit; at another scale its platform
    // without a screen takes pixels for units, and the driver tells it.
    void MoveMouse(CPoint point) override {
        if (m_window.devicePixelRatioF() == 1) return QCursor::setPos(point.x, point.y);
        m_clocked->PlaceCursor(point);
        QWidget* const grabber = QWidget::mouseGrabber();
        Send(grabber != nullptr ? grabber : Reached(point), QEvent::MouseMove, point);
    }
    bool Reaches(const CWnd& window, CPoint point) override {
        const QWidget* const target = Reached(point);
        return target != nullptr && target->parentWidget() == widgetOf(window);
    }
    // Without a screen the first window that was made gets the mouse.
    bool IsOnTip(CPoint) override { return false; }
    void Queue(std::function<void()> step) override {
        m_steps.push_back(std::move(step));
        if (m_steps.size() == 1) QTimer::singleShot(0, &m_window, [this] { Next(); });
    }
    std::string TipText(CPoint) override {
        for (const QWidget* const widget : QApplication::topLevelWidgets()) {
            const bool isTip = widget->windowType() == Qt::ToolTip && widget->isVisible();
            if (isTip) return widget->windowTitle().toStdString();
        }
        return "";
    }
    std::string Spoken(const CWnd& window) override {
        QWidget* const client = widgetOf(window)->childAt(5, 5);
        QAccessibleInterface* const shown = QAccessible::queryAccessibleInterface(client);
        return shown != nullptr ? shown->text(QAccessible::Description).toStdString() : "none";
    }
    void Scroll(CWnd& window, int bar, UINT code, int position) override {
        QScrollBar* const widget = BarOf(window, bar);
        const auto action = Actions().find(code);
        if (widget == nullptr || (code != SB_THUMBPOSITION && action == Actions().end())) {
            window.SendMessage(bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL,
                               MAKEWPARAM(code, static_cast<UINT>(position)));
        } else if (code == SB_THUMBPOSITION) {
            widget->setSliderDown(true);
            widget->setSliderPosition(position);
            widget->setSliderDown(false);
        } else {
            widget->triggerAction(action->second);
        }
    }
    void Resize(CWnd& window, CSize size) override {
        m_holder->resize(size.cx, size.cy);
        // Without a change of size nothing happens by itself.
        window.MoveWindow(CRect(CPoint(), size));
    }
    void Leave() override { QTest::mouseClick(m_after, Qt::LeftButton); }
    void Enter(CWnd& window, bool isBack) override {
        QLineEdit* const from = isBack ? m_after : m_before;
        from->setFocus();
        QTest::keyClick(from, isBack ? Qt::Key_Backtab : Qt::Key_Tab);
        // A window without room is no stop for the toolkit's Tab.
        if (window.IsChild(CWnd::GetFocus()) != 0) return;
        window.EnterByTab(isBack);
        window.SetFocus();
    }
    void Pump() override {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void Rest(UINT milliseconds) override { m_clocked->Advance(milliseconds); }

private:
    static constexpr QSize cSize{1000, 760};
    static constexpr int cControl = 24;

    static Qt::Key KeyOf(UINT key) {
        static const std::map<UINT, Qt::Key> keys = {
            {VK_RETURN, Qt::Key_Return}, {VK_UP, Qt::Key_Up},         {VK_DOWN, Qt::Key_Down},
            {VK_LEFT, Qt::Key_Left},     {VK_RIGHT, Qt::Key_Right},   {VK_HOME, Qt::Key_Home},
            {VK_END, Qt::Key_End},       {VK_TAB, Qt::Key_Tab},       {VK_BACK, Qt::Key_Backspace},
            {VK_DELETE, Qt::Key_Delete}, {VK_NEXT, Qt::Key_PageDown}, {VK_PRIOR, Qt::Key_PageUp},
            {VK_ESCAPE, Qt::Key_Escape},
        };
        return keys.at(key);
    }
    static const std::map<UINT, QAbstractSlider::SliderAction>& Actions() {
        static const std::map<UINT, QAbstractSlider::SliderAction> actions = {
            {SB_LINEUP, QAbstractSlider::SliderSingleStepSub},
            {SB_LINEDOWN, QAbstractSlider::SliderSingleStepAdd},
            {SB_PAGEUP, QAbstractSlider::SliderPageStepSub},
            {SB_PAGEDOWN, QAbstractSlider::SliderPageStepAdd},
            {SB_TOP, QAbstractSlider::SliderToMinimum},
            {SB_BOTTOM, QAbstractSlider::SliderToMaximum},
        };
        return actions;
    }
    static QScrollBar* BarOf(const CWnd& window, int bar) {
        const auto orientation = bar == SB_VERT ? Qt::Vertical : Qt::Horizontal;
        for (QScrollBar* const found :
             widgetOf(window)->findChildren<QScrollBar*>(Qt::FindDirectChildrenOnly)) {
            if (found->isVisible() && found->orientation() == orientation) return found;
        }
        return nullptr;
    }
    QPoint Inside(CPoint point) const { return m_window.mapFromGlobal(QPoint(point.x, point.y)); }
    /// The widget at a point of the screen.
    QWidget* Reached(CPoint point) {
        QWidget* const child = m_window.childAt(Inside(point));
        return child != nullptr ? child : &m_window;
    }
    void Send(const QPointer<QWidget>& target, QEvent::Type type, CPoint point) {
        if (target == nullptr) return;
        const bool isMove = type == QEvent::MouseMove;
        const bool isDown = !isMove && type != QEvent::MouseButtonRelease;
        const QPoint global(point.x, point.y);
        QMouseEvent event(type, target->mapFromGlobal(global), global,
                          isMove ? Qt::NoButton : Qt::LeftButton,
                          isDown ? Qt::LeftButton : Qt::NoButton, {});
        QApplication::sendEvent(target, &event);
    }
    void Next() {
        m_steps.front()();
        m_steps.pop_front();
        if (!m_steps.empty()) QTimer::singleShot(0, &m_window, [this] { Next(); });
    }
    WindowSystem* m_toolkit = nullptr;
    std::unique_ptr<ClockedSystem> m_clocked;
    std::deque<std::function<void()>> m_steps;
    QWidget m_window;
    QLineEdit* m_before = nullptr;
    WindowHolder* m_holder = nullptr;
    QLineEdit* m_after = nullptr;
    bool m_isReady = false;
};

}  // namespace tessalink::test
