#include "apps/desk/windows/ReportFiles.h"

#include <QCoreApplication>

#include "apps/desk/windows/DeskText.h"
#include "core/FileText.h"

namespace tessalink::desk {

WholeFile outputFile(const QString& path) {
    return WholeFile(pathOf(path), WholeFile::Sync::No, WholeFile::Readers::Owner);
}

void writeReport(RespondentReports& reports, std::size_t report, const QString& path) {
    WholeFile file = outputFile(path);
    reports.Write(report, file);
    file.Commit();
}

QString copyWhole(const QString& from, const QString& to) {
    try {
        CFile source(pathOf(from), CFile::modeRead);
        const std::string bytes = readText(source);
        WholeFile target = outputFile(to);
        target.Write(bytes.data(), bytes.size());
        target.Commit();
        return {};
    } catch (const CFileException& fault) {
        return QCoreApplication::translate(
                   "tessalink::desk", "%1 can't be written (%2): choose another name or folder.")
            .arg(to, messageOf(fault));
    }
}

}  // namespace tessalink::desk
