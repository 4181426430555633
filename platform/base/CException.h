#pragma once

#include <exception>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"

/// The base of all exceptions of the library. They are thrown by value and caught by reference; a
/// host that knows only std::exception gets the message from what().
class TESSALINK_API CException : public CObject, public std::exception {
    DECLARE_DYNAMIC(CException)

public:
    CException() = default;
    /// An exception with this message.
    explicit CException(CString message);
    /// The same message.
    CException(const CException& other);
    CException& operator=(const CException& other);  ///< takes over the message
    ~CException() override;

    /// The message; valid until the exception is changed or destroyed.
    const char* what() const noexcept override;

    /// Copies the message into `buffer`, cut to `size` bytes including the terminating NUL (nothing
    /// when the buffer is null or the size 0), and sets `*helpContext` to 0 when asked for.
    /// Returns nonzero.
    virtual int GetErrorMessage(char* buffer, UINT size, UINT* helpContext = nullptr) const;

protected:
    /// For derived classes that make their message later than themselves.
    void SetMessage(CString message);

private:
    CString m_message;
};
