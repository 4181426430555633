// Damaged files: every page destroyed in turn, files cut off, bits turned over. What can be read is
// read, and nothing wrong is said to be right.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>

#include "tests/desk/StoreParts.h"
#include "tests/support/Dice.h"

namespace {

using namespace tessalink::desk;
using tessalink::desk::test::smallQuestionnaire;
using tessalink::desk::test::testOptions;
using tessalink::test::Dice;

constexpr std::size_t cPage = 4096;
constexpr CaseId cKeyed = 12;     ///< the first cases were keyed by hand,
constexpr CaseId cImported = 60;  ///< the others imported

using Cases = std::map<CaseId, std::pair<CaseSummary, std::vector<Entry>>>;

class Damage : public testing::Test {
protected:
    Damage() {
        Dice dice(3);
        CaseStore store = CaseStore::Create(m_folder.Path("a.cases"), testOptions());
        for (CaseId id = 1; id <= cKeyed; ++id) {
            store.AddCase(smallQuestionnaire(), "keyed" + std::to_string(id));
            for (int i = 0; i < 25; ++i) {
                store.SetEntry(id, {EntryKind::Field, "F" + std::to_string(dice.Below(15))},
                               dice.Text(1 + dice.Below(90), "abcdefgh"));
            }
        }
        std::vector<NewCase> imported;
        for (CaseId i = 0; i < cImported; ++i) {
            NewCase added{"imported" + std::to_string(i) + dice.Text(dice.Below(200), "xyz")};
            for (int entry = 0; entry < 30; ++entry) {
                added.entries.push_back(
                    {{EntryKind::Answer, "I" + std::to_string(entry)}, dice.Text(30, "abcdefgh")});
            }
            imported.push_back(std::move(added));
        }
        store.AddCases(smallQuestionnaire(), imported);
        store.Delete(5);
        m_sound = readAll(store);
        EXPECT_TRUE(store.FindDamage().empty());
    }

    /// All cases that can be read.
    static Cases readAll(CaseStore& store) {
        Cases cases;
        for (const CaseSummary& summary : store.Summaries()) {
            try {
                cases[summary.id] = {summary, store.Entries(summary.id)};
            } catch (const CaseStoreError& error) {
                EXPECT_EQ(error.GetKind(), CaseStoreError::Kind::Damaged);
            }
        }
        return cases;
    }

    /// Writes a damaged copy and returns what opens of it; nothing when it can't be opened.
    std::optional<CaseStore> Open(const std::string& bytes) {
        const std::string path = m_folder.Write("b.cases", bytes);
        try {
            return CaseStore::Open(path, testOptions());
        } catch (const CaseStoreError& error) {
            EXPECT_TRUE(error.GetKind() == CaseStoreError::Kind::Damaged ||
                        error.GetKind() == CaseStoreError::Kind::NotACaseFile ||
                        error.GetKind() == CaseStoreError::Kind::NewerVersion)
                << error.what();
            return std::nullopt;
        }
    }
    /// Reads what there is; whatever is read must be right. Returns how many of the keyed cases.
    std::size_t CountRight(CaseStore& store) {
        std::size_t count = 0;
        for (const auto& [id, read] : readAll(store)) {
            EXPECT_EQ(read.second, m_sound[id].second) << "case " << id;
            EXPECT_EQ(read.first.label, m_sound[id].first.label);
            EXPECT_EQ(read.first.questionnaire, m_sound[id].first.questionnaire);
            if (id <= cKeyed) {
                EXPECT_EQ(read.first, m_sound[id].first);
                ++count;
            }
        }
        return count;
    }

    /// What can be read goes into a new file, in which work goes on.
    void CopyToASoundFile(CaseStore& damaged) {
        const auto read = readAll(damaged);
        const auto lost = damaged.CopyTo(m_folder.Path("c.cases"));
        CaseStore copy = CaseStore::Open(m_folder.Path("c.cases"), testOptions());
        EXPECT_EQ(copy.GetAccess(), CaseStore::Access::Write);
        const auto copied = readAll(copy);
        for (const auto& [id, known] : read) EXPECT_EQ(copied.at(id), known) << id;
        EXPECT_TRUE(!lost.empty() || copied == m_sound);
        EXPECT_TRUE(copy.SetLabel(1, "new"));
        EXPECT_GT(copy.AddCase(smallQuestionnaire(), "next"), cKeyed + cImported);
        EXPECT_EQ(copy.FilesOf(smallQuestionnaire().Hash()), smallQuestionnaire().Files());
        EXPECT_TRUE(copy.FindDamage().empty());
        std::filesystem::remove(m_folder.Path("c.cases"));
    }

    TemporaryFolder m_folder;
    Cases m_sound;
};

TEST_F(Damage, OfAnyPageLosesNoCaseThatWasKeyed) {
    const std::string sound = m_folder.Read("a.cases");
    ASSERT_GT(sound.size() / cPage, 40U);
    Dice dice(4);
    const std::vector<std::function<std::string()>> ruins = {
        [] { return std::string(cPage, '\0'); }, [] { return std::string(cPage, '\xFF'); },
        [&] {
            std::string page(cPage, ' ');
            for (char& ch : page) ch = static_cast<char>(dice.Below(256));
            page[0] = '\x77';
            return page;
        }};
    for (std::size_t page = 0; page < sound.size() / cPage; ++page) {
        for (const auto& ruin : ruins) {
            std::string bytes = sound;
            bytes.replace(page * cPage, cPage, ruin());
            auto store = Open(bytes);
            ASSERT_TRUE(store) << "page " << page;
            EXPECT_EQ(CountRight(*store), static_cast<std::size_t>(cKeyed - 1)) << "page " << page;
            // Pages that are free hold nothing that matters.
            if (store->GetAccess() == CaseStore::Access::Write) {
                EXPECT_EQ(readAll(*store), m_sound) << "page " << page;
                continue;
            }
            EXPECT_EQ(store->GetNotice().reason, CaseStore::Reason::Damaged);
            EXPECT_NE(store->GetNotice().text, "");
            // The first page leads to all others and holds nothing itself.
            EXPECT_EQ(store->FindDamage().empty(), page == 0) << "page " << page;
            EXPECT_THROW(store->SetLabel(1, "x"), CaseStoreError);
            if (&ruin == &ruins.front()) CopyToASoundFile(*store);
        }
    }
}

TEST_F(Damage, OfTheEndLeavesTheStart) {
    const std::string sound = m_folder.Read("a.cases");
    std::size_t best = 0;
    for (std::size_t length = 0; length < sound.size(); length += cPage / 2 - 1) {
        auto store = Open(sound.substr(0, length));
        if (!store) continue;
        EXPECT_EQ(store->GetNotice().reason, CaseStore::Reason::Damaged) << length;
        best = std::max(best, CountRight(*store));
    }
    EXPECT_EQ(best, static_cast<std::size_t>(cKeyed - 1));
}

TEST_F(Damage, OfBitsAndExchangedPagesHarmsNobody) {
    const std::string sound = m_folder.Read("a.cases");
    const std::size_t pages = sound.size() / cPage;
    for (std::uint64_t seed = 1; seed <= 200; ++seed) {
        Dice dice(seed);
        std::string bytes = sound;
        if (dice.OneIn(4)) {
            bytes.replace(dice.Below(pages) * cPage, cPage, sound, dice.Below(pages) * cPage,
                          cPage);
        }
        for (std::size_t i = 0; i < dice.Below(30); ++i) {
            // Headers of pages matter most.
            const std::size_t place = dice.OneIn(2) ? dice.Below(bytes.size())
                                                    : dice.Below(pages) * cPage + dice.Below(40);
            bytes[place] = static_cast<char>(bytes[place] ^ (1 << dice.Below(8)));
        }
        auto store = Open(bytes);
        if (!store) continue;
        const Cases cases = readAll(*store);
        const auto damage = store->FindDamage();
        if (damage.empty() || store->GetAccess() == CaseStore::Access::ReadOnly) continue;
        ADD_FAILURE() << "seed " << seed << ": writes in a damaged file";
    }
}

TEST_F(Damage, MetAtWorkEndsTheWritingAndKeepsTheRest) {
    std::string bytes = m_folder.Read("a.cases");
    // In the copy of the questionnaire, where no check of pages sees it.
    bytes[bytes.find("\"title\": \"Every key\"") + 12] = 'X';
    auto store = Open(bytes);
    ASSERT_TRUE(store);
    EXPECT_TRUE(store->SetLabel(1, "before"));
    EXPECT_THROW(store->FilesOf(smallQuestionnaire().Hash()), CaseStoreError);
    EXPECT_EQ(store->GetNotice().reason, CaseStore::Reason::Damaged);
    try {
        store->SetLabel(2, "behind");
        ADD_FAILURE() << "writes in a damaged file";
    } catch (const CaseStoreError& error) {
        EXPECT_EQ(error.GetKind(), CaseStoreError::Kind::ReadOnly);
    }
    EXPECT_EQ(store->Summary(1).label, "before");
    EXPECT_EQ(store->FindDamage().size(), 1U);
}

TEST_F(Damage, OtherFilesAreRefusedAndLeftAsTheyAre) {
    for (const std::string& bytes : {std::string(), std::string("case"), std::string(20000, 'x')}) {
        EXPECT_FALSE(Open(bytes));
        EXPECT_EQ(m_folder.Read("b.cases"), bytes);
    }
    std::string newer = m_folder.Read("a.cases");
    newer[63] = 9;
    m_folder.Write("b.cases", newer);
    try {
        CaseStore::Open(m_folder.Path("b.cases"), testOptions());
        ADD_FAILURE() << "a file of a newer version was opened";
    } catch (const CaseStoreError& error) {
        EXPECT_EQ(error.GetKind(), CaseStoreError::Kind::NewerVersion);
    }
    EXPECT_EQ(m_folder.Read("b.cases"), newer);
}

}  // namespace
