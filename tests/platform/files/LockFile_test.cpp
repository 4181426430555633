#include "platform/files/LockFile.h"

#include <gtest/gtest.h>

#include <optional>

#include "platform/files/CFileException.h"
#include "tests/platform/files/LockAttempt.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace {

using tessalink::LockFile;
using tessalink::test::takeLock;

TEST(LockFile, IsHeldByOneAtATimeAndGoesWithIt) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a-lock");
    auto lock = takeLock(path);
    ASSERT_TRUE(lock);
    EXPECT_FALSE(takeLock(path));
    LockFile moved = std::move(*lock);
    lock.reset();
    EXPECT_FALSE(takeLock(path));
    moved = LockFile(folder.Path("b-lock").c_str());
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"b-lock"});
    EXPECT_TRUE(takeLock(path));
    EXPECT_THROW(LockFile(folder.Path("no/lock").c_str()), CFileException);
}

}  // namespace
