#pragma once

#include <QDialog>

#include "CopingForm.h"

/// Asks for the answers; OK writes the report to a file.
class CopingDialog : public QDialog {
public:
    explicit CopingDialog(CString path);

    void accept() override;

private:
    CopingForm m_form;
    CString m_path;
};
