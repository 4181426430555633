#include "platform/win32/CInvalidWindowException.h"

#include "platform/base/NumberText.h"

IMPLEMENT_DYNAMIC(CInvalidWindowException, CException)

namespace {

CString messageFor(HWND window) {
    CString text;
    text.Format("Windows of the library can't be shown in the window %p: %s.",
                static_cast<void*>(window),
                ::IsWindow(window) != 0
                    ? "it belongs to another thread; make them in the thread that made it"
                    : "it does not exist; make it before, and keep it as long as they live");
    return text;
}

}  // namespace

CInvalidWindowException::CInvalidWindowException(HWND window) : CException(messageFor(window)) {}
