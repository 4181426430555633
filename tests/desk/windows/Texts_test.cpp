// What the desk's windows say, in both languages: translations, mnemonics, shortcuts, names for
// assistive technology, and whether there is room for it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <map>
#include <set>

#include "apps/desk/windows/BatchDialog.h"
#include "apps/desk/windows/DeskLocale.h"
#include "apps/desk/windows/DeskText.h"
#include "apps/desk/windows/NewCaseDialog.h"
#include "apps/desk/windows/ReportDialog.h"
#include "apps/desk/windows/StoreTexts.h"
#include "apps/desk/windows/TrailDialog.h"
#include "platform/qt/QtHost.h"
#include "tests/desk/windows/DeskDriver.h"

namespace tessalink::desk::test {

namespace {

std::string plain(const QString& text) {
    return text.toStdString();
}

/// The desk in a language, which is English again afterwards.
class TextsTest : public testing::TestWithParam<const char*> {
protected:
    TextsTest() {
        useLanguage(GetParam());
        m_desk.emplace();
        m_desk->Window().OpenFile(m_desk->Sample());
    }
    ~TextsTest() override {
        m_desk.reset();
        useLanguage("en");
    }
    MainWindow& Window() { return m_desk->Window(); }
    DeskDriver& Desk() { return *m_desk; }

    /// Runs a check over the list, a case, and the dialogs.
    void OnEveryPage(const std::function<void(const std::string& page, QWidget& widget)>& check) {
        QTest::qWait(1);
        check("list", Window());
        Window().OpenCase(6);
        QTest::qWait(1);
        check("case", Window());
        NewCaseDialog fresh(*Window().Store(), "", &Window());
        TrailDialog trail(*Window().Store(), 6, &Window());
        ReportDialog report(&Window());
        report.Show(*Window().Session());
        BatchDialog batch(*Window().Store(), Window().Store()->Summaries(), &Window());
        const QList<QDialog*> dialogs = {&fresh, &trail, &report, &batch};
        for (QDialog* const dialog : dialogs) {
            dialog->show();
            QTest::qWait(1);
            check(plain(dialog->objectName()), *dialog);
        }
    }

private:
    std::optional<DeskDriver> m_desk;
};

/// The letters behind "&" of a menu, with the texts that have them.
std::multimap<QChar, std::string> mnemonicsOf(const QList<QAction*>& actions) {
    std::multimap<QChar, std::string> mnemonics;
    for (const QAction* const action : actions) {
        if (action->isSeparator()) continue;
        const QKeySequence keys = QKeySequence::mnemonic(action->text());
        const QChar letter = keys.isEmpty() ? QChar(' ') : QChar(keys[0].key());
        mnemonics.emplace(letter, plain(action->text()));
    }
    return mnemonics;
}

/// A widget that takes keys or clicks, and belongs to no other one.
bool isControl(const QWidget& widget) {
    return widget.focusPolicy() != Qt::NoFocus && widget.isVisible() &&
           !widget.objectName().startsWith("qt_");
}

/// No cell of a table is cut, nor the heading of a column.
void tableHasRoom(const std::string& page, QTableView& table) {
    class Hints : public QTableView {
    public:
        using QTableView::sizeHintForColumn;
    };
    for (int column = 0; column < table.model()->columnCount(); ++column) {
        const int needed = std::max((table.*&Hints::sizeHintForColumn)(column),
                                    table.horizontalHeader()->sectionSizeHint(column));
        EXPECT_GE(table.columnWidth(column), needed)
            << page << ": " << plain(table.objectName()) << " " << column;
    }
}

/// Whether a widget is a part of a window of the library.
bool isInHolder(const QWidget& widget) {
    for (const QWidget* one = &widget; one != nullptr; one = one->parentWidget()) {
        if (dynamic_cast<const WindowHolder*>(one) != nullptr) return true;
    }
    return false;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Languages, TextsTest, testing::Values("en", "de"),
                         [](const auto& language) { return std::string(language.param); });

TEST_P(TextsTest, HaveOneMnemonicForEachActOfAMenu) {
    const auto check = [](const std::string& menu, const QList<QAction*>& actions) {
        const auto mnemonics = mnemonicsOf(actions);
        for (const auto& [letter, text] : mnemonics) {
            EXPECT_NE(letter, QChar(' ')) << menu << ": " << text;
            EXPECT_EQ(mnemonics.count(letter), 1U) << menu << ": " << text;
        }
    };
    check("menu bar", Window().menuBar()->actions());
    for (QMenu* const menu : Window().findChildren<QMenu*>()) {
        if (menu->objectName().endsWith("Menu") && menu->objectName() != "recentMenu") {
            check(plain(menu->objectName()), menu->actions());
        }
    }
}

TEST_P(TextsTest, HaveOneMnemonicForEachControlOfAPage) {
    OnEveryPage([](const std::string& page, QWidget& top) {
        std::map<std::string, std::string> owners;
        for (const QWidget* const widget : top.findChildren<QWidget*>()) {
            const auto* const label = qobject_cast<const QLabel*>(widget);
            const auto* const button = qobject_cast<const QAbstractButton*>(widget);
            if (!widget->isVisible() || qobject_cast<const QToolButton*>(widget) != nullptr)
                continue;
            const QString text = button != nullptr                               ? button->text()
                                 : label != nullptr && label->buddy() != nullptr ? label->text()
                                                                                 : QString();
            const std::string keys = plain(QKeySequence::mnemonic(text).toString());
            if (keys.empty()) continue;
            const auto [owner, isFirst] = owners.emplace(keys, plain(text));
            EXPECT_TRUE(isFirst) << page << ": " << owner->second << " and " << plain(text);
        }
    });
}

TEST_P(TextsTest, HaveOneShortcutForEachAct) {
    std::map<std::string, std::string> owners;
    for (const QAction* const action : Window().findChildren<QAction*>()) {
        if (action->shortcut().isEmpty()) continue;
        const std::string keys = plain(action->shortcut().toString());
        const auto [owner, isFirst] = owners.emplace(keys, plain(action->text()));
        EXPECT_TRUE(isFirst) << keys << ": " << owner->second << " and " << plain(action->text());
    }
    EXPECT_GT(owners.size(), 12U);
}

TEST_P(TextsTest, NameEveryControl) {
    std::set<std::string> seen;
    OnEveryPage([&](const std::string& page, QWidget& top) {
        for (QWidget* const widget : top.findChildren<QWidget*>()) {
            if (!isControl(*widget)) continue;
            QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(accessible, nullptr);
            const std::string what =
                page + ": " + widget->metaObject()->className() + " " + plain(widget->objectName());
            seen.insert(what);
            const bool isOfBox = qobject_cast<QDialogButtonBox*>(widget->parentWidget()) != nullptr;
            const bool isOfLibrary = isInHolder(*widget);
            EXPECT_FALSE(widget->objectName().isEmpty() && !isOfBox && !isOfLibrary) << what;
            EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty()) << what;
            EXPECT_NE(accessible->role(), QAccessible::NoRole) << what;
        }
    });
    EXPECT_GT(seen.size(), 12U);
}

TEST_P(TextsTest, FitOnASmallScreenAtTwiceTheSize) {
    constexpr QSize cHalf(1366 / 2, 768 / 2);
    Window().OpenCase(6);
    QTest::qWait(1);
    EXPECT_LE(Window().minimumSizeHint().width(), cHalf.width());
    EXPECT_LE(Window().minimumSizeHint().height(), cHalf.height());
}

TEST_P(TextsTest, HaveRoom) {
    OnEveryPage([](const std::string& page, QWidget& top) {
        for (QWidget* const widget : top.findChildren<QWidget*>()) {
            if (!widget->isVisible()) continue;
            if (auto* const table = qobject_cast<QTableView*>(widget)) tableHasRoom(page, *table);
            const auto* const label = qobject_cast<QLabel*>(widget);
            const bool isText = label != nullptr ? !label->wordWrap() && !label->text().isEmpty()
                                                 : qobject_cast<QPushButton*>(widget) != nullptr ||
                                                       qobject_cast<QComboBox*>(widget) != nullptr;
            const std::string what =
                page + ": " + widget->metaObject()->className() + " " + plain(widget->objectName());
            if (isText) {
                EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << what;
                EXPECT_GE(widget->height(), widget->sizeHint().height()) << what;
            } else if (label != nullptr && label->wordWrap()) {
                EXPECT_GE(label->height(), label->heightForWidth(label->width())) << what;
            }
        }
    });
}

TEST(Translations, TellFaultsOfFilesInTheLanguageOfTheDesk) {
    using Kind = CaseStoreError::Kind;
    const auto last = static_cast<int>(Kind::FileTrouble);
    for (int kind = 0; kind <= last; ++kind) {
        const CaseStoreError error(static_cast<Kind>(kind), "/a.cases", "the store's words");
        useLanguage("de");
        const std::string german = plain(messageOf(error));
        useLanguage("en");
        EXPECT_EQ(german.find("the store's words"), std::string::npos) << kind;
        EXPECT_TRUE(german.starts_with("/a.cases")) << german;
        EXPECT_EQ(plain(messageOf(error)), "/a.cases: the store's words");
    }
    useLanguage("de");
    EXPECT_TRUE(noticeText({CaseStore::Reason::Damaged, "damaged"}).contains("Kopie"));
    useLanguage("en");
    EXPECT_EQ(plain(noticeText({CaseStore::Reason::Damaged, "damaged"})), "damaged");
}

TEST(Translations, AreCompleteAndUpToDate) {
    const TemporaryFolder folder;
    const QString source = TESSALINK_SOURCE_DIR;
    for (const QString language : {"de", "en"}) {
        const QString copy = QString::fromStdString(folder.Path("texts.ts"));
        QFile::remove(copy);
        QFile::copy(source + "/apps/desk/translations/desk_" + language + ".ts", copy);
        QStringList arguments = {"-I",  source, "-locations", "none", source + "/apps/desk/windows",
                                 "-ts", copy};
        if (language == "en") arguments.prepend("-pluralonly");
        QProcess lupdate;
        lupdate.start(TESSALINK_LUPDATE, arguments);
        ASSERT_TRUE(lupdate.waitForFinished());
        ASSERT_EQ(lupdate.exitCode(), 0);
        const std::string texts = folder.Read("texts.ts");
        EXPECT_GT(texts.size(), 1000U);
        for (const char* const fault : {"type=\"unfinished\"", "type=\"vanished\""}) {
            const auto found = texts.find(fault);
            EXPECT_EQ(found, std::string::npos)
                << plain(language) << ": " << texts.substr(found < 300 ? 0 : found - 300, 400);
        }
    }
}

}  // namespace tessalink::desk::test
