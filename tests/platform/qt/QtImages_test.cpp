// Pictures as files.
#include "platform/qt/QtImages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <string>

#include "platform/base/CInvalidArgException.h"
#include "platform/files/CFileException.h"
#include "tests/platform/files/TemporaryFolder.h"
#include "tests/platform/qt/TestCard.h"
#include "tests/support/Dice.h"
#include "tests/support/DrawingProgram.h"
#include "tests/support/FileSizeLimit.h"

namespace tessalink::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int cDpi = 192;

std::string textOf(const std::vector<BYTE>& bytes) {
    return {bytes.begin(), bytes.end()};
}

TEST(QtImages, PngIsTheSameEachTimeAndKnowsItsSize) {
    const TemporaryFolder folder;
    const auto bytes = pngOf(cTestCardWidth, cTestCardHeight, cDpi, drawTestCard);
    EXPECT_EQ(bytes, pngOf(cTestCardWidth, cTestCardHeight, cDpi, drawTestCard));
    savePng(folder.Path("a.png").c_str(), cTestCardWidth, cTestCardHeight, cDpi, drawTestCard);
    EXPECT_EQ(folder.Read("a.png"), textOf(bytes));
    const QImage image = QImage::fromData(bytes.data(), static_cast<int>(bytes.size()));
    EXPECT_EQ(image.size(), QSize(cTestCardWidth, cTestCardHeight));
    EXPECT_NEAR(image.dotsPerMeterX(), cDpi / 0.0254, 1);
}

TEST(QtImages, PdfPageHasTheSizeInPoints) {
    const std::string pdf = textOf(pdfOf(cTestCardWidth, cTestCardHeight, cDpi, [](CDC& dc) {
        EXPECT_EQ(dc.GetDeviceCaps(LOGPIXELSX), cDpi);
        EXPECT_EQ(dc.GetDeviceCaps(HORZRES), cTestCardWidth);
        EXPECT_EQ(dc.GetDeviceCaps(VERTRES), cTestCardHeight);
        EXPECT_EQ(dc.GetDeviceCaps(TECHNOLOGY), DT_RASPRINTER);
        drawTestCard(dc);
    }));
    EXPECT_THAT(pdf, testing::StartsWith("%PDF"));
    EXPECT_THAT(pdf, HasSubstr("/MediaBox [0 0 240.000000 180.000000]"));
}

TEST(QtImages, RandomProgramsGiveAPdf) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
        Dice dice(seed);
        const auto pdf = pdfOf(cTestCardWidth, cTestCardHeight, cDpi, [&](CDC& dc) {
            DrawingProgram program([&](std::size_t count) { return dice.Below(count); }, {&dc},
                                   DrawingProgram::Coordinates::Wild);
            constexpr std::size_t steps = 100;
            program.Run(steps);
        });
        EXPECT_THAT(textOf(pdf), testing::HasSubstr("%%EOF"));
        constexpr std::size_t largest = 1'000'000;
        EXPECT_LT(pdf.size(), largest) << seed;
    }
}

TEST(QtImages, FaultsLeaveNothing) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("a.png");
    const auto draw = [](CDC&) {};
    for (const auto save : {savePng, savePdf}) {
        for (const auto& [width, height, dpi] :
             {std::array{0, 5, 96}, {5, -1, 96}, {5, 5, 0}, {200'000, 5, 96}}) {
            EXPECT_THROW(save(path.c_str(), width, height, dpi, draw), CInvalidArgException);
        }
        EXPECT_THROW(save(folder.Path("none/a.png").c_str(), 5, 5, cDpi, draw), CFileException);
        EXPECT_THROW(save(path.c_str(), 5, 5, cDpi, [](CDC&) { throw 5; }), int);
        {
            const FileSizeLimit limit(100);
            EXPECT_THROW(save(path.c_str(), cTestCardWidth, cTestCardHeight, cDpi, drawTestCard),
                         CFileException);
        }
        EXPECT_THAT(folder.Names(), IsEmpty());
    }
    folder.Write("a.png", "old");
    const FileSizeLimit limit(100);
    EXPECT_THROW(savePng(path.c_str(), 90, 90, cDpi, drawTestCard), CFileException);
    EXPECT_THAT(folder.Names(), ElementsAre("a.png"));
    EXPECT_EQ(folder.Read("a.png"), "old");
}

}  // namespace
}  // namespace tessalink::test
