// Pixels and texts of the painter device.
#include "platform/qt/PainterDevice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "platform/base/CodePage.h"
#include "platform/graphics/CDC.h"
#include "platform/graphics/CMetaFileDC.h"
#include "platform/graphics/NullDevice.h"
#include "platform/qt/detail/QtFonts.h"
#include "tests/platform/qt/TestCard.h"
#include "tests/support/Dice.h"
#include "tests/support/DrawingProgram.h"
#include "tests/support/PixelCases.h"

namespace tessalink::test {
namespace {

/// An image of 96 dpi, white, with what is drawn.
QImage imageOf(int width, int height, const Draw& draw, int dpiX = 96) {
    QImage image(width, height, QImage::Format_RGB32);
    image.setDotsPerMeterX(static_cast<int>(std::lround(dpiX / 0.0254)));
    image.setDotsPerMeterY(3780);
    image.fill(Qt::white);
    QPainter painter(&image);
    PainterDevice device(painter);
    CDC dc(device);
    draw(dc);
    return image;
}

/// The pixels as letters: nothing, ink, filling, background, anything else.
Rows rowsOf(const QImage& image) {
    Rows rows;
    for (int y = 0; y < image.height(); ++y) {
        std::string row;
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            const COLORREF color = RGB(c.red(), c.green(), c.blue());
            row += letterOf(color);
        }
        rows.push_back(row);
    }
    return rows;
}

TEST(PainterDevice, PixelsFollowTheRules) {
    for (const PixelCase& c : cPixelCases) {
        const auto width = static_cast<int>(c.rows.front().size());
        const auto height = static_cast<int>(c.rows.size());
        const QImage image = imageOf(width, height, [&](CDC& dc) { drawCase(c, dc); });
        EXPECT_EQ(rowsOf(image), c.rows) << c.name;
    }
}

TEST(PainterDevice, ShapesWithoutAPenAreTheirRegions) {
    Dice dice(3);
    CBrush brush(cFill);
    constexpr int size = 60;
    const auto place = [&] { return static_cast<LONG>(dice.Below(size)); };
    const auto corner = [&] { return POINT{place(), place()}; };
    for (int round = 0; round < 300; ++round) {
        CRgn region;
        const POINT points[] = {corner(), corner(), corner(), corner(), corner()};
        const bool isPolygon = round % 2 == 0;
        isPolygon ? region.CreatePolygonRgn(points, 5, ALTERNATE)
                  : region.CreateEllipticRgn(points[0].x, points[0].y, points[1].x, points[1].y);
        const QImage image = imageOf(size, size, [&](CDC& dc) { dc.FillRgn(&region, &brush); });
        int wrong = 0;
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                const bool isSet = image.pixelColor(x, y) != QColor(Qt::white);
                wrong += isSet != (region.PtInRegion(x, y) != 0);
            }
        }
        EXPECT_EQ(wrong, 0) << round;
    }
}

TEST(PainterDevice, OutlineOfAnEllipseSurroundsItsFilling) {
    CPen ink(PS_SOLID, 1, cInk);
    CPen dots(PS_DOT, 1, cInk);
    CBrush brush(cFill);
    for (int size = 1; size < 70; size += 3) {
        Rows rows[2];
        for (CPen* pen : {&ink, &dots}) {
            rows[pen == &dots] = rowsOf(imageOf(70, 50, [&](CDC& dc) {
                dc.SetBkColor(cInk);
                dc.SelectObject(pen);
                dc.SelectObject(&brush);
                dc.Ellipse(1, 1, 1 + size, 1 + (size + 1) / 2);
            }));
        }
        EXPECT_EQ(rows[0], rows[1]) << size;
        for (std::size_t y = 1; y + 1 < rows[0].size(); ++y) {
            for (std::size_t x = 1; x + 1 < rows[0][y].size(); ++x) {
                const std::string around = {rows[0][y - 1][x], rows[0][y + 1][x], rows[0][y][x - 1],
                                            rows[0][y][x + 1]};
                const bool isBare = rows[0][y][x] == 'o' && around.find('.') != std::string::npos;
                EXPECT_FALSE(isBare) << size << " at " << x << ", " << y;
            }
        }
    }
}

int differentPixels(const QImage& a, const QImage& b) {
    int different = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) different += a.pixel(x, y) != b.pixel(x, y);
    }
    return different;
}

/// A screen of 96 dpi with the measures of the toolkit.
class ToolkitScreen final : public NullDevice {
public:
    const TextMetricsSource& TextMetrics() const override { return toolkitTextMetrics(); }
};

/// A picture of the test card's size under way.
struct Recording {
    Recording() {
        constexpr double hundredthsPerUnit = 2540.0 / 96;
        const RECT frame = {0, 0, toInt(cTestCardWidth * hundredthsPerUnit + 0.5),
                            toInt(cTestCardHeight * hundredthsPerUnit + 0.5)};
        dc.CreateEnhanced(&reference, nullptr, &frame, nullptr);
    }
    /// Ends it, and plays the picture at its size.
    QImage Played() {
        const HENHMETAFILE picture = dc.CloseEnhanced();
        const QImage image = imageOf(cTestCardWidth, cTestCardHeight, [&](CDC& target) {
            PlayEnhMetaFile(&target, picture, CRect(0, 0, cTestCardWidth, cTestCardHeight));
        });
        DeleteEnhMetaFile(picture);
        return image;
    }

    ToolkitScreen screen;
    CDC reference{screen};
    CMetaFileDC dc;
};

TEST(PainterDevice, PlayedMetafileIsTheSamePicture) {
    Recording recording;
    drawTestCard(recording.dc);
    const QImage direct = imageOf(cTestCardWidth, cTestCardHeight, drawTestCard);
    EXPECT_EQ(differentPixels(direct, recording.Played()), 0);
}

TEST(PainterDevice, RandomProgramsAreTheSamePlayed) {
    for (std::uint64_t seed = 0; seed < 60; ++seed) {
        const auto coordinates =
            seed % 4 == 0 ? DrawingProgram::Coordinates::Wild : DrawingProgram::Coordinates::Tame;
        Dice dice(seed);
        Recording recording;
        const QImage direct = imageOf(cTestCardWidth, cTestCardHeight, [&](CDC& dc) {
            DrawingProgram program([&](std::size_t count) { return dice.Below(count); },
                                   {&dc, &recording.dc}, coordinates);
            constexpr std::size_t steps = 60;
            program.Run(steps);
        });
        const QImage played = recording.Played();
        if (coordinates == DrawingProgram::Coordinates::Tame) {
            EXPECT_EQ(differentPixels(direct, played), 0) << seed;
        }
    }
}

CFont* create(CFont& font, int height, const char* face, int weight = FW_NORMAL, int italic = 0) {
    font.CreateFont(height, 0, 0, 0, weight, static_cast<BYTE>(italic), 0, 0, ANSI_CHARSET, 0, 0, 0,
                    0, face);
    return &font;
}

TEST(PainterDevice, ExtentsAreThoseOfTheUnhintedFont) {
    const struct {
        const char* face;
        const char* family;
    } faces[] = {{"Arial", "Liberation Sans"},
                 {"Times New Roman", "Liberation Serif"},
                 {"Courier New", "Liberation Mono"},
                 {"Liberation Mono", "Liberation Mono"},
                 {"Surely Not Installed", "Liberation Sans"}};
    const char* const texts[] = {"AVAToTe", "T-score 57, \xE4\xF6\xFC\xDF \x80 12.50",
                                 "The quick brown fox jumps over the lazy dog"};
    for (const auto& face : faces) {
        for (const int height : {-7, -12, 16, -33, 100, -1000}) {
            for (const bool isBold : {false, true}) {
                imageOf(10, 10, [&](CDC& dc) {
                    CFont font;
                    dc.SelectObject(create(font, height, face.face, isBold ? FW_BOLD : FW_NORMAL));
                    TEXTMETRICA metric{};
                    dc.GetTextMetrics(&metric);
                    QFont reference(face.family);
                    reference.setBold(isBold);
                    reference.setKerning(false);
                    reference.setHintingPreference(QFont::PreferNoHinting);
                    constexpr int em = 2048;
                    reference.setPixelSize(em);
                    const QFontMetricsF measures(reference);
                    const double cell = measures.ascent() + measures.descent();
                    const double scale = height < 0 ? -height / double{em} : height / cell;
                    EXPECT_NEAR(metric.tmAscent, measures.ascent() * scale, 1) << face.face;
                    EXPECT_NEAR(metric.tmDescent, measures.descent() * scale, 1) << face.face;
                    for (const char* text : texts) {
                        const QString wide = QString::fromStdString(toUtf8(text));
                        EXPECT_NEAR(dc.GetTextExtent(text, -1).cx,
                                    measures.horizontalAdvance(wide) * scale, 1)
                            << face.face << ' ' << height << ' ' << text;
                    }
                });
            }
        }
    }
}

/// The columns that hold anything but white.
std::pair<int, int> inkedColumns(const QImage& image) {
    int first = image.width();
    int last = -1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == QColor(Qt::white)) continue;
            first = std::min(first, x);
            last = std::max(last, x);
        }
    }
    return {first, last};
}

TEST(PainterDevice, GlyphsStandAtTheirPositions) {
    const auto columns = [](int dpiX, const int* advances) {
        return inkedColumns(imageOf(
            300, 40,
            [&](CDC& dc) {
                CFont font;
                dc.SelectObject(create(font, -20, "Arial"));
                dc.SetBkMode(TRANSPARENT);
                dc.ExtTextOut(10, 5, 0, nullptr, "lll", 3, advances);
            },
            dpiX));
    };
    const int advances[] = {50, 100, 7};  // otherwise the last one stands at 9
    const auto [first, last] = columns(96, advances);
    EXPECT_EQ(first, columns(96, nullptr).first);
    EXPECT_EQ(last - first, 150 + columns(96, nullptr).second - first - 9);
    // Units half as wide: glyphs are twice as many units wide.
    const auto [firstWide, lastWide] = columns(192, nullptr);
    EXPECT_NEAR(firstWide - 10, 2 * (first - 10), 1);
    EXPECT_NEAR(lastWide - firstWide, 2 * (columns(96, nullptr).second - first), 3);
}

TEST(PainterDevice, LinesOfTextReachFromEndToEnd) {
    const QImage image = imageOf(80, 30, [](CDC& dc) {
        CFont font;
        font.CreateFont(-20, 0, 0, 0, FW_NORMAL, 0, 1, 1, ANSI_CHARSET, 0, 0, 0, 0, "Arial");
        dc.SelectObject(&font);
        dc.TextOut(5, 2, "      ");
        EXPECT_EQ(dc.GetTextExtent("      ", -1).cx, 33);
    });
    std::vector<int> inked;
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(5, y) == QColor(Qt::black)) inked.push_back(y);
    }
    EXPECT_EQ(inked, (std::vector{15, 22})) << "base line at 20";
    EXPECT_EQ(inkedColumns(image), std::pair(5, 37));
}

TEST(PainterDevice, SymbolCodesShowTheirCharacters) {
    LOGFONTA font{};
    font.lfCharSet = SYMBOL_CHARSET;
    const auto& look = detail::qtGlyphs(font, 20);
    const std::pair<BYTE, char32_t> pairs[] = {{0xB3, 0x2265}, {0xA3, 0x2264}, {0xB7, 0x2022},
                                               {'a', 0x03B1},  {'W', 0x03A9},  {'1', '1'},
                                               {0xD6, 0x221A}, {0xC8, 0x222A}};
    for (const auto& [code, character] : pairs) {
        const auto& glyph = look.glyphs[code];
        const QString text = QString::fromUcs4(&character, 1);
        EXPECT_EQ(look.fonts[glyph.font].glyphIndexesForString(text).value(0), glyph.index);
        EXPECT_NE(glyph.index, 0u) << int{code};
    }
}

TEST(PainterDevice, LeavesThePainterAsItWasAndItsClip) {
    QImage image(20, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(Qt::red);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(0, 0, 5, 20);
    {
        PainterDevice device(painter);
        CDC dc(device);
        for (int i = 0; i < 2; ++i) {
            dc.FillSolidRect(0, i, 20, 1, cFill);
            dc.IntersectClipRect(2, 0, 20, 20);
        }
    }
    EXPECT_EQ(painter.pen().color(), QColor(Qt::red));
    EXPECT_TRUE(painter.testRenderHint(QPainter::Antialiasing));
    EXPECT_EQ(painter.clipBoundingRect(), QRectF(0, 0, 5, 20));
    const Rows rows = rowsOf(image);
    EXPECT_EQ(rows[0], "ooooo...............");
    EXPECT_EQ(rows[1], "..ooo...............");
}

/// A widget that draws the test card.
class CardWidget final : public QWidget {
public:
    using QWidget::QWidget;
    DeviceCaps caps;

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        PainterDevice device(painter);
        caps = device.Caps();
        CDC dc(device);
        drawTestCard(dc);
    }
};

TEST(PainterDevice, DrawsOnAWidgetInsideAnother) {
    QWidget window;
    window.resize(cTestCardWidth + 50, cTestCardHeight + 40);
    CardWidget card(&window);
    card.setGeometry(30, 20, cTestCardWidth, cTestCardHeight);
    const QImage whole = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    const QImage shown = whole.copy(card.geometry());
    const QImage image = imageOf(cTestCardWidth, cTestCardHeight, drawTestCard);
    EXPECT_EQ(differentPixels(shown, image), 0);
    EXPECT_EQ(card.caps.dpiX, 96);
    EXPECT_EQ(card.caps.width, cTestCardWidth);
}

TEST(PainterDevice, BigPixelsOfAScaledPainter) {
    QImage image(16, 6, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDevicePixelRatio(2);
    QPainter painter(&image);
    PainterDevice device(painter);
    EXPECT_EQ(device.Caps().width, 8);
    CDC dc(device);
    dc.MoveTo(1, 1);
    dc.LineTo(5, 2);
    EXPECT_EQ(rowsOf(image), (Rows{"................", "................", "..######........",
                                   "..######........", "........##......", "........##......"}));
}

}  // namespace
}  // namespace tessalink::test
