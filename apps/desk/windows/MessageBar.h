#pragma once

#include <QFrame>

class QLabel;
class QPushButton;
class QToolButton;

namespace tessalink::desk {

/// A line above a page that says what has happened and what to do, in place of boxes that would
/// catch keys. It takes no focus when it appears; assistive technology reads it out.
class MessageBar : public QFrame {
    Q_OBJECT

public:
    enum class Kind { Information, Warning, Fault };

    explicit MessageBar(QWidget* parent = nullptr);

    void Say(Kind kind, const QString& text);
    /// Takes the message away.
    void Clear();
    /// The same for a warning, which is over when something was kept.
    void ClearWarning();
    /// All of the message; of a long one the line shows the beginning, and a button the rest.
    QString Text() const { return m_whole; }

private:
    void show_whole();

    Kind m_kind = Kind::Information;
    QString m_whole;
    QLabel* m_icon;
    QLabel* m_text;
    QPushButton* m_more;
    QToolButton* m_close;
};

}  // namespace tessalink::desk
