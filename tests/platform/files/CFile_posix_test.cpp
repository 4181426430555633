#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <string>
#include <thread>

#include "tests/platform/files/FileModel.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace {

using tessalink::test::causeOf;
using tessalink::test::compareAtRandom;

TEST(CFile, BehavesAsItsModelOverADescriptor) {
    const TemporaryFolder folder;
    CFile file(::open(folder.Path("handled").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    compareAtRandom(file);
}

TEST(CFile, IsNotInherited) {
    const TemporaryFolder folder;
    const CFile file(folder.Write("file", "").c_str(), CFile::modeRead);
    EXPECT_NE(::fcntl(file.m_hFile, F_GETFD) & FD_CLOEXEC, 0);
}

TEST(CFile, TellsOfAFullDevice) {
    CFile full("/dev/full", CFile::modeWrite);
    EXPECT_EQ(causeOf([&] { full.Write("x", 1); }), CFileException::diskFull);
}

TEST(CFile, ReadsAPipeToItsEnd) {
    const TemporaryFolder folder;
    const std::string name = folder.Path("pipe");
    ASSERT_EQ(::mkfifo(name.c_str(), 0600), 0);
    std::thread writer([&] {
        CFile pipe(name.c_str(), CFile::modeWrite);
        for (int i = 0; i < 5; ++i) pipe.Write("abc", 3);
    });
    CFile pipe(name.c_str(), CFile::modeRead);
    char piece[100];
    EXPECT_EQ(pipe.Read(piece, 4), 4u);
    EXPECT_EQ(pipe.GetPosition(), 4u);
    EXPECT_EQ(pipe.Read(piece, sizeof(piece)), 11u);
    EXPECT_EQ(std::string(piece, 11), "bcabcabcabc");
    EXPECT_EQ(pipe.GetLength(), 0u);
    EXPECT_EQ(causeOf([&] { pipe.SeekToBegin(); }), CFileException::badSeek);
    writer.join();
}

TEST(CFile, TellsWhenClosingFails) {
    const TemporaryFolder folder;
    CFile file(folder.Path("file").c_str(), CFile::modeCreate | CFile::modeWrite);
    ::close(file.m_hFile);
    EXPECT_EQ(causeOf([&] { file.Close(); }), CFileException::invalidFile);
    EXPECT_EQ(file.m_hFile, CFile::hFileNull);
    EXPECT_EQ(causeOf([&] { file.Close(); }), CFileException::none);
}

// A signal ends a system call early, with a part of the bytes or none: the rest must follow.
TEST(CFile, GoesOnAfterSignals) {
    struct sigaction old = {};
    struct sigaction interrupt = {};
    interrupt.sa_handler = [](int) {};
    ::sigaction(SIGUSR1, &interrupt, &old);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    std::string sent(1'000'000, '\0');
    for (std::size_t i = 0; i < sent.size(); ++i) sent[i] = static_cast<char>(i * 31 >> 7);
    CFile input(ends[0]);
    CFile output(ends[1]);
    std::thread writer([&] {
        output.Write(sent.data(), sent.size());
        output.Close();
    });
    std::string got(sent.size(), '\0');
    for (std::size_t at = 0; at < got.size(); at += 20'000) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
        ::pthread_kill(writer.native_handle(), SIGUSR1);
        ASSERT_EQ(input.Read(got.data() + at, 20'000), 20'000u);
    }
    writer.join();
    ::sigaction(SIGUSR1, &old, nullptr);
    EXPECT_EQ(got, sent);
}

}  // namespace
