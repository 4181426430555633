#pragma once

#include "platform/base/CException.h"

/// A fault of an archive.
class TESSALINK_API CArchiveException : public CException {
    DECLARE_DYNAMIC(CArchiveException)

public:
    enum Cause {
        none,
        genericException,
        readOnly,   // storing into an archive that loads
        endOfFile,  // the file ends before what is to be loaded does
        writeOnly,  // loading from an archive that stores
        badIndex,
        badClass,
        badSchema,  // the data is of a form that is not known here
        bufferFull
    };

    explicit CArchiveException(int cause = none, const char* fileName = nullptr);

    int m_cause;
    CString m_strFileName;
};

[[noreturn]] TESSALINK_API void AfxThrowArchiveException(int cause, const char* fileName = nullptr);
