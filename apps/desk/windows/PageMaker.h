#pragma once

#include <QObject>
#include <QStringList>
#include <deque>

class QProcess;

namespace tessalink::desk {

/// Makes PDF of RTF files by LibreOffice, one run at a time, without waiting for it.
class PageMaker : public QObject {
    Q_OBJECT

public:
    /// `workFolder` gets LibreOffice's own settings; it must last longer than this object.
    explicit PageMaker(QString workFolder, QObject* parent = nullptr);
    /// Ends a run that is under way.
    ~PageMaker() override;

    /// LibreOffice in the folders of PATH; empty when it is missing.
    static QString FindProgram();
    /// What to do when it is missing.
    static QString MissingText();

    /// Makes PDF of these files in a folder, under their names. `made` follows, with those that
    /// were not made in it.
    void Make(const QStringList& files, const QString& folder);
    /// Drops the runs that wait, and ends the one under way: no `made` follows.
    void Stop();
    bool IsBusy() const { return m_process != nullptr; }

Q_SIGNALS:
    /// The PDF files of one call of Make, and the RTF files that none was made of.
    void made(const QStringList& pdfs, const QStringList& failed);

private:
    struct Run {
        QStringList files;
        QString folder;
    };

    void start_next();
    void finish();

    QString m_workFolder;
    std::deque<Run> m_runs;  ///< the first one is under way when there is a process
    QProcess* m_process = nullptr;
};

}  // namespace tessalink::desk
