// The main of the tests of the desk's windows: an application without a screen, in English.
#include <gtest/gtest.h>

#include <QApplication>

#include "apps/desk/windows/DeskLocale.h"
#include "platform/qt/UseQt.h"
#include "tests/platform/qt/Offscreen.h"

int main(int argc, char** argv) {
    tessalink::test::useNoScreen();
    const QApplication application(argc, argv);
    tessalink::useQt();
    tessalink::desk::useLanguage("en");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
