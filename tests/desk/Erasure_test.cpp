// What was deleted is in no byte of any file beside one another.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>

#include "tests/desk/StoreParts.h"
#include "tests/support/Dice.h"

namespace {

using namespace tessalink::desk;
using tessalink::desk::test::smallQuestionnaire;
using tessalink::desk::test::testOptions;
using tessalink::test::Dice;

/// Every byte of all files of the folder.
std::string allBytes(const TemporaryFolder& folder) {
    std::string bytes;
    for (const std::string& name : folder.Names()) bytes += folder.Read(name);
    return bytes;
}

/// Texts that stand for the values of one case: unlike all others from their start on.
class Marks {
public:
    explicit Marks(Dice& dice) : m_dice(&dice) {}

    std::string Next() {
        m_all.push_back(m_dice->Text(9, cLetters) + m_dice->Text(m_dice->Below(40), cLetters));
        if (m_dice->OneIn(60)) m_all.back() += m_dice->Text(9000, cLetters);
        return m_all.back();
    }
    /// How many marks have left their first letters somewhere.
    std::size_t CountIn(const std::string& bytes) const {
        return static_cast<std::size_t>(
            std::count_if(m_all.begin(), m_all.end(), [&](const std::string& mark) {
                return bytes.find(mark.substr(0, 9)) != std::string::npos;
            }));
    }

private:
    static constexpr std::string_view cLetters = "bcdfghjkmnpqrstvwxz";

    Dice* m_dice;
    std::vector<std::string> m_all;
};

struct MarkedCase {
    CaseId id = 0;
    Marks marks;
};

TEST(Erasure, LeavesNoByteOfTheValues) {
    for (const bool isOnShare : {false, true}) {
        const TemporaryFolder folder;
        Dice dice(7);
        CaseStoreOptions options = testOptions();
        options.isOnShare = isOnShare;
        CaseStore store = CaseStore::Create(folder.Path("a.cases"), options);
        std::vector<MarkedCase> cases;
        for (int step = 0; step < 700; ++step) {
            const std::size_t act = dice.Below(30);
            if (cases.empty() || act < 3) {
                MarkedCase added{0, Marks(dice)};
                added.id = store.AddCase(smallQuestionnaire(), added.marks.Next());
                cases.push_back(std::move(added));
            } else if (act == 3 && cases.size() > 5) {
                const std::size_t which = dice.Below(cases.size());
                ASSERT_GT(cases[which].marks.CountIn(allBytes(folder)), 0U);
                store.Delete(cases[which].id);
                ASSERT_EQ(cases[which].marks.CountIn(allBytes(folder)), 0U) << step;
                cases.erase(cases.begin() + static_cast<std::ptrdiff_t>(which));
            } else if (act == 4) {
                store.Sync();
            } else {
                MarkedCase& keyed = cases[dice.Below(cases.size())];
                const EntryName name{EntryKind::Field, "F" + std::to_string(dice.Below(60))};
                const bool isRemoved = dice.OneIn(5);
                store.SetEntry(keyed.id, name,
                               isRemoved ? std::nullopt : std::optional(keyed.marks.Next()));
            }
        }
        EXPECT_TRUE(store.FindDamage().empty());
        while (!cases.empty()) {
            store.Delete(cases.back().id);
            ASSERT_EQ(cases.back().marks.CountIn(allBytes(folder)), 0U);
            cases.pop_back();
        }
    }
}

TEST(Erasure, KnowsFilesThatAnotherProgramHasWrittenAnew) {
    for (const char* const form : {"PRAGMA auto_vacuum = FULL; VACUUM", "VACUUM; ANALYZE"}) {
        const TemporaryFolder folder;
        Dice dice(9);
        Marks kept(dice);
        Marks deleted(dice);
        const auto fill = [&](CaseStore& store, Marks& marks) {
            const CaseId id = store.AddCase(smallQuestionnaire(), marks.Next());
            for (int i = 0; i < 300; ++i) {
                store.SetEntry(id, {EntryKind::Field, "F" + std::to_string(dice.Below(150))},
                               marks.Next());
            }
        };
        {
            CaseStore store = CaseStore::Create(folder.Path("a.cases"), testOptions());
            fill(store, kept);
            fill(store, deleted);
        }
        sqlite3* file = nullptr;
        ASSERT_EQ(sqlite3_open(folder.Path("a.cases").c_str(), &file), SQLITE_OK);
        ASSERT_EQ(sqlite3_exec(file, form, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(file);
        CaseStore store = CaseStore::Open(folder.Path("a.cases"), testOptions());
        ASSERT_EQ(store.GetAccess(), CaseStore::Access::Write);
        const auto entries = store.Entries(1);
        store.Delete(2);
        EXPECT_EQ(deleted.CountIn(allBytes(folder)), 0U);
        EXPECT_EQ(store.Entries(1), entries);
        EXPECT_TRUE(store.FindDamage().empty());
    }
}

TEST(Erasure, WaitsForAReaderAndIsDoneAtTheNextSync) {
    const TemporaryFolder folder;
    Dice dice(8);
    Marks marks(dice);
    CaseStore store = CaseStore::Create(folder.Path("a.cases"), testOptions());
    const CaseId kept = store.AddCase(smallQuestionnaire(), "kept");
    const CaseId id = store.AddCase(smallQuestionnaire(), marks.Next());
    store.SetEntry(id, {EntryKind::Field, "Name"}, marks.Next());
    {
        CaseStoreOptions reading = testOptions();
        reading.mayWrite = false;
        CaseStore reader = CaseStore::Open(folder.Path("a.cases"), reading);
        reader.ReadTrail(kept, [&](const TrailEntry&) { store.Delete(id); });
    }
    EXPECT_GT(marks.CountIn(allBytes(folder)), 0U);
    store.Sync();
    EXPECT_EQ(marks.CountIn(allBytes(folder)), 0U);
    ASSERT_EQ(store.Trail(id).size(), 3U);
    for (const TrailEntry& entry : store.Trail(id)) EXPECT_FALSE(entry.from || entry.to);
    EXPECT_TRUE(store.Trail(kept)[0].to);
    EXPECT_EQ(store.Trail(id).back().act, TrailAct::Deleted);
}

}  // namespace
