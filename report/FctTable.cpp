#include "report/FctTable.h"

#include "platform/base/CInvalidArgException.h"

IMPLEMENT_DYNAMIC(FctTable, CObject)
IMPLEMENT_DYNAMIC(NormalFctTable, FctTable)

CFile& FctTable::output() const {
    if (!m_output) AfxThrowInvalidArgException();
    return *m_output;
}

int NormalFctTable::Call(const char* name) {
    const Function function = m_functions.Get(name);
    if (!function) return 0;
    function(output(), extraInfo());
    return 1;
}
