#include <gtest/gtest.h>

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "apps/desk/windows/BatchDialog.h"
#include "apps/desk/windows/DataActions.h"
#include "apps/desk/windows/ReportDialog.h"
#include "apps/desk/windows/ReportFiles.h"
#include "platform/files/CFile.h"
#include "questionnaire/FhirResponses.h"
#include "tests/desk/windows/DeskDriver.h"
#include "tests/desk/windows/Opened.h"
#include "tests/desk/windows/Programs.h"

namespace {

using namespace tessalink;
using namespace tessalink::desk;
using tessalink::desk::test::DeskDriver;
using tessalink::desk::test::load;
using tessalink::desk::test::Opened;
using tessalink::desk::test::Programs;
using tessalink::desk::test::store;

constexpr int cPagesWait = 20'000;

DataActions& actionsOf(DeskDriver& desk) {
    return *desk.Window().findChild<DataActions*>();
}

QString outcomeOf(QWidget& box) {
    return box.findChild<QPlainTextEdit*>("outcome")->toPlainText();
}

ReportDialog& showReport(DeskDriver& desk) {
    actionsOf(desk).ShowReport();
    return desk.Find<ReportDialog>("reportDialog");
}

/// The first case of the sample, which is complete.
void openFirstCase(DeskDriver& desk) {
    desk.Window().OpenFile(desk.Sample());
    ASSERT_TRUE(desk.Window().OpenCase(1));
}

TEST(Data, ImportsATableTellsWhatItLeftOutAndExportsTheScores) {
    DeskDriver desk;
    desk.Window().OpenFile(desk.Sample());
    const std::size_t before = desk.Window().ShownCases().size();
    QByteArray table = "id,Name,Sex,Age,TestDate";
    for (int i = 1; i <= 50; ++i) table += ",I" + QByteArray::number(i);
    for (const char* const start : {"N-1,Ann,f,30,2026-01-02", "N-2,Bo,m,31,2026-01-02",
                                    "n-1,Ann,f,30,2026-01-02", "N-4,Cy,x,30,2026-01-02"}) {
        table += QByteArray("\n") + start + QByteArray(",3").repeated(50);
    }
    const QString file = desk.Path("responses.csv");
    store(file, table + '\n');
    QString outcome;
    desk.InBox([&] { actionsOf(desk).Import(file); },
               [&](QWidget& box) {
                   box.findChild<QComboBox*>("questionnaire")->setCurrentIndex(0);
                   QTest::keyClick(&box, Qt::Key_Return);
                   outcome = outcomeOf(box);
                   box.close();
               });
    EXPECT_TRUE(outcome.startsWith("2 cases added.")) << outcome.toStdString();
    EXPECT_TRUE(outcome.contains("Line 4: n-1 has a case already")) << outcome.toStdString();
    EXPECT_TRUE(outcome.contains("Line 5: N-4 Sex: x")) << outcome.toStdString();
    EXPECT_EQ(desk.Window().ShownCases().size(), before + 2);

    desk.Find<QLineEdit>("search").setText("N- Five");
    const QString scores = desk.Path("scores.csv");
    actionsOf(desk).ExportScores(scores);
    const QList<QByteArray> lines = load(scores).split('\n');
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith("id,state,Extraversion,"));
    EXPECT_TRUE(lines[1].startsWith("N-1,complete,30,")) << lines[1].toStdString();
}

TEST(Data, OfSeveralQuestionnairesOneIsToBeChosenFirst) {
    DeskDriver desk;
    desk.Window().OpenFile(desk.Sample());
    const QString scores = desk.Path("scores.csv");
    actionsOf(desk).ExportScores(scores);
    EXPECT_FALSE(QFile::exists(scores));
    EXPECT_TRUE(desk.Find<MessageBar>("messageBar").Text().contains("choose one in the list"));
}

TEST(Data, AnExportedCaseReadsBack) {
    DeskDriver desk;
    openFirstCase(desk);
    const QString file = desk.Path("case.json");
    actionsOf(desk).ExportCase(file);
    CFile input(QFile::encodeName(file).constData(), CFile::modeRead);
    const CaseSession& session = desk.Session();
    FhirResponses responses(input, session.GetQuestionnaire());
    ResponseBlock block;
    ASSERT_TRUE(responses.ReadBlock(block));
    int count = 0;
    responses.Parse(block, [&](RespondentRow& row) {
        ++count;
        EXPECT_FALSE(row.failure.has_value());
        EXPECT_EQ(row.respondent.id, session.GetRespondent().id);
        EXPECT_EQ(row.respondent.answers, session.GetRespondent().answers);
    });
    EXPECT_EQ(count, 1);
}

TEST(Data, ACopyOpensAndHoldsTheSameCases) {
    DeskDriver desk;
    desk.Window().OpenFile(desk.Sample());
    const std::vector<CaseSummary> cases = desk.Window().Store()->Summaries();
    actionsOf(desk).SaveCopy(desk.Sample());
    EXPECT_TRUE(desk.Find<MessageBar>("messageBar").Text().contains("choose another name"));
    for (int i = 0; i < 2; ++i) actionsOf(desk).SaveCopy(desk.Path("copy.cases"));
    ASSERT_TRUE(desk.Window().OpenFile(desk.Path("copy.cases")));
    EXPECT_EQ(desk.Window().Store()->Summaries(), cases);
}

TEST(Report, PagesLieInAPrivateFolderThatGoesWithTheWindow) {
    const TemporaryFolder folder;
    const QString parent = QString::fromStdString(folder.Path("run"));
    QDir().mkpath(parent);
    QFile::setPermissions(parent, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(parent));
    {
        DeskDriver desk;
        const Programs programs(desk, true);
        openFirstCase(desk);
        ReportDialog& dialog = showReport(desk);
        ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.Page().HasPages(); }, cPagesWait));
        EXPECT_TRUE(dialog.findChild<QPushButton*>("savePdf")->isEnabled());
        const QStringList places = QDir(parent).entryList({"tessalink-desk-*"}, QDir::Dirs);
        ASSERT_EQ(places.size(), 1);
        const QString place = QDir(parent).filePath(places.front());
        constexpr auto cOthers =
            QFile::ReadGroup | QFile::ExeGroup | QFile::ReadOther | QFile::ExeOther;
        EXPECT_EQ(QFileInfo(place).permissions() & cOthers, QFile::Permissions());
        EXPECT_EQ(QDir(place).entryList({"*.rtf", "*.pdf"}).size(), 2);
        dialog.reject();
        EXPECT_TRUE(QDir(place).entryList({"*.rtf", "*.pdf"}).isEmpty());
    }
    EXPECT_TRUE(QDir(parent).isEmpty());
    qputenv("XDG_RUNTIME_DIR", before);
}

TEST(Report, WithoutLibreOfficeItSaysWhatIsMissingOpensElsewhereAndCanBeSaved) {
    DeskDriver desk;
    const Programs programs(desk, false);
    const Opened opened;
    openFirstCase(desk);
    ReportDialog& dialog = showReport(desk);
    EXPECT_TRUE(dialog.findChild<QLabel*>("reportText")->text().contains("libreoffice-writer"));
    ASSERT_EQ(opened.files.size(), 1);
    EXPECT_TRUE(load(opened.files.front()).startsWith("{\\rtf"));
    EXPECT_TRUE(dialog.findChild<QPushButton*>("saveRtf")->isEnabled());
    EXPECT_FALSE(dialog.findChild<QPushButton*>("savePdf")->isEnabled());
}

TEST(Report, WhatCantBeSavedIsSaid) {
    DeskDriver desk;
    store(desk.Path("a.rtf"), "{\\rtf1}");
    EXPECT_EQ(copyWhole(desk.Path("a.rtf"), desk.Path("b.rtf")), QString());
    EXPECT_EQ(load(desk.Path("b.rtf")), "{\\rtf1}");
    EXPECT_TRUE(copyWhole(desk.Path("a.rtf"), desk.Path("none/b.rtf")).contains("none/b.rtf"));
}

TEST(PrivateFolder, TakesAwayWhatAKilledDeskHasLeft) {
    const DeskDriver desk;
    const QString parent = desk.Path("run");
    QDir().mkpath(parent + "/tessalink-desk-killed");
    store(parent + "/tessalink-desk-killed/report1.rtf", "{\\rtf1 Ann}");
    const PrivateFolder first(parent);
    EXPECT_FALSE(QDir(parent + "/tessalink-desk-killed").exists());
    const PrivateFolder second(parent);
    EXPECT_TRUE(first.IsValid() && second.IsValid());
    EXPECT_EQ(QDir(parent).entryList({"tessalink-desk-*"}, QDir::Dirs).size(), 2);
}

/// The complete cases of the first questionnaire of the sample.
std::vector<CaseSummary> someCases(CaseStore& cases) {
    std::vector<CaseSummary> found = cases.Summaries();
    const std::string hash = found.front().questionnaire;
    std::erase_if(found, [&](const CaseSummary& one) { return one.questionnaire != hash; });
    return found;
}

void runBatch(DeskDriver& desk, bool isPdf, bool isStopped, QString& outcome) {
    CaseStore& cases = *desk.Window().Store();
    BatchDialog batch(cases, someCases(cases));
    batch.show();
    batch.findChild<QLineEdit*>("folder")->setText(desk.Path("reports"));
    if (isPdf) QTest::keyClick(batch.findChild<QWidget*>("pdf"), Qt::Key_Space);
    QTest::mouseClick(batch.findChild<QPushButton*>("start"), Qt::LeftButton);
    auto* const stop = batch.findChild<QPushButton*>("stop");
    if (isStopped) QTest::mouseClick(stop, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !stop->isEnabled(); }, cPagesWait));
    outcome = outcomeOf(batch);
}

TEST(Batch, WritesEveryReportOrStopsAtOnce) {
    DeskDriver desk;
    const Programs programs(desk, true);
    desk.Window().OpenFile(desk.Sample());
    const auto count = static_cast<qsizetype>(someCases(*desk.Window().Store()).size());
    const QDir reports(desk.Path("reports"));
    QString outcome;
    runBatch(desk, false, true, outcome);
    EXPECT_EQ(outcome, "Stopped. 0 reports are in the folder.");
    EXPECT_TRUE(reports.isEmpty());
    runBatch(desk, false, false, outcome);
    EXPECT_EQ(outcome, QString("%1 reports are in the folder.").arg(count));
    EXPECT_EQ(reports.entryList({"*.rtf"}).size(), count);
    EXPECT_TRUE(load(reports.filePath("P-101.rtf")).startsWith("{\\rtf"));
    runBatch(desk, true, false, outcome);
    EXPECT_EQ(reports.entryList({"*.pdf"}).size(), count) << outcome.toStdString();
}

}  // namespace
