#include "platform/base/CException.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/base/CInvalidArgException.h"

IMPLEMENT_DYNAMIC(CException, CObject)

CException::CException(CString message) : m_message(std::move(message)) {}

CException::CException(const CException& other)
    : CObject(), std::exception(other), m_message(other.m_message) {}

CException& CException::operator=(const CException& other) {
    m_message = other.m_message;
    return *this;
}

CException::~CException() = default;

const char* CException::what() const noexcept {
    return m_message;
}

int CException::GetErrorMessage(char* buffer, UINT size, UINT* helpContext) const {
    if (helpContext != nullptr) *helpContext = 0;
    if (buffer == nullptr || size == 0) return 1;
    const char* message = what();
    const std::size_t length = std::min<std::size_t>(std::strlen(message), size - 1);
    std::memcpy(buffer, message, length);
    buffer[length] = '\0';
    return 1;
}

void CException::SetMessage(CString message) {
    m_message = std::move(message);
}

IMPLEMENT_DYNAMIC(CInvalidArgException, CException)

CInvalidArgException::CInvalidArgException() : CException("An argument is out of its range.") {}

void AfxThrowInvalidArgException() {
    throw CInvalidArgException();
}
