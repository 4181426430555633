// The main of the tests of the toolkit: an application without a screen.
#include <gtest/gtest.h>

#include <QApplication>
#include <clocale>

#include "tests/platform/qt/Offscreen.h"

int main(int argc, char** argv) {
    tessalink::test::useNoScreen();
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
