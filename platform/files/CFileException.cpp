#include "platform/files/CFileException.h"

#include <cerrno>
#include <cstddef>
#include <iterator>

namespace {

constexpr const char* cFileMessages[] = {
    "no fault",
    "the operation failed",
    "the file does not exist",
    "the path is not valid",
    "too many files are open",
    "access is denied",
    "the file is not open or its handle is not valid",
    "the current folder can't be removed",
    "the folder is full",
    "the position in the file is not valid",
    "the device failed",
    "the file is in use by another program",
    "a part of the file is locked",
    "the disk is full",
    "the end of the file was reached",
};
static_assert(std::size(cFileMessages) == CFileException::endOfFile + 1);

struct ErrorCause {
    int error;
    int cause;
};

constexpr ErrorCause cErrorCauses[] = {
    {0, CFileException::none},
    {ENOENT, CFileException::fileNotFound},
    {ENOTDIR, CFileException::badPath},
    {ENAMETOOLONG, CFileException::badPath},
    {ELOOP, CFileException::badPath},
    {EILSEQ, CFileException::badPath},
    {ENODEV, CFileException::badPath},
    {ENETUNREACH, CFileException::hardIO},
    {EMFILE, CFileException::tooManyOpenFiles},
    {ENFILE, CFileException::tooManyOpenFiles},
    {EACCES, CFileException::accessDenied},
    {EPERM, CFileException::accessDenied},
    {EROFS, CFileException::accessDenied},
    {EISDIR, CFileException::accessDenied},
    {ETXTBSY, CFileException::accessDenied},
    {EEXIST, CFileException::accessDenied},
    {EBADF, CFileException::invalidFile},
    {EBUSY, CFileException::removeCurrentDir},
    {EMLINK, CFileException::directoryFull},
    {EINVAL, CFileException::badSeek},
    {ESPIPE, CFileException::badSeek},
    {EOVERFLOW, CFileException::badSeek},
    {EIO, CFileException::hardIO},
    {ENXIO, CFileException::hardIO},
    {EWOULDBLOCK, CFileException::sharingViolation},
    {EDEADLK, CFileException::lockViolation},
    {ENOLCK, CFileException::lockViolation},
    {ENOSPC, CFileException::diskFull},
#ifdef EDQUOT
    {EDQUOT, CFileException::diskFull},
#endif
    {EFBIG, CFileException::diskFull},
};

struct PathFault {
    int cause;
    int error;
    const char* message;
};
// What is wrong with a path or device, where the system says more than the cause does.
constexpr PathFault cPathFaults[] = {
    {CFileException::badPath, ENOENT, "the folder does not exist"},
    {CFileException::badPath, ENOTDIR, "a part of the path is a file, not a folder"},
    {CFileException::badPath, ENAMETOOLONG, "the name is too long"},
    {CFileException::badPath, ELOOP, "its links lead in a circle"},
    {CFileException::badPath, EILSEQ, "the name has characters that the system does not take"},
    {CFileException::badPath, ENODEV, "the name is that of a device"},
    {CFileException::hardIO, ENETUNREACH, "the folder of another computer can't be reached"},
};

const char* textFor(int cause, std::int64_t osError) {
    for (const PathFault& fault : cPathFaults) {
        if (fault.cause == cause && fault.error == osError) return fault.message;
    }
    const auto index = static_cast<std::size_t>(static_cast<unsigned>(cause));
    const std::size_t other = CFileException::genericException;
    return cFileMessages[index < std::size(cFileMessages) ? index : other];
}

CString messageFor(int cause, std::int64_t osError, const CString& fileName) {
    return (fileName.IsEmpty() ? CString() : fileName + ": ") + textFor(cause, osError) + ".";
}

}  // namespace

IMPLEMENT_DYNAMIC(CFileException, CException)

CFileException::CFileException(int cause, std::int64_t osError, const char* fileName) {
    if (cause != none) Set(cause, osError, fileName);
}

void CFileException::Set(int cause, std::int64_t osError, const char* fileName) {
    m_cause = cause;
    m_lOsError = osError;
    m_strFileName = fileName;
    SetMessage(messageFor(cause, osError, m_strFileName));
}

int CFileException::ErrnoToException(int error) {
    for (const ErrorCause& entry : cErrorCauses) {
        if (entry.error == error) return entry.cause;
    }
    return genericException;
}

void CFileException::ThrowOsError(std::int64_t error, const char* fileName) {
    throw CFileException(ErrnoToException(static_cast<int>(error)), error, fileName);
}

void AfxThrowFileException(int cause, std::int64_t osError, const char* fileName) {
    throw CFileException(cause, osError, fileName);
}
