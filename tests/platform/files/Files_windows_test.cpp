#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "platform/files/CFile.h"
#include "platform/files/FilePlace.h"
#include "platform/files/LockFile.h"
#include "platform/files/ModuleDir.h"
#include "platform/files/PathText.h"
#include "platform/files/WholeFile.h"
#include "tests/platform/files/FileFaults.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/support/Environment.h"
#include "tests/support/Process.h"

namespace tessalink::test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

constexpr const char* cPathVariable = "TESSALINK_TEST_PATH";

// Runs one test of this program in a process of its own, with a path to work on.
Finished runElsewhere(const std::string& test, const std::string& path) {
    std::array<wchar_t, 4096> program{};
    ::GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    setVariable(cPathVariable, path.c_str());
    return runProgram({nameOf(fs::path(program.data())), "--gtest_filter=" + test,
                       "--gtest_also_run_disabled_tests"});
}

std::string pathGiven() {
    const char* const path = std::getenv(cPathVariable);
    return path != nullptr ? path : "";
}

TEST(WindowsFiles, NamesThatCannotBeAreClearFaults) {
    const TemporaryFolder folder;
    const struct {
        std::string name;
        int cause;
        const char* text;
    } table[] = {
        {folder.Path("a?b"), CFileException::badPath, "characters that the system does not take"},
        {folder.Path("a<b"), CFileException::badPath, "characters that the system does not take"},
        {folder.Path("a|b"), CFileException::badPath, "characters that the system does not take"},
        {folder.Path("") + "\xFF", CFileException::badPath,
         "characters that the system does not take"},
        {folder.Path("") + "\xC3", CFileException::badPath,
         "characters that the system does not take"},
        {folder.Path("") + "a:b", CFileException::badPath,
         "characters that the system does not take"},
        {":b", CFileException::badPath, "characters that the system does not take"},
        {"NUL", CFileException::badPath, "the name is that of a device"},
        {"con", CFileException::badPath, "the name is that of a device"},
        {folder.Path("aux.rtf"), CFileException::badPath, "the name is that of a device"},
        {folder.Path("LPT9 .txt"), CFileException::badPath, "the name is that of a device"},
        {folder.Path("none/out"), CFileException::badPath, "the folder does not exist"},
    };
    for (const auto& [name, cause, text] : table) {
        const CFileException whole = faultOf([&path = name] { WholeFile(path.c_str()); });
        EXPECT_EQ(whole.m_cause, cause) << name;
        EXPECT_NE(std::string(whole.what()).find(text), std::string::npos) << whole.what();
        const auto opened =
            faultOf([&path = name] { CFile(path.c_str(), CFile::modeWrite | CFile::modeCreate); });
        EXPECT_EQ(opened.m_cause, cause) << name;
    }
    EXPECT_EQ(folder.Names(), Names{});
}

TEST(WindowsFiles, NamesAreUtf8AndMayBeLong) {
    const TemporaryFolder folder;
    std::string path = folder.Path("") + "\xC3\xA4\xD0\x96\xE6\xBC\xA2";
    for (int i = 0; i < 12; ++i) {
        ASSERT_NE(::CreateDirectoryW(
                      (L"\\\\?\\" + fs::absolute(pathOf(path)).make_preferred().wstring()).c_str(),
                      nullptr),
                  0)
            << path;
        path += "/" + std::string(40, 'n');
    }
    ASSERT_GT(path.size(), 500u);
    WholeFile file(path.c_str());
    write(file, "kept");
    file.Commit();
    CFile read(path.c_str(), CFile::modeRead);
    char text[5] = {};
    EXPECT_EQ(read.Read(text, 4), 4u);
    EXPECT_STREQ(text, "kept");
    EXPECT_EQ(read.GetFileName(), std::string(40, 'n').c_str());
    read.Close();
    CFile::Remove(path.c_str());
}

TEST(WindowsFiles, WhatIsOpenIsNotReplacedAndNothingIsLeft) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("out", "old");
    for (const UINT share : {CFile::shareExclusive, CFile::shareDenyWrite, CFile::shareDenyNone}) {
        const CFile reader(path.c_str(), CFile::modeRead | share);
        const CFileException fault = faultOf([&] {
            WholeFile file(path.c_str());
            write(file, "new");
            file.Commit();
        });
        EXPECT_TRUE(fault.m_cause == CFileException::sharingViolation ||
                    fault.m_cause == CFileException::accessDenied)
            << fault.what();
        EXPECT_EQ(folder.Names(), Names{"out"});
    }
    EXPECT_EQ(folder.Read("out"), "old");
}

TEST(WindowsFiles, DISABLED_Reads) {
    const auto fault =
        faultOf([] { CFile(pathGiven().c_str(), CFile::modeRead | CFile::shareDenyNone); });
    ASSERT_EQ(fault.m_cause, CFileException::none);
}

TEST(WindowsFiles, SharingHoldsBetweenProcesses) {
    const TemporaryFolder folder;
    const std::string path = folder.Write("file", "abc");
    for (const auto& [share, opens] :
         {std::pair{CFile::shareExclusive, false}, std::pair{CFile::shareDenyWrite, true},
          std::pair{CFile::shareDenyNone, true}}) {
        const CFile first(path.c_str(), CFile::modeRead | share);
        const Finished second = runElsewhere("WindowsFiles.DISABLED_Reads", path);
        EXPECT_EQ(second.exitCode == 0, opens) << second.out;
    }
}

// Who owns the lock may make this folder, and nobody else has.
TEST(WindowsFiles, DISABLED_OwnsALock) {
    constexpr int rounds = 30;
    const std::string path = pathGiven();
    for (int owned = 0; owned < rounds;) {
        try {
            const LockFile lock(path.c_str());
            ++owned;
            ASSERT_TRUE(fs::create_directory(path + "-owner"));
            ASSERT_TRUE(fs::remove(path + "-owner"));
        } catch (const CFileException& fault) {
            // The name of a file that goes is refused otherwise until the last handle is closed.
            ASSERT_TRUE(fault.m_cause == CFileException::sharingViolation ||
                        fault.m_cause == CFileException::accessDenied)
                << fault.what();
        }
    }
}

TEST(WindowsFiles, ALockNeverHasTwoOwners) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a-lock");
    std::vector<std::thread> processes;
    std::array<Finished, 3> ends;
    for (Finished& end : ends) {
        processes.emplace_back(
            [&end, &path] { end = runElsewhere("WindowsFiles.DISABLED_OwnsALock", path); });
    }
    for (std::thread& process : processes) process.join();
    for (const Finished& end : ends) EXPECT_EQ(end.exitCode, 0) << end.out;
    EXPECT_EQ(folder.Names(), Names{});
}

TEST(WindowsFiles, PlacesAndNamesAreTold) {
    const TemporaryFolder folder;
    EXPECT_FALSE(isOnNetworkShare(folder.Path("file").c_str()));
    EXPECT_FALSE(accountName().IsEmpty());
    EXPECT_TRUE(makePrivateFile(folder.Path("private").c_str()));
    EXPECT_FALSE(makePrivateFile(folder.Path("private").c_str()));
    EXPECT_TRUE(fs::exists(pathOf(GetModuleDir().View()) / "platform_tests.exe"));
    const auto vanished = faultOf([] { CFile("//no-such-host/share/file", CFile::modeRead); });
    EXPECT_NE(vanished.m_cause, CFileException::none);
}

}  // namespace
}  // namespace tessalink::test
