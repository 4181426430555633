#include "apps/desk/windows/Pictures.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <stdexcept>

#include "apps/desk/windows/CaseListPage.h"
#include "apps/desk/windows/DataActions.h"
#include "apps/desk/windows/MainWindow.h"
#include "apps/desk/windows/NewCaseDialog.h"
#include "apps/desk/windows/PageMaker.h"
#include "apps/desk/windows/ReportDialog.h"
#include "apps/desk/windows/SampleFile.h"

namespace tessalink::desk {

namespace {

constexpr QSize cWindow(1180, 760);
/// How long the pages of a report may take, and the drawing of the first ones.
constexpr int cPagesMilliseconds = 60'000;
constexpr int cDrawMilliseconds = 1000;
constexpr const char* cSampleName = "sample.cases";

/// Works the window by events, as an examiner would.
class Tour {
public:
    Tour(const QString& folder, const QString& instruments)
        : m_folder(folder),
          m_instruments(instruments),
          m_settings(m_work.filePath("desk.ini"), QSettings::IniFormat),
          m_window(m_settings) {
        m_settings.setValue("initials", "AB");
        m_window.resize(cWindow);
    }

    void Run() {
        m_window.show();
        m_window.activateWindow();
        save("1-start");
        const QString file = m_work.filePath(cSampleName);
        makeSample(file, m_instruments);
        m_window.OpenFile(file);
        save("2-list");
        find("p-10 five");
        begin_case();
        key_form();
        key_answers();
        key_twice();
        show_report();
        look_at("showTrail", "8-trail");
        look_at("deleteCases", "9-delete");
        m_window.ShowList();
        m_window.findChild<QComboBox*>("questionnaireFilter")->setCurrentIndex(1);
        look_at("batchReports", "reports");
        show_import();
        m_window.CloseFile();
    }

private:
    void settle() {
        if (QApplication::activeModalWidget() == nullptr) m_window.activateWindow();
        for (int i = 0; i < 3; ++i) QApplication::processEvents();
    }
    void save(const QString& name) { save_widget(name, m_window); }
    void save_widget(const QString& name, QWidget& widget) {
        settle();
        const QString path = m_folder + '/' + name + ".png";
        if (!widget.grab().toImage().convertToFormat(QImage::Format_RGB32).save(path)) {
            throw std::runtime_error(path.toStdString() + ": can't be written");
        }
    }
    void press(int key, const QString& text = {}) {
        QWidget* const focus = QApplication::focusWidget();
        if (focus == nullptr) return;
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier, text);
            QApplication::sendEvent(focus, &event);
        }
    }
    void type(const QString& text) {
        for (const QChar letter : text) press(letter.toUpper().unicode(), letter);
    }
    void work(const char* name) { m_window.findChild<QAction*>(name)->trigger(); }
    /// Lets an action open a box, looks at it and closes it.
    void look_at(const char* name, const QString& picture,
                 const std::function<void(QWidget&)>& act = {}) {
        look_at_box([&] { work(name); }, picture, act);
    }
    void look_at_box(const std::function<void()>& open, const QString& picture,
                     const std::function<void(QWidget&)>& act = {}) {
        QTimer soon;
        soon.setSingleShot(true);
        QObject::connect(&soon, &QTimer::timeout, &m_window, [&] {
            QWidget* const box = QApplication::activeModalWidget();
            if (box == nullptr) return;
            if (act) act(*box);
            save_widget(picture, *box);
            box->close();
        });
        soon.start();
        open();
        settle();
    }

    void find(const QString& words) {
        auto* const search = m_window.findChild<QLineEdit*>("search");
        search->setFocus();
        type(words);
        save("3-search");
        search->clear();
    }
    void begin_case() {
        look_at("newCase", "4-new-case",
                [](QWidget& box) { box.findChild<QLineEdit*>("newCaseId")->setText("P-108"); });
        const Questionnaire questionnaire = Questionnaire::Read(
            CString(std::string_view((m_instruments + "/bigfive").toStdString())));
        m_window.AddCase(questionnaire, "P-108");
        settle();
    }
    void key_form() {
        press(Qt::Key_Return);
        type("Lena Vogt");
        press(Qt::Key_Return);
        type("f");
        type("34");
        press(Qt::Key_Return);
        type("2026-03-12");
        press(Qt::Key_Return);
        save("5-form");
    }
    void key_answers() {
        work("focusAnswers");
        type("34251434253142534125342514342531425341253425143425");
        save("6-answers");
    }
    void key_twice() {
        work("beginSecondPass");
        type("34252");
        save("7-second-keying");
        work("endSecondPass");
    }

    /// The pages of the report, where LibreOffice makes them.
    void show_report() {
        work("showReport");
        auto* const dialog = m_window.findChild<ReportDialog*>("reportDialog");
        QElapsedTimer clock;
        clock.start();
        while (!dialog->Page().HasPages() && !PageMaker::FindProgram().isEmpty() &&
               clock.elapsed() < cPagesMilliseconds) {
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        // Pages are drawn in the background.
        clock.start();
        while (clock.elapsed() < cDrawMilliseconds) QApplication::processEvents();
        save_widget("report", *dialog);
        dialog->reject();
        settle();
    }

    void show_import() {
        const QString table = m_work.filePath("responses.csv");
        QFile file(table);
        if (!file.open(QIODevice::WriteOnly)) return;
        file.write("id,Name,I1,I2\nP-301,Tom Vogel,4,2\nP-101,Anna Berg,3,3\nP-302,Una Reis,5,9\n");
        file.close();
        look_at_box([&] { m_window.findChild<DataActions*>()->Import(table); }, "import",
                    [](QWidget& box) { box.findChild<QPushButton*>("import")->click(); });
    }

    QString m_folder;
    QString m_instruments;
    QTemporaryDir m_work;
    QSettings m_settings;
    MainWindow m_window;
};

}  // namespace

void makePictures(const QString& folder, const QString& instruments) {
    QDir().mkpath(folder);
    Tour(folder, instruments).Run();
}

}  // namespace tessalink::desk
