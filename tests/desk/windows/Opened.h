#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QStringList>
#include <QUrl>

namespace tessalink::desk::test {

/// Stands for the system's programs, and keeps what they are to open.
class Opened : public QObject {
    Q_OBJECT

public:
    Opened() { QDesktopServices::setUrlHandler("file", this, "Take"); }
    ~Opened() override { QDesktopServices::unsetUrlHandler("file"); }

    Q_INVOKABLE void Take(const QUrl& url) { files += url.toLocalFile(); }

    QStringList files;
};

}  // namespace tessalink::desk::test
