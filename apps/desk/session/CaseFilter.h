#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "apps/desk/casestore/Case.h"

namespace tessalink::desk {

/// Which cases a list shows.
struct CaseFilter {
    /// Every word must be in the label or in the title of the questionnaire, in any letter case;
    /// UTF-8.
    std::string words;
    std::optional<std::string> questionnaire;  ///< its hash
    std::optional<CaseState> state;
};

/// In which order it shows them.
struct CaseOrder {
    enum class Column { Label, Questionnaire, State, Created, Changed, Answered };

    Column column = Column::Label;
    bool isDescending = false;

    bool operator==(const CaseOrder&) const = default;
};

/// The cases of a list, prepared for searching while someone types: 100,000 in some milliseconds.
/// Labels and titles are compared without regard to letter case, runs of digits by their value (P9
/// before P10); equal cases by their ids.
class CaseIndex {
public:
    CaseIndex() = default;
    /// Titles by hash.
    CaseIndex(std::vector<CaseSummary> cases, const std::map<std::string, std::string>& titles);

    /// Puts a case in the place of the one with its id, or adds it. The questionnaire must be one
    /// of the titles; AddTitle makes it known.
    void Update(const CaseSummary& summary);
    void Remove(CaseId id);
    void AddTitle(const std::string& hash, const std::string& title);

    /// The cases to show, in order, as positions in Cases(). Valid until the next change.
    std::vector<std::size_t> Find(const CaseFilter& filter, const CaseOrder& order);

    /// By ascending id.
    const std::vector<CaseSummary>& Cases() const { return m_cases; }
    const std::string& TitleOf(const CaseSummary& summary) const;

private:
    struct Title {
        std::string shown;
        std::string folded;
    };

    const Title& title_of(const CaseSummary& summary) const;
    std::size_t position_of(CaseId id) const;
    int compare_cases(std::size_t one, std::size_t other) const;
    bool stands_before(std::size_t one, std::size_t other) const;
    std::vector<std::size_t>::iterator place_of(std::size_t position);
    void sort(const CaseOrder& order);

    std::vector<CaseSummary> m_cases;
    std::vector<std::string> m_folded;  ///< labels, in small letters
    std::map<std::string, Title> m_titles;
    std::vector<std::size_t> m_sorted;  ///< all positions in m_order
    std::optional<CaseOrder> m_order;   ///< nothing: m_sorted is out of date
};

}  // namespace tessalink::desk
