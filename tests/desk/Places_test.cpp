// Other processes, shares, files that go away, older versions: where a file lies and who has it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "apps/desk/casestore/TrailTable.h"
#include "platform/files/CMemFile.h"
#include "tests/desk/FaultLayer.h"
#include "tests/desk/KillRun.h"

namespace {

using namespace tessalink::desk;
using tessalink::desk::test::Child;
using tessalink::desk::test::FaultLayer;
using tessalink::desk::test::smallQuestionnaire;
using tessalink::desk::test::testOptions;

namespace fs = std::filesystem;

template <class ACT>
void expectFault(CaseStoreError::Kind kind, ACT act) {
    try {
        act();
        ADD_FAILURE() << "no fault";
    } catch (const CaseStoreError& error) {
        EXPECT_EQ(error.GetKind(), kind) << error.what();
        EXPECT_NE(std::string(error.what()).find(error.GetPath() + ": "), std::string::npos);
    }
}

CaseStoreOptions shareOptions() {
    CaseStoreOptions options = testOptions();
    options.isOnShare = true;
    return options;
}

TEST(Kills, TakeAtMostWhatIsBeingKeyed) {
    tessalink::desk::test::killOften(20);
}

TEST(TwoDesks, OneWritesAndTheOtherReads) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    CaseStore::Create(path, testOptions());
    Child child([&](int pipe) {
        CaseStore store = CaseStore::Open(path, testOptions());
        const CaseId id = store.AddCase(smallQuestionnaire(), "P1");
        if (::write(pipe, "x", 1) != 1) return;
        for (int i = 0;; ++i) {
            store.SetEntry(id, {EntryKind::Answer, "Q1"}, std::to_string(i));
        }
    });
    ASSERT_TRUE(child.WaitForByte());
    {
        CaseStore reader = CaseStore::Open(path, testOptions());
        EXPECT_EQ(reader.GetAccess(), CaseStore::Access::ReadOnly);
        EXPECT_EQ(reader.GetNotice().reason, CaseStore::Reason::OtherDesk);
        EXPECT_NE(reader.GetNotice().text, "");
        expectFault(CaseStoreError::Kind::ReadOnly,
                    [&] { reader.AddCase(smallQuestionnaire(), "P2"); });
        int last = -1;
        for (int round = 0; round < 50 || last < 5; ++round) {
            ASSERT_EQ(reader.Summaries().size(), 1U);
            const auto entries = reader.Entries(1);
            const int value = entries.empty() ? -1 : std::stoi(entries[0].value);
            ASSERT_GE(value, last);
            last = value;
        }
    }
    child.Kill();
    CaseStore writer = CaseStore::Open(path, testOptions());
    EXPECT_EQ(writer.GetAccess(), CaseStore::Access::Write);
    EXPECT_EQ(CaseStore::Open(path, testOptions()).GetAccess(), CaseStore::Access::ReadOnly);
}

TEST(TwoDesks, OnAShareTheSecondIsRefused) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    {
        CaseStore local = CaseStore::Create(path, testOptions());
        local.AddCase(smallQuestionnaire(), "P1");
    }
    {
        Child child([&](int pipe) {
            CaseStore store = CaseStore::Open(path, shareOptions());
            store.SetLabel(1, "P2");
            if (::write(pipe, "x", 1) != 1) return;
            ::pause();
        });
        ASSERT_TRUE(child.WaitForByte());
        expectFault(CaseStoreError::Kind::Busy, [&] { CaseStore::Open(path, shareOptions()); });
        // One that knows nothing of the lock beside the file is kept out by that of the file.
        fs::remove(path + "-lock");
        expectFault(CaseStoreError::Kind::Busy, [&] { CaseStore::Open(path, shareOptions()); });
        for (const std::string& name : folder.Names()) {
            EXPECT_TRUE(name != "a.cases-wal" && name != "a.cases-shm") << name;
        }
    }
    CaseStore store = CaseStore::Open(path, shareOptions());
    EXPECT_EQ(store.GetAccess(), CaseStore::Access::Write);
    EXPECT_EQ(store.Summary(1).label, "P2");
}

TEST(Files, AreTheOwnersAloneAndNothingElseIsLeftBehind) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    {
        CaseStore store = CaseStore::Create(path, testOptions());
        store.AddCase(smallQuestionnaire(), "P1");
        ASSERT_EQ(folder.Names().size(), 4U);  // -lock, -shm, -wal
        for (const std::string& name : folder.Names()) {
            EXPECT_EQ(fs::status(folder.Path(name)).permissions(), fs::perms(0600)) << name;
        }
        expectFault(CaseStoreError::Kind::Exists, [&] { CaseStore::Create(path, testOptions()); });
        store.CopyTo(folder.Path("copy.cases"));
        EXPECT_EQ(fs::status(folder.Path("copy.cases")).permissions(), fs::perms(0600));
    }
    EXPECT_EQ(folder.Names(), (std::vector<std::string>{"a.cases", "copy.cases"}));
    EXPECT_EQ(CaseStore::Open(folder.Path("copy.cases"), testOptions()).Summary(1).label, "P1");
    expectFault(CaseStoreError::Kind::NotFound,
                [&] { CaseStore::Open(folder.Path("b.cases"), testOptions()); });
}

TEST(Files, AreReadWhereNothingCanBeWritten) {
    FaultLayer& layer = FaultLayer::Get();
    layer.Disarm();
    const TemporaryFolder folder;
    const std::string path = folder.Path("a # b?%41.cases");
    CaseStore::Create(path, testOptions()).AddCase(smallQuestionnaire(), "P1");
    CaseStoreOptions options = testOptions();
    options.layer = FaultLayer::cName;
    options.mayWrite = false;
    layer.RefuseBeside(true);
    {
        CaseStore store = CaseStore::Open(path, options);
        EXPECT_EQ(store.Summary(1).label, "P1");
        EXPECT_TRUE(store.FindDamage().empty());
        EXPECT_EQ(store.GetNotice().reason, CaseStore::Reason::Asked);
    }
    layer.RefuseBeside(false);
    EXPECT_EQ(folder.Names().size(), 1U);
}

TEST(Files, ThatGoAwayTakeNothingThatWasKept) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    CaseStore store = CaseStore::Create(path, testOptions());
    store.AddCase(smallQuestionnaire(), "P1");
    store.Sync();
    fs::rename(path, folder.Path("moved.cases"));
    expectFault(CaseStoreError::Kind::Vanished, [&] { store.SetLabel(1, "P2"); });
    folder.Write("a.cases", "another file");
    expectFault(CaseStoreError::Kind::Vanished, [&] { store.SetLabel(1, "P2"); });
    fs::rename(folder.Path("moved.cases"), path);
    EXPECT_TRUE(store.SetLabel(1, "P2"));
}

TEST(Trail, IsWrittenAsATableAndCantBeChanged) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    CaseStore store = CaseStore::Create(path, testOptions());
    const CaseId id = store.AddCase(smallQuestionnaire(), "P, \"1\"");
    store.AddCase(smallQuestionnaire(), "other");
    store.SetInitials("CD");
    store.SetEntry(id, {EntryKind::Field, "Name"}, "=1+1");
    store.SetEntry(id, {EntryKind::Field, "Name"}, std::nullopt);
    EXPECT_FALSE(store.SetEntry(id, {EntryKind::Field, "Name"}, ""));
    CMemFile output;
    writeTrail(store, id, output);
    EXPECT_EQ(output.View(),
              "number,case,when,account,initials,act,name,from,to\r\n"
              "1,1,2023-11-14T22:13:20Z,account,AB,added," +
                  smallQuestionnaire().Hash() +
                  ",,\"P, \"\"1\"\"\"\r\n"
                  "3,1,2023-11-14T22:13:22Z,account,CD,field,Name,,'=1+1\r\n"
                  "4,1,2023-11-14T22:13:23Z,account,CD,field,Name,'=1+1,\r\n");
    sqlite3* file = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &file), SQLITE_OK);
    for (const char* const sql :
         {"DELETE FROM trail", "UPDATE trail SET to_value = NULL", "UPDATE trail SET account = 'x'",
          "INSERT OR REPLACE INTO trail SELECT number, case_number, at, 'x', initials, act, name, "
          "from_value, to_value FROM trail"}) {
        EXPECT_NE(sqlite3_exec(file, sql, nullptr, nullptr, nullptr), SQLITE_OK) << sql;
    }
    sqlite3_close(file);
}

TEST(Files, AreReadByTheStatementsOfTheManual) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    CaseStoreOptions options = testOptions();
    options.clock = {};
    CaseStore store = CaseStore::Create(path, options);
    const CaseId id = store.AddCase(smallQuestionnaire(), "P1");
    store.SetEntry(id, {EntryKind::Answer, "Q1"}, "1");
    store.SetState(id, CaseState::Complete);
    std::ifstream manual(TESSALINK_SOURCE_DIR "/docs/case-files.md");
    std::string text(std::istreambuf_iterator<char>(manual), {});
    sqlite3* file = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &file), SQLITE_OK);
    int count = 0;
    constexpr std::string_view start = "```sql\n";
    while (text.find(start) != std::string::npos) {
        text.erase(0, text.find(start) + start.size());
        int rows = 0;
        const auto countRow = [](void* counted, int, char**, char**) {
            ++*static_cast<int*>(counted);
            return 0;
        };
        const std::string sql = text.substr(0, text.find("```"));
        EXPECT_EQ(sqlite3_exec(file, sql.c_str(), countRow, &rows, nullptr), SQLITE_OK) << sql;
        EXPECT_GT(rows, 0) << sql;
        ++count;
    }
    EXPECT_EQ(count, 4);
    sqlite3_close(file);
}

const std::vector<std::string> cSecondVersion = {
    "ALTER TABLE cases ADD COLUMN note TEXT NOT NULL DEFAULT '';"
    "CREATE TABLE notes (number INTEGER PRIMARY KEY, text TEXT NOT NULL) STRICT;"
    "INSERT INTO notes (text) SELECT label FROM cases;"};

CaseStoreOptions newerOptions(const char* layer = "") {
    CaseStoreOptions options = testOptions();
    options.furtherVersions = cSecondVersion;
    options.layer = layer;
    return options;
}

void makeOld(const std::string& path) {
    CaseStore store = CaseStore::Create(path, testOptions());
    store.AddCase(smallQuestionnaire(), "P1");
    store.SetEntry(1, {EntryKind::Answer, "Q1"}, "1");
}

TEST(OlderVersion, IsBroughtUpToDate) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    makeOld(path);
    CaseStoreOptions reading = newerOptions();
    reading.mayWrite = false;
    expectFault(CaseStoreError::Kind::OlderVersion, [&] { CaseStore::Open(path, reading); });
    for (int round = 0; round < 2; ++round) {
        CaseStore store = CaseStore::Open(path, newerOptions());
        EXPECT_EQ(store.GetAccess(), CaseStore::Access::Write);
        EXPECT_EQ(store.GetNotice().reason, CaseStore::Reason::None);
        EXPECT_EQ(store.Summary(1).label, "P1");
        EXPECT_EQ(store.Entries(1).size(), 1U);
    }
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"a.cases"});
    expectFault(CaseStoreError::Kind::NewerVersion, [&] { CaseStore::Open(path, testOptions()); });
    CaseStore::Create(folder.Path("new.cases"), newerOptions());
    EXPECT_EQ(CaseStore::Open(folder.Path("new.cases"), newerOptions()).GetNotice().reason,
              CaseStore::Reason::None);
}

TEST(OlderVersion, IsNotLostByAFaultAtAnyCall) {
    FaultLayer& layer = FaultLayer::Get();
    layer.Disarm();
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    makeOld(folder.Path("old.cases"));
    for (const bool isForever : {false, true}) {
        bool isOver = false;
        for (std::uint64_t number = 1; !isOver; ++number) {
            folder.Write("a.cases", folder.Read("old.cases"));
            layer.Arm(number, isForever, false);
            try {
                CaseStore::Open(path, newerOptions(FaultLayer::cName));
            } catch (const CaseStoreError&) {
                // As it was, or done.
            }
            isOver = !layer.HasFailed();
            layer.Disarm();
            CaseStore store = CaseStore::Open(path, newerOptions(FaultLayer::cName));
            ASSERT_EQ(store.GetAccess(), CaseStore::Access::Write);
            ASSERT_EQ(store.Summary(1).label, "P1") << number;
            ASSERT_EQ(store.Entries(1).size(), 1U);
            ASSERT_TRUE(store.FindDamage().empty());
            ASSERT_FALSE(fs::exists(path + "-backup"));
            ASSERT_TRUE(!isOver || number > 20);
        }
    }
}

TEST(OlderVersion, WhoseStepFailsStaysAsItWas) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    makeOld(path);
    CaseStoreOptions failing = testOptions();
    failing.furtherVersions = {"CREATE TABLE more (x INTEGER) STRICT; DROP TABLE nowhere;"};
    EXPECT_THROW(CaseStore::Open(path, failing), CaseStoreError);
    EXPECT_TRUE(fs::exists(path + "-backup"));
    EXPECT_EQ(fs::status(path + "-backup").permissions(), fs::perms(0600));
    CaseStore backup = CaseStore::Open(path + "-backup", testOptions());
    EXPECT_EQ(backup.Summary(1).label, "P1");
    CaseStore store = CaseStore::Open(path, testOptions());
    EXPECT_EQ(store.GetAccess(), CaseStore::Access::Write);
    EXPECT_EQ(store.Entries(1).size(), 1U);
}

}  // namespace
