#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include "tests/desk/StoreParts.h"
#include "tests/support/Dice.h"

namespace tessalink::desk::test {

/// A process beside the test that runs `work`, which writes into a pipe.
class Child {
public:
    template <class WORK>
    explicit Child(WORK work) {
        int ends[2] = {};
        if (::pipe(ends) != 0) throw std::runtime_error("no pipe");
        m_process = ::fork();
        if (m_process == 0) {
            ::close(ends[0]);
            try {
                work(ends[1]);
            } catch (...) {
                ::_exit(1);
            }
            ::_exit(0);
        }
        ::close(ends[1]);
        m_pipe = ends[0];
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        Kill();
        ::close(m_pipe);
    }

    /// Waits for a byte of the child; false when it has ended.
    bool WaitForByte() {
        char byte = 0;
        return ::read(m_pipe, &byte, 1) == 1;
    }
    void Kill() {
        if (m_process <= 0) return;
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process = 0;
    int m_pipe = -1;
};

/// What the child keys, one after the other.
inline Entry keyedEntry(std::size_t number) {
    return {{EntryKind::Answer, "I" + std::to_string(number % 40)}, std::to_string(number)};
}

/// Keys in another process, kills it at a random moment, and looks what is there: each entry that
/// it was told was kept, and of what followed one at most.
inline void killOnce(const std::string& path, CaseId id, std::uint64_t seed) {
    tessalink::test::Dice dice(seed);
    Child child([&](int pipe) {
        CaseStoreOptions options = testOptions();
        options.isOnShare = dice.OneIn(3);
        CaseStore store = CaseStore::Open(path, options);
        for (std::size_t number = 1;; ++number) {
            const Entry entry = keyedEntry(number);
            store.SetEntry(id, entry.name, entry.value);
            if (::write(pipe, "x", 1) != 1) return;
            if (number % 25 == 0) store.Sync();
        }
    });
    ASSERT_TRUE(child.WaitForByte());
    std::size_t told = 1;
    std::this_thread::sleep_for(std::chrono::microseconds(dice.Below(30000)));
    child.Kill();
    while (child.WaitForByte()) ++told;

    CaseStoreOptions options = testOptions();
    options.isOnShare = dice.OneIn(3);
    CaseStore store = CaseStore::Open(path, options);
    ASSERT_EQ(store.GetAccess(), CaseStore::Access::Write);
    std::size_t kept = 0;
    for (const TrailEntry& entry : store.Trail(id)) {
        if (entry.act != TrailAct::Answer) continue;
        ++kept;
        const Entry keyed = keyedEntry(kept);
        ASSERT_EQ(entry.name, keyed.name.id);
        ASSERT_EQ(entry.to, keyed.value);
    }
    ASSERT_GE(kept, told);
    ASSERT_LE(kept, told + 1);
    const auto entries = store.Entries(id);
    ASSERT_EQ(entries.size(), std::min<std::size_t>(kept, 40));
    for (const Entry& entry : entries) {
        const std::size_t number = std::stoul(entry.value);
        ASSERT_TRUE(number <= kept && number + 40 > kept);
        ASSERT_EQ(entry, keyedEntry(number));
    }
}

/// Kills a process that keys so many times.
inline void killOften(int times) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.cases");
    CaseStore::Create(path, testOptions());
    for (int i = 0; i < times; ++i) {
        CaseId id = 0;
        {
            CaseStore store = CaseStore::Open(path, testOptions());
            id = store.AddCase(smallQuestionnaire(), "P" + std::to_string(i));
        }
        ASSERT_NO_FATAL_FAILURE(killOnce(path, id, static_cast<std::uint64_t>(i))) << "round " << i;
    }
    CaseStore store = CaseStore::Open(path, testOptions());
    EXPECT_EQ(store.Summaries().size(), static_cast<std::size_t>(times));
    EXPECT_TRUE(store.FindDamage().empty());
}

}  // namespace tessalink::desk::test
