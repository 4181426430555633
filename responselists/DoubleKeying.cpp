#include "responselists/DoubleKeying.h"

#include <utility>

namespace tessalink {

void DoubleKeying::Start(std::vector<int> answers) {
    *this = DoubleKeying();
    m_settled.assign(answers.size(), 0);
    m_answers = std::move(answers);
}

bool DoubleKeying::IsSettled(int item) const {
    return item >= 0 && static_cast<std::size_t>(item) < m_settled.size() &&
           m_settled[static_cast<std::size_t>(item)] != 0;
}

void DoubleKeying::settle(const KeyingCheck& check) {
    m_answers[static_cast<std::size_t>(check.item)] = check.final;
    if (!IsSettled(check.item)) ++m_settledCount;
    m_settled[static_cast<std::size_t>(check.item)] = 1;
    m_record.push_back(check);
    m_openItem = -1;
}

KeyingOutcome DoubleKeying::Key(int item, int answer) {
    if (item < 0 || static_cast<std::size_t>(item) >= m_answers.size())
        return KeyingOutcome::Agreed;
    const int first = FirstAnswer(item);
    const bool wasOpen = m_openItem == item;
    if (answer == first) {
        const KeyingOutcome outcome = wasOpen ? KeyingOutcome::Kept : KeyingOutcome::Agreed;
        if (!wasOpen) ++m_agreements;
        settle({item, first, wasOpen ? m_openAnswer : first, first, outcome});
        return outcome;
    }
    if (wasOpen && answer == m_openAnswer) {
        ++m_corrections;
        settle({item, first, answer, answer, KeyingOutcome::Corrected});
        return KeyingOutcome::Corrected;
    }
    if (!wasOpen) ++m_differences;
    m_openItem = item;
    m_openAnswer = answer;
    return KeyingOutcome::Differs;
}

}  // namespace tessalink
