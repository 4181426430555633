// Letters of other code pages by the toolkit: built-in measures against the fonts, and pixels.
#include "platform/base/CodePage.h"

#include <gtest/gtest.h>

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <cmath>
#include <cstring>
#include <string>

#include "platform/graphics/CDC.h"
#include "platform/graphics/FaceMetrics.h"
#include "platform/qt/PainterDevice.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

constexpr CodePage cPages[] = {CodePage::CentralEuropean, CodePage::Cyrillic, CodePage::Western,
                               CodePage::Greek,           CodePage::Turkish,  CodePage::Baltic};

HostServices servicesOf(CodePage page) {
    HostServices services = hostServices();
    services.codePage = page;
    return services;
}

LOGFONTA fontOf(const char* face, bool isBold, bool isItalic) {
    LOGFONTA font{};
    font.lfHeight = -FaceMetrics::cEm;
    font.lfWeight = isBold ? FW_BOLD : FW_NORMAL;
    font.lfItalic = isItalic ? 1 : 0;
    std::strcpy(font.lfFaceName, face);
    return font;
}

/// The font from which the measures are made; other releases of it have some other widths.
QRawFont fileOf(const char* family, bool isBold, bool isItalic) {
    const char* const style =
        isBold ? (isItalic ? "BoldItalic" : "Bold") : (isItalic ? "Italic" : "Regular");
    const QString file = QString("/usr/share/fonts/truetype/liberation/Liberation%1-%2.ttf")
                             .arg(QString(family), QString(style));
    return QRawFont(file, FaceMetrics::cEm, QFont::PreferNoHinting);
}

/// How many of the code page's letters beyond ASCII the font has; each is as wide as told.
int comparedLetters(const LOGFONTA& font, const QRawFont& raw) {
    const FaceMetrics& metrics = builtInMetrics(font);
    int count = 0;
    for (int byte = ' '; byte < 256; ++byte) {
        const char32_t character = toUnicode(static_cast<char>(byte));
        const bool isControl = character >= 0x7F && character < 0xA0;
        const auto glyphs = raw.glyphIndexesForString(QString::fromUcs4(&character, 1));
        if (isControl || glyphs.size() != 1 || glyphs[0] == 0) continue;
        const double advance = raw.advancesForGlyphIndexes(glyphs).front().x();
        EXPECT_NEAR(metrics.advances[static_cast<std::size_t>(byte)], advance, 0.5)
            << font.lfFaceName << ' ' << codePageName() << ' ' << byte;
        count += byte >= 0x80 ? 1 : 0;
    }
    return count;
}

TEST(CodePage, BuiltInMeasuresAreThoseOfTheFonts) {
    if (!fileOf("Sans", false, false).isValid()) GTEST_SKIP() << "the fonts are not installed";
    constexpr int leastLetters = 111;  // Windows-1253 leaves seventeen bytes open
    const SizedFont former(builtInMetrics(fontOf("Arial", false, false)),
                           fontOf("Arial", false, false));
    for (const CodePage page : cPages) {
        const HostServicesScope scope(servicesOf(page));
        for (const bool isBold : {false, true}) {
            for (const bool isItalic : {false, true}) {
                const LOGFONTA sans = fontOf("Arial", isBold, isItalic);
                const LOGFONTA serif = fontOf("Times New Roman", isBold, isItalic);
                EXPECT_GE(comparedLetters(sans, fileOf("Sans", isBold, isItalic)), leastLetters);
                EXPECT_GE(comparedLetters(serif, fileOf("Serif", isBold, isItalic)), leastLetters);
            }
        }
        // A font that was measured before the code page changed follows it.
        const LOGFONTA plain = fontOf("Arial", false, false);
        EXPECT_EQ(former.WidthOf("\xC6\xE1"),
                  SizedFont(builtInMetrics(plain), plain).WidthOf("\xC6\xE1"));
    }
}

QImage imageOf(const char* text, const char* face) {
    QImage image(360, 60, QImage::Format_RGB32);
    image.setDotsPerMeterX(3780);
    image.setDotsPerMeterY(3780);
    image.fill(Qt::white);
    QPainter painter(&image);
    PainterDevice device(painter);
    CDC dc(device);
    CFont font;
    font.CreateFont(-40, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, OUT_TT_PRECIS,
                    CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, face);
    dc.SelectObject(&font);
    dc.TextOut(5, 5, text);
    return image;
}

// One face has built-in measures, the other its own: both forget those of the former code page.
TEST(CodePage, TheSameLettersAreTheSamePixelsInEveryPage) {
    for (const char* const face : {"Times New Roman", "Liberation Mono"}) {
        QImage first;
        {
            const HostServicesScope scope(servicesOf(CodePage::CentralEuropean));
            first = imageOf("a\xA3\xC8\x9E", face);  // L with stroke, C and z with caron
        }
        const HostServicesScope scope(servicesOf(CodePage::Baltic));
        EXPECT_EQ(first, imageOf("a\xD9\xC8\xFE", face)) << face;
        EXPECT_NE(first, imageOf("a\xA3\xC8\x9E", face)) << face;
    }
}

}  // namespace
}  // namespace tessalink::test
