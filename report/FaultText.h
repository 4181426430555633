#pragma once

#include <exception>

#include "platform/base/CString.h"
#include "platform/base/Export.h"

namespace tessalink {

/// A fault in one text, ready for a message box, a log or standard error, with the place where that
/// is known:
///
///     norms.csv:5:16: raw score 11 is missing between line 4 and this one: ...
///     part.rtf:2:7: Undefined variable 'Suport_T' found!
///     letter.rtf:8:1: included from here
///
/// Places are those of ParseException and InputError; of all else this is the message. A fault
/// inside the text of an \@EVAL has a line that tells where in that text.
TESSALINK_API CString faultText(const std::exception& fault);

}  // namespace tessalink
