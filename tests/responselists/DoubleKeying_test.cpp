#include "responselists/DoubleKeying.h"

#include <gtest/gtest.h>

using tessalink::DoubleKeying;
using enum tessalink::KeyingOutcome;

TEST(DoubleKeying, ComparesStopsAndRecords) {
    struct {
        std::vector<std::pair<int, int>> keyed;
        tessalink::KeyingOutcome last;
        int openItem;
        std::vector<tessalink::KeyingOutcome> record;
        int agreements;
        int corrections;
        int differences;
        int finalOfItem1;
    } const cases[] = {
        {{{1, 5}}, Agreed, -1, {Agreed}, 1, 0, 0, 5},
        {{{1, 6}}, Differs, 1, {}, 0, 0, 1, 5},
        {{{1, 6}, {1, 5}}, Kept, -1, {Kept}, 0, 0, 1, 5},
        {{{1, 6}, {1, 6}}, Corrected, -1, {Corrected}, 0, 1, 1, 6},
        {{{1, 6}, {1, 7}}, Differs, 1, {}, 0, 0, 1, 5},
        {{{1, 6}, {1, 7}, {1, 6}, {1, 6}}, Corrected, -1, {Corrected}, 0, 1, 1, 6},
        // A difference that is left behind is none of what was keyed later.
        {{{1, 6}, {0, 4}, {1, 6}}, Differs, 1, {Agreed}, 1, 0, 2, 5},
        {{{1, 6}, {0, 9}, {1, 6}}, Differs, 1, {}, 0, 0, 3, 5},
        // What was corrected is the first answer from then on.
        {{{1, 6}, {1, 6}, {1, 6}}, Agreed, -1, {Corrected, Agreed}, 1, 1, 1, 6},
        {{{7, 1}, {-1, 1}}, Agreed, -1, {}, 0, 0, 0, 5},
    };
    for (const auto& c : cases) {
        DoubleKeying keying;
        keying.Start({4, 5, 65535});
        auto last = Agreed;
        std::string trace;
        for (const auto& [item, answer] : c.keyed) {
            last = keying.Key(item, answer);
            trace += std::to_string(item) + "=" + std::to_string(answer) + " ";
        }
        EXPECT_EQ(last, c.last) << trace;
        EXPECT_EQ(keying.OpenItem(), c.openItem) << trace;
        std::vector<tessalink::KeyingOutcome> record;
        for (const auto& check : keying.Record()) record.push_back(check.outcome);
        EXPECT_EQ(record, c.record) << trace;
        EXPECT_EQ(keying.AgreementCount(), c.agreements) << trace;
        EXPECT_EQ(keying.CorrectionCount(), c.corrections) << trace;
        EXPECT_EQ(keying.DifferenceCount(), c.differences) << trace;
        EXPECT_EQ(keying.FirstAnswer(1), c.finalOfItem1) << trace;
    }
}
