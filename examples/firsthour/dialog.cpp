#include <QApplication>

#include "CopingDialog.h"
#include "platform/qt/UseQt.h"

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    tessalink::useQt();
    return CopingDialog("report.rtf").exec() == QDialog::Accepted ? 0 : 1;
}
