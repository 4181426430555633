#pragma once

#include "platform/base/Export.h"
#include "platform/base/LocaleValues.h"

namespace tessalink {

/// How the user writes times, dates and decimals: what the host says (HostServices::localeValues),
/// otherwise what the system's settings say (the environment's LC_ALL, LC_TIME, LC_NUMERIC or
/// LANG). Read on first use and kept until services are set again. The process's own locale stays
/// as it is. Texts that the code page lacks are replaced: the separators by ":", "/" and ".", the
/// indicators by AM and PM.
TESSALINK_API const LocaleValues& localeValues();

/// The local time now: the host's clock (HostServices::clock), otherwise the system's.
TESSALINK_API CalendarTime localTime();

}  // namespace tessalink
