#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <thread>

#include "platform/files/WholeFile.h"
#include "tests/platform/files/FileFaults.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace {

namespace fs = std::filesystem;
using tessalink::WholeFile;
using tessalink::test::faultOf;
using tessalink::test::write;
using Names = std::vector<std::string>;

constexpr std::size_t cBigLimit = 1'000'000;

TEST(WholeFile, RejectsWhatCannotBeWritten) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path("directory"));
    folder.Write("plain", "");
    fs::create_symlink("loop", folder.Path("loop"));
    const std::pair<std::string, int> cases[] = {
        {"missing/out", CFileException::badPath},
        {"plain/out", CFileException::badPath},
        {"directory", CFileException::accessDenied},
        {"loop", CFileException::badPath},
    };
    for (const auto& [name, cause] : cases) {
        const std::string path = folder.Path(name);
        WholeFile file;
        CFileException error;
        EXPECT_EQ(file.Open(path.c_str(), 0, &error), 0);
        EXPECT_EQ(error.m_cause, cause) << name;
        EXPECT_EQ(error.m_strFileName, path.c_str());
        EXPECT_EQ(faultOf([&] { WholeFile(path.c_str()); }).m_cause, cause);
    }
    EXPECT_EQ(folder.Names(), (Names{"directory", "loop", "plain"}));
}

TEST(WholeFile, FollowsLinks) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path("real"));
    folder.Write("real/old", "old");
    fs::create_symlink("real/old", folder.Path("toOld"));
    fs::create_symlink("toOld", folder.Path("twice"));
    fs::create_symlink("real/new", folder.Path("toNew"));
    fs::create_symlink(folder.Path("toNew"), folder.Path("toNewTwice"));
    const std::pair<const char*, const char*> cases[] = {{"twice", "real/old"},
                                                         {"toNewTwice", "real/new"}};
    for (const auto& [link, target] : cases) {
        WholeFile file(folder.Path(link).c_str());
        write(file, link);
        file.Commit();
        EXPECT_TRUE(fs::is_symlink(folder.Path(link)));
        EXPECT_FALSE(fs::is_symlink(folder.Path(target)));
        EXPECT_EQ(folder.Read(target), link);
    }
}

TEST(WholeFile, KeepsTheModeOfTheOldFileAndTheUmaskForANewOne) {
    const TemporaryFolder folder;
    const mode_t oldMask = ::umask(027);
    folder.Write("old", "");
    fs::permissions(folder.Path("old"), fs::perms(0666));
    for (const char* name : {"old", "new"}) {
        WholeFile file(folder.Path(name).c_str());
        file.Commit();
    }
    ::umask(oldMask);
    EXPECT_EQ(fs::status(folder.Path("old")).permissions(), fs::perms(0666));
    EXPECT_EQ(fs::status(folder.Path("new")).permissions(), fs::perms(0640));
    EXPECT_EQ(fs::file_size(folder.Path("new")), 0u);
}

TEST(WholeFile, WritesDirectlyToDevicesAndPipes) {
    WholeFile full("/dev/full");
    write(full, "x");
    const CFileException fault = faultOf([&] { full.Commit(); });
    EXPECT_EQ(fault.m_cause, CFileException::diskFull);
    EXPECT_EQ(fault.m_strFileName, "/dev/full");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));

    const TemporaryFolder folder;
    const std::string name = folder.Path("pipe");
    ASSERT_EQ(::mkfifo(name.c_str(), 0600), 0);
    std::string got;
    std::thread reader([&] { got = folder.Read("pipe"); });
    WholeFile pipe(name.c_str());
    write(pipe, std::string(cBigLimit, 'p'));
    pipe.Commit();
    reader.join();
    EXPECT_EQ(got, std::string(cBigLimit, 'p'));
    EXPECT_TRUE(fs::is_fifo(name));
}

// Standard output is another file while this lives.
class RedirectedOutput {
public:
    explicit RedirectedOutput(const std::string& name) : m_saved(::dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        ::dup2(file, STDOUT_FILENO);
        ::close(file);
    }
    ~RedirectedOutput() {
        std::fflush(stdout);
        ::dup2(m_saved, STDOUT_FILENO);
        ::close(m_saved);
    }
    RedirectedOutput(const RedirectedOutput&) = delete;
    RedirectedOutput& operator=(const RedirectedOutput&) = delete;

private:
    int m_saved;
};

TEST(WholeFile, HoldsStandardOutputBack) {
    const TemporaryFolder folder;
    CFileException fault;
    {
        const RedirectedOutput redirected(folder.Path("out"));
        WholeFile givenUp("-");
        write(givenUp, "lost");
        givenUp.Close();
        WholeFile file("-");
        write(file, std::string(cBigLimit, 'o'));
        EXPECT_EQ(fs::file_size(folder.Path("out")), 0u);
        file.Commit();
    }
    EXPECT_EQ(folder.Read("out"), std::string(cBigLimit, 'o'));
    {
        const RedirectedOutput redirected("/dev/full");
        WholeFile file("-");
        write(file, "x");
        fault = faultOf([&] { file.Commit(); });
    }
    EXPECT_EQ(fault.m_cause, CFileException::diskFull);
    EXPECT_EQ(fault.m_strFileName, "<stdout>");
}

}  // namespace
