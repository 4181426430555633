#pragma once

#include <QString>
#include <memory>

class QLockFile;
class QTemporaryDir;

namespace tessalink::desk {

/// A folder that its owner alone may look into, for the pages of reports while they are shown. It
/// is removed with this object; what a desk that was killed has left is removed when the next one
/// is made.
class PrivateFolder {
public:
    /// In the folder that the system clears when the user logs out, where there is one; otherwise
    /// in that of temporary files.
    PrivateFolder();
    explicit PrivateFolder(const QString& parent);
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;

    /// False when it could not be made; there is nothing to put files into then.
    bool IsValid() const;
    /// The path of a file in it.
    QString PathOf(const QString& name) const;

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QLockFile> m_lock;  ///< tells others that the folder is in use
};

}  // namespace tessalink::desk
