#include "platform/files/LockFile.h"

#include <gtest/gtest.h>

#include <optional>

#include "platform/files/CFileException.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace {

using tessalink::LockFile;

/// The lock; nothing when another has it.
std::optional<LockFile> take(const std::string& path) {
    try {
        return LockFile(path.c_str());
    } catch (const CFileException& error) {
        EXPECT_EQ(error.m_cause, CFileException::sharingViolation);
        return std::nullopt;
    }
}

TEST(LockFile, IsHeldByOneAtATimeAndGoesWithIt) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a-lock");
    auto lock = take(path);
    ASSERT_TRUE(lock);
    EXPECT_FALSE(take(path));
    LockFile moved = std::move(*lock);
    lock.reset();
    EXPECT_FALSE(take(path));
    moved = LockFile(folder.Path("b-lock").c_str());
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"b-lock"});
    EXPECT_TRUE(take(path));
    EXPECT_THROW(LockFile(folder.Path("no/lock").c_str()), CFileException);
}

}  // namespace
