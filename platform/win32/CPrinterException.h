#pragma once

#include "platform/base/CException.h"

/// Raised when there is no printer, or when it refuses what is sent to it.
class TESSALINK_API CPrinterException : public CException {
    DECLARE_DYNAMIC(CPrinterException)

public:
    /// `message` says what went wrong.
    explicit CPrinterException(const CString& message) : CException(message) {}
};
