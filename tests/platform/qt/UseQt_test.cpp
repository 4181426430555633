// The services that the toolkit serves.
#include "platform/qt/UseQt.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPdfWriter>
#include <QPrinter>
#include <QTest>
#include <QTimer>
#include <clocale>

#include "platform/base/HostServices.h"
#include "platform/qt/PainterDevice.h"
#include "platform/qt/detail/PrinterReference.h"
#include "platform/qt/detail/QtInput.h"

namespace tessalink::test {
namespace {

class UseQt : public testing::Test {
protected:
    UseQt() { useQt(); }
    ~UseQt() override { setHostServices(m_former); }

private:
    HostServices m_former = hostServices();
};

TEST_F(UseQt, MessageBoxesAnswerByTheirButtons) {
    const struct {
        UINT flags;
        QMessageBox::StandardButton press;
        QMessageBox::Icon icon;
        int answer;
    } cases[] = {
        {MB_OK, QMessageBox::Ok, QMessageBox::NoIcon, IDOK},
        {MB_OKCANCEL | MB_ICONERROR, QMessageBox::Cancel, QMessageBox::Critical, IDCANCEL},
        {MB_YESNO | MB_ICONQUESTION, QMessageBox::No, QMessageBox::Question, IDNO},
        {MB_YESNOCANCEL | MB_ICONWARNING, QMessageBox::Yes, QMessageBox::Warning, IDYES},
        {MB_RETRYCANCEL | MB_ICONINFORMATION, QMessageBox::Retry, QMessageBox::Information,
         IDRETRY},
        {MB_ABORTRETRYIGNORE, QMessageBox::Ignore, QMessageBox::NoIcon, IDIGNORE},
    };
    for (const auto& c : cases) {
        QTimer::singleShot(0, [&] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->text(), QString::fromUtf8("Gr\xC3\xB6\xC3\x9F"
                                                     "e <b>"));
            EXPECT_EQ(box->icon(), c.icon);
            ASSERT_NE(box->button(c.press), nullptr);
            box->button(c.press)->click();
        });
        EXPECT_EQ(AfxMessageBox("Gr\xF6\xDF"
                                "e <b>",
                                c.flags),
                  c.answer);
    }
}

TEST_F(UseQt, MessagesOutlastWhatIsTypedAhead) {
    HostServices services = hostServices();
    int bells = 0;
    services.beep = [&bells](UINT) { ++bells; };
    setHostServices(services);
    QTimer::singleShot(0, [] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        for (const Qt::Key key : {Qt::Key_7, Qt::Key_Return, Qt::Key_O, Qt::Key_Return}) {
            QTest::keyClick(box->button(QMessageBox::Ok), key);
            EXPECT_TRUE(box->isVisible());
        }
        QTest::keyClick(box->button(QMessageBox::Ok), Qt::Key_Return);
        EXPECT_FALSE(box->isVisible());
    });
    EXPECT_EQ(AfxMessageBox("Too large", MB_OK | MB_ICONEXCLAMATION), IDOK);
    EXPECT_EQ(bells, 1 + 4);
}

TEST(HeldKey, IsReleasedAndPressedAtTheSameMoment) {
    const struct {
        bool isPress;
        int key;
        quint64 time;
        bool isToldSo;
        bool isRepeat;
    } events[] = {
        {true, 'A', 100, false, false},  {false, 'A', 600, false, false},
        {true, 'A', 600, false, true},   {true, 'A', 600, false, true},  // for another object
        {false, 'A', 640, false, true},  {true, 'A', 641, false, false},
        {false, 'A', 641, false, false}, {true, 'A', 641, false, false},
        {false, 'A', 700, false, false}, {true, 'B', 700, false, false},
        {true, 'B', 730, true, true},    {true, 'C', 0, false, false},
        {false, 'C', 0, false, false},   {true, 'C', 0, false, false},
    };
    detail::HeldKey held;
    for (const auto& e : events) {
        QKeyEvent event(e.isPress ? QEvent::KeyPress : QEvent::KeyRelease, e.key, Qt::NoModifier,
                        "x", e.isToldSo);
        event.setTimestamp(e.time);
        held.See(event);
        EXPECT_EQ(held.IsRepeat(), e.isRepeat) << e.time << " " << e.isPress;
    }
}

TEST_F(UseQt, NumbersKeepTheirFullStop) {
    std::setlocale(LC_NUMERIC, "");
    useQt();
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}

TEST_F(UseQt, PictureIsRecordedAgainstThePrinter) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    constexpr int dpi = 600;
    printer.setResolution(dpi);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setFullPage(true);
    const auto reference = detail::referenceOf(printer);
    EXPECT_EQ(reference->Caps().dpiX, dpi);
    EXPECT_EQ(reference->Caps().dpiY, dpi);
    EXPECT_NEAR(reference->Caps().width, 210 * dpi / 25.4, 4) << "whole points";
    EXPECT_EQ(reference->Caps().widthMm, 210);
    EXPECT_EQ(reference->Caps().heightMm, 297);
    EXPECT_TRUE(reference->Caps().isPrinter);
    EXPECT_EQ(&reference->TextMetrics(), &toolkitTextMetrics());
    // Here is no printer, or one that is sound.
    const auto standard = hostServices().defaultPrinter();
    EXPECT_TRUE(standard == nullptr || standard->Caps().dpiX > 0);
}

}  // namespace
}  // namespace tessalink::test
