#include "apps/desk/windows/ReportFiles.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>

#include "apps/desk/windows/DeskText.h"
#include "platform/files/WholeFile.h"

namespace tessalink::desk {

void writeReport(RespondentReports& reports, std::size_t report, const QString& path) {
    WholeFile file(pathOf(path));
    reports.Write(report, file);
    file.Commit();
}

QString copyWhole(const QString& from, const QString& to) {
    QFile source(from);
    QSaveFile target(to);
    const bool isCopied = source.open(QIODevice::ReadOnly) && target.open(QIODevice::WriteOnly) &&
                          target.write(source.readAll()) == source.size() && target.commit();
    if (isCopied) return {};
    return QCoreApplication::translate("tessalink::desk",
                                       "%1 can't be written (%2): choose another name or folder.")
        .arg(to, target.errorString());
}

}  // namespace tessalink::desk
