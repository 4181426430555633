// The main of the tests of the toolkit: an application without a screen.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <clocale>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        const QString folder = QDir::tempPath() + "/tessalink-tests-runtime";
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", folder.toLocal8Bit());
    }
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
