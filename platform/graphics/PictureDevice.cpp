#include "platform/graphics/PictureDevice.h"

#include <array>

#include "platform/files/CFileException.h"
#include "platform/files/WholeFile.h"
#include "platform/graphics/detail/PictureWriter.h"

namespace tessalink {

PictureDevice::PictureDevice(std::unique_ptr<detail::PictureWriter> writer)
    : m_writer(std::move(writer)) {}

PictureDevice::~PictureDevice() = default;

std::string PictureDevice::Finish() {
    return m_writer->Finish();
}

const DeviceCaps& PictureDevice::Caps() const {
    return m_writer->Caps();
}

void PictureDevice::DrawLine(const Paint& paint, POINT from, POINT to) {
    const std::array<POINT, 2> ends = {from, to};
    const bool thin = paint.pen.lopnWidth.x <= 1;
    if (!thin || from != to) m_writer->Polyline(paint, ends);
}

void PictureDevice::DrawPolyline(const Paint& paint, std::span<const POINT> points) {
    m_writer->Polyline(paint, points);
}

void PictureDevice::DrawPolygon(const Paint& paint, std::span<const POINT> points) {
    m_writer->Polygon(paint, points);
}

void PictureDevice::DrawRectangle(const Paint& paint, const RECT& rect) {
    m_writer->Box(detail::Outline::Kind::Rectangle, paint, rect);
}

void PictureDevice::DrawEllipse(const Paint& paint, const RECT& rect) {
    m_writer->Box(detail::Outline::Kind::Ellipse, paint, rect);
}

void PictureDevice::FillRectangle(const Paint& paint, const RECT& rect) {
    m_writer->Fill(paint, rect);
}

void PictureDevice::FillRegion(const Paint& paint, const Region& region) {
    m_writer->Fill(paint, region);
}

void PictureDevice::SetPixel(const Paint& paint, POINT point, COLORREF color) {
    m_writer->Pixel(paint.clip, point, color);
}

void PictureDevice::DrawText(const TextRun& run) {
    m_writer->Run(run);
}

BOOL savePicture(std::string_view picture, const char* fileName) {
    if (fileName == nullptr) return 0;
    try {
        WholeFile file(fileName);
        file.Write(picture.data(), picture.size());
        file.Commit();
    } catch (const CFileException&) {
        return 0;
    }
    return 1;
}

}  // namespace tessalink
