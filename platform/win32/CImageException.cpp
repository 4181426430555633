#include "platform/win32/CImageException.h"

IMPLEMENT_DYNAMIC(CImageException, CException)
