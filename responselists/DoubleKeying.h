#pragma once

#include <cstdint>
#include <vector>

#include "platform/base/Export.h"

namespace tessalink {

/// What came of an answer that was keyed a second time.
enum class KeyingOutcome {
    Agreed,    ///< it is the first one
    Differs,   ///< it is another one: the item stays open until it is keyed once more
    Kept,      ///< after a difference: the first one was right
    Corrected  ///< after a difference: the second one was right
};

/// One item of the record.
struct KeyingCheck {
    int item = 0;    ///< from 0
    int first = 0;   ///< its answer in the first pass
    int second = 0;  ///< the one that differed last; the first one when there was no difference
    int final = 0;   ///< the answer that counts
    KeyingOutcome outcome = KeyingOutcome::Agreed;  ///< what came of it
};

/// Verification by double keying: the answers of a first pass are keyed again, by the same examiner
/// or another, and compared one by one. At a difference the item is keyed a third time: whichever
/// of both answers comes again is final, and yet another one stands for a new difference.
///
/// It knows no windows; a list that is given one (ItemListCtl::BeginVerification) feeds it.
class TESSALINK_API DoubleKeying {
public:
    /// Starts anew with the answers of the first pass.
    void Start(std::vector<int> answers);

    /// An item was keyed. One that is out of range agrees and leaves no record.
    KeyingOutcome Key(int item, int answer);

    /// The first answer of an item, and the last one that differs from it while it is open.
    int FirstAnswer(int item) const { return m_answers[static_cast<std::size_t>(item)]; }
    int OpenItem() const { return m_openItem; }  ///< -1 when none is open
    /// The last answer to the open item that differed.
    int OpenAnswer() const { return m_openAnswer; }
    /// Whether the item has been keyed a second time and is settled.
    bool IsSettled(int item) const;

    /// How many items are settled.
    int SettledCount() const { return m_settledCount; }

    /// The settled items in the order in which they were; one keyed again stands there again.
    const std::vector<KeyingCheck>& Record() const { return m_record; }
    /// How many items were keyed alike.
    int AgreementCount() const { return m_agreements; }
    /// How many first answers were wrong.
    int CorrectionCount() const { return m_corrections; }
    /// How many differences there were.
    int DifferenceCount() const { return m_differences; }

private:
    void settle(const KeyingCheck& check);

    std::vector<int> m_answers;
    std::vector<std::uint8_t> m_settled;
    std::vector<KeyingCheck> m_record;
    int m_settledCount = 0;
    int m_openItem = -1;
    int m_openAnswer = 0;
    int m_agreements = 0;
    int m_corrections = 0;
    int m_differences = 0;
};

}  // namespace tessalink
