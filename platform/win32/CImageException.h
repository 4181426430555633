#pragma once

#include "platform/base/CException.h"

/// Raised when the system can't read or write a picture of pixels.
class TESSALINK_API CImageException : public CException {
    DECLARE_DYNAMIC(CImageException)

public:
    /// `message` says what the system refused.
    explicit CImageException(const CString& message) : CException(message) {}
};
