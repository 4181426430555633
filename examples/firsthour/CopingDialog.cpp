#include "CopingDialog.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>
#include <utility>

#include "CopingReport.h"
#include "platform/base/HostServices.h"
#include "platform/qt/QtHost.h"
#include "report/FaultText.h"

CopingDialog::CopingDialog(CString path) : m_path(std::move(path)) {
    setWindowTitle("Coping with stress");
    auto* const holder = new tessalink::WindowHolder;  // a widget with the form in it
    m_form.Create(CRect(), 1, &holder->Host());
    const CSize size = m_form.GetFullSize();
    holder->SetSizeHint(QSize(size.cx, size.cy));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &CopingDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CopingDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(holder);
    layout->addWidget(buttons);
    m_form.SetFocus();
}

void CopingDialog::accept() {
    if (!tessalink::commitEntries(*this)) return;  // what is being typed is refused
    if (m_form.GoToEmpty()) return;
    try {
        VarTable variables;
        fillVariables(m_form.GetAnswers(), variables);
        writeReport(variables, m_path);
        QDialog::accept();
    } catch (const std::exception& fault) {
        AfxMessageBox(tessalink::faultText(fault), MB_ICONERROR);
    }
}
