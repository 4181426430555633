#include "platform/qt/UseQt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <clocale>
#include <iterator>
#include <optional>
#include <string>

#include "platform/base/CodePage.h"
#include "platform/base/HostServices.h"
#include "platform/qt/detail/PrinterReference.h"
#include "platform/qt/detail/QtWindowSystem.h"
#include "platform/windows/SystemParts.h"
#include "platform/windows/WindowSystem.h"

namespace tessalink {

namespace {

constexpr UINT cButtonsMask = 0x0F;
constexpr UINT cIconMask = 0xF0;

constexpr QMessageBox::StandardButtons cButtons[] = {
    QMessageBox::Ok,
    QMessageBox::Ok | QMessageBox::Cancel,
    QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore,
    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
    QMessageBox::Yes | QMessageBox::No,
    QMessageBox::Retry | QMessageBox::Cancel,
};

struct Answer {
    QMessageBox::StandardButton button;
    int id;
};
constexpr Answer cAnswers[] = {
    {QMessageBox::Ok, IDOK},       {QMessageBox::Cancel, IDCANCEL}, {QMessageBox::Abort, IDABORT},
    {QMessageBox::Retry, IDRETRY}, {QMessageBox::Ignore, IDIGNORE}, {QMessageBox::Yes, IDYES},
    {QMessageBox::No, IDNO},
};

QMessageBox::Icon iconOf(UINT flags) {
    switch (flags & cIconMask) {
        case MB_ICONERROR:
            return QMessageBox::Critical;
        case MB_ICONQUESTION:
            return QMessageBox::Question;
        case MB_ICONWARNING:
            return QMessageBox::Warning;
        case MB_ICONINFORMATION:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

// The keys of a message's buttons.
class MessageKeys final : public QObject {
public:
    explicit MessageKeys(const QMessageBox& box) {
        for (QAbstractButton* const button : box.buttons()) button->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override {
        return event->type() == QEvent::KeyPress &&
               m_typed.Keeps(kindOf(*static_cast<QKeyEvent*>(event)),
                             detail::QtWindowSystem::Get().IsKeyHeld());
    }

private:
    static TypedAhead::Key kindOf(const QKeyEvent& key) {
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter)
            return TypedAhead::Key::Return;
        const bool isText = !key.text().isEmpty() && key.text().front().isPrint();
        return isText ? TypedAhead::Key::Text : TypedAhead::Key::Other;
    }

    TypedAhead m_typed;
};

int showMessage(const char* text, UINT flags) {
    QWidget* const before = QApplication::activeWindow();
    const UINT buttons = flags & cButtonsMask;
    QMessageBox box(before);
    box.setIcon(iconOf(flags));
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(toUtf8(text)));
    box.setStandardButtons(cButtons[buttons < std::size(cButtons) ? buttons : 0]);
    // Who keys from paper does not see it.
    if (box.icon() != QMessageBox::NoIcon) MessageBeep(flags & cIconMask);
    std::optional<MessageKeys> keys;
    if (buttons == MB_OK) keys.emplace(box);
    const int pressed = box.exec();
    // Some window systems leave no window active.
    if (before != nullptr && before->isVisible()) before->activateWindow();
    for (const Answer& answer : cAnswers) {
        if (answer.button == pressed) return answer.id;
    }
    return IDCANCEL;
}

}  // namespace

void useQt() {
    std::setlocale(LC_NUMERIC, "C");
    HostServices services = hostServices();
    services.defaultPrinter = detail::defaultPrinter;
    if (qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr) {
        services.messageBox = showMessage;
        services.beep = [](UINT) { QApplication::beep(); };
        detail::QtWindowSystem::Get().Start();
        setWindowSystem(&detail::QtWindowSystem::Get());
    }
    setHostServices(std::move(services));
}

}  // namespace tessalink
