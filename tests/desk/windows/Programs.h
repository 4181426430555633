#pragma once

#include <QDir>
#include <QFile>

#include "platform/graphics/CDC.h"
#include "platform/graphics/PdfDevice.h"
#include "tests/desk/windows/DeskDriver.h"

namespace tessalink::desk::test {

inline void store(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

inline QByteArray load(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A folder of programs with nothing in it, or with one that makes a page of every file as
/// LibreOffice would, in place of what the machine has.
class Programs {
public:
    explicit Programs(const DeskDriver& desk, bool hasLibreOffice)
        : m_folder(desk.Path("programs")), m_before(qgetenv("PATH")) {
        QDir().mkpath(m_folder);
        if (hasLibreOffice) add_converter();
        qputenv("PATH", QFile::encodeName(m_folder));
    }
    ~Programs() { qputenv("PATH", m_before); }
    Programs(const Programs&) = delete;
    Programs& operator=(const Programs&) = delete;

private:
    void add_converter() {
        PdfDevice page({600, 800});
        CDC dc(page);
        dc.TextOut(20, 20, "A page");
        store(m_folder + "/page.pdf", QByteArray::fromStdString(page.Finish()));
        const QString program = m_folder + "/soffice";
        store(program, QByteArray("#!/bin/sh\nPATH=/usr/bin:/bin\nshift 6\nout=$1\nshift\n"
                                  "for file; do cp \"$(dirname \"$0\")/page.pdf\" "
                                  "\"$out/$(basename \"$file\" .rtf).pdf\"; done\n"));
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString m_folder;
    QByteArray m_before;
};

}  // namespace tessalink::desk::test
