#pragma once

#include "platform/base/CString.h"
#include "platform/base/Export.h"

/// What graphs show, in words.
namespace tessalink {

/// A label as running text: without switches of fonts, with blanks for line ends.
/// What stands in the symbol font is named: Greek letters ("alpha", "Delta"), ">=", "<=", "<>",
/// "~"; a sign that has no such name is left out.
TESSALINK_API CString plainLabel(const CString& label);

/// Whole numbers as such, others with up to two decimals.
TESSALINK_API CString plainNumber(double value);

}  // namespace tessalink
