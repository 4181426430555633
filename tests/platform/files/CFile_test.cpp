#include "platform/files/CFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <thread>

#include "platform/files/CMemFile.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace {

constexpr UINT cShared = CFile::shareDenyNone;

int causeOf(const std::function<void()>& attempt) {
    try {
        attempt();
    } catch (const CFileException& error) {
        return error.m_cause;
    }
    return CFileException::none;
}

// What a file is expected to do, on a text.
struct FileModel {
    std::string contents;
    std::size_t position = 0;

    std::string Read(std::size_t count) {
        if (position >= contents.size()) return {};
        const std::string piece = contents.substr(position, count);
        position += piece.size();
        return piece;
    }
    void Write(const std::string& piece) {
        if (piece.empty()) return;
        if (contents.size() < position + piece.size()) contents.resize(position + piece.size());
        contents.replace(position, piece.size(), piece);
        position += piece.size();
    }
    void SetLength(std::size_t length) {
        contents.resize(length);
        position = length;
    }
};

void expectSame(CFile& file, FileModel& model) {
    ASSERT_EQ(file.GetPosition(), model.position);
    ASSERT_EQ(file.GetLength(), model.contents.size());
}

void doSomething(CFile& file, FileModel& model, std::mt19937& random) {
    const std::size_t size = random() % 300;
    std::string piece(size, static_cast<char>(random()));
    const std::size_t target = random() % (model.contents.size() + 50);
    switch (random() % 8) {
        case 0:
            file.Seek(static_cast<std::int64_t>(target), CFile::begin);
            break;
        case 1:
            file.Seek(static_cast<std::int64_t>(target) - static_cast<std::int64_t>(model.position),
                      CFile::current);
            break;
        case 2:
            file.Seek(static_cast<std::int64_t>(target) -
                          static_cast<std::int64_t>(model.contents.size()),
                      CFile::end);
            break;
        case 3:
            if (random() % 4 != 0) return;
            file.SetLength(target);
            return model.SetLength(target);
        case 4:
        case 5:
            file.Write(piece.data(), piece.size());
            return model.Write(piece);
        default: {
            const std::string expected = model.Read(size);
            ASSERT_EQ(file.Read(piece.data(), size), expected.size());
            ASSERT_EQ(piece.substr(0, expected.size()), expected);
            return;
        }
    }
    model.position = target;
}

void compareAtRandom(CFile& file) {
    std::mt19937 random(7);
    FileModel model;
    for (int i = 0; i < 20'000; ++i) {
        ASSERT_NO_FATAL_FAILURE(doSomething(file, model, random)) << i;
        ASSERT_NO_FATAL_FAILURE(expectSame(file, model)) << i;
    }
    std::string all(model.contents.size(), '\0');
    file.SeekToBegin();
    EXPECT_EQ(file.Read(all.data(), all.size()), all.size());
    EXPECT_EQ(all, model.contents);
    EXPECT_EQ(file.SeekToEnd(), all.size());
}

TEST(CFile, BehavesAsItsModel) {
    const TemporaryFolder folder;
    CFile named(folder.Path("named").c_str(), CFile::modeCreate | CFile::modeReadWrite);
    compareAtRandom(named);
    CFile handled(::open(folder.Path("handled").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    compareAtRandom(handled);
}

TEST(CMemFile, BehavesAsItsModel) {
    CMemFile byDefault;
    compareAtRandom(byDefault);
    CMemFile bySingleBytes(1);
    compareAtRandom(bySingleBytes);
    BYTE buffer[100];
    CMemFile overABuffer(buffer, sizeof(buffer), 10);
    compareAtRandom(overABuffer);
}

struct OpenCase {
    UINT flags;
    const char* existing;  // null: there is no file
    bool opens;
    const char* after;  // what is there when "+" was written, when that is possible
};

TEST(CFile, OpensByItsModes) {
    const OpenCase cases[] = {
        {CFile::modeRead, nullptr, false, ""},
        {CFile::modeRead, "abc", true, "abc"},
        {CFile::modeWrite, nullptr, false, ""},
        {CFile::modeWrite, "abc", true, "+bc"},
        {CFile::modeReadWrite, "abc", true, "+bc"},
        {CFile::modeCreate | CFile::modeWrite, nullptr, true, "+"},
        {CFile::modeCreate | CFile::modeWrite, "abc", true, "+"},
        {CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite, "abc", true, "+bc"},
        {CFile::modeCreate | CFile::modeNoTruncate | CFile::modeReadWrite, nullptr, true, "+"},
        {CFile::modeCreate | CFile::modeNoTruncate | CFile::modeRead, "abc", true, "abc"},
        {CFile::modeWrite | CFile::typeText | CFile::modeNoInherit, "abc", true, "+bc"},
    };
    for (const OpenCase& entry : cases) {
        const TemporaryFolder folder;
        if (entry.existing != nullptr) folder.Write("file", entry.existing);
        CFile file;
        CFileException error;
        ASSERT_EQ(file.Open(folder.Path("file").c_str(), entry.flags, &error) != 0, entry.opens);
        EXPECT_EQ(error.m_cause, entry.opens ? CFileException::none : CFileException::fileNotFound);
        if ((entry.flags & 3) != CFile::modeRead && entry.opens) file.Write("+", 1);
        file.Close();
        EXPECT_EQ(folder.Read("file"), entry.after) << std::hex << entry.flags;
    }
}

TEST(CFile, NamesTheFaultAndTheFile) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("file", "abc");
    const std::pair<std::string, int> cases[] = {
        {folder.Path("missing"), CFileException::fileNotFound},
        {folder.Path("missing/file"), CFileException::badPath},
        {file + "/below", CFileException::badPath},
        {folder.Path(""), CFileException::accessDenied},
        {folder.Path(std::string(300, 'n')), CFileException::badPath},
        {"", CFileException::fileNotFound},
    };
    for (const auto& [name, cause] : cases) {
        CFileException error;
        CFile opened;
        EXPECT_EQ(opened.Open(name.c_str(), CFile::modeRead, &error), 0) << name;
        EXPECT_EQ(opened.m_hFile, CFile::hFileNull);
        EXPECT_EQ(error.m_cause, cause) << name;
        EXPECT_EQ(error.m_strFileName, name.c_str());
        EXPECT_EQ(opened.Open(name.c_str(), CFile::modeRead), 0);
        EXPECT_EQ(causeOf([&path = name] { CFile(path.c_str(), CFile::modeRead); }), cause);
    }
    CFileException error(CFileException::diskFull, 28, "out.rtf");
    EXPECT_STREQ(error.what(), "out.rtf: the disk is full.");
    EXPECT_STREQ(CFileException(CFileException::endOfFile).what(),
                 "the end of the file was reached.");
}

TEST(CFile, RaisesWhatTheSystemRefuses) {
    const TemporaryFolder folder;
    const std::string name = folder.Write("file", "abc");
    CFile reader(name.c_str(), CFile::modeRead | cShared);
    CFile writer(name.c_str(), CFile::modeWrite | cShared);
    CFile closed;
    CFile full("/dev/full", CFile::modeWrite);
    char byte = 0;
    const std::pair<std::function<void()>, int> cases[] = {
        {[&] { reader.Write("x", 1); }, CFileException::invalidFile},
        {[&] { writer.Read(&byte, 1); }, CFileException::invalidFile},
        {[&] { reader.Seek(-1, CFile::begin); }, CFileException::badSeek},
        {[&] { reader.Seek(-4, CFile::end); }, CFileException::badSeek},
        {[&] { reader.Seek(std::numeric_limits<std::int64_t>::min(), CFile::current); },
         CFileException::badSeek},
        {[&] { closed.Read(&byte, 1); }, CFileException::invalidFile},
        {[&] { (void)closed.GetLength(); }, CFileException::invalidFile},
        {[&] { full.Write("x", 1); }, CFileException::diskFull},
        {[&] { CFile::Remove(folder.Path("none").c_str()); }, CFileException::fileNotFound},
        {[&] { CFile::Rename(folder.Path("none").c_str(), name.c_str()); },
         CFileException::fileNotFound},
    };
    int index = 0;
    for (const auto& [attempt, cause] : cases) {
        EXPECT_EQ(causeOf(attempt), cause) << "case " << index++;
    }
    EXPECT_EQ(reader.GetPosition(), 0u);
    closed.Close();
}

TEST(CFile, ReachesBeyondFourGigabytes) {
    const TemporaryFolder folder;
    const std::string name = folder.Path("sparse");
    constexpr std::uint64_t cFar = (std::uint64_t{1} << 32) + 5;
    CFile file(name.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    EXPECT_EQ(file.Seek(static_cast<std::int64_t>(cFar), CFile::begin), cFar);
    file.Write("end", 3);
    EXPECT_EQ(file.GetLength(), cFar + 3);
    char piece[8] = {};
    file.Seek(-5, CFile::end);
    EXPECT_EQ(file.Read(piece, sizeof(piece)), 5u);
    EXPECT_EQ(std::string(piece, 5), std::string("\0\0end", 5));
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

TEST(CFile, TellsItsName) {
    const TemporaryFolder folder;
    const std::string name = folder.Write("file.rtf", "");
    CFile file(name.c_str(), CFile::modeRead);
    EXPECT_EQ(file.GetFileName(), "file.rtf");
    EXPECT_EQ(file.GetFilePath(), name.c_str());
    file.SetFilePath("relative");
    EXPECT_EQ(file.GetFileName(), "relative");
    EXPECT_EQ(file.GetFilePath(), (std::filesystem::current_path() / "relative").c_str());
    EXPECT_EQ(CMemFile().GetFilePath(), "");
    EXPECT_NE(::fcntl(file.m_hFile, F_GETFD) & FD_CLOEXEC, 0);
}

struct SharingCase {
    UINT first;
    UINT second;
    bool opens;
};

TEST(CFile, SharesByItsModes) {
    constexpr UINT read = CFile::modeRead;
    constexpr UINT write = CFile::modeWrite;
    constexpr UINT both = CFile::modeReadWrite;
    constexpr UINT none = CFile::shareDenyNone;
    constexpr UINT noWrite = CFile::shareDenyWrite;
    constexpr UINT noRead = CFile::shareDenyRead;
    constexpr UINT alone = CFile::shareExclusive;
    const SharingCase cases[] = {
        {read | none, read | none, true},
        {read | none, write | none, true},
        {write | none, write | none, true},
        {both | none, both | none, true},
        {read | noWrite, read | none, true},
        {read | noWrite, read | noWrite, true},
        {read | noWrite, write | none, false},
        {read | noWrite, both | none, false},
        {write | noWrite, read | none, true},
        {write | noWrite, read | noWrite, false},
        {write | noWrite, write | none, false},
        {both | noWrite, both | noWrite, false},
        {both | noWrite, read | none, true},
        {read | noRead, read | none, false},
        {read | alone, read | none, false},
        {read | alone, write | none, false},
        {read, read, false},
        {read | none, write | CFile::modeCreate, false},
        {read | noWrite, write | none | CFile::modeCreate, false},
    };
    for (const SharingCase& entry : cases) {
        for (const bool swapped : {false, true}) {
            const TemporaryFolder folder;
            const std::string name = folder.Write("file", "abc");
            const UINT firstFlags = swapped ? entry.second : entry.first;
            const CFile first(name.c_str(), firstFlags);
            CFile second;
            CFileException error;
            const UINT flags = swapped ? entry.first : entry.second;
            EXPECT_EQ(second.Open(name.c_str(), flags, &error) != 0, entry.opens)
                << std::hex << firstFlags << " then " << flags;
            if (entry.opens) continue;
            EXPECT_EQ(error.m_cause, CFileException::sharingViolation);
            const bool emptiedByFirst = (firstFlags & CFile::modeCreate) != 0;
            EXPECT_EQ(folder.Read("file"), emptiedByFirst ? "" : "abc");
        }
    }
}

TEST(CFile, EndsSharingWhenItIsClosed) {
    const TemporaryFolder folder;
    const std::string name = folder.Write("file", "abc");
    CFile first(name.c_str(), CFile::modeRead | CFile::shareExclusive);
    first.Close();
    CFile second(name.c_str(), CFile::modeWrite | CFile::shareDenyWrite);
    second.Abort();
    EXPECT_NE(first.Open(name.c_str(), CFile::modeWrite | CFile::shareExclusive), 0);
    EXPECT_NE(first.Open(name.c_str(), CFile::modeRead), 0);  // an open file is closed first
}

}  // namespace
