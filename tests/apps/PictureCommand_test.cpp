// The command `picture`.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "graphs/rtf/MetaFile.h"
#include "tests/apps/CommandLine.h"
#include "tests/support/Environment.h"

namespace tessalink::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// The four bytes of a number, as a PNG file has them.
std::string bigEndian(unsigned value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(value >> static_cast<unsigned>(shift) & 0xFF);
    }
    return bytes;
}

class PictureCommand : public CommandLine {
protected:
    /// A folder with a picture of 2 by 1 inches.
    PictureCommand() {
        MetaFile picture;
        picture.Create(2, 1, nullptr);
        picture.Rectangle(10, 10, 100, 60);
        picture.TextOut(20, 20, "Text");
        picture.Close();
        picture.Save(folder.Path("in.emf").c_str());
    }
};

TEST_F(PictureCommand, ConvertsByTheEndingOrTheFormat) {
    const Finished svg = Run({"picture", "in.emf", "-", "--format", "svg"});
    EXPECT_EQ(svg.exitCode, 0) << svg.err;
    EXPECT_THAT(svg.out, HasSubstr("Text"));
    EXPECT_THAT(svg.out, HasSubstr("viewBox=\"0 0 192 96\""));
    EXPECT_EQ(Run({"picture", "in.emf", "out.svg"}).exitCode, 0);
    EXPECT_EQ(folder.Read("out.svg"), svg.out);
    EXPECT_EQ(Run({"picture", "in.emf", "a.pdf"}).exitCode, 0);
    EXPECT_THAT(folder.Read("a.pdf"), HasSubstr("/BaseFont/Helvetica"));
    EXPECT_THAT(folder.Read("a.pdf"), HasSubstr("/MediaBox[0 0 144 72]"));
    if (!cHasModule) GTEST_SKIP() << "built without the toolkit";
    for (const auto& [dpi, width, height] :
         {std::tuple("96", 192u, 96u), {"48", 96u, 48u}, {"200", 400u, 200u}}) {
        const Finished png = Run({"picture", "in.emf", "-", "--format", "png", "--dpi", dpi});
        EXPECT_EQ(png.exitCode, 0) << png.err;
        EXPECT_EQ(png.err, "");
        EXPECT_THAT(png.out, HasSubstr("IHDR" + bigEndian(width) + bigEndian(height)));
    }
    EXPECT_EQ(Run({"picture", "in.emf", "a.pdf", "--embed-fonts"}).exitCode, 0);
    EXPECT_THAT(folder.Read("a.pdf"), HasSubstr("/MediaBox [0 0 144.000000 72.000000]"));
    EXPECT_THAT(folder.Read("a.pdf"), HasSubstr("/FontFile"));
}

TEST_F(PictureCommand, FaultsLeaveNothing) {
    folder.Write("bad.emf", folder.Read("in.emf").substr(0, 300));
    const struct {
        Strings arguments;
        int exitCode;
        const char* message;
    } cases[] = {
        {{"bad.emf", "out.svg"}, 1, "tessalink: bad.emf: no enhanced metafile, or a damaged one\n"},
        {{"none.emf", "out.svg"}, 2, "none.emf: the file does not exist"},
        {{"in.emf", "out.jpg"}, 2, "out.jpg: the name ends in none of .png, .pdf, .svg"},
        {{"in.emf", "-"}, 2, "add --format"},
        {{"in.emf", "out.svg", "--embed-fonts"}, 2, "--embed-fonts is for PDF"},
        {{"in.emf", "out.svg", "--format", "gif"}, 2, "--format"},
        {{"in.emf", "out.svg", "--dpi", "0"}, 2, "--dpi"},
        {{"in.emf", "no/out.svg"}, 2, "no/out.svg"},
    };
    for (const auto& c : cases) {
        Strings arguments = {"picture"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        const Finished finished = Run(arguments);
        EXPECT_EQ(finished.exitCode, c.exitCode) << c.message;
        EXPECT_THAT(finished.err, HasSubstr(c.message));
    }
    if (cIsWindows) return;  // no such limits
    Setting full;
    full.maxFileSize = 100;
    for (const char* name : {"out.svg", "out.png"}) {
        EXPECT_EQ(Run({"picture", "in.emf", name}, full).exitCode, 2);
    }
    EXPECT_THAT(folder.Names(), ElementsAre("bad.emf", "in.emf"));
}

// A header of 2^31 - 1 units in a millimetre.
TEST_F(PictureCommand, TakesAHeaderOfAnyResolution) {
    std::string bytes = folder.Read("in.emf");
    constexpr std::size_t units = 72;
    constexpr std::size_t millimetres = 80;
    bytes.replace(units, 4, std::string("\xFF\xFF\xFF\x7F", 4));
    bytes.replace(millimetres, 4, std::string("\x01\0\0\0", 4));
    folder.Write("dense.emf", bytes);
    const Finished svg = Run({"picture", "dense.emf", "-", "--format", "svg"});
    EXPECT_EQ(svg.exitCode, 0) << svg.err;
    EXPECT_THAT(svg.out, HasSubstr("viewBox=\"0 0 19200 9600\""));
}

TEST_F(PictureCommand, NamesThePackageThatIsMissing) {
    if (cIsWindows) GTEST_SKIP() << "the program alone lacks its libraries there";
    std::filesystem::copy_file(TESSALINK_CLI, folder.Path("tessalink"));
    Setting setting;
    setting.folder = folder.Path("");
    const Finished alone =
        runProgram({folder.Path("tessalink"), "picture", "in.emf", "a.png"}, setting);
    EXPECT_EQ(alone.exitCode, 2);
    EXPECT_THAT(alone.err,
                StartsWith("tessalink: PNG, and PDF with --embed-fonts, need the module of a build "
                           "with Qt 6: "));
    folder.Write("tessalink_qt_module.so", "no library");
    const Finished damaged =
        runProgram({folder.Path("tessalink"), "picture", "in.emf", "a.png"}, setting);
    EXPECT_EQ(damaged.exitCode, 2);
    EXPECT_THAT(damaged.err, HasSubstr("tessalink_qt_module.so"));
    EXPECT_THAT(folder.Names(), ElementsAre("in.emf", "tessalink", "tessalink_qt_module.so"));
}

}  // namespace
}  // namespace tessalink::test
