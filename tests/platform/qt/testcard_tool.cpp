// Draws the test card: testcard_tool FOLDER writes FOLDER/testcard.png, .pdf and .emf.
#include <QGuiApplication>
#include <cstdio>
#include <string>

#include "graphs/rtf/MetaFile.h"
#include "platform/qt/QtImages.h"
#include "tests/platform/qt/TestCard.h"

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: testcard_tool FOLDER\n", stderr);
        return 2;
    }
    constexpr int dpi = 96;
    using namespace tessalink;
    const std::string stem = std::string(argv[1]) + "/testcard";
    savePng((stem + ".png").c_str(), test::cTestCardWidth, test::cTestCardHeight, dpi,
            test::drawTestCard);
    savePdf((stem + ".pdf").c_str(), test::cTestCardWidth, test::cTestCardHeight, dpi,
            test::drawTestCard);
    MetaFile picture;
    picture.Create(double{test::cTestCardWidth} / dpi, double{test::cTestCardHeight} / dpi,
                   nullptr);
    test::drawTestCard(picture);
    picture.Close();
    return picture.Save((stem + ".emf").c_str()) ? 0 : 1;
}
