// The main of the tests of the desk's windows: an application without a screen, in English.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include "apps/desk/windows/DeskLocale.h"
#include "platform/qt/UseQt.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        const QString folder = QDir::tempPath() + "/tessalink-tests-runtime";
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", folder.toLocal8Bit());
    }
    const QApplication application(argc, argv);
    tessalink::useQt();
    tessalink::desk::useLanguage("en");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
