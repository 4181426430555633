#include "platform/windows/WindowText.h"

#include "platform/windows/CWnd.h"

// NOLINTNEXTLINE(performance-unnecessary-value-param): hosts know this signature
void ReplaceWindowText(CWnd* window, CString argument) {
    if (window == nullptr) return;
    CString text;
    window->GetWindowText(text);
    text.Replace("%1", argument);
    window->SetWindowText(text);
}

void ReplaceWindowText(CWnd* window, unsigned int resourceId) {
    CString argument;
    argument.LoadString(resourceId);
    ReplaceWindowText(window, argument);
}
