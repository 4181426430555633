#pragma once

#include "platform/base/LocaleValues.h"

/// What the system tells of the user's settings and the time: one source for each system.
namespace tessalink::detail {

LocaleValues systemLocale();
CalendarTime systemTime();

}  // namespace tessalink::detail
