#include "apps/desk/windows/PageMaker.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <utility>

namespace tessalink::desk {

namespace {

QString pdfOf(const QString& file, const QString& folder) {
    return QDir(folder).filePath(QFileInfo(file).completeBaseName() + ".pdf");
}

}  // namespace

PageMaker::PageMaker(QString workFolder, QObject* parent)
    : QObject(parent), m_workFolder(std::move(workFolder)) {}

PageMaker::~PageMaker() {
    Stop();
}

QString PageMaker::FindProgram() {
    for (const char* const name : {"soffice", "libreoffice"}) {
        QString path = QStandardPaths::findExecutable(name);
        if (!path.isEmpty()) return path;
    }
    return {};
}

QString PageMaker::MissingText() {
    return tr(
        "Pages are made by LibreOffice, which is missing: install the package "
        "libreoffice-writer.");
}

void PageMaker::Make(const QStringList& files, const QString& folder) {
    m_runs.push_back({files, folder});
    if (!IsBusy()) start_next();
}

void PageMaker::Stop() {
    m_runs.clear();
    QProcess* const process = std::exchange(m_process, nullptr);
    if (process == nullptr) return;
    process->disconnect(this);
    process->kill();
    process->waitForFinished();
    process->deleteLater();
}

void PageMaker::start_next() {
    if (m_runs.empty()) return;
    const Run& run = m_runs.front();
    // What was made before must not be taken for what this run makes.
    for (const QString& file : run.files) QFile::remove(pdfOf(file, run.folder));
    const QUrl profile = QUrl::fromLocalFile(QDir(m_workFolder).filePath("libreoffice"));
    QStringList arguments = {"-env:UserInstallation=" + profile.toString(QUrl::FullyEncoded),
                             "--headless",
                             "--norestore",
                             "--convert-to",
                             "pdf",
                             "--outdir",
                             run.folder};
    m_process = new QProcess(this);
    m_process->setStandardInputFile(QProcess::nullDevice());
    m_process->setStandardOutputFile(QProcess::nullDevice());
    m_process->setStandardErrorFile(QProcess::nullDevice());
    connect(m_process, &QProcess::finished, this, &PageMaker::finish);
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) finish();
    });
    m_process->start(FindProgram(), arguments + run.files);
}

void PageMaker::finish() {
    m_process->deleteLater();
    m_process = nullptr;
    const Run run = std::move(m_runs.front());
    m_runs.pop_front();
    QStringList pdfs;
    QStringList failed;
    for (const QString& file : run.files) {
        const QString pdf = pdfOf(file, run.folder);
        if (QFile::exists(pdf)) {
            pdfs += pdf;
        } else {
            failed += file;
        }
    }
    Q_EMIT made(pdfs, failed);
    if (!IsBusy()) start_next();
}

}  // namespace tessalink::desk
