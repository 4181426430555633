#pragma once

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QSettings>
#include <QTimer>
#include <QtTest>
#include <functional>
#include <string>

#include "apps/desk/windows/MainWindow.h"
#include "apps/desk/windows/SampleFile.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace tessalink::desk::test {

inline QString instruments() {
    return QString(TESSALINK_SOURCE_DIR) + "/instruments";
}

/// The desk in a folder of its own, worked by real events.
class DeskDriver {
public:
    DeskDriver() { Start(); }

    /// The program again, over the same settings.
    void Start() {
        m_window.reset();
        m_settings = std::make_unique<QSettings>(Path("desk.ini"), QSettings::IniFormat);
        m_settings->setValue("initials", "AB");
        m_window = std::make_unique<MainWindow>(*m_settings);
        m_window->show();
        Activate();
    }
    void Activate() {
        m_window->activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &*m_window; }));
    }

    QString Path(const char* name) const { return QString::fromStdString(m_folder.Path(name)); }
    QString Sample() {
        const QString path = Path("sample.cases");
        if (!QFile::exists(path)) makeSample(path, instruments());
        return path;
    }
    MainWindow& Window() { return *m_window; }
    const TemporaryFolder& Folder() const { return m_folder; }

    template <class WIDGET>
    WIDGET& Find(const char* name) {
        auto* const found = m_window->findChild<WIDGET*>(name);
        if (found == nullptr) throw std::runtime_error(std::string("no ") + name);
        return *found;
    }
    /// Presses the shortcut of an action, as far as it can be worked.
    void Work(const char* name) {
        const QKeySequence keys = Find<QAction>(name).shortcut();
        ASSERT_FALSE(keys.isEmpty()) << name;
        const QKeyCombination combination = keys[0];
        QTest::keyClick(Focus(), combination.key(), combination.keyboardModifiers());
    }
    void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(Focus(), static_cast<Qt::Key>(key), modifiers);
    }
    void Type(const QString& text) {
        for (const QChar letter : text) {
            QTest::keyClick(Focus(), letter.toLatin1());
        }
    }
    /// Does something that opens a box, which `act` works and must close.
    void InBox(const std::function<void()>& open, const std::function<void(QWidget&)>& act) {
        bool isDone = false;
        QTimer::singleShot(0, &*m_window, [&] {
            QWidget* const box = QApplication::activeModalWidget();
            ASSERT_NE(box, nullptr);
            box->activateWindow();
            EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == box; }));
            act(*box);
            isDone = true;
            if (QWidget* const left = QApplication::activeModalWidget()) left->close();
        });
        open();
        EXPECT_TRUE(isDone);
        Activate();
    }
    QWidget* Focus() {
        QWidget* const focus = QApplication::focusWidget();
        return focus != nullptr ? focus : &*m_window;
    }
    /// What assistive technology is told of a list or form in a widget.
    QAccessibleInterface* Accessible(const char* name) {
        for (QWidget* const widget : Find<QWidget>(name).findChildren<QWidget*>()) {
            QAccessibleInterface* const one = QAccessible::queryAccessibleInterface(widget);
            const auto role = one->role();
            if (role == QAccessible::List || role == QAccessible::Form) return one;
        }
        throw std::runtime_error(std::string("no list or form in ") + name);
    }
    CaseSession& Session() {
        if (m_window->Session() == nullptr) throw std::runtime_error("no case is open");
        return *m_window->Session();
    }

private:
    TemporaryFolder m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<MainWindow> m_window;
};

}  // namespace tessalink::desk::test
