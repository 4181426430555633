#include "platform/base/CByteArray.h"
#include "platform/base/CStringArray.h"

IMPLEMENT_SERIAL(CStringArray, CObject, 0)
IMPLEMENT_SERIAL(CByteArray, CObject, 0)
