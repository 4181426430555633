#include "platform/qt/QtImages.h"

#include <QBuffer>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QPdfWriter>
#include <cmath>
#include <new>

#include "platform/base/CInvalidArgException.h"
#include "platform/files/WholeFile.h"
#include "platform/qt/PainterDevice.h"

namespace tessalink {

namespace {

constexpr double cMetresPerInch = 0.0254;
constexpr double cPointsPerInch = 72;

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
    if (!QImageWriter(&buffer, "png").write(image)) throw std::bad_alloc();
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
