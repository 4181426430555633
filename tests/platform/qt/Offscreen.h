#pragma once

#include <QDir>
#include <QFile>

namespace tessalink::test {

/// For programs of tests: no screen, and a folder of the session where the system gives none. Comes
/// before the application object.
inline void useNoScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) return;
    const QString folder = QDir::tempPath() + "/tessalink-tests-runtime";
    QDir().mkpath(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", folder.toLocal8Bit());
}

}  // namespace tessalink::test
