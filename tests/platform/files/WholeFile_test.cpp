#include "platform/files/WholeFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/platform/files/FileFaults.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace {

using tessalink::WholeFile;
using tessalink::test::faultOf;
using tessalink::test::write;
using Names = std::vector<std::string>;

constexpr std::size_t cBig = 1'000'000;

TEST(WholeFile, AppearsAtCommitAndNotBefore) {
    const TemporaryFolder folder;
    folder.Write("out", "old");
    std::string expected;
    {
        WholeFile file(folder.Path("out").c_str(), WholeFile::Sync::Yes);
        for (int i = 0; i < 1000; ++i) {
            const std::string piece(static_cast<std::size_t>(i) % 700,
                                    static_cast<char>('a' + i % 26));
            write(file, piece);
            expected += piece;
            ASSERT_EQ(file.GetPosition(), expected.size());
        }
        write(file, std::string(cBig, 'z'));
        expected += std::string(cBig, 'z');
        EXPECT_EQ(file.GetLength(), expected.size());
        file.Seek(3, CFile::begin);
        write(file, "patch");
        expected.replace(3, 5, "patch");
        EXPECT_EQ(file.GetLength(), expected.size());
        EXPECT_EQ(folder.Read("out"), "old");
        file.Commit();
        EXPECT_EQ(faultOf([&] { write(file, std::string("late")); }).m_cause,
                  CFileException::invalidFile);
    }
    EXPECT_EQ(folder.Read("out"), expected);
    EXPECT_EQ(folder.Names(), Names{"out"});
}

TEST(WholeFile, LeavesNothingWhenItIsGivenUp) {
    const std::function<void(WholeFile&)> ends[] = {
        [](WholeFile&) {},
        [](WholeFile& file) { file.Close(); },
        [](WholeFile& file) { file.Abort(); },
        [](WholeFile& file) { file.Open("/", 0); },
    };
    for (const auto& end : ends) {
        const TemporaryFolder folder;
        folder.Write("out", "old");
        {
            WholeFile file(folder.Path("out").c_str());
            write(file, std::string(cBig, 'x'));
            end(file);
        }
        EXPECT_EQ(folder.Read("out"), "old");
        EXPECT_EQ(folder.Names(), Names{"out"});
    }
}

TEST(WholeFile, NeedsAName) {
    EXPECT_EQ(faultOf([] { WholeFile(""); }).m_cause, CFileException::fileNotFound);
    WholeFile closed;
    EXPECT_EQ(faultOf([&] { closed.Commit(); }).m_cause, CFileException::invalidFile);
}

}  // namespace
