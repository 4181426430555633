// Keys the answers to three test items without a screen, and prints them.
#include <cstdio>

#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"
#include "responselists/ItemListCtl.h"

int main() {
    CFrameWnd frame;
    frame.Create("Answers", CRect(0, 0, 400, 300));
    ItemListCtl list(3, "[Yes|Yy|1][No|Nn|2]", -1);
    list.Create(CRect(0, 0, 400, 300), 1, &frame);
    list.SetFocus();
    tessalink::HeadlessSystem::Default().Type("yNy");
    std::printf("Answers: %d %d %d\n", list.GetItem(0), list.GetItem(1), list.GetItem(2));
    return list.GetItem(0) == 1 && list.GetItem(1) == 2 && list.GetItem(2) == 1 ? 0 : 1;
}
