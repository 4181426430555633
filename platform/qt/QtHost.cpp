#include "platform/qt/QtHost.h"

#include <QEvent>
#include <QPointer>
#include <utility>

#include "platform/qt/detail/QtWindowSystem.h"
#include "platform/windows/HostOwned.h"

namespace tessalink {

namespace {

// A widget of the host. What it lacks as a window of ours, it leaves to the host.
class HostNative final : public QObject, public HostOwned<detail::QtNative> {
public:
    HostNative(CWnd& owner, QWidget& widget) : m_owner(owner), m_widget(&widget) {
        widget.installEventFilter(this);
        connect(&widget, &QObject::destroyed, this, [this] { windowLost(m_owner); });
    }

    void TakeFocus() override {
        if (m_widget != nullptr && m_widget->focusPolicy() != Qt::NoFocus) {
            m_widget->setFocus();
        } else {
            detail::QtWindowSystem::Get().DropFocus();
        }
    }
    CPoint ClientOrigin() const override {
        const QPoint origin = m_widget != nullptr ? m_widget->mapToGlobal(QPoint()) : QPoint();
        return {origin.x(), origin.y()};
    }
    bool PassFocusOn(CWnd& from, bool previous) override {
        return detail::QtWindowSystem::Get().MoveOn(from, previous);
    }

    QWidget* Client() const override { return m_widget; }
    QWidget* Outer() const override { return m_widget; }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Resize && m_widget != nullptr) {
            windowMoved(m_owner, CRect(0, 0, m_widget->width(), m_widget->height()));
        }
        return QObject::eventFilter(object, event);
    }

private:
    CWnd& m_owner;
    QPointer<QWidget> m_widget;
};

constexpr QSize cHolderSize(400, 300);

}  // namespace

HostWindow::HostWindow(QWidget& widget, Handler handler) : HostParent(std::move(handler)) {
    adoptNative(*this, std::make_unique<HostNative>(*this, widget),
                CRect(0, 0, widget.width(), widget.height()));
}

WindowHolder::WindowHolder(HostWindow::Handler handler, QWidget* parent)
    : QWidget(parent),
      m_sizeHint(cHolderSize),
      m_host(std::make_unique<HostWindow>(*this, std::move(handler))) {}

WindowHolder::~WindowHolder() = default;

void WindowHolder::SetSizeHint(QSize size) {
    m_sizeHint = size;
    updateGeometry();
}

void WindowHolder::resizeEvent(QResizeEvent*) {
    fill();
}

void WindowHolder::showEvent(QShowEvent*) {
    fill();
}

void WindowHolder::fill() {
    if (CWnd* const window = m_host->GetChild(0)) {
        window->MoveWindow(CRect(0, 0, width(), height()));
    }
}

bool commitEntries(const QWidget& widget) {
    return HostParent::CommitAll([&widget](const HostParent& parent) {
        const QWidget* const host = widgetOf(parent);
        return host == &widget || (host != nullptr && widget.isAncestorOf(host));
    });
}

QWidget* widgetOf(const CWnd& window) {
    const detail::QtNative* const native = detail::toolkitNative(window);
    return native != nullptr ? native->Outer() : nullptr;
}

}  // namespace tessalink
