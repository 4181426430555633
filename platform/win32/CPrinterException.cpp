#include "platform/win32/CPrinterException.h"

IMPLEMENT_DYNAMIC(CPrinterException, CException)
