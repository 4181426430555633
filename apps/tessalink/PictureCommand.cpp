#include <algorithm>
#include <cmath>
#include <memory>
#include <stdexcept>

#include "apps/tessalink/Commands.h"
#include "apps/tessalink/Messages.h"
#include "apps/tessalink/PictureModule.h"
#include "apps/tessalink/PictureOutput.h"
#include "platform/graphics/EnhMetaFile.h"
#include "platform/graphics/PdfDevice.h"
#include "platform/graphics/SvgDevice.h"

namespace tessalink::cli {

namespace {

constexpr double cHundredthsPerInch = 2540;  // of a millimetre
constexpr double cMmPerInch = 25.4;
// A header that tells more units per inch tells nothing.
constexpr double cHighestRecorded = 9600;

struct DeletePicture {
    void operator()(HENHMETAFILE picture) const { DeleteEnhMetaFile(picture); }
};
using Picture = std::unique_ptr<EnhMetaFile, DeletePicture>;

Picture readPicture(const std::string& path) {
    constexpr std::size_t blockSize = 1u << 16;
    const auto input = openInput(path);
    std::vector<BYTE> bytes;
    for (std::size_t count = 1; count != 0 && bytes.size() <= cMaxMetafile;) {
        const std::size_t length = bytes.size();
        bytes.resize(length + blockSize);
        count = input->Read(bytes.data() + length, blockSize);
        bytes.resize(length + count);
    }
    return Picture(makeEnhMetaFile(std::move(bytes)));
}

/// The size of the frame at a resolution; nothing when the picture is empty. Pixels are those of a
/// screen unless asked otherwise, lines and curves keep the units in which they were recorded.
std::optional<PictureTarget> targetFor(const PictureOptions& options, const std::string& format,
                                       const ENHMETAHEADER& header) {
    const double unitsPerInch = header.szlDevice.cx * cMmPerInch / header.szlMillimeters.cx;
    const int recorded =
        static_cast<int>(std::lround(std::clamp(unitsPerInch, 1.0, cHighestRecorded)));
    const int dpi = options.dpi.value_or(format == "png" ? cScreenDpi : recorded);
    const auto inches = [](LONG from, LONG to) {
        return (static_cast<double>(to) - from) / cHundredthsPerInch;
    };
    const auto& frame = header.rclFrame;
    if (frame.left >= frame.right || frame.top >= frame.bottom) return std::nullopt;
    return pictureTarget(options.inputPath, format, inches(frame.left, frame.right),
                         inches(frame.top, frame.bottom), dpi);
}

template <class Device>
std::vector<BYTE> playedOn(HENHMETAFILE picture, const PictureTarget& target) {
    PictureSheet sheet;
    sheet.width = target.width;
    sheet.height = target.height;
    sheet.dpi = target.dpi;
    Device device(sheet);
    CDC dc(device);
    PlayEnhMetaFile(&dc, picture, CRect(0, 0, target.width, target.height));
    const std::string text = device.Finish();
    if (text.empty()) throw std::runtime_error("the picture is too large");
    return {text.begin(), text.end()};
}

int refuse(const std::string& path, const char* why) {
    printTrouble((path + ": " + why).c_str());
    return cInputFault;
}

}  // namespace

int convertPicture(const PictureOptions& options) {
    const std::string format = pictureFormat(options.outputPath, options.format, cPictureFormats);
    const bool byModule = needsModule(format, options.embedsFonts);
    const Picture picture = readPicture(options.inputPath);
    if (!picture) return refuse(options.inputPath, "no enhanced metafile, or a damaged one");
    ENHMETAHEADER header{};
    GetEnhMetaFileHeader(picture.get(), sizeof header, &header);
    const auto target = targetFor(options, format, header);
    if (!target) return refuse(options.inputPath, "the picture has no size");
    const auto make = format == "svg" ? playedOn<SvgDevice> : playedOn<PdfDevice>;
    storePicture(options.outputPath, byModule ? renderByModule(bytesOf(picture.get()), *target)
                                              : make(picture.get(), *target));
    return cSuccess;
}

}  // namespace tessalink::cli
