#pragma once

#include "platform/base/CString.h"
#include "platform/files/Locale.h"

namespace tessalink {

/// The character that parts whole and fraction in what is keyed: that of the user's locale when it
/// is a single one.
inline char decimalPoint() {
    const CString& separator = localeValues().decimalSeparator;
    return separator.GetLength() == 1 ? separator[0] : '.';
}

/// A number's text as it is shown, and back.
inline CString withLocalPoint(CString text) {
    text.Replace('.', decimalPoint());
    return text;
}
inline CString withFullStop(CString text) {
    text.Replace(decimalPoint(), '.');
    return text;
}

}  // namespace tessalink
