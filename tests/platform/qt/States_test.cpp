// What every control looks like in each of its states.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>
#include <functional>
#include <memory>

#include "platform/qt/QtHost.h"
#include "platform/qt/UseQt.h"
#include "platform/qt/detail/QtInput.h"
#include "tests/platform/qt/StatePictures.h"
#include "tests/support/ControlStates.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

HostServices silentServices() {
    useQt();
    HostServices services = hostServices();
    services.beep = [](UINT) {};
    services.messageBox = [](const char*, UINT) { return IDOK; };
    services.localeValues = [] { return LocaleValues(); };
    return services;
}

// Windows of the toolkit, worked by its own events.
struct QtLook {
    using Picture = QImage;

    class Card : public StateCard {
    public:
        using StateCard::StateCard;
        QImage Whole() const { return Picture(); }
    };

    // A dialog with a place for a window of the library, and a button that has the focus at first.
    class Stage {
    public:
        explicit Stage(CSize size) {
            auto* const layout = new QVBoxLayout(&m_dialog);
            m_holder = new WindowHolder([this](UINT message, WPARAM, LPARAM lParam) {
                return message == WM_NOTIFY ? Told(*reinterpret_cast<const NMHDR*>(lParam))
                                            : HostWindow::cNotHandled;
            });
            m_holder->setFixedSize(size.cx, size.cy);
            layout->addWidget(&m_button);
            layout->addWidget(m_holder);
        }

        void Show() {
            m_dialog.show();
            m_dialog.activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&m_dialog));
            m_button.setFocus();
        }
        void Resize(CSize size) { m_holder->setFixedSize(size.cx, size.cy); }
        CWnd& Host() { return m_holder->Host(); }
        void FocusElsewhere() { m_button.setFocus(); }
        void Refuse() { m_refuses = true; }

    private:
        HostWindow::Answer Told(const NMHDR& header) const {
            return m_refuses && header.code == DATAENTRY_CHANGING ? 1 : 0;
        }

        QDialog m_dialog;
        QPushButton m_button{"Elsewhere"};
        WindowHolder* m_holder;
        bool m_refuses = false;
    };

    static void Settle() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void Type(const char* text) {
        if (QWidget* const focus = QApplication::focusWidget()) QTest::keyClicks(focus, text);
    }
    static void Press(UINT key, Held held = {}) {
        Qt::KeyboardModifiers modifiers;
        modifiers.setFlag(Qt::ControlModifier, held.ctrl);
        const Qt::Key known = detail::toolkitKey(key);
        const auto code = known != 0 ? known : static_cast<Qt::Key>(key);
        QWidget* const focus = QApplication::focusWidget();
        if (focus != nullptr) QTest::keyClick(focus, code, modifiers);
    }
    static QImage PictureOf(const CWnd& window, double scale = 1, const CRect& area = {}) {
        return pictureOf(*widgetOf(window), scale,
                         {area.left, area.top, area.Width(), area.Height()});
    }
    static void MovePointer(const CWnd& window, CPoint point) {
        QWidget& client = ClientOf(window);
        const QPoint place(point.x, point.y);
        QCursor::setPos(client.mapToGlobal(place));
        Settle();
        QTest::mouseMove(&client, place);
    }
    static QImage PictureWhileDragging(const CWnd& window, CPoint from, CPoint to) {
        QWidget& client = ClientOf(window);
        const QPoint end(to.x, to.y);
        QImage dragging;
        QTimer::singleShot(0, [&] {
            QTest::mouseMove(&client, end);
            dragging = PictureOf(window);
            QTest::mouseRelease(&client, Qt::LeftButton, {}, end);
        });
        QTest::mousePress(&client, Qt::LeftButton, {}, QPoint(from.x, from.y));
        return dragging;
    }

private:
    // What the window paints, and what has the mouse.
    static QWidget& ClientOf(const CWnd& window) { return *widgetOf(window)->childAt(5, 5); }
};

using Cards = states::ControlStates<QtLook>;

class States : public testing::Test {
protected:
    States() : m_services(silentServices()) {}
    ~States() override { QtLook::Settle(); }

private:
    HostServicesScope m_services;
};

TEST_F(States, Forms) {
    const FixedLooks looks;
    expectStored("form-texts", Cards::cardOfItems(states::textKinds(), 236));
    expectStored("form-choices", Cards::cardOfItems(states::choiceKinds(), 338));
    expectStored("forms-100", Cards::cardOfForms(1));
    expectStored("forms-150", Cards::cardOfForms(1.5));
    expectStored("forms-200", Cards::cardOfForms(2));
}

TEST_F(States, Lists) {
    const FixedLooks looks;
    expectStored("item-lists", Cards::cardOfItemLists());
    expectStored("number-lists", Cards::cardOfNumberLists());
}

TEST_F(States, ProfileGraphs) {
    const FixedLooks looks;
    expectStored("profile-graphs", Cards::cardOfGraphs());
}

TEST_F(States, DarkTheme) {
    const FixedLooks looks(true);
    expectStored("dark-form-texts", Cards::cardOfItems(states::textKinds(), 236));
    expectStored("dark-form-choices", Cards::cardOfItems(states::choiceKinds(), 338));
    expectStored("dark-item-lists", Cards::cardOfItemLists());
    expectStored("dark-number-lists", Cards::cardOfNumberLists());
}

// What the parent has refused looks like what was there before, in the current item.
TEST_F(States, RefusedItemsLookAsTheyWere) {
    const FixedLooks looks;
    constexpr states::State cCurrent = {"", true, false, true, false};
    constexpr states::State cRefused = {"", true, false, true, true, true};
    for (const states::Kind& kind : states::textKinds()) {
        EXPECT_EQ(Cards::pictureOfItem(kind, cRefused, 236, 1),
                  Cards::pictureOfItem(kind, cCurrent, 236, 1))
            << kind.typed;
    }
}

// The comparison itself: what the tolerance lets pass, and what not.
TEST(StatePictures, DifferencesThatCount) {
    QImage plain(64, 32, QImage::Format_RGB32);
    plain.fill(QColor(239, 239, 239));
    const auto changed = [&](const std::function<void(QPainter&)>& paint) {
        QImage picture = plain;
        QPainter painter(&picture);
        paint(painter);
        painter.end();
        return picture;
    };
    const auto line = [&](int y, int grey) {
        return changed([=](QPainter& p) { p.fillRect(4, y, 50, 1, QColor(grey, grey, grey)); });
    };
    const auto text = [&](double x, const QColor& color) {
        return changed([=](QPainter& p) {
            p.setPen(color);
            p.drawText(QPointF(x, 20), "Remarks");
        });
    };
    const struct {
        QImage one;
        QImage other;
        bool isAlike;
    } cases[] = {
        {plain, plain, true},
        {line(9, 110), line(9, 116), true},
        {line(9, 110), line(10, 110), false},
        {line(9, 110), line(11, 110), false},
        {line(9, 110), plain, false},
        {text(4, Qt::black), text(4.2, Qt::black), true},
        {text(4, Qt::black), text(5, Qt::black), false},
        {text(4, Qt::black), text(4, QColor(0, 0, 160)), false},
    };
    for (const auto& c : cases) {
        const double difference = worstDifference(c.one, c.other);
        EXPECT_EQ(difference <= cPictureTolerance, c.isAlike)
            << "case " << &c - cases << ": " << difference;
    }
}

}  // namespace
}  // namespace tessalink::test
