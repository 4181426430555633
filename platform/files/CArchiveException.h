#pragma once

#include "platform/base/CException.h"

/// A fault of an archive.
class TESSALINK_API CArchiveException : public CException {
    DECLARE_DYNAMIC(CArchiveException)

public:
    /// What went wrong; the values are those of the classic class.
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

    /// The message says what `cause` means, and names the file when it is given.
    explicit CArchiveException(int cause = none, const char* fileName = nullptr);

    int m_cause;            ///< a Cause
    CString m_strFileName;  ///< the file; may be empty
};

/// Raises CArchiveException.
[[noreturn]] TESSALINK_API void AfxThrowArchiveException(int cause, const char* fileName = nullptr);
