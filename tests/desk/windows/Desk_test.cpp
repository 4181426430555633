// The desk from start to finish, by real events.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <filesystem>
#include <functional>
#include <set>

#include "apps/desk/windows/CaseListModel.h"
#include "apps/desk/windows/DataActions.h"
#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/NewCaseDialog.h"
#include "tests/desk/StoreParts.h"
#include "tests/desk/windows/DeskDriver.h"

namespace tessalink::desk::test {

namespace {

using testing::ElementsAre;

constexpr const char* cAnswers = "34251434253142534125342514342531425341253425143425";

/// The answers as positions.
std::vector<Answer> positions(std::string_view digits, std::size_t count) {
    std::vector<Answer> answers(count);
    for (std::size_t i = 0; i < digits.size(); ++i) answers[i] = digits[i] - '0';
    return answers;
}

/// A new case in a new file, keyed up to the last answer.
void keyCase(DeskDriver& desk) {
    ASSERT_TRUE(desk.Window().OpenFile(desk.Sample()));
    desk.InBox([&] { desk.Work("newCase"); },
               [&](QWidget&) {
                   desk.Type("P-108");
                   desk.Press(Qt::Key_Return);
               });
    ASSERT_NE(desk.Window().Session(), nullptr);
    desk.Press(Qt::Key_Return);  // the id stays
    desk.Type("Lena Vogt");
    desk.Press(Qt::Key_Return);
    desk.Type("f34");
    desk.Press(Qt::Key_Return);
    desk.Type("2026-03-12");
    desk.Press(Qt::Key_Return);
    desk.Work("focusAnswers");
    desk.Type(cAnswers);
}

}  // namespace

TEST(Desk, KeysACaseAndFindsItAgain) {
    DeskDriver desk;
    keyCase(desk);
    const Respondent keyed = desk.Session().GetRespondent();
    EXPECT_EQ(keyed.id, "P-108");
    EXPECT_EQ(keyed.answers, positions(cAnswers, 50));
    EXPECT_THAT(keyed.fields, ElementsAre(FieldValue(std::string("Lena Vogt")), FieldValue(1),
                                          FieldValue(34), FieldValue(Date(2026, 3, 12))));
    const auto& scores = desk.Find<QTableWidget>("scores");
    EXPECT_EQ(scores.item(0, 1)->text(), "27");
    EXPECT_EQ(scores.item(0, 3)->text(), QString("46 (40") + QChar(0x2013) + "52)");
    EXPECT_EQ(desk.Find<QLabel>("answerCounts").text(), "50 of 50 answered, 0 missing.");
    desk.Work("toggleState");
    ASSERT_TRUE(desk.Window().close());

    desk.Start();
    ASSERT_TRUE(desk.Window().OpenFile(desk.Sample()));
    desk.Work("find");
    desk.Type("108 five");
    const auto& table = desk.Find<QTableView>("cases");
    ASSERT_EQ(table.model()->rowCount(), 1);
    desk.Press(Qt::Key_Return);
    EXPECT_EQ(desk.Session().GetRespondent().answers, keyed.answers);
    EXPECT_EQ(desk.Session().GetRespondent().fields, keyed.fields);
    EXPECT_EQ(desk.Session().GetSummary().state, CaseState::Complete);
}

TEST(Desk, TakesEverythingBackAndDoesItAgain) {
    DeskDriver desk;
    keyCase(desk);
    const Respondent keyed = desk.Session().GetRespondent();
    constexpr int cSteps = 54;
    for (int step = 0; step < cSteps; ++step) desk.Work("undo");
    EXPECT_FALSE(desk.Session().CanUndo());
    const Respondent& now = desk.Session().GetRespondent();
    EXPECT_EQ(now.answers, std::vector<Answer>(50));
    EXPECT_EQ(now.fields, std::vector<FieldValue>(4));
    EXPECT_EQ(desk.Find<QLabel>("answerCounts").text(), "0 of 50 answered, 50 missing.");
    for (int step = 0; step < cSteps; ++step) desk.Work("redo");
    EXPECT_EQ(now.answers, keyed.answers);
    EXPECT_EQ(now.fields, keyed.fields);
    EXPECT_FALSE(desk.Session().CanRedo());
}

TEST(Desk, ComparesASecondKeying) {
    DeskDriver desk;
    keyCase(desk);
    desk.Work("beginSecondPass");
    EXPECT_FALSE(desk.Find<QAction>("undo").isEnabled());
    std::string again = cAnswers;
    again[4] = '2';
    desk.Type(QString::fromStdString(again.substr(0, 5)));
    desk.Press(Qt::Key_Backspace);
    desk.Type("2");
    desk.Type("3");  // wrong this time: the first answer stays
    desk.Press(Qt::Key_Backspace);
    EXPECT_EQ(desk.Session().Differences(), std::vector<std::size_t>{5});
    EXPECT_THAT(desk.Find<QLabel>("caseHeading").text().toStdString(),
                testing::EndsWith(", 1 answer differs between both keyings"));
    desk.Type(QString::fromStdString(again.substr(5)));
    EXPECT_EQ(desk.Find<QLabel>("answerCounts").text(),
              "Second keying complete: 50 answers, 1 corrected. 50 of 50 answered, 0 missing.");
    EXPECT_EQ(desk.Session().GetRespondent().answers, positions(again, 50));
    EXPECT_EQ(desk.Session().GetSecondAnswers(), positions(again, 50));
    EXPECT_TRUE(desk.Session().Differences().empty());
    EXPECT_TRUE(desk.Find<QAction>("undo").isEnabled());
}

TEST(Desk, ComparesNumbersKeyedTwice) {
    DeskDriver desk;
    ASSERT_TRUE(desk.Window().CreateFile(desk.Path("numbers.cases")));
    ASSERT_TRUE(desk.Window().AddCase(smallQuestionnaire(), "P-1"));
    desk.Work("focusAnswers");
    desk.Work("nextPane");
    const auto key = [&](const char* number) {
        desk.Press(Qt::Key_A, Qt::ControlModifier);
        desk.Type(number);
        desk.Press(Qt::Key_Return);
    };
    key("9");  // out of its range: said in the line, not in a box
    EXPECT_FALSE(desk.Find<QLabel>("messageText").text().isEmpty());
    key("3");
    EXPECT_TRUE(desk.Find<QLabel>("messageText").text().isEmpty());
    desk.Work("beginSecondPass");
    key("-4");
    EXPECT_EQ(desk.Session().GetSecondAnswers()[2], Answer(-4));
    EXPECT_EQ(desk.Session().GetRespondent().answers[2], Answer(3));
    key("-4");
    EXPECT_EQ(desk.Session().GetRespondent().answers[2], Answer(-4));
    EXPECT_TRUE(desk.Session().Differences().empty());
    EXPECT_FALSE(desk.Find<QAction>("endSecondPass").isEnabled());
}

TEST(Desk, RefusesWhatAFieldCantHaveAndSaysWhy) {
    DeskDriver desk;
    ASSERT_TRUE(desk.Window().OpenFile(desk.Sample()));
    desk.Press(Qt::Key_Return);  // the first case
    desk.Work("focusForm");
    for (int i = 0; i < 3; ++i) desk.Press(Qt::Key_Down);
    desk.Type("999");
    desk.Press(Qt::Key_Return);
    EXPECT_EQ(desk.Find<QLabel>("messageText").text().toStdString(),
              "Age in years: a whole number from 14 to 120.");
    EXPECT_EQ(desk.Session().GetRespondent().fields[2], FieldValue(39));
    EXPECT_FALSE(desk.Session().CanUndo());
    for (const char* const date : {"12/3/2026", "2026-12-03"}) {
        desk.Work("focusForm");
        desk.Press(Qt::Key_Down);
        desk.Type(date);
        desk.Press(Qt::Key_Return);
        EXPECT_EQ(desk.Session().GetRespondent().fields[3], FieldValue(Date(2026, 12, 3)));
        EXPECT_EQ(dynamic_cast<QLineEdit&>(*desk.Focus()).text().toStdString(), "12/03/2026");
        desk.Work("undo");
    }
}

TEST(Desk, ReadsWhileAnotherDeskWrites) {
    DeskDriver desk;
    CaseStore other = CaseStore::Open(desk.Sample().toStdString(), testOptions());
    ASSERT_TRUE(desk.Window().OpenFile(desk.Sample()));
    EXPECT_FALSE(desk.Find<QLabel>("messageText").text().isEmpty());
    EXPECT_FALSE(desk.Find<QAction>("newCase").isEnabled());
    desk.Press(Qt::Key_Return);
    const Respondent before = desk.Session().GetRespondent();
    desk.Work("focusAnswers");
    desk.Type("11111");
    desk.Press(Qt::Key_Backspace);
    desk.Work("focusForm");
    desk.Press(Qt::Key_Down);
    desk.Type("Other");
    desk.Press(Qt::Key_Return);
    EXPECT_EQ(desk.Session().GetRespondent().answers, before.answers);
    EXPECT_EQ(desk.Session().GetRespondent().fields, before.fields);
    desk.Work("showList");
    other.AddCase(smallQuestionnaire(), "P-300");
    desk.Work("readCases");
    EXPECT_EQ(desk.Window().ShownCases().size(), 13U);
}

TEST(Desk, SaysWhatWasNotKeptAndShowsWhatIs) {
    DeskDriver desk;
    ASSERT_TRUE(desk.Window().OpenFile(desk.Sample()));
    desk.Press(Qt::Key_Return);
    desk.Work("focusAnswers");
    const std::vector<Answer> before = desk.Session().GetRespondent().answers;
    const std::string digit = before[0] == Answer(5) ? "4" : "5";
    for (const std::string& name : desk.Folder().Names()) {
        if (name.find(".cases") != std::string::npos) {
            std::filesystem::remove(desk.Folder().Path(name));
        }
    }
    desk.Type(QString::fromStdString(digit));
    EXPECT_THAT(desk.Find<QLabel>("messageText").text().toStdString(),
                testing::StartsWith("This was not kept: "));
    EXPECT_EQ(desk.Session().GetRespondent().answers, before);
    const QAccessibleInterface* const list = desk.Accessible("answerListHolder");
    EXPECT_EQ(list->child(0)->text(QAccessible::Name), "I1: Am the life of the party.");
    const auto& choices = desk.Session().GetQuestionnaire().Model().responseSets[0].choices;
    EXPECT_EQ(list->child(0)->text(QAccessible::Value),
              shown(choices[static_cast<std::size_t>(*before[0]) - 1].label));
}

TEST(Desk, GoesOnWithAnotherVersionAndTellsTheTrail) {
    DeskDriver desk;
    ASSERT_TRUE(desk.Window().OpenFile(desk.Sample()));
    const QString folder = desk.Path("changed");
    std::filesystem::copy(instruments().toStdString() + "/bigfive", folder.toStdString());
    QFile file(folder + "/questionnaire.json");
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const QByteArray text = file.readAll();
    file.close();
    const auto write = [&](const QByteArray& changed) {
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(changed);
        file.close();
    };
    write(QByteArray(text).replace("\"text\"", "\"txt\""));
    EXPECT_FALSE(desk.Window().ScoreByFolder(folder));
    EXPECT_GT(desk.Find<MessageBar>("messageBar").Text().count('\n'), 98);  // all of its faults
    EXPECT_LT(desk.Find<QLabel>("messageText").text().count('\n'), 5);
    EXPECT_TRUE(desk.Find<QPushButton>("messageMore").isVisible());
    EXPECT_FALSE(desk.Window().ScoreByFolder(instruments() + "/interpersonal"));
    write(QByteArray(text).replace("\"version\": \"", "\"version\": \"9."));
    desk.Press(Qt::Key_Return);
    const Respondent before = desk.Session().GetRespondent();
    ASSERT_TRUE(desk.Window().ScoreByFolder(folder));
    EXPECT_TRUE(desk.Session().GetQuestionnaire().Model().version.View().starts_with("9."));
    EXPECT_EQ(desk.Session().GetRespondent().answers, before.answers);
    EXPECT_EQ(desk.Window().Store()->Trail(1).back().act, TrailAct::Questionnaire);
}

TEST(Desk, LeadsToEveryPartByKeys) {
    DeskDriver desk;
    ASSERT_TRUE(desk.Window().OpenFile(desk.Sample()));
    const auto reached = [&](const std::function<void()>& key, int times) {
        std::set<std::string> parts;
        for (int i = 0; i < times; ++i) {
            key();
            for (const QWidget* widget = desk.Focus(); widget != nullptr;
                 widget = widget->parentWidget()) {
                if (!widget->objectName().isEmpty())
                    parts.insert(widget->objectName().toStdString());
            }
        }
        return parts;
    };
    const auto paneKey = [&] { desk.Work("nextPane"); };
    const auto tab = [&] { desk.Press(Qt::Key_Tab); };
    EXPECT_THAT(reached(paneKey, 2), testing::IsSupersetOf({"search", "cases"}));
    EXPECT_THAT(reached(tab, 6),
                testing::IsSupersetOf({"search", "questionnaireFilter", "stateFilter", "cases"}));
    ASSERT_TRUE(desk.Window().OpenCase(1));
    const auto parts =
        testing::IsSupersetOf({"fieldFormWindow", "answerList", "graphNames", "scores"});
    EXPECT_THAT(reached(paneKey, 4), parts);
    EXPECT_THAT(reached([&] { desk.Work("previousPane"); }, 4), parts);
    desk.Work("focusAnswers");
    EXPECT_THAT(reached(tab, 12), parts);
}

TEST(Desk, RemembersFilesAndItsWindow) {
    DeskDriver desk;
    ASSERT_TRUE(desk.Window().OpenFile(desk.Sample()));
    ASSERT_TRUE(desk.Window().CreateFile(desk.Path("new.cases")));
    EXPECT_FALSE(desk.Window().CreateFile(desk.Path("new.cases")));  // it stays, and open
    EXPECT_NE(desk.Window().Store(), nullptr);
    desk.Window().resize(901, 655);
    ASSERT_TRUE(desk.Window().close());
    desk.Start();
    EXPECT_EQ(desk.Window().size(), QSize(901, 655));
    auto& recent = desk.Find<QMenu>("recentMenu");
    Q_EMIT recent.aboutToShow();
    ASSERT_EQ(recent.actions().size(), 2);
    recent.actions().at(1)->trigger();
    EXPECT_EQ(desk.Window().ShownCases().size(), 12U);
    desk.Folder().Write("other.cases", "This is no file of cases.");
    EXPECT_FALSE(desk.Window().OpenFile(desk.Path("other.cases")));
    EXPECT_EQ(desk.Window().ShownCases().size(), 12U);  // the file before stays open
}

TEST(Desk, ShowsWhatIsLeftOfADamagedFileAndCopiesIt) {
    DeskDriver desk;
    const std::string path = desk.Sample().toStdString();
    const std::string sound = desk.Folder().Read("sample.cases");
    constexpr std::size_t cPage = 4096;
    constexpr std::size_t cStride = 5;
    int readOnly = 0;
    for (std::size_t page = 1; page < sound.size() / cPage; page += cStride) {
        std::string damaged = sound;
        damaged.replace(page * cPage, cPage, cPage, '\xff');
        desk.Folder().Write("sample.cases", damaged);
        ASSERT_TRUE(desk.Window().OpenFile(desk.Sample())) << page;
        if (desk.Window().Store()->GetAccess() == CaseStore::Access::ReadOnly) {
            ++readOnly;
            EXPECT_FALSE(desk.Find<MessageBar>("messageBar").Text().isEmpty()) << page;
            desk.Window().findChild<DataActions*>()->SaveCopy(desk.Path("copy.cases"));
            ASSERT_TRUE(desk.Window().OpenFile(desk.Path("copy.cases"))) << page;
            EXPECT_EQ(desk.Window().Store()->GetAccess(), CaseStore::Access::Write) << page;
        }
        for (const CaseId id : desk.Window().ShownCases()) desk.Window().OpenCase(id);
        ASSERT_TRUE(desk.Window().CloseFile()) << page;
        std::filesystem::remove(desk.Folder().Path("copy.cases"));
    }
    EXPECT_GT(readOnly, 3);
}

TEST(Desk, TakesQuestionnairesFromFoldersAndListsTheirFaults) {
    DeskDriver desk;
    ASSERT_TRUE(desk.Window().CreateFile(desk.Path("fresh.cases")));
    const std::string folder = desk.Folder().Path("faulty");
    std::filesystem::create_directory(folder);
    desk.Folder().Write("faulty/questionnaire.json", "{\"id\": \"x\",\n \"items\": 7}");
    NewCaseDialog dialog(*desk.Window().Store(), "");
    dialog.show();
    auto* const ok = dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
    auto* const faults = dialog.findChild<QPlainTextEdit*>("newCaseFaults");
    dialog.findChild<QLineEdit*>("newCaseId")->setText("P-1");
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_FALSE(dialog.AddFolder(QString::fromStdString(folder)));
    EXPECT_TRUE(faults->isVisible());
    EXPECT_THAT(
        faults->toPlainText().toStdString(),
        testing::AllOf(testing::HasSubstr("questionnaire.json:2:"), testing::HasSubstr("title")));
    EXPECT_FALSE(ok->isEnabled());
    EXPECT_FALSE(dialog.AddFolder(desk.Path("nowhere")));
    ASSERT_TRUE(dialog.AddFolder(instruments() + "/interpersonal"));
    ASSERT_TRUE(dialog.AddFolder(instruments() + "/interpersonal"));  // the same once more
    EXPECT_EQ(dialog.findChild<QComboBox*>("questionnaire")->count(), 1);
    EXPECT_FALSE(faults->isVisible());
    EXPECT_TRUE(ok->isEnabled());
    for (const char* const bad : {"", "a/b", "ends.", "nul"}) {
        dialog.findChild<QLineEdit*>("newCaseId")->setText(bad);
        EXPECT_FALSE(ok->isEnabled()) << bad;
    }
    ASSERT_TRUE(desk.Window().AddCase(dialog.Chosen(), "P-1"));
    EXPECT_EQ(desk.Window().Store()->Questionnaires().size(), 1U);
}

TEST(Desk, DeletesOnlyAfterAsking) {
    DeskDriver desk;
    ASSERT_TRUE(desk.Window().OpenFile(desk.Sample()));
    const auto& table = desk.Find<QTableView>("cases");
    desk.InBox([&] { desk.Work("deleteCases"); }, [&](QWidget&) { desk.Press(Qt::Key_Return); });
    EXPECT_EQ(table.model()->rowCount(), 12);  // Return is no
    desk.InBox([&] { desk.Work("deleteCases"); },
               [&](QWidget& box) {
                   desk.Press(Qt::Key_D, Qt::AltModifier);
                   EXPECT_TRUE(QTest::qWaitFor([&] { return !box.isVisible(); }));
               });
    EXPECT_EQ(table.model()->rowCount(), 11);
    EXPECT_EQ(desk.Window().Store()->Summaries().size(), 11U);
}

}  // namespace tessalink::desk::test
