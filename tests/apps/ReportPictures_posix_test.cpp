// Pictures of reports in the programs that people read them with.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/apps/CommandLine.h"

namespace tessalink::test {
namespace {

namespace fs = std::filesystem;

bool isInstalled(const std::string& program) {
    return runProgram({"/usr/bin/env", "sh", "-c", "command -v " + program}).exitCode == 0;
}

/// Where a page is red, in inches.
struct RedPlace {
    double left = 1e9;
    double top = 1e9;
    double right = -1;
    double bottom = -1;

    bool IsEmpty() const { return right < 0; }
    double Width() const { return right - left; }
    double Height() const { return bottom - top; }
};

/// The pixels of a PPM file.
RedPlace redOf(const std::string& ppm, double dpi) {
    int width = 0;
    int height = 0;
    int start = 0;
    std::sscanf(ppm.c_str(), "P6 %d %d 255%n", &width, &height, &start);
    EXPECT_EQ(static_cast<long long>(ppm.size()), start + 1 + 3LL * width * height);
    RedPlace place;
    const auto* pixel = reinterpret_cast<const unsigned char*>(ppm.data()) + start + 1;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x, pixel += 3) {
            if (pixel[0] < 200 || pixel[1] > 60 || pixel[2] > 60) continue;
            place.left = std::min(place.left, x / dpi);
            place.top = std::min(place.top, y / dpi);
            place.right = std::max(place.right, (x + 1) / dpi);
            place.bottom = std::max(place.bottom, (y + 1) / dpi);
        }
    }
    return place;
}

/// Reports of nothing but a graph of 4 by 0.5 inches, most of which is red.
class PicturesInReaders : public CommandLine {
protected:
    PicturesInReaders() {
        folder.Write("g.json", R"({"graphs": {"Red": {"width": 4, "height": 0.5, "sections": [
  {"scale": {"min": 0, "max": 100, "ranges": [
     {"from": 10, "to": 90, "color": "#FF0000", "height": 1, "name": "red"}]}}]}}})");
        folder.Write("t.rtf", "{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}\\pard @CALL(Red)\\par}");
    }

    /// The report in a kind of pictures; its name.
    std::string Report(const std::string& kinds) const {
        const std::string name = kinds + ".rtf";
        const Finished made = Run(
            {"report", "t.rtf", "--graphs", "g.json", "--alt", "--pictures", kinds, "-o", name});
        EXPECT_EQ(made.exitCode, 0) << made.err;
        return name;
    }

    /// What is red on the first page of a PDF.
    RedPlace RedOn(const std::string& pdf) const {
        if (!fs::exists(folder.Path(pdf))) return {};
        const Finished drawn = InFolder({"pdftoppm", "-r", "100", "-singlefile", pdf, "page"});
        EXPECT_EQ(drawn.exitCode, 0) << drawn.err;
        return redOf(folder.Read("page.ppm"), 100);
    }

    Finished InFolder(Strings arguments) const {
        arguments.insert(arguments.begin(), "/usr/bin/env");
        Setting setting;
        setting.folder = folder.Path("");
        return runProgram(arguments, setting);
    }

    RedPlace RedInLibreOffice(const std::string& rtf) const {
        InFolder({"soffice", "-env:UserInstallation=file://" + folder.Path("profile"), "--headless",
                  "--convert-to", "pdf", rtf});
        return RedOn(fs::path(rtf).stem().string() + ".pdf");
    }

    RedPlace RedInAbiWord(const std::string& rtf) const {
        InFolder({"env", "HOME=" + folder.Path(""), "abiword", "--to=pdf", "-o", "abi.pdf", rtf});
        return RedOn("abi.pdf");
    }
};

void expectSamePlace(const RedPlace& place, const RedPlace& other) {
    constexpr double tolerance = 0.03;
    EXPECT_NEAR(place.left, other.left, tolerance);
    EXPECT_NEAR(place.top, other.top, tolerance);
    EXPECT_NEAR(place.Width(), other.Width(), tolerance);
    EXPECT_NEAR(place.Height(), other.Height(), tolerance);
}

TEST_F(PicturesInReaders, LibreOfficeShowsEveryKindAlike) {
    if (!cHasModule) GTEST_SKIP() << "built without the toolkit";
    if (!isInstalled("soffice")) GTEST_SKIP() << "LibreOffice is not installed";
    if (!isInstalled("pdftoppm")) GTEST_SKIP() << "poppler-utils is not installed";
    const RedPlace metafile = RedInLibreOffice(Report("emf"));
    ASSERT_FALSE(metafile.IsEmpty());
    EXPECT_GT(metafile.Width(), 2);
    EXPECT_LT(metafile.Width(), 4);
    expectSamePlace(RedInLibreOffice(Report("png")), metafile);
    expectSamePlace(RedInLibreOffice(Report("both")), metafile);
}

TEST_F(PicturesInReaders, AbiWordShowsPng) {
    if (!cHasModule) GTEST_SKIP() << "built without the toolkit";
    if (!isInstalled("abiword")) GTEST_SKIP() << "AbiWord is not installed";
    if (!isInstalled("pdftoppm")) GTEST_SKIP() << "poppler-utils is not installed";
    const RedPlace place = RedInAbiWord(Report("png"));
    ASSERT_FALSE(place.IsEmpty());
    EXPECT_GT(place.Width(), 2);
    EXPECT_LT(place.Width(), 4);
    EXPECT_TRUE(RedInAbiWord(Report("emf")).IsEmpty()) << "it shows metafiles now: tell users";
}

TEST_F(PicturesInReaders, PandocPlacesPng) {
    if (!cHasModule) GTEST_SKIP() << "built without the toolkit";
    if (!isInstalled("pandoc")) GTEST_SKIP() << "pandoc is not installed";
    for (const std::string kinds : {"png", "both"}) {
        const Finished html =
            InFolder({"pandoc", "-t", "html", "--extract-media=" + kinds, Report(kinds)});
        EXPECT_EQ(html.exitCode, 0) << html.err;
        const std::size_t start = html.out.find("src=\"") + 5;
        ASSERT_NE(start, std::string::npos + 5) << html.out;
        const std::string image = html.out.substr(start, html.out.find('"', start) - start);
        ASSERT_TRUE(image.ends_with(".png")) << html.out;
        // 4 by 0.5 inches of 192 pixels.
        EXPECT_NE(folder.Read(image).find(std::string("IHDR\0\0\x03\0\0\0\0\x60", 12)),
                  std::string::npos);
        EXPECT_NE(html.out.find("width:4in"), std::string::npos) << html.out;
    }
}

}  // namespace
}  // namespace tessalink::test
