#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

#include "platform/files/CFileException.h"
#include "platform/files/FilePlace.h"
#include "platform/files/LockFile.h"
#include "platform/files/detail/NetworkFileSystems.h"
#include "tests/platform/files/LockAttempt.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace {

using tessalink::LockFile;
using tessalink::test::takeLock;

TEST(LockFile, IsItsOwnersToRead) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a-lock");
    const LockFile lock(path.c_str());
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
}

TEST(LockFile, NeverHasTwoOwnersHoweverTheyCome) {
    constexpr int processes = 6;
    constexpr int rounds = 300;
    const TemporaryFolder folder;
    const std::string path = folder.Path("a-lock");
    const std::string owner = folder.Path("owner");
    for (int process = 0; process < processes; ++process) {
        if (::fork() != 0) continue;
        int owned = 0;
        while (owned < rounds) {
            const auto lock = takeLock(path);
            if (!lock) continue;
            ++owned;
            // Who owns the lock may make this folder, and nobody else has.
            if (::mkdir(owner.c_str(), 0700) != 0 || ::rmdir(owner.c_str()) != 0) ::_exit(1);
        }
        ::_exit(0);
    }
    for (int process = 0; process < processes; ++process) {
        int status = 0;
        ::wait(&status);
        EXPECT_EQ(status, 0);
    }
    EXPECT_TRUE(folder.Names().empty());
}

TEST(FilePlace, KnowsSharesByTheirFileSystems) {
    using tessalink::detail::isNetworkFileSystem;
    for (const std::uint32_t type : {0x6969U, 0xFF534D42U, 0xFE534D42U, 0x01021997U, 0x65735546U}) {
        EXPECT_TRUE(isNetworkFileSystem(type));
    }
    // ext4, XFS, Btrfs, tmpfs, overlays.
    for (const std::uint32_t type : {0xEF53U, 0x58465342U, 0x9123683EU, 0x01021994U, 0x794C7630U}) {
        EXPECT_FALSE(isNetworkFileSystem(type));
    }
    EXPECT_FALSE(tessalink::isOnNetworkShare("/proc/self/no/such/file"));
    EXPECT_FALSE(tessalink::accountName().IsEmpty());
}

TEST(FilePlace, MakesFilesForTheirOwnerAlone) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("private");
    const mode_t before = ::umask(0);
    EXPECT_TRUE(tessalink::makePrivateFile(path.c_str()));
    ::umask(before);
    EXPECT_EQ(std::filesystem::status(path).permissions(), std::filesystem::perms(0600));
    folder.Write("private", "kept");
    EXPECT_FALSE(tessalink::makePrivateFile(path.c_str()));
    EXPECT_EQ(folder.Read("private"), "kept");
    EXPECT_THROW(tessalink::makePrivateFile(folder.Path("no/file").c_str()), CFileException);
}

}  // namespace
