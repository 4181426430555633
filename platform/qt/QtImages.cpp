#include "platform/qt/QtImages.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QPdfWriter>
#include <cmath>
#include <new>
#include <unordered_map>

#include "platform/base/CInvalidArgException.h"
#include "platform/files/WholeFile.h"
#include "platform/qt/PainterDevice.h"

namespace tessalink {

namespace {

constexpr double cMetresPerInch = 0.0254;
constexpr double cPointsPerInch = 72;

// The colors of a picture that has few, in the order in which they come.
class Palette {
public:
    static constexpr int cMostColors = 256;

    // The number of the color; -1 when there are more than numbers.
    int NumberOf(QRgb color) {
        if (m_last >= 0 && m_colors[m_last] == color) return m_last;
        const auto [known, isNew] = m_numbers.try_emplace(color, static_cast<int>(m_colors.size()));
        if (isNew) {
            if (m_colors.size() == cMostColors) return -1;
            m_colors.append(color);
        }
        return m_last = known->second;
    }
    const QList<QRgb>& Colors() const { return m_colors; }

private:
    QList<QRgb> m_colors;
    std::unordered_map<QRgb, int> m_numbers;
    int m_last = -1;
};

// The same pixels as numbers of colors, which makes a smaller file in less time; the picture
// itself when it has too many colors.
QImage withPalette(const QImage& image) {
    QImage result(image.size(), QImage::Format_Indexed8);
    if (result.isNull()) return image;
    Palette palette;
    for (int y = 0; y < image.height(); ++y) {
        const auto* const pixels = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        uchar* const numbers = result.scanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            const int number = palette.NumberOf(pixels[x]);
            if (number < 0) return image;
            numbers[x] = static_cast<uchar>(number);
        }
    }
    result.setColorTable(palette.Colors());
    result.setDotsPerMeterX(image.dotsPerMeterX());
    result.setDotsPerMeterY(image.dotsPerMeterY());
    return result;
}

void drawOn(QPaintDevice& target, const DrawPicture& draw) {
    QPainter painter(&target);
    PainterDevice device(painter);
    CDC dc(device);
    draw(dc);
}

void checkSize(int width, int height, int dpi, std::int64_t longest) {
    const bool isSound =
        width >= 1 && height >= 1 && dpi >= 1 && width <= longest && height <= longest;
    if (!isSound) AfxThrowInvalidArgException();
}

std::vector<BYTE> bytesOf(const QBuffer& buffer) {
    return {buffer.data().begin(), buffer.data().end()};
}

void save(const char* path, const std::vector<BYTE>& bytes) {
    WholeFile file(path);
    file.Write(bytes.data(), bytes.size());
    file.Commit();
}

}  // namespace

std::vector<BYTE> pngOf(int width, int height, int dpi, const DrawPicture& draw) {
    checkSize(width, height, dpi, cMaxImageSide);
    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull()) throw std::bad_alloc();
    const auto dotsPerMetre = static_cast<int>(std::lround(dpi / cMetresPerInch));
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    image.fill(Qt::white);
    drawOn(image, draw);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!QImageWriter(&buffer, "png").write(withPalette(image))) throw std::bad_alloc();
    return bytesOf(buffer);
}

void savePng(const char* path, int width, int height, int dpi, const DrawPicture& draw) {
    save(path, pngOf(width, height, dpi, draw));
}

std::vector<BYTE> pdfOf(int width, int height, int dpi, const DrawPicture& draw) {
    checkSize(width, height, dpi, std::int64_t{cMaxPageSide} * dpi);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&buffer);
        writer.setCreator("Tessalink");
        const QSizeF size(width * cPointsPerInch / dpi, height * cPointsPerInch / dpi);
        writer.setPageSize(QPageSize(size, QPageSize::Point, QString(), QPageSize::ExactMatch));
        writer.setPageMargins(QMarginsF());
        writer.setResolution(dpi);
        drawOn(writer, draw);
    }
    return bytesOf(buffer);
}

void savePdf(const char* path, int width, int height, int dpi, const DrawPicture& draw) {
    save(path, pdfOf(width, height, dpi, draw));
}

}  // namespace tessalink
