// Searching and sorting against a plain second implementation.
#include "apps/desk/session/CaseFilter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "questionnaire/RespondentId.h"
#include "tests/support/Dice.h"

namespace {

using namespace tessalink::desk;
using tessalink::foldRespondentId;
using tessalink::test::Dice;

const std::map<std::string, std::string> cTitles = {
    {"h1", "Big Five"}, {"h2", "Ängste"}, {"h3", "Big fish"}};

CaseSummary randomCase(Dice& dice, CaseId id) {
    const std::vector<std::string> starts = {"P", "p", "Ärger ", "ärger", "Muster-", ""};
    CaseSummary summary;
    summary.id = id;
    summary.label = dice.Pick(starts) + std::to_string(dice.Below(120));
    if (dice.OneIn(4)) summary.label.insert(summary.label.size() - 1, "0");
    summary.questionnaire = "h" + std::to_string(1 + dice.Below(3));
    summary.state = dice.OneIn(2) ? CaseState::Open : CaseState::Complete;
    summary.created = static_cast<std::int64_t>(dice.Below(30));
    summary.changed = static_cast<std::int64_t>(dice.Below(30));
    summary.answered = static_cast<std::int64_t>(dice.Below(5));
    return summary;
}

/// A text whose plain order is that of lists: every number with as many digits.
std::string plainKey(const std::string& text) {
    std::string key;
    const std::string folded = foldRespondentId(text);
    for (std::size_t i = 0; i < folded.size();) {
        std::string digits;
        while (i < folded.size() && folded[i] >= '0' && folded[i] <= '9') digits += folded[i++];
        if (digits.empty()) {
            key += folded[i++];
            continue;
        }
        digits.erase(0, digits.find_first_not_of('0'));
        key += "0" + std::string(10 - digits.size(), '0') + digits;
    }
    return key;
}

std::string plainKey(const CaseSummary& summary, CaseOrder::Column column) {
    using Column = CaseOrder::Column;
    const std::map<Column, std::string> keys = {
        {Column::Label, plainKey(summary.label)},
        {Column::Questionnaire, plainKey(cTitles.at(summary.questionnaire))},
        {Column::State, summary.state == CaseState::Open ? "0" : "1"},
        {Column::Created, plainKey(std::to_string(summary.created))},
        {Column::Changed, plainKey(std::to_string(summary.changed))},
        {Column::Answered, plainKey(std::to_string(summary.answered))}};
    return keys.at(column);
}

std::vector<CaseId> plainlyFound(std::vector<CaseSummary> cases, const CaseFilter& filter,
                                 const CaseOrder& order) {
    std::erase_if(cases, [&](const CaseSummary& summary) {
        std::istringstream words(foldRespondentId(filter.words));
        bool isShown = !filter.state || *filter.state == summary.state;
        if (filter.questionnaire && *filter.questionnaire != summary.questionnaire) isShown = false;
        for (std::string word; words >> word;) {
            const std::string all = foldRespondentId(summary.label) + "\n" +
                                    foldRespondentId(cTitles.at(summary.questionnaire));
            if (all.find(word) == std::string::npos) isShown = false;
        }
        return !isShown;
    });
    std::stable_sort(cases.begin(), cases.end(), [&](const auto& one, const auto& other) {
        const std::string key = plainKey(one, order.column);
        const std::string otherKey = plainKey(other, order.column);
        return order.isDescending ? otherKey < key : key < otherKey;
    });
    std::vector<CaseId> ids;
    for (const CaseSummary& summary : cases) ids.push_back(summary.id);
    return ids;
}

TEST(CaseIndex, FindsAndSortsAsAPlainList) {
    for (std::uint64_t seed = 1; seed <= 30; ++seed) {
        Dice dice(seed);
        std::vector<CaseSummary> cases;
        for (CaseId id = 1; id <= 80; ++id) cases.push_back(randomCase(dice, id * 2));
        CaseIndex index(cases, cTitles);
        const std::vector<std::string> words = {
            "", " ", "p", "P1", "ÄRGER", "ä", "big 1", "FISH 2 3", "muster- FIVE", "nowhere"};
        for (int step = 0; step < 60; ++step) {
            if (dice.OneIn(3)) {
                const CaseSummary changed =
                    randomCase(dice, 1 + static_cast<CaseId>(dice.Below(170)));
                index.Update(changed);
                std::erase_if(cases, [&](const auto& known) { return known.id == changed.id; });
                cases.push_back(changed);
            } else if (dice.OneIn(4)) {
                const auto id = 1 + static_cast<CaseId>(dice.Below(170));
                index.Remove(id);
                std::erase_if(cases, [&](const auto& known) { return known.id == id; });
            }
            std::sort(cases.begin(), cases.end(),
                      [](const auto& one, const auto& other) { return one.id < other.id; });
            ASSERT_EQ(index.Cases(), cases);
            CaseFilter filter;
            filter.words = dice.Pick(words);
            if (dice.OneIn(4)) filter.questionnaire = "h" + std::to_string(1 + dice.Below(4));
            if (dice.OneIn(4)) filter.state = CaseState::Open;
            const CaseOrder order{static_cast<CaseOrder::Column>(dice.Below(6)), dice.OneIn(2)};
            std::vector<CaseId> found;
            for (const std::size_t position : index.Find(filter, order)) {
                found.push_back(index.Cases()[position].id);
            }
            ASSERT_EQ(found, plainlyFound(cases, filter, order))
                << "seed " << seed << " step " << step << " words " << filter.words;
        }
    }
}

}  // namespace
