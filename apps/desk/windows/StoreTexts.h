#pragma once

#include <QString>

#include "apps/desk/casestore/CaseStore.h"

namespace tessalink::desk {

/// What a fault of a file of cases says, in the language of the desk. In English that is the
/// store's own message, which tells more than the kind of the fault.
QString storeFaultText(const CaseStoreError& error);
/// Why a file is open for reading only, likewise.
QString noticeText(const CaseStore::Notice& notice);

}  // namespace tessalink::desk
