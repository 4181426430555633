#pragma once

#include "platform/base/CException.h"

/// A fault of a file: the kind of fault, the system's error number and the file's name. what() says
/// it in plain English: "reports/out.rtf: the disk is full."
class TESSALINK_API CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)

public:
    /// What went wrong; the values are those of the classic class.
    enum Cause {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    /// `osError` is an errno value, -1 for none. The message is made of all three.
    explicit CFileException(int cause = none, std::int64_t osError = -1,
                            const char* fileName = nullptr);

    /// Takes over the cause, error number, name and message.
    void Set(int cause, std::int64_t osError, const char* fileName);

    /// The cause for an errno value.
    static int ErrnoToException(int error);
    /// Raises the exception for an errno value.
    [[noreturn]] static void ThrowOsError(std::int64_t error, const char* fileName = nullptr);

    int m_cause = none;            ///< a Cause
    std::int64_t m_lOsError = -1;  ///< an errno value, or -1
    CString m_strFileName;         ///< as it was given to the operation; may be empty
};

/// Raises CFileException.
[[noreturn]] TESSALINK_API void AfxThrowFileException(int cause, std::int64_t osError = -1,
                                                      const char* fileName = nullptr);
