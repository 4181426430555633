#include "platform/files/CFile.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/files/CMemFile.h"
#include "tests/platform/files/FileModel.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace {

using tessalink::test::causeOf;
using tessalink::test::compareAtRandom;

constexpr UINT cShared = CFile::shareDenyNone;

TEST(CFile, BehavesAsItsModel) {
    const TemporaryFolder folder;
    CFile named(folder.Path("named").c_str(), CFile::modeCreate | CFile::modeReadWrite);
    compareAtRandom(named);
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

TEST(CFile, TellsItsName) {
    const TemporaryFolder folder;
    const std::string name = folder.Write("file.rtf", "");
    CFile file(name.c_str(), CFile::modeRead);
    EXPECT_EQ(file.GetFileName(), "file.rtf");
    EXPECT_EQ(file.GetFilePath(), name.c_str());
    file.SetFilePath("relative");
    EXPECT_EQ(file.GetFileName(), "relative");
    EXPECT_EQ(std::string(file.GetFilePath()),
              (std::filesystem::current_path() / "relative").generic_string());
    EXPECT_EQ(CMemFile().GetFilePath(), "");
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
            CFile first(name.c_str(), firstFlags);
            CFile second;
            CFileException error;
            const UINT flags = swapped ? entry.first : entry.second;
            EXPECT_EQ(second.Open(name.c_str(), flags, &error) != 0, entry.opens)
                << std::hex << firstFlags << " then " << flags;
            if (entry.opens) continue;
            EXPECT_EQ(error.m_cause, CFileException::sharingViolation);
            first.Close();
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
