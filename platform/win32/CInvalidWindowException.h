#pragma once

#include "platform/base/CException.h"
#include "platform/base/Types.h"

/// Raised for a handle that is no window, or one of another thread, whose messages the library
/// could not get.
class TESSALINK_API CInvalidWindowException : public CException {
    DECLARE_DYNAMIC(CInvalidWindowException)

public:
    /// `window` is the handle that is refused.
    explicit CInvalidWindowException(HWND window);
};
