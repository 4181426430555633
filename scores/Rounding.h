#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"

namespace tessalink {

/// Rounded to so many decimals, 0 to 15, halves upward (-0.5 gives 0), as scores are. A half is the
/// double that its digits give when they are read: 1.265 with two decimals gives 1.27.
TESSALINK_API double roundHalfUp(double value, int decimals);

/// That as text, with all its decimals.
TESSALINK_API CString formatHalfUp(double value, int decimals);

}  // namespace tessalink
