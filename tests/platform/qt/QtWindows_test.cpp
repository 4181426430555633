// Windows and forms in the toolkit, worked by its own events.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QTextEdit>
#include <QVBoxLayout>
#include <QtTest>
#include <algorithm>
#include <cmath>

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/DataEntryCtl.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/TextDataEntryUI.h"
#include "platform/base/HostServices.h"
#include "platform/qt/QtHost.h"
#include "platform/qt/UseQt.h"
#include "platform/windows/CRectTracker.h"
#include "platform/windows/TipWindow.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"

namespace tessalink::test {
namespace {

constexpr int cName = 0;
constexpr int cAge = 1;
constexpr int cSex = 2;
constexpr int cRemarks = 3;

std::string notificationText(const DATAENTRYCTL_NOTIFICATION& record) {
    return std::to_string(record.hdr.code) + ":" + std::to_string(record.itemIndex);
}

// A dialog with a field and a button of its own, and a form between them.
class QtForm : public testing::Test {
protected:
    QtForm() {
        useQt();
        HostServices services = hostServices();
        services.beep = [this](UINT) { ++m_beeps; };
        setHostServices(services);
        auto* const layout = new QVBoxLayout(&*m_dialog);
        layout->addWidget(m_before);
        m_holder = new WindowHolder(
            [this](UINT message, WPARAM, LPARAM lParam) { return Answer(message, lParam); });
        m_form = std::make_unique<DataEntryCtl>(new SingleColLayoutMgr);
        m_form->Create(CRect(0, 0, 400, 300), 7, &m_holder->Host());
        layout->addWidget(m_holder);
        layout->addWidget(m_after);
        auto* const text = new TextDataEntryUI(100, 5, 0, 20);
        m_form->AddItem(new TextDataEntryItem("Ada", "Name"), text);
        m_form->AddItem(new IntegerDataEntryItem(42, "Age"), new IntegerDataEntryUI(100, 3));
        m_form->AddItem(new IntegerDataEntryItem("Sex"),
                        new RadioBtnItemUI("[Female|fF|1][Male|mM|2]", 100));
        m_form->AddItem(new TextDataEntryItem(nullptr, "Remarks"),
                        new TextDataEntryUI(100, 0, 3, 20));
        m_dialog->resize(500, 400);
        m_dialog->show();
        m_dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*m_dialog));
        m_before->setFocus();
        Settle();
        m_told.clear();
    }
    ~QtForm() override {
        m_form.reset();
        m_dialog.reset();
        Settle();
        setHostServices(m_former);
    }

    HostWindow::Answer Answer(UINT message, LPARAM lParam) {
        if (message != WM_NOTIFY) return HostWindow::cNotHandled;
        const auto& record = *reinterpret_cast<const DATAENTRYCTL_NOTIFICATION*>(lParam);
        m_told.push_back(notificationText(record));
        const bool isRefused = m_refuses && record.hdr.code == DATAENTRY_CHANGING;
        if (m_whenTold) m_whenTold(record.hdr.code);
        return isRefused ? 1 : 0;
    }
    static void Settle() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* const focus = QApplication::focusWidget();
        if (focus != nullptr) QTest::keyClick(focus, static_cast<Qt::Key>(key), modifiers);
    }
    static void Type(const char* text) {
        if (QWidget* const focus = QApplication::focusWidget()) QTest::keyClicks(focus, text);
    }
    // A click on an item, from its left top corner.
    void Click(int item, int x, int y = 12) {
        const CPoint place = m_form->GetItemLoc(item).TopLeft();
        CPoint point(place.x + x, place.y + y);
        m_form->ClientToScreen(&point);
        QWidget* const target = QApplication::widgetAt(point.x, point.y);
        ASSERT_NE(target, nullptr);
        QTest::mouseClick(target, Qt::LeftButton, {},
                          target->mapFromGlobal(QPoint(point.x, point.y)));
    }
    std::string Name() const { return Text(cName); }
    std::string Text(int item) const {
        return static_cast<TextDataEntryItem*>(m_form->GetItem(item))->GetValue().GetString();
    }
    int Number(int item) const {
        return static_cast<IntegerDataEntryItem*>(m_form->GetItem(item))->GetValue();
    }
    std::string Told() {
        std::string all;
        for (const std::string& one : std::exchange(m_told, {})) all += one + " ";
        return all;
    }
    static std::string FieldText() {
        if (auto* const line = qobject_cast<QLineEdit*>(QApplication::focusWidget())) {
            return line->text().toStdString();
        }
        auto* const text = qobject_cast<QTextEdit*>(QApplication::focusWidget());
        return text != nullptr ? text->toPlainText().toStdString() : "no field";
    }

    HostServices m_former = hostServices();
    int m_beeps = 0;
    bool m_refuses = false;
    std::function<void(int)> m_whenTold;
    std::vector<std::string> m_told;
    std::unique_ptr<QDialog> m_dialog = std::make_unique<QDialog>();
    QLineEdit* m_before = new QLineEdit;
    QPushButton* m_after = new QPushButton("Go");
    WindowHolder* m_holder = nullptr;
    std::unique_ptr<DataEntryCtl> m_form;
};

TEST_F(QtForm, InputMethodsAndUndoWorkInTheField) {
    Click(cAge, 150);
    Type("79");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(FieldText(), "79");
    Press(Qt::Key_Escape);
    m_form->SetCurrItem(cRemarks);
    Type("tw");
    QInputMethodEvent composed;
    composed.setCommitString(QString::fromUtf8("\xC3\xB6"));
    QApplication::sendEvent(QApplication::focusWidget(), &composed);
    EXPECT_EQ(m_beeps, 0);
    composed.setCommitString(QString::fromUtf8("a\xCE\xA9"));
    QApplication::sendEvent(QApplication::focusWidget(), &composed);
    EXPECT_EQ(m_beeps, 1) << "an omega is not in the code page";
    Press(Qt::Key_Up);
    EXPECT_EQ(Text(cRemarks), "tw\xF6");
}

TEST_F(QtForm, LeftAndRightLeadOutOfASelection) {
    for (const int item : {cName, cRemarks}) {
        for (const auto& [key, expected] :
             {std::pair(Qt::Key_Left, "xabc"), {Qt::Key_Right, "abcx"}}) {
            m_form->SetCurrItem(item);
            Press(Qt::Key_A, Qt::ControlModifier);
            Type("abc");
            Press(Qt::Key_A, Qt::ControlModifier);
            Press(key);
            Type("x");
            EXPECT_EQ(FieldText(), expected) << item;
        }
    }
}

TEST_F(QtForm, RefusedChangeKeepsItemAndFocus) {
    Click(cName, 150);
    m_refuses = true;
    for (const auto leave : {+[] { Press(Qt::Key_Tab); }, +[] { Press(Qt::Key_Down); }}) {
        Type("Bo");
        leave();
        EXPECT_EQ(Name(), "Ada");
        EXPECT_EQ(FieldText(), "Ada");
        EXPECT_EQ(m_form->GetCurrItemIdx(), cName);
    }
    for (const bool withBox : {false, true}) {
        m_whenTold = [&](int code) {
            if (!withBox || code != DATAENTRY_CHANGING) return;
            QTimer::singleShot(
                0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
            AfxMessageBox("No");
        };
        Type("Bo");
        m_after->setFocus();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&*m_dialog));
        EXPECT_EQ(Name(), "Ada");
        EXPECT_EQ(FieldText(), "Ada") << "the focus has come back " << withBox;
    }
    m_whenTold = nullptr;
    Type("Bo");
    Press(Qt::Key_Escape);
    EXPECT_EQ(FieldText(), "Ada");
    EXPECT_TRUE(m_dialog->isVisible());
}

TEST_F(QtForm, KeysThatAWindowWantsDoNotReachItsDialog) {
    int accepted = 0;
    QObject::connect(m_after, &QPushButton::clicked, m_after, [&] { ++accepted; });
    m_after->setDefault(true);
    for (const int item : {cName, cAge, cSex, cRemarks}) {
        m_form->SetReadOnly(1);  // so that Return leads nowhere
        m_form->SetCurrItem(item);
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Escape}) Press(key);
        EXPECT_EQ(m_form->GetCurrItemIdx(), item);
    }
    const char* names[] = {"One", "Two"};
    NumberListCtl numbers(2, names, nullptr);
    numbers.Create(CRect(0, 0, 200, 100), 8, &m_holder->Host());
    numbers.SetFocus();
    Type("5");
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Return}) Press(key);
    EXPECT_EQ(accepted, 0);
    EXPECT_TRUE(m_dialog->isVisible());
    // A list of answers wants neither.
    ItemListCtl answers(2, "[a|a][b|b]", -1);
    answers.Create(CRect(0, 0, 200, 100), 9, &m_holder->Host());
    answers.SetFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(accepted, 1);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(m_dialog->isVisible());
}

TEST_F(QtForm, AnOkWaitsForWhatIsRefused) {
    std::string kept;
    QObject::connect(m_after, &QPushButton::clicked, m_after,
                     [&] { kept += commitEntries(*m_dialog) ? "y" : "n"; });
    Click(cName, 150);
    Type("Bo");
    m_refuses = true;
    QTest::mouseClick(m_after, Qt::LeftButton);
    EXPECT_EQ(kept, "n") << "the focus came back before the button was let go";
    EXPECT_EQ(FieldText(), "Ada");
    QTest::mouseClick(m_after, Qt::LeftButton);
    EXPECT_EQ(kept, "ny") << "nothing was keyed since";
    // The button may be worked without the focus.
    Click(cName, 150);
    Type("Bo");
    m_after->click();
    m_refuses = false;
    Type("Cy");
    m_after->click();
    EXPECT_EQ(kept, "nyny");
    EXPECT_EQ(Name(), "Cy");
}

TEST_F(QtForm, PassingThroughAFieldChangesNothing) {
    for (const int item : {cName, cRemarks}) {
        auto* const held = static_cast<TextDataEntryItem*>(m_form->GetItem(item));
        for (const char* text : {"one\ntwo", "one\rtwo", "a\240b", " a ", "a\tb"}) {
            held->SetNull(0);
            held->SetValue(text);
            m_form->SetCurrItem(cSex);
            m_told.clear();
            m_form->SetCurrItem(item);
            Press(Qt::Key_End);
            m_form->SetCurrItem(cSex);
            EXPECT_EQ(Text(item), text);
            EXPECT_EQ(Told(), "4:" + std::to_string(item) + " 4:2 ");
        }
    }
    static_cast<TextDataEntryItem*>(m_form->GetItem(cRemarks))
        ->SetValue(
            "a\xA0"
            "b");
    m_form->SetCurrItem(cRemarks);
    Press(Qt::Key_End);
    Type("c");
    Press(Qt::Key_Return);
    EXPECT_EQ(Text(cRemarks),
              "a\xA0"
              "bc");
}

TEST_F(QtForm, TabPassesThroughTheDialogBothWays) {
    Press(Qt::Key_Tab);
    EXPECT_EQ(FieldText(), "Ada");
    EXPECT_EQ(Told(), "-7:0 ");
    Type("Bo");
    Press(Qt::Key_Tab);
    EXPECT_TRUE(m_after->hasFocus());
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    EXPECT_EQ(Told(), "1:0 2:0 -8:-1 ");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(FieldText(), "Bo");
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(m_before->hasFocus());
    EXPECT_EQ(Told(), "-7:0 -8:-1 ");
    QDialog other;
    Press(Qt::Key_Tab);
    Type("Cy");
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    EXPECT_EQ(Name(), "Cy") << "another window is active";
    other.hide();
    m_dialog->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*m_dialog));
    EXPECT_EQ(FieldText(), "Cy");
    EXPECT_EQ(Told(), "-7:0 1:0 2:0 -8:-1 -7:0 ");
}

TEST_F(QtForm, TabFollowsTheOrderOfTheChildren) {
    QDialog dialog;
    HostWindow host(dialog, nullptr);
    constexpr DWORD cStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
    CEdit fields[4];
    for (UINT id = 0; id < 3; ++id) fields[id].Create(cStyle, CRect(0, 0, 50, 20), &host, id);
    fields[3].SubclassDlgItem(1, &host);
    dialog.show();
    dialog.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
    const auto orderFrom = [](CEdit& first) {
        std::string order;
        first.SetFocus();
        for (int i = 0; i < 3; ++i) {
            order += std::to_string(CWnd::GetFocus()->GetDlgCtrlID());
            Press(Qt::Key_Tab);
        }
        return order + std::to_string(CWnd::GetFocus()->GetDlgCtrlID());
    };
    EXPECT_EQ(orderFrom(fields[0]), "0120") << "a placeholder gives its place";
    constexpr UINT cStays = SWP_NOMOVE | SWP_NOSIZE;
    fields[2].SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, cStays);
    EXPECT_EQ(orderFrom(fields[2]), "2012");
    fields[2].SetWindowPos(&fields[0], 0, 0, 0, 0, cStays);
    EXPECT_EQ(orderFrom(fields[0]), "0210");
}

TEST_F(QtForm, PasteIsRefusedAsAWhole) {
    const struct {
        int item;
        const char* text;
        const char* shown;
        int beeps;
    } cases[] = {
        {cName, "Zo\xC3\xAB", "Zo\xC3\xAB", 0},
        {cName, "sixsix", "Ada", 1},
        {cName, "\xCE\xA9", "Ada", 1},
        {cAge, "12", "12", 0},
        {cAge, "1-2", "42", 1},
    };
    for (const auto& c : cases) {
        m_beeps = 0;
        QApplication::clipboard()->setText(QString::fromUtf8(c.text));
        Click(c.item, 150);
        Press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(FieldText(), c.shown) << c.text;
        EXPECT_EQ(m_beeps, c.beeps) << c.text;
        Press(Qt::Key_Escape);
    }
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QMimeData dragged;
    dragged.setText("12-");
    QDropEvent dropped(QPointF(1, 1), Qt::CopyAction, &dragged, Qt::LeftButton, {});
    QApplication::sendEvent(QApplication::focusWidget(), &dropped);
    EXPECT_EQ(FieldText(), "42") << "dropped";
}

TEST_F(QtForm, ScrollBarsAndWheelScroll) {
    for (int i = 0; i < 40; ++i) {
        m_form->AddItem(new IntegerDataEntryItem(i, "More"), m_form->GetItemUI(cAge));
    }
    Settle();
    QScrollBar* bar = nullptr;
    for (QScrollBar* const found : widgetOf(*m_form)->findChildren<QScrollBar*>()) {
        if (found->isVisible() && found->orientation() == Qt::Vertical) bar = found;
    }
    ASSERT_NE(bar, nullptr);
    CRect client;
    m_form->GetClientRect(&client);
    EXPECT_EQ(client.right, widgetOf(*m_form)->width() - bar->width() - 2);
    const int page = client.Height();
    bar->setSliderDown(true);
    bar->setSliderPosition(100);
    EXPECT_EQ(m_form->GetVisibleArea().top, 0) << "a thumb that is dragged";
    bar->setSliderDown(false);
    EXPECT_EQ(m_form->GetVisibleArea().top, 100);
    // From wherever it is turned, by notches or little by little.
    const auto turn = [](QWidget* widget, int delta) {
        const QPointF place(5, 5);
        if (auto* const text = qobject_cast<QTextEdit*>(widget)) widget = text->viewport();
        QWheelEvent event(place, widget->mapToGlobal(place), {}, {0, delta}, {}, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &event);
        Settle();
    };
    turn(bar, 120);
    EXPECT_EQ(m_form->GetVisibleArea().top, 0);
    turn(QApplication::focusWidget(), -40);
    EXPECT_EQ(m_form->GetVisibleArea().top, page / 4);
    for (int i = 0; i < 4; ++i) turn(QApplication::focusWidget(), -10);
    EXPECT_EQ(m_form->GetVisibleArea().top, page / 4 * 2);
}

TEST_F(QtForm, WindowsEndInsideTheirEvents) {
    for (const int code : {DATAENTRY_CHANGING, DATAENTRY_CHANGED, static_cast<int>(NM_KILLFOCUS)}) {
        if (!m_form) {
            m_form = std::make_unique<DataEntryCtl>(new SingleColLayoutMgr);
            m_form->AddItem(new TextDataEntryItem("Ada", "Name"), new TextDataEntryUI(100, 5));
            m_form->Create(CRect(0, 0, 300, 200), 7, &m_holder->Host());
        }
        m_whenTold = [&](int told) {
            if (told == code) m_form.reset();
        };
        m_form->SetFocus();
        ASSERT_EQ(FieldText(), "Ada");
        Type("Bo");
        Press(code == static_cast<int>(NM_KILLFOCUS) ? Qt::Key_Tab : Qt::Key_Return);
        EXPECT_EQ(m_form, nullptr) << code;
        EXPECT_EQ(QApplication::focusWidget(), nullptr) << code;
        Settle();
    }
}

// Counts what its window gets.
class Counter : public CWnd {
public:
    void OnTimer(UINT_PTR) override {
        ++timers;
        if (endsInTimer) DestroyWindow();
    }
    void OnDestroy() override { ++destroyed; }
    void OnPaint() override {
        const CPaintDC dc(this);
        dc.GetClipBox(&painted);
        ++paints;
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_USER) ++posted;
        if (message >= WM_MOUSEMOVE && message <= WM_MBUTTONUP && message != WM_MOUSEMOVE) {
            clicks += std::to_string(message - WM_MOUSEMOVE) + "@" +
                      std::to_string(pointOf(lParam).x) + " ";
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }

    int timers = 0;
    int destroyed = 0;
    int paints = 0;
    CRect painted;
    int posted = 0;
    bool endsInTimer = false;
    std::string clicks;
};

TEST_F(QtForm, ToolkitParentMayGoFirst) {
    m_form->SetFocus();
    Counter outer;
    Counter inner;
    outer.Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &m_holder->Host(), 8);
    inner.Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, 0, 20, 20), &outer, 9);
    inner.SetTimer(1, 1);
    inner.PostMessage(WM_USER);
    m_dialog.reset();
    EXPECT_EQ(m_form->GetSafeHwnd(), nullptr);
    EXPECT_EQ(outer.destroyed + inner.destroyed, 2);
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    QTest::qWait(20);
    EXPECT_EQ(inner.timers + inner.posted, 0);
    EXPECT_EQ(Text(cName), "Ada") << "the objects stay";
}

TEST_F(QtForm, TimersMessagesMouseAndPainting) {
    Counter window;
    window.Create(nullptr, "", WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 20, 110, 70),
                  &m_holder->Host(), 8);
    QWidget* const widget = widgetOf(window);
    widget->raise();
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.paints == 1; }));
    window.Invalidate();
    window.InvalidateRect(CRect(0, 0, 5, 5));
    window.UpdateWindow();
    EXPECT_EQ(window.paints, 2);
    QTest::qWait(20);
    EXPECT_EQ(window.paints, 2);
    window.ScrollWindow(0, -10);
    QTest::qWait(20);
    EXPECT_EQ(window.paints, 3);
    EXPECT_EQ(window.painted, CRect(0, 38, 98, 48)) << "what came into view";
    QWidget* const client = widget->childAt(50, 25);
    QTest::mouseClick(client, Qt::RightButton, {}, QPoint(7, 7));
    QTest::mouseDClick(client, Qt::LeftButton, {}, QPoint(9, 7));
    EXPECT_EQ(window.clicks, "4@7 5@7 3@9 ");
    CPoint origin;
    window.ClientToScreen(&origin);
    EXPECT_EQ(QPoint(origin.x, origin.y), widget->mapToGlobal(QPoint(1, 1)));
    window.SetTimer(1, 1);
    window.endsInTimer = true;
    window.PostMessage(WM_USER);
    EXPECT_EQ(window.posted, 0);
    QTest::qWait(50);
    EXPECT_EQ(window.posted, 1);
    EXPECT_EQ(window.timers, 1);
}

// Moves a rectangle with the mouse.
class Tracked : public CWnd {
public:
    void OnLButtonDown(UINT, CPoint point) override { hasMoved = tracker.Track(this, point); }

    CRectTracker tracker{CRect(10, 10, 30, 30)};
    BOOL hasMoved = 0;
};

TEST_F(QtForm, TopLevelWindowsTipsAndDragging) {
    Click(cName, 150);
    TipWindow tip;
    CFont font;
    font.CreateFont(16, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Arial");
    tip.ShowText("A hint", CPoint(50, 50), &font);
    QTest::qWait(20);
    EXPECT_TRUE(widgetOf(tip)->isVisible());
    EXPECT_TRUE(m_dialog->isActiveWindow());
    EXPECT_EQ(FieldText(), "Ada") << "the tip has not taken the focus";
    tip.DestroyWindow();

    Tracked window;
    window.Create(nullptr, "T\xF6p", WS_VISIBLE, CRect(100, 100, 300, 200), nullptr, 0);
    QWidget* const widget = widgetOf(window);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(widget));
    EXPECT_EQ(widget->windowTitle(), QString::fromUtf8("T\xC3\xB6p"));
    widget->resize(250, 150);
    CRect client;
    window.GetClientRect(&client);
    EXPECT_EQ(client, CRect(0, 0, 250, 150));
    QWidget* const inner = widget->childAt(20, 20);
    QTimer::singleShot(0, [inner] {
        EXPECT_EQ(QWidget::mouseGrabber(), inner);
        QTest::mouseMove(inner, QPoint(25, 40));
        QTest::mouseRelease(inner, Qt::LeftButton, {}, QPoint(45, 50));
    });
    QTest::mousePress(inner, Qt::LeftButton, {}, QPoint(20, 20));
    EXPECT_NE(window.hasMoved, 0);
    EXPECT_EQ(window.tracker.m_rect, CRect(35, 40, 55, 60));
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    widget->close();
    EXPECT_EQ(window.GetSafeHwnd(), nullptr);
    Settle();
}

// Black shapes on white.
class Shapes : public CWnd {
public:
    void OnPaint() override {
        CPaintDC dc(this);
        dc.FillSolidRect(0, 0, 40, 20, cWhite);
        dc.FillSolidRect(3, 3, 10, 10, cBlack);
        dc.SelectStockObject(BLACK_BRUSH);
        dc.Ellipse(20, 2, 36, 18);
        dc.MoveTo(0, 19);
        dc.LineTo(40, 19);
    }
};

TEST_F(QtForm, PicturesAreSharpAtEveryScale) {
    Shapes window;
    window.Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(0, 0, 40, 20), &m_holder->Host(), 8);
    for (const double ratio : {1.0, 1.5, 2.0}) {
        QImage picture((QSizeF(40, 20) * ratio).toSize(), QImage::Format_RGB32);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::red);
        widgetOf(window)->render(&picture);
        int between = 0;
        int black = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor color = picture.pixelColor(x, y);
                ASSERT_EQ(color.red(), color.green()) << x << "," << y << " at " << ratio;
                const bool isBetween = color.red() > 0 && color.red() < 255;
                between += isBetween ? 1 : 0;
                black += color.red() == 0 ? 1 : 0;
                const bool isRound = x >= 19 * ratio && x <= 37 * ratio && y < 19 * ratio;
                EXPECT_TRUE(isRound || !isBetween) << x << "," << y << " at " << ratio;
            }
        }
        EXPECT_EQ(between > 0, ratio > 1) << ratio;
        const double expected = (100 + 40 + 3.14159 * 64) * ratio * ratio;
        EXPECT_NEAR(black + between * 0.5, expected, 0.08 * expected) << ratio;
    }
}

double luminance(COLORREF color) {
    const auto linear = [](int channel) {
        const double c = channel / 255.0;
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) +
           0.0722 * linear(GetBValue(color));
}

TEST_F(QtForm, ColoursFollowThePaletteAndStayLegible) {
    constexpr int pairs[][2] = {
        {COLOR_WINDOWTEXT, COLOR_WINDOW},      {COLOR_BTNTEXT, COLOR_BTNFACE},
        {COLOR_GRAYTEXT, COLOR_BTNFACE},       {COLOR_INFOTEXT, COLOR_INFOBK},
        {COLOR_BTNHIGHLIGHT, COLOR_BTNSHADOW}, {COLOR_HIGHLIGHTTEXT, COLOR_HIGHLIGHT}};
    const QPalette before = QApplication::palette();
    auto* const name = static_cast<TextDataEntryUI*>(m_form->GetItemUI(cName));
    static_cast<TextDataEntryUI*>(m_form->GetItemUI(cAge))->SetTextColors(1, 2);
    for (const QColor& ground : {QColor(239, 239, 239), QColor(53, 53, 53), QColor(0, 0, 0),
                                 QColor(128, 128, 128), QColor(255, 255, 255)}) {
        QApplication::setPalette(QPalette(ground));
        Settle();
        for (const auto& [text, on] : pairs) {
            const double first = luminance(tessalink::GetSysColor(text)) + 0.05;
            const double second = luminance(tessalink::GetSysColor(on)) + 0.05;
            EXPECT_GE(std::max(first, second) / std::min(first, second), 4.5)
                << text << " on " << on << " " << ground.name().toStdString();
        }
        EXPECT_EQ(name->GetTextBgColor(), tessalink::GetSysColor(COLOR_BTNFACE));
        const QColor shown = m_holder->grab().toImage().pixelColor(
            m_holder->width() - 30, m_form->GetItemLoc(cRemarks).bottom + 20);
        EXPECT_EQ(shown, ground) << "painted anew";
    }
    EXPECT_EQ(static_cast<TextDataEntryUI*>(m_form->GetItemUI(cAge))->GetTextBgColor(), 2U);
    QApplication::setPalette(before);
}

TEST_F(QtForm, AFieldHasTheColoursOfItsState) {
    Click(cName, 150);
    auto* const text = static_cast<TextDataEntryUI*>(m_form->GetItemUI(cName));
    const struct {
        std::function<void()> change;
        COLORREF text;
        COLORREF ground;
    } cases[] = {
        {[] {}, tessalink::GetSysColor(COLOR_WINDOWTEXT), tessalink::GetSysColor(COLOR_WINDOW)},
        {[&] { m_form->SetReadOnlyItem(cName, 1); }, tessalink::GetSysColor(COLOR_GRAYTEXT),
         tessalink::GetSysColor(COLOR_BTNFACE)},
        {[&] { text->SetReadOnlyColor(RGB(1, 2, 3)); }, RGB(1, 2, 3),
         tessalink::GetSysColor(COLOR_BTNFACE)},
        {[&] { m_form->SetReadOnlyItem(cName, 0); }, tessalink::GetSysColor(COLOR_WINDOWTEXT),
         tessalink::GetSysColor(COLOR_WINDOW)},
        {[&] { text->SetFocusColors(RGB(4, 5, 6), RGB(7, 8, 9)); }, RGB(4, 5, 6), RGB(7, 8, 9)},
    };
    for (const auto& c : cases) {
        c.change();
        const QPalette palette = QApplication::focusWidget()->palette();
        const QColor shown = palette.color(QPalette::Text);
        const QColor ground = palette.color(QPalette::Base);
        EXPECT_EQ(RGB(shown.red(), shown.green(), shown.blue()), c.text) << &c - cases;
        EXPECT_EQ(RGB(ground.red(), ground.green(), ground.blue()), c.ground) << &c - cases;
    }
}

}  // namespace
}  // namespace tessalink::test
