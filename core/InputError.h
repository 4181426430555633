#pragma once

#include "core/TextPlace.h"
#include "platform/base/CException.h"
#include "platform/base/Export.h"

namespace tessalink {

/// What is wrong with a file that a user wrote, and where. The message says what to do about it.
class TESSALINK_API InputError : public CException {
    DECLARE_DYNAMIC(InputError)

public:
    /// `message` says what is wrong there and what to do.
    InputError(const TextPlace& place, const CString& message)
        : CException(message), m_place(place) {}

    /// Where the fault is; for messages in the form FILE:LINE:COLUMN.
    const TextPlace& GetPlace() const { return m_place; }

private:
    TextPlace m_place;
};

}  // namespace tessalink
