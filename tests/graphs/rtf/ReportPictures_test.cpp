#include "graphs/rtf/ReportPictures.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "graphs/rtf/MetaFile.h"
#include "graphs/rtf/PictureText.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/files/CMemFile.h"

namespace tessalink {
namespace {

/// A picture of 2.5 by 1 inches.
class PicturesOfReports : public testing::Test {
protected:
    PicturesOfReports() {
        picture.Create(2.5, 1, nullptr);
        picture.Rectangle(10, 10, 100, 60);
        picture.Close();
    }

    std::string Saved(PictureKinds kinds, int dpi, const std::string& text = {}) {
        const PngMaker maker = [this](HENHMETAFILE metafile, int width, int height, int perInch) {
            EXPECT_EQ(metafile, picture.GetHandle());
            asked.emplace_back(width, height, perInch);
            return std::vector<BYTE>{0x89, 'P', 0xFF};
        };
        CMemFile file;
        savePictureAsRTF(picture, file, 2.5, 1, text, {kinds, dpi, maker});
        return std::string(file.View());
    }

    MetaFile picture;
    std::vector<std::tuple<int, int, int>> asked;
};

TEST_F(PicturesOfReports, HaveTheSameSizeInEveryKind) {
    const std::string metafile = picture.GetAsRTF(2.5, 1).GetString();
    const std::string png =
        "{\\pict\\pngblip\\picw6350\\pich2540\\picwgoal3600\\pichgoal1440\\sspicalign0 \r\n8950FF}";
    EXPECT_EQ(Saved(PictureKinds::Metafile, 192), metafile);
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(Saved(PictureKinds::Png, 192), png);
    EXPECT_EQ(Saved(PictureKinds::Both, 100), metafile + "{\\nonshppict" + png + "}");
    EXPECT_EQ(asked, (std::vector<std::tuple<int, int, int>>{{480, 192, 192}, {250, 100, 100}}));
}

TEST_F(PicturesOfReports, SayWhatTheyShowInEveryKind) {
    const std::string property = pictureTextAsRTF("Worry: 63").GetString();
    CMemFile file;
    savePictureAsRTF(picture, file, 2.5, 1, "Worry: 63");
    EXPECT_EQ(Saved(PictureKinds::Metafile, 192, "Worry: 63"), file.View());
    EXPECT_TRUE(file.View().starts_with("{\\*\\shppict{\\pict" + property + "\\emfblip"));
    const std::string png = Saved(PictureKinds::Png, 192, "Worry: 63");
    EXPECT_TRUE(png.starts_with("{\\pict" + property + "\\pngblip"));
    EXPECT_EQ(Saved(PictureKinds::Both, 192, "Worry: 63"),
              std::string(file.View()) + "{\\nonshppict" + png + "}");
}

TEST_F(PicturesOfReports, NothingIsWrittenWhenThePngFails) {
    const PngMaker failing = [](HENHMETAFILE, int, int, int) -> std::vector<BYTE> {
        throw std::runtime_error("no fonts");
    };
    const PngMaker neverCalled = [](HENHMETAFILE, int, int, int) {
        ADD_FAILURE();
        return std::vector<BYTE>();
    };
    for (const PictureKinds kinds : {PictureKinds::Png, PictureKinds::Both}) {
        CMemFile file;
        EXPECT_THROW(savePictureAsRTF(picture, file, 1, 1, {}, {kinds, 96, failing}),
                     std::runtime_error);
        EXPECT_THROW(savePictureAsRTF(picture, file, 1, 1, {}, {kinds, 96, {}}),
                     CInvalidArgException);
        EXPECT_THROW(savePictureAsRTF(picture, file, 100, 1, {}, {kinds, 192, neverCalled}),
                     CInvalidArgException);
        EXPECT_EQ(file.GetLength(), 0U);
    }
}

TEST(PngSize, IsBounded) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    const struct {
        double width;
        double height;
        int dpi;
        int columns;  ///< 0: no size
        int rows;
    } cases[] = {{2.5, 1, 96, 240, 96},     {0.0001, -3, 96, 1, 1},
                 {1, 1.006, 100, 100, 101}, {16384, 4096, 1, 16384, 4096},
                 {16384, 4097, 1, 0, 0},    {16385, 1, 1, 0, 0},
                 {1, 16385, 1, 0, 0},       {8.27, 11.69, 600, 4962, 7014},
                 {8.27, 11.69, 1200, 0, 0}, {1, 1, 0, 0, 0},
                 {1, 1, -96, 0, 0},         {none, 1, 96, 0, 0},
                 {1, none, 96, 0, 0},       {endless, 1, 96, 0, 0}};
    for (const auto& c : cases) {
        const std::optional<CSize> size = pngSize(c.width, c.height, c.dpi);
        ASSERT_EQ(size.has_value(), c.columns != 0) << c.width << " " << c.height << " " << c.dpi;
        if (!size) continue;
        EXPECT_EQ(*size, CSize(c.columns, c.rows));
    }
}

}  // namespace
}  // namespace tessalink
