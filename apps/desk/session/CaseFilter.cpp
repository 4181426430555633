#include "apps/desk/session/CaseFilter.h"

#include <algorithm>
#include <numeric>
#include <string_view>

#include "questionnaire/RespondentId.h"

namespace tessalink::desk {

namespace {

bool isDigit(char ch) {
    return ch >= '0' && ch <= '9';
}

/// Cuts the number off that a text begins with, without zeros in front.
std::string_view takeDigits(std::string_view& text) {
    const std::size_t length = static_cast<std::size_t>(
        std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
    std::string_view digits = text.substr(0, length);
    text.remove_prefix(length);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

/// Below 0, 0 or above 0, as `one` stands before `other`; runs of digits by their value.
int compare(std::string_view one, std::string_view other) {
    while (!one.empty() && !other.empty()) {
        if (isDigit(one.front()) && isDigit(other.front())) {
            const std::string_view digits = takeDigits(one);
            const std::string_view others = takeDigits(other);
            if (digits.size() != others.size()) return digits.size() < others.size() ? -1 : 1;
            if (const int order = digits.compare(others); order != 0) return order;
            continue;
        }
        const auto ch = static_cast<unsigned char>(one.front());
        const auto otherCh = static_cast<unsigned char>(other.front());
        if (ch != otherCh) return ch < otherCh ? -1 : 1;
        one.remove_prefix(1);
        other.remove_prefix(1);
    }
    return static_cast<int>(!one.empty()) - static_cast<int>(!other.empty());
}

template <class VALUE>
int compareValues(const VALUE& one, const VALUE& other) {
    return static_cast<int>(other < one) - static_cast<int>(one < other);
}

std::vector<std::string> wordsOf(const std::string& utf8) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::string folded = foldRespondentId(utf8);
    std::vector<std::string> words;
    std::string_view rest = folded;
    while (true) {
        rest.remove_prefix(std::min(rest.find_first_not_of(blanks), rest.size()));
        if (rest.empty()) return words;
        const std::size_t length = std::min(rest.find_first_of(blanks), rest.size());
        words.emplace_back(rest.substr(0, length));
        rest.remove_prefix(length);
    }
}

}  // namespace

CaseIndex::CaseIndex(std::vector<CaseSummary> cases,
                     const std::map<std::string, std::string>& titles)
    : m_cases(std::move(cases)) {
    for (const auto& [hash, title] : titles) AddTitle(hash, title);
    std::sort(m_cases.begin(), m_cases.end(),
              [](const auto& one, const auto& other) { return one.id < other.id; });
    m_folded.reserve(m_cases.size());
    for (const CaseSummary& summary : m_cases) m_folded.push_back(foldRespondentId(summary.label));
}

void CaseIndex::AddTitle(const std::string& hash, const std::string& title) {
    m_titles[hash] = {title, foldRespondentId(title)};
    m_order.reset();
}

std::size_t CaseIndex::position_of(CaseId id) const {
    const auto found = std::lower_bound(
        m_cases.begin(), m_cases.end(), id,
        [](const CaseSummary& summary, CaseId wanted) { return summary.id < wanted; });
    return static_cast<std::size_t>(found - m_cases.begin());
}

void CaseIndex::Update(const CaseSummary& summary) {
    const std::size_t position = position_of(summary.id);
    if (position == m_cases.size() || m_cases[position].id != summary.id) {
        const auto offset = static_cast<std::ptrdiff_t>(position);
        m_cases.insert(m_cases.begin() + offset, summary);
        m_folded.insert(m_folded.begin() + offset, foldRespondentId(summary.label));
        m_order.reset();
        return;
    }
    // Of all cases this one alone may have another place now.
    if (m_order) m_sorted.erase(place_of(position));
    m_cases[position] = summary;
    m_folded[position] = foldRespondentId(summary.label);
    if (m_order) m_sorted.insert(place_of(position), position);
}

void CaseIndex::Remove(CaseId id) {
    const std::size_t position = position_of(id);
    if (position == m_cases.size() || m_cases[position].id != id) return;
    m_cases.erase(m_cases.begin() + static_cast<std::ptrdiff_t>(position));
    m_folded.erase(m_folded.begin() + static_cast<std::ptrdiff_t>(position));
    m_order.reset();
}

const CaseIndex::Title& CaseIndex::title_of(const CaseSummary& summary) const {
    static const Title none;
    const auto found = m_titles.find(summary.questionnaire);
    return found == m_titles.end() ? none : found->second;
}

const std::string& CaseIndex::TitleOf(const CaseSummary& summary) const {
    return title_of(summary).shown;
}

int CaseIndex::compare_cases(std::size_t one, std::size_t other) const {
    const CaseSummary& first = m_cases[one];
    const CaseSummary& second = m_cases[other];
    using Column = CaseOrder::Column;
    switch (m_order->column) {
        case Column::Label:
            return compare(m_folded[one], m_folded[other]);
        case Column::Questionnaire:
            return compare(title_of(first).folded, title_of(second).folded);
        case Column::State:
            return compareValues(first.state, second.state);
        case Column::Created:
            return compareValues(first.created, second.created);
        case Column::Changed:
            return compareValues(first.changed, second.changed);
        case Column::Answered:
            break;
    }
    return compareValues(first.answered, second.answered);
}

bool CaseIndex::stands_before(std::size_t one, std::size_t other) const {
    const int order = compare_cases(one, other);
    if (order == 0) return one < other;
    return m_order->isDescending ? order > 0 : order < 0;
}

/// Where a position stands, or is to stand, among those in order.
std::vector<std::size_t>::iterator CaseIndex::place_of(std::size_t position) {
    return std::lower_bound(
        m_sorted.begin(), m_sorted.end(), position,
        [this](std::size_t one, std::size_t other) { return stands_before(one, other); });
}

void CaseIndex::sort(const CaseOrder& order) {
    if (m_order == order) return;
    m_order = order;
    m_sorted.resize(m_cases.size());
    std::iota(m_sorted.begin(), m_sorted.end(), std::size_t{0});
    std::sort(m_sorted.begin(), m_sorted.end(),
              [this](std::size_t one, std::size_t other) { return stands_before(one, other); });
}

std::vector<std::size_t> CaseIndex::Find(const CaseFilter& filter, const CaseOrder& order) {
    sort(order);
    const std::vector<std::string> words = wordsOf(filter.words);
    const auto isShown = [&](std::size_t position) {
        const CaseSummary& summary = m_cases[position];
        if (filter.state && summary.state != *filter.state) return false;
        if (filter.questionnaire && summary.questionnaire != *filter.questionnaire) return false;
        return std::all_of(words.begin(), words.end(), [&](const std::string& word) {
            return m_folded[position].find(word) != std::string::npos ||
                   title_of(summary).folded.find(word) != std::string::npos;
        });
    };
    std::vector<std::size_t> shown;
    std::copy_if(m_sorted.begin(), m_sorted.end(), std::back_inserter(shown), isShown);
    return shown;
}

}  // namespace tessalink::desk
