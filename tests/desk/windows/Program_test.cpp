#include <gtest/gtest.h>

#include <filesystem>

#include "tests/platform/files/TemporaryFolder.h"
#include "tests/support/Process.h"

namespace {

using tessalink::test::Finished;
using tessalink::test::runProgram;

constexpr const char* cInstruments = TESSALINK_SOURCE_DIR "/instruments";

TEST(DeskProgram, MakesSampleAndPicturesWithoutAScreen) {
    const TemporaryFolder folder;
    const std::string cases = folder.Path("sample.cases");
    const Finished sample =
        runProgram({TESSALINK_DESK, "--make-sample", cases, "--instruments", cInstruments});
    EXPECT_EQ(sample.exitCode, 0) << sample.err;
    EXPECT_TRUE(folder.Read("sample.cases").starts_with("SQLite format 3"));
    const std::string pictures = folder.Path("pictures");
    const Finished made = runProgram({TESSALINK_DESK, "--language", "de", "--dark", "--pictures",
                                      pictures, "--instruments", cInstruments});
    EXPECT_EQ(made.exitCode, 0) << made.err;
    EXPECT_TRUE(std::filesystem::exists(pictures + "/6-answers.png"));
    const Finished first =
        runProgram({TESSALINK_DESK, "--first-window", cases, "-platform", "offscreen"});
    EXPECT_EQ(first.exitCode, 0) << first.err;
}

TEST(DeskProgram, SaysWhatIsWrong) {
    const Finished missing = runProgram(
        {TESSALINK_DESK, "--make-sample", "/none/a.cases", "--instruments", cInstruments});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_NE(missing.err.find("/none/a.cases"), std::string::npos) << missing.err;
    EXPECT_EQ(runProgram({TESSALINK_DESK, "--help"}).exitCode, 0);
}

}  // namespace
