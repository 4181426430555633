#include "platform/files/WholeFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/platform/files/FileFaults.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/support/FileSizeLimit.h"

namespace {

using tessalink::WholeFile;
using tessalink::test::faultOf;
using tessalink::test::FileSizeLimit;
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

// Wherever the disk becomes full, the old file stays, and no later call commits the damaged one.
TEST(WholeFile, SurvivesAFullDiskAtEveryPoint) {
    const TemporaryFolder folder;
    const std::string name = folder.Write("out", "old");
    for (std::size_t limit = 0; limit < cBig; limit += 50'000) {
        const FileSizeLimit fullDisk(limit);
        WholeFile file(name.c_str());
        const std::string piece(997, 'p');
        const CFileException fault = faultOf([&] {
            for (std::size_t size = 0; size < cBig; size += piece.size()) write(file, piece);
            file.Commit();
        });
        ASSERT_EQ(fault.m_cause, CFileException::diskFull) << limit;
        EXPECT_EQ(fault.m_strFileName, name.c_str());
        EXPECT_NE(faultOf([&] { write(file, piece); }).m_cause, CFileException::none);
        EXPECT_NE(faultOf([&] { file.Commit(); }).m_cause, CFileException::none);
        EXPECT_EQ(folder.Read("out"), "old");
        EXPECT_EQ(folder.Names(), Names{"out"});
    }
}

TEST(WholeFile, RemembersAFaultThatTheWriterIgnored) {
    const TemporaryFolder folder;
    const std::string name = folder.Path("out");
    WholeFile file(name.c_str());
    {
        const FileSizeLimit fullDisk(1000);
        EXPECT_THROW(write(file, std::string(cBig, 'x')), CFileException);
    }
    EXPECT_EQ(faultOf([&] { write(file, "more"); }).m_cause, CFileException::diskFull);
    EXPECT_EQ(faultOf([&] { file.Commit(); }).m_cause, CFileException::diskFull);
    EXPECT_EQ(folder.Names(), Names{});
}

TEST(WholeFile, NeedsAName) {
    EXPECT_EQ(faultOf([] { WholeFile(""); }).m_cause, CFileException::fileNotFound);
    WholeFile closed;
    EXPECT_EQ(faultOf([&] { closed.Commit(); }).m_cause, CFileException::invalidFile);
}

}  // namespace
