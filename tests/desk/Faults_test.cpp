// Trouble below the store: every call of its file layer fails in turn, and power fails at any
// moment. What was kept once stays kept.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

#include "apps/desk/session/CaseSession.h"
#include "tests/desk/FaultLayer.h"
#include "tests/desk/StoreParts.h"
#include "tests/support/Dice.h"

namespace {

using namespace tessalink::desk;
using tessalink::desk::test::FaultLayer;
using tessalink::desk::test::smallQuestionnaire;
using tessalink::desk::test::testOptions;
using tessalink::test::Dice;

/// What a file holds, as plain values.
struct PlainFile {
    std::map<CaseId, std::string> labels;
    std::map<CaseId, std::map<EntryName, std::string>> entries;
    std::size_t acts = 0;  ///< of the trail

    bool operator==(const PlainFile&) const = default;
};

PlainFile storedFile(CaseStore& store) {
    PlainFile plain;
    for (const CaseSummary& summary : store.Summaries()) {
        plain.labels[summary.id] = summary.label;
        for (const Entry& entry : store.Entries(summary.id)) {
            plain.entries[summary.id][entry.name] = entry.value;
        }
    }
    plain.acts = store.Trail().size();
    return plain;
}

/// A step of the work, and what it leads to.
struct Step {
    std::function<void(CaseStore&)> act;
    std::function<void(PlainFile&)> follow;
};

Step set(CaseId id, const char* name, const char* value) {
    const EntryName entry{EntryKind::Answer, name};
    return {[=](CaseStore& store) { store.SetEntry(id, entry, value); },
            [=](PlainFile& plain) {
                std::string& kept = plain.entries[id][entry];
                if (kept != value) ++plain.acts;
                kept = value;
            }};
}

const Step cSync = {[](CaseStore& store) { store.Sync(); }, [](PlainFile&) {}};
const Step cAdd = {
    [](CaseStore& store) { store.AddCase(tessalink::desk::test::otherQuestionnaire(), "new"); },
    [](PlainFile& plain) {
        plain.labels[4] = "new";
        ++plain.acts;
    }};
const Step cDelete = {[](CaseStore& store) { store.Delete(1); },
                      [](PlainFile& plain) {
                          plain.labels.erase(1);
                          plain.entries.erase(1);
                          ++plain.acts;
                      }};

const std::vector<Step>& workSteps() {
    static const std::vector<Step> steps = {
        set(1, "Q1", "1"), set(2, "Q2", "0"), cSync, set(2, "Q3", "-4"), cAdd, set(2, "Q1", "0"),
        cDelete,           set(3, "Q1", "1"), cSync, set(3, "Q2", "1")};
    return steps;
}

CaseStoreOptions layerOptions(bool isOnShare = false) {
    FaultLayer::Get();
    CaseStoreOptions options = testOptions();
    options.layer = FaultLayer::cName;
    options.isOnShare = isOnShare;
    return options;
}

/// A file with three cases, the same for each run.
PlainFile prepare(const std::string& path) {
    CaseStore store = CaseStore::Create(path, layerOptions());
    for (const char* const label : {"one", "two", "three"}) {
        store.AddCase(smallQuestionnaire(), label);
    }
    return storedFile(store);
}

struct Trouble {
    const char* name;
    bool isOnShare;
    bool isForever;
    bool isFull;
};

/// Does the work as far as it goes, trying each step once; `plain` follows what was done. Returns
/// all that may be in the file: where nothing works any more, that a step threw doesn't tell.
std::vector<PlainFile> work(const std::string& path, const Trouble& trouble, PlainFile plain) {
    std::vector<PlainFile> maybe;
    try {
        CaseStore store = CaseStore::Open(path, layerOptions(trouble.isOnShare));
        for (const Step& step : workSteps()) {
            try {
                step.act(store);
                step.follow(plain);
            } catch (const CaseStoreError&) {
                if (!trouble.isForever || trouble.isFull || !maybe.empty()) continue;
                maybe.push_back(plain);
                step.follow(maybe.back());
            }
        }
    } catch (const CaseStoreError&) {
        // It could not be opened.
    }
    maybe.push_back(plain);
    return maybe;
}

class FileTrouble : public testing::TestWithParam<Trouble> {};

TEST_P(FileTrouble, AtEveryCallLosesNothingThatWasKept) {
    const Trouble& trouble = GetParam();
    FaultLayer& layer = FaultLayer::Get();
    layer.Disarm();
    const TemporaryFolder folder;
    const std::string sound = folder.Path("sound.cases");
    const std::string path = folder.Path("a.cases");
    const PlainFile plain = prepare(sound);
    bool isOver = false;
    for (std::uint64_t number = 1; !isOver; ++number) {
        folder.Write("a.cases", folder.Read("sound.cases"));
        layer.Arm(number, trouble.isForever, trouble.isFull);
        const auto maybe = work(path, trouble, plain);
        isOver = !layer.HasFailed();
        layer.Disarm();
        CaseStore store = CaseStore::Open(path, layerOptions());
        ASSERT_EQ(store.GetAccess(), CaseStore::Access::Write) << number;
        const PlainFile left = storedFile(store);
        ASSERT_TRUE(std::find(maybe.begin(), maybe.end(), left) != maybe.end())
            << "call " << number;
        ASSERT_TRUE(store.FindDamage().empty()) << number;
        ASSERT_TRUE(!isOver || number > 10);
    }
}

INSTANTIATE_TEST_SUITE_P(All, FileTrouble,
                         testing::Values(Trouble{"Once", false, false, false},
                                         Trouble{"Forever", false, true, false},
                                         Trouble{"Full", false, true, true},
                                         Trouble{"OnceOnShare", true, false, false},
                                         Trouble{"ForeverOnShare", true, true, false},
                                         Trouble{"FullOnShare", true, true, true}),
                         [](const auto& instance) { return instance.param.name; });

TEST(SessionTrouble, LeavesSessionAndFileAlike) {
    FaultLayer& layer = FaultLayer::Get();
    layer.Disarm();
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    prepare(folder.Path("sound.cases"));
    bool isOver = false;
    for (std::uint64_t number = 1; !isOver; ++number) {
        folder.Write("a.cases", folder.Read("sound.cases"));
        CaseStore store = CaseStore::Open(path, layerOptions());
        CaseSession session(store, 1);
        layer.Arm(number, false, false);
        const std::vector<std::function<void()>> acts = {
            [&] { session.SetAnswer(0, 1); }, [&] { session.SetAnswer(0, 2); },
            [&] { session.SetLabel("new"); }, [&] { session.Undo(); },
            [&] { session.Undo(); },          [&] { session.SetState(CaseState::Complete); }};
        for (const auto& act : acts) {
            try {
                act();
            } catch (const CaseStoreError&) {
                // Not done; the others go on.
            }
        }
        isOver = !layer.HasFailed();
        layer.Disarm();
        const CaseSession again(store, 1);
        ASSERT_EQ(session.GetRespondent().answers, again.GetRespondent().answers) << number;
        ASSERT_EQ(session.GetRespondent().id, again.GetRespondent().id) << number;
        ASSERT_EQ(session.GetSummary().state, again.GetSummary().state) << number;
        ASSERT_EQ(session.GetScores().scales[0].raw, again.GetScores().scales[0].raw);
        while (session.CanUndo()) session.Undo();
        ASSERT_EQ(session.GetRespondent().id, "one");
        ASSERT_FALSE(session.GetRespondent().answers[0]);
        ASSERT_EQ(store.Summary(1).state, CaseState::Open);
        ASSERT_TRUE(!isOver || number > 10);
    }
}

TEST(PowerFailure, TakesNothingThatWasSynced) {
    for (std::uint64_t seed = 1; seed <= 120; ++seed) {
        Dice dice(seed);
        const TemporaryFolder folder;
        const std::string path = folder.Path("a.cases");
        FaultLayer& layer = FaultLayer::Get();
        layer.Disarm();
        PlainFile plain = prepare(path);
        std::vector<PlainFile> states;
        {
            const bool isOnShare = dice.OneIn(3);
            CaseStore store = CaseStore::Open(path, layerOptions(isOnShare));
            layer.Watch();
            states.push_back(plain);
            for (std::size_t step = 0; step < 10 + dice.Below(40); ++step) {
                if (dice.OneIn(8)) {
                    store.Sync();
                    states = {plain};
                    continue;
                }
                const Step edit = set(2 + static_cast<CaseId>(dice.Below(2)),
                                      dice.OneIn(2) ? "Q1" : "Q2", dice.OneIn(2) ? "0" : "1");
                edit.act(store);
                edit.follow(plain);
                if (isOnShare) states.clear();
                states.push_back(plain);
            }
            layer.CutPower();
        }
        layer.TakeUnsynced(seed);
        layer.Disarm();
        CaseStore store = CaseStore::Open(path, layerOptions());
        const PlainFile left = storedFile(store);
        EXPECT_TRUE(std::find(states.begin(), states.end(), left) != states.end())
            << "seed " << seed << ": neither what was synced nor any later state";
        EXPECT_TRUE(store.FindDamage().empty());
    }
}

}  // namespace
