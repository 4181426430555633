#pragma once

#include "core/TextPlace.h"
#include "platform/base/CException.h"
#include "platform/base/Export.h"

namespace tessalink {

/// Why norms give no score for a person. The message says so in the words of the norm table, and
/// what the table has instead.
class TESSALINK_API NormError : public CException {
    DECLARE_DYNAMIC(NormError)

public:
    /// What stands in the way.
    enum class Reason {
        MissingKey,     ///< a key, or the age, that the norms depend on is not given
        UnknownValue,   ///< no norms for the value of a key
        AgeOutside,     ///< no norms for the age
        RawOutside,     ///< the raw score is below or above those of the group
        NoScore,        ///< the table says that there is no score: its cell holds "-"
        UnknownColumn,  ///< no standard score has that name
    };

    /// `message` says why there is no score; the other arguments are what the getters give.
    NormError(Reason reason, const CString& key, const TextPlace& group, const CString& message)
        : CException(message), m_reason(reason), m_key(key), m_group(group) {}

    /// For programs that treat some reasons in a way of their own.
    Reason GetReason() const { return m_reason; }
    /// The name of the key in question, for an age that of its column; empty when it is none.
    const CString& GetKey() const { return m_key; }
    /// The first row of the person's group; unknown when the person belongs to none.
    const TextPlace& GetGroupPlace() const { return m_group; }

private:
    Reason m_reason;
    CString m_key;
    TextPlace m_group;
};

}  // namespace tessalink
