#include "platform/files/ModuleDir.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/files/detail/ProgramFolder.h"
#include "tests/platform/files/TemporaryFolder.h"

namespace tessalink::test {
namespace {

using detail::programFolder;

TEST(ModuleDir, WithoutProcTheFolderIsThatOfTheNameAtTheStart) {
    const TemporaryFolder folder;
    const std::filesystem::path program = folder.Write("program", "");
    const std::string link = folder.Path("link");
    std::filesystem::create_symlink(program, link);
    EXPECT_EQ(programFolder(link.c_str(), nullptr), program.parent_path().c_str());
    EXPECT_EQ(programFolder("/none", link.c_str()),
              std::filesystem::canonical(program).parent_path().c_str());
    EXPECT_EQ(programFolder("/none", "/none/program"), ".");
    EXPECT_EQ(programFolder("/none", nullptr), ".");
}

}  // namespace
}  // namespace tessalink::test
