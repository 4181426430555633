#include "apps/desk/windows/MessageBar.h"

#include <QAccessible>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace tessalink::desk {

namespace {

/// Longer messages are shown in a window of their own, when it is asked for.
constexpr int cMostLines = 4;
constexpr QSize cWholeSize(640, 360);

QStyle::StandardPixmap iconOf(MessageBar::Kind kind) {
    switch (kind) {
        case MessageBar::Kind::Warning:
            return QStyle::SP_MessageBoxWarning;
        case MessageBar::Kind::Fault:
            return QStyle::SP_MessageBoxCritical;
        case MessageBar::Kind::Information:
            break;
    }
    return QStyle::SP_MessageBoxInformation;
}

}  // namespace

MessageBar::MessageBar(QWidget* parent)
    : QFrame(parent),
      m_icon(new QLabel(this)),
      m_text(new QLabel(this)),
      m_more(new QPushButton(tr("Show all..."), this)),
      m_close(new QToolButton(this)) {
    setObjectName("messageBar");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::ToolTipBase);
    m_text->setObjectName("messageText");
    m_text->setForegroundRole(QPalette::ToolTipText);
    m_text->setWordWrap(true);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_more->setObjectName("messageMore");
    m_close->setObjectName("messageClose");
    m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::TabFocus);
    m_close->setAccessibleName(tr("Close the message"));
    m_close->setToolTip(tr("Close the message"));
    auto* const line = new QHBoxLayout(this);
    line->addWidget(m_icon, 0, Qt::AlignTop);
    line->addWidget(m_text, 1);
    line->addWidget(m_more, 0, Qt::AlignTop);
    line->addWidget(m_close, 0, Qt::AlignTop);
    connect(m_more, &QPushButton::clicked, this, &MessageBar::show_whole);
    connect(m_close, &QToolButton::clicked, this, &MessageBar::Clear);
    hide();
}

void MessageBar::Say(Kind kind, const QString& text) {
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_icon->setPixmap(style()->standardIcon(iconOf(kind)).pixmap(side, side));
    m_kind = kind;
    m_whole = text;
    const QStringList lines = text.split('\n');
    const bool isLong = lines.size() > cMostLines;
    m_text->setText(isLong ? lines.mid(0, cMostLines).join('\n') + " ..." : text);
    m_text->setAccessibleName(m_text->text());
    m_more->setVisible(isLong);
    show();
    QAccessibleEvent alert(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void MessageBar::Clear() {
    const bool hadFocus = m_close->hasFocus();
    hide();
    m_text->clear();
    m_whole.clear();
    if (hadFocus && parentWidget() != nullptr) parentWidget()->setFocus();
}

void MessageBar::ClearWarning() {
    if (m_kind == Kind::Warning) Clear();
}

void MessageBar::show_whole() {
    QDialog dialog(window());
    dialog.setObjectName("messageDialog");
    dialog.setWindowTitle(tr("Message"));
    dialog.resize(cWholeSize);
    auto* const text = new QPlainTextEdit(m_whole, &dialog);
    text->setObjectName("messageWhole");
    text->setAccessibleName(tr("Message"));
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    auto* const column = new QVBoxLayout(&dialog);
    column->addWidget(text);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    dialog.exec();
}

}  // namespace tessalink::desk
