#include "CopingForm.h"
#include "CopingReport.h"
#include "platform/base/HostServices.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"
#include "report/FaultText.h"

int main() {
    try {
        CFrameWnd frame;
        frame.Create("Coping", CRect(0, 0, 400, 300));
        CopingForm form;
        form.Create(CRect(0, 0, 400, 300), 1, &frame);
        form.SetFocus();
        tessalink::HeadlessSystem& keyboard = tessalink::HeadlessSystem::Default();
        for (const char* entry : {"Ann {Example}", "34", "14", "99", "9", "17"}) {
            keyboard.Type(entry);
            keyboard.PressKey(VK_RETURN);
        }
        VarTable variables;
        fillVariables(form.GetAnswers(), variables);
        writeReport(variables, "ann.rtf");
        writeGraph(variables, "ann.svg");
        return 0;
    } catch (const std::exception& fault) {
        AfxMessageBox(tessalink::faultText(fault));
        return 1;
    }
}
