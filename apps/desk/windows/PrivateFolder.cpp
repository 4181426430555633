#include "apps/desk/windows/PrivateFolder.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace tessalink::desk {

namespace {

const QString cPrefix = QStringLiteral("tessalink-desk-");
const QString cLockName = QStringLiteral("in-use");

QString usualParent() {
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime.isEmpty() ? QDir::tempPath() : runtime;
}

std::unique_ptr<QLockFile> lockIn(const QString& folder) {
    auto lock = std::make_unique<QLockFile>(QDir(folder).filePath(cLockName));
    lock->setStaleLockTime(0);  // a lock ends with its process, never by time
    return lock->tryLock() ? std::move(lock) : nullptr;
}

/// Folders whose locks nobody holds are those of desks that were killed.
void removeLeftBehind(const QString& parent) {
    const QDir dir(parent);
    for (const QFileInfo& folder :
         dir.entryInfoList({cPrefix + '*'}, QDir::Dirs | QDir::NoSymLinks)) {
        if (!folder.isReadable() || !folder.isWritable()) continue;  // another user's
        const auto lock = lockIn(folder.filePath());
        if (!lock) continue;
        lock->unlock();  // no other desk would take a folder that is there
        QDir(folder.filePath()).removeRecursively();
    }
}

}  // namespace

PrivateFolder::PrivateFolder() : PrivateFolder(usualParent()) {}

PrivateFolder::PrivateFolder(const QString& parent) {
    removeLeftBehind(parent);
    m_folder = std::make_unique<QTemporaryDir>(QDir(parent).filePath(cPrefix + "XXXXXX"));
    if (m_folder->isValid()) m_lock = lockIn(m_folder->path());
}

PrivateFolder::~PrivateFolder() = default;

bool PrivateFolder::IsValid() const {
    return m_lock != nullptr;
}

QString PrivateFolder::PathOf(const QString& name) const {
    return m_folder->filePath(name);
}

}  // namespace tessalink::desk
