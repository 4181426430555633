#include "platform/qt/detail/QtAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QStringList>
#include <QWidget>
#include <map>

#include "platform/qt/detail/QtText.h"
#include "platform/qt/detail/QtWindow.h"

namespace tessalink::detail {

namespace {

QtWindow* windowOf(const QObject* client) {
    return QtWindowSystem::Get().WindowOf(qobject_cast<const QWidget*>(client));
}

QAccessible::Role roleOf(AccessibleRole role) {
    switch (role) {
        case AccessibleRole::Form:
            return QAccessible::Form;
        case AccessibleRole::List:
            return QAccessible::List;
        case AccessibleRole::Graph:
            return QAccessible::Chart;
        case AccessibleRole::EditableText:
            return QAccessible::EditableText;
        case AccessibleRole::CheckGroup:
        case AccessibleRole::RadioGroup:
            return QAccessible::Grouping;
        case AccessibleRole::ListItem:
            return QAccessible::ListItem;
        case AccessibleRole::GraphPoint:
            return QAccessible::Graphic;
        case AccessibleRole::Tip:
            return QAccessible::ToolTip;
        case AccessibleRole::Client:
            break;
    }
    return QAccessible::Client;
}

QString textOf(const AccessibleElement& element, QAccessible::Text kind) {
    switch (kind) {
        case QAccessible::Name:
            return toFieldText(element.name);
        case QAccessible::Value:
            return toFieldText(element.value);
        case QAccessible::Description: {
            QStringList parts;
            if (!element.description.IsEmpty()) parts << toFieldText(element.description);
            // The toolkit has no states for these.
            if (element.isRequired) parts << QStringLiteral("required");
            if (element.isInvalid) parts << QStringLiteral("invalid entry");
            return parts.join(QStringLiteral(", "));
        }
        default:
            return {};
    }
}

void addStates(const AccessibleElement& element, QAccessible::State& state) {
    state.readOnly = element.isReadOnly;
    state.editable = element.role == AccessibleRole::EditableText && !element.isReadOnly;
    state.disabled = element.isDisabled;
    state.focusable = !element.isDisabled;
    state.focused = element.isFocused;
}

// A part of a window that is no window.
class PartInterface final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    PartInterface(QObject* client, int index) : m_client(client), m_index(index) {}

    bool isValid() const override {
        const QtWindow* const window = windowOf(m_client);
        return window != nullptr && m_index < window->Owner().AccessibleChildCount();
    }
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_client);
    }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessible::Role role() const override { return roleOf(element().role); }
    QString text(QAccessible::Text kind) const override { return textOf(element(), kind); }
    void setText(QAccessible::Text, const QString&) override {}
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        addStates(element(), state);
        return state;
    }
    QRect rect() const override {
        const CRect place = element().rect;
        const auto* const widget = qobject_cast<const QWidget*>(m_client);
        return {widget->mapToGlobal(QPoint(place.left, place.top)),
                QSize(place.Width(), place.Height())};
    }

    QStringList actionNames() const override { return {setFocusAction(), pressAction()}; }
    void doAction(const QString&) override {
        if (isValid()) windowOf(m_client)->Owner().ChooseAccessibleChild(m_index);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }

private:
    AccessibleElement element() const {
        return isValid() ? windowOf(m_client)->Owner().AccessibleChild(m_index)
                         : AccessibleElement();
    }

    QObject* m_client;  // outlives it: the window's interface deletes its parts
    int m_index;
};

// A window, with its parts as its first children and the windows in it after these.
class WindowInterface final : public QAccessibleWidget {
public:
    explicit WindowInterface(QWidget* client) : QAccessibleWidget(client, QAccessible::Client) {}
    ~WindowInterface() override {
        for (const auto& [index, id] : m_parts) QAccessible::deleteAccessibleInterface(id);
    }

    QAccessible::Role role() const override { return roleOf(element().role); }
    QString text(QAccessible::Text kind) const override {
        const QtWindow* const window = windowOf(object());
        QString own = textOf(element(), kind);
        if (kind == QAccessible::Description && own.isEmpty() && window != nullptr) {
            own = toFieldText(window->Announcement());
        }
        return own;
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        addStates(element(), state);
        return state;
    }
    int childCount() const override { return part_count() + QAccessibleWidget::childCount(); }
    QAccessibleInterface* child(int index) const override {
        return index >= 0 && index < part_count() ? part(index)
                                                  : QAccessibleWidget::child(index - part_count());
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        for (const auto& [index, id] : m_parts) {
            if (QAccessible::accessibleInterface(id) == child) return index;
        }
        const int index = QAccessibleWidget::indexOfChild(child);
        return index < 0 ? -1 : index + part_count();
    }
    QAccessibleInterface* focusChild() const override {
        const QtWindow* const window = windowOf(object());
        const int focused = window != nullptr ? window->Owner().AccessibleFocusChild() : -1;
        const bool isPart = focused >= 0 && focused < part_count();
        return isPart ? part(focused) : QAccessibleWidget::focusChild();
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int i = 0; i < part_count(); ++i) {
            if (part(i)->rect().contains(x, y)) return part(i);
        }
        return QAccessibleWidget::childAt(x, y);
    }

private:
    AccessibleElement element() const {
        const QtWindow* const window = windowOf(object());
        return window != nullptr ? window->Owner().Accessible() : AccessibleElement();
    }
    int part_count() const {
        const QtWindow* const window = windowOf(object());
        return window != nullptr ? window->Owner().AccessibleChildCount() : 0;
    }
    // Parts are known by number for good: assistive technology keeps them.
    QAccessibleInterface* part(int index) const {
        const auto known = m_parts.find(index);
        if (known != m_parts.end()) return QAccessible::accessibleInterface(known->second);
        auto* const made = new PartInterface(object(), index);
        m_parts[index] = QAccessible::registerAccessibleInterface(made);
        return made;
    }

    mutable std::map<int, QAccessible::Id> m_parts;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    const QtWindow* const window = windowOf(object);
    if (window == nullptr || nativeOf(window->Owner())->Edit() != nullptr) return nullptr;
    return new WindowInterface(qobject_cast<QWidget*>(object));
}

}  // namespace

void describeWindows() {
    QAccessible::removeFactory(makeInterface);
    QAccessible::installFactory(makeInterface);
}

void tellAccessible(QtWindow& window, AccessibleEvent event, int child) {
    QWidget* const client = window.Client();
    const auto send = [&](QAccessibleEvent&& told) {
        told.setChild(child);
        QAccessible::updateAccessibility(&told);
    };
    switch (event) {
        case AccessibleEvent::Focus:
            return send(QAccessibleEvent(client, QAccessible::Focus));
        case AccessibleEvent::ValueChanged: {
            const CWnd& owner = window.Owner();
            const AccessibleElement element =
                child >= 0 ? owner.AccessibleChild(child) : owner.Accessible();
            return send(QAccessibleValueChangeEvent(client, toFieldText(element.value)));
        }
        case AccessibleEvent::StateChanged:
            return send(QAccessibleStateChangeEvent(client, QAccessible::State()));
        case AccessibleEvent::Announcement:
            send(QAccessibleEvent(client, QAccessible::DescriptionChanged));
            return send(QAccessibleEvent(client, QAccessible::Alert));
        case AccessibleEvent::ChildrenChanged:
            return send(QAccessibleEvent(client, QAccessible::ObjectReorder));
    }
}

}  // namespace tessalink::detail
