// The acts of the menus that ask for the name of a file, worked in the toolkit's own boxes.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>

#include "apps/desk/windows/ReportDialog.h"
#include "tests/desk/windows/DeskDriver.h"
#include "tests/desk/windows/Programs.h"

namespace {

using namespace tessalink;
using namespace tessalink::desk;
using tessalink::desk::test::DeskDriver;
using tessalink::desk::test::load;
using tessalink::desk::test::Programs;
using tessalink::desk::test::store;

constexpr int cDialogWait = 20'000;

/// Names a file in a box of the toolkit and takes it.
void nameFile(QWidget& box, const QString& path) {
    auto* const dialog = qobject_cast<QFileDialog*>(&box);
    ASSERT_NE(dialog, nullptr);
    auto* const name = dialog->findChild<QLineEdit*>("fileNameEdit");
    name->setText(path);
    name->setFocus();
    QTest::keyClick(name, Qt::Key_Return);
}

class FileDialogs : public testing::Test {
protected:
    FileDialogs() {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        m_desk.Window().OpenFile(m_desk.Sample());
    }

    /// Works an action of the menus and names the file that it asks for.
    QByteArray Written(const char* action, const char* name) {
        const QString path = m_desk.Path(name);
        m_desk.InBox([&] { m_desk.Find<QAction>(action).trigger(); },
                     [&](QWidget& box) { nameFile(box, path); });
        constexpr auto cOwner =
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        EXPECT_EQ(QFile::permissions(path) & ~cOwner, QFile::Permissions()) << name;
        return load(path);
    }

    DeskDriver m_desk;
};

TEST_F(FileDialogs, ExportScoresOfTheCasesShown) {
    m_desk.Find<QComboBox>("questionnaireFilter").setCurrentIndex(1);
    const QByteArray table = Written("exportScores", "scores.csv");
    EXPECT_TRUE(table.startsWith("id,state,")) << table.toStdString();
    EXPECT_EQ(table.count('\n'), static_cast<qsizetype>(m_desk.Window().ShownCases().size()) + 1);
}

TEST_F(FileDialogs, ExportACaseAndACopy) {
    ASSERT_TRUE(m_desk.Window().OpenCase(1));
    EXPECT_TRUE(Written("exportCase", "case.json").contains("QuestionnaireResponse"));
    EXPECT_TRUE(Written("saveCopy", "copy.cases").startsWith("SQLite format 3"));
}

TEST_F(FileDialogs, ImportOfFhirResourcesAsksForTheFile) {
    ASSERT_TRUE(m_desk.Window().OpenCase(1));
    QByteArray resource = Written("exportCase", "case.json");
    resource.replace("P-101", "N-900");
    store(m_desk.Path("new.json"), resource);
    ASSERT_TRUE(m_desk.Window().ShowList());
    const std::size_t before = m_desk.Window().ShownCases().size();
    QString outcome;
    m_desk.InBox([&] { m_desk.Find<QAction>("import").trigger(); },
                 [&](QWidget& box) {
                     // The box of the import follows that of the file.
                     QTimer::singleShot(0, &m_desk.Window(), [&] {
                         QWidget* const import = QApplication::activeModalWidget();
                         ASSERT_EQ(import->objectName(), "importDialog");
                         QTest::mouseClick(import->findChild<QPushButton*>("import"),
                                           Qt::LeftButton);
                         outcome = import->findChild<QPlainTextEdit*>("outcome")->toPlainText();
                         import->close();
                     });
                     nameFile(box, m_desk.Path("new.json"));
                 });
    EXPECT_TRUE(outcome.startsWith("1 case added.")) << outcome.toStdString();
    EXPECT_EQ(m_desk.Window().ShownCases().size(), before + 1);
}

TEST_F(FileDialogs, ReportsAreSavedAndPrinted) {
    const Programs programs(m_desk, true);
    ASSERT_TRUE(m_desk.Window().OpenCase(1));
    m_desk.Find<QAction>("showReport").trigger();
    auto& dialog = m_desk.Find<ReportDialog>("reportDialog");
    ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.Page().HasPages(); }, cDialogWait));
    const auto save = [&](const char* button, const char* name) {
        m_desk.InBox([&] { dialog.findChild<QPushButton*>(button)->click(); },
                     [&](QWidget& box) { nameFile(box, m_desk.Path(name)); });
    };
    save("saveRtf", "report");
    EXPECT_TRUE(load(m_desk.Path("report.rtf")).startsWith("{\\rtf"));
    save("savePdf", "report.pdf");
    EXPECT_TRUE(load(m_desk.Path("report.pdf")).startsWith("%PDF"));
    const QString printed = m_desk.Path("printed.pdf");
    m_desk.InBox([&] { dialog.findChild<QPushButton*>("print")->click(); },
                 [&](QWidget& box) {
                     auto* const print = qobject_cast<QPrintDialog*>(&box);
                     ASSERT_NE(print, nullptr);
                     for (QLineEdit* const edit : print->findChildren<QLineEdit*>()) {
                         if (edit->objectName() == "filename") edit->setText(printed);
                     }
                     print->accept();
                 });
    EXPECT_TRUE(load(printed).startsWith("%PDF"));
    EXPECT_EQ(dialog.findChild<MessageBar*>()->Text(), "Sent to the printer.");
}

TEST_F(FileDialogs, SeveralReportsAskForAFolder) {
    m_desk.Find<QComboBox>("questionnaireFilter").setCurrentIndex(1);
    m_desk.InBox([&] { m_desk.Find<QAction>("batchReports").trigger(); },
                 [&](QWidget& box) {
                     QTest::mouseClick(box.findChild<QPushButton*>("start"), Qt::LeftButton);
                     EXPECT_TRUE(box.findChild<QPlainTextEdit*>("outcome")->toPlainText().contains(
                         "Choose a folder"));
                     box.close();
                 });
}

}  // namespace
