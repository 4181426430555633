// The dialog of the first hour: keyed as an examiner does it, in a folder with the files of the
// example.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollBar>
#include <QtTest>
#include <filesystem>
#include <memory>
#include <string>

#include "examples/firsthour/CopingDialog.h"
#include "platform/base/HostServices.h"
#include "platform/qt/UseQt.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace tessalink::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class FirstHour : public testing::Test {
protected:
    void SetUp() override {
        fs::copy(fs::path(TESSALINK_SOURCE_DIR) / "examples" / "firsthour", m_folder.Path(""));
        fs::current_path(m_folder.Path(""));
        useQt();
        HostServices services = hostServices();
        services.messageBox = [this](const char* text, UINT) {
            m_messages += text;
            return IDOK;
        };
        services.beep = [](UINT) {};
        setHostServices(services);
        m_dialog = std::make_unique<CopingDialog>("report.rtf");
        m_dialog->show();
        m_dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    }
    void TearDown() override {
        m_dialog.reset();
        setHostServices({});
        fs::current_path(m_before);
    }

    static void Key(const char* entry) {
        QTest::keyClicks(QApplication::focusWidget(), entry);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    static void KeyAll() {
        for (const char* entry : {"Ann {Example}", "34", "14", "99", "9", "17"}) Key(entry);
    }

    const fs::path m_before = fs::current_path();
    const TemporaryFolder m_folder;
    std::string m_messages;
    std::unique_ptr<CopingDialog> m_dialog;
};

TEST_F(FirstHour, OkAsksForWhatIsEmptyThenWritesTheReport) {
    for (const char* entry : {"Ann {Example}", "34", "14"}) Key(entry);
    m_dialog->accept();
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_FALSE(fs::exists("report.rtf"));
    for (const char* entry : {"99", "9"}) Key(entry);  // the first is refused
    QTest::keyClicks(QApplication::focusWidget(), "17");
    m_dialog->accept();  // keeps what is open
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_FALSE(m_dialog->isVisible());
    const std::string report = m_folder.Read("report.rtf");
    EXPECT_THAT(report, HasSubstr("{\\b Ann \\{Example\\}}, 34 years"));
    EXPECT_THAT(report, HasSubstr("Support: 9 of 20 points, T 44 (37-51)"));
    EXPECT_THAT(report, HasSubstr("Rumination: 17 of 20 points, T 66 (60-72)"));
    EXPECT_EQ(m_messages, "");
}

TEST_F(FirstHour, AFaultIsShownWithItsPlaceAndLeavesTheDialogOpen) {
    std::string text = m_folder.Read("coping.rtf");
    text.replace(text.find("@Support_T"), 10, "@Suport_T");
    m_folder.Write("coping.rtf", text);
    KeyAll();
    m_dialog->accept();
    EXPECT_EQ(m_messages, "coping.rtf:5:35: Undefined variable 'Suport_T' found!");
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_FALSE(fs::exists("report.rtf"));
}

TEST_F(FirstHour, AllOfTheFormShows) {
    const auto bars = m_dialog->findChildren<QScrollBar*>();
    EXPECT_FALSE(bars.empty());
    for (const QScrollBar* bar : bars) EXPECT_FALSE(bar->isVisible());
}

}  // namespace
}  // namespace tessalink::test
