#include "apps/desk/windows/MessageBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace tessalink::desk {

namespace {

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
    m_close->setObjectName("messageClose");
    m_close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    m_close->setAutoRaise(true);
    m_close->setFocusPolicy(Qt::TabFocus);
    m_close->setAccessibleName(tr("Close the message"));
    m_close->setToolTip(tr("Close the message"));
    auto* const line = new QHBoxLayout(this);
    line->addWidget(m_icon, 0, Qt::AlignTop);
    line->addWidget(m_text, 1);
    line->addWidget(m_close, 0, Qt::AlignTop);
    connect(m_close, &QToolButton::clicked, this, &MessageBar::Clear);
    hide();
}

void MessageBar::Say(Kind kind, const QString& text) {
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_icon->setPixmap(style()->standardIcon(iconOf(kind)).pixmap(side, side));
    m_text->setText(text);
    m_text->setAccessibleName(text);
    show();
    QAccessibleEvent alert(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void MessageBar::Clear() {
    const bool hadFocus = m_close->hasFocus();
    hide();
    m_text->clear();
    if (hadFocus && parentWidget() != nullptr) parentWidget()->setFocus();
}

QString MessageBar::Text() const {
    return m_text->text();
}

}  // namespace tessalink::desk
