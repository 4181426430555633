#include "platform/qt/detail/QtAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>
#include <map>
#include <memory>

#include "platform/qt/detail/QtText.h"
#include "platform/qt/detail/QtWindow.h"
#include "platform/windows/SystemParts.h"

namespace tessalink::detail {

namespace {

QtWindow* windowOf(const QObject* client) {
    return QtWindowSystem::Get().WindowOf(qobject_cast<const QWidget*>(client));
}

// What a window says of a part, or of itself; an empty element when either is gone.
AccessibleElement elementOf(const QObject* client, int child) {
    const QtWindow* const window = windowOf(client);
    return accessibleElement(window != nullptr ? &window->Owner() : nullptr, child);
}

// What was to be spoken last, of a part or of the window itself.
QString announcement(const QObject* client, int child) {
    const QtWindow* const window = windowOf(client);
    return window != nullptr ? toFieldText(window->Announcement(child)) : QString();
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

QString descriptionOf(const AccessibleElement& element) {
    return toFieldText(accessibleDescription(element));
}

QString textOf(const AccessibleElement& element, QAccessible::Text kind) {
    switch (kind) {
        case QAccessible::Name:
            return toFieldText(element.name).simplified();
        case QAccessible::Value:
            return toFieldText(element.value);
        case QAccessible::Description:
            return descriptionOf(element);
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

// The value of a part as a text that can be read, not changed.
class ReadText final : public QAccessibleTextInterface {
public:
    ReadText(QObject* client, int part) : m_client(client), m_part(part) {}

    void selection(int, int* start, int* end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    QString text(int start, int end) const override {
        return value().mid(start, end < 0 ? end : end - start);
    }
    int characterCount() const override { return static_cast<int>(value().size()); }
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint&) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int* start, int* end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    QString value() const { return textOf(elementOf(m_client, m_part), QAccessible::Value); }

    QObject* m_client;
    int m_part;
};

// The interfaces of the parts of something, made when they are asked for. They are known by number
// for good: assistive technology keeps them.
class Parts {
public:
    // The one with a number, which `make` makes when it is new.
    template <class Make>
    QAccessibleInterface* Get(int index, Make make) {
        auto& part = m_parts[index];
        if (part == nullptr) {
            part.reset(make());
            part.get_deleter().id = QAccessible::registerAccessibleInterface(part.get());
        }
        return part.get();
    }
    // -1 for another one.
    int IndexOf(const QAccessibleInterface* shown) const {
        for (const auto& [index, part] : m_parts) {
            if (part.get() == shown) return index;
        }
        return -1;
    }

private:
    // The toolkit deletes what is registered, when it ends before all others.
    struct Unregister {
        QAccessible::Id id = 0;
        void operator()(QAccessibleInterface*) const { QAccessible::deleteAccessibleInterface(id); }
    };

    std::map<int, std::unique_ptr<QAccessibleInterface, Unregister>> m_parts;
};

QRect onScreen(const QObject* client, const CRect& place) {
    const auto* const widget = qobject_cast<const QWidget*>(client);
    return {widget->mapToGlobal(QPoint(place.left, place.top)),
            QSize(place.Width(), place.Height())};
}

// What parts of windows have in common: they are no objects of the toolkit, and may be pressed.
class PartBase : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override {}
    QStringList actionNames() const override { return {setFocusAction(), pressAction()}; }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
};

// A check box or radio button in a part of a window.
class ChoiceInterface final : public PartBase {
public:
    ChoiceInterface(QObject* client, int part, int index)
        : m_client(client), m_part(part), m_index(index) {}

    bool isValid() const override {
        return m_index < static_cast<int>(elementOf(m_client, m_part).choices.size());
    }
    QAccessibleInterface* parent() const override {
        QAccessibleInterface* const window = QAccessible::queryAccessibleInterface(m_client);
        return window != nullptr ? window->child(m_part) : nullptr;
    }
    QAccessible::Role role() const override {
        return elementOf(m_client, m_part).role == AccessibleRole::RadioGroup
                   ? QAccessible::RadioButton
                   : QAccessible::CheckBox;
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? toFieldText(choice().name) : QString();
    }
    QAccessible::State state() const override {
        const AccessibleElement group = elementOf(m_client, m_part);
        QAccessible::State state;
        state.invalid = !isValid();
        addStates(group, state);
        state.focused = group.isFocused && group.focusedChoice == m_index;
        state.checkable = true;
        state.checked = choice().isChecked;
        return state;
    }
    QRect rect() const override { return onScreen(m_client, choice().rect); }
    void doAction(const QString& action) override {
        if (!isValid()) return;
        CWnd& window = windowOf(m_client)->Owner();
        if (action == pressAction()) {
            window.ChooseAccessibleChoice(m_part, m_index);
        } else {
            window.ChooseAccessibleChild(m_part);
        }
    }

private:
    AccessibleChoice choice() const {
        const AccessibleElement group = elementOf(m_client, m_part);
        return m_index < static_cast<int>(group.choices.size())
                   ? group.choices[static_cast<std::size_t>(m_index)]
                   : AccessibleChoice();
    }

    QObject* m_client;  // outlives it, as it does its part
    int m_part;
    int m_index;
};

// A part of a window that is no window, with its choices as its children.
class PartInterface final : public PartBase {
public:
    PartInterface(QObject* client, int index)
        : m_client(client), m_index(index), m_text(client, index) {}

    bool isValid() const override {
        const QtWindow* const window = windowOf(m_client);
        return window != nullptr && m_index < window->Owner().AccessibleChildCount();
    }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_client);
    }
    QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) return nullptr;
        return m_choices.Get(index, [&] { return new ChoiceInterface(m_client, m_index, index); });
    }
    int childCount() const override { return static_cast<int>(element().choices.size()); }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return m_choices.IndexOf(child);
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int i = 0; i < childCount(); ++i) {
            if (child(i)->rect().contains(x, y)) return child(i);
        }
        return nullptr;
    }
    QAccessibleInterface* focusChild() const override { return child(element().focusedChoice); }
    QAccessible::Role role() const override { return roleOf(element().role); }
    QString text(QAccessible::Text kind) const override {
        if (kind == QAccessible::Description) {
            QString announced = announcement(m_client, m_index);
            if (!announced.isEmpty()) return announced;
        }
        return textOf(element(), kind);
    }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invalid = !isValid();
        addStates(element(), state);
        return state;
    }
    QRect rect() const override { return onScreen(m_client, element().rect); }
    void doAction(const QString&) override {
        if (isValid()) windowOf(m_client)->Owner().ChooseAccessibleChild(m_index);
    }
    void* interface_cast(QAccessible::InterfaceType type) override {
        const bool isText =
            type == QAccessible::TextInterface && element().role == AccessibleRole::EditableText;
        return isText ? static_cast<QAccessibleTextInterface*>(&m_text)
                      : PartBase::interface_cast(type);
    }

private:
    AccessibleElement element() const { return elementOf(m_client, m_index); }

    QObject* m_client;  // outlives it: the window's interface deletes its parts
    int m_index;
    ReadText m_text;
    mutable Parts m_choices;
};

// A window, with its parts as its first children and the windows in it after these.
class WindowInterface final : public QAccessibleWidget {
public:
    explicit WindowInterface(QWidget* client) : QAccessibleWidget(client, QAccessible::Client) {}

    QAccessible::Role role() const override { return roleOf(element().role); }
    QString text(QAccessible::Text kind) const override {
        const QString own = textOf(element(), kind);
        return kind == QAccessible::Description && own.isEmpty()
                   ? announcement(object(), cNoAccessibleChild)
                   : own;
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
        const int known = m_parts.IndexOf(child);
        if (known >= 0) return known;
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
        const QtWindow* const window = windowOf(object());
        const QPoint point = widget()->mapFromGlobal(QPoint(x, y));
        const int found = window != nullptr && widget()->rect().contains(point)
                              ? window->Owner().AccessibleChildAt(CPoint(point.x(), point.y()))
                              : cNoAccessibleChild;
        if (found >= 0 && found < part_count()) return part(found);
        return QAccessibleWidget::childAt(x, y);
    }

private:
    AccessibleElement element() const { return elementOf(object(), cNoAccessibleChild); }
    int part_count() const {
        const QtWindow* const window = windowOf(object());
        return window != nullptr ? window->Owner().AccessibleChildCount() : 0;
    }
    QAccessibleInterface* part(int index) const {
        return m_parts.Get(index, [&] { return new PartInterface(object(), index); });
    }

    mutable Parts m_parts;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    const QtWindow* const window = windowOf(object);
    if (window == nullptr || nativeOf(window->Owner())->Edit() != nullptr) return nullptr;
    return new WindowInterface(qobject_cast<QWidget*>(object));
}

// Of a window, or of a part of it.
void tell(QAccessibleEvent&& event, int child) {
    event.setChild(child);
    QAccessible::updateAccessibility(&event);
}

// Of an interface: the event has no place for a child then.
void tell(QAccessibleEvent&& event) {
    QAccessible::updateAccessibility(&event);
}

void tellChecked(QWidget& client, int child, int count) {
    QAccessibleInterface* const window = QAccessible::queryAccessibleInterface(&client);
    QAccessibleInterface* const group = window != nullptr ? window->child(child) : nullptr;
    QAccessible::State changed;
    changed.checked = true;
    for (int i = 0; group != nullptr && i < count; ++i) {
        tell(QAccessibleStateChangeEvent(group->child(i), changed));
    }
}

void tellValue(QWidget& client, int child) {
    const AccessibleElement element = elementOf(&client, child);
    if (element.role == AccessibleRole::EditableText) {
        tell(QAccessibleTextUpdateEvent(&client, 0, {}, toFieldText(element.value)), child);
    } else {
        tell(QAccessibleEvent(&client, QAccessible::DescriptionChanged), child);
        tellChecked(client, child, static_cast<int>(element.choices.size()));
    }
}

void tellPartFocus(QWidget& client, int child) {
    QAccessibleInterface* const window = QAccessible::queryAccessibleInterface(&client);
    QAccessibleInterface* const part =
        window != nullptr && child >= 0 ? window->child(child) : nullptr;
    if (part != nullptr && part->focusChild() != nullptr) {
        tell(QAccessibleEvent(part->focusChild(), QAccessible::Focus));
    } else {
        tell(QAccessibleEvent(&client, QAccessible::Focus), child);
    }
}

}  // namespace

void describeWindows() {
    QAccessible::removeFactory(makeInterface);
    QAccessible::installFactory(makeInterface);
}

void tellAccessible(QtWindow& window, AccessibleEvent event, int child) {
    if (!QAccessible::isActive()) return;
    QWidget* const client = window.Client();
    QAccessible::State readOnly;
    readOnly.readOnly = true;
    switch (event) {
        case AccessibleEvent::Focus:
            return tellPartFocus(*client, child);
        case AccessibleEvent::ValueChanged:
            return tellValue(*client, child);
        case AccessibleEvent::StateChanged:
            return tell(QAccessibleStateChangeEvent(client, readOnly), child);
        case AccessibleEvent::Announcement:
            tell(QAccessibleEvent(client, QAccessible::DescriptionChanged), child);
            return tell(QAccessibleEvent(client, QAccessible::Alert), child);
        case AccessibleEvent::ChildrenChanged:
            return tell(QAccessibleEvent(client, QAccessible::ObjectReorder), child);
    }
}

void describeField(QWidget& field, const AccessibleElement& element) {
    field.setAccessibleName(textOf(element, QAccessible::Name));
    field.setAccessibleDescription(descriptionOf(element));
    if (QAccessibleInterface* const before = QAccessible::queryAccessibleInterface(&field)) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(before));
    }
}

void tellFocus(const CWnd& focused) {
    if (nativeOf(focused)->Edit() != nullptr) {
        return tell(QAccessibleEvent(toolkitNative(focused)->Client(), QAccessible::Focus));
    }
    const FocusedPart part = focusedPart(focused);
    if (part.window != nullptr) tellPartFocus(*toolkitNative(*part.window)->Client(), part.part);
}

}  // namespace tessalink::detail
