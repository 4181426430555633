#pragma once

#include "platform/base/CException.h"

/// Raised where an argument is out of its range: an index past the end of a string or collection, a
/// negative size, a malformed format.
class TESSALINK_API CInvalidArgException : public CException {
    DECLARE_DYNAMIC(CInvalidArgException)

public:
    CInvalidArgException();
};

/// Raises CInvalidArgException.
[[noreturn]] TESSALINK_API void AfxThrowInvalidArgException();
